#include "workbench/TraceModel.h"

#include <QDateTime>
#include <algorithm>

#include "Theme.h"

CTraceModel::CTraceModel(std::unique_ptr<ITraceFormat> format, QObject* parent)
    : CEntryRows(format->MostRows(), kMaxBatch, parent), m_format(std::move(format)) {
    // After a reset the end of an exchange becomes its own row, because its start is gone.
    connect(this, &QAbstractItemModel::modelReset, this, [this] {
        m_begun.clear();
        m_ends.clear();
    });
    theme::OnThemeChange(this, [this] { ShowAnew(); });
}

void CTraceModel::Add(const TraceEvent& seen) {
    if (!m_format->Takes(seen)) {
        return;
    }
    const std::optional<uint64_t> exchange = m_format->Exchange(seen);
    if (!exchange) {
        Collect(seen);
        return;
    }
    const auto begun = m_begun.find(*exchange);
    if (!m_format->IsEnd(seen)) {
        m_begun[*exchange] = seen.number;
        if (int(m_begun.size()) > m_nLimit) {
            m_begun.erase(m_begun.begin());
        }
        Collect(seen);
    } else if (begun == m_begun.end()) {
        Collect(seen);
    } else if (IsYounger(seen.number)) {
        m_ends[begun->second] = seen;
        m_begun.erase(begun);
        Schedule();
    }
}

void CTraceModel::Amend(bool allShown) {
    const auto older = [](const TraceRow& row, uint64_t number) { return row.seen.number < number; };
    for (auto end = m_ends.begin(); end != m_ends.end();) {
        const auto row = std::lower_bound(Rows().begin(), Rows().end(), end->first, older);
        if (row == Rows().end() && !allShown) {
            ++end;
            continue;
        }
        if (row != Rows().end() && row->seen.number == end->first) {
            row->seen.what = std::move(end->second.what);
            row->cells = m_format->Cells(row->seen);
            const int at = int(row - Rows().begin());
            Q_EMIT dataChanged(index(at, 0), index(at, columnCount() - 1));
        }
        end = m_ends.erase(end);
    }
}

TraceRow CTraceModel::Read(TraceEvent seen) const {
    QStringList cells = m_format->Cells(seen);
    return {std::move(seen), std::move(cells)};
}

QString CTraceModel::TimeAt(int row) const {
    return QDateTime::fromMSecsSinceEpoch(At(row).timeMs).toString(QStringLiteral("HH:mm:ss.zzz"));
}

bool CTraceModel::Holds(int row, const QString& text) const {
    const QStringList& cells = CellsAt(row);
    return std::any_of(cells.begin(), cells.end(),
                       [&text](const QString& cell) { return cell.contains(text, Qt::CaseInsensitive); });
}

QString CTraceModel::Cell(int row, int column) const {
    return column == 0 ? TimeAt(row) : CellsAt(row).value(column - 1);
}

void CTraceFilter::SetKind(int kind) {
    m_nKind = kind;
    invalidateFilter();
}

bool CTraceFilter::IsChosen(int row) const {
    return m_nKind < 0 || m_model.Format().Kind(m_model.At(row)) == m_nKind;
}
