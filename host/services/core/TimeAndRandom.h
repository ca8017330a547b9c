#pragma once

#include <atomic>
#include <functional>

#include "core/ITimeAndRandom.h"

/// The server's time, which runs on with a steady clock, and Qt's global generator, which the system seeds. The local
/// clock, which the user can set, counts only until the server sets the time. Any thread.
class CTimeAndRandom : public ITimeAndRandom {
public:
    /// Milliseconds since the start of the machine, the time of suspends included. Any thread.
    static int64_t MillisSinceBoot();
    /// Milliseconds that the machine was suspended since its start. Any thread.
    static int64_t SuspendedMillis();

    struct Clocks {
        std::function<int64_t()> local;
        std::function<int64_t()> steady;
    };
    /// With the machine's clocks.
    CTimeAndRandom();
    explicit CTimeAndRandom(Clocks clocks);

    int64_t ServerTimeMs() const override;
    uint32_t RandomNumber() override;

    /// Sets the server's current time. 0, negative values and times beyond the year 9999 are ignored.
    void SetServerTimeMs(int64_t serverTime);

private:
    const Clocks m_clocks;
    std::atomic<int64_t> m_nOffset{0};  // of the server's time from the steady clock
    std::atomic<bool> m_bSet{false};
};
