#pragma once

#include <atomic>
#include <chrono>
#include <functional>

#include "core/ITimeAndRandom.h"

class CVirtualEventDispatcher;

/// Controls the virtual clock. Main thread, unless noted.
class CVirtualTime : public ITimeAndRandom {
public:
    static constexpr int64_t kFirstServerTime = 1'700'000'000'000;

    CVirtualTime();

    /// Advances the clock and runs all due tasks and timers at their own time.
    void Advance(std::chrono::milliseconds span);

    /// Runs all that is posted and due, including deferred deletes, without advancing the clock. A loop without end
    /// fails the test.
    void Settle();

    /// Settles until `condition` holds, for work of other threads. Returns false after `bound` of real time.
    bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound = std::chrono::seconds(20));

    /// Milliseconds since construction. Any thread.
    int64_t Now() const;

    /// Milliseconds since 1970. It starts at kFirstServerTime and advances with the clock. Any thread.
    int64_t ServerTime() const;
    void SetServerTime(int64_t millis);

    int64_t ServerTimeMs() const override;

private:
    CVirtualEventDispatcher& m_dispatcher;
    const int64_t m_nStart;
    std::atomic<int64_t> m_nServerOffset{kFirstServerTime};
};
