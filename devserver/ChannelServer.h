#pragma once

#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QWebSocketServer>
#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "Language.h"
#include "ServerState.h"

class QTcpSocket;
class QWebSocket;

namespace channel {
class Frame;
}

namespace devserver {

/// The command channel on loopback: answers clients from the state, and sends pushes, configuration and clock. A
/// client that breaks the protocol is logged and stays connected. A connection without the token is limited in bytes
/// and time. Main thread.
class CChannelServer : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 kMaxFrameBytes = 4 * 1024 * 1024;

    /// A client with more unread bytes is cut, as it would exhaust the server's memory.
    static constexpr qint64 kMaxUnreadBytes = 32 * 1024 * 1024;

    /// A handshake must be complete within this time. Connections in their handshake are limited in number: for a new
    /// one the oldest is cut. Each can send at most as many bytes.
    static constexpr std::chrono::seconds kHandshakeTime{5};
    static constexpr int kMaxHandshakes = 256;
    static constexpr qint64 kMaxHandshakeBytes = 16 * 1024;

    struct Client {
        uint64_t id = 0;
        uint64_t user = 0;  // 0 while nobody is logged in
        Language language = Language::English;
    };

    /// `state` must outlive this object. Clients send `token` in the header x-zr-token of the handshake.
    CChannelServer(ServerState& state, std::string token);
    ~CChannelServer() override;

    /// 0 takes any free port. Returns false, with the reason in `error`, if the port cannot be bound.
    bool Listen(quint16 port, std::string& error);
    quint16 Port() const;

    std::vector<Client> Clients() const;

    /// Returns the connection of a session, whose id is in the answer to its login. Nothing after its logout.
    std::optional<Client> FindSession(uint64_t session) const;

    /// Pushes to each connection of `user`, or of all users logged in. Returns their number.
    int Push(std::optional<uint64_t> user, uint32_t command, const std::string& body);

    /// Cuts the connections of `user`, or all, without a closing handshake. Returns their number.
    int Drop(std::optional<uint64_t> user);

    /// Sends the common configuration, the link table, or the server's time, to all connections.
    void SendConfig();
    void SendLinks();
    void SendClock();

private Q_SLOTS:
    void OnNewSocket();
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
    void Deliver(uint64_t id, const std::string& reply, const ReplyFault& fault);
    void Cut(uint64_t id);
    void SendToAll(const channel::Frame& frame);
    channel::Frame ConfigFrame() const;
    channel::Frame LinksFrame() const;

    ServerState& m_state;
    const std::string m_strToken;
    QTcpServer m_listener;
    QWebSocketServer m_server;
    QList<QTcpSocket*> m_handshakes;  // the oldest first
    std::map<uint64_t, Connection> m_connections;
    uint64_t m_nLastId = 0;
};

}  // namespace devserver
