#pragma once

#include <functional>
#include <string>

#include "ControlApi.h"
#include "WebServer.h"

namespace devserver {

/// The control interface's HTTP: who has the token may ask, and is answered in JSON. Made, started and stopped on
/// the main thread, where `handler` runs.
class CControlServer {
public:
    using Handler = std::function<ControlAnswer(const ControlRequest&)>;

    static constexpr size_t kMaxBodyBytes = 8 * 1024 * 1024;

    CControlServer(std::string token, Handler handler);

    /// As of a CWebServer.
    bool Listen(quint16 port, std::string& error) { return m_server.Listen(port, error); }
    quint16 Port() const { return m_server.Port(); }
    void Stop() { m_server.Stop(); }

private:
    CWebServer m_server;
};

}  // namespace devserver
