#pragma once

#include <QTcpSocket>

/// A client that sends arbitrary bytes.
class RawClient {
public:
    explicit RawClient(quint16 port);

    /// Returns the WebSocket handshake with `token`.
    static QByteArray Handshake(const QByteArray& token);

    /// Returns a masked binary frame of up to 125 bytes.
    static QByteArray Framed(const QByteArray& message);

    void Write(const QByteArray& bytes);

    /// Writes one byte per millisecond. Returns when the last byte is written.
    bool WriteOneByOne(const QByteArray& bytes);

    /// Leaves all further bytes in the system's buffers.
    void StopReading();

    bool WaitUntilConnected();
    bool WaitUntilReceived(const QByteArray& words);
    bool WaitUntilClosed();
    bool IsConnected() const { return m_socket.state() == QTcpSocket::ConnectedState; }

private:
    QTcpSocket m_socket;
    QByteArray m_received;
};
