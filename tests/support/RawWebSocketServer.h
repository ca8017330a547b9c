#pragma once

#include <QObject>
#include <QTcpServer>
#include <QUrl>
#include <vector>

class QTcpSocket;

/// A WebSocket server whose bytes the test writes: half a frame, single bytes, silence. It runs on the event loop of
/// the test and serves the client that connected last. It answers pings but no closing frame.
class CRawWebSocketServer : public QObject {
public:
    CRawWebSocketServer();
    ~CRawWebSocketServer() override;

    /// Listens on the loopback address, after Close() on the same port again. Returns false if the port is taken.
    bool Listen();

    /// Stops listening and cuts the connection.
    void Close();

    QUrl Url() const;

    /// Returns the number of completed handshakes.
    int HandshakeCount() const { return m_nHandshakes; }

    /// Returns the payloads of the binary frames of the last connection, in order.
    const std::vector<QByteArray>& Messages() const { return m_messages; }

    /// Returns the bytes of a complete binary frame with a payload of at most 65535 bytes.
    static QByteArray Framed(const QByteArray& message);

    void AnswerPings(bool answers) { m_bAnswersPings = answers; }

    /// Writes exactly these bytes. Does nothing if the client has disconnected.
    void Write(const QByteArray& bytes);

    /// Closes the connection after the bytes written so far, without a closing frame.
    void HangUp();

private:
    void OnConnection();
    void OnBytes();
    void ShakeHands();
    bool TakeFrame();

    QTcpServer m_server;
    quint16 m_nPort = 0;
    QTcpSocket* m_pClient = nullptr;
    bool m_bShaken = false;
    bool m_bAnswersPings = true;
    int m_nHandshakes = 0;
    QByteArray m_received;  // not understood yet
    std::vector<QByteArray> m_messages;
};
