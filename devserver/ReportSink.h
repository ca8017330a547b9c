#pragma once

#include <json/value.h>

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "JsonNode.h"

namespace devserver {

struct Report {
    uint64_t number = 0;  // from 1 upwards, without gaps
    std::string id;
    Json::Value event;  // as it came
    size_t bytes = 0;   // of its text, roughly
};

struct ReportLimits {
    size_t events = 50'000;
    size_t bytes = 64 * 1024 * 1024;  // of the events together
    size_t ids = 100'000;
};

/// The events that clients report, each id counted once however often it comes. Bounded: of old events the oldest
/// are forgotten first, their ids much later; an id that was forgotten counts again.
class CReportSink {
public:
    explicit CReportSink(const ReportLimits& limits = {}) : m_limits(limits) {}

    /// Takes the events of a batch, {"events":[...]}. The answer names the ids that are counted now, be it since
    /// earlier, and of the others what is wrong with them.
    /// {"accepted":[ids],"refused":[{"id"?,"error"}]}, the second only where there are such.
    /// Nothing, and at least one error, where the text is no batch at all.
    std::optional<Json::Value> Take(const std::string& text, Errors& errors);

    const std::deque<Report>& Reports() const { return m_reports; }

    /// How often the id came again after it was counted.
    uint64_t Resends(const std::string& id) const;
    uint64_t Resends() const { return m_nResends; }
    uint64_t Counted() const { return m_nCounted; }

    /// All of it, numbers and resends included.
    void Forget() { *this = CReportSink(m_limits); }

private:
    void Count(const std::string& id, const Json::Value& event);

    ReportLimits m_limits;
    std::deque<Report> m_reports;
    std::unordered_map<std::string, uint64_t> m_resends;  // by each id that is known
    std::deque<std::string> m_ids;                        // the same, the oldest first
    uint64_t m_nCounted = 0;
    uint64_t m_nResends = 0;
    size_t m_nBytes = 0;
};

}  // namespace devserver
