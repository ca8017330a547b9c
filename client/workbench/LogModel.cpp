#include "workbench/LogModel.h"

#include <QColor>
#include <algorithm>

#include "ClientTexts.h"
#include "Theme.h"
#include "log/LogText.h"
#include "workbench/ReadableBytes.h"

namespace {

constexpr int kFlushMs = 100;

QString Escaped(const QString& text) {
    return QString::fromStdString(EscapedLogText(text));
}

texts::EnText SeverityName(ZRLogType severity) {
    if (severity >= kZRLogFatal) {
        return texts::kSeverityNameFatal;
    }
    return severity >= kZRLogError ? texts::kSeverityNameError : texts::kSeverityNameInfo;
}

}  // namespace

CLogModel::CLogModel(QObject* parent) : QAbstractTableModel(parent) {
    m_flushTimer.setSingleShot(true);
    m_flushTimer.setInterval(kFlushMs);
    connect(&m_flushTimer, &QTimer::timeout, this, &CLogModel::Flush);
    theme::Keep(this, [this] {
        if (!m_lines.empty()) {
            Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1), {Qt::ForegroundRole});
        }
    });
    texts::Keep(this, [this] {
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
        if (!m_lines.empty()) {
            Q_EMIT dataChanged(index(0, Severity), index(rowCount() - 1, Severity));
        }
    });
}

void CLogModel::Add(const LogEntry& entry) {
    if (entry.number != 0 && entry.number <= m_nLast) {
        return;
    }
    m_nLast = std::max(m_nLast, entry.number);
    m_pending.push_back(entry);
    if (m_pending.size() > size_t(kMaxLines)) {
        m_pending.pop_front();
    }
    if (!m_bPaused && !m_flushTimer.isActive()) {
        m_flushTimer.start();
    }
}

void CLogModel::Flush() {
    if (m_bPaused || m_pending.empty()) {
        return;
    }
    const int surplus = std::min(rowCount(), rowCount() + int(m_pending.size()) - kMaxLines);
    if (surplus > 0) {
        beginRemoveRows(QModelIndex(), 0, surplus - 1);
        m_lines.erase(m_lines.begin(), m_lines.begin() + surplus);
        endRemoveRows();
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount() + int(m_pending.size()) - 1);
    for (const LogEntry& entry : m_pending) {
        const LogRecord& record = entry.record;
        m_lines.push_back({entry.time.toLocalTime().toString(QStringLiteral("HH:mm:ss.zzz")), record.type,
                           Escaped(QString::fromStdString(record.module)), Escaped(record.text),
                           record.file.empty() ? QString()
                                               : QStringLiteral("%1:%2 %3")
                                                     .arg(QString::fromStdString(record.file))
                                                     .arg(record.line)
                                                     .arg(QString::fromStdString(record.function)),
                           readable::FromLatin1(record.text).value_or(record.text)});
    }
    m_pending.clear();
    endInsertRows();
    Q_EMIT Changed();
}

void CLogModel::SetPaused(bool paused) {
    m_bPaused = paused;
    Flush();
    Q_EMIT Changed();
}

void CLogModel::Clear() {
    beginResetModel();
    m_pending.clear();
    m_lines.clear();
    endResetModel();
    Q_EMIT Changed();
}

ZRLogType CLogModel::SeverityAt(int row) const {
    return m_lines[size_t(row)].severity;
}

const QString& CLogModel::TextAt(int row) const {
    return m_lines[size_t(row)].text;
}

const QString& CLogModel::TagAt(int row) const {
    return m_lines[size_t(row)].tag;
}

// The host's own lines carry their area after this word; all other tags are those of modules.
bool CLogModel::IsHostAt(int row) const {
    return TagAt(row).startsWith(QLatin1String("Host."));
}

QStringView CLogModel::AreaAt(int row) const {
    const QStringView text(TextAt(row));
    const int end = TextAt(row).indexOf(QLatin1Char(']'));
    return text.startsWith(QLatin1Char('[')) && end > 0 ? text.mid(1, end - 1) : QStringView();
}

int CLogModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_lines.size());
}

int CLogModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant CLogModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount()) {
        return QVariant();
    }
    const Line& line = m_lines[size_t(index.row())];
    if (role == Qt::ForegroundRole) {
        if (line.severity >= kZRLogError) {
            return QColor(theme::kDown);
        }
        return QColor(index.column() == Text ? theme::kText : theme::kMuted);
    }
    if (role == Qt::ToolTipRole) {
        const QString readable = Escaped(line.readable);
        return line.place.isEmpty() ? readable : readable + QLatin1Char('\n') + line.place;
    }
    if (role != Qt::DisplayRole) {
        return QVariant();
    }
    switch (index.column()) {
        case Time:
            return line.time;
        case Severity:
            return texts::Tr(SeverityName(line.severity));
        case Tag:
            return line.tag;
        default:
            return line.text;
    }
}

QVariant CLogModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) {
        return QVariant();
    }
    if (role == Qt::TextAlignmentRole) {
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    constexpr texts::EnText kTitles[ColumnCount] = {texts::kLogTime, texts::kLogSeverity, texts::kLogTag,
                                                    texts::kLogText};
    return role == Qt::DisplayRole ? texts::Tr(kTitles[section]) : QVariant();
}
