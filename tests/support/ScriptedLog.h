#pragma once

#include <gmock/gmock.h>

#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "framework/ILog.h"

/// A line as it was written. `text` contains one byte for each character up to U+00FF.
struct LogLine {
    ZRLogType severity = kZRLogInfo;
    std::string text;
    std::string module;
    std::string file;
    std::string function;
    int line = 0;
};

std::ostream& operator<<(std::ostream& stream, const LogLine& line);
std::ostream& operator<<(std::ostream& stream, const AssertionRecord& record);

/// Match a line by its severity and its whole text. The text may be a matcher.
::testing::Matcher<LogLine> Info(const ::testing::Matcher<std::string>& text);
::testing::Matcher<LogLine> Error(const ::testing::Matcher<std::string>& text);
::testing::Matcher<LogLine> Fatal(const ::testing::Matcher<std::string>& text);

/// The log. Assertions and lines of at least kZRLogError that no test looked at (Assertions, Lines) fail the test. Any
/// thread.
class CScriptedLog : public ILog {
public:
    std::vector<LogLine> Lines();
    std::vector<AssertionRecord> Assertions();

    /// Lines with exactly this text do not fail the test.
    void AllowErrors(const std::string& text);

    /// Marks all lines and assertions as looked at and clears both records.
    void Forget();

    /// Fails the test for each error line and assertion that no test looked at.
    void CheckAllLookedAt();

    void Write(const LogRecord& record) override;
    void AssertionFailed(const AssertionRecord& record) override;

private:
    std::mutex m_mutex;
    std::vector<LogLine> m_lines;
    std::vector<AssertionRecord> m_assertions;
    std::set<std::string> m_allowed;
    size_t m_nLinesLookedAt = 0;
    size_t m_nAssertionsLookedAt = 0;
};
