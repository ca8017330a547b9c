#pragma once

#include <map>

#include "workbench/EntryModel.h"
#include "workbench/TraceFormat.h"

/// A trace event with a cell for each column except the time.
struct TraceRow {
    TraceEvent seen;
    QStringList cells;
};

/// The newest trace events of one format, up to the format's maximum. Main thread.
class CTraceModel final : public CEntryRows<TraceEvent, TraceRow> {
    Q_OBJECT

public:
    static constexpr int kMaxBatch = 2'000;

    explicit CTraceModel(std::unique_ptr<ITraceFormat> format, QObject* parent = nullptr);

    const ITraceFormat& Format() const { return *m_format; }

    /// Adds an event of the format, unless a newer one was added before.
    void Add(const TraceEvent& seen);

    const TraceEvent& At(int row) const { return RowAt(row).seen; }
    QString TimeAt(int row) const;
    const QStringList& CellsAt(int row) const { return RowAt(row).cells; }

    bool Holds(int row, const QString& text) const override;

private:
    TraceRow Read(TraceEvent seen) const override;
    std::vector<QString> Titles() const override { return m_format->Titles(); }
    QString Cell(int row, int column) const override;
    bool IsBad(int row) const override { return m_format->IsBad(At(row)); }
    bool HasAmendments() const override { return !m_ends.empty(); }
    void Amend(bool allShown) override;

    const std::unique_ptr<ITraceFormat> m_format;
    std::map<uint64_t, uint64_t> m_begun;   // exchanges without an end: exchange id and number of the start
    std::map<uint64_t, TraceEvent> m_ends;  // by the number of the start
};

/// Filters the rows by kind. Main thread.
class CTraceFilter : public CEntryFilter {
public:
    explicit CTraceFilter(CTraceModel& model, QObject* parent = nullptr)
        : CEntryFilter(model, parent), m_model(model) {}

    /// An index into the format's kinds; -1 shows all.
    void SetKind(int kind);

protected:
    bool IsChosen(int row) const override;

private:
    CTraceModel& m_model;
    int m_nKind = -1;
};
