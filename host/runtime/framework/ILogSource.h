#pragma once

#include <QDateTime>
#include <QObject>
#include <deque>

#include "framework/ILog.h"
#include "framework/export.h"

/// A log line with its time and number.
struct LogEntry {
    QDateTime time;
    LogRecord record;
    uint64_t number = 0;  // from 1, in order; 0 in an entry that no log numbered
};
Q_DECLARE_METATYPE(LogEntry)

/// The lines of the log. Callable from any thread.
class ZRHOST_API ILogSource : public QObject {
    Q_OBJECT

public:
    /// The latest lines, oldest first. A listener connects first and reads these then; line numbers identify
    /// the lines that it gets twice.
    virtual std::deque<LogEntry> Kept() const = 0;

Q_SIGNALS:
    /// Is emitted on the thread that wrote the line.
    void Written(const LogEntry& entry);
};
