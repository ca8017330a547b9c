#pragma once

#include <json/value.h>

#include <string>

#include "ServerState.h"

namespace devserver {

class CChannelServer;

/// Operations of the control interface. A refused request changes nothing; its answer is {"error": key path and
/// reason}. Main thread.
class CControlApi {
public:
    /// Both must outlive this object.
    CControlApi(ServerState& state, CChannelServer& channel);

    /// Adds the routes of all operations, and refusals for all other requests. `server` must not outlive this object.
    void AddRoutes(CWebServer& server);

private:
    WebAnswer GetState(const WebRequest& request);
    WebAnswer GetReceived(const WebRequest& request);
    WebAnswer GetScenario(const WebRequest& request);
    WebAnswer GetBuiltInScenario(const WebRequest& request);
    WebAnswer PutScenario(const WebRequest& request);
    WebAnswer PutOfUser(const WebRequest& request);
    WebAnswer DeleteOfUser(const WebRequest& request);
    WebAnswer PutRight(const WebRequest& request);
    WebAnswer DeleteRight(const WebRequest& request);
    WebAnswer PutConfig(const WebRequest& request);
    WebAnswer DeleteConfig(const WebRequest& request);
    WebAnswer PostPush(const WebRequest& request);
    WebAnswer PutClock(const WebRequest& request);
    WebAnswer PostDrop(const WebRequest& request);
    WebAnswer GetFaults(const WebRequest& request);
    WebAnswer PutFaults(const WebRequest& request);
    WebAnswer PutFault(const WebRequest& request);
    WebAnswer DeleteFault(const WebRequest& request);
    WebAnswer PutAds(const WebRequest& request);
    WebAnswer DeleteAds(const WebRequest& request);
    WebAnswer PutSlot(const WebRequest& request);
    WebAnswer DeleteSlot(const WebRequest& request);
    WebAnswer GetHttp(const WebRequest& request);
    WebAnswer GetReports(const WebRequest& request);
    WebAnswer DeleteReports(const WebRequest& request);
    WebAnswer GetHttpFaults(const WebRequest& request);
    WebAnswer PutHttpFaults(const WebRequest& request);
    WebAnswer PutHttpFault(const WebRequest& request);
    WebAnswer DeleteHttpFault(const WebRequest& request);

    WebAnswer SetOfUser(const WebRequest& request, const std::optional<Json::Value>& value);
    WebAnswer SetRight(const WebRequest& request, const std::optional<Json::Value>& right);
    WebAnswer SetSlot(const WebRequest& request, const std::optional<Json::Value>& slot);
    void SendConfigIfChanged(const Json::Value& before);

    ServerState& m_state;
    CChannelServer& m_channel;
};

}  // namespace devserver
