#pragma once

#include <QAbstractTableModel>
#include <QMap>
#include <QSortFilterProxyModel>
#include <QTimer>
#include <deque>
#include <functional>
#include <memory>

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

/// The newest events of one format as rows of a table. New events are shown a few times a second, in batches, so that
/// ten thousand a second do not block the window. Main thread.
class CEventModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using RowPtr = std::shared_ptr<const EventRow>;

    static constexpr int kMaxBatch = 2'000;
    /// Number of characters that a cell displays.
    static constexpr int kMaxCell = 500;

    explicit CEventModel(EventFormatPtr format, QObject* parent = nullptr);

    const EventFormatPtr& Format() const { return m_format; }

    /// Adds an event of the format, unless a newer one of the same source was added before.
    void Add(const Event& event);
    /// Replaces all rows.
    void SetRows(const std::vector<RowPtr>& rows);

    const EventRow& At(int row) const { return *m_rows[size_t(row)]; }
    std::vector<RowPtr> Rows() const { return {m_rows.begin(), m_rows.end()}; }

    /// Returns true if all received events are shown.
    bool IsSettled() const { return m_pending.empty(); }
    /// Shows the next batch of pending events, unless paused.
    void Flush();
    /// While paused the rows do not change. New events are still collected, up to the limit.
    void SetPaused(bool paused);
    bool IsPaused() const { return m_bPaused; }
    /// Removes all events, including the pending ones.
    void Clear();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The number of rows or the pause has changed.
    void Changed();

private:
    void ShowEvent(const Event& event, std::vector<RowPtr>& added);

    const EventFormatPtr m_format;
    std::deque<RowPtr> m_rows;
    std::deque<Event> m_pending;
    QTimer m_flushTimer;
    uint64_t m_newest[std::variant_size_v<Event>] = {};
    bool m_bPaused = false;
};

/// Filters and sorts the rows of a view. Main thread.
class CEventFilter : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    /// Shows only rows that contain `text`, ignoring case. An empty text shows all.
    void SetText(const QString& text);
    /// Shows only rows with this choice of a filter. An empty choice shows all.
    void SetChoice(int filter, const QString& choice);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QString m_strText;
    QMap<int, QString> m_choices;
};
