#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <memory>
#include <set>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/diagnosis/AdRequest.h"

/// The line that stopped or ended something.
struct Refusal {
    log_table::ParsedLine line;
    int step = 0;
    qint64 timeMs = 0;
    QString reason = {};                            // from a preceding line
    bool leavesRest = false;                        // the previous state is unchanged
    std::vector<log_table::ParsedLine> drops = {};  // of the refused list
};

/// The module's lines about a subject, newest last.
using History = std::deque<std::pair<qint64, QString>>;

/// The state of an ad position.
struct AdState {
    using Request = std::shared_ptr<AdRequest>;

    Request last;      // the newest request
    Request answered;  // the newest with a complete answer
    Request standing;  // whose list the controller holds
    Request before;    // whose list it holds if the list that is being checked is refused
    Request made;      // of the newest banner, which remains when the list is cleared
    bool isLoading = false;
    int passed = 0;  // steps of the running attempt
    std::optional<Refusal> red;
    std::optional<Refusal> earlier;  // the refusal that `red` did not change and that still applies
    int shownCount = 0;              // cards or banners on the screen
    int shownTotal = 0;
    QString shownAd;
    qint64 shownMs = 0;
    qint64 nextAskS = 0;        // server time of the next possible request, from the module's own line
    std::set<qint64> pushesMs;  // due times of requests after a push, on the server's clock
    std::set<QString> failedPictures;
};

/// The requests for all rights, the VIP status or the chat scenes.
struct RefreshState {
    struct Request {
        unsigned long session = 0;
        QString why = {};
        qint64 sentMs = 0;
        qint64 answeredMs = 0;
        bool isGood = false;
        std::optional<Refusal> red = {};
    };

    std::deque<Request> requests;
    unsigned long answered = 0;         // session of the last answered one
    std::multimap<qint64, int> pushes;  // number of rights by the due time, in local time; -1 for all rights
    QString nextWhy;                    // of the next request
    std::deque<QString> reasons;        // of requests without a session in their line

    /// Null if the session is unknown.
    const Request* Find(unsigned long session) const;
    /// Adds the request if the session is unknown.
    Request& Of(unsigned long session);
};

/// An open of the chat's window, and the module's decision to load the page again or to keep it.
struct ChatOpen {
    qint64 timeMs = 0;
    quint64 user = 0;
    int scene = 0;
    bool isPreload = false;
    bool isLoaded = false;
    QStringList reasons = {};  // for the load
    QString url = {};
    std::optional<int> httpCode = {};
};

/// The states of all subjects, computed from the traffic, the reports and the log lines only. A login starts it afresh.
/// Traffic and lines must arrive in the order of their times. Main thread.
class CTracker : public QObject {
    Q_OBJECT

public:
    /// Converts local time to server time, both in milliseconds.
    using ToServer = std::function<qint64(qint64 localMs)>;

    explicit CTracker(ToServer toServer, QObject* parent = nullptr);

    /// Ignores events that are not newer than the last one.
    void Take(const TraceEvent& seen);
    void TakeLine(const LogEntry& entry);

    quint64 User() const;
    bool IsLoggedOut() const { return m_bLoggedOut; }
    qint64 ToServerMs(qint64 localMs) const { return m_fnToServer(localMs); }

    const std::map<AdSlot, AdState>& Ads() const { return m_ads; }
    const RefreshState& Rights() const { return m_rights; }
    const RefreshState& Vip() const { return m_vip; }
    const RefreshState& Chat() const { return m_chat; }
    /// The scenes of the last answer.
    const std::map<int, bool>& Scenes() const { return m_scenes; }
    const std::deque<ChatOpen>& Opens() const { return m_opens; }
    /// The lines about a subject: a right with its activation, a scene or an ad's type; otherwise the number is 0.
    const History& LinesOf(log_table::EnKind kind, int number, int position = 0) const;
    /// Nothing while the hourly timer is stopped.
    std::optional<qint64> NextHourlyMs(qint64 nowMs) const;

Q_SIGNALS:
    void Changed();

private:
    using Line = log_table::ParsedLine;

    void Reset(quint64 user);
    void On(const HttpTrace& call, qint64 timeMs);
    void On(const CommandTrace& command, qint64 timeMs);
    void On(const ReportTrace& report, qint64 timeMs);
    void On(const StoreTrace& store, qint64 timeMs);
    template <class Other>
    static void On(const Other& /*trace*/, qint64 /*timeMs*/) {}
    void TakeModuleLine(const Line& line, qint64 timeMs);
    void AddLine(log_table::EnKind kind, const AdSlot& subject, const Line& line, qint64 timeMs);
    AdState::Request FindRequest(const QString& id) const;
    AdState::Request RequestOf(const AdRequest& read, qint64 timeMs);
    void TakeAd(const Line& line, qint64 timeMs);
    void TakeAd(AdState& ad, const Line& line, qint64 timeMs);
    void OnAdRefused(AdState& ad, const Line& line, qint64 timeMs);
    void OnAdCleared(AdState& ad, const Line& line, qint64 timeMs);
    void OnPictureFailed(const Line& line, qint64 timeMs);
    void OnAdPush(const Line& line, qint64 timeMs);
    void TakeRefresh(RefreshState& state, const Line& line, qint64 timeMs);
    void OnAsked(RefreshState& state, const Line& line, qint64 timeMs);
    ChatOpen& PendingOpen(qint64 timeMs);
    void TakeOpen(const Line& line, qint64 timeMs);

    const ToServer m_fnToServer;
    quint64 m_nUser = 0;
    bool m_bLoggedOut = false;
    std::map<AdSlot, AdState> m_ads;
    std::deque<AdState::Request> m_requests;
    QString m_strReason;  // for a following line about an ad
    RefreshState m_rights, m_vip, m_chat;
    std::optional<qint64> m_timerFrom;
    std::map<int, bool> m_scenes;
    std::deque<ChatOpen> m_opens;
    quint64 m_nLoadUser = 0;  // of the last load of the chat's page
    int m_nLoadScene = 0;
    std::map<std::pair<log_table::EnKind, AdSlot>, History> m_histories;
    int m_nRight = 0;  // of the last line that names one
    uint64_t m_nLastSeen = 0;
    uint64_t m_nLastLine = 0;
};
