#pragma once

#include "workbench/EventFormat.h"

/// Returns the trace of this type; null for any other event.
template <class Trace>
const Trace* As(const Event& event) {
    const auto* seen = std::get_if<TraceEvent>(&event);
    return seen ? std::get_if<Trace>(&seen->what) : nullptr;
}

inline EventRow NewRow(const Event& event) {
    EventRow row;
    const auto* seen = std::get_if<TraceEvent>(&event);
    row.timeMs = seen ? seen->timeMs : std::get<LogEntry>(event).time.toMSecsSinceEpoch();
    return row;
}

inline FieldNode Node(const char* name, const QString& value) {
    return {QString::fromLatin1(name), value, {}, {}};
}

/// Empty for a negative number.
inline QString Number(int64_t number) {
    return number < 0 ? QString() : QString::number(number);
}
