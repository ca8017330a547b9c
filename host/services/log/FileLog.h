#pragma once

#include <QDateTime>
#include <QObject>
#include <deque>
#include <memory>
#include <mutex>

#include "framework/ILog.h"

namespace spdlog {
class logger;
}

/// A line for the log view.
struct LogEntry {
    QDateTime time;
    LogRecord record;
    uint64_t number = 0;  // from 1, in order; 0 if not from a log
};
Q_DECLARE_METATYPE(LogEntry)

/// The log: three rotating files of 5 MiB, and a signal for views. Any thread. The signal is emitted on the thread of
/// the writer.
class CFileLog : public QObject, public ILog {
    Q_OBJECT

public:
    /// Number of latest lines kept for views that open later.
    static constexpr size_t kKept = 1'000;

    /// Writes to `path`. With an empty path, or if the file cannot be written, only the signal is emitted.
    explicit CFileLog(const QString& path);
    ~CFileLog() override;

    void Write(const LogRecord& record) override;
    void AssertionFailed(const AssertionRecord& record) override;

    /// The latest lines. A listener connects first, then reads them and drops duplicates by number.
    std::deque<LogEntry> Kept() const;

Q_SIGNALS:
    void Written(const LogEntry& entry);

private:
    std::shared_ptr<spdlog::logger> m_logger;
    mutable std::mutex m_mutex;
    std::deque<LogEntry> m_kept;
    uint64_t m_nLast = 0;
};
