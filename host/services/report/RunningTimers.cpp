#include "report/RunningTimers.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr char kMark = '#';

/// Position of the mark if only a number follows it; otherwise npos.
size_t MarkOf(const std::string& text, uint64_t& number) {
    const size_t mark = text.rfind(kMark);
    if (mark == std::string::npos) {
        return mark;
    }
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data() + mark + 1, end, number);
    return read.ec == std::errc() && read.ptr == end ? mark : std::string::npos;
}

}  // namespace

CRunningTimers::CRunningTimers(Clock clock) : m_fnClock(std::move(clock)) {}

std::string CRunningTimers::Start(const std::string& event) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const uint64_t number = ++m_nLast;
    std::string text = event + kMark + std::to_string(number);
    m_open[number] = Open{text, m_fnClock()};
    if (m_open.size() > kMaxOpen) {
        m_open.erase(m_open.begin());
    }
    return text;
}

std::optional<CRunningTimers::Measured> CRunningTimers::End(const std::string& text) {
    uint64_t number = 0;
    const size_t mark = MarkOf(text, number);
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_open.find(number);
    if (mark == std::string::npos || found == m_open.end() || found->second.text != text) {
        return std::nullopt;
    }
    const int64_t millis = std::max<int64_t>(m_fnClock() - found->second.since, 0);
    m_open.erase(found);
    return Measured{text.substr(0, mark), millis};
}

std::string CRunningTimers::EventOf(const std::string& text) {
    uint64_t number = 0;
    return text.substr(0, MarkOf(text, number));
}
