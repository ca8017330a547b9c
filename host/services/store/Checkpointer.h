#pragma once

#include <QSqlError>
#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

class CSqliteConnection;

/// A checkpoint as it was taken.
struct StoreCheckpoint {
    bool restarted = false;  ///< the log begins anew with the next write
    qint64 logBytes = 0;     ///< length of the log that it found
};

struct CheckpointOptions {
    /// Written since the last checkpoint: the next one begins when the writer rests ...
    qint64 afterBytes = 4 << 20;
    /// ... or, where it does not rest, when so much was written. The larger the step, the fewer saves meet a disk
    /// that is busy, and the more pages were written again meanwhile and are copied once.
    qint64 atMostBytes = 32 << 20;
    /// The writer rests when it has written nothing for so long; and so long is between two checkpoints.
    std::chrono::milliseconds pause{250};
    /// A log longer than this is made to begin anew.
    qint64 restartBytes = 64 << 20;
    /// Called on the checkpointer's thread.
    std::function<void(const StoreCheckpoint&)> fnTaken;
};

/// Moves what the log of a SQLite file holds into the database, on a thread and a connection of its own:
/// a checkpoint waits for the disk, and the writer shall not. The writer's own checkpoints are off.
class CCheckpointer {
public:
    /// With `check` it looks first whether the file is whole.
    CCheckpointer(const QString& path, const CheckpointOptions& options, bool check = false);
    /// Empties the log and waits for that, unless the file was abandoned.
    ~CCheckpointer();
    CCheckpointer(const CCheckpointer&) = delete;
    CCheckpointer& operator=(const CCheckpointer&) = delete;

    /// The writer holds this while it writes. It waits only for a log that is made to begin anew, and goes on at
    /// once when that is done: SQLite's own wait looks now and then, and either side could miss its turn for long.
    std::unique_lock<std::mutex> TakeTurn();

    /// Tells that about so much was written to the log. Any thread; never waits for the disk.
    void Written(qint64 bytes);

    /// The file is damaged: the end leaves it alone.
    void Abandon();

    /// What the check found; empty while it runs, too. From then on the file is left alone. Any thread.
    std::optional<QSqlError> Damage() const;

private:
    struct Outcome {
        bool done = false;
        qint64 logPages = 0;
    };

    void Run();
    void Check(CSqliteConnection& connection);
    void WaitForRest(std::unique_lock<std::mutex>& lock);
    void Take(CSqliteConnection& connection);
    void Empty(CSqliteConnection& connection);
    Outcome Checkpoint(CSqliteConnection& connection, const char* mode);
    bool EnsureOpen(CSqliteConnection& connection);

    const QString m_path;
    const CheckpointOptions m_options;
    const bool m_bCheck;
    // The next one to write or to restart waits with the first of the two in hand, so that neither overtakes.
    std::mutex m_nextTurn;
    std::mutex m_turn;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    qint64 m_nWritten = 0;
    bool m_bEnd = false;
    bool m_bAbandoned = false;
    QSqlError m_damage;  // good once the flag is set
    std::atomic<bool> m_bDamaged = false;
    // Below: on the thread alone.
    qint64 m_nPageBytes = 0;
    bool m_bOpen = false;
    bool m_bFailing = false;
    std::thread m_thread;
};
