#pragma once

#include <QObject>
#include <QTcpServer>
#include <QUrl>
#include <vector>

class QTcpSocket;

/// A WebSocket server that writes its bytes by hand, for what no well-behaved one would do: half a frame, bytes
/// one by one, silence. Lives on the test's own event loop. It talks to the client that connected last, and
/// answers pings, but no closing frame.
class CRawWebSocketServer : public QObject {
public:
    CRawWebSocketServer();
    ~CRawWebSocketServer() override;

    /// Listens on the loopback address; after a Close on the same port again. False if the port is taken.
    bool Listen();

    /// Stops listening and cuts the connection.
    void Close();

    QUrl Url() const;

    /// Handshakes that were done so far.
    int HandshakeCount() const { return m_nHandshakes; }

    /// Returns the payloads of the binary frames of the last connection, in order.
    const std::vector<QByteArray>& Messages() const { return m_messages; }

    /// A whole binary frame of up to 65535 bytes as it goes over the line.
    static QByteArray Framed(const QByteArray& message);

    void AnswerPings(bool answers) { m_bAnswersPings = answers; }

    /// Writes these very bytes; nothing once the client is gone.
    void Write(const QByteArray& bytes);

    /// Ends the connection after what was written, without a closing frame.
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
