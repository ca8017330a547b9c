#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QTimer>
#include <deque>

#include "workbench/SeenFormat.h"

/// What was seen of one kind, the youngest 10,000. It is collected and shown in batches of bounded size a few
/// times a second: ten thousand in one second must not hold up the window. Main thread.
class CSeenModel : public QAbstractTableModel {
    Q_OBJECT

public:
    static constexpr int kMaxRows = 10'000;
    static constexpr int kMaxBatch = 2'000;

    explicit CSeenModel(std::unique_ptr<ISeenFormat> format, QObject* parent = nullptr);
    ~CSeenModel() override;

    const ISeenFormat& Format() const { return *m_format; }

    /// Takes what its format takes, and of that what is younger than the last it took.
    void Add(const Seen& seen);

    /// Whether all that was taken is shown.
    bool IsSettled() const { return m_pending.empty(); }

    /// While paused nothing moves; what comes is still collected, within the bound.
    void SetPaused(bool paused);
    bool IsPaused() const { return m_bPaused; }

    /// Forgets all, what is not yet shown too.
    void Clear();

    const Seen& At(int row) const { return m_rows[size_t(row)].seen; }
    QString TimeAt(int row) const;
    const QStringList& CellsAt(int row) const { return m_rows[size_t(row)].cells; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The number of rows or the pause has changed.
    void Changed();

private:
    struct Row {
        Seen seen;
        QStringList cells;
    };

    void Flush();

    const std::unique_ptr<ISeenFormat> m_format;
    std::deque<Seen> m_pending;
    std::deque<Row> m_rows;
    QTimer m_flushTimer;
    uint64_t m_nLast = 0;
    bool m_bPaused = false;
};

/// The rows that a view is asked to show. Main thread.
class CSeenFilter : public QSortFilterProxyModel {
public:
    explicit CSeenFilter(CSeenModel& model, QObject* parent = nullptr);

    /// Rows with a cell that holds it, whatever the case; empty for all.
    void SetText(const QString& text);
    /// An index into the format's kinds; -1 for all.
    void SetKind(int kind);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    CSeenModel& m_model;
    QString m_strText;
    int m_nKind = -1;
};
