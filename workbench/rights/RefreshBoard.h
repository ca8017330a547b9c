#pragma once

#include <QObject>
#include <deque>
#include <map>
#include <optional>
#include <vector>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"

/// How rights and VIP status are kept in step with the server, made of the traffic and the module's log lines
/// alone. The two may come interleaved or one after the other, each in its own order. Times are milliseconds
/// since 1970 of the local clock. Main thread.
class CRefreshBoard : public QObject {
    Q_OBJECT

public:
    enum class EnSubject { Premium, Vip };
    enum class EnWhy { Unknown, Login, Hourly, Language, Push, Caller };
    enum class EnOutcome {
        InFlight,
        Answered,  // what became of the answer was not yet said
        Good,
        ChannelError,  // number: the error
        OtherCommand,  // number: the command that the answer bears
        BadBytes,
        NoCode,
        OtherCode,  // number: the code
        UnknownSession,
        Failed,  // for a reason that was not seen
    };

    /// A request and what became of it.
    struct Refresh {
        EnSubject subject = EnSubject::Premium;
        unsigned long session = 0;
        EnWhy why = EnWhy::Unknown;
        qint64 sentMs = 0;      // 0: the sending was not seen
        qint64 answeredMs = 0;  // 0: no answer yet
        EnOutcome outcome = EnOutcome::InFlight;
        qint64 number = 0;
    };

    /// A refresh that a push has asked for and that is not yet due.
    struct Waiting {
        EnSubject subject = EnSubject::Premium;
        qint64 dueMs = 0;
        bool needAll = true;
        int count = 0;  // of the rights in the push's list
    };

    explicit CRefreshBoard(QObject* parent = nullptr);

    /// Takes what is younger than the last it took.
    void Take(const TraceEvent& seen);
    void TakeLine(const LogEntry& entry);

    /// In order of session.
    std::vector<Refresh> InFlight() const;
    /// The last that has an answer.
    std::optional<Refresh> Last(EnSubject subject) const;
    /// Nothing for one that was not seen or is long answered: the youngest few hundred are kept.
    std::optional<Refresh> Find(unsigned long session) const;
    /// In order of due time.
    std::vector<Waiting> WaitingPushes() const;
    /// Nothing while no timer runs.
    std::optional<qint64> NextHourly(qint64 nowMs) const;

Q_SIGNALS:
    void Changed();

private:
    struct Failure {
        qint64 timeMs;
        EnOutcome outcome;
        qint64 number;
    };
    /// Failed answers and lines that say why, to be paired in their order.
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
    std::optional<EnWhy> m_nextWhy;
    bool m_bVipLogin = false;
    std::deque<EnWhy> m_vipWhys;                 // of requests whose sending is not yet seen
    std::deque<unsigned long> m_vipUnexplained;  // sendings whose reason is not yet read
    std::optional<Failure> m_lastVipFailure;     // as it was taken for the last answer
    std::optional<qint64> m_timerFrom;
    uint64_t m_nLastSeen = 0;
    uint64_t m_nLastLine = 0;
};
