#pragma once

#include <atomic>

#include "core/ITimeAndRandom.h"

/// The local clock with the server's offset, and Qt's global generator, which the system seeds. Any thread.
class CTimeAndRandom : public ITimeAndRandom {
public:
    int64_t ServerTimeMs() const override;
    uint32_t RandomNumber() override;

    /// Sets the server's current time. 0, negative values and times beyond the year 9999 are ignored.
    void SetServerTimeMs(int64_t serverTime);

private:
    std::atomic<int64_t> m_nOffset{0};
};
