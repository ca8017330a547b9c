#include "RawClient.h"

#include <QHostAddress>
#include <QTimer>

#include "support/RealTime.h"

RawClient::RawClient(quint16 port) {
    QObject::connect(&m_socket, &QTcpSocket::readyRead, &m_socket, [this] { m_received += m_socket.readAll(); });
    // Sends bytes that are written one by one also one by one.
    QObject::connect(&m_socket, &QTcpSocket::connected, &m_socket,
                     [this] { m_socket.setSocketOption(QAbstractSocket::LowDelayOption, 1); });
    m_socket.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
}

QByteArray RawClient::Handshake(const QByteArray& token) {
    return "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
           "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAECAwQFBgcICQoLDA0ODw==\r\nx-zr-token: " +
           token + "\r\n\r\n";
}

QByteArray RawClient::Framed(const QByteArray& message) {
    Q_ASSERT(message.size() < 126);
    const QByteArray mask = "\x11\x22\x33\x44";
    QByteArray frame = QByteArray(1, char(0x82)).append(char(0x80 | message.size())) + mask;
    for (int i = 0; i < message.size(); ++i) {
        frame.append(char(message[i] ^ mask[i % 4]));
    }
    return frame;
}

void RawClient::Write(const QByteArray& bytes) {
    m_socket.write(bytes);
    if (IsConnected()) {
        m_socket.flush();
    }
}

bool RawClient::WriteOneByOne(const QByteArray& bytes) {
    int written = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, &turn, [&] {
        Write(bytes.mid(written, 1));
        if (++written == bytes.size()) {
            turn.stop();
        }
    });
    turn.start(1);
    return WaitInRealTime([&] { return written == bytes.size(); });
}

void RawClient::StopReading() {
    m_socket.disconnect(&m_socket);
    m_socket.setReadBufferSize(1);
}

bool RawClient::WaitUntilConnected() {
    return WaitInRealTime([this] { return IsConnected(); });
}

bool RawClient::WaitUntilReceived(const QByteArray& words) {
    return WaitInRealTime([&] { return m_received.contains(words); });
}

bool RawClient::WaitUntilClosed() {
    return WaitInRealTime([this] { return m_socket.state() == QTcpSocket::UnconnectedState; });
}
