#pragma once

#include <cstdint>

#include "Faults.h"
#include "ReceivedLog.h"
#include "Scenario.h"

namespace devserver {

/// All that a client or a tester can change or ask for. Main thread only.
struct ServerState {
    CScenario scenario;
    CFaults faults;
    CReceivedLog received;
    int64_t clockOffsetMs = 0;

    /// Milliseconds since 1970 by the local clock, moved by the offset.
    int64_t ServerTimeMs() const;
};

}  // namespace devserver
