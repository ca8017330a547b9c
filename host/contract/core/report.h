#pragma once

#include <json/value.h>

#include <memory>
#include <string>

#include "core/IZRChannelProxy.h"
#include "framework/export.h"

namespace core {

/// Analytics. An event whose call returns true reaches the server exactly once, even if the process is killed.
/// Events wait for the server in an outbox on the disk, of at most 50,000 events and 32 MiB. Two losses are possible,
/// and both are logged: a full outbox drops its oldest events, and a damaged outbox is moved aside with its events.
/// An event that the server rejects is sent again until the outbox drops it.
/// Thread: any.
/// Failure: an event that is not accepted returns false and is logged. While another program locks the outbox, an event
/// is kept in memory without a promise.
namespace report {

/// Reports an event. `code` and `params` reach the server unchanged, except texts of more than 16 KiB: these may lose
/// their end.
/// Returns whether the event was accepted.
/// Failure: false for an empty name, and for an event of more than 4 MiB as JSON in UTF-8 after that.
ZRHOST_API bool Report(const std::string& event, int code, const Json::Value& params, CSBrokerId broker);

/// Starts a timer. Timers of the same event are independent.
/// Returns the timer's name, for ReportTimerEnd.
/// Failure: null for an empty event name.
ZRHOST_API std::shared_ptr<std::string> ReportTimerStart(const std::string& event);

/// Reports the event of a timer, with its parameters and the milliseconds since the start, and ends the timer.
/// `reserved` has no effect; callers pass 0.
/// Returns whether the event was accepted.
/// Failure: false for a timer that is not running.
ZRHOST_API bool ReportTimerEnd(const std::string& timer, int code, const Json::Value& params, CSBrokerId broker,
                               long reserved);

}  // namespace report
}  // namespace core
