#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

/// An event as the server gets it.
struct ReportedEventData {
    std::string id;
    std::string name;
    int code = 0;
    const Json::Value& params;
    int32_t broker = 0;
    uint64_t user = 0;
    std::string device;
    int64_t atMs = 0;                   // server time, since 1970
    std::optional<int64_t> durationMs;  // of a measurement
};

/// An event as one line of JSON in UTF-8. Any thread.
///
/// A string over 16 KiB is cut. Nothing for infinite numbers and NaN, values nested more than 60
/// deep, and keys that are not UTF-8. Bytes of other strings that are not UTF-8 become U+FFFD.
std::optional<std::string> ReportText(const ReportedEventData& event);
