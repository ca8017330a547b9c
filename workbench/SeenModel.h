#pragma once

#include <map>

#include "workbench/EntryModel.h"
#include "workbench/SeenFormat.h"

/// As it is shown: a cell for each column after the time.
struct SeenRow {
    TraceEvent seen;
    QStringList cells;
};

/// What was seen of one kind, the youngest as many as its format keeps. Main thread.
class CSeenModel final : public CEntryRows<TraceEvent, SeenRow> {
    Q_OBJECT

public:
    static constexpr int kMaxBatch = 2'000;

    explicit CSeenModel(std::unique_ptr<ISeenFormat> format, QObject* parent = nullptr);

    const ISeenFormat& Format() const { return *m_format; }

    /// Takes what its format takes, and of that what is younger than the last it took.
    void Add(const TraceEvent& seen);

    const TraceEvent& At(int row) const { return RowAt(row).seen; }
    QString TimeAt(int row) const;
    const QStringList& CellsAt(int row) const { return RowAt(row).cells; }

    bool Holds(int row, const QString& text) const override;

private:
    SeenRow Read(TraceEvent seen) const override;
    std::vector<QString> Titles() const override { return m_format->Titles(); }
    QString Cell(int row, int column) const override;
    bool IsBad(int row) const override { return m_format->IsBad(At(row)); }
    bool HasAmendments() const override { return !m_ends.empty(); }
    void Amend(bool allShown) override;

    const std::unique_ptr<ISeenFormat> m_format;
    std::map<uint64_t, uint64_t> m_begun;   // exchanges without an end, and the number of what began them
    std::map<uint64_t, TraceEvent> m_ends;  // by the number of what began them
};

/// The rows that a view is asked to show. Main thread.
class CSeenFilter : public CEntryFilter {
public:
    explicit CSeenFilter(CSeenModel& model, QObject* parent = nullptr) : CEntryFilter(model, parent), m_model(model) {}

    /// An index into the format's kinds; -1 for all.
    void SetKind(int kind);

protected:
    bool IsChosen(int row) const override;

private:
    CSeenModel& m_model;
    int m_nKind = -1;
};
