#include "workbench/EntryModel.h"

#include <QColor>
#include <algorithm>

#include "Theme.h"

namespace {

constexpr int kFlushMs = 100;

}  // namespace

CEntryModel::CEntryModel(int limit, int batch, QObject* parent)
    : QAbstractTableModel(parent), m_nLimit(limit), m_nBatch(batch) {
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(kFlushMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &CEntryModel::Flush);
}

bool CEntryModel::IsYounger(uint64_t number) {
    if (number != 0 && number <= m_nLast) {
        return false;
    }
    m_nLast = std::max(m_nLast, number);
    return true;
}

void CEntryModel::Schedule() {
    if (!m_bPaused && !m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void CEntryModel::Flush() {
    if (m_bPaused || IsSettled()) {
        return;
    }
    if (PendingCount() > 0) {
        ShowBatch();
    }
    Amend(PendingCount() == 0);
    if (!IsSettled()) {
        Schedule();
    }
    Q_EMIT Changed();
}

void CEntryModel::ShowBatch() {
    const int batch = std::min(PendingCount(), m_nBatch);
    const int surplus = rowCount() + batch - m_nLimit;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        RemoveOldest(surplus);
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount() + batch - 1);
    ShowPending(batch);
    endInsertRows();
}

void CEntryModel::SetPaused(bool paused) {
    m_bPaused = paused;
    Flush();
    Q_EMIT Changed();
}

void CEntryModel::Clear() {
    beginResetModel();
    ForgetAll();
    endResetModel();
    Q_EMIT Changed();
}

void CEntryModel::ShowAnew() {
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

int CEntryModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(Titles().size());
}

QVariant CEntryModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    switch (role) {
        case Qt::DisplayRole:
            return Cell(index.row(), index.column());
        case Qt::ToolTipRole:
            return ToolTip(index.row(), index.column());
        case Qt::ForegroundRole:
            if (IsBad(index.row())) {
                return QColor(theme::kDown);
            }
            return QColor(IsMuted(index.column()) ? theme::kMuted : theme::kText);
        default:
            return QVariant();
    }
}

QVariant CEntryModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return QVariant();
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole ? Titles()[size_t(section)] : QVariant();
}

CEntryFilter::CEntryFilter(CEntryModel& model, QObject* parent) : QSortFilterProxyModel(parent), m_entries(model) {
    setSourceModel(&model);
}

void CEntryFilter::SetText(const QString& text) {
    m_strText = text;
    invalidateFilter();
}

bool CEntryFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    return IsChosen(row) && (m_strText.isEmpty() || m_entries.Holds(row, m_strText));
}
