#include "DevServer.h"

#include <utility>

namespace devserver {

CDevServer::CDevServer(CScenario scenario, std::string token)
    : m_strToken(std::move(token)),
      m_state{std::move(scenario), {}, {}, 0},
      m_channel(m_state, m_strToken),
      m_api(m_state, m_channel),
      m_control(m_strToken, [this](const ControlRequest& request) { return m_api.Handle(request); }) {}

bool CDevServer::Listen(quint16 channelPort, quint16 controlPort, std::string& error) {
    return m_channel.Listen(channelPort, error) && m_control.Listen(controlPort, error);
}

std::string CDevServer::Greeting() const {
    Json::Value greeting;
    greeting["channel"] = ChannelPort();
    greeting["control"] = ControlPort();
    greeting["token"] = m_strToken;
    return WriteJson(greeting);
}

}  // namespace devserver
