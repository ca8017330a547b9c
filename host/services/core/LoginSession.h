#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <optional>
#include <vector>

#include "channel.pb.h"

class CWebSocketChannel;

/// The login over the channel. It logs the same user in again at each reconnect. The channel must outlive it.
/// Main thread.
class CLoginSession : public QObject {
    Q_OBJECT

public:
    explicit CLoginSession(CWebSocketChannel& channel,
                           std::chrono::milliseconds answerLimit = std::chrono::seconds(15));

    uint64_t UserId() const { return m_nUserId; }
    uint64_t SessionId() const { return m_nSessionId; }
    std::vector<int> AttributedMarkets() const { return m_override ? *m_override : m_markets; }

    /// Replaces the server's markets until the next login or logout. A lost connection does not end it.
    void OverrideMarkets(std::vector<int> markets) { m_override = std::move(markets); }

    /// Logs a user in, now or as soon as there is a connection. The current user is logged out first. `userId` is not
    /// 0.
    void Login(uint64_t userId, const std::string& deviceId, int languageId);
    void Logout();

    /// The user whose login was requested or is done. 0 if there is none.
    uint64_t WantedUserId() const { return m_login.user_id(); }

    /// Sends the language for later answers to the server, now and at each later login.
    void SetLanguage(int languageId);

    /// The server's answer for the trade module at the login. Empty without one, and while nobody is logged in.
    std::optional<bool> TradeAnswer() const { return m_tradeAnswer; }

    /// Handles a login answer from the channel. An answer to another login than the last is logged and dropped.
    void Receive(const channel::Frame& frame);

Q_SIGNALS:
    /// The state changes before each of these signals.
    void LoggedIn(qulonglong userId);
    void LoggedOut(qulonglong userId);
    /// The same user is logged in again after the connection was lost.
    void Resumed(qulonglong userId);
    void Refused(qulonglong userId, const QString& reason);

private:
    void Ask();
    void Forget();

    CWebSocketChannel& m_channel;
    channel::Login m_login;
    uint64_t m_nAsked = 0;  // number of the last login frame
    QTimer m_answerTimer;
    uint64_t m_nUserId = 0;
    uint64_t m_nSessionId = 0;
    std::vector<int> m_markets;
    std::optional<std::vector<int>> m_override;
    std::optional<bool> m_tradeAnswer;
};
