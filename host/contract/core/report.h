#pragma once

#include <json/value.h>

#include <memory>
#include <string>

#include "core/IZRChannelProxy.h"
#include "framework/export.h"

namespace core {

/// Analytics. Callable from any thread. An event whose call returns true reaches the server once, even if the
/// process is killed. False if the event was not taken, which is logged.
///
/// Events wait for the server in an outbox on the disk, of 50,000 events and 32 MiB. Two losses are possible, and
/// both are logged: a full outbox drops its oldest events, and a damaged outbox is moved aside with its events.
/// An event that the server refuses is sent again until the outbox drops it.
namespace report {

/// One event, which has a name. `code` and the parameters go to the server unchanged. False for an event of more
/// than 25 MiB of JSON in UTF-8. The body of any HTTP answer fits, unless it is mostly control characters.
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
