#include "DevServer.h"

#include <utility>

#include "Access.h"
#include "ChatApi.h"

namespace devserver {
namespace {

CWebServer::Authorizer TokenAuthorizer(const std::string& token) {
    return [expected = "Bearer " + token](const WebRequest& request) -> std::optional<WebAnswer> {
        if (SameToken(request.Header("authorization").value_or(""), expected)) {
            return std::nullopt;
        }
        return CWebServer::Refusal(401, "Authorization: must be Bearer and the token");
    };
}

}  // namespace

CDevServer::CDevServer(CScenario scenario, std::string token)
    : m_strToken(std::move(token)),
      m_state(std::move(scenario)),
      m_channel(m_state, m_strToken),
      m_api(m_state, m_channel),
      m_ads(m_state, m_channel),
      m_control("control", kMaxControlBodyBytes, TokenAuthorizer(m_strToken)),
      m_http("http", kMaxHttpBodyBytes, nullptr) {
    m_api.AddRoutes(m_control);
    CChatApi::AddRoutes(m_http);
    m_ads.AddRoutes(m_http);
}

bool CDevServer::Listen(const Ports& ports, std::string& error) {
    // Clients can query this port, so it is known before they can connect.
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
