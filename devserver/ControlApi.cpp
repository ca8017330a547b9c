#include "ControlApi.h"

#include <fmt/format.h>

#include <QString>
#include <QStringList>
#include <limits>

#include "ChannelServer.h"
#include "Hex.h"
#include "JsonNode.h"
#include "PushRequest.h"

namespace devserver {
namespace {

constexpr unsigned kRequestDepth = 16;
// A hundred years: enough for every test, and no sum with the clock overflows.
constexpr int64_t kMaxOffsetMs = 100LL * 366 * 24 * 3600 * 1000;

// The decimal number that is the whole of a text, as it stands in paths and queries.
std::optional<uint64_t> ReadNumber(const std::string& text) {
    bool isNumber = false;
    const qulonglong number = QString::fromStdString(text).toULongLong(&isNumber);
    if (!isNumber || std::to_string(number) != text) {
        return std::nullopt;
    }
    return number;
}

std::optional<uint32_t> ReadCommand(const std::string& text) {
    const auto number = ReadNumber(text);
    const bool isCommand = number && *number > 0 && *number <= std::numeric_limits<uint32_t>::max();
    return isCommand ? std::make_optional(uint32_t(*number)) : std::nullopt;
}

bool ReadTrade(const CJsonNode& root) {
    return root.Bool();
}

Json::Value ReadAny(const CJsonNode& root) {
    return root.Any();
}

int64_t ReadClockOffset(const CJsonNode& root) {
    root.Keys({"offsetMs"}, {});
    return root.Member("offsetMs").Signed(-kMaxOffsetMs, kMaxOffsetMs);
}

struct DropRequest {
    std::optional<uint64_t> user;  // everybody without it
};

DropRequest ReadDropRequest(const CJsonNode& root) {
    root.Keys({}, {"user"});
    return {ReadUserId(root)};
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

ControlAnswer Refusal(const Errors& errors) {
    std::string reasons;
    for (const std::string& error : errors) {
        reasons += reasons.empty() ? error : "; " + error;
    }
    return Refusal(400, reasons);
}

std::optional<uint64_t> ReadAfter(const ControlRequest& request) {
    return ReadNumber(request.after.value_or("0"));
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
        {"PUT", "/v1/users/*/premium", &CControlApi::PutPremium},
        {"DELETE", "/v1/users/*/premium", &CControlApi::DeletePremium},
        {"PUT", "/v1/users/*/vip", &CControlApi::PutVip},
        {"DELETE", "/v1/users/*/vip", &CControlApi::DeleteVip},
        {"PUT", "/v1/users/*/trade", &CControlApi::PutTrade},
        {"DELETE", "/v1/users/*/trade", &CControlApi::DeleteTrade},
        {"PUT", "/v1/config/*", &CControlApi::PutConfig},
        {"DELETE", "/v1/config/*", &CControlApi::DeleteConfig},
        {"POST", "/v1/push", &CControlApi::PostPush},
        {"PUT", "/v1/clock", &CControlApi::PutClock},
        {"POST", "/v1/drop", &CControlApi::PostDrop},
        {"PUT", "/v1/faults", &CControlApi::PutFaults},
        {"PUT", "/v1/faults/*", &CControlApi::PutFault},
        {"DELETE", "/v1/faults/*", &CControlApi::DeleteFault},
        {"PUT", "/v1/ads", &CControlApi::PutAds},
        {"DELETE", "/v1/ads", &CControlApi::DeleteAds},
        {"GET", "/v1/http", &CControlApi::GetHttp},
        {"GET", "/v1/reports", &CControlApi::GetReports},
        {"DELETE", "/v1/reports", &CControlApi::DeleteReports},
        {"PUT", "/v1/httpFaults", &CControlApi::PutHttpFaults},
        {"PUT", "/v1/httpFaults/*/*", &CControlApi::PutHttpFault},
        {"DELETE", "/v1/httpFaults/*/*", &CControlApi::DeleteHttpFault},
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
    answer.body["http"] = m_state.httpPort;
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
    const auto after = ReadAfter(request);
    if (!after) {
        return Refusal(400, "after: must be a whole number");
    }
    ControlAnswer answer;
    answer.body["received"] = Json::Value(Json::arrayValue);
    for (const ReceivedFrame& frame : m_state.received.Entries()) {
        if (frame.number > *after) {
            Json::Value& json = answer.body["received"].append(Json::objectValue);
            json["n"] = Json::UInt64(frame.number);
            json["connection"] = Json::UInt64(frame.connection);
            json["user"] = Json::UInt64(frame.user);
            json["kind"] = frame.kind;
            json["command"] = frame.command;
            json["session"] = Json::UInt64(frame.session);
            json["bodyHex"] = ToHex(frame.body);
            WriteMember(json, "language", frame.language);
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
        return Refusal(errors);
    }
    const Json::Value configBefore = m_state.scenario.CommonConfig();
    m_state.scenario = std::move(*scenario);
    TellConfigIfChanged(configBefore);
    return {};
}

template <class T>
ControlAnswer CControlApi::SetOfUser(const std::string& userId, std::optional<T> value, Setter<T> set) {
    const auto id = ReadNumber(userId);
    if (!id || !(m_state.scenario.*set)(*id, std::move(value))) {
        return Refusal(404, "path: no user has the id " + userId);
    }
    return {};
}

template <class T>
ControlAnswer CControlApi::PutOfUser(const ControlRequest& request, const std::string& userId,
                                     T (*read)(const CJsonNode&), Setter<T> set) {
    Errors errors;
    std::optional<T> value = ReadJson(request.body, kScenarioDepth, read, errors);
    return value ? SetOfUser(userId, std::move(value), set) : Refusal(errors);
}

ControlAnswer CControlApi::PutAiChat(const ControlRequest& request, const Wildcards& wildcards) {
    return PutOfUser(request, wildcards[0], ReadAiChat, &CScenario::SetAiChat);
}

ControlAnswer CControlApi::DeleteAiChat(const ControlRequest&, const Wildcards& wildcards) {
    return SetOfUser<AiChat>(wildcards[0], std::nullopt, &CScenario::SetAiChat);
}

ControlAnswer CControlApi::PutPremium(const ControlRequest& request, const Wildcards& wildcards) {
    return PutOfUser(request, wildcards[0], ReadPremium, &CScenario::SetPremium);
}

ControlAnswer CControlApi::DeletePremium(const ControlRequest&, const Wildcards& wildcards) {
    return SetOfUser<Premium>(wildcards[0], std::nullopt, &CScenario::SetPremium);
}

ControlAnswer CControlApi::PutVip(const ControlRequest& request, const Wildcards& wildcards) {
    return PutOfUser(request, wildcards[0], ReadVip, &CScenario::SetVip);
}

ControlAnswer CControlApi::DeleteVip(const ControlRequest&, const Wildcards& wildcards) {
    return SetOfUser<Vip>(wildcards[0], std::nullopt, &CScenario::SetVip);
}

ControlAnswer CControlApi::PutTrade(const ControlRequest& request, const Wildcards& wildcards) {
    return PutOfUser(request, wildcards[0], ReadTrade, &CScenario::SetTrade);
}

ControlAnswer CControlApi::DeleteTrade(const ControlRequest&, const Wildcards& wildcards) {
    return SetOfUser<bool>(wildcards[0], std::nullopt, &CScenario::SetTrade);
}

void CControlApi::TellConfigIfChanged(const Json::Value& before) {
    if (m_state.scenario.CommonConfig() != before) {
        m_channel.SendConfig();
    }
}

ControlAnswer CControlApi::PutConfig(const ControlRequest& request, const Wildcards& wildcards) {
    Errors errors;
    auto value = ReadJson(request.body, kConfigDepth, ReadAny, errors);
    if (!value) {
        return Refusal(errors);
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
    const auto push = ReadJson(request.body, kRequestDepth, ReadPushRequest, errors);
    if (!push) {
        return Refusal(errors);
    }
    ControlAnswer answer;
    answer.body["sent"] = m_channel.Push(push->user, push->command, push->body);
    return answer;
}

ControlAnswer CControlApi::PutClock(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    const auto offset = ReadJson(request.body, kRequestDepth, ReadClockOffset, errors);
    if (!offset) {
        return Refusal(errors);
    }
    m_state.clockOffsetMs = *offset;
    m_channel.SendClock();
    return {};
}

ControlAnswer CControlApi::PostDrop(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    const auto drop = ReadJson(request.body, kRequestDepth, ReadDropRequest, errors);
    if (!drop) {
        return Refusal(errors);
    }
    ControlAnswer answer;
    answer.body["dropped"] = m_channel.Drop(drop->user);
    return answer;
}

ControlAnswer CControlApi::PutFaults(const ControlRequest& request, const Wildcards&) {
    Errors errors;
    auto faults = FaultsFromText(request.body, errors);
    if (!faults) {
        return Refusal(errors);
    }
    m_state.faults.Set(std::move(*faults));
    return {};
}

ControlAnswer CControlApi::PutFault(const ControlRequest& request, const Wildcards& wildcards) {
    const auto command = ReadCommand(wildcards[0]);
    if (!command) {
        return Refusal(404, "path: no command has the number " + wildcards[0]);
    }
    Errors errors;
    auto fault = FaultFromText(request.body, errors);
    if (!fault) {
        return Refusal(errors);
    }
    m_state.faults.Set(*command, std::move(*fault));
    return {};
}

ControlAnswer CControlApi::DeleteFault(const ControlRequest&, const Wildcards& wildcards) {
    const auto command = ReadCommand(wildcards[0]);
    if (!command) {
        return Refusal(404, "path: no command has the number " + wildcards[0]);
    }
    m_state.faults.Remove(*command);
    return {};
}

}  // namespace devserver
