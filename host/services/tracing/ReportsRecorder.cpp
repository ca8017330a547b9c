#include "tracing/ReportsRecorder.h"

#include <algorithm>

#include "framework/JsonText.h"
#include "report/RunningTimers.h"
#include "tracing/TraceLog.h"

namespace {

// Limit for timers that are never ended.
constexpr size_t kMaxRunning = 1'000;

ReportTrace TraceOf(const ReportEvent& event) {
    ReportTrace trace;
    trace.event = event.name;
    trace.code = event.code;
    trace.broker = event.broker;
    trace.params = host::OneLine(event.params).substr(0, kTracedBytes);
    return trace;
}

}  // namespace

CReportsRecorder::CReportsRecorder(IReports& reports, CTraceLog& traceLog) : m_reports(reports), m_traceLog(traceLog) {}

bool CReportsRecorder::Report(const ReportEvent& event) {
    ReportTrace trace = TraceOf(event);
    trace.taken = m_reports.Report(event);
    const bool taken = trace.taken;
    m_traceLog.Record(std::move(trace));
    return taken;
}

std::shared_ptr<std::string> CReportsRecorder::TimerStart(const std::string& event) {
    const std::shared_ptr<std::string> timer = m_reports.TimerStart(event);
    ReportTrace trace;
    trace.kind = ReportTrace::EnKind::TimerStarted;
    trace.event = event;
    trace.timer = timer ? *timer : std::string();
    trace.taken = timer != nullptr;
    if (timer) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_running[*timer].start();
        if (m_running.size() > kMaxRunning) {
            const auto longer = [](const auto& left, const auto& right) {
                return left.second.elapsed() < right.second.elapsed();
            };
            m_running.erase(std::max_element(m_running.begin(), m_running.end(), longer));
        }
    }
    m_traceLog.Record(std::move(trace));
    return timer;
}

bool CReportsRecorder::TimerEnd(const ReportEvent& event) {
    ReportTrace trace = TraceOf(event);
    trace.kind = ReportTrace::EnKind::TimerEnded;
    trace.timer = event.name;
    trace.event = CRunningTimers::EventOf(event.name);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto running = m_running.find(event.name);
        if (running != m_running.end()) {
            trace.durationMs = running->second.elapsed();
            m_running.erase(running);
        }
    }
    trace.taken = m_reports.TimerEnd(event);
    const bool taken = trace.taken;
    m_traceLog.Record(std::move(trace));
    return taken;
}
