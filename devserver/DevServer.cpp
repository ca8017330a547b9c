#include "DevServer.h"

#include <utility>

namespace devserver {

CDevServer::CDevServer(CScenario scenario, std::string token)
    : m_strToken(std::move(token)),
      m_state(std::move(scenario)),
      m_channel(m_state, m_strToken),
      m_api(m_state, m_channel),
      m_ads(m_state, m_channel),
      m_control(m_strToken, [this](const ControlRequest& request) { return m_api.Handle(request); }),
      m_http("http", kMaxHttpBodyBytes, nullptr, [this](const WebRequest& request) { return m_ads.Handle(request); }) {}

bool CDevServer::Listen(const Ports& ports, std::string& error) {
    // The state's port is told to whoever asks, and so it is there before anybody can.
    if (!m_http.Listen(ports.http, error)) {
        return false;
    }
    m_state.httpPort = m_http.Port();
    return m_channel.Listen(ports.channel, error) && m_control.Listen(ports.control, error);
}

std::string CDevServer::Greeting() const {
    Json::Value greeting;
    greeting["channel"] = ChannelPort();
    greeting["control"] = ControlPort();
    greeting["http"] = HttpPort();
    greeting["token"] = m_strToken;
    return WriteJson(greeting);
}

}  // namespace devserver
