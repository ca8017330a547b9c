#include "support/EnvelopeServer.h"

#include <gtest/gtest.h>

#include <QHostAddress>
#include <QWebSocket>
#include <algorithm>

namespace {

QByteArray Bytes(const channel::Frame& frame) {
    return QByteArray::fromStdString(frame.SerializeAsString());
}

}  // namespace

CEnvelopeServer::CEnvelopeServer() : m_server(QStringLiteral("test"), QWebSocketServer::NonSecureMode) {
    connect(&m_server, &QWebSocketServer::newConnection, this, &CEnvelopeServer::OnConnection);
}

CEnvelopeServer::~CEnvelopeServer() {
    Close();
}

bool CEnvelopeServer::Listen() {
    const bool listens = m_server.listen(QHostAddress::LocalHost, m_nPort);
    m_nPort = m_server.serverPort();
    return listens;
}

void CEnvelopeServer::Close() {
    m_server.close();
    for (QWebSocket*& client : m_clients) {
        if (client) {
            client->disconnect(this);
            client->abort();
            client->deleteLater();
            client = nullptr;
        }
    }
}

QUrl CEnvelopeServer::Url() const {
    return m_server.serverUrl();
}

int CEnvelopeServer::ConnectionCount() const {
    return int(std::count_if(m_clients.begin(), m_clients.end(), [](const QWebSocket* client) { return client; }));
}

void CEnvelopeServer::Send(int client, const channel::Frame& frame) {
    SendBytes(client, Bytes(frame));
}

void CEnvelopeServer::SendBytes(int client, const QByteArray& bytes) {
    if (QWebSocket* socket = m_clients.at(size_t(client))) {
        socket->sendBinaryMessage(bytes);
    }
}

void CEnvelopeServer::SendText(int client, const QString& text) {
    if (QWebSocket* socket = m_clients.at(size_t(client))) {
        socket->sendTextMessage(text);
    }
}

void CEnvelopeServer::SendToAll(const channel::Frame& frame) {
    for (size_t client = 0; client < m_clients.size(); ++client) {
        Send(int(client), frame);
    }
}

void CEnvelopeServer::OnConnection() {
    QWebSocket* socket = m_server.nextPendingConnection();
    const auto client = m_clients.size();
    socket->setParent(this);
    m_clients.push_back(socket);
    connect(socket, &QWebSocket::binaryMessageReceived, this,
            [this, client](const QByteArray& bytes) { OnBytes(int(client), bytes); });
    connect(socket, &QWebSocket::disconnected, this, [this, client] {
        m_closeCodes.push_back(m_clients[client]->closeCode());
        m_clients[client]->deleteLater();
        m_clients[client] = nullptr;
    });
}

void CEnvelopeServer::OnBytes(int client, const QByteArray& bytes) {
    Arrival arrival;
    arrival.client = client;
    if (!arrival.frame.ParseFromArray(bytes.constData(), bytes.size())) {
        ADD_FAILURE() << "Client " << client << " sent " << bytes.size() << " bytes that are no frame";
        return;
    }
    m_arrivals.push_back(arrival);
}
