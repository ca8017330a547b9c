#include "workbench/SeenModel.h"

#include <QColor>
#include <QDateTime>
#include <algorithm>

#include "Theme.h"

namespace {

constexpr int kFlushMs = 100;

}  // namespace

CSeenModel::CSeenModel(std::unique_ptr<ISeenFormat> format, QObject* parent)
    : QAbstractTableModel(parent), m_format(std::move(format)) {
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(kFlushMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &CSeenModel::Flush);
    theme::Keep(this, [this] {
        if (!m_rows.empty()) {
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::ForegroundRole});
        }
    });
    texts::Keep(this, [this] {
        for (Row& row : m_rows) {
            row.cells = m_format->Cells(row.seen);
        }
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
        if (!m_rows.empty()) {
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        }
    });
}

CSeenModel::~CSeenModel() = default;

void CSeenModel::Add(const Seen& seen) {
    if (!m_format->Takes(seen) || (seen.number != 0 && seen.number <= m_nLast)) {
        return;
    }
    m_nLast = std::max(m_nLast, seen.number);
    m_pending.push_back(seen);
    if (m_pending.size() > size_t(kMaxRows)) {
        m_pending.pop_front();
    }
    if (!m_bPaused && !m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void CSeenModel::Flush() {
    if (m_bPaused || m_pending.empty()) {
        return;
    }
    const int batch = std::min(int(m_pending.size()), kMaxBatch);
    const int surplus = rowCount() + batch - kMaxRows;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + surplus);
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount() + batch - 1);
    for (int i = 0; i < batch; ++i) {
        QStringList cells = m_format->Cells(m_pending.front());
        m_rows.push_back({std::move(m_pending.front()), std::move(cells)});
        m_pending.pop_front();
    }
    endInsertRows();
    if (!m_pending.empty()) {
        m_flushTimer.start();
    }
    Q_EMIT Changed();
}

void CSeenModel::SetPaused(bool paused) {
    m_bPaused = paused;
    Flush();
    Q_EMIT Changed();
}

void CSeenModel::Clear() {
    beginResetModel();
    m_pending.clear();
    m_rows.clear();
    endResetModel();
    Q_EMIT Changed();
}

QString CSeenModel::TimeAt(int row) const {
    return QDateTime::fromMSecsSinceEpoch(At(row).timeMs).toString(QStringLiteral("HH:mm:ss.zzz"));
}

int CSeenModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CSeenModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_format->Titles().size());
}

QVariant CSeenModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    if (role == Qt::ForegroundRole) {
        if (m_format->IsBad(At(index.row()))) {
            return QColor(theme::kDown);
        }
        return index.column() == 0 ? QColor(theme::kMuted) : QColor(theme::kText);
    }
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) {
        return QVariant();
    }
    return index.column() == 0 ? TimeAt(index.row()) : CellsAt(index.row()).value(index.column() - 1);
}

QVariant CSeenModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return QVariant();
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole ? texts::Tr(m_format->Titles()[size_t(section)]) : QVariant();
}

CSeenFilter::CSeenFilter(CSeenModel& model, QObject* parent) : QSortFilterProxyModel(parent), m_model(model) {
    setSourceModel(&model);
}

void CSeenFilter::SetText(const QString& text) {
    m_strText = text;
    invalidateFilter();
}

void CSeenFilter::SetKind(int kind) {
    m_nKind = kind;
    invalidateFilter();
}

bool CSeenFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    if (m_nKind >= 0 && m_model.Format().Kind(m_model.At(row)) != m_nKind) {
        return false;
    }
    const QStringList& cells = m_model.CellsAt(row);
    return m_strText.isEmpty() || std::any_of(cells.begin(), cells.end(), [this](const QString& cell) {
               return cell.contains(m_strText, Qt::CaseInsensitive);
           });
}
