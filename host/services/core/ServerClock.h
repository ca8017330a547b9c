#pragma once

#include <atomic>

#include "core/IServerClock.h"

/// The local clock, corrected by what the server told last. Callable from any thread.
class CServerClock : public IServerClock {
public:
    int64_t ServerTimeMillis() const override;

    /// The server's time at this moment. 0 and below, and what lies beyond the year 9999, is no time
    /// and is ignored.
    void SetServerTimeMillis(int64_t serverTime);

private:
    std::atomic<int64_t> m_nOffset{0};
};
