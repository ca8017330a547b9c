#pragma once

#include <QObject>
#include <deque>

#include "framework/export.h"
#include "tracing/TraceEvent.h"

/// The recorded traffic of the ports. Callable from any thread.
class ZRHOST_API ITraceSource : public QObject {
    Q_OBJECT

public:
    /// The latest events, oldest first. A listener connects first and reads these then; event numbers identify
    /// the events that it gets twice.
    virtual std::deque<TraceEvent> Kept() const = 0;

Q_SIGNALS:
    /// Is emitted on the thread that recorded the event.
    void Recorded(const TraceEvent& event);
};
