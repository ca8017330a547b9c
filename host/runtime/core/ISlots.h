#pragma once

#include "core/uniform_resource_slot.h"

/// Says which interruptions the user may be shown. Main thread.
class ISlots {
public:
    virtual ~ISlots() = default;

    virtual bool IsAllowed(ZRUniformResourceSlotType type) const = 0;
};
