#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "JsonNode.h"
#include "ScenarioAds.h"
#include "ScenarioPremium.h"
#include "ScenarioVip.h"

namespace devserver {

struct StockDetail {
    uint32_t type = 0;
    bool open = false;
    std::vector<uint32_t> ids;
};

struct ChatEntry {
    uint32_t scene = 0;
    bool allOpen = false;
    std::vector<StockDetail> stockDetails;
};

struct AiChat {
    int32_t resultCode = 0;
    std::string resultMessage;
    std::vector<ChatEntry> entries;
};

struct User {
    uint64_t id = 0;
    std::string name;
    std::vector<int32_t> markets;            // the leading one first
    std::optional<std::string> refuseLogin;  // the reason that a login is refused with
    std::optional<AiChat> aiChat;            // without it an answer has no data
    std::optional<Premium> premium;          // likewise
    std::optional<Vip> vip;                  // likewise
    std::optional<bool> trade;               // what the trade module answers; without it there is none
};

/// How deep a scenario may nest; a configuration value stands two levels below its root.
constexpr unsigned kScenarioDepth = 64;
constexpr unsigned kConfigDepth = kScenarioDepth - 2;

/// What the server knows of its users, of ads and of the common configuration. Always valid: it comes from a text
/// that passed every check, and each change of it does as well.
class CScenario {
public:
    /// The scenario of a JSON text, or nothing and at least one error.
    static std::optional<CScenario> FromText(const std::string& text, Errors& errors);

    Json::Value ToJson() const;

    const std::vector<User>& Users() const { return m_users; }

    /// Null for an id that no user has.
    const User* FindUser(uint64_t id) const;

    /// False, and nothing changed, for an id that no user has.
    bool SetAiChat(uint64_t id, std::optional<AiChat> aiChat);
    bool SetPremium(uint64_t id, std::optional<Premium> premium);
    bool SetVip(uint64_t id, std::optional<Vip> vip);
    bool SetTrade(uint64_t id, std::optional<bool> trade);

    /// How rights are shown.
    const RightCatalogue& Rights() const { return m_rights; }

    /// The places of ads.
    const std::vector<AdSlot>& Ads() const { return m_ads; }
    void SetAds(std::vector<AdSlot> ads) { m_ads = std::move(ads); }

    /// An object, one member per configuration name.
    const Json::Value& CommonConfig() const { return m_commonConfig; }
    void SetConfig(const std::string& name, Json::Value value);
    void RemoveConfig(const std::string& name);

private:
    static CScenario Read(const CJsonNode& root);

    template <class T>
    bool Set(uint64_t id, std::optional<T> User::*member, std::optional<T> value);

    RightCatalogue m_rights;
    std::vector<AdSlot> m_ads;
    std::vector<User> m_users;
    Json::Value m_commonConfig{Json::objectValue};
};

/// The member "aiChat" of a user.
AiChat ReadAiChat(const CJsonNode& node);

}  // namespace devserver
