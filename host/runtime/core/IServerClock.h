#pragma once

#include <cstdint>

/// Behind core::time_date. Callable from any thread.
class IServerClock {
public:
    virtual ~IServerClock() = default;
    virtual int64_t ServerTimeMillis() const = 0;
};
