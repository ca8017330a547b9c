#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/FieldNode.h"
#include "workbench/diagnosis/Literal.h"

class CWireDecoder;

using Event = std::variant<TraceEvent, LogEntry>;

enum class EnTone { kNormal, kBad, kExpected };

/// A row of a list of events.
struct EventRow {
    qint64 timeMs = 0;    // local clock, milliseconds since 1970
    QStringList cells;    // one for each column of the format
    QStringList choices;  // for each filter of the format, the choices that show the row, with "|" between them
    EnTone tone = EnTone::kNormal;
    QString found;                                   // is searched besides the cells
    std::function<std::vector<FieldNode>()> detail;  // callable from any thread; null: none
};

/// One kind of events as rows of a list. Main thread.
struct EventFormat {
    struct Column {
        QString title;
        QString key;  // in exports; empty: the detail has the whole value
    };
    /// Reads columns from a list such as "Sent, B=sentBytes|Value".
    static std::vector<Column> Columns(const QString& list);

    struct Filter {
        const char* part;  // of the object name
        const char* all;
        std::vector<const char*> choices;
    };
    enum class EnPart { kBegin, kMiddle, kEnd };
    struct Step {
        uint64_t sequence;
        EnPart part;
    };

    QString name;                 // in object names and exports, such as "Traffic"
    QString nothing;              // the text of an empty list
    std::vector<Column> columns;  // after the time
    std::vector<Filter> filters;
    int maxRows = 10'000;  // smaller for large rows
    std::function<bool(const Event& event)> takes = {};
    /// Fills a new row, or changes the row of the event's sequence. The time is that of the first event.
    std::function<void(EventRow& row, const Event& event)> fill = {};
    /// The events of a sequence are one row. Null or no step: the event has its own row.
    std::function<std::optional<Step>(const Event& event)> step = {};
};

using EventFormatPtr = std::shared_ptr<const EventFormat>;

EventFormatPtr NewTrafficFormat(const CWireDecoder& decoder);
EventFormatPtr NewStoreFormat();
EventFormatPtr NewUrlFormat();
/// Request and response share a row.
EventFormatPtr NewHttpFormat();
EventFormatPtr NewReportFormat();
/// A click that activates a right is one row up to its outcome.
EventFormatPtr NewActivationFormat(const CWireDecoder& decoder);
/// Pages, and the calls of their bridge.
EventFormatPtr NewWebFormat();
/// `isExpected` returns whether an error line is normal for the module.
EventFormatPtr NewLogFormat(const std::function<bool(const QString& text)>& isExpected);

/// Sets what all events of one kind have. The kind is the only choice and the first cell.
void SetRow(EventRow& row, const QString& kind, bool isBad, const QStringList& cells);

/// Returns the trace of this type; null for any other event.
template <class Trace>
const Trace* As(const Event& event) {
    const auto* seen = std::get_if<TraceEvent>(&event);
    return seen ? std::get_if<Trace>(&seen->what) : nullptr;
}

/// Completes a format of one kind of trace.
template <class Trace>
EventFormatPtr FormatOf(EventFormat format, void (*fill)(EventRow& row, const Trace& trace)) {
    format.takes = [](const Event& event) { return As<Trace>(event) != nullptr; };
    format.fill = [fill](EventRow& row, const Event& event) { fill(row, *As<Trace>(event)); };
    return std::make_shared<const EventFormat>(std::move(format));
}

/// Empty for a negative number.
inline QString Number(int64_t number) {
    return number < 0 ? QString() : QString::number(number);
}
