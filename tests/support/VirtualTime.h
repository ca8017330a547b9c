#pragma once

#include <atomic>
#include <chrono>
#include <functional>

#include "core/ITimeAndRandom.h"

class CVirtualEventDispatcher;

/// The test's hand on the clock. Main thread, except where said.
class CVirtualTime : public ITimeAndRandom {
public:
    static constexpr int64_t kFirstServerTime = 1'700'000'000'000;

    CVirtualTime();

    /// Moves the clock and runs all that falls due on the way, each at its own moment.
    void Advance(std::chrono::milliseconds span);

    /// Runs all that is posted and due now, deferred deletes included. The clock stands still.
    /// What never comes to rest fails the test.
    void Settle();

    /// For work of other threads: settles until `condition` holds. False if `bound` of real time passed without.
    bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds bound = std::chrono::seconds(20));

    /// Milliseconds since this object was made. Callable from any thread.
    int64_t Now() const;

    /// Milliseconds since 1970; starts at kFirstServerTime and moves with the clock. Callable from any thread.
    int64_t ServerTime() const;
    void SetServerTime(int64_t millis);

    int64_t ServerTimeMs() const override;

private:
    CVirtualEventDispatcher& m_dispatcher;
    const int64_t m_nStart;
    std::atomic<int64_t> m_nServerOffset{kFirstServerTime};
};
