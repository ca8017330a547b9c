#pragma once

#include <QObject>
#include <QUrl>
#include <QWebSocketServer>
#include <vector>

#include "channel.pb.h"

class QWebSocket;

/// A server of the command channel that sends only the test's frames. It runs on the event loop of the test. Clients
/// are numbered from 0 in order of connection.
class CEnvelopeServer : public QObject {
public:
    struct Arrival {
        int client = 0;
        channel::Frame frame;
    };

    CEnvelopeServer();
    ~CEnvelopeServer() override;

    /// Listens on the loopback address, after Close() on the same port again. Returns false if the port is taken.
    bool Listen();

    /// Stops listening and cuts all connections.
    void Close();

    QUrl Url() const;

    /// Number of open connections.
    int ConnectionCount() const;

    /// All frames so far, in order of arrival. Bytes that are no frame fail the test.
    const std::vector<Arrival>& Frames() const { return m_arrivals; }

    /// Does nothing if the client has disconnected.
    void Send(int client, const channel::Frame& frame);
    void SendBytes(int client, const QByteArray& bytes);
    void SendText(int client, const QString& text);
    void SendToAll(const channel::Frame& frame);

    /// The codes with which clients ended their connections, in order.
    const std::vector<int>& CloseCodes() const { return m_closeCodes; }

private:
    void OnConnection();
    void OnBytes(int client, const QByteArray& bytes);

    QWebSocketServer m_server;
    quint16 m_nPort = 0;
    std::vector<QWebSocket*> m_clients;  // null once gone
    std::vector<Arrival> m_arrivals;
    std::vector<int> m_closeCodes;
};
