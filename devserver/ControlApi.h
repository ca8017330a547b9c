#pragma once

#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "ServerState.h"

namespace devserver {

class CChannelServer;

struct ControlRequest {
    std::string method;
    std::string path;
    std::optional<std::string> after;  // the query parameter of this name
    std::string body;
};

/// A refusal's body is {"error": key path and reason}.
struct ControlAnswer {
    int status = 200;
    Json::Value body{Json::objectValue};
};

ControlAnswer Refusal(int status, const std::string& reason);

/// With 400 and all that is wrong.
ControlAnswer Refusal(const Errors& errors);

/// The number after which a request wants entries of a log; 0 where it names none, nothing where it is no number.
std::optional<uint64_t> ReadAfter(const ControlRequest& request);

/// What the control interface does, apart from HTTP and from who may do it. Main thread.
class CControlApi {
public:
    /// Both must live longer.
    CControlApi(ServerState& state, CChannelServer& channel);

    /// Nothing is changed by a request that is refused.
    ControlAnswer Handle(const ControlRequest& request);

private:
    using Wildcards = std::vector<std::string>;
    using Operation = ControlAnswer (CControlApi::*)(const ControlRequest& request, const Wildcards& wildcards);
    struct Route {
        const char* method;
        const char* pattern;  // "*" stands for any one segment
        Operation operation;
    };
    static const std::vector<Route>& Routes();

    ControlAnswer GetState(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer GetReceived(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer GetScenario(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutScenario(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutAiChat(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteAiChat(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutPremium(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeletePremium(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutVip(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteVip(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutTrade(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteTrade(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutConfig(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteConfig(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PostPush(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutClock(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PostDrop(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutFaults(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutFault(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteFault(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutAds(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteAds(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer GetHttp(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer GetReports(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteReports(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutHttpFaults(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer PutHttpFault(const ControlRequest& request, const Wildcards& wildcards);
    ControlAnswer DeleteHttpFault(const ControlRequest& request, const Wildcards& wildcards);

    template <class T>
    using Setter = bool (CScenario::*)(uint64_t user, std::optional<T> value);

    /// One member of a user: takes it from the body of a request, or takes it away.
    template <class T>
    ControlAnswer PutOfUser(const ControlRequest& request, const std::string& userId, T (*read)(const CJsonNode&),
                            Setter<T> set);
    template <class T>
    ControlAnswer SetOfUser(const std::string& userId, std::optional<T> value, Setter<T> set);

    void TellConfigIfChanged(const Json::Value& before);

    ServerState& m_state;
    CChannelServer& m_channel;
};

}  // namespace devserver
