#pragma once

#include "framework/ILogSource.h"
#include "workbench/EntryModel.h"

/// A line as the log view shows it.
struct LogRow {
    QString time;
    ZRLogType severity;
    QString tag;  // this and the text as shown: control characters are escaped
    QString text;
    QString place;     // source, line and function; empty where the writer names none
    QString readable;  // unescaped; where the text's characters stand for bytes of UTF-8, what those say
};

/// The lines of the log view, the youngest 20,000. Main thread.
class CLogModel final : public CEntryRows<LogEntry, LogRow> {
    Q_OBJECT

public:
    enum EnColumn { Time, Severity, Tag, Text, ColumnCount };

    static constexpr int kMaxLines = 20'000;

    explicit CLogModel(QObject* parent = nullptr);

    /// Takes a line, unless a younger one of the same log is there; it is shown with the next batch.
    void Add(const LogEntry& entry) { Collect(entry); }

    const LogRow& At(int row) const { return RowAt(row); }
    /// The part of a module that wrote the line, as "AIChat" of "[AIChat] ..."; empty if the line names none.
    QStringView AreaAt(int row) const;
    bool IsHostAt(int row) const;
    /// The line for a reader, with its place.
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
