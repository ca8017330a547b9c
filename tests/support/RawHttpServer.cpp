#include "support/RawHttpServer.h"

#include <QHostAddress>
#include <QSslSocket>
#include <QTcpSocket>
#include <algorithm>

namespace {

// A flood stops while this many bytes wait for the client.
constexpr qint64 kMaxUnsent = 64 << 10;

/// The value of a header in `head`, its name in any case.
QByteArray HeaderIn(const QByteArray& head, const QByteArray& name) {
    for (const QByteArray& line : head.split('\n')) {
        const int colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).toLower() == name.toLower()) {
            return line.mid(colon + 1).trimmed();
        }
    }
    return {};
}

}  // namespace

std::string RawHttpRequest::Header(const std::string& name) const {
    return HeaderIn(QByteArray::fromStdString(head), QByteArray::fromStdString(name)).toStdString();
}

void CRawHttpServer::CListener::incomingConnection(qintptr handle) {
    if (key.isNull()) {
        QTcpServer::incomingConnection(handle);
        return;
    }
    auto* socket = new QSslSocket(this);
    socket->setSocketDescriptor(handle);
    socket->setLocalCertificate(certificate);
    socket->setPrivateKey(key);
    socket->startServerEncryption();
    addPendingConnection(socket);
}

void CRawHttpServer::SpeakTls(const QSslCertificate& certificate, const QSslKey& key) {
    m_server.certificate = certificate;
    m_server.key = key;
}

CRawHttpServer::CRawHttpServer() {
    connect(&m_server, &QTcpServer::newConnection, this, &CRawHttpServer::OnConnection);
}

CRawHttpServer::~CRawHttpServer() {
    Close();
}

bool CRawHttpServer::Listen() {
    const bool listens = m_server.listen(QHostAddress::LocalHost, m_nPort);
    m_nPort = m_server.serverPort();
    return listens;
}

void CRawHttpServer::Close() {
    m_server.close();
    for (auto& [number, connection] : m_connections) {
        Cut(connection);
    }
    m_connections.clear();
}

void CRawHttpServer::Cut(Connection& connection) {
    connection.socket->disconnect(this);
    connection.socket->abort();
    connection.socket->deleteLater();
}

std::string CRawHttpServer::Url() const {
    return "http://127.0.0.1:" + std::to_string(m_nPort);
}

void CRawHttpServer::OnConnection() {
    while (m_server.hasPendingConnections()) {
        const int number = ++m_nLastConnection;
        QTcpSocket* socket = m_server.nextPendingConnection();
        m_connections[number].socket = socket;
        connect(socket, &QTcpSocket::readyRead, this, [this, number] { OnBytes(number); });
        connect(socket, &QTcpSocket::bytesWritten, this, [this, number] { Pour(number); });
        connect(socket, &QTcpSocket::disconnected, this, [this, number] {
            const auto found = m_connections.find(number);
            if (found != m_connections.end()) {
                found->second.socket->deleteLater();
                m_connections.erase(found);
            }
        });
        socket->write(m_greeting);
    }
}

void CRawHttpServer::OnBytes(int number) {
    Connection& connection = m_connections.at(number);
    connection.received += connection.socket->readAll();
    const int end = connection.received.indexOf("\r\n\r\n");
    if (end < 0) {
        return;
    }
    const QByteArray head = connection.received.left(end + 2);
    const int length = HeaderIn(head, "Content-Length").toInt();
    if (connection.received.size() < end + 4 + length) {
        return;
    }
    const QList<QByteArray> words = head.left(head.indexOf('\r')).split(' ');
    RawHttpRequest request;
    request.connection = number;
    request.method = words.value(0).toStdString();
    request.target = words.value(1).toStdString();
    request.head = head.toStdString();
    request.body = connection.received.mid(end + 4, length).toStdString();
    connection.received.remove(0, end + 4 + length);
    m_requests.push_back(request);
    if (m_fnHandler) {
        m_fnHandler(request);
    }
}

void CRawHttpServer::Write(int connection, const QByteArray& bytes) {
    const auto found = m_connections.find(connection);
    if (found != m_connections.end()) {
        found->second.socket->write(bytes);
        found->second.socket->flush();
    }
}

void CRawHttpServer::Answer(int connection, int status, const QByteArray& body, const QByteArray& headers) {
    Write(connection, "HTTP/1.1 " + QByteArray::number(status) + " Word\r\n" + headers +
                          "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    HangUp(connection);
}

void CRawHttpServer::Flood(int connection, qint64 bytes, const QByteArray& unit) {
    m_connections.at(connection).unit = unit;
    m_connections.at(connection).toFlood = bytes;
    Pour(connection);
}

void CRawHttpServer::Pour(int number) {
    const auto found = m_connections.find(number);
    if (found == m_connections.end()) {
        return;
    }
    Connection& connection = found->second;
    while (connection.toFlood > 0 && connection.socket->bytesToWrite() < kMaxUnsent) {
        const qint64 count = std::min<qint64>(connection.toFlood, connection.unit.size());
        connection.socket->write(connection.unit.constData(), count);
        connection.toFlood -= count;
        m_nFlooded += count;
    }
}

void CRawHttpServer::HangUp(int connection) {
    const auto found = m_connections.find(connection);
    if (found != m_connections.end()) {
        found->second.socket->disconnectFromHost();
    }
}
