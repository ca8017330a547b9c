#pragma once

#include <cstdint>

#include "framework/export.h"

namespace core {

/// Server time since 1970-01-01 UTC: the local clock corrected by the offset that the server told.
/// It may jump, also backwards, when the offset changes. Callable from any thread.
namespace time_date {

/// In whole seconds: the milliseconds of the same moment, rounded down.
ZRHOST_API int64_t GetSvrTimeStamp();

ZRHOST_API int64_t GetSvrTimeMillis();

}  // namespace time_date
}  // namespace core
