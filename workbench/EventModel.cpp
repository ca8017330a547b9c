#include "workbench/EventModel.h"

#include <QColor>
#include <algorithm>

#include "Theme.h"
#include "ui/KitPaint.h"

namespace {

constexpr int kFlushMs = 100;

qint64 TimeOf(const Event& event) {
    const auto* seen = std::get_if<TraceEvent>(&event);
    return seen ? seen->timeMs : std::get<LogEntry>(event).time.toMSecsSinceEpoch();
}

}  // namespace

CEventModel::CEventModel(EventFormatPtr format, QObject* parent)
    : QAbstractTableModel(parent), m_format(std::move(format)) {
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(kFlushMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &CEventModel::Flush);
    theme::OnThemeChange(this, [this] {
        if (rowCount() > 0) {
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        }
    });
}

void CEventModel::Add(const Event& event) {
    const uint64_t number = std::visit([](const auto& source) { return source.number; }, event);
    uint64_t& newest = m_newest[event.index()];
    if (!m_format->takes(event) || (number != 0 && number <= newest)) {
        return;
    }
    newest = std::max(newest, number);
    m_pending.push_back(event);
    if (int(m_pending.size()) > m_format->maxRows) {
        m_pending.pop_front();
    }
    if (!m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void CEventModel::SetRows(const std::vector<RowPtr>& rows) {
    beginResetModel();
    m_rows = {rows.begin(), rows.end()};
    endResetModel();
    Q_EMIT Changed();
}

void CEventModel::Flush() {
    if (m_bPaused || IsSettled()) {
        return;
    }
    std::vector<RowPtr> added;
    for (int count = 0; count < kMaxBatch && !m_pending.empty(); ++count) {
        ShowEvent(m_pending.front(), added);
        m_pending.pop_front();
    }
    const int surplus = rowCount() + int(added.size()) - m_format->maxRows;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + surplus);
        endRemoveRows();
    }
    if (!added.empty()) {
        beginInsertRows(QModelIndex(), rowCount(), rowCount() + int(added.size()) - 1);
        m_rows.insert(m_rows.end(), added.begin(), added.end());
        endInsertRows();
    }
    if (!IsSettled()) {
        m_flushTimer.start();
    }
    Q_EMIT Changed();
}

// Changes the row of the event's sequence, or begins a row.
void CEventModel::ShowEvent(const Event& event, std::vector<RowPtr>& added) {
    const uint64_t sequence = m_format->sequence ? m_format->sequence(event) : 0;
    const auto find = [sequence](auto& rows) {
        const auto isOfIt = [sequence](const RowPtr& row) { return row->sequence == sequence; };
        return sequence == 0 ? rows.rend() : std::find_if(rows.rbegin(), rows.rend(), isOfIt);
    };
    const auto shown = find(m_rows);
    const auto fresh = find(added);
    EventRow row = shown != m_rows.rend()  ? **shown
                   : fresh != added.rend() ? **fresh
                                           : EventRow{TimeOf(event), sequence};
    m_format->fill(row, event);
    const auto filled = std::make_shared<const EventRow>(std::move(row));
    if (shown != m_rows.rend()) {
        *shown = filled;
        const int at = int(m_rows.rend() - shown) - 1;
        Q_EMIT dataChanged(index(at, 0), index(at, columnCount() - 1));
    } else if (fresh != added.rend()) {
        *fresh = filled;
    } else {
        added.push_back(filled);
    }
}

void CEventModel::SetPaused(bool paused) {
    m_bPaused = paused;
    Flush();
    Q_EMIT Changed();
}

// The next event of a sequence has its own row, because the row of its start is gone.
void CEventModel::Clear() {
    m_pending.clear();
    SetRows({});
}

int CEventModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CEventModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_format->columns.size() + 1;
}

QVariant CEventModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    const EventRow& row = At(index.row());
    const QString cell = index.column() == 0 ? readable::LocalTime(row.timeMs) : row.cells.value(index.column() - 1);
    switch (role) {
        case Qt::DisplayRole:
            return cell.size() > kMaxCell ? cell.left(kMaxCell) + "…"_q : cell;
        case Qt::ToolTipRole:
            return host::kit::TipText(cell.left(4 * kMaxCell));
        case Qt::ForegroundRole:
            return QColor(row.tone == EnTone::kBad                               ? theme::kDown
                          : row.tone == EnTone::kExpected || index.column() == 0 ? theme::kMuted
                                                                                 : theme::kText);
        default:
            return QVariant();
    }
}

QVariant CEventModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount() || role != Qt::DisplayRole) {
        return QVariant();
    }
    return section == 0 ? "Time (%1)"_q.arg(readable::Zone())
                        : m_format->columns[section - 1].section(QLatin1Char('='), 0, 0);
}

void CEventFilter::SetText(const QString& text) {
    m_strText = text;
    invalidateFilter();
}

void CEventFilter::SetChoice(int filter, const QString& choice) {
    m_choices[filter] = choice;
    invalidateFilter();
}

bool CEventFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    const EventRow& at = static_cast<const CEventModel&>(*sourceModel()).At(row);
    const auto isChosen = [&at](const QString& choice) { return choice.isEmpty() || at.choices.contains(choice); };
    const auto contains = [this](const QString& text) { return text.contains(m_strText, Qt::CaseInsensitive); };
    return std::all_of(m_choices.begin(), m_choices.end(), isChosen) &&
           (contains(at.found) || std::any_of(at.cells.begin(), at.cells.end(), contains));
}

// The rows of the model are in the order of time.
bool CEventFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    bool isNumber = false;
    bool areNumbers = false;
    const double first = left.data().toString().toDouble(&isNumber);
    const double second = right.data().toString().toDouble(&areNumbers);
    return left.column() == 0       ? left.row() < right.row()
           : isNumber && areNumbers ? first < second
                                    : QSortFilterProxyModel::lessThan(left, right);
}
