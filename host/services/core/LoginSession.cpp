#include "core/LoginSession.h"

#include "channel/WebSocketChannel.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Login");

}  // namespace

CLoginSession::CLoginSession(CWebSocketChannel& channel, std::chrono::milliseconds answerLimit) : m_channel(channel) {
    m_answerTimer.setSingleShot(true);
    m_answerTimer.setInterval(answerLimit);
    connect(&m_answerTimer, &QTimer::timeout, this,
            [this] { m_channel.Reconnect(QStringLiteral("the login is not answered")); });
    connect(&m_channel, &CWebSocketChannel::Connected, this, &CLoginSession::Ask);
    connect(&m_channel, &CWebSocketChannel::Disconnected, &m_answerTimer, &QTimer::stop);
}

void CLoginSession::Login(uint64_t userId, const std::string& deviceId, int languageId) {
    Logout();
    m_login.set_user_id(userId);
    m_login.set_device_id(deviceId);
    m_login.set_language(languageId);
    Ask();
}

void CLoginSession::SetLanguage(int languageId) {
    if (m_login.has_user_id()) {
        m_login.set_language(languageId);
    }
    channel::Frame frame;
    frame.set_kind(channel::Frame::LANGUAGE);
    frame.mutable_login()->set_language(languageId);
    // Without a connection the next login sends it.
    m_channel.SendFrame(frame);
}

void CLoginSession::Ask() {
    if (!m_login.has_user_id()) {
        return;
    }
    channel::Frame frame;
    frame.set_kind(channel::Frame::LOGIN);
    frame.set_session(++m_nAsked);
    *frame.mutable_login() = m_login;
    if (m_channel.SendFrame(frame)) {
        m_answerTimer.start();
    }
}

void CLoginSession::Logout() {
    m_answerTimer.stop();
    const uint64_t userId = m_nUserId;
    if (m_login.has_user_id()) {
        channel::Frame frame;
        frame.set_kind(channel::Frame::LOGOUT);
        m_channel.SendFrame(frame);
    }
    Forget();
    if (userId != 0) {
        kLog.Info(FMT_STRING("User {} logged out"), userId);
        Q_EMIT LoggedOut(userId);
    }
}

void CLoginSession::Forget() {
    m_login.Clear();
    m_nUserId = 0;
    m_nSessionId = 0;
    m_markets.clear();
    m_override.reset();
    m_tradeAnswer.reset();
}

void CLoginSession::Receive(const channel::Frame& frame) {
    const channel::LoginAnswer& answer = frame.login_answer();
    if (!m_login.has_user_id() || frame.session() != m_nAsked || answer.user_id() != m_login.user_id()) {
        // Usual when another login replaced this one before the answer.
        kLog.Info(FMT_STRING("A login answer for user {} dropped, it is not waited for"), answer.user_id());
        return;
    }
    m_answerTimer.stop();
    if (!answer.accepted()) {
        const uint64_t userId = m_login.user_id();
        kLog.Error(FMT_STRING("The login of user {} is refused: {}"), userId, answer.reason());
        Logout();
        Q_EMIT Refused(userId, QString::fromStdString(answer.reason()));
        return;
    }
    const bool resumed = m_nUserId == answer.user_id();
    m_nUserId = answer.user_id();
    m_nSessionId = answer.session_id();
    m_markets.assign(answer.attributed_market().begin(), answer.attributed_market().end());
    m_tradeAnswer = answer.has_trade_answer() ? std::make_optional(answer.trade_answer()) : std::nullopt;
    kLog.Info(FMT_STRING("User {} {}"), m_nUserId, resumed ? "logged in again" : "logged in");
    if (resumed) {
        Q_EMIT Resumed(m_nUserId);
    } else {
        Q_EMIT LoggedIn(m_nUserId);
    }
}
