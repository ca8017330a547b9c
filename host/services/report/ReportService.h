#pragma once

#include <QObject>
#include <atomic>
#include <string>

#include "core/IReports.h"
#include "report/Measurements.h"
#include "report/Outbox.h"
#include "report/ReportSender.h"

class IPoster;
class ITimeAndRandom;

struct ReportOptions {
    OutboxOptions outbox;
    SenderOptions sender;
    /// Of one event as JSON. The largest answer over HTTP fits: 8 MiB, each byte of which may become U+FFFD, three
    /// bytes long.
    size_t mostEventBytes = 25 << 20;
    /// Events of so long go together.
    std::chrono::milliseconds gather{200};
    /// Empty: the machine's steady clock.
    CMeasurements::Clock steadyClock;
};

/// What the client knows about its surroundings, for reports. All of it must outlive them.
struct ReportSurroundings {
    IHttp& http;
    const IClientState& domains;
    ITimeAndRandom& timeAndRandom;
    IPoster& poster;
    std::string device;
};

/// Reports by way of an outbox. Construction, destruction, SendNow and SetUser: main thread.
class CReportService : public IReports {
public:
    CReportService(const QString& path, const ReportSurroundings& surroundings, const ReportOptions& options = {});
    ~CReportService() override;

    /// Who is logged in, for the events to come; 0 is nobody.
    void SetUser(uint64_t user) { m_nUser = user; }

    /// The server was found, or may be back.
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
    CMeasurements m_measurements;
    COutbox m_outbox;
    CReportSender m_sender;
};
