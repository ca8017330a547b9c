#include "core/Slots.h"

void CSlots::Allow(ZRUniformResourceSlotType type, bool allowed) {
    if (allowed) {
        m_forbidden.erase(type);
    } else {
        m_forbidden.insert(type);
    }
}
