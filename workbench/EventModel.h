#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QTimer>
#include <deque>
#include <map>

#include "workbench/EventFormat.h"

/// The newest events of one format as rows of a table. New events are shown a few times a second, in batches, so that
/// ten thousand a second do not block the window. Main thread.
class CEventModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using RowPtr = std::shared_ptr<const EventRow>;

    static constexpr int kMaxBatch = 2'000;
    /// Number of characters that a cell displays.
    static constexpr int kMaxCell = 500;

    explicit CEventModel(std::shared_ptr<IEventFormat> format, QObject* parent = nullptr);

    IEventFormat& Format() const { return *m_format; }

    /// Adds an event of the format, unless a newer one of the same source was added before.
    void Add(const Event& event);
    /// Replaces all rows.
    void SetRows(const std::vector<RowPtr>& rows);

    const EventRow& At(int row) const { return *m_rows[size_t(row)].row; }
    std::vector<RowPtr> Rows() const;
    /// Returns true if the row contains `text`, ignoring case.
    bool Holds(int row, const QString& text) const;

    /// Returns true if all received events are shown.
    bool IsSettled() const { return m_pending.empty() && m_amendments.empty(); }
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
    struct Shown {
        uint64_t id;
        RowPtr row;
    };
    struct Pending {
        uint64_t id;
        Event event;
    };

    void Collect(const Event& event);
    void Schedule();
    void ShowBatch();
    void Amend();
    QString Cell(int row, int column) const;

    const std::shared_ptr<IEventFormat> m_format;
    const int m_nLimit;
    std::deque<Shown> m_rows;
    std::deque<Pending> m_pending;
    std::map<uint64_t, uint64_t> m_begun;  // sequences without an end, and the ids of their rows
    std::deque<Pending> m_amendments;      // by the ids of the rows that they change
    QTimer m_flushTimer;
    uint64_t m_nNextId = 0;
    uint64_t m_newest[std::variant_size_v<Event>] = {};
    bool m_bPaused = false;
};

/// Filters and sorts the rows of a view. Main thread.
class CEventFilter : public QSortFilterProxyModel {
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    /// Shows only rows that contain `text`, ignoring case. An empty text shows all.
    void SetText(const QString& text);
    /// Shows only rows of this choice of a filter. An empty choice shows all.
    void SetChoice(int filter, const QString& choice);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QString m_strText;
    std::map<int, QString> m_choices;
};
