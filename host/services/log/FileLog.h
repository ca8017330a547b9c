#pragma once

#include <memory>
#include <mutex>

#include "framework/ILogSource.h"

namespace spdlog {
class logger;
}

/// Writes the log to three rotating files of 5 MiB. A text over 16 KiB is cut. Callable from any
/// thread.
class CFileLog : public ILogSource, public ILog {
public:
    /// Number of lines that are kept for later listeners.
    static constexpr size_t kKept = 1'000;

    /// Writes to `path`. With an empty or unwritable path, lines are kept and emitted only.
    explicit CFileLog(const QString& path);
    ~CFileLog() override;

    void Write(const LogRecord& record) override;
    void AssertionFailed(const AssertionRecord& record) override;

    std::deque<LogEntry> Kept() const override;

private:
    std::shared_ptr<spdlog::logger> m_logger;
    mutable std::mutex m_mutex;
    std::deque<LogEntry> m_kept;
    uint64_t m_nLast = 0;
};
