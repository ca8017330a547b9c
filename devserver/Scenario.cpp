#include "Scenario.h"

#include <algorithm>
#include <limits>
#include <set>

namespace devserver {
namespace {

constexpr uint32_t kMaxUInt32 = std::numeric_limits<uint32_t>::max();

StockDetail ReadStockDetail(const CJsonNode& node) {
    node.Keys({"type", "open"}, {"ids"});
    StockDetail detail;
    detail.type = uint32_t(node.Member("type").Unsigned(0, kMaxUInt32));
    detail.open = node.Member("open").Bool();
    for (const CJsonNode& id : node.Member("ids").Items()) {
        detail.ids.push_back(uint32_t(id.Unsigned(0, kMaxUInt32)));
    }
    return detail;
}

ChatEntry ReadChatEntry(const CJsonNode& node) {
    node.Keys({"scene", "allOpen"}, {"stockDetails"});
    ChatEntry entry;
    entry.scene = uint32_t(node.Member("scene").Unsigned(0, kMaxUInt32));
    entry.allOpen = node.Member("allOpen").Bool();
    for (const CJsonNode& detail : node.Member("stockDetails").Items()) {
        entry.stockDetails.push_back(ReadStockDetail(detail));
    }
    return entry;
}

AiChat ReadAiChat(const CJsonNode& node) {
    node.Keys({}, {"resultCode", "resultMessage", "entries"});
    AiChat aiChat;
    aiChat.resultCode = int32_t(
        node.Member("resultCode").Signed(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
    aiChat.resultMessage = node.Member("resultMessage").Text();
    for (const CJsonNode& entry : node.Member("entries").Items()) {
        aiChat.entries.push_back(ReadChatEntry(entry));
    }
    return aiChat;
}

User ReadUser(const CJsonNode& node) {
    node.Keys({"id", "name"}, {"markets", "refuseLogin", "aiChat"});
    User user;
    user.id = node.Member("id").Unsigned(1, std::numeric_limits<uint64_t>::max());
    user.name = node.Member("name").NonEmptyText();
    for (const CJsonNode& market : node.Member("markets").Items()) {
        user.markets.push_back(int32_t(market.Unsigned(0, std::numeric_limits<int32_t>::max())));
    }
    if (const CJsonNode refuse = node.Member("refuseLogin"); refuse.Present()) {
        user.refuseLogin = refuse.NonEmptyText();
    }
    if (const CJsonNode aiChat = node.Member("aiChat"); aiChat.Present()) {
        user.aiChat = ReadAiChat(aiChat);
    }
    return user;
}

Json::Value Write(const AiChat& aiChat) {
    Json::Value json;
    json["resultCode"] = aiChat.resultCode;
    json["resultMessage"] = aiChat.resultMessage;
    json["entries"] = Json::Value(Json::arrayValue);
    for (const ChatEntry& entry : aiChat.entries) {
        Json::Value& entryJson = json["entries"].append(Json::objectValue);
        entryJson["scene"] = entry.scene;
        entryJson["allOpen"] = entry.allOpen;
        entryJson["stockDetails"] = Json::Value(Json::arrayValue);
        for (const StockDetail& detail : entry.stockDetails) {
            Json::Value& detailJson = entryJson["stockDetails"].append(Json::objectValue);
            detailJson["type"] = detail.type;
            detailJson["open"] = detail.open;
            detailJson["ids"] = Json::Value(Json::arrayValue);
            for (const uint32_t id : detail.ids) {
                detailJson["ids"].append(id);
            }
        }
    }
    return json;
}

Json::Value Write(const User& user) {
    Json::Value json;
    json["id"] = Json::UInt64(user.id);
    json["name"] = user.name;
    json["markets"] = Json::Value(Json::arrayValue);
    for (const int32_t market : user.markets) {
        json["markets"].append(market);
    }
    if (user.refuseLogin) {
        json["refuseLogin"] = *user.refuseLogin;
    }
    if (user.aiChat) {
        json["aiChat"] = Write(*user.aiChat);
    }
    return json;
}

}  // namespace

std::optional<CScenario> CScenario::FromText(const std::string& text, Errors& errors) {
    const size_t errorsBefore = errors.size();
    const auto json = ParseJson(text, kScenarioDepth, errors);
    if (!json) {
        return std::nullopt;
    }
    const CJsonNode root(*json, {}, errors);
    root.Keys({"schema", "users", "commonConfig"}, {});
    root.Member("schema").Unsigned(1, 1);
    CScenario scenario;
    std::set<uint64_t> ids;
    for (const CJsonNode& node : root.Member("users").Items()) {
        scenario.m_users.push_back(ReadUser(node));
        const uint64_t id = scenario.m_users.back().id;
        if (id != 0 && !ids.insert(id).second) {
            node.Member("id").Refuse("another user has this id");
        }
    }
    for (const auto& [name, node] : root.Member("commonConfig").Members()) {
        scenario.m_commonConfig[name] = (*json)["commonConfig"][name];
    }
    if (errors.size() != errorsBefore) {
        return std::nullopt;
    }
    return scenario;
}

Json::Value CScenario::ToJson() const {
    Json::Value json;
    json["schema"] = 1;
    json["users"] = Json::Value(Json::arrayValue);
    for (const User& user : m_users) {
        json["users"].append(Write(user));
    }
    json["commonConfig"] = m_commonConfig;
    return json;
}

const User* CScenario::FindUser(uint64_t id) const {
    const auto found = std::find_if(m_users.begin(), m_users.end(), [&](const User& user) { return user.id == id; });
    return found == m_users.end() ? nullptr : &*found;
}

bool CScenario::SetAiChat(uint64_t id, std::optional<AiChat> aiChat) {
    const auto found = std::find_if(m_users.begin(), m_users.end(), [&](const User& user) { return user.id == id; });
    if (found == m_users.end()) {
        return false;
    }
    found->aiChat = std::move(aiChat);
    return true;
}

void CScenario::SetConfig(const std::string& name, Json::Value value) {
    m_commonConfig[name] = std::move(value);
}

void CScenario::RemoveConfig(const std::string& name) {
    m_commonConfig.removeMember(name);
}

std::optional<AiChat> AiChatFromText(const std::string& text, Errors& errors) {
    const size_t errorsBefore = errors.size();
    const auto json = ParseJson(text, kScenarioDepth, errors);
    if (!json) {
        return std::nullopt;
    }
    AiChat aiChat = ReadAiChat(CJsonNode(*json, {}, errors));
    if (errors.size() != errorsBefore) {
        return std::nullopt;
    }
    return aiChat;
}

}  // namespace devserver
