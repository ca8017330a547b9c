#pragma once

#include <QTcpSocket>

/// A client that writes its bytes by hand, for what no well-behaved one would send.
class RawClient {
public:
    explicit RawClient(quint16 port);

    /// The request for a WebSocket, with `token`.
    static QByteArray Handshake(const QByteArray& token);

    /// A whole binary frame of up to 125 bytes, masked as a client's must be.
    static QByteArray Framed(const QByteArray& message);

    void Write(const QByteArray& bytes);

    /// Writes one byte at each turn of a millisecond's timer, and waits until the last is out.
    bool WriteOneByOne(const QByteArray& bytes);

    /// From now on what arrives stays on the line.
    void StopReading();

    bool WaitUntilConnected();
    bool WaitUntilReceived(const QByteArray& words);
    bool WaitUntilClosed();
    bool IsConnected() const { return m_socket.state() == QTcpSocket::ConnectedState; }

private:
    QTcpSocket m_socket;
    QByteArray m_received;
};
