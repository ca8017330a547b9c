#pragma once

#include <string>

#include "AdAnswer.h"
#include "Pictures.h"
#include "ServerState.h"
#include "WebServer.h"

namespace devserver {

class CChannelServer;

/// HTTP for clients: ads, exposures, the report sink, pictures and the pages of links. Each request is recorded for
/// testers. Main thread.
class CAdApi {
public:
    /// Both must outlive this object.
    CAdApi(ServerState& state, const CChannelServer& channel);

    /// Adds the routes of all operations, and refusals for all other requests. `server` must not outlive this object.
    void AddRoutes(CWebServer& server);

private:
    using Operation = WebAnswer (CAdApi::*)(const WebRequest& request, bool hasEffect);

    /// Records the request and applies the fault of its path.
    WebAnswer Handle(const WebRequest& request, Operation operation);

    // `hasEffect` is false for a request whose client learns from a fault that it failed.
    WebAnswer Search(const WebRequest& request, bool hasEffect);
    WebAnswer Check(const WebRequest& request, bool hasEffect);
    WebAnswer Expose(const WebRequest& request, bool hasEffect);
    WebAnswer Report(const WebRequest& request, bool hasEffect);
    WebAnswer Show(const WebRequest& request, bool hasEffect);
    WebAnswer ShowLink(const WebRequest& request, bool hasEffect);
    WebAnswer RefuseMethod(const WebRequest& request, bool hasEffect);
    WebAnswer RefusePath(const WebRequest& request, bool hasEffect);
    Audience AudienceOf(const WebRequest& request) const;
    AdContext Context() const;

    ServerState& m_state;
    const CChannelServer& m_channel;
    CPictures m_pictures;
};

}  // namespace devserver
