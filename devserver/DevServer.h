#pragma once

#include <string>

#include "AdApi.h"
#include "ChannelServer.h"
#include "ControlApi.h"
#include "ControlServer.h"
#include "ServerState.h"
#include "WebServer.h"

namespace devserver {

/// 0 takes any free port.
struct Ports {
    quint16 channel = 0;
    quint16 control = 0;
    quint16 http = 0;
};

/// The whole server: the state, and the three ways to it. Main thread.
class CDevServer {
public:
    /// Of a request to the ad server and the report sink. The largest event that a client sends has 25 MiB.
    static constexpr size_t kMaxHttpBodyBytes = 32 * 1024 * 1024;

    CDevServer(CScenario scenario, std::string token);

    /// False, with the reason in `error`, if one of the ports is not to be had.
    bool Listen(const Ports& ports, std::string& error);

    quint16 ChannelPort() const { return m_channel.Port(); }
    quint16 ControlPort() const { return m_control.Port(); }
    quint16 HttpPort() const { return m_http.Port(); }

    /// What a client must know: {"channel":PORT,"control":PORT,"http":PORT,"token":"..."}.
    std::string Greeting() const;

private:
    const std::string m_strToken;
    ServerState m_state;
    CChannelServer m_channel;
    CControlApi m_api;
    CAdApi m_ads;
    CControlServer m_control;
    CWebServer m_http;
};

}  // namespace devserver
