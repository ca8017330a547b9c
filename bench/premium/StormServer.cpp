#include "StormServer.h"

#include <QTimer>
#include <QWebSocket>
#include <algorithm>

#include "channel.pb.h"
#include "premium_svr.pb.h"

namespace {

constexpr uint32_t kPremiumChangePush = 20837;
constexpr int kBursts = 100;
constexpr int kBurstEveryMs = 10;

QByteArray Bytes(const channel::Frame& frame) {
    return QByteArray::fromStdString(frame.SerializeAsString());
}

QByteArray Push() {
    web_premium_access::PremiumChangePush push;
    push.set_delay_seconds(0);
    push.set_need_all_access(true);
    channel::Frame frame;
    frame.set_kind(channel::Frame::PUSH);
    frame.set_command(kPremiumChangePush);
    frame.set_body(push.SerializeAsString());
    return Bytes(frame);
}

}  // namespace

CStormServer::CStormServer(std::string answer)
    : m_strAnswer(std::move(answer)), m_server(QStringLiteral("storm"), QWebSocketServer::NonSecureMode, this) {
    connect(&m_server, &QWebSocketServer::newConnection, this, &CStormServer::OnConnection);
}

CStormServer::~CStormServer() = default;

QUrl CStormServer::Listen() {
    return m_server.listen(QHostAddress::LocalHost) ? m_server.serverUrl() : QUrl();
}

void CStormServer::OnConnection() {
    m_pClient = m_server.nextPendingConnection();
    m_pClient->setParent(this);
    connect(m_pClient, &QWebSocket::binaryMessageReceived, this, &CStormServer::OnFrame);
}

void CStormServer::OnFrame(const QByteArray& bytes) {
    channel::Frame frame;
    if (!frame.ParseFromArray(bytes.constData(), bytes.size()) || frame.kind() != channel::Frame::REQUEST) {
        return;
    }
    frame.set_kind(channel::Frame::REPLY);
    frame.set_error(0);
    frame.set_body(m_strAnswer);
    m_pClient->sendBinaryMessage(Bytes(frame));
    ++m_nAnswered;
}

void CStormServer::PushWithinASecond(int count) {
    PushBurst(count, std::max(1, count / kBursts));
}

void CStormServer::PushBurst(int left, int burst) {
    const QByteArray push = Push();
    const int now = std::min(left, burst);
    for (int i = 0; i < now; ++i) {
        m_pClient->sendBinaryMessage(push);
    }
    if (left > now) {
        QTimer::singleShot(kBurstEveryMs, Qt::PreciseTimer, this,
                           [this, left, now, burst] { PushBurst(left - now, burst); });
    }
}
