#include "report/ReportService.h"

#include "core/IPoster.h"
#include "core/ITimeAndRandom.h"
#include "core/MainThreadPoster.h"
#include "framework/HostLog.h"
#include "report/ReportText.h"

namespace {

constexpr host::CHostLog kLog("Report");

// The server would reject such an event, so it would be sent again and again.
bool IsNameless(const std::string& name) {
    if (name.empty()) {
        kLog.Error(FMT_STRING("An event without a name is not reported"));
    }
    return name.empty();
}

}  // namespace

CReportService::CReportService(const QString& path, const ReportDeps& deps, const ReportOptions& options)
    : m_timeAndRandom(deps.timeAndRandom),
      m_poster(deps.poster),
      m_strDevice(deps.device),
      m_options(options),
      m_timers(options.steadyClock ? options.steadyClock : CMainThreadPoster::SteadyMillis),
      m_outbox(path, options.outbox),
      m_sender(m_outbox, deps.http, deps.state, deps.timeAndRandom, options.sender) {}

CReportService::~CReportService() = default;

bool CReportService::Report(const ReportEvent& event) {
    return !IsNameless(event.name) && Take(event.name, event, std::nullopt);
}

std::shared_ptr<std::string> CReportService::TimerStart(const std::string& event) {
    return IsNameless(event) ? nullptr : std::make_shared<std::string>(m_timers.Start(event));
}

bool CReportService::TimerEnd(const ReportEvent& event) {
    if (IsNameless(event.name)) {
        return false;
    }
    const auto measured = m_timers.End(event.name);
    if (!measured) {
        kLog.Error(FMT_STRING("No measurement {} is open"), event.name);
        return false;
    }
    return Take(measured->event, event, measured->millis);
}

bool CReportService::Take(const std::string& name, const ReportEvent& event, std::optional<int64_t> durationMs) {
    bool taken = false;
    host::CallAndLogExceptions(kLog, "Reporting", [&] {
        const std::string id = NewId();
        const auto text = ReportText({id, name, event.code, event.params, event.broker, m_nUser, m_strDevice,
                                      m_timeAndRandom.ServerTimeMs(), durationMs});
        if (!text) {
            kLog.Error(FMT_STRING("The event {} holds what can't be written as JSON"), name);
        } else if (text->size() > m_options.maxEventBytes) {
            kLog.Error(FMT_STRING("The event {} is too large to be reported: {} bytes"), name, text->size());
        } else {
            taken = m_outbox.Add(id, *text);
            // Also an event that is kept in memory: the sender lets the outbox write it.
            WakeLater();
        }
    });
    return taken;
}

void CReportService::WakeLater() {
    if (!m_bWakePosted.exchange(true)) {
        m_poster.Post(&m_sender, m_options.gather, [this] {
            m_bWakePosted = false;
            m_sender.Wake();
        });
    }
}

std::string CReportService::NewId() {
    std::string id;
    for (int part = 0; part < 4; ++part) {
        id += fmt::format(FMT_STRING("{:08x}"), m_timeAndRandom.RandomNumber());
    }
    return id;
}
