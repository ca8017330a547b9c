#pragma once

#include "core/IRandom.h"

/// The toolkit's global generator, which is seeded by the system. Callable from any thread.
class CRandom : public IRandom {
public:
    uint32_t Next() override;
};
