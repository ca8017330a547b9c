#pragma once

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <set>

#include "support/ScriptedLog.h"
#include "workbench/diagnosis/LogTable.h"

/// The rows of the table that match the log lines since the last call. Checks that each row with its values is exactly
/// the line.
inline std::set<const log_table::Row*> RowsRead(CScriptedLog& log) {
    std::set<const log_table::Row*> rows;
    for (const LogLine& written : log.Lines()) {
        const QString text = QString::fromStdString(written.text);
        const auto line = log_table::Read(text);
        if (!line) {
            continue;
        }
        QString rebuilt;
        int done = 0;
        static const QRegularExpression mark(QStringLiteral("\\{[a-z]?\\}"));
        const QString pattern = log_table::PatternOf(line->row->text);
        auto marks = mark.globalMatch(pattern);
        for (int index = 0; marks.hasNext(); ++index) {
            const auto match = marks.next();
            rebuilt += pattern.mid(done, match.capturedStart() - done) + line->values.value(index);
            done = match.capturedEnd();
        }
        EXPECT_EQ((rebuilt + pattern.mid(done)).toStdString(), written.text);
        rows.insert(line->row);
    }
    log.Forget();
    return rows;
}
