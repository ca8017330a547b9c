#pragma once

#include <string>

#include "AdAnswer.h"
#include "Pictures.h"
#include "ServerState.h"
#include "WebServer.h"

namespace devserver {

class CChannelServer;

/// What clients reach over HTTP: ads, notices of exposures, the sink of reports, and pictures. Each request is
/// kept for testers to see. Main thread.
class CAdApi {
public:
    /// Both must live longer.
    CAdApi(ServerState& state, const CChannelServer& channel);

    WebAnswer Handle(const WebRequest& request);

private:
    WebAnswer Answer(const WebRequest& request, bool hasEffect);
    WebAnswer Search(const WebRequest& request, bool hasEffect);
    WebAnswer Check(const WebRequest& request, bool hasEffect);
    WebAnswer Expose(const WebRequest& request, bool hasEffect);
    WebAnswer Report(const WebRequest& request, bool hasEffect);
    WebAnswer Show(const WebRequest& request);
    Audience AudienceOf(const WebRequest& request) const;
    AdSurroundings Surroundings() const;

    ServerState& m_state;
    const CChannelServer& m_channel;
    CPictures m_pictures;
};

}  // namespace devserver
