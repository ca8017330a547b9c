#pragma once

#include <QDateTime>
#include <QObject>
#include <memory>

#include "framework/ILog.h"

namespace spdlog {
class logger;
}

/// What the log view shows of a line.
struct LogEntry {
    QDateTime time;
    LogRecord record;
};
Q_DECLARE_METATYPE(LogEntry)

/// The log: rotating files of 5 MiB, three of them, and a signal for whoever shows it. Callable from any
/// thread; the signal comes on the thread of the writer.
class CFileLog : public QObject, public ILog {
    Q_OBJECT

public:
    /// Writes to `path`; an empty path, or one that can't be written, leaves the signal alone.
    explicit CFileLog(const QString& path);
    ~CFileLog() override;

    void Write(const LogRecord& record) override;
    void AssertionFailed(const AssertionRecord& record) override;

Q_SIGNALS:
    void Written(const LogEntry& entry);

private:
    std::shared_ptr<spdlog::logger> m_logger;
};
