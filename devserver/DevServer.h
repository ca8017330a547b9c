#pragma once

#include <string>

#include "ChannelServer.h"
#include "ControlApi.h"
#include "ControlServer.h"
#include "ServerState.h"

namespace devserver {

/// The whole server: the state, and the two ways to it. Main thread.
class CDevServer {
public:
    CDevServer(CScenario scenario, std::string token);

    /// 0 takes any free port. False, with the reason in `error`, if one of them is not to be had.
    bool Listen(quint16 channelPort, quint16 controlPort, std::string& error);

    quint16 ChannelPort() const { return m_channel.Port(); }
    quint16 ControlPort() const { return m_control.Port(); }

    /// What a client must know: {"channel":PORT,"control":PORT,"token":"..."}.
    std::string Greeting() const;

private:
    const std::string m_strToken;
    ServerState m_state;
    CChannelServer m_channel;
    CControlApi m_api;
    CControlServer m_control;
};

}  // namespace devserver
