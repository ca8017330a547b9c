#pragma once

#include <json/value.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace Json {
class StreamWriter;
}

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

/// Writes events as JSON in one line, which each reader of ours takes again. Any thread.
class CReportText {
public:
    CReportText();
    ~CReportText();

    /// Nothing for what JSON can't say or no reader takes: numbers without an end, values nested without measure,
    /// keys that are no text. What is no text in another string becomes the character that stands for that.
    std::optional<std::string> Of(const ReportedEventData& event);

private:
    std::string OneLine(const Json::Value& value);

    std::mutex m_mutex;
    const std::unique_ptr<Json::StreamWriter> m_pWriter;
};
