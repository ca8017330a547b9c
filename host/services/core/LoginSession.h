#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <chrono>
#include <optional>

#include "channel.pb.h"
#include "core/IAccount.h"

class CWebSocketChannel;

/// Who is logged in, over the channel; logs the same user in again at each reconnect. Main thread.
/// The channel must outlive it.
class CLoginSession : public QObject, public IAccount {
    Q_OBJECT

public:
    explicit CLoginSession(CWebSocketChannel& channel,
                           std::chrono::milliseconds answerLimit = std::chrono::seconds(15));

    uint64_t UserId() const override { return m_nUserId; }
    uint64_t SessionId() const override { return m_nSessionId; }
    std::vector<int> AttributedMarkets() const override { return m_override ? *m_override : m_markets; }

    /// What AttributedMarkets gives until the next login or logout, instead of what the server said; a lost
    /// connection does not end it.
    void OverrideMarkets(std::vector<int> markets) { m_override = std::move(markets); }

    /// Logs a user in, now or as soon as there is a connection; whoever is logged in is logged out first.
    /// `userId` is not 0.
    void Login(uint64_t userId, const std::string& deviceId, int languageId);
    void Logout();

    /// The user whose login is asked for or done; 0 if none is.
    uint64_t WantedUserId() const { return m_login.user_id(); }

    /// Tells the server at once in which language to answer from now on, and again at each later login.
    void SetLanguage(int languageId);

    /// What the server said for the trade module at the login; nothing if it said none, and while nobody is
    /// logged in.
    std::optional<bool> TradeAnswer() const { return m_tradeAnswer; }

    /// A frame with a login answer, from the channel. One that answers another login than the last is logged
    /// and dropped.
    void Receive(const channel::Frame& frame);

Q_SIGNALS:
    /// State has changed before any of these.
    void LoggedIn(qulonglong userId);
    void LoggedOut(qulonglong userId);
    /// The user who was logged in is so again, after the connection was lost.
    void Resumed(qulonglong userId);
    void Refused(qulonglong userId, const QString& reason);

private:
    void Ask();
    void Forget();

    CWebSocketChannel& m_channel;
    channel::Login m_login;
    uint64_t m_nAsked = 0;  // the number of the last login frame
    QTimer m_answerTimer;
    uint64_t m_nUserId = 0;
    uint64_t m_nSessionId = 0;
    std::vector<int> m_markets;
    std::optional<std::vector<int>> m_override;
    std::optional<bool> m_tradeAnswer;
};
