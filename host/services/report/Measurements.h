#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

/// Measurements that run, each under a text of its own: the event's name, a mark and a number. So those of one
/// event are apart. Any thread.
class CMeasurements {
public:
    /// Milliseconds of a clock that never jumps. Any thread.
    using Clock = std::function<int64_t()>;

    struct Measured {
        std::string event;
        int64_t millis = 0;
    };

    /// With so many open the oldest is forgotten for a new one.
    static constexpr size_t kMostOpen = 1'000;

    explicit CMeasurements(Clock clock);

    std::string Start(const std::string& event);

    /// Nothing for a text that names no open measurement.
    std::optional<Measured> End(const std::string& text);

    /// The event that a text of Start belongs to; any other text is its own.
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
