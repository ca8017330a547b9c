#pragma once

#include <QAbstractTableModel>
#include <QTimer>
#include <deque>

#include "log/FileLog.h"

/// The lines of the log view, the youngest 20,000. Lines are collected and shown a few times a second:
/// ten thousand of them in one second must not hold up the window. Main thread.
class CLogModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum EnColumn { Time, Severity, Tag, Text, ColumnCount };

    static constexpr int kMaxLines = 20'000;

    explicit CLogModel(QObject* parent = nullptr);

    /// Takes a line, unless a younger one of the same log is there; it is shown with the next batch.
    void Add(const LogEntry& entry);

    /// Whether all that was taken is shown.
    bool IsSettled() const { return m_pending.empty(); }

    /// Shows what was collected, unless paused.
    void Flush();

    /// While paused nothing moves; lines are still collected, within the bound.
    void SetPaused(bool paused);
    bool IsPaused() const { return m_bPaused; }

    /// Forgets all lines, those not yet shown too.
    void Clear();

    ZRLogType SeverityAt(int row) const;
    /// As shown: control characters are escaped.
    const QString& TextAt(int row) const;
    const QString& TagAt(int row) const;
    /// The text as a person reads it, unescaped: where its characters stand for bytes of UTF-8, what those say.
    const QString& ReadableAt(int row) const { return m_lines[size_t(row)].readable; }
    /// Source, line and function; empty where the writer names none.
    const QString& PlaceAt(int row) const { return m_lines[size_t(row)].place; }
    /// The part of a module that wrote the line, as "AIChat" of "[AIChat] ..."; empty if the line names none.
    QStringView AreaAt(int row) const;
    bool IsHostAt(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    /// The number of lines or the pause has changed.
    void Changed();

private:
    struct Line {
        QString time;
        ZRLogType severity;
        QString tag;
        QString text;
        QString place;
        QString readable;
    };

    std::deque<LogEntry> m_pending;
    std::deque<Line> m_lines;
    QTimer m_flushTimer;
    uint64_t m_nLast = 0;
    bool m_bPaused = false;
};
