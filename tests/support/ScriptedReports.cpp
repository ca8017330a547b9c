#include "support/ScriptedReports.h"

#include <gtest/gtest.h>
#include <json/writer.h>

namespace {

std::string InOneLine(const Json::Value& value) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    writer["emitUTF8"] = true;
    return Json::writeString(writer, value);
}

}  // namespace

bool operator==(const ReportedEvent& left, const ReportedEvent& right) {
    return left.name == right.name && left.code == right.code && left.params == right.params &&
           left.broker == right.broker && left.timed == right.timed;
}

std::ostream& operator<<(std::ostream& stream, const ReportedEvent& event) {
    return stream << event.name << " " << event.code << " " << event.params << (event.timed ? " timed" : "");
}

std::vector<ReportedEvent> CScriptedReports::Events() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nLookedAt = m_events.size();
    return m_events;
}

std::vector<std::string> CScriptedReports::Names() {
    std::vector<std::string> names;
    for (const ReportedEvent& event : Events()) {
        names.push_back(event.name);
    }
    return names;
}

void CScriptedReports::Refuse(Failing which) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_refused = which;
}

void CScriptedReports::NameTimers(std::function<std::string(const std::string& event)> name) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_timerName = std::move(name);
}

void CScriptedReports::GiveNoTimers() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bTimers = false;
}

std::vector<std::string> CScriptedReports::Started() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_started;
}

void CScriptedReports::Forget() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_events.clear();
    m_started.clear();
    m_nLookedAt = 0;
}

void CScriptedReports::CheckAllLookedAt() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (size_t i = m_nLookedAt; i < m_events.size(); ++i) {
        ADD_FAILURE() << "An unexpected event was reported: " << m_events[i];
    }
    m_nLookedAt = m_events.size();
}

bool CScriptedReports::Report(const ReportEvent& event) {
    return Take(event, false);
}

std::shared_ptr<std::string> CScriptedReports::TimerStart(const std::string& event) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_started.push_back(event);
    if (!m_bTimers || event.empty()) {
        return nullptr;
    }
    return std::make_shared<std::string>(m_timerName ? m_timerName(event) : event);
}

bool CScriptedReports::TimerEnd(const ReportEvent& event) {
    return Take(event, true);
}

bool CScriptedReports::Take(const ReportEvent& event, bool timed) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (event.name.empty()) {
        return false;
    }
    m_events.push_back({event.name, event.code, InOneLine(event.params), event.broker, timed});
    return !m_refused.Next();
}
