#pragma once

#include <chrono>
#include <cstdint>

/// How long to wait before the next attempt: doubling from `first` to `cap`, each wait drawn from its upper
/// half, so that clients that lost a server together do not come back together.
class CBackoff {
public:
    using Millis = std::chrono::milliseconds;

    CBackoff(Millis first, Millis cap);

    /// The next wait; `random` is any 32-bit number.
    Millis Next(uint32_t random);

    /// Begins anew. Called when the other side has shown that it works, not merely that it listens.
    void Reset();

private:
    const Millis m_first;
    const Millis m_cap;
    Millis m_current;
};
