#pragma once

#include <QObject>
#include <functional>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/ads/AdFacts.h"

namespace ad_lines {
struct ParsedLine;
}

/// The state of each ad slot, computed from the traffic, the reports and the module's log lines only. Traffic and lines
/// can arrive interleaved or one after the other, each in its own order. Main thread.
class CAdTracker : public QObject {
    Q_OBJECT

public:
    /// Minimum time between two requests of a controller.
    static constexpr qint64 kIntervalS = 10;

    /// Converts local time to server time, both in milliseconds.
    using ToServer = std::function<qint64(qint64 localMs)>;

    explicit CAdTracker(ToServer toServer, QObject* parent = nullptr);

    /// Ignores events that are not newer than the last one.
    void Take(const TraceEvent& seen);
    void TakeLine(const LogEntry& entry);

    /// Sorted by type and position.
    std::vector<AdSlotState> Slots() const;
    /// Null for an unknown slot.
    const AdSlotState* Find(const AdSlot& slot) const;
    /// Null for an unknown request. Only the newest few hundred are kept.
    const AdRequest* Request(const QString& id) const;

    /// Time of the next possible request of the slot's controller, in milliseconds of server time.
    static qint64 NextAllowedMs(const AdSlotState& slot) { return (slot.stampS + kIntervalS) * 1000; }

Q_SIGNALS:
    void Changed();

private:
    /// The request to which a slot's lines belong, because the lines name none.
    struct Judging {
        QString request;  // the request of the current list
        QString before;   // the request of the previous list
        qint64 sinceMs = 0;
    };

    void TakeCall(const HttpTrace& call, qint64 timeMs);
    bool TakeReport(const ReportTrace& report, qint64 timeMs);
    void OnAdsReported(const ReportTrace& report);
    void OnClickReported(const ReportTrace& report, qint64 timeMs);
    void OnExposed(const ReportTrace& report, qint64 timeMs);
    void OnPicture(const ReportTrace& report);
    bool TakeRequestLine(const ad_lines::ParsedLine& said, qint64 timeMs);
    bool TakeListLine(const ad_lines::ParsedLine& said, qint64 timeMs);
    bool TakeWhyLine(const ad_lines::ParsedLine& said, qint64 timeMs);
    void TakePush(const ad_lines::ParsedLine& said, qint64 timeMs);
    void Withdraw(const ad_lines::ParsedLine& said, qint64 timeMs);
    void TakeListRefusal(const ad_lines::ParsedLine& said, const AdSlot& slot, qint64 timeMs);
    bool IsSpared(AdSlotState& slot) const;
    QString FirstKept(const QString& requestId) const;
    bool TakeScreenLine(const ad_lines::ParsedLine& said, qint64 timeMs);
    void OnDropped(const ad_lines::ParsedLine& said, EnAdResult why);
    void OnVerdict(const AdSlot& slot, EnAdVerdict verdict, const AdSlot& answerSlot, qint64 timeMs);
    void OnExposeLine(const ad_lines::ParsedLine& said, int firstOfSlot, AdExposeCall::EnOutcome outcome,
                      qint64 number);

    AdRequest& Begun(const QString& id, const AdSlot& slot, qint64 timeMs);
    void End(const QString& id, const AdSlot& slot, EnAdOutcome outcome, qint64 timeMs, qint64 number = 0,
             const QString& words = QString());
    void Answered(AdRequest& request, qint64 timeMs);
    AdSlotState& Of(const AdSlot& slot);
    AdRequest* Known(const QString& id);
    void Prune();

    const ToServer m_fnToServer;
    std::map<AdSlot, AdSlotState> m_slots;
    std::map<AdSlot, Judging> m_judging;
    std::map<QString, AdRequest> m_requests;
    QString m_strUndecodable;  // reason of a preceding line, which belongs to the answer of the next lines
    uint64_t m_nLastSeen = 0;
    uint64_t m_nLastLine = 0;
};
