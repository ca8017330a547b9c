#pragma once

#include <string>

#include "AdApi.h"
#include "ChannelServer.h"
#include "ControlApi.h"
#include "ServerState.h"
#include "WebServer.h"

namespace devserver {

/// 0 takes any free port.
struct Ports {
    quint16 channel = 0;
    quint16 control = 0;
    quint16 http = 0;
};

/// The whole server: its state, the channel, the control interface and HTTP for clients. Main thread.
class CDevServer {
public:
    /// Limit of a request body of the control API.
    static constexpr size_t kMaxControlBodyBytes = 8 * 1024 * 1024;
    /// Limit of a request body of the ad server and the report sink. The largest event of a client has 4 MiB.
    static constexpr size_t kMaxHttpBodyBytes = 32 * 1024 * 1024;

    CDevServer(CScenario scenario, std::string token);

    /// Returns false, with the reason in `error`, if a port cannot be bound.
    bool Listen(const Ports& ports, std::string& error);

    quint16 ChannelPort() const { return m_channel.Port(); }
    quint16 ControlPort() const { return m_control.Port(); }
    quint16 HttpPort() const { return m_http.Port(); }

    /// Returns what a client needs: {"channel":PORT,"control":PORT,"http":PORT,"token":"..."}.
    std::string Greeting() const;

private:
    const std::string m_strToken;
    ServerState m_state;
    CChannelServer m_channel;
    CControlApi m_api;
    CAdApi m_ads;
    CWebServer m_control;
    CWebServer m_http;
};

}  // namespace devserver
