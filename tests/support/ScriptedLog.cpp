#include "support/ScriptedLog.h"

#include <ostream>

std::ostream& operator<<(std::ostream& stream, const LogLine& line) {
    return stream << "[" << int(line.severity) << "] " << ::testing::PrintToString(line.text) << " (" << line.module
                  << ", " << line.file << ":" << line.line << " " << line.function << ")";
}

std::ostream& operator<<(std::ostream& stream, const AssertionRecord& record) {
    return stream << ::testing::PrintToString(record.expression) << " of type " << record.type << ", "
                  << ::testing::PrintToString(record.detail) << " (" << record.module << ", " << record.file << ":"
                  << record.line << ")";
}

namespace {

::testing::Matcher<LogLine> Line(ZRLogType severity, const ::testing::Matcher<std::string>& text) {
    return ::testing::AllOf(::testing::Field("severity", &LogLine::severity, severity),
                            ::testing::Field("text", &LogLine::text, text));
}

}  // namespace

::testing::Matcher<LogLine> Info(const ::testing::Matcher<std::string>& text) {
    return Line(kZRLogInfo, text);
}

::testing::Matcher<LogLine> Error(const ::testing::Matcher<std::string>& text) {
    return Line(kZRLogError, text);
}

::testing::Matcher<LogLine> Fatal(const ::testing::Matcher<std::string>& text) {
    return Line(kZRLogFatal, text);
}

std::vector<LogLine> CScriptedLog::Lines() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nLinesLookedAt = m_lines.size();
    return m_lines;
}

std::vector<AssertionRecord> CScriptedLog::Assertions() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nAssertionsLookedAt = m_assertions.size();
    return m_assertions;
}

void CScriptedLog::AllowErrors(const std::string& text) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_allowed.insert(text);
}

void CScriptedLog::Forget() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.clear();
    m_assertions.clear();
    m_nLinesLookedAt = 0;
    m_nAssertionsLookedAt = 0;
}

void CScriptedLog::CheckAllLookedAt() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (size_t i = m_nLinesLookedAt; i < m_lines.size(); ++i) {
        if (m_lines[i].severity >= kZRLogError && m_allowed.count(m_lines[i].text) == 0) {
            ADD_FAILURE() << "Unexpected error line: " << m_lines[i];
        }
    }
    for (size_t i = m_nAssertionsLookedAt; i < m_assertions.size(); ++i) {
        ADD_FAILURE() << "Unexpected assertion: " << m_assertions[i];
    }
}

void CScriptedLog::Write(const LogRecord& record) {
    const QByteArray bytes = record.text.toLatin1();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lines.push_back(
        LogLine{record.type, bytes.toStdString(), record.module, record.file, record.function, record.line});
}

void CScriptedLog::AssertionFailed(const AssertionRecord& record) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_assertions.push_back(record);
}
