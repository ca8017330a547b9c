#include "ControlApi.h"

#include <fmt/format.h>

#include <QString>
#include <QStringList>
#include <limits>

#include "ChannelServer.h"
#include "Hex.h"
#include "JsonNode.h"

namespace devserver {
namespace {

constexpr unsigned kRequestDepth = 16;
// A hundred years: enough for every test, and no sum with the clock overflows.
constexpr int64_t kMaxOffsetMs = 100LL * 366 * 24 * 3600 * 1000;
constexpr uint64_t kMaxUInt64 = std::numeric_limits<uint64_t>::max();

ControlAnswer Refused(const Errors& errors) {
    std::string reasons;
    for (const std::string& error : errors) {
        reasons += reasons.empty() ? error : "; " + error;
    }
    return Refusal(400, reasons);
}

// The decimal number that is the whole of a text, as it stands in paths and queries.
std::optional<uint64_t> ReadNumber(const std::string& text) {
    bool isNumber = false;
    const qulonglong number = QString::fromStdString(text).toULongLong(&isNumber);
    if (!isNumber || std::to_string(number) != text) {
        return std::nullopt;
    }
    return number;
}

std::optional<uint64_t> ReadUser(const CJsonNode& root) {
    const CJsonNode user = root.Member("user");
    return user.Present() ? std::optional<uint64_t>(user.Unsigned(1, kMaxUInt64)) : std::nullopt;
}

std::optional<std::vector<std::string>> Match(const char* pattern, const std::string& path) {
    const QStringList expected = QString::fromLatin1(pattern).split(QLatin1Char('/'));
    const QStringList given = QString::fromStdString(path).split(QLatin1Char('/'));
    if (expected.size() != given.size()) {
        return std::nullopt;
    }
    std::vector<std::string> wildcards;
    for (int i = 0; i < given.size(); ++i) {
        if (expected[i] == QLatin1String("*") && !given[i].isEmpty()) {
            wildcards.push_back(given[i].toStdString());
        } else if (expected[i] != given[i]) {
            return std::nullopt;
        }
    }
    return wildcards;
}

}  // namespace

ControlAnswer Refusal(int status, const std::string& reason) {
    ControlAnswer answer;
    answer.status = status;
    answer.body["error"] = reason;
    return answer;
}

CControlApi::CControlApi(ServerState& state, CChannelServer& channel) : m_state(state), m_channel(channel) {}

const std::vector<CControlApi::Route>& CControlApi::Routes() {
    static const std::vector<Route> routes{
        {"GET", "/v1/state", &CControlApi::GetState},
        {"GET", "/v1/received", &CControlApi::GetReceived},
        {"GET", "/v1/scenario", &CControlApi::GetScenario},
        {"PUT", "/v1/scenario", &CControlApi::PutScenario},
        {"PUT", "/v1/users/*/aiChat", &CControlApi::PutAiChat},
        {"DELETE", "/v1/users/*/aiChat", &CControlApi::DeleteAiChat},
        {"PUT", "/v1/config/*", &CControlApi::PutConfig},
        {"DELETE", "/v1/config/*", &CControlApi::DeleteConfig},
        {"POST", "/v1/push", &CControlApi::PostPush},
        {"PUT", "/v1/clock", &CControlApi::PutClock},
        {"POST", "/v1/drop", &CControlApi::PostDrop},
        {"PUT", "/v1/faults", &CControlApi::PutFaults},
    };
    return routes;
}

ControlAnswer CControlApi::Handle(const ControlRequest& request) {
    bool isKnownPath = false;
    for (const Route& route : Routes()) {
        const auto wildcards = Match(route.pattern, request.path);
        if (wildcards && request.method == route.method) {
            return (this->*route.operation)(request, *wildcards);
        }
        isKnownPath = isKnownPath || wildcards.has_value();
    }
    if (isKnownPath) {
        return Refusal(400, "method: " + request.method + " is not possible here");
    }
    return Refusal(404, "path: " + request.path + " is unknown");
}

ControlAnswer CControlApi::GetState(const ControlRequest&, const Wildcards&) {
    ControlAnswer answer;
    answer.body["channel"] = m_channel.Port();
    answer.body["users"] = Json::Value(Json::arrayValue);
    for (const User& user : m_state.scenario.Users()) {
        Json::Value& json = answer.body["users"].append(Json::objectValue);
        json["id"] = Json::UInt64(user.id);
        json["name"] = user.name;
    }
    answer.body["connections"] = Json::Value(Json::arrayValue);
    for (const CChannelServer::Client& client : m_channel.Clients()) {
        Json::Value& json = answer.body["connections"].append(Json::objectValue);
        json["id"] = Json::UInt64(client.id);
        json["user"] = Json::UInt64(client.user);
    }
    answer.body["serverTimeMs"] = Json::Int64(m_state.ServerTimeMs());
    answer.body["clockOffsetMs"] = Json::Int64(m_state.clockOffsetMs);
    return answer;
}

ControlAnswer CControlApi::GetReceived(const ControlRequest& request, const Wildcards&) {
    const auto after = ReadNumber(request.after.value_or("0"));
    if (!after) {
        return Refusal(400, "after: must be a whole number");
    }
    ControlAnswer answer;
    answer.body["received"] = Json::Value(Json::arrayValue);
    for (const ReceivedFrame& frame : m_state.received.Frames()) {
        if (frame.number > *after) {
            Json::Value& json = answer.body["received"].append(Json::objectValue);
            json["n"] = Json::UInt64(frame.number);
            json["connection"] = Json::UInt64(frame.connection);
            json["user"] = Json::UInt64(frame.user);
            json["kind"] = frame.kind;
            json["command"] = frame.command;
            json["session"] = Json::UInt64(frame.session);
            json["bodyHex"] = ToHex(frame.body);
        }
    }
    return answer;
}

ControlAnswer CControlApi::GetScenario(const ControlRequest&, const Wildcards&) {
    ControlAnswer answer;
    answer.body = m_state.scenario.ToJson();
    return answer;
}

ControlAnswer CControlApi::PutScenario(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    auto scenario = CScenario::FromText(request.body, errors);
    if (!scenario) {
        return Refused(errors);
    }
    const Json::Value configBefore = m_state.scenario.CommonConfig();
    m_state.scenario = std::move(*scenario);
    TellConfigIfChanged(configBefore);
    return {};
}

ControlAnswer CControlApi::SetAiChat(const std::string& userId, std::optional<AiChat> aiChat) {
    const auto id = ReadNumber(userId);
    if (!id || !m_state.scenario.SetAiChat(*id, std::move(aiChat))) {
        return Refusal(404, "path: no user has the id " + userId);
    }
    return {};
}

ControlAnswer CControlApi::PutAiChat(const ControlRequest& request, const Wildcards& wildcards) {
    Errors errors;
    auto aiChat = AiChatFromText(request.body, errors);
    return aiChat ? SetAiChat(wildcards[0], std::move(aiChat)) : Refused(errors);
}

ControlAnswer CControlApi::DeleteAiChat(const ControlRequest&, const Wildcards& wildcards) {
    return SetAiChat(wildcards[0], std::nullopt);
}

void CControlApi::TellConfigIfChanged(const Json::Value& before) {
    if (m_state.scenario.CommonConfig() != before) {
        m_channel.SendConfig();
    }
}

ControlAnswer CControlApi::PutConfig(const ControlRequest& request, const Wildcards& wildcards) {
    Errors errors;
    auto value = ParseJson(request.body, kConfigDepth, errors);
    if (!value) {
        return Refused(errors);
    }
    const Json::Value before = m_state.scenario.CommonConfig();
    m_state.scenario.SetConfig(wildcards[0], std::move(*value));
    TellConfigIfChanged(before);
    return {};
}

ControlAnswer CControlApi::DeleteConfig(const ControlRequest&, const Wildcards& wildcards) {
    const Json::Value before = m_state.scenario.CommonConfig();
    m_state.scenario.RemoveConfig(wildcards[0]);
    TellConfigIfChanged(before);
    return {};
}

ControlAnswer CControlApi::PostPush(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    const Json::Value json = ParseJson(request.body, kRequestDepth, errors).value_or(Json::Value());
    if (!errors.empty()) {
        return Refused(errors);
    }
    const CJsonNode root(json, {}, errors);
    root.Keys({"command", "bodyHex"}, {"user"});
    const auto user = ReadUser(root);
    const auto command = uint32_t(root.Member("command").Unsigned(1, std::numeric_limits<uint32_t>::max()));
    const std::string body = root.Member("bodyHex").HexBytes();
    if (!errors.empty()) {
        return Refused(errors);
    }
    ControlAnswer answer;
    answer.body["sent"] = m_channel.Push(user, command, body);
    return answer;
}

ControlAnswer CControlApi::PutClock(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    const Json::Value json = ParseJson(request.body, kRequestDepth, errors).value_or(Json::Value());
    if (!errors.empty()) {
        return Refused(errors);
    }
    const CJsonNode root(json, {}, errors);
    root.Keys({"offsetMs"}, {});
    const int64_t offset = root.Member("offsetMs").Signed(-kMaxOffsetMs, kMaxOffsetMs);
    if (!errors.empty()) {
        return Refused(errors);
    }
    m_state.clockOffsetMs = offset;
    m_channel.SendClock();
    return {};
}

ControlAnswer CControlApi::PostDrop(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    const Json::Value json = ParseJson(request.body, kRequestDepth, errors).value_or(Json::Value());
    if (!errors.empty()) {
        return Refused(errors);
    }
    const CJsonNode root(json, {}, errors);
    root.Keys({}, {"user"});
    const auto user = ReadUser(root);
    if (!errors.empty()) {
        return Refused(errors);
    }
    ControlAnswer answer;
    answer.body["dropped"] = m_channel.Drop(user);
    return answer;
}

ControlAnswer CControlApi::PutFaults(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    auto faults = FaultsFromText(request.body, errors);
    if (!faults) {
        return Refused(errors);
    }
    m_state.faults.Set(std::move(*faults));
    return {};
}

}  // namespace devserver
