#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

/// Timers of events that have started and not ended. Each has a unique text, made of the event's name, a mark and a
/// number, so that several timers of one event can run. Any thread.
class CRunningTimers {
public:
    /// Milliseconds of a monotonic clock. Called on any thread.
    using Clock = std::function<int64_t()>;

    struct Measured {
        std::string event;
        int64_t millis = 0;
    };

    /// Beyond this number the oldest timer is discarded.
    static constexpr size_t kMaxOpen = 1'000;

    explicit CRunningTimers(Clock clock);

    /// Returns the timer's text.
    std::string Start(const std::string& event);

    /// Empty if no running timer has this text.
    std::optional<Measured> End(const std::string& text);

    /// The event's name in a timer's text. Any other text is returned unchanged.
    static std::string EventOf(const std::string& text);

private:
    struct Open {
        std::string text;
        int64_t since = 0;
    };

    const Clock m_fnClock;
    std::mutex m_mutex;
    std::map<uint64_t, Open> m_open;
    uint64_t m_nLast = 0;
};
