#include "workbench/SeenModel.h"

#include <QDateTime>
#include <algorithm>

#include "Theme.h"

CSeenModel::CSeenModel(std::unique_ptr<ISeenFormat> format, QObject* parent)
    : CEntryRows(kMaxRows, kMaxBatch, parent), m_format(std::move(format)) {
    theme::Keep(this, [this] { ShowAnew(); });
    texts::Keep(this, [this] {
        for (SeenRow& row : Rows()) {
            row.cells = m_format->Cells(row.seen);
        }
        ShowAnew();
    });
}

void CSeenModel::Add(const Seen& seen) {
    if (m_format->Takes(seen)) {
        Collect(seen);
    }
}

SeenRow CSeenModel::Read(Seen seen) const {
    QStringList cells = m_format->Cells(seen);
    return {std::move(seen), std::move(cells)};
}

QString CSeenModel::TimeAt(int row) const {
    return QDateTime::fromMSecsSinceEpoch(At(row).timeMs).toString(QStringLiteral("HH:mm:ss.zzz"));
}

bool CSeenModel::Holds(int row, const QString& text) const {
    const QStringList& cells = CellsAt(row);
    return std::any_of(cells.begin(), cells.end(),
                       [&text](const QString& cell) { return cell.contains(text, Qt::CaseInsensitive); });
}

QString CSeenModel::Cell(int row, int column) const {
    return column == 0 ? TimeAt(row) : CellsAt(row).value(column - 1);
}

void CSeenFilter::SetKind(int kind) {
    m_nKind = kind;
    invalidateFilter();
}

bool CSeenFilter::IsChosen(int row) const {
    return m_nKind < 0 || m_model.Format().Kind(m_model.At(row)) == m_nKind;
}
