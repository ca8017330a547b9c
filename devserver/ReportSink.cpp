#include "ReportSink.h"

#include <limits>

namespace devserver {
namespace {

// What a client writes into its outbox is not nested deeper, the batch around it counted.
constexpr unsigned kBatchDepth = 64;
constexpr size_t kMaxIdBytes = 128;

std::string CheckEvent(const CJsonNode& node) {
    node.Keys({"id", "name", "code", "params", "broker", "user", "device", "atMs"}, {"durationMs"});
    const std::string id = node.Member("id").NonEmptyText();
    if (id.size() > kMaxIdBytes) {
        node.Member("id").Refuse("must be no longer than 128 bytes");
    }
    node.Member("name").NonEmptyText();
    node.Member("code").Int32();
    node.Member("params").Any();
    node.Member("broker").Int32();
    node.Member("user").Unsigned(0, std::numeric_limits<uint64_t>::max());
    node.Member("device").Text();
    node.Member("atMs").Signed(0, std::numeric_limits<int64_t>::max());
    if (const CJsonNode duration = node.Member("durationMs"); duration.Present()) {
        duration.Signed(std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
    }
    return id;
}

std::string Joined(const Errors& errors) {
    std::string text;
    for (const std::string& error : errors) {
        text += text.empty() ? error : "; " + error;
    }
    return text;
}

Json::Value WriteRefusal(const Json::Value& event, const Errors& errors) {
    Json::Value json;
    if (event.isObject() && event["id"].isString() && IsUtf8(event["id"].asString())) {
        json["id"] = event["id"];
    }
    json["error"] = Joined(errors);
    return json;
}

Json::Value ReadBatch(const CJsonNode& root) {
    root.Keys({"events"}, {});
    root.Member("events").Items();
    return Json::Value();
}

}  // namespace

std::optional<Json::Value> CReportSink::Take(const std::string& text, Errors& errors) {
    const auto batch = ParseJson(text, kBatchDepth, errors);
    if (!batch) {
        return std::nullopt;
    }
    const size_t errorsBefore = errors.size();
    ReadBatch(CJsonNode(*batch, {}, errors));
    if (errors.size() != errorsBefore) {
        return std::nullopt;
    }
    Json::Value answer;
    answer["accepted"] = Json::Value(Json::arrayValue);
    for (const Json::Value& event : (*batch)["events"]) {
        Errors ofEvent;
        const std::string id = CheckEvent(CJsonNode(event, {}, ofEvent));
        if (ofEvent.empty()) {
            Count(id, event);
            answer["accepted"].append(id);
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
