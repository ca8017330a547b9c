#include "core/uniform_resource_slot.h"

#include "core/ISlots.h"
#include "framework/Ports.h"

bool core::uniform_resource_slot::IsAllowedToShowUniformResourceSlot(ZRUniformResourceSlotType type) {
    const host::PortsLock ports;
    return ports->resourceSlots && ports->resourceSlots->IsAllowed(type);
}
