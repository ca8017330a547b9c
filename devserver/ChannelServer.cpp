#include "ChannelServer.h"

#include <QHostAddress>
#include <QRandomGenerator>
#include <QTcpSocket>
#include <QTimer>
#include <QWebSocket>
#include <QWebSocketCorsAuthenticator>
#include <algorithm>

#include "Access.h"
#include "CommandAnswers.h"
#include "Digits.h"
#include "Links.h"
#include "ServerLog.h"
#include "channel.pb.h"

namespace devserver {
namespace {

using channel::Frame;

uint64_t NewSessionId() {
    uint64_t id = 0;
    while (id == 0) {
        id = QRandomGenerator::system()->generate64();
    }
    return id;
}

void ApplyFault(Frame& reply, const ReplyFault& fault) {
    if (fault.has_error()) {
        reply.set_error(fault.error());
        if (fault.error() != kErrorNone) {
            reply.clear_body();
        }
    }
    if (fault.has_bodyhex()) {
        reply.set_body(FromHex(fault.bodyhex()).value_or(""));
    }
    if (fault.has_replycommand()) {
        reply.set_command(fault.replycommand());
    }
}

// A client that gets something else does not take the command as done.
bool KeepsReply(const ReplyFault& fault) {
    return fault.error() == kErrorNone && !fault.has_bodyhex() && !fault.has_replycommand() && !fault.has_framehex() &&
           !fault.silent() && !fault.drop();
}

}  // namespace

CChannelServer::CChannelServer(ServerState& state, std::string token)
    : m_state(state),
      m_strToken(std::move(token)),
      m_server(QStringLiteral("zrdevserver"), QWebSocketServer::NonSecureMode) {
    connect(&m_listener, &QTcpServer::newConnection, this, &CChannelServer::OnNewSocket);
    connect(&m_server, &QWebSocketServer::newConnection, this, &CChannelServer::OnNewConnection);
    connect(&m_server, &QWebSocketServer::originAuthenticationRequired, this,
            [](QWebSocketCorsAuthenticator* authenticator) {
                const QString origin = authenticator->origin();
                const bool allowed = origin.isEmpty() || IsLoopbackOrigin(origin);
                if (!allowed) {
                    Log(FMT_STRING("channel: refused, origin {}"), origin.toStdString());
                }
                authenticator->setAllowed(allowed);
            });
}

CChannelServer::~CChannelServer() {
    // Sockets must not signal an object that is partly destroyed.
    for (const auto& [id, connection] : m_connections) {
        connection.socket->disconnect(this);
    }
    for (QTcpSocket* socket : qAsConst(m_handshakes)) {
        socket->disconnect(this);
    }
}

bool CChannelServer::Listen(quint16 port, std::string& error) {
    if (!m_listener.listen(QHostAddress(QHostAddress::LocalHost), port)) {
        error = fmt::format(FMT_STRING("channel: port {}: {}"), port, m_listener.errorString().toStdString());
        return false;
    }
    return true;
}

quint16 CChannelServer::Port() const {
    return m_listener.serverPort();
}

void CChannelServer::OnNewSocket() {
    while (QTcpSocket* socket = m_listener.nextPendingConnection()) {
        if (m_handshakes.size() == kMaxHandshakes) {
            LogLine("channel: cut, too many handshakes at once");
            m_handshakes.takeFirst()->abort();
        }
        socket->setReadBufferSize(kMaxHandshakeBytes);
        m_handshakes.push_back(socket);
        auto* deadline = new QTimer(socket);
        connect(deadline, &QTimer::timeout, this, [this, socket] {
            if (m_handshakes.contains(socket)) {
                LogLine("channel: cut, its handshake takes too long");
                socket->abort();
            }
        });
        deadline->setSingleShot(true);
        deadline->start(kHandshakeTime);
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] { m_handshakes.removeOne(socket); });
        m_server.handleConnection(socket);
    }
}

void CChannelServer::OnNewConnection() {
    while (QWebSocket* socket = m_server.nextPendingConnection()) {
        // Only the port relates the two sockets.
        const auto handshake = std::find_if(m_handshakes.begin(), m_handshakes.end(), [socket](const QTcpSocket* tcp) {
            return tcp->peerPort() == socket->peerPort();
        });
        if (handshake != m_handshakes.end()) {
            (*handshake)->disconnect(this);
            m_handshakes.erase(handshake);
        }
        socket->setReadBufferSize(0);
        connect(socket, &QWebSocket::disconnected, socket, &QObject::deleteLater);
        const std::string token = socket->request().rawHeader("x-zr-token").toStdString();
        if (!SameToken(token, m_strToken)) {
            LogLine("channel: refused, wrong token");
            socket->close(QWebSocketProtocol::CloseCodePolicyViolated, QStringLiteral("wrong token"));
            continue;
        }
        socket->setMaxAllowedIncomingFrameSize(kMaxFrameBytes);
        socket->setMaxAllowedIncomingMessageSize(kMaxFrameBytes);
        const uint64_t id = ++m_nLastId;
        m_connections[id].socket = socket;
        connect(socket, &QWebSocket::binaryMessageReceived, this,
                [this, id](const QByteArray& bytes) { OnFrame(id, bytes); });
        connect(socket, &QWebSocket::textMessageReceived, this,
                [id](const QString&) { Log(FMT_STRING("channel: {}: dropped a text frame"), id); });
        connect(socket, &QWebSocket::disconnected, this, [this, id, socket] {
            Log(FMT_STRING("channel: {}: closed, code {}"), id, int(socket->closeCode()));
            m_connections.erase(id);
        });
        Log(FMT_STRING("channel: {}: connected"), id);
        Send(id, ConfigFrame());
        Send(id, LinksFrame());
    }
}

void CChannelServer::OnFrame(uint64_t id, const QByteArray& bytes) {
    // A socket delivers what it has read already, even after it was cut.
    if (m_connections.count(id) == 0) {
        return;
    }
    Frame frame;
    // An unknown kind is an unknown field to the parser.
    if (!frame.ParseFromArray(bytes.data(), bytes.size()) || !frame.has_kind()) {
        Log(FMT_STRING("channel: {}: dropped {} bytes that are no envelope of a known kind"), id, bytes.size());
        return;
    }
    switch (frame.kind()) {
        case Frame::LOGIN:
            OnLogin(id, frame);
            return;
        case Frame::LOGOUT:
            Record(id, m_connections[id].user, frame);
            m_connections[id].user = 0;
            m_connections[id].session = 0;
            return;
        case Frame::LANGUAGE:
            Record(id, m_connections[id].user, frame);
            OnLanguage(id, frame);
            return;
        case Frame::REQUEST:
            OnRequest(id, frame);
            return;
        case Frame::LOGIN_ANSWER:
        case Frame::REPLY:
        case Frame::PUSH:
        case Frame::CONFIG:
        case Frame::CLOCK:
        case Frame::LINKS:
            break;
    }
    Log(FMT_STRING("channel: {}: dropped a frame of kind {}, which only the server sends"), id, int(frame.kind()));
}

void CChannelServer::OnLogin(uint64_t id, const Frame& frame) {
    const uint64_t userId = frame.login().user_id();
    Record(id, userId, frame);
    OnLanguage(id, frame);
    const User* user = m_state.scenario.FindUser(userId);
    Frame answerFrame;
    answerFrame.set_kind(Frame::LOGIN_ANSWER);
    answerFrame.set_session(frame.session());
    channel::LoginAnswer& answer = *answerFrame.mutable_login_answer();
    answer.set_user_id(userId);
    if (!user || user->has_refuselogin()) {
        answer.set_accepted(false);
        answer.set_reason(user ? user->refuselogin() : "unknown user");
        m_connections[id].user = 0;
        m_connections[id].session = 0;
    } else {
        answer.set_accepted(true);
        answer.set_session_id(NewSessionId());
        answer.mutable_attributed_market()->Add(user->markets().begin(), user->markets().end());
        answer.set_server_time_ms(m_state.ServerTimeMs());
        if (user->has_trade()) {
            answer.set_trade_answer(user->trade());
        }
        m_connections[id].user = userId;
        m_connections[id].session = answer.session_id();
    }
    Log(FMT_STRING("channel: {}: login of {} {}"), id, userId, answer.accepted() ? "accepted" : "refused");
    Send(id, answerFrame);
}

void CChannelServer::OnLanguage(uint64_t id, const Frame& frame) {
    // A frame without a language keeps the earlier one, even that of an earlier login.
    if (frame.login().has_language()) {
        m_connections[id].language = LanguageOfNumber(frame.login().language());
    }
}

void CChannelServer::OnRequest(uint64_t id, const Frame& frame) {
    const uint64_t userId = m_connections[id].user;
    Record(id, userId, frame);
    // A user who is missing from a new scenario counts as logged out.
    const User* user = userId == 0 ? nullptr : m_state.scenario.FindUser(userId);
    CommandAnswer answer{kErrorNotLoggedIn, {}};
    if (user) {
        answer = AnswerCommand(frame.command(), {m_state.scenario, *user, m_connections[id].language, m_state.Origin()},
                               frame.body());
    }
    Frame reply;
    reply.set_kind(Frame::REPLY);
    reply.set_session(frame.session());
    reply.set_command(frame.command());
    reply.set_error(answer.error);
    reply.set_body(answer.body);
    ReplyFault fault = m_state.faults.Take(frame.command()).value_or(ReplyFault());
    fault.set_silent(fault.silent() || answer.silent);
    ApplyFault(reply, fault);
    Log(FMT_STRING("channel: {}: request {} of {}, error {}{}"), id, frame.command(), userId, reply.error(),
        fault.silent() ? ", kept silent" : "");
    const std::string bytes = fault.has_framehex() ? *FromHex(fault.framehex()) : reply.SerializeAsString();
    if (!KeepsReply(fault)) {
        answer.effect.reset();
    }
    if (answer.effect) {
        Errors errors;
        m_state.scenario.SetOfUser(userId, "premium", answer.effect->premium, errors);
    }
    const auto deliver = [this, id, userId, fault, bytes, effect = answer.effect] {
        Deliver(id, bytes, fault);
        if (effect) {
            Push(userId, effect->pushCommand, effect->pushBody);
        }
    };
    if (fault.delayms() > 0) {
        QTimer::singleShot(int(fault.delayms()), Qt::PreciseTimer, this, deliver);
    } else {
        deliver();
    }
}

void CChannelServer::Deliver(uint64_t id, const std::string& reply, const ReplyFault& fault) {
    if (fault.drop()) {
        Cut(id);
        return;
    }
    for (uint32_t copy = 0; copy < fault.copies() && !fault.silent(); ++copy) {
        SendBytes(id, reply);
    }
}

void CChannelServer::Record(uint64_t id, uint64_t user, const Frame& frame) {
    ReceivedFrame received;
    received.connection = id;
    received.user = user;
    received.kind = Frame::Kind_Name(frame.kind());
    received.command = frame.command();
    received.session = frame.session();
    received.body = frame.body();
    if (frame.login().has_language()) {
        received.language = frame.login().language();
    }
    m_state.received.Add(std::move(received));
}

void CChannelServer::Send(uint64_t id, const Frame& frame) {
    SendBytes(id, frame.SerializeAsString());
}

void CChannelServer::SendBytes(uint64_t id, const std::string& bytes) {
    const auto found = m_connections.find(id);
    if (found == m_connections.end()) {
        return;
    }
    QWebSocket* socket = found->second.socket;
    if (socket->bytesToWrite() > kMaxUnreadBytes) {
        Log(FMT_STRING("channel: {}: cut, {} bytes wait to be read"), id, socket->bytesToWrite());
        Cut(id);
        return;
    }
    socket->sendBinaryMessage(QByteArray::fromStdString(bytes));
}

void CChannelServer::Cut(uint64_t id) {
    const auto found = m_connections.find(id);
    if (found != m_connections.end()) {
        // A signal of the socket removes the connection from the table.
        found->second.socket->abort();
    }
}

void CChannelServer::SendToAll(const Frame& frame) {
    for (const Client& client : Clients()) {
        Send(client.id, frame);
    }
}

std::vector<CChannelServer::Client> CChannelServer::Clients() const {
    std::vector<Client> clients;
    for (const auto& [id, connection] : m_connections) {
        clients.push_back({id, connection.user, connection.language});
    }
    return clients;
}

std::optional<CChannelServer::Client> CChannelServer::FindSession(uint64_t session) const {
    for (const auto& [id, connection] : m_connections) {
        if (session != 0 && connection.session == session) {
            return Client{id, connection.user, connection.language};
        }
    }
    return std::nullopt;
}

int CChannelServer::Push(std::optional<uint64_t> user, uint32_t command, const std::string& body) {
    Frame frame;
    frame.set_kind(Frame::PUSH);
    frame.set_command(command);
    frame.set_body(body);
    int sent = 0;
    for (const Client& client : Clients()) {
        if (client.user != 0 && (!user || client.user == *user)) {
            Send(client.id, frame);
            ++sent;
        }
    }
    return sent;
}

int CChannelServer::Drop(std::optional<uint64_t> user) {
    int dropped = 0;
    for (const Client& client : Clients()) {
        if (!user || client.user == *user) {
            Cut(client.id);
            ++dropped;
        }
    }
    return dropped;
}

Frame CChannelServer::ConfigFrame() const {
    Frame frame;
    frame.set_kind(Frame::CONFIG);
    frame.set_body(WithOrigin(WriteJson(m_state.scenario.CommonConfig()), m_state.Origin()));
    return frame;
}

Frame CChannelServer::LinksFrame() const {
    Frame frame;
    frame.set_kind(Frame::LINKS);
    frame.set_body(WriteJson(LinkTable(m_state.scenario, m_state.Origin())));
    return frame;
}

void CChannelServer::SendConfig() {
    SendToAll(ConfigFrame());
}

void CChannelServer::SendLinks() {
    SendToAll(LinksFrame());
}

void CChannelServer::SendClock() {
    Frame frame;
    frame.set_kind(Frame::CLOCK);
    frame.set_server_time_ms(m_state.ServerTimeMs());
    SendToAll(frame);
}

}  // namespace devserver
