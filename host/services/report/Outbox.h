#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "report/SqliteFile.h"
#include "store/Checkpointer.h"
#include "store/StoreLock.h"

struct OutboxOptions {
    int64_t mostEvents = 50'000;
    int64_t mostBytes = 32 << 20;  // of all events together
    CheckpointOptions checkpoints;
};

struct OutboxEvent {
    int64_t number = 0;  // in order of reporting
    std::string id;
    std::string json;
};

/// Events that wait for the server, in a SQLite file. What Add gave true for is in the write-ahead log, and
/// survives the process's end. Full, it drops its oldest events: bounds are counted from the oldest event to the
/// youngest. One client at a time has the file; another one's events are refused until it ends.
/// Nothing is opened before the first call. Any thread; nothing is thrown.
///
/// A damaged file is moved aside with the day and time in its new name, which the log says, and a new one is
/// begun.
class COutbox {
public:
    explicit COutbox(QString path, const OutboxOptions& options = {});
    ~COutbox();
    COutbox(const COutbox&) = delete;
    COutbox& operator=(const COutbox&) = delete;

    /// False where it could not be written, which is logged.
    bool Add(const std::string& id, const std::string& json);

    /// The oldest events that were reported after the one of that number. Those that are no longer what was
    /// added are removed and logged. `bytes` is for the events together; one is given in any case. Where none is
    /// given, `failed` tells an outbox that can't be read from one that holds no more.
    std::vector<OutboxEvent> Read(int64_t after, size_t count, size_t bytes, bool* failed = nullptr);

    /// False where they stay, which is logged.
    bool Remove(const std::vector<OutboxEvent>& events);

    /// Also true for one that can't be opened.
    bool IsEmpty();

    /// Events dropped for want of room since the file was begun; kept in it.
    int64_t Dropped();

private:
    bool EnsureOpen();
    bool OpenFile();
    bool MakeReady();
    bool ReadBounds();
    bool StartAnew();
    void Close();
    bool Insert(const std::string& id, const std::string& json);
    bool IsFull() const;
    void DropOldest();
    bool FindOldest();
    bool InTransaction(const std::function<bool()>& work);
    std::vector<OutboxEvent> ReadRows(int64_t after, size_t count, size_t bytes, bool& failed);
    bool HealDamage();
    bool Refuse(const char* what);

    const QString m_path;
    const OutboxOptions m_options;
    std::mutex m_mutex;
    CStoreLock m_lock;
    CSqliteFile m_file;
    CSqliteStatement m_insert;
    CSqliteStatement m_read;
    CSqliteStatement m_remove;
    CSqliteStatement m_dropOldest;
    CSqliteStatement m_oldest;
    CSqliteStatement m_countDropped;
    std::unique_ptr<CCheckpointer> m_pCheckpointer;
    bool m_bReady = false;
    bool m_bDropping = false;  // and said so
    int64_t m_nFirst = 0;      // the oldest event's number; 0 if there is none
    int64_t m_nBefore = 0;     // bytes of all events before the oldest
    int64_t m_nLast = 0;
    int64_t m_nBytes = 0;  // of all events up to the youngest
    int64_t m_nDropped = 0;
};
