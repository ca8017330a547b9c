#pragma once

#include <json/value.h>

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "JsonMessage.h"

namespace devserver {

struct Report {
    uint64_t number = 0;  // from 1 upwards, without gaps
    std::string id;
    Json::Value event;  // as received
    size_t bytes = 0;   // of its JSON
};

struct ReportLimits {
    size_t events = 50'000;
    size_t bytes = 64 * 1024 * 1024;  // of all events
    size_t ids = 100'000;
};

/// Events that clients report. An id counts once, however often it is received. Above the limits the oldest events are
/// forgotten, their ids much later. A forgotten id counts again.
class CReportSink {
public:
    explicit CReportSink(const ReportLimits& limits = {}) : m_limits(limits) {}

    /// Takes the events of a batch, {"events":[...]}. Returns {"accepted":[ids],"refused":[{"id"?,"error"}]}: ids that
    /// are counted now or were before, and invalid events, if any. Returns nothing, with at least one error, if the
    /// text is no batch.
    std::optional<Json::Value> Take(const std::string& text, Errors& errors);

    const std::deque<Report>& Reports() const { return m_reports; }

    /// Returns how often the id was received after it was counted.
    uint64_t Resends(const std::string& id) const;
    uint64_t Resends() const { return m_nResends; }
    uint64_t Counted() const { return m_nCounted; }

    /// Forgets events, ids, numbers and resends.
    void Forget() { *this = CReportSink(m_limits); }

private:
    void Count(const std::string& id, const Json::Value& event);

    ReportLimits m_limits;
    std::deque<Report> m_reports;
    std::unordered_map<std::string, uint64_t> m_resends;  // by known id
    std::deque<std::string> m_ids;                        // known ids, the oldest first
    uint64_t m_nCounted = 0;
    uint64_t m_nResends = 0;
    size_t m_nBytes = 0;
};

}  // namespace devserver
