#pragma once

#include <cstdint>

#include "framework/export.h"

namespace core {
namespace random {

/// A random number, uniform over all 32 bits; not for secrets. Callable from any thread.
ZRHOST_API uint32_t GetRandUInt32();

}  // namespace random
}  // namespace core
