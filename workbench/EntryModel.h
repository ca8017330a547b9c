#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QTimer>
#include <deque>

/// Numbered entries as rows of a table, the youngest `limit` of them. They are collected and shown a few times a
/// second, at most `batch` at once: ten thousand in one second must not hold up the window. Main thread.
class CEntryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// Whether all that was taken is shown.
    bool IsSettled() const { return PendingCount() == 0 && !HasAmendments(); }

    /// Shows the next batch of what was collected, unless paused.
    void Flush();

    /// While paused nothing moves; what comes is still collected, within the limit.
    void SetPaused(bool paused);
    bool IsPaused() const { return m_bPaused; }

    /// Forgets all, what is not yet shown too.
    void Clear();

    /// Whether a text that the view looks for stands in the row, whatever the case.
    virtual bool Holds(int row, const QString& text) const = 0;

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The number of rows or the pause has changed.
    void Changed();

protected:
    CEntryModel(int limit, int batch, QObject* parent);

    virtual std::vector<QString> Titles() const = 0;
    virtual QString Cell(int row, int column) const = 0;
    virtual QString ToolTip(int row, int column) const { return Cell(row, column); }
    virtual bool IsBad(int row) const = 0;
    virtual bool IsMuted(int column) const { return column == 0; }

    /// Of one log an entry is taken once, and none that is older than the last; number 0 is of no log.
    bool IsYounger(uint64_t number);
    void Schedule();
    /// Colours or words are others.
    void ShowAnew();

    /// Whether rows wait to become others, and the making of them so: with each batch, after its rows were
    /// added. `allShown` says that none is still to come.
    virtual bool HasAmendments() const { return false; }
    virtual void Amend(bool allShown) { Q_UNUSED(allShown) }

    const int m_nLimit;

private:
    virtual int PendingCount() const = 0;
    virtual void ForgetAll() = 0;
    virtual void RemoveOldest(int count) = 0;
    virtual void ShowPending(int count) = 0;
    void ShowBatch();

    const int m_nBatch;
    QTimer m_flushTimer;
    uint64_t m_nLast = 0;
    bool m_bPaused = false;
};

/// Keeps the entries of one type, and what is shown of each as a Row.
template <class Entry, class Row>
class CEntryRows : public CEntryModel {
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const final {
        return parent.isValid() ? 0 : int(m_rows.size());
    }

protected:
    using CEntryModel::CEntryModel;

    virtual Row Read(Entry entry) const = 0;

    /// Shown with a later batch, unless a younger one is there already.
    void Collect(const Entry& entry) {
        if (!IsYounger(entry.number)) {
            return;
        }
        m_pending.push_back(entry);
        if (int(m_pending.size()) > m_nLimit) {
            m_pending.pop_front();
        }
        Schedule();
    }

    const Row& RowAt(int row) const { return m_rows[size_t(row)]; }
    std::deque<Row>& Rows() { return m_rows; }

private:
    int PendingCount() const final { return int(m_pending.size()); }

    void ForgetAll() final {
        m_pending.clear();
        m_rows.clear();
    }

    void RemoveOldest(int count) final { m_rows.erase(m_rows.begin(), m_rows.begin() + count); }

    void ShowPending(int count) final {
        for (int i = 0; i < count; ++i) {
            m_rows.push_back(Read(std::move(m_pending.front())));
            m_pending.pop_front();
        }
    }

    std::deque<Entry> m_pending;
    std::deque<Row> m_rows;
};

/// The rows that a view is asked to show. Main thread.
class CEntryFilter : public QSortFilterProxyModel {
public:
    /// Rows that hold it, whatever the case; empty for all.
    void SetText(const QString& text);

protected:
    CEntryFilter(CEntryModel& model, QObject* parent);

    /// Whether the row is among those that were chosen, whatever its text.
    virtual bool IsChosen(int row) const = 0;
    bool filterAcceptsRow(int row, const QModelIndex& parent) const final;

private:
    CEntryModel& m_entries;
    QString m_strText;
};
