#pragma once

#include <chrono>
#include <cstdint>

/// The delay before the next attempt. It doubles from `first` to `cap` and is drawn from its upper half, so that
/// clients do not reconnect together.
class CBackoff {
public:
    using Delay = std::chrono::milliseconds;

    CBackoff(Delay first, Delay cap);

    /// The next delay. `random` is any 32-bit number.
    Delay Next(uint32_t random);

    /// Restarts at `first`. Called after the server has sent a valid frame, not at the connection.
    void Reset();

private:
    const Delay m_first;
    const Delay m_cap;
    Delay m_current;
};
