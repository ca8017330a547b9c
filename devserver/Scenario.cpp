#include "Scenario.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "Language.h"

namespace devserver {
namespace {

using google::protobuf::Value;

/// Adds the errors of one part of a scenario. `path` leads to it.
struct Check {
    std::string path;
    Errors& errors;

    void That(bool isTrue, const std::string& key, const std::string& reason) const {
        if (!isTrue) {
            errors.push_back(path + key + (key.empty() && path.empty() ? "" : ": ") + reason);
        }
    }
};

void CheckCode(const Value& code, const Check& check) {
    const double number = code.number_value();
    const bool isInt32 = number == std::floor(number) && number >= std::numeric_limits<int32_t>::min() &&
                         number <= std::numeric_limits<int32_t>::max();
    const bool isKnown = code.kind_case() == Value::KIND_NOT_SET || code.kind_case() == Value::kNullValue ||
                         (code.kind_case() == Value::kNumberValue && isInt32);
    check.That(isKnown, ".code", "must be null or a whole number from -2147483648 to 2147483647");
}

// A name is a part of a path, where these characters need no escape.
bool IsImage(const std::string& image) {
    constexpr const char* kNameCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.";
    return image.find_first_not_of(kNameCharacters) == std::string::npos || image.find("://") != std::string::npos;
}

void CheckCampaign(const Campaign& campaign, bool isPopup, const Check& check) {
    const auto eitherOf = [&check](bool has, bool hasRelative, const std::string& key) {
        check.That(has != hasRelative, "", "must hold either " + key + " or " + key + "InS");
    };
    eitherOf(campaign.has_start(), campaign.has_startins(), "start");
    eitherOf(campaign.has_end(), campaign.has_endins(), "end");
    eitherOf(campaign.has_expire(), campaign.has_expireins(), "expire");
    for (int i = 0; i < campaign.languages_size(); ++i) {
        const bool isKnown = std::any_of(kLanguageKeys.begin(), kLanguageKeys.end(), [&](const LanguageKey& language) {
            return campaign.languages(i) == language.key;
        });
        check.That(isKnown, fmt::format(FMT_STRING(".languages[{}]"), i),
                   "must be one of en, zh-Hans, zh-Hant, ja, fr");
    }
    check.That(IsImage(campaign.image()), ".image",
               "must be an absolute URL, or a name of ASCII letters, digits, '-', '_' and '.'");
    check.That(isPopup || !campaign.has_popuptype(), ".popupType", "only a popup has one");
    check.That(isPopup || campaign.showareas().empty(), ".showAreas", "only a popup has any");
}

void CheckSlot(const AdSlot& slot, const Check& check) {
    const bool isPopup = slot.adtype() == kAdTypePopup;
    check.That(!isPopup || slot.has_showduration(), ".showDuration", "missing");
    check.That(!isPopup || slot.has_showinterval(), ".showInterval", "missing");
    check.That(!isPopup || slot.has_showintervaltype(), ".showIntervalType", "missing");
    std::set<std::string> ids;
    for (int i = 0; i < slot.campaigns_size(); ++i) {
        const Check ofCampaign{fmt::format(FMT_STRING("{}.campaigns[{}]"), check.path, i), check.errors};
        CheckCampaign(slot.campaigns(i), isPopup, ofCampaign);
        ofCampaign.That(ids.insert(slot.campaigns(i).id()).second, ".id", "another campaign of the slot has this id");
    }
}

void CheckUser(const User& user, const Check& check) {
    CheckCode(user.premium().code(), {check.path + "premium", check.errors});
    CheckCode(user.vip().code(), {check.path + "vip", check.errors});
    CheckCode(user.activation().code(), {check.path + "activation", check.errors});
}

void CheckAds(const Scenario& scenario, Errors& errors) {
    std::set<std::pair<int32_t, int32_t>> positions;
    for (int i = 0; i < scenario.ads_size(); ++i) {
        const Check check{fmt::format(FMT_STRING("ads[{}]"), i), errors};
        CheckSlot(scenario.ads(i), check);
        check.That(positions.insert({scenario.ads(i).adtype(), scenario.ads(i).adposition()}).second, ".adPosition",
                   "another slot has this type and position");
    }
}

void CheckScenario(const Scenario& scenario, Errors& errors) {
    std::set<int32_t> rights;
    for (int i = 0; i < scenario.rights_size(); ++i) {
        const Check check{fmt::format(FMT_STRING("rights[{}]"), i), errors};
        check.That(rights.insert(scenario.rights(i).access()).second, ".access", "another right has this number");
    }
    std::set<int32_t> links;
    for (int i = 0; i < scenario.links_size(); ++i) {
        const Check check{fmt::format(FMT_STRING("links[{}]"), i), errors};
        check.That(links.insert(scenario.links(i).id()).second, ".id", "another link has this id");
    }
    CheckAds(scenario, errors);
    std::set<uint64_t> ids;
    for (int i = 0; i < scenario.users_size(); ++i) {
        const Check check{fmt::format(FMT_STRING("users[{}]."), i), errors};
        CheckUser(scenario.users(i), check);
        check.That(ids.insert(scenario.users(i).id()).second, "id", "another user has this id");
    }
}

// The parser takes other types as lists, which would not match the kept JSON.
void CheckList(const Json::Value& json, const char* key, Errors& errors) {
    const Json::Value& list = json[key];
    const bool isList =
        list.isNull() ||
        (list.isArray() && std::all_of(list.begin(), list.end(), [](const auto& item) { return item.isObject(); }));
    Check{"", errors}.That(isList, key, "must be a list of objects");
}

// Replaces the entries of the list that have these members by one entry, or removes them with `entry` null.
std::optional<Json::Value> WithEntry(const Json::Value& list, const Json::Value& members,
                                     const std::optional<Json::Value>& entry, Errors& errors) {
    if (entry && !entry->isObject()) {
        errors.emplace_back("must be an object");
        return std::nullopt;
    }
    const auto isReplaced = [&members](const Json::Value& item) {
        const auto names = members.getMemberNames();
        return item.isObject() && std::all_of(names.begin(), names.end(),
                                              [&](const std::string& name) { return item[name] == members[name]; });
    };
    Json::Value changed(Json::arrayValue);
    bool isWritten = !entry;
    const auto write = [&] {
        Json::Value& added = changed.append(entry.value_or(Json::Value()));
        for (const std::string& name : members.getMemberNames()) {
            added[name] = members[name];
        }
        isWritten = true;
    };
    for (const Json::Value& item : list) {
        if (!isReplaced(item)) {
            changed.append(item);
        } else if (!isWritten) {
            write();
        }
    }
    if (!isWritten) {
        write();
    }
    return changed;
}

// Without the values of any JSON type: protobuf limits their depth, and their numbers to doubles.
Json::Value Typed(const Json::Value& json) {
    Json::Value typed = json;
    if (typed["commonConfig"].isObject()) {
        typed["commonConfig"].clear();
    }
    for (Json::Value& right : typed["rights"]) {
        if (right.isMember("otherInfo") && !right["otherInfo"].isString()) {
            right["otherInfo"] = WriteJson(right["otherInfo"]);
        }
    }
    return typed;
}

}  // namespace

std::optional<CScenario> CScenario::FromText(const std::string& text, Errors& errors) {
    const size_t errorsBefore = errors.size();
    CScenario scenario;
    auto json = ParseJson(text, errors);
    if (json && json->isObject()) {
        for (const char* key : {"rights", "links", "ads", "users"}) {
            CheckList(*json, key, errors);
        }
    }
    if (errors.size() == errorsBefore) {
        scenario.m_json = std::move(*json);
        const Json::Value& whole = scenario.m_json;
        if (ReadMessage(whole.isObject() ? Typed(whole) : whole, scenario.m_scenario, errors)) {
            CheckScenario(scenario.m_scenario, errors);
        }
    }
    return errors.size() == errorsBefore ? std::make_optional(std::move(scenario)) : std::nullopt;
}

int CScenario::IndexOf(uint64_t userId) const {
    const auto found =
        std::find_if(Users().begin(), Users().end(), [userId](const User& user) { return user.id() == userId; });
    return int(std::distance(Users().begin(), found));
}

const User* CScenario::FindUser(uint64_t id) const {
    const int index = IndexOf(id);
    return index == Users().size() ? nullptr : &Users()[index];
}

bool CScenario::SetOfUser(uint64_t id, const std::string& key, const std::optional<Json::Value>& value,
                          Errors& errors) {
    const int index = IndexOf(id);
    Json::Value& kept = m_json["users"][index];
    Json::Value changed = kept;
    if (value) {
        changed[key] = *value;
    } else {
        changed.removeMember(key);
    }
    const size_t errorsBefore = errors.size();
    User user;
    if (ReadMessage(changed, user, errors)) {
        CheckUser(user, {"", errors});
    }
    if (errors.size() != errorsBefore) {
        return false;
    }
    kept = std::move(changed);
    *m_scenario.mutable_users(index) = std::move(user);
    return true;
}

bool CScenario::SetRight(uint64_t id, int32_t access, const std::optional<Json::Value>& right, Errors& errors) {
    const Json::Value& user = m_json["users"][IndexOf(id)];
    if (!right && !user.isMember("premium")) {
        return true;
    }
    Json::Value premium = user.get("premium", Json::objectValue);
    Json::Value members;
    members["access"] = access;
    const auto rights = WithEntry(premium["rights"], members, right, errors);
    if (!rights) {
        return false;
    }
    premium["rights"] = *rights;
    return SetOfUser(id, "premium", premium, errors);
}

bool CScenario::SetSlot(int32_t type, int32_t position, const std::optional<Json::Value>& slot, Errors& errors) {
    Json::Value members;
    members["adType"] = type;
    members["adPosition"] = position;
    const auto ads = WithEntry(m_json.get("ads", Json::arrayValue), members, slot, errors);
    return ads && SetAds(*ads, errors);
}

const RightDisplay* CScenario::FindRight(int32_t access) const {
    const auto& rights = m_scenario.rights();
    const auto found = std::find_if(rights.begin(), rights.end(),
                                    [access](const RightDisplay& right) { return right.access() == access; });
    return found == rights.end() ? nullptr : &*found;
}

bool CScenario::SetAds(const Json::Value& ads, Errors& errors) {
    const size_t errorsBefore = errors.size();
    Json::Value json;
    json["schema"] = 1;
    json["ads"] = ads;
    json["commonConfig"] = Json::objectValue;
    Scenario scenario;
    CheckList(json, "ads", errors);
    if (errors.size() == errorsBefore && ReadMessage(json, scenario, errors)) {
        CheckAds(scenario, errors);
    }
    if (errors.size() != errorsBefore) {
        return false;
    }
    if (ads.isNull()) {
        m_json.removeMember("ads");
    } else {
        m_json["ads"] = ads;
    }
    *m_scenario.mutable_ads() = scenario.ads();
    return true;
}

std::optional<int32_t> AnswerCode(const Value& code) {
    return code.kind_case() == Value::kNullValue ? std::nullopt : std::make_optional(int32_t(code.number_value()));
}

}  // namespace devserver
