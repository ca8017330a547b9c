#pragma once

#include <QObject>
#include <deque>
#include <map>
#include <optional>
#include <vector>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"

/// The refreshes of rights and VIP status, computed from the traffic and the module's log lines only. Both can arrive
/// interleaved or one after the other, each in its own order. Times are local milliseconds since 1970. Main thread.
class CRefreshTracker : public QObject {
    Q_OBJECT

public:
    enum class EnSubject { Premium, Vip };
    enum class EnRefreshReason { Unknown, Login, Hourly, Language, Push, Caller };
    enum class EnOutcome {
        InFlight,
        Answered,  // the result is not yet known
        Good,
        ChannelError,  // number: the error
        OtherCommand,  // number: the command of the answer
        BadBytes,
        NoCode,
        OtherCode,  // number: the code
        UnknownSession,
        Failed,  // for an unknown reason
    };

    /// A request and its result.
    struct Refresh {
        EnSubject subject = EnSubject::Premium;
        unsigned long session = 0;
        EnRefreshReason why = EnRefreshReason::Unknown;
        qint64 sentMs = 0;      // 0: the request was not recorded
        qint64 answeredMs = 0;  // 0: no answer yet
        EnOutcome outcome = EnOutcome::InFlight;
        qint64 number = 0;
    };

    /// A pending refresh that a push requested.
    struct Waiting {
        EnSubject subject = EnSubject::Premium;
        qint64 dueMs = 0;
        bool needAll = true;
        int count = 0;  // number of rights in the push's list
    };

    explicit CRefreshTracker(QObject* parent = nullptr);

    /// Ignores events that are not newer than the last one.
    void Take(const TraceEvent& seen);
    void TakeLine(const LogEntry& entry);

    /// Sorted by session.
    std::vector<Refresh> InFlight() const;
    /// The last answered request.
    std::optional<Refresh> Last(EnSubject subject) const;
    /// Nothing for an unknown session. Only the newest few hundred are kept.
    std::optional<Refresh> Find(unsigned long session) const;
    /// Sorted by due time.
    std::vector<Waiting> WaitingPushes() const;
    /// Nothing while the hourly timer is stopped.
    std::optional<qint64> NextHourly(qint64 nowMs) const;

Q_SIGNALS:
    void Changed();

private:
    struct Failure {
        qint64 timeMs;
        EnOutcome outcome;
        qint64 number;
    };
    /// Failed answers and lines with a reason. They are paired in order.
    struct Unpaired {
        std::deque<unsigned long> sessions;
        std::deque<Failure> lines;
    };

    void TakeCommand(const CommandTrace& command, qint64 timeMs);
    void TakeMessage(const MessageTrace& message);
    void OnSent(const QStringList& values, qint64 timeMs);
    void OnVipSent(qint64 timeMs);
    void OnVipGood();
    void Explain(EnSubject subject, const Failure& failure);
    void Pair(EnSubject subject);
    void PairVipReasons();
    bool TakeDue(EnSubject subject, bool needAll, int count, qint64 timeMs);
    Refresh& Of(EnSubject subject, unsigned long session);
    Refresh* LastOf(EnSubject subject);
    void Prune();

    std::map<unsigned long, Refresh> m_refreshes;
    std::map<EnSubject, unsigned long> m_last;
    std::map<EnSubject, Unpaired> m_unpaired;
    std::multimap<qint64, Waiting> m_waiting;
    std::optional<EnRefreshReason> m_nextWhy;
    bool m_bVipLogin = false;
    std::deque<EnRefreshReason> m_vipWhys;       // reasons of requests that are not yet recorded
    std::deque<unsigned long> m_vipUnexplained;  // requests whose reason is not yet known
    std::optional<Failure> m_lastVipFailure;     // the failure that was assigned to the last answer
    std::optional<qint64> m_timerFrom;
    uint64_t m_nLastSeen = 0;
    uint64_t m_nLastLine = 0;
};
