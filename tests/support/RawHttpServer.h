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

/// A request as it came over the line, whole.
struct RawHttpRequest {
    int connection = 0;
    std::string method;
    std::string target;  // path and query
    std::string head;    // all of its lines, each with its ending
    std::string body;

    /// The value of a header, whatever the case of its name; empty if there is none.
    std::string Header(const std::string& name) const;
};

/// An HTTP server that writes its bytes by hand, for what no well-behaved one would do: half an answer, a flood,
/// silence. Lives on the test's own event loop; connections are counted from 1.
class CRawHttpServer : public QObject {
public:
    using Handler = std::function<void(const RawHttpRequest& request)>;

    CRawHttpServer();
    ~CRawHttpServer() override;

    /// Listens on the loopback address; after a Close on the same port again. False if the port is taken.
    bool Listen();

    /// Stops listening and cuts all connections.
    void Close();

    /// The connections to come are encrypted.
    void SpeakTls(const QSslCertificate& certificate, const QSslKey& key);

    /// What is written to each connection as soon as it is made.
    void SetGreeting(const QByteArray& bytes) { m_greeting = bytes; }

    /// Without a slash at its end; of plain connections.
    std::string Url() const;
    quint16 Port() const { return m_nPort; }

    const std::vector<RawHttpRequest>& Requests() const { return m_requests; }

    /// Called for each request once it is whole, instead of nothing.
    void SetHandler(Handler handler) { m_fnHandler = std::move(handler); }

    /// Writes these very bytes; nothing once the client is gone.
    void Write(int connection, const QByteArray& bytes);

    /// A whole answer, and the end of the connection. `headers` are lines, each with its ending.
    void Answer(int connection, int status, const QByteArray& body, const QByteArray& headers = {});

    /// Writes `unit` as fast as the client takes it until so many bytes went out, and then nothing more.
    void Flood(int connection, qint64 bytes, const QByteArray& unit);

    /// Bytes of floods that were handed to the system so far.
    qint64 Flooded() const { return m_nFlooded; }

    /// Ends the connection after what was written.
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
        QSslKey key;  // null: connections are plain

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
