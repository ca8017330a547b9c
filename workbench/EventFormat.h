#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "framework/ILogSource.h"
#include "tracing/TraceEvent.h"
#include "workbench/FieldNode.h"

class CWireDecoder;

using Event = std::variant<TraceEvent, LogEntry>;

enum class EnTone { kNormal, kBad, kExpected };

/// A row of a list of events.
struct EventRow {
    qint64 timeMs = 0;    // local clock, milliseconds since 1970
    QStringList cells;    // one for each column of the format
    QStringList choices;  // for each filter of the format, the choice that shows the row
    EnTone tone = EnTone::kNormal;
    QString found;                                   // is searched besides the cells
    std::function<std::vector<FieldNode>()> detail;  // callable from any thread; null: none
};

/// Formats one kind of event as rows. Main thread.
class IEventFormat {
public:
    struct Column {
        const char* title;
        const char* key;  // in exports; null: the detail has the whole value
    };

    struct Filter {
        const char* part;  // of the object name
        const char* all;
        std::vector<const char*> choices;
    };

    virtual ~IEventFormat() = default;

    /// Smaller for formats with large rows.
    virtual int MaxRows() const { return 10'000; }
    /// In object names and exports, such as "Traffic".
    virtual QString Name() const = 0;
    /// The text of an empty list.
    virtual QString Nothing() const = 0;
    /// The columns after the time.
    virtual std::vector<Column> Columns() const = 0;
    virtual std::vector<Filter> Filters() const = 0;
    virtual bool Passes(const EventRow& row, int filter, const QString& choice) const {
        return row.choices.value(filter) == choice;
    }

    virtual bool Takes(const Event& event) const = 0;
    virtual EventRow Row(const Event& event) const = 0;

    enum class EnPart { kBegin, kMiddle, kEnd };
    struct Step {
        uint64_t sequence;
        EnPart part;
    };
    /// The events of a sequence are one row. Nothing: the event has its own row.
    virtual std::optional<Step> StepOf(const Event& /*event*/) { return std::nullopt; }
    /// Changes the row of a sequence by a later event.
    virtual void Amend(EventRow& row, const Event& event) const {
        const qint64 timeMs = row.timeMs;
        row = Row(event);
        row.timeMs = timeMs;
    }
};

std::unique_ptr<IEventFormat> NewTrafficFormat(const CWireDecoder& decoder);
std::unique_ptr<IEventFormat> NewStoreFormat();
std::unique_ptr<IEventFormat> NewUrlFormat();
/// Request and response share a row.
std::unique_ptr<IEventFormat> NewHttpFormat();
std::unique_ptr<IEventFormat> NewReportFormat();
/// A click that activates a right is one row up to its outcome.
std::unique_ptr<IEventFormat> NewActivationFormat(const CWireDecoder& decoder);
/// Pages, and the calls of their bridge.
std::unique_ptr<IEventFormat> NewWebFormat();
/// `isExpected` returns whether an error line is normal for the module.
std::unique_ptr<IEventFormat> NewLogFormat(std::function<bool(const QString& text)> isExpected);
