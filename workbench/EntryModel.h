#pragma once

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QTimer>
#include <deque>

/// The newest `limit` numbered entries as rows of a table. New entries are shown a few times a second, at most `batch`
/// at once, so that ten thousand a second do not block the window. Main thread.
class CEntryModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// Returns true if all received entries are shown.
    bool IsSettled() const { return PendingCount() == 0 && !HasAmendments(); }

    /// Shows the next batch of pending entries, unless paused.
    void Flush();

    /// While paused the rows do not change. New entries are still collected, up to the limit.
    void SetPaused(bool paused);
    bool IsPaused() const { return m_bPaused; }

    /// Removes all entries, including the pending ones.
    void Clear();

    /// Returns true if the row contains `text`, ignoring case.
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

    /// Returns true if `number` is greater than that of the last entry. Number 0 is accepted always, because it belongs
    /// to no log.
    bool IsYounger(uint64_t number);
    void Schedule();
    /// Repaints all rows and titles after a change of the theme.
    void ShowAnew();

    /// Amend changes rows that are already shown; HasAmendments returns true while such changes are pending. Amend runs
    /// after the rows of each batch were added. `allShown` is true if no entry is pending.
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

/// Keeps the entries of one type as Rows.
template <class Entry, class Row>
class CEntryRows : public CEntryModel {
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const final {
        return parent.isValid() ? 0 : int(m_rows.size());
    }

protected:
    using CEntryModel::CEntryModel;

    virtual Row Read(Entry entry) const = 0;

    /// Adds the entry to a later batch, unless a newer one was added before.
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

/// Filters the rows of a view. Main thread.
class CEntryFilter : public QSortFilterProxyModel {
public:
    /// Shows only rows that contain `text`, ignoring case. An empty text shows all.
    void SetText(const QString& text);

protected:
    CEntryFilter(CEntryModel& model, QObject* parent);

    /// Returns true if the row passes the view's own filters, without regard to the text.
    virtual bool IsChosen(int row) const = 0;
    bool filterAcceptsRow(int row, const QModelIndex& parent) const final;

private:
    CEntryModel& m_entries;
    QString m_strText;
};
