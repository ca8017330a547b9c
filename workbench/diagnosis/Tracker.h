#pragma once

#include <QObject>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/diagnosis/AdRequest.h"
#include "workbench/diagnosis/LogTable.h"

/// The line that stopped or ended something.
struct Refusal {
    log_table::ParsedLine line;
    int step = 0;
    qint64 timeMs = 0;
    bool leavesRest = false;             // the previous state is unchanged
    std::vector<AdRequest::Drop> drops;  // of the refused list
    QString reason;                      // from a preceding line
};

/// The module's lines about a subject, newest last.
struct History {
    struct Entry {
        qint64 timeMs;
        QString text;
    };
    std::deque<Entry> entries;

    void Add(qint64 timeMs, const QString& text);
};

/// The state of an ad position.
struct AdState {
    using Request = std::shared_ptr<AdRequest>;

    AdSlot slot;
    Request last;      // the newest request
    Request answered;  // the newest with a complete answer
    Request standing;  // whose list the controller holds
    Request before;    // whose list it held before
    Request made;      // of the newest banner, which remains when the list is cleared
    bool isAsking = false;
    bool isLoading = false;
    bool isNewAttempt = false;  // the next refusal belongs to a list and not to a loaded picture
    bool isRetry = false;       // the list waited
    int passed = 0;             // steps of this attempt
    std::optional<Refusal> red;
    std::optional<Refusal> earlier;  // the refusal that `red` did not change and that still applies
    int shownCount = 0;              // cards or banners on the screen
    int shownTotal = 0;
    QString shownAd;
    qint64 shownMs = 0;
    qint64 nextAskS = 0;           // server time of the next possible request, from the module's own line
    std::vector<qint64> pushesMs;  // due times of requests after a push, on the server's clock
    QStringList withdrawn;         // by a push, at `withdrawnMs`
    qint64 withdrawnMs = 0;
    std::set<QString> failedPictures;
    History history;
};

/// The requests for all rights, the VIP status or the chat scenes.
struct RefreshState {
    enum class EnReason { Unknown, Login, Hourly, Language, Push, Caller };
    struct Request {
        unsigned long session = 0;
        EnReason why = EnReason::Unknown;
        qint64 sentMs = 0;
        qint64 answeredMs = 0;
        bool isGood = false;
        std::optional<Refusal> red;
    };
    struct Push {
        qint64 dueMs;  // local time
        int count;     // rights in its list; -1 for all
    };
    struct Outcome {
        qint64 timeMs;
        std::optional<Refusal> red;
    };

    std::map<unsigned long, Request> requests;
    unsigned long last = 0;      // session of the newest request
    unsigned long answered = 0;  // session of the last answered one
    std::vector<Push> pushes;
    std::deque<EnReason> reasons;           // of requests without a session in their line
    std::deque<unsigned long> unexplained;  // requests without a reason
    std::deque<Outcome> outcomes;           // lines whose answer was not yet seen
    std::deque<unsigned long> unjudged;     // answers whose line was not yet seen
    History history;

    const Request* Find(unsigned long session) const;
};

/// An open of the chat's window, and the module's decision to load the page again or to keep it.
struct ChatOpen {
    qint64 timeMs = 0;
    quint64 user = 0;
    int scene = 0;
    bool isPreload = false;
    bool isLoaded = false;
    QStringList reasons;  // for the load
    QString url;
    std::optional<int> httpCode;
};

/// The states of all subjects, computed from the traffic, the reports and the log lines only. A login starts it afresh.
/// Traffic and lines can arrive interleaved, or first all lines and then the traffic. Main thread.
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
    qint64 ServerNowMs() const;
    qint64 ToServerMs(qint64 localMs) const { return m_fnToServer(localMs); }

    const std::map<AdSlot, AdState>& Ads() const { return m_ads; }
    const AdState* Find(const AdSlot& slot) const;
    const RefreshState& Rights() const { return m_rights; }
    const RefreshState& Vip() const { return m_vip; }
    const RefreshState& Chat() const { return m_chat; }
    /// The scenes of the last answer.
    const std::map<int, bool>& Scenes() const { return m_scenes; }
    const std::deque<ChatOpen>& Opens() const { return m_opens; }
    /// The module's lines about the widgets and the activation of a right, or about a scene.
    const History* LinesOf(log_table::EnKind kind, int number) const;
    /// Nothing while the hourly timer is stopped.
    std::optional<qint64> NextHourlyMs(qint64 nowMs) const;

Q_SIGNALS:
    void Changed();

private:
    using Line = log_table::ParsedLine;

    void Reset(quint64 user);
    void TakeCall(const HttpTrace& call, qint64 timeMs);
    void TakeCommand(const CommandTrace& command, qint64 timeMs);
    void TakeReport(const ReportTrace& report, qint64 timeMs);
    void OnLastShownStored(const StoreTrace& store);
    void TakeAd(const Line& line, qint64 timeMs);
    void TakeAd(AdState& ad, const Line& line, qint64 timeMs);
    void OnAdRefused(AdState& ad, const Line& line, qint64 timeMs);
    void OnAdClosed(AdState& ad, const Line& line, qint64 timeMs);
    void OnAdCleared(AdState& ad, const Line& line, qint64 timeMs);
    void OnPictureFailed(const Line& line, qint64 timeMs);
    void OnAdPush(const Line& line, qint64 timeMs);
    void Withdraw(const Line& line, qint64 timeMs);
    void TakeRefresh(RefreshState& state, const Line& line, qint64 timeMs);
    void OnAsked(RefreshState& state, const Line& line, qint64 timeMs);
    void OnRefreshPush(RefreshState& state, const Line& line, qint64 timeMs);
    void TakeChat(const Line& line, qint64 timeMs);
    void TakeOpen(const Line& line, qint64 timeMs);
    ChatOpen& PendingOpen(qint64 timeMs);
    AdState& Of(const AdSlot& slot);
    AdState::Request RequestOf(const AdRequest& read, qint64 timeMs);

    const ToServer m_fnToServer;
    quint64 m_nUser = 0;
    bool m_bLoggedOut = false;
    std::map<AdSlot, AdState> m_ads;
    std::map<QString, AdState::Request> m_requests;
    Line m_clearReason;
    QString m_strUndecodable;
    RefreshState m_rights, m_vip, m_chat;
    std::optional<RefreshState::EnReason> m_nextWhy;
    bool m_bVipLogin = false;
    std::optional<qint64> m_timerFrom;
    std::map<int, bool> m_scenes;
    std::deque<ChatOpen> m_opens;
    quint64 m_nLoadUser = 0;  // of the last load of the chat's page
    std::map<std::pair<log_table::EnKind, int>, History> m_histories;
    int m_nActivating = 0;
    uint64_t m_nLastSeen = 0;
    uint64_t m_nLastLine = 0;
};
