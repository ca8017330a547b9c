#pragma once

#include <cstdint>

/// Server time and random numbers, behind core::time_date and core::random. Callable from any thread.
class ITimeAndRandom {
public:
    virtual ~ITimeAndRandom() = default;

    /// Milliseconds since 1970 by the server's clock. 0 if the host has no clock.
    virtual int64_t ServerTimeMs() const { return 0; }

    /// A number from the whole range of 32 bits.
    virtual uint32_t RandomNumber() { return 0; }
};
