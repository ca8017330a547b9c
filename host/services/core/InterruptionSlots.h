#pragma once

#include <set>

#include "core/ISlots.h"

/// Which interruptions the user may be shown: all, but for the kinds that were forbidden. Main thread.
class CInterruptionSlots : public ISlots {
public:
    void Allow(ZRUniformResourceSlotType type, bool allowed);

    bool IsAllowed(ZRUniformResourceSlotType type) const override { return m_forbidden.count(type) == 0; }

private:
    std::set<int> m_forbidden;
};
