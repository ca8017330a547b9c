#pragma once

#include <cstdint>

#include "framework/export.h"

namespace core {
namespace random {

/// Returns a random number, uniform over 32 bits. It is not suitable for secrets.
/// Thread: any.
/// Failure: 0 without a host.
ZRHOST_API uint32_t GetRandUInt32();

}  // namespace random
}  // namespace core
