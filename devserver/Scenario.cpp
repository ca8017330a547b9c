#include "Scenario.h"

#include <algorithm>
#include <limits>
#include <set>

namespace devserver {
namespace {

StockDetail ReadStockDetail(const CJsonNode& node) {
    node.Keys({"type", "open"}, {"ids"});
    StockDetail detail;
    detail.type = node.Member("type").UInt32();
    detail.open = node.Member("open").Bool();
    for (const CJsonNode& id : node.Member("ids").Items()) {
        detail.ids.push_back(id.UInt32());
    }
    return detail;
}

ChatEntry ReadChatEntry(const CJsonNode& node) {
    node.Keys({"scene", "allOpen"}, {"stockDetails"});
    ChatEntry entry;
    entry.scene = node.Member("scene").UInt32();
    entry.allOpen = node.Member("allOpen").Bool();
    for (const CJsonNode& detail : node.Member("stockDetails").Items()) {
        entry.stockDetails.push_back(ReadStockDetail(detail));
    }
    return entry;
}

User ReadUser(const CJsonNode& node) {
    node.Keys({"id", "name"}, {"markets", "refuseLogin", "aiChat", "premium", "vip", "trade"});
    User user;
    user.id = node.Member("id").Unsigned(1, std::numeric_limits<uint64_t>::max());
    user.name = node.Member("name").NonEmptyText();
    for (const CJsonNode& market : node.Member("markets").Items()) {
        user.markets.push_back(int32_t(market.Unsigned(0, std::numeric_limits<int32_t>::max())));
    }
    user.refuseLogin = node.Member("refuseLogin").Maybe(&CJsonNode::NonEmptyText);
    if (const CJsonNode aiChat = node.Member("aiChat"); aiChat.Present()) {
        user.aiChat = ReadAiChat(aiChat);
    }
    if (const CJsonNode premium = node.Member("premium"); premium.Present()) {
        user.premium = ReadPremium(premium);
    }
    if (const CJsonNode vip = node.Member("vip"); vip.Present()) {
        user.vip = ReadVip(vip);
    }
    user.trade = node.Member("trade").Maybe(&CJsonNode::Bool);
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
    WriteMember(json, "refuseLogin", user.refuseLogin);
    if (user.aiChat) {
        json["aiChat"] = Write(*user.aiChat);
    }
    if (user.premium) {
        json["premium"] = WritePremium(*user.premium);
    }
    if (user.vip) {
        json["vip"] = WriteVip(*user.vip);
    }
    WriteMember(json, "trade", user.trade);
    return json;
}

}  // namespace

AiChat ReadAiChat(const CJsonNode& node) {
    node.Keys({}, {"resultCode", "resultMessage", "entries"});
    AiChat aiChat;
    aiChat.resultCode = node.Member("resultCode").Int32();
    aiChat.resultMessage = node.Member("resultMessage").Text();
    for (const CJsonNode& entry : node.Member("entries").Items()) {
        aiChat.entries.push_back(ReadChatEntry(entry));
    }
    return aiChat;
}

CScenario CScenario::Read(const CJsonNode& root) {
    root.Keys({"schema", "users", "commonConfig"}, {"rights", "ads"});
    root.Member("schema").Unsigned(1, 1);
    CScenario scenario;
    scenario.m_rights = ReadRightCatalogue(root.Member("rights"));
    scenario.m_ads = ReadAds(root.Member("ads"));
    std::set<uint64_t> ids;
    for (const CJsonNode& node : root.Member("users").Items()) {
        scenario.m_users.push_back(ReadUser(node));
        const uint64_t id = scenario.m_users.back().id;
        if (id != 0 && !ids.insert(id).second) {
            node.Member("id").Refuse("another user has this id");
        }
    }
    for (const auto& [name, node] : root.Member("commonConfig").Members()) {
        scenario.m_commonConfig[name] = node.Any();
    }
    return scenario;
}

std::optional<CScenario> CScenario::FromText(const std::string& text, Errors& errors) {
    return ReadJson(text, kScenarioDepth, Read, errors);
}

Json::Value CScenario::ToJson() const {
    Json::Value json;
    json["schema"] = 1;
    if (!m_rights.empty()) {
        json["rights"] = WriteRightCatalogue(m_rights);
    }
    if (!m_ads.empty()) {
        json["ads"] = WriteAds(m_ads);
    }
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

template <class T>
bool CScenario::Set(uint64_t id, std::optional<T> User::*member, std::optional<T> value) {
    const auto found = std::find_if(m_users.begin(), m_users.end(), [&](const User& user) { return user.id == id; });
    if (found == m_users.end()) {
        return false;
    }
    (*found).*member = std::move(value);
    return true;
}

bool CScenario::SetAiChat(uint64_t id, std::optional<AiChat> aiChat) {
    return Set(id, &User::aiChat, std::move(aiChat));
}

bool CScenario::SetPremium(uint64_t id, std::optional<Premium> premium) {
    return Set(id, &User::premium, std::move(premium));
}

bool CScenario::SetVip(uint64_t id, std::optional<Vip> vip) {
    return Set(id, &User::vip, std::move(vip));
}

bool CScenario::SetTrade(uint64_t id, std::optional<bool> trade) {
    return Set(id, &User::trade, trade);
}

void CScenario::SetConfig(const std::string& name, Json::Value value) {
    m_commonConfig[name] = std::move(value);
}

void CScenario::RemoveConfig(const std::string& name) {
    m_commonConfig.removeMember(name);
}

}  // namespace devserver
