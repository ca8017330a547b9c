#include "ControlApi.h"

#include <QFile>
#include <limits>
#include <utility>

#include "ChannelServer.h"
#include "Digits.h"
#include "PushRequest.h"

namespace devserver {
namespace {

WebAnswer Done(const Json::Value& body = Json::objectValue) {
    WebAnswer answer;
    answer.body = WriteJson(body);
    return answer;
}

WebAnswer Refusal(const Errors& errors) {
    return CWebServer::Refusal(400, Joined(errors));
}

WebAnswer NoSuchCommand(const std::string& number) {
    return CWebServer::Refusal(404, "path: no command has the number " + number);
}

// Nothing unless the text is a number from 0 to 2147483647.
std::optional<int32_t> ReadInt32(const std::string& text) {
    const auto number = ReadNumber(text);
    const bool fits = number && *number <= uint64_t(std::numeric_limits<int32_t>::max());
    return fits ? std::make_optional(int32_t(*number)) : std::nullopt;
}

WebAnswer NoSuchPath(const std::string& path) {
    return CWebServer::Refusal(404, "path: nothing is served on " + path);
}

/// Answers {key: [entries]} with the entries of a log whose number is above the request's `after`.
template <class Entries, class Write>
WebAnswer Newer(const WebRequest& request, const char* key, const Entries& entries, Write write,
                Json::Value body = Json::objectValue) {
    const auto after = ReadNumber(request.after.value_or("0"));
    if (!after) {
        return CWebServer::Refusal(400, "after: must be a whole number");
    }
    body[key] = Json::arrayValue;
    for (const auto& entry : entries) {
        if (entry.number > *after) {
            Json::Value json = write(entry);
            json["n"] = Json::UInt64(entry.number);
            body[key].append(std::move(json));
        }
    }
    return Done(body);
}

Json::Value Write(const ReceivedFrame& frame) {
    Json::Value json;
    json["connection"] = Json::UInt64(frame.connection);
    json["user"] = Json::UInt64(frame.user);
    json["kind"] = frame.kind;
    json["command"] = frame.command;
    json["session"] = Json::UInt64(frame.session);
    json["bodyHex"] = ToHex(frame.body);
    if (frame.language) {
        json["language"] = *frame.language;
    }
    return json;
}

Json::Value Write(const ReceivedRequest& request) {
    Json::Value json;
    json["method"] = request.method;
    json["path"] = IsUtf8(request.path) ? request.path : ToHex(request.path);
    json["headers"] = Json::objectValue;
    for (const auto& [name, value] : request.headers) {
        if (IsUtf8(name) && IsUtf8(value)) {
            Json::Value& header = json["headers"][name];
            header = header.isNull() ? value : header.asString() + ", " + value;
        }
    }
    if (IsUtf8(request.body)) {
        json["body"] = request.body;
    } else {
        json["bodyHex"] = ToHex(request.body);
    }
    json["status"] = request.status;
    return json;
}

}  // namespace

CControlApi::CControlApi(ServerState& state, CChannelServer& channel) : m_state(state), m_channel(channel) {}

void CControlApi::AddRoutes(CWebServer& server) {
    struct Operation {
        const char* method;
        const char* pattern;
        WebAnswer (CControlApi::*operation)(const WebRequest& request);
    };
    constexpr const char* kRight = "/v1/users/([^/]+)/rights/([^/]+)";
    constexpr const char* kSlot = "/v1/ads/([^/]+)/([^/]+)";
    constexpr const char* kOfUser = "/v1/users/([^/]+)/(aiChat|premium|vip|activation|trade)";
    const std::vector<Operation> operations{
        {"GET", "/v1/state", &CControlApi::GetState},
        {"GET", "/v1/received", &CControlApi::GetReceived},
        {"GET", "/v1/scenario", &CControlApi::GetScenario},
        {"GET", "/v1/scenario/builtIn", &CControlApi::GetBuiltInScenario},
        {"PUT", "/v1/scenario", &CControlApi::PutScenario},
        {"PUT", kOfUser, &CControlApi::PutOfUser},
        {"DELETE", kOfUser, &CControlApi::DeleteOfUser},
        {"PUT", kRight, &CControlApi::PutRight},
        {"DELETE", kRight, &CControlApi::DeleteRight},
        {"PUT", "/v1/config/([^/]+)", &CControlApi::PutConfig},
        {"DELETE", "/v1/config/([^/]+)", &CControlApi::DeleteConfig},
        {"POST", "/v1/push", &CControlApi::PostPush},
        {"PUT", "/v1/clock", &CControlApi::PutClock},
        {"POST", "/v1/drop", &CControlApi::PostDrop},
        {"GET", "/v1/faults", &CControlApi::GetFaults},
        {"PUT", "/v1/faults", &CControlApi::PutFaults},
        {"PUT", "/v1/faults/([^/]+)", &CControlApi::PutFault},
        {"DELETE", "/v1/faults/([^/]+)", &CControlApi::DeleteFault},
        {"PUT", "/v1/ads", &CControlApi::PutAds},
        {"DELETE", "/v1/ads", &CControlApi::DeleteAds},
        {"PUT", kSlot, &CControlApi::PutSlot},
        {"DELETE", kSlot, &CControlApi::DeleteSlot},
        {"GET", "/v1/http", &CControlApi::GetHttp},
        {"GET", "/v1/reports", &CControlApi::GetReports},
        {"DELETE", "/v1/reports", &CControlApi::DeleteReports},
        {"GET", "/v1/httpFaults", &CControlApi::GetHttpFaults},
        {"PUT", "/v1/httpFaults", &CControlApi::PutHttpFaults},
        {"PUT", "/v1/httpFaults(/[^/]+/[^/]+)", &CControlApi::PutHttpFault},
        {"DELETE", "/v1/httpFaults(/[^/]+/[^/]+)", &CControlApi::DeleteHttpFault},
    };
    for (const Operation& operation : operations) {
        server.Route(operation.method, operation.pattern,
                     [this, call = operation.operation](const WebRequest& request) { return (this->*call)(request); });
    }
    for (const Operation& operation : operations) {
        server.Route(nullptr, operation.pattern, [](const WebRequest& request) {
            return CWebServer::Refusal(400, "method: " + request.method + " is not possible here");
        });
    }
    server.Route(nullptr, CWebServer::kAnyPath, [](const WebRequest& request) {
        return CWebServer::Refusal(404, "path: " + request.path + " is unknown");
    });
}

WebAnswer CControlApi::GetState(const WebRequest& /*request*/) {
    Json::Value body;
    body["channel"] = m_channel.Port();
    body["http"] = m_state.httpPort;
    body["users"] = Json::arrayValue;
    for (const User& user : m_state.scenario.Users()) {
        Json::Value& json = body["users"].append(Json::objectValue);
        json["id"] = Json::UInt64(user.id());
        json["name"] = user.name();
    }
    body["connections"] = Json::arrayValue;
    for (const CChannelServer::Client& client : m_channel.Clients()) {
        Json::Value& json = body["connections"].append(Json::objectValue);
        json["id"] = Json::UInt64(client.id);
        json["user"] = Json::UInt64(client.user);
    }
    body["serverTimeMs"] = Json::Int64(m_state.ServerTimeMs());
    body["clockOffsetMs"] = Json::Int64(m_state.clockOffsetMs);
    return Done(body);
}

WebAnswer CControlApi::GetReceived(const WebRequest& request) {
    return Newer(request, "received", m_state.received.Entries(),
                 [](const ReceivedFrame& frame) { return Write(frame); });
}

WebAnswer CControlApi::GetScenario(const WebRequest& /*request*/) {
    return Done(m_state.scenario.ToJson());
}

WebAnswer CControlApi::GetBuiltInScenario(const WebRequest& /*request*/) {
    QFile file(QString::fromLatin1(CScenario::kBuiltInFile));
    file.open(QIODevice::ReadOnly);
    Errors errors;
    const auto json = ParseJson(file.readAll().toStdString(), errors);
    return json ? Done(*json) : CWebServer::Refusal(500, Joined(errors));
}

WebAnswer CControlApi::PutScenario(const WebRequest& request) {
    Errors errors;
    auto scenario = CScenario::FromText(request.body, errors);
    if (!scenario) {
        return Refusal(errors);
    }
    const Json::Value configBefore = m_state.scenario.CommonConfig();
    m_state.scenario = std::move(*scenario);
    SendConfigIfChanged(configBefore);
    m_channel.SendLinks();
    return Done();
}

WebAnswer CControlApi::SetOfUser(const WebRequest& request, const std::optional<Json::Value>& value) {
    const auto id = ReadNumber(request.matches[0]);
    if (!id || !m_state.scenario.FindUser(*id)) {
        return CWebServer::Refusal(404, "path: no user has the id " + request.matches[0]);
    }
    Errors errors;
    return m_state.scenario.SetOfUser(*id, request.matches[1], value, errors) ? Done() : Refusal(errors);
}

WebAnswer CControlApi::PutOfUser(const WebRequest& request) {
    Errors errors;
    const auto value = ParseJson(request.body, errors);
    return value ? SetOfUser(request, value) : Refusal(errors);
}

WebAnswer CControlApi::DeleteOfUser(const WebRequest& request) {
    return SetOfUser(request, std::nullopt);
}

WebAnswer CControlApi::SetRight(const WebRequest& request, const std::optional<Json::Value>& right) {
    const auto id = ReadNumber(request.matches[0]);
    const auto access = ReadInt32(request.matches[1]);
    if (!id || !m_state.scenario.FindUser(*id)) {
        return CWebServer::Refusal(404, "path: no user has the id " + request.matches[0]);
    }
    if (!access) {
        return CWebServer::Refusal(404, "path: no right has the number " + request.matches[1]);
    }
    Errors errors;
    return m_state.scenario.SetRight(*id, *access, right, errors) ? Done() : Refusal(errors);
}

WebAnswer CControlApi::PutRight(const WebRequest& request) {
    Errors errors;
    const auto right = ParseJson(request.body, errors);
    return right ? SetRight(request, right) : Refusal(errors);
}

WebAnswer CControlApi::DeleteRight(const WebRequest& request) {
    return SetRight(request, std::nullopt);
}

void CControlApi::SendConfigIfChanged(const Json::Value& before) {
    if (m_state.scenario.CommonConfig() != before) {
        m_channel.SendConfig();
    }
}

WebAnswer CControlApi::PutConfig(const WebRequest& request) {
    Errors errors;
    const auto value = ParseJson(request.body, errors, kConfigDepth);
    if (!value) {
        return Refusal(errors);
    }
    const Json::Value before = m_state.scenario.CommonConfig();
    m_state.scenario.SetConfig(request.matches[0], *value);
    SendConfigIfChanged(before);
    return Done();
}

WebAnswer CControlApi::DeleteConfig(const WebRequest& request) {
    const Json::Value before = m_state.scenario.CommonConfig();
    m_state.scenario.RemoveConfig(request.matches[0]);
    SendConfigIfChanged(before);
    return Done();
}

WebAnswer CControlApi::PostPush(const WebRequest& request) {
    Errors errors;
    const auto push = ReadPush(request.body, errors);
    if (!push) {
        return Refusal(errors);
    }
    Json::Value body;
    body["sent"] = m_channel.Push(push->user, push->command, push->body);
    return Done(body);
}

WebAnswer CControlApi::PutClock(const WebRequest& request) {
    Errors errors;
    const auto clock = ReadText<ClockRequest>(request.body, errors);
    if (!clock) {
        return Refusal(errors);
    }
    m_state.clockOffsetMs = clock->offsetms();
    m_channel.SendClock();
    return Done();
}

WebAnswer CControlApi::PostDrop(const WebRequest& request) {
    Errors errors;
    const auto drop = ReadText<DropRequest>(request.body, errors);
    if (!drop) {
        return Refusal(errors);
    }
    Json::Value body;
    body["dropped"] = m_channel.Drop(drop->has_user() ? std::make_optional(drop->user()) : std::nullopt);
    return Done(body);
}

WebAnswer CControlApi::GetFaults(const WebRequest& /*request*/) {
    return Done(WriteFaultTable(m_state.faults));
}

WebAnswer CControlApi::PutFaults(const WebRequest& request) {
    Errors errors;
    auto faults = ReadReplyFaults(request.body, errors);
    if (!faults) {
        return Refusal(errors);
    }
    m_state.faults.Set(std::move(*faults));
    return Done();
}

WebAnswer CControlApi::PutFault(const WebRequest& request) {
    const auto command = ReadCommand(request.matches[0]);
    if (!command) {
        return NoSuchCommand(request.matches[0]);
    }
    Errors errors;
    const auto json = ParseJson(request.body, errors);
    const auto fault = json ? ReadReplyFault(*json, errors) : std::nullopt;
    if (!fault) {
        return Refusal(errors);
    }
    m_state.faults.Set(*command, *fault);
    return Done();
}

WebAnswer CControlApi::DeleteFault(const WebRequest& request) {
    const auto command = ReadCommand(request.matches[0]);
    if (!command) {
        return NoSuchCommand(request.matches[0]);
    }
    m_state.faults.Remove(*command);
    return Done();
}

WebAnswer CControlApi::PutAds(const WebRequest& request) {
    Errors errors;
    const auto ads = ParseJson(request.body, errors);
    return ads && m_state.scenario.SetAds(*ads, errors) ? Done() : Refusal(errors);
}

WebAnswer CControlApi::DeleteAds(const WebRequest& /*request*/) {
    Errors errors;
    m_state.scenario.SetAds(Json::nullValue, errors);
    return Done();
}

WebAnswer CControlApi::SetSlot(const WebRequest& request, const std::optional<Json::Value>& slot) {
    const auto type = ReadInt32(request.matches[0]);
    const auto position = ReadInt32(request.matches[1]);
    if (!type || !position) {
        return NoSuchPath(request.path);
    }
    Errors errors;
    return m_state.scenario.SetSlot(*type, *position, slot, errors) ? Done() : Refusal(errors);
}

WebAnswer CControlApi::PutSlot(const WebRequest& request) {
    Errors errors;
    const auto slot = ParseJson(request.body, errors);
    return slot ? SetSlot(request, slot) : Refusal(errors);
}

WebAnswer CControlApi::DeleteSlot(const WebRequest& request) {
    return SetSlot(request, std::nullopt);
}

WebAnswer CControlApi::GetHttp(const WebRequest& request) {
    return Newer(request, "http", m_state.requests.Entries(),
                 [](const ReceivedRequest& received) { return Write(received); });
}

WebAnswer CControlApi::GetReports(const WebRequest& request) {
    Json::Value body;
    body["counted"] = Json::UInt64(m_state.reports.Counted());
    body["resends"] = Json::UInt64(m_state.reports.Resends());
    const auto write = [this](const Report& report) {
        Json::Value json = report.event;
        json["resends"] = Json::UInt64(m_state.reports.Resends(report.id));
        return json;
    };
    return Newer(request, "reports", m_state.reports.Reports(), write, std::move(body));
}

WebAnswer CControlApi::DeleteReports(const WebRequest& /*request*/) {
    m_state.reports.Forget();
    return Done();
}

WebAnswer CControlApi::GetHttpFaults(const WebRequest& /*request*/) {
    return Done(WriteFaultTable(m_state.httpFaults));
}

WebAnswer CControlApi::PutHttpFaults(const WebRequest& request) {
    Errors errors;
    auto faults = ReadResponseFaults(request.body, errors);
    if (!faults) {
        return Refusal(errors);
    }
    m_state.httpFaults.Set(std::move(*faults));
    return Done();
}

WebAnswer CControlApi::PutHttpFault(const WebRequest& request) {
    const std::string& path = request.matches[0];
    if (!IsServedPath(path)) {
        return NoSuchPath(path);
    }
    Errors errors;
    const auto json = ParseJson(request.body, errors);
    const auto fault = json ? ReadResponseFault(*json, path, errors) : std::nullopt;
    if (!fault) {
        return Refusal(errors);
    }
    m_state.httpFaults.Set(path, *fault);
    return Done();
}

WebAnswer CControlApi::DeleteHttpFault(const WebRequest& request) {
    const std::string& path = request.matches[0];
    if (!IsServedPath(path)) {
        return NoSuchPath(path);
    }
    m_state.httpFaults.Remove(path);
    return Done();
}

}  // namespace devserver
