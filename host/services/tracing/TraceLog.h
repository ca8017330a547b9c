#pragma once

#include <mutex>

#include "tracing/ITraceSource.h"

/// Collects what the recorders record. Callable from any thread.
class CTraceLog : public ITraceSource {
public:
    /// Number of events that are kept for later listeners.
    static constexpr size_t kKept = 1'000;

    CTraceLog();

    /// Adds one of the alternatives of TraceEvent, with the next number and the current time.
    template <class Trace>
    void Record(Trace trace) {
        Add(TraceEvent{0, 0, std::move(trace)});
    }

    std::deque<TraceEvent> Kept() const override;

private:
    void Add(TraceEvent event);

    mutable std::mutex m_mutex;
    std::deque<TraceEvent> m_kept;
    uint64_t m_nLast = 0;
};
