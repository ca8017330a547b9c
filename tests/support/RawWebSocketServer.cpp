#include "support/RawWebSocketServer.h"

#include <QCryptographicHash>
#include <QHostAddress>
#include <QTcpSocket>

namespace {

constexpr char kBinary = char(0x82);  // the last and only part of a binary message
constexpr char kPing = char(0x89);
constexpr char kPong = char(0x8A);
constexpr uchar kMasked = 0x80;
constexpr uchar kLengthIn16Bits = 126;

}  // namespace

CRawWebSocketServer::CRawWebSocketServer() {
    connect(&m_server, &QTcpServer::newConnection, this, &CRawWebSocketServer::OnConnection);
}

CRawWebSocketServer::~CRawWebSocketServer() {
    Close();
}

bool CRawWebSocketServer::Listen() {
    const bool listens = m_server.listen(QHostAddress::LocalHost, m_nPort);
    m_nPort = m_server.serverPort();
    return listens;
}

void CRawWebSocketServer::Close() {
    m_server.close();
    if (m_pClient) {
        m_pClient->disconnect(this);
        m_pClient->abort();
        m_pClient->deleteLater();
        m_pClient = nullptr;
    }
}

QUrl CRawWebSocketServer::Url() const {
    return QUrl(QStringLiteral("ws://127.0.0.1:%1").arg(m_nPort));
}

QByteArray CRawWebSocketServer::Framed(const QByteArray& message) {
    const int size = message.size();
    Q_ASSERT(size <= 0xFFFF);
    QByteArray frame(1, kBinary);
    if (size < kLengthIn16Bits) {
        frame.append(char(size));
    } else {
        frame.append(char(kLengthIn16Bits)).append(char(size >> 8)).append(char(size & 0xFF));
    }
    return frame + message;
}

void CRawWebSocketServer::Write(const QByteArray& bytes) {
    if (m_pClient) {
        m_pClient->write(bytes);
        m_pClient->flush();
    }
}

void CRawWebSocketServer::HangUp() {
    if (m_pClient) {
        m_pClient->disconnectFromHost();
    }
}

void CRawWebSocketServer::OnConnection() {
    if (m_pClient) {
        m_pClient->disconnect(this);
        m_pClient->deleteLater();
    }
    m_pClient = m_server.nextPendingConnection();
    // So that bytes that are written one by one also go out one by one.
    m_pClient->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    m_bShaken = false;
    m_received.clear();
    m_messages.clear();
    connect(m_pClient, &QTcpSocket::readyRead, this, &CRawWebSocketServer::OnBytes);
}

void CRawWebSocketServer::OnBytes() {
    m_received += m_pClient->readAll();
    if (!m_bShaken) {
        ShakeHands();
    }
    while (m_bShaken && TakeFrame()) {
    }
}

void CRawWebSocketServer::ShakeHands() {
    const QByteArray name = "Sec-WebSocket-Key: ";
    const int end = m_received.indexOf("\r\n\r\n");
    const int at = m_received.indexOf(name);
    if (end < 0 || at < 0) {
        return;
    }
    const int from = at + name.size();
    const QByteArray key = m_received.mid(from, m_received.indexOf("\r\n", from) - from);
    const QByteArray accept =
        QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1).toBase64();
    m_received.remove(0, end + 4);
    m_bShaken = true;
    ++m_nHandshakes;
    Write("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\nSec-WebSocket-Accept: " +
          accept + "\r\n\r\n");
}

// A client masks each frame; those of the tests fit into 65535 bytes.
bool CRawWebSocketServer::TakeFrame() {
    const auto byte = [this](int i) { return i < m_received.size() ? uchar(m_received[i]) : uchar(0); };
    const uchar lengthByte = byte(1) & uchar(~kMasked);
    const bool isLong = lengthByte == kLengthIn16Bits;
    const int length = isLong ? byte(2) << 8 | byte(3) : lengthByte;
    const int mask = isLong ? 4 : 2;
    const int body = mask + 4;
    if (m_received.size() < body + length) {
        return false;
    }
    QByteArray message = m_received.mid(body, length);
    for (int i = 0; i < length; ++i) {
        message[i] = char(uchar(message[i]) ^ byte(mask + i % 4));
    }
    const char kind = m_received[0];
    if (kind == kBinary) {
        m_messages.push_back(message);
    } else if (kind == kPing && m_bAnswersPings) {
        Write(QByteArray(1, kPong).append(char(length)) + message);
    }
    m_received.remove(0, body + length);
    return true;
}
