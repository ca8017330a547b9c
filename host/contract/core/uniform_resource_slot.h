#pragma once

#include "framework/export.h"

/// A place where the client may interrupt the user. Other values than these are allowed.
enum ZRUniformResourceSlotType : int {
    kSlotAdPopup = 2,
};

namespace core {
namespace uniform_resource_slot {

/// Whether that kind of slot may be shown at this moment. A question alone: asking uses nothing up. Main thread.
ZRHOST_API bool IsAllowedToShowUniformResourceSlot(ZRUniformResourceSlotType type);

}  // namespace uniform_resource_slot
}  // namespace core
