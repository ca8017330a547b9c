#pragma once

#include "framework/export.h"

/// An interruption slot: a permission to interrupt the user, shared by all parts of the client.
/// Values without a name here are valid.
enum ZRUniformResourceSlotType : int {
    kSlotAdPopup = 2,
};

namespace core {
namespace uniform_resource_slot {

/// Returns whether an interruption of that type is allowed now. The call only queries; it reserves nothing. The answer
/// may differ at the next call, so ask directly before the interruption is shown.
/// Thread: main thread.
/// Failure: false without a host.
ZRHOST_API bool IsAllowedToShowUniformResourceSlot(ZRUniformResourceSlotType type);

}  // namespace uniform_resource_slot
}  // namespace core
