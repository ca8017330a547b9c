#include "core/InterruptionSlots.h"

void CInterruptionSlots::Allow(ZRUniformResourceSlotType type, bool allowed) {
    if (allowed) {
        m_forbidden.erase(type);
    } else {
        m_forbidden.insert(type);
    }
}
