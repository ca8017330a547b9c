#include "observe/ObservedReports.h"

#include <json/writer.h>

#include <algorithm>

#include "observe/Observation.h"
#include "report/RunningTimers.h"

namespace {

// So many measurements may run that nobody ends.
constexpr size_t kMostRunning = 1'000;

std::string OneLine(const Json::Value& value) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    writer["emitUTF8"] = true;
    return Json::writeString(writer, value);
}

ReportSeen SeenOf(const ReportEvent& event) {
    ReportSeen seen;
    seen.event = event.name;
    seen.code = event.code;
    seen.broker = event.broker;
    seen.params = OneLine(event.params);
    return seen;
}

}  // namespace

CObservedReports::CObservedReports(IReports& reports, CObservation& observation)
    : m_reports(reports), m_observation(observation) {}

bool CObservedReports::Report(const ReportEvent& event) {
    ReportSeen seen = SeenOf(event);
    seen.taken = m_reports.Report(event);
    const bool taken = seen.taken;
    m_observation.Report(std::move(seen));
    return taken;
}

std::shared_ptr<std::string> CObservedReports::TimerStart(const std::string& event) {
    const std::shared_ptr<std::string> timer = m_reports.TimerStart(event);
    ReportSeen seen;
    seen.kind = ReportSeen::EnKind::TimerStarted;
    seen.event = event;
    seen.timer = timer ? *timer : std::string();
    seen.taken = timer != nullptr;
    if (timer) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_running[*timer].start();
        if (m_running.size() > kMostRunning) {
            const auto longer = [](const auto& left, const auto& right) {
                return left.second.elapsed() < right.second.elapsed();
            };
            m_running.erase(std::max_element(m_running.begin(), m_running.end(), longer));
        }
    }
    m_observation.Report(std::move(seen));
    return timer;
}

bool CObservedReports::TimerEnd(const ReportEvent& event) {
    ReportSeen seen = SeenOf(event);
    seen.kind = ReportSeen::EnKind::TimerEnded;
    seen.timer = event.name;
    seen.event = CRunningTimers::EventOf(event.name);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto running = m_running.find(event.name);
        if (running != m_running.end()) {
            seen.durationMs = running->second.elapsed();
            m_running.erase(running);
        }
    }
    seen.taken = m_reports.TimerEnd(event);
    const bool taken = seen.taken;
    m_observation.Report(std::move(seen));
    return taken;
}
