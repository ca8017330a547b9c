#pragma once

#include <QObject>
#include <QSslCertificate>
#include <QSslKey>
#include <QTcpServer>
#include <functional>
#include <map>
#include <string>
#include <vector>

class QTcpSocket;

/// A complete request as received.
struct RawHttpRequest {
    int connection = 0;
    std::string method;
    std::string target;  // path and query
    std::string head;    // all lines with their endings
    std::string body;

    /// Returns the value of a header, empty if there is none. The case of `name` does not matter.
    std::string Header(const std::string& name) const;
};

/// An HTTP server whose bytes the test writes: half a response, a flood, silence. It runs on the event loop of the
/// test. Connections are numbered from 1.
class CRawHttpServer : public QObject {
public:
    using Handler = std::function<void(const RawHttpRequest& request)>;

    CRawHttpServer();
    ~CRawHttpServer() override;

    /// Listens on the loopback address, after Close() on the same port again. Returns false if the port is taken.
    bool Listen();

    /// Stops listening and aborts all connections.
    void Close();

    /// Encrypts later connections.
    void SpeakTls(const QSslCertificate& certificate, const QSslKey& key);

    /// Writes `bytes` to each later connection as soon as it is open.
    void SetGreeting(const QByteArray& bytes) { m_greeting = bytes; }

    /// Returns the address for unencrypted connections, without a final slash.
    std::string Url() const;
    quint16 Port() const { return m_nPort; }

    const std::vector<RawHttpRequest>& Requests() const { return m_requests; }

    /// Calls `handler` for each complete request.
    void SetHandler(Handler handler) { m_fnHandler = std::move(handler); }

    /// Writes exactly these bytes. Nothing happens once the client has disconnected.
    void Write(int connection, const QByteArray& bytes);

    /// Writes a complete response and closes the connection. `headers` are lines with their endings.
    void Answer(int connection, int status, const QByteArray& body, const QByteArray& headers = {});

    /// Writes `unit` again and again, as fast as the client reads, until `bytes` bytes are written.
    void Flood(int connection, qint64 bytes, const QByteArray& unit);

    /// Returns the bytes of floods given to the operating system so far.
    qint64 Flooded() const { return m_nFlooded; }

    /// Closes the connection after the bytes written so far.
    void HangUp(int connection);

    bool IsOpen(int connection) const { return m_connections.count(connection) == 1; }
    int ConnectionCount() const { return int(m_connections.size()); }

private:
    struct Connection {
        QTcpSocket* socket = nullptr;
        QByteArray received;
        QByteArray unit;
        qint64 toFlood = 0;
    };

    class CListener : public QTcpServer {
    public:
        QSslCertificate certificate;
        QSslKey key;  // null: connections are not encrypted

    protected:
        void incomingConnection(qintptr handle) override;
    };

    void OnConnection();
    void OnBytes(int number);
    void Pour(int number);
    void Cut(Connection& connection);

    CListener m_server;
    QByteArray m_greeting;
    quint16 m_nPort = 0;
    int m_nLastConnection = 0;
    std::map<int, Connection> m_connections;
    std::vector<RawHttpRequest> m_requests;
    Handler m_fnHandler;
    qint64 m_nFlooded = 0;
};
