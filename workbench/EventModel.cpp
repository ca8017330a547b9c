#include "workbench/EventModel.h"

#include <QColor>
#include <algorithm>

#include "Theme.h"
#include "ui/KitPaint.h"
#include "workbench/TimeText.h"

namespace {

constexpr int kFlushMs = 100;

uint64_t NumberOf(const Event& event) {
    return std::visit([](const auto& source) { return source.number; }, event);
}

}  // namespace

CEventModel::CEventModel(std::shared_ptr<IEventFormat> format, QObject* parent)
    : QAbstractTableModel(parent), m_format(std::move(format)), m_nLimit(m_format->MaxRows()) {
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
    if (!m_format->Takes(event)) {
        return;
    }
    uint64_t& newest = m_newest[event.index()];
    const uint64_t number = NumberOf(event);
    if (number != 0 && number <= newest) {
        return;
    }
    newest = std::max(newest, number);
    const std::optional<IEventFormat::Step> step = m_format->StepOf(event);
    const auto begun = step ? m_begun.find(step->sequence) : m_begun.end();
    if (!step || step->part == IEventFormat::EnPart::kBegin || begun == m_begun.end()) {
        Collect(event);
        if (step && step->part != IEventFormat::EnPart::kEnd) {
            m_begun[step->sequence] = m_nNextId;
            if (int(m_begun.size()) > m_nLimit) {
                m_begun.erase(m_begun.begin());
            }
        }
        return;
    }
    m_amendments.push_back({begun->second, event});
    if (int(m_amendments.size()) > m_nLimit) {
        m_amendments.pop_front();
    }
    if (step->part == IEventFormat::EnPart::kEnd) {
        m_begun.erase(begun);
    }
    Schedule();
}

void CEventModel::Collect(const Event& event) {
    m_pending.push_back({++m_nNextId, event});
    if (int(m_pending.size()) > m_nLimit) {
        m_pending.pop_front();
    }
    Schedule();
}

void CEventModel::SetRows(const std::vector<RowPtr>& rows) {
    beginResetModel();
    m_rows.clear();
    for (const RowPtr& row : rows) {
        m_rows.push_back({++m_nNextId, row});
    }
    endResetModel();
    Q_EMIT Changed();
}

std::vector<CEventModel::RowPtr> CEventModel::Rows() const {
    std::vector<RowPtr> rows;
    rows.reserve(m_rows.size());
    std::transform(m_rows.begin(), m_rows.end(), std::back_inserter(rows),
                   [](const Shown& shown) { return shown.row; });
    return rows;
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
    if (!m_pending.empty()) {
        ShowBatch();
    }
    Amend();
    if (!IsSettled()) {
        Schedule();
    }
    Q_EMIT Changed();
}

void CEventModel::ShowBatch() {
    const int batch = std::min(int(m_pending.size()), kMaxBatch);
    const int surplus = rowCount() + batch - m_nLimit;
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_rows.erase(m_rows.begin(), m_rows.begin() + surplus);
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount() + batch - 1);
    for (int i = 0; i < batch; ++i) {
        const Pending& first = m_pending.front();
        m_rows.push_back({first.id, std::make_shared<EventRow>(m_format->Row(first.event))});
        m_pending.pop_front();
    }
    endInsertRows();
}

void CEventModel::Amend() {
    const uint64_t firstPending = m_pending.empty() ? m_nNextId + 1 : m_pending.front().id;
    for (auto amendment = m_amendments.begin(); amendment != m_amendments.end();) {
        if (amendment->id >= firstPending) {
            ++amendment;
            continue;
        }
        const auto shown = std::lower_bound(m_rows.begin(), m_rows.end(), amendment->id,
                                            [](const Shown& row, uint64_t id) { return row.id < id; });
        if (shown != m_rows.end() && shown->id == amendment->id) {
            EventRow row = *shown->row;
            m_format->Amend(row, amendment->event);
            shown->row = std::make_shared<EventRow>(std::move(row));
            const int at = int(shown - m_rows.begin());
            Q_EMIT dataChanged(index(at, 0), index(at, columnCount() - 1));
        }
        amendment = m_amendments.erase(amendment);
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
    m_amendments.clear();
    SetRows({});
}

bool CEventModel::Holds(int row, const QString& text) const {
    const EventRow& at = At(row);
    return at.found.contains(text, Qt::CaseInsensitive) ||
           std::any_of(at.cells.begin(), at.cells.end(),
                       [&text](const QString& cell) { return cell.contains(text, Qt::CaseInsensitive); });
}

int CEventModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CEventModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_format->Columns().size()) + 1;
}

QString CEventModel::Cell(int row, int column) const {
    return column == 0 ? time_text::Local(At(row).timeMs) : At(row).cells.value(column - 1);
}

QVariant CEventModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    const EnTone tone = At(index.row()).tone;
    switch (role) {
        case Qt::DisplayRole: {
            const QString cell = Cell(index.row(), index.column());
            return cell.size() > kMaxCell ? cell.left(kMaxCell) + QStringLiteral("…") : cell;
        }
        case Qt::ToolTipRole:
            return host::kit::TipText(Cell(index.row(), index.column()).left(4 * kMaxCell));
        case Qt::ForegroundRole:
            return QColor(tone == EnTone::kBad                               ? theme::kDown
                          : tone == EnTone::kExpected || index.column() == 0 ? theme::kMuted
                                                                             : theme::kText);
        default:
            return QVariant();
    }
}

QVariant CEventModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return QVariant();
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole) {
        return QVariant();
    }
    return section == 0 ? QStringLiteral("Time (%1)").arg(time_text::Zone())
                        : QString::fromUtf8(m_format->Columns()[size_t(section) - 1].title);
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
    const auto& events = static_cast<const CEventModel&>(*sourceModel());
    return std::all_of(m_choices.begin(), m_choices.end(),
                       [&](const auto& choice) {
                           return choice.second.isEmpty() ||
                                  events.Format().Passes(events.At(row), choice.first, choice.second);
                       }) &&
           (m_strText.isEmpty() || events.Holds(row, m_strText));
}

bool CEventFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
    const auto& events = static_cast<const CEventModel&>(*sourceModel());
    if (left.column() == 0) {
        return events.At(left.row()).timeMs < events.At(right.row()).timeMs;
    }
    const QString first = left.data().toString();
    const QString second = right.data().toString();
    bool isNumber = false;
    bool areNumbers = false;
    const double firstNumber = first.toDouble(&isNumber);
    const double secondNumber = second.toDouble(&areNumbers);
    return isNumber && areNumbers ? firstNumber < secondNumber : first.localeAwareCompare(second) < 0;
}
