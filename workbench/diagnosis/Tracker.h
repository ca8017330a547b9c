#pragma once

#include <QMap>
#include <QObject>
#include <deque>
#include <functional>
#include <memory>
#include <set>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/diagnosis/LogTable.h"

constexpr int kTypeBanner = 3;

/// An ad position with its type. In other subjects, a right or a scene.
struct AdSlot {
    int type = 0;
    int position = 0;

    bool operator<(const AdSlot& that) const { return std::tie(type, position) < std::tie(that.type, that.position); }
    bool operator==(const AdSlot& that) const { return type == that.type && position == that.position; }
};

/// The client's only popup. Lines without type and position belong to it.
constexpr AdSlot kBottomPopup{2, 42};

/// An ad in the server's answer. Times are seconds on the server's clock.
struct AdOffer {
    QString id;
    QString image;  // URL of the picture
    std::optional<qint64> startS, endS, expireS;
    std::vector<int> areas;  // of the main window, in which a popup can be shown
};

/// A request for ads, from its log line, and its answer, from the traffic. Local times in milliseconds, 0 if unknown.
struct AdRequest {
    QString id;
    qint64 sentMs = 0;
    qint64 answeredMs = 0;
    std::vector<AdOffer> ads = {};
    std::vector<log_table::ParsedLine> drops = {};  // the lines about ads that were removed from the list
    QString refusal = {};                           // of the whole list

    /// The line about an ad that was not kept; null if there is none.
    const log_table::ParsedLine* DropOf(const AdOffer& ad) const;
    std::vector<AdOffer> Kept() const;
};

/// The line that stopped or ended something.
struct Refusal {
    log_table::ParsedLine line;
    int step = 0;
    bool leavesRest = false;                        // the previous state is unchanged
    std::vector<log_table::ParsedLine> drops = {};  // of the refused list
};

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
    std::optional<Refusal> after;  // a later refusal that left `red`
    int shownCount = 0;            // cards or banners on the screen
    int shownTotal = 0;
    QString shownAd;
    qint64 shownMs = 0;
    qint64 nextAskS = 0;        // server time of the next possible request, from the module's own line
    std::set<qint64> pushesMs;  // due times of requests after a push, on the server's clock

    /// The ad that a line is about; without values if its list was not recorded.
    AdOffer Offer(const QString& id) const;
};

/// The requests for all rights, the VIP status or the chat scenes.
struct RefreshState {
    struct Request {
        QString why;
        qint64 sentMs = 0;
        qint64 answeredMs = 0;
        bool isGood = false;
        std::optional<Refusal> red;
    };

    QMap<unsigned long, Request> requests;  // the newest, by session
    unsigned long answered = 0;             // session of the last answered request
    std::multimap<qint64, int> pushes;      // number of rights by the due time, in local time; -1 for all rights
    QString nextWhy;                        // of the next request
};

/// An open of the chat's window, and the module's decision to load the page again or to keep it.
struct ChatOpen {
    qint64 timeMs = 0;
    int scene = 0;
    bool isPreload = false;
    bool isLoaded = false;
    QStringList reasons = {};  // for the load
    QString url = {};
    std::optional<int> httpCode = {};
};

/// The states of all subjects.
struct TrackerState {
    quint64 user = 0;  // 0 before the first login
    bool isLoggedOut = false;
    QMap<AdSlot, AdState> ads;
    std::deque<AdState::Request> adRequests;
    QString adReason;                  // for a following line about an ad
    std::set<QString> failedPictures;  // URLs
    RefreshState rights, vip, chat;
    std::set<int> scenes;  // in the last answer
    std::deque<ChatOpen> opens;
    // The newest lines of each subject. The lines about a right include its activation.
    QMap<std::pair<log_table::EnKind, AdSlot>, std::deque<log_table::ParsedLine>> lines;
    int right = 0;  // of the last line that names one
    // These outlast a login.
    std::optional<qint64> timerFrom;  // start of the hourly timer, while it runs
    quint64 loadUser = 0;             // of the last load of the chat's page
    int loadScene = 0;

    quint64 User() const;
};

/// Computes the states from the traffic, the reports and the log lines only. A login starts them afresh. Traffic and
/// lines must arrive in the order of their times. Main thread.
class CTracker : public QObject {
    Q_OBJECT

public:
    /// Converts local time to server time, both in milliseconds.
    using ToServer = std::function<qint64(qint64 localMs)>;

    explicit CTracker(ToServer toServer, QObject* parent = nullptr);

    /// Ignores events that are not newer than the last one.
    void Take(const TraceEvent& seen);
    void TakeLine(const LogEntry& entry);

    const TrackerState& State() const { return m_state; }
    qint64 ToServerMs(qint64 localMs) const { return m_fnToServer(localMs); }

Q_SIGNALS:
    void Changed();

private:
    const ToServer m_fnToServer;
    TrackerState m_state;
    uint64_t m_nLastSeen = 0;
    uint64_t m_nLastLine = 0;
};
