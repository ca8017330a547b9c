#pragma once

#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "store/SqliteConnection.h"

/// A finished checkpoint.
struct StoreCheckpoint {
    bool restarted = false;  ///< the next write starts the log from its beginning
    qint64 logBytes = 0;     ///< size of the log before
};

struct CheckpointOptions {
    /// Bytes written since the last checkpoint after which the next one starts, once the writer is idle ...
    qint64 afterBytes = 4 << 20;
    /// ... or after which it starts even if the writer is busy. Larger steps disturb fewer saves, and pages that
    /// change repeatedly are copied once.
    qint64 maxBytes = 32 << 20;
    /// The writer is idle after this time without a write. Also the minimum time between two checkpoints.
    std::chrono::milliseconds pause{250};
    /// After this time without a write a checkpoint starts whatever was written, and also after the start: a client
    /// that is always killed would keep everything in the log.
    std::chrono::milliseconds quiet{2'000};
    /// A longer log is restarted.
    qint64 restartBytes = 64 << 20;
    /// Called on the checkpointer's thread.
    std::function<void(const StoreCheckpoint&)> fnTaken;
};

/// Copies the write-ahead log of a SQLite file into the database. It uses its own thread and connection, so that the
/// writer never waits for the disk. The writer's connection must have automatic checkpoints disabled.
class CCheckpointer {
public:
    /// With `check`, first verifies the whole file.
    CCheckpointer(const QString& path, const CheckpointOptions& options, bool check = false);
    /// Truncates the log and waits for that, unless the file was abandoned.
    ~CCheckpointer();
    CCheckpointer(const CCheckpointer&) = delete;
    CCheckpointer& operator=(const CCheckpointer&) = delete;

    /// Hold this lock while writing. It blocks only during a restart of the log. A mutex is used because SQLite's
    /// busy handler polls and can starve either side.
    std::unique_lock<std::mutex> LockForWrite();

    /// Reports about how many bytes were written to the log. Any thread; never waits for the disk.
    void Written(qint64 bytes);

    /// Stops all access to the file, including the final checkpoint.
    void Abandon();

    /// The damage that the check found, after which the file is abandoned. Empty while the check runs. Any thread.
    std::optional<SqliteError> Damage() const;

private:
    struct Outcome {
        bool done = false;
        qint64 logPages = 0;
    };

    void Run();
    void Check(CSqliteConnection& connection);
    /// Returns after `pause` without a write, or once `bytes` are written.
    void WaitUntilIdle(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds pause, qint64 bytes);
    void TakeCheckpoint(CSqliteConnection& connection);
    Outcome Checkpoint(CSqliteConnection& connection, const char* mode);
    bool EnsureOpen(CSqliteConnection& connection);

    const QString m_path;
    const CheckpointOptions m_options;
    const bool m_bCheck;
    // A ticket lock of two: the next writer or restart holds the first one while it waits for the second.
    std::mutex m_nextWriter;
    std::mutex m_writer;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    qint64 m_nWritten = 1;  // an earlier client may have left a log
    bool m_bStop = false;
    bool m_bAbandoned = false;
    SqliteError m_damage;  // valid once the flag is set
    std::atomic<bool> m_bDamaged = false;
    // The thread's own.
    qint64 m_nPageBytes = 0;
    bool m_bOpen = false;
    bool m_bFailing = false;
    std::thread m_thread;
};
