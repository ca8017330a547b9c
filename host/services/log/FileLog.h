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

/// What the log view shows of a line.
struct LogEntry {
    QDateTime time;
    LogRecord record;
    uint64_t number = 0;  // from 1, in order; 0 in one that no log gave out
};
Q_DECLARE_METATYPE(LogEntry)

/// The log: rotating files of 5 MiB, three of them, and a signal for whoever shows it. Callable from any
/// thread; the signal comes on the thread of the writer.
class CFileLog : public QObject, public ILog {
    Q_OBJECT

public:
    /// So many of the youngest lines are kept for listeners that come late.
    static constexpr size_t kKept = 1'000;

    /// Writes to `path`; an empty path, or one that can't be written, leaves the signal alone.
    explicit CFileLog(const QString& path);
    ~CFileLog() override;

    void Write(const LogRecord& record) override;
    void AssertionFailed(const AssertionRecord& record) override;

    /// What a listener that comes now has missed. One that connects first and then asks knows by the numbers
    /// what it gets twice.
    std::deque<LogEntry> Kept() const;

Q_SIGNALS:
    void Written(const LogEntry& entry);

private:
    std::shared_ptr<spdlog::logger> m_logger;
    mutable std::mutex m_mutex;
    std::deque<LogEntry> m_kept;
    uint64_t m_nLast = 0;
};
