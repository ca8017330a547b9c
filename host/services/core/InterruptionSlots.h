#pragma once

#include <set>

#include "core/uniform_resource_slot.h"

/// The kinds of interruption that the user may be shown: all except the forbidden ones. Main thread.
class CInterruptionSlots {
public:
    void Allow(ZRUniformResourceSlotType type, bool allowed) {
        if (allowed) {
            m_forbidden.erase(type);
        } else {
            m_forbidden.insert(type);
        }
    }

    bool IsAllowed(ZRUniformResourceSlotType type) const { return m_forbidden.count(type) == 0; }

private:
    std::set<int> m_forbidden;
};
