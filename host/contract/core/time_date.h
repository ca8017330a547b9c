#pragma once

#include <cstdint>

#include "framework/export.h"

namespace core {

/// Server time since 1970-01-01 UTC: the local clock plus the offset that the server reported.
/// It may jump in both directions when the offset changes.
/// Measure durations with a steady clock instead.
/// Thread: any.
/// Failure: 0 without a host.
namespace time_date {

/// Returns whole seconds: the milliseconds of the same instant, rounded down.
ZRHOST_API int64_t GetSvrTimeStamp();

/// Returns milliseconds.
ZRHOST_API int64_t GetSvrTimeMillis();

}  // namespace time_date
}  // namespace core
