#pragma once

#include <cstdint>

/// Behind core::random. Callable from any thread.
class IRandom {
public:
    virtual ~IRandom() = default;
    virtual uint32_t Next() = 0;
};
