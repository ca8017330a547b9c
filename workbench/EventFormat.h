#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/FieldNode.h"
#include "workbench/diagnosis/Literal.h"

using Event = std::variant<TraceEvent, LogEntry>;

/// Returns the trace of this type; null for any other event.
template <class Trace>
const Trace* As(const Event& event) {
    const auto* seen = std::get_if<TraceEvent>(&event);
    return seen ? std::get_if<Trace>(&seen->what) : nullptr;
}

enum class EnTone { kNormal, kBad, kExpected };

/// A row of a list of events.
struct EventRow {
    qint64 timeMs = 0;         // of its first event; local clock, milliseconds since 1970
    uint64_t sequence = 0;     // 0: the row has one event
    QStringList cells = {};    // one for each column of the format
    QStringList choices = {};  // of all filters, those that show the row
    EnTone tone = EnTone::kNormal;
    QString found = {};                                   // is searched besides the cells
    std::function<std::vector<FieldNode>()> detail = {};  // callable from any thread; null: none
};

/// One kind of events as rows of a list. Main thread.
struct EventFormat {
    struct Filter {
        const char* part;  // of the object name
        const char* all;
        std::vector<const char*> choices;
    };

    QString name;         // in object names and exports, such as "Traffic"
    QString nothing;      // the text of an empty list
    QStringList columns;  // after the time; title and key in exports, as "URL=url"; without a key it is not exported
    std::vector<Filter> filters;
    int maxRows = 10'000;  // smaller for large rows
    std::function<bool(const Event& event)> takes = {};
    /// Fills a new row, or changes the row of the event's sequence.
    std::function<void(EventRow& row, const Event& event)> fill = {};
    /// The events of a sequence are one row. Null or 0: the event has its own row.
    std::function<uint64_t(const Event& event)> sequence = {};
};

using EventFormatPtr = std::shared_ptr<const EventFormat>;

EventFormatPtr NewTrafficFormat();
EventFormatPtr NewStoreFormat();
EventFormatPtr NewUrlFormat();
/// Request and response share a row.
EventFormatPtr NewHttpFormat();
EventFormatPtr NewReportFormat();
/// Pages, and the calls of their bridge.
EventFormatPtr NewWebFormat();
/// A click that activates a right is one row up to its outcome.
EventFormatPtr NewActivationFormat();
EventFormatPtr NewLogFormat();

/// Empty for a negative number.
inline QString Number(int64_t number) {
    return number < 0 ? QString() : QString::number(number);
}
