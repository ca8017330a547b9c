#pragma once

#include "framework/ILogSource.h"
#include "workbench/EntryModel.h"

/// A line of the log view.
struct LogRow {
    QString time;
    ZRLogType severity;
    QString tag;  // tag and text are displayed with control characters escaped
    QString text;
    QString place;     // source, line and function; empty if the line has none
    QString readable;  // unescaped; Latin-1 characters that are UTF-8 bytes are decoded
};

/// The newest 20,000 lines of the log. Main thread.
class CLogModel final : public CEntryRows<LogEntry, LogRow> {
    Q_OBJECT

public:
    enum EnColumn { Time, Severity, Tag, Text, ColumnCount };

    static constexpr int kMaxLines = 20'000;

    explicit CLogModel(QObject* parent = nullptr);

    /// Adds a line to the next batch, unless a newer one of the same log was added before.
    void Add(const LogEntry& entry) { Collect(entry); }

    const LogRow& At(int row) const { return RowAt(row); }
    /// The area of the module that wrote the line, such as "AIChat" in "[AIChat] ..."; empty if the line names none.
    QStringView AreaAt(int row) const;
    bool IsHostAt(int row) const;
    /// The readable line with its place in the source.
    QString InFull(int row) const;

    bool Holds(int row, const QString& text) const override;

private:
    LogRow Read(LogEntry entry) const override;
    std::vector<QString> Titles() const override;
    QString Cell(int row, int column) const override;
    QString ToolTip(int row, int /*column*/) const override { return InFull(row); }
    bool IsBad(int row) const override { return At(row).severity >= kZRLogError; }
    bool IsMuted(int column) const override { return column != Text; }
};
