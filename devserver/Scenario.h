#pragma once

#include <json/value.h>

#include <cstdint>
#include <optional>
#include <string>

#include "JsonMessage.h"
#include "scenario.pb.h"

namespace devserver {

constexpr int32_t kAdTypePopup = 2;

/// A configuration value is two levels below the scenario's root.
constexpr unsigned kConfigDepth = kMaxJsonDepth - 2;

/// Users, ads and common configuration of the server. Always valid: every change passes all checks. The JSON is kept
/// as it was read, as common configuration may hold numbers that protobuf's JSON types cannot.
class CScenario {
public:
    /// The scenario of a server that is started without one.
    static constexpr const char* kBuiltInFile = ":/devserver/scenarios/default.json";

    /// Returns nothing, with at least one error, if the text is no valid scenario.
    static std::optional<CScenario> FromText(const std::string& text, Errors& errors);

    const Json::Value& ToJson() const { return m_json; }

    const google::protobuf::RepeatedPtrField<User>& Users() const { return m_scenario.users(); }

    /// Null if no user has the id.
    const User* FindUser(uint64_t id) const;

    /// Replaces one member of a user, or removes it with `value` null. Returns false, with an error, and changes
    /// nothing if the value is invalid. The user must exist.
    bool SetOfUser(uint64_t id, const std::string& key, const std::optional<Json::Value>& value, Errors& errors);

    /// Replaces all entries of one right in the user's answer by one, or removes them with `right` null. As SetOfUser.
    bool SetRight(uint64_t id, int32_t access, const std::optional<Json::Value>& right, Errors& errors);

    const google::protobuf::RepeatedPtrField<RightDisplay>& Rights() const { return m_scenario.rights(); }
    const google::protobuf::RepeatedPtrField<Link>& Links() const { return m_scenario.links(); }

    /// Null if the catalogue does not have the right.
    const RightDisplay* FindRight(int32_t access) const;

    const google::protobuf::RepeatedPtrField<AdSlot>& Ads() const { return m_scenario.ads(); }

    /// Replaces all ads by a JSON list, or removes them with null. Returns false, with an error, and changes nothing if
    /// it is invalid.
    bool SetAds(const Json::Value& ads, Errors& errors);

    /// Replaces or adds one ad position, or removes it with `slot` null. As SetAds.
    bool SetSlot(int32_t type, int32_t position, const std::optional<Json::Value>& slot, Errors& errors);

    /// An object with one member per configuration name.
    const Json::Value& CommonConfig() const { return m_json["commonConfig"]; }
    void SetConfig(const std::string& name, const Json::Value& value) { m_json["commonConfig"][name] = value; }
    void RemoveConfig(const std::string& name) { m_json["commonConfig"].removeMember(name); }

private:
    int IndexOf(uint64_t userId) const;

    Json::Value m_json;
    Scenario m_scenario;
};

/// Returns the code of an answer: 0 by default, nothing for null.
std::optional<int32_t> AnswerCode(const google::protobuf::Value& code);

}  // namespace devserver
