#pragma once

#include <QObject>
#include <QWebSocketServer>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ServerState.h"

class QWebSocket;

namespace channel {
class Frame;
}

namespace devserver {

/// The command channel: takes clients in on loopback, answers their frames from the state, and sends them
/// what the server sends by itself. A client that breaks the protocol is logged and kept. Main thread.
class CChannelServer : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 kMaxFrameBytes = 4 * 1024 * 1024;

    /// A client that lets more than this wait is cut: it would cost the server its memory.
    static constexpr qint64 kMaxUnreadBytes = 32 * 1024 * 1024;

    struct Client {
        uint64_t id = 0;
        uint64_t user = 0;  // 0 while nobody is logged in
        Language language = Language::English;
    };

    /// `state` must live longer. A client needs `token` in its handshake's header x-zr-token.
    CChannelServer(ServerState& state, std::string token);
    ~CChannelServer() override;

    /// 0 takes any free port. False, with the reason in `error`, if the port is not to be had.
    bool Listen(quint16 port, std::string& error);
    quint16 Port() const;

    std::vector<Client> Clients() const;

    /// The connection on which the session, named by the answer to its login, lasts.
    std::optional<Client> FindSession(uint64_t session) const;

    /// Pushes to each connection on which `user`, or anybody, is logged in. Returns to how many.
    int Push(std::optional<uint64_t> user, uint32_t command, const std::string& body);

    /// Cuts the connections of `user`, or all, without a closing handshake. Returns how many.
    int Drop(std::optional<uint64_t> user);

    /// Tells all connections what the common configuration, or the server's time, now is.
    void SendConfig();
    void SendClock();

private Q_SLOTS:
    void OnNewConnection();

private:
    struct Connection {
        QWebSocket* socket = nullptr;
        uint64_t user = 0;
        uint64_t session = 0;  // 0 while nobody is logged in
        Language language = Language::English;
    };

    void OnFrame(uint64_t id, const QByteArray& bytes);
    void OnLogin(uint64_t id, const channel::Frame& frame);
    void OnLanguage(uint64_t id, const channel::Frame& frame);
    void OnRequest(uint64_t id, const channel::Frame& frame);
    void Record(uint64_t id, uint64_t user, const channel::Frame& frame);
    void Send(uint64_t id, const channel::Frame& frame);
    void SendBytes(uint64_t id, const std::string& bytes);
    void Carry(uint64_t id, const std::string& reply, const Fault& fault);
    void Cut(uint64_t id);
    void SendToAll(const channel::Frame& frame);
    channel::Frame ConfigFrame() const;

    ServerState& m_state;
    const std::string m_strToken;
    QWebSocketServer m_server;
    std::map<uint64_t, Connection> m_connections;
    uint64_t m_nLastId = 0;
};

}  // namespace devserver
