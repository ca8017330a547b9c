#include "workbench/EventModel.h"

#include <QColor>
#include <algorithm>

#include "Theme.h"
#include "ui/KitPaint.h"
#include "workbench/TimeText.h"

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
    Schedule();
}

void CEventModel::SetRows(const std::vector<RowPtr>& rows) {
    beginResetModel();
    m_rows = {rows.begin(), rows.end()};
    endResetModel();
    Q_EMIT Changed();
}

void CEventModel::Schedule() {
    if (!m_bPaused && !m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
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
    AddRows(added);
    if (!IsSettled()) {
        Schedule();
    }
    Q_EMIT Changed();
}

// A later event of a sequence changes its row, and nothing if that row was removed.
void CEventModel::ShowEvent(const Event& event, std::vector<RowPtr>& added) {
    const uint64_t next = m_rows.size() + added.size();
    uint64_t at = next;
    const auto step = m_format->step ? m_format->step(event) : std::nullopt;
    if (step) {
        const auto begun = m_begun.emplace(step->sequence, m_nRemoved + next).first;
        if (step->part == EventFormat::EnPart::kBegin) {
            begun->second = m_nRemoved + next;
        }
        at = begun->second - m_nRemoved;
        if (step->part == EventFormat::EnPart::kEnd) {
            m_begun.erase(begun);
        } else if (int(m_begun.size()) > m_format->maxRows) {
            m_begun.erase(m_begun.begin());
        }
    }
    if (at > next) {
        return;
    }
    if (at == next) {
        EventRow row;
        row.timeMs = TimeOf(event);
        added.push_back(std::make_shared<const EventRow>(std::move(row)));
    }
    const bool isShown = at < m_rows.size();
    RowPtr& place = isShown ? m_rows[at] : added[at - m_rows.size()];
    EventRow row = *place;
    m_format->fill(row, event);
    place = std::make_shared<const EventRow>(std::move(row));
    if (isShown) {
        Q_EMIT dataChanged(index(int(at), 0), index(int(at), columnCount() - 1));
    }
}

void CEventModel::AddRows(const std::vector<RowPtr>& added) {
    const int surplus = rowCount() + int(added.size()) - m_format->maxRows;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + surplus);
        m_nRemoved += uint64_t(surplus);
        endRemoveRows();
    }
    if (!added.empty()) {
        beginInsertRows(QModelIndex(), rowCount(), rowCount() + int(added.size()) - 1);
        m_rows.insert(m_rows.end(), added.begin(), added.end());
        endInsertRows();
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
    m_begun.clear();
    SetRows({});
}

int CEventModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CEventModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_format->columns.size()) + 1;
}

QVariant CEventModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    const EventRow& row = At(index.row());
    const QString cell = index.column() == 0 ? time_text::Local(row.timeMs) : row.cells.value(index.column() - 1);
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
    return section == 0 ? "Time (%1)"_q.arg(time_text::Zone()) : m_format->columns[size_t(section) - 1].title;
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
    const auto contains = [this](const QString& text) { return text.contains(m_strText, Qt::CaseInsensitive); };
    return std::all_of(m_choices.begin(), m_choices.end(),
                       [&at](const auto& choice) {
                           return choice.second.isEmpty() ||
                                  at.choices.value(choice.first).split(QLatin1Char('|')).contains(choice.second);
                       }) &&
           (contains(at.found) || std::any_of(at.cells.begin(), at.cells.end(), contains));
}

bool CEventFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    const auto& events = static_cast<const CEventModel&>(*sourceModel());
    if (left.column() == 0) {
        return events.At(left.row()).timeMs < events.At(right.row()).timeMs;
    }
    bool isNumber = false;
    bool areNumbers = false;
    const double first = left.data().toString().toDouble(&isNumber);
    const double second = right.data().toString().toDouble(&areNumbers);
    return isNumber && areNumbers ? first < second : QSortFilterProxyModel::lessThan(left, right);
}
