#pragma once

#include <json/value.h>

#include <memory>
#include <string>

#include "core/IZRChannelProxy.h"
#include "framework/export.h"

namespace core {

/// Analytics. Callable from any thread. What a call gives true for reaches the server, once, however the process
/// ends; false where it was not taken, which is logged.
namespace report {

/// One event, which has a name. `code` and the parameters go to the server unchanged.
ZRHOST_API bool Report(const std::string& event, int code, const Json::Value& params, CSBrokerId broker);

/// Begins to measure. The text names this measurement, and is for ReportTimerEnd; measurements of one event are
/// apart. Null where nothing is measured, as for an event without a name.
ZRHOST_API std::shared_ptr<std::string> ReportTimerStart(const std::string& event);

/// Reports the event with its parameters and the milliseconds since the start. False for a measurement that is
/// not open. `reserved` has no effect; callers pass 0.
ZRHOST_API bool ReportTimerEnd(const std::string& timer, int code, const Json::Value& params, CSBrokerId broker,
                               long reserved);

}  // namespace report
}  // namespace core
