#pragma once

#include <QObject>
#include <atomic>
#include <string>

#include "core/IReports.h"
#include "report/Outbox.h"
#include "report/ReportSender.h"
#include "report/RunningTimers.h"

class IPoster;
class ITimeAndRandom;

struct ReportOptions {
    OutboxOptions outbox;
    SenderOptions sender;
    /// Limit of one event as JSON. The strings of the largest HTTP answer fit: 1 MiB, of which each byte may become
    /// U+FFFD, with three bytes.
    size_t maxEventBytes = 4 << 20;
    /// Events reported within this time are sent together.
    std::chrono::milliseconds gather{200};
    /// If empty, the machine's steady clock.
    CRunningTimers::Clock steadyClock;
};

/// Dependencies of the report service, which they must outlive.
struct ReportDeps {
    IHttp& http;
    const IClientState& state;
    ITimeAndRandom& timeAndRandom;
    IPoster& poster;
    std::string device;
};

/// Stores reports in an outbox and sends them. Construct, destroy, SendNow and SetUser on the main thread.
class CReportService : public IReports {
public:
    CReportService(const QString& path, const ReportDeps& deps, const ReportOptions& options = {});
    ~CReportService() override;

    /// The logged-in user for later events; 0 if there is none.
    void SetUser(uint64_t user) { m_nUser = user; }

    /// Call it when the server was found or may be reachable again.
    void SendNow() { m_sender.SendNow(); }

    COutbox& Outbox() { return m_outbox; }

    bool Report(const ReportEvent& event) override;
    std::shared_ptr<std::string> TimerStart(const std::string& event) override;
    bool TimerEnd(const ReportEvent& event) override;

private:
    bool Take(const std::string& name, const ReportEvent& event, std::optional<int64_t> durationMs);
    void WakeLater();
    std::string NewId();

    ITimeAndRandom& m_timeAndRandom;
    IPoster& m_poster;
    const std::string m_strDevice;
    const ReportOptions m_options;
    std::atomic<uint64_t> m_nUser{0};
    std::atomic<bool> m_bWakePosted{false};
    CRunningTimers m_timers;
    COutbox m_outbox;
    CReportSender m_sender;
};
