#include "observe/ObservedReports.h"

#include <json/writer.h>

#include "observe/Observation.h"
#include "report/Measurements.h"

namespace {

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
    m_observation.Report(std::move(seen));
    return timer;
}

bool CObservedReports::TimerEnd(const ReportEvent& event) {
    ReportSeen seen = SeenOf(event);
    seen.kind = ReportSeen::EnKind::TimerEnded;
    seen.timer = event.name;
    seen.event = CMeasurements::EventOf(event.name);
    seen.taken = m_reports.TimerEnd(event);
    const bool taken = seen.taken;
    m_observation.Report(std::move(seen));
    return taken;
}
