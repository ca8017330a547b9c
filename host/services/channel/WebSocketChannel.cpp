#include "channel/WebSocketChannel.h"

#include <QNetworkRequest>
#include <QTcpSocket>
#include <QWebSocket>
#include <algorithm>
#include <memory>
#include <vector>

#include "core/IPoster.h"
#include "core/ITimeAndRandom.h"
#include "core/MainThreadPoster.h"
#include "core/TimeAndRandom.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Channel");

// The library stores the headers of the handshake without a limit.
constexpr int kHandshakeBufferBytes = 16 << 10;
constexpr int kMaxHandshakeReads = 100;
// Rounding alone makes the difference of two clocks vary.
constexpr int64_t kShortestSuspendMs = 100;

int64_t Now() {
    return CMainThreadPoster::SteadyMillis();
}

ChannelOptions Complete(ChannelOptions options) {
    if (!options.suspendedMillis) {
        options.suspendedMillis = CTimeAndRandom::SuspendedMillis;
    }
    return options;
}

// A socket that was cut has the close code of a normal end too.
QString ClosedBecause(const QWebSocket& socket) {
    if (socket.closeCode() == QWebSocketProtocol::CloseCodeNormal && socket.closeReason().isEmpty()) {
        return QStringLiteral("the server ended it");
    }
    return QStringLiteral("closed with %1 %2").arg(socket.closeCode()).arg(socket.closeReason()).trimmed();
}

}  // namespace

CWebSocketChannel::CWebSocketChannel(IPoster& poster, ITimeAndRandom& random, const ChannelOptions& options)
    : m_poster(poster),
      m_random(random),
      m_options(Complete(options)),
      m_backoff(options.firstRetry, options.lastRetry) {
    m_retryTimer.setSingleShot(true);
    m_connectTimer.setSingleShot(true);
    m_deadlineTimer.setSingleShot(true);
    m_pingTimer.setInterval(m_options.pingEvery);
    connect(&m_retryTimer, &QTimer::timeout, this, &CWebSocketChannel::Connect);
    connect(&m_connectTimer, &QTimer::timeout, this, [this] { OnLost(QStringLiteral("the server does not answer")); });
    connect(&m_pingTimer, &QTimer::timeout, this, &CWebSocketChannel::OnPingTime);
    connect(&m_deadlineTimer, &QTimer::timeout, this, &CWebSocketChannel::FailOverdue);
}

CWebSocketChannel::~CWebSocketChannel() {
    DropSocket();
}

void CWebSocketChannel::Open(const QUrl& url, const QByteArray& token) {
    Close();
    if (url != m_url || token != m_token) {
        m_backoff.Reset();
    }
    m_url = url;
    m_token = token;
    Connect();
}

void CWebSocketChannel::Close() {
    m_retryTimer.stop();
    DropSocket();
    FailLater(kCSProtoDisconnected);
}

void CWebSocketChannel::Reconnect(const QString& reason) {
    if (m_pSocket) {
        OnLost(reason);
    }
}

// Each attempt has its own socket, so that no event of a lost connection reaches the next one.
void CWebSocketChannel::Connect() {
    DropSocket();
    m_pSocket = new QWebSocket(QString(), QWebSocketProtocol::VersionLatest, this);
    m_pSocket->setMaxAllowedIncomingMessageSize(kMaxFrameBytes);
    m_pSocket->setMaxAllowedIncomingFrameSize(kMaxFrameBytes);
    connect(m_pSocket, &QWebSocket::connected, this, &CWebSocketChannel::OnConnected);
    connect(m_pSocket, &QWebSocket::disconnected, this, [this] { OnLost(ClosedBecause(*m_pSocket)); });
    connect(m_pSocket, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), this, [this] {
        if (!m_bConnected) {
            OnLost(m_pSocket->errorString());
        }
    });
    connect(m_pSocket, &QWebSocket::binaryMessageReceived, this, &CWebSocketChannel::Receive);
    connect(m_pSocket, &QWebSocket::textMessageReceived, this, [this] {
        m_nLastSign = Now();
        kLog.Error(FMT_STRING("Frame dropped: a text frame"));
    });
    connect(m_pSocket, &QWebSocket::pong, this, [this] { m_nLastSign = Now(); });
    QNetworkRequest request(m_url);
    request.setRawHeader("x-zr-token", m_token);
    m_connectTimer.start(m_options.connectLimit);
    m_pSocket->setReadBufferSize(kHandshakeBufferBytes);
    m_pSocket->open(request);
    LimitHandshake();
}

// Each read takes at most the buffer.
void CWebSocketChannel::LimitHandshake() {
    if (auto* line = m_pSocket->findChild<QTcpSocket*>()) {
        connect(line, &QTcpSocket::readyRead, m_pSocket, [this, socket = m_pSocket, reads = 0]() mutable {
            if (socket == m_pSocket && !m_bConnected && ++reads > kMaxHandshakeReads) {
                OnLost(QStringLiteral("the answer to the handshake is too large"));
            }
        });
    }
}

void CWebSocketChannel::DropSocket() {
    m_connectTimer.stop();
    m_pingTimer.stop();
    m_bConnected = false;
    if (m_pSocket) {
        m_pSocket->disconnect(this);
        m_pSocket->abort();
        m_pSocket->deleteLater();
        m_pSocket = nullptr;
    }
}

void CWebSocketChannel::OnConnected() {
    m_connectTimer.stop();
    m_bConnected = true;
    m_pSocket->setReadBufferSize(0);
    m_nLastSign = Now();
    m_nSuspended = m_options.suspendedMillis();
    m_pingTimer.start();
    kLog.Info(FMT_STRING("Connected to {}"), m_url.toString().toStdString());
    Q_EMIT Connected();
}

void CWebSocketChannel::OnLost(const QString& reason) {
    DropSocket();
    FailLater(kCSProtoDisconnected);
    const auto wait = m_backoff.Next(m_random.RandomNumber());
    kLog.Error(FMT_STRING("No connection to {}: {}. Trying again in {} ms"), m_url.toString().toStdString(),
               reason.toStdString(), wait.count());
    m_retryTimer.start(wait);
    Q_EMIT Disconnected(reason, int(wait.count()));
}

void CWebSocketChannel::OnPingTime() {
    if (Now() - m_nLastSign > m_options.silenceLimit.count()) {
        OnLost(QStringLiteral("the server has gone silent"));
        return;
    }
    if (m_options.suspendedMillis() - m_nSuspended >= kShortestSuspendMs) {
        OnLost(QStringLiteral("the machine was suspended"));
        return;
    }
    m_pSocket->ping();
}

bool CWebSocketChannel::SendFrame(const channel::Frame& frame) {
    if (!m_bConnected) {
        return false;
    }
    const QByteArray bytes = EncodeFrame(frame);
    if (bytes.size() > kMaxFrameBytes) {
        // The server would close the connection, and all running requests would fail.
        kLog.Error(FMT_STRING("A frame of {} bytes is too large to be sent"), bytes.size());
        return false;
    }
    m_pSocket->sendBinaryMessage(bytes);
    return true;
}

unsigned long CWebSocketChannel::SendCommand(const CSProtoData& data, CSCallback callback, QObject* context) {
    const unsigned long session = ++m_nLastSession;
    m_requests[session] =
        Request{context, std::move(callback), data.m_nCmd, Now() + int64_t(m_options.requestLimit.count())};
    channel::Frame frame;
    frame.set_kind(channel::Frame::REQUEST);
    frame.set_session(session);
    frame.set_command(data.m_nCmd);
    frame.set_body(data.m_strData);
    if (SendFrame(frame)) {
        ArmDeadline();
    } else {
        m_poster.Post(this, std::chrono::milliseconds(0), [this, session] { Fail(session, kCSProtoDisconnected); });
    }
    return session;
}

void CWebSocketChannel::BindCallback(unsigned short commandId, CSCallback callback, QObject* context) {
    m_pushes.Bind(commandId, std::move(callback), context);
}

void CWebSocketChannel::UnbindCallback(QObject* context) {
    m_pushes.UnBind(context);
    // Destroying a callback may unbind, so dropped requests are destroyed after the table is consistent.
    std::vector<Request> dropped;
    for (auto it = m_requests.begin(); it != m_requests.end();) {
        if (it->second.context == context) {
            dropped.push_back(std::move(it->second));
            it = m_requests.erase(it);
        } else {
            ++it;
        }
    }
}

void CWebSocketChannel::Receive(const QByteArray& bytes) {
    m_nLastSign = Now();
    std::string reason;
    const auto frame = DecodeServerFrame(bytes, reason);
    if (!frame) {
        kLog.Error(FMT_STRING("Frame dropped: {}, {} bytes"), reason, bytes.size());
        return;
    }
    m_backoff.Reset();
    if (IsTooLarge(*frame)) {
        return;
    }
    // Posted: a callback may open an event loop in which the socket is destroyed.
    m_poster.Post(this, std::chrono::milliseconds(0),
                  [this, frame = std::make_shared<channel::Frame>(*frame)] { Deliver(*frame); });
}

/// Logs a push or reply whose body is too large. The request of the reply fails.
bool CWebSocketChannel::IsTooLarge(const channel::Frame& frame) {
    const bool isReply = frame.kind() == channel::Frame::REPLY;
    if (!isReply && frame.kind() != channel::Frame::PUSH) {
        return false;
    }
    const auto found = isReply ? m_options.maxReplyBytes.find(frame.command()) : m_options.maxReplyBytes.end();
    const size_t limit = found == m_options.maxReplyBytes.end() ? m_options.maxBodyBytes : found->second;
    if (frame.body().size() <= limit) {
        return false;
    }
    kLog.Error(FMT_STRING("Frame dropped: the {} {} has {} bytes, at most {} are accepted"),
               isReply ? "reply to command" : "push of command", frame.command(), frame.body().size(), limit);
    if (isReply) {
        m_poster.Post(this, std::chrono::milliseconds(0),
                      [this, session = frame.session()] { Fail(session, kCSProtoTooLarge); });
    }
    return true;
}

void CWebSocketChannel::Deliver(const channel::Frame& frame) {
    switch (frame.kind()) {
        case channel::Frame::REPLY:
            OnReply(frame);
            return;
        case channel::Frame::PUSH:
            OnPush(frame);
            return;
        default:
            Q_EMIT HostFrameReceived(frame);
    }
}

void CWebSocketChannel::OnReply(const channel::Frame& frame) {
    const auto found = m_requests.find(frame.session());
    if (found == m_requests.end()) {
        // A late reply to a request that was dropped or has failed is no error.
        const ZRLogType type = frame.session() <= m_nLastSession ? kZRLogInfo : kZRLogError;
        kLog.Write(type, fmt::format(FMT_STRING("Frame dropped: a reply for session {}, which waits for none"),
                                     frame.session()));
        return;
    }
    const Request request = std::move(found->second);
    m_requests.erase(found);
    ArmDeadline();
    if (request.context && request.callback) {
        const CSProtoData data{frame.command(), frame.body()};
        host::CallAndLogExceptions(kLog, "A reply's callback", [&] {
            request.callback(frame.session(), CSProtoError(frame.error()), data, nullptr);
        });
    }
}

void CWebSocketChannel::OnPush(const channel::Frame& frame) {
    const CSProtoData data{frame.command(), frame.body()};
    m_pushes.Deliver(static_cast<unsigned short>(frame.command()), [&](const CSCallback& callback) {
        host::CallAndLogExceptions(kLog, "A push's callback",
                                   [&] { callback(0, CSProtoError(frame.error()), data, nullptr); });
    });
}

// Posted, since the loss may be noticed inside a send.
void CWebSocketChannel::FailLater(CSProtoError error) {
    if (!m_requests.empty()) {
        m_poster.Post(this, std::chrono::milliseconds(0),
                      [this, last = m_requests.rbegin()->first, error] { FailUpTo(last, error); });
    }
}

// Each request leaves the table before its callback runs, which may send or unbind.
void CWebSocketChannel::FailUpTo(unsigned long lastSession, CSProtoError error) {
    while (!m_requests.empty() && m_requests.begin()->first <= lastSession) {
        Fail(m_requests.begin()->first, error);
    }
    ArmDeadline();
}

void CWebSocketChannel::Fail(unsigned long session, CSProtoError error) {
    const auto found = m_requests.find(session);
    if (found == m_requests.end()) {
        return;
    }
    const Request request = std::move(found->second);
    m_requests.erase(found);
    ArmDeadline();
    if (request.context && request.callback) {
        const CSProtoData data{request.command, std::string()};
        host::CallAndLogExceptions(kLog, "A failed request's callback",
                                   [&] { request.callback(session, error, data, nullptr); });
    }
}

void CWebSocketChannel::FailOverdue() {
    unsigned long overdue = 0;
    for (const auto& [session, request] : m_requests) {
        if (request.deadline > Now()) {
            break;
        }
        kLog.Error(FMT_STRING("No answer to command {}, session {}"), request.command, session);
        overdue = session;
    }
    FailUpTo(overdue, kCSProtoTimedOut);
}

void CWebSocketChannel::ArmDeadline() {
    if (m_requests.empty()) {
        m_deadlineTimer.stop();
        return;
    }
    m_deadlineTimer.start(int(std::max<int64_t>(m_requests.begin()->second.deadline - Now(), 0)));
}
