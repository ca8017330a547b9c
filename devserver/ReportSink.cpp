#include "ReportSink.h"

#include "scenario.pb.h"

namespace devserver {
namespace {

constexpr size_t kMaxIdBytes = 128;

// Returns the errors of an event.
Errors CheckEvent(const Json::Value& event) {
    Errors errors;
    Json::Value typed = event;
    if (event.isObject() && event.isMember("params")) {
        // Parameters may have any depth, which protobuf would limit.
        typed["params"] = Json::nullValue;
    }
    ReportEvent message;
    if (ReadMessage(typed, message, errors) && message.id().size() > kMaxIdBytes) {
        errors.emplace_back("id: must be no longer than 128 bytes");
    }
    return errors;
}

Json::Value WriteRefusal(const Json::Value& event, const Errors& errors) {
    Json::Value json;
    if (event.isObject() && event["id"].isString()) {
        json["id"] = event["id"];
    }
    json["error"] = Joined(errors);
    return json;
}

bool IsBatch(const Json::Value& json) {
    return json.isObject() && json.size() == 1 && json["events"].isArray();
}

}  // namespace

std::optional<Json::Value> CReportSink::Take(const std::string& text, Errors& errors) {
    const auto batch = ParseJson(text, errors);
    if (batch && !IsBatch(*batch)) {
        errors.emplace_back("must be an object with the list events and nothing else");
    }
    if (!batch || !IsBatch(*batch)) {
        return std::nullopt;
    }
    Json::Value answer;
    answer["accepted"] = Json::arrayValue;
    for (const Json::Value& event : (*batch)["events"]) {
        const Errors ofEvent = CheckEvent(event);
        if (ofEvent.empty()) {
            Count(event["id"].asString(), event);
            answer["accepted"].append(event["id"]);
        } else {
            answer["refused"].append(WriteRefusal(event, ofEvent));
        }
    }
    return answer;
}

void CReportSink::Count(const std::string& id, const Json::Value& event) {
    const auto [known, isNew] = m_resends.emplace(id, 0);
    if (!isNew) {
        ++known->second;
        ++m_nResends;
        return;
    }
    m_ids.push_back(id);
    const size_t bytes = WriteJson(event).size();
    m_reports.push_back({++m_nCounted, id, event, bytes});
    m_nBytes += bytes;
    while (m_reports.size() > m_limits.events || m_nBytes > m_limits.bytes) {
        m_nBytes -= m_reports.front().bytes;
        m_reports.pop_front();
    }
    while (m_ids.size() > m_limits.ids) {
        m_resends.erase(m_ids.front());
        m_ids.pop_front();
    }
}

uint64_t CReportSink::Resends(const std::string& id) const {
    const auto found = m_resends.find(id);
    return found == m_resends.end() ? 0 : found->second;
}

}  // namespace devserver
