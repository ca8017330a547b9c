#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "store/Checkpointer.h"
#include "store/SqliteConnection.h"
#include "store/StoreLock.h"

struct OutboxOptions {
    int64_t maxEvents = 50'000;
    int64_t maxBytes = 32 << 20;  // total of all events
    CheckpointOptions checkpoints;
};

struct OutboxEvent {
    int64_t number = 0;  // in order of reporting
    std::string id;
    std::string json;
};

/// Events that wait for the server, in a SQLite file. An event for which Add returned true is in the write-ahead log
/// and survives the end of the process. A full outbox drops its oldest events; its bounds count from the oldest event
/// to the youngest. One client at a time uses the file; events of a second one are refused until the first ends.
/// The file is opened by the first call. Any thread; throws nothing.
///
/// While another program locks the file, Add returns false. Its event is kept in memory, up to 4 MiB, and written when
/// the lock is gone.
///
/// A corrupt file is renamed with date and time, logged, and replaced by a new one.
class COutbox {
public:
    explicit COutbox(QString path, const OutboxOptions& options = {});
    ~COutbox();
    COutbox(const COutbox&) = delete;
    COutbox& operator=(const COutbox&) = delete;

    /// False if the event could not be written, which is logged, also if it is kept in memory.
    bool Add(const std::string& id, const std::string& json);

    /// Returns the oldest events with a number above `after`, at most `count` with at most `bytes` in total, but
    /// at least one. Spoilt events are removed and logged. If none is returned, `failed` is true when the outbox
    /// can't be read and false when it has no more events.
    std::vector<OutboxEvent> Read(int64_t after, size_t count, size_t bytes, bool* failed = nullptr);

    /// False if the events could not be removed, which is logged.
    bool Remove(const std::vector<OutboxEvent>& events);

    /// Also true if the outbox can't be opened. False while an event is kept in memory.
    bool IsEmpty();

    /// Number of events dropped since the file was created because the outbox was full. Stored in the file.
    int64_t Dropped();

private:
    bool EnsureOpen();
    bool OpenFile();
    bool MakeReady();
    bool ReadBounds();
    bool Quarantine();
    void Close();
    bool Insert(const std::string& id, const std::string& json);
    bool InsertRow(const std::string& id, const std::string& json);
    bool KeepOrRefuse(const char* what, const std::string& id, const std::string& json);
    bool WriteKept();
    bool IsFull() const;
    void DropOldest();
    bool FindOldest();
    bool InTransaction(const std::function<bool()>& work);
    std::vector<OutboxEvent> ReadRows(int64_t after, size_t count, size_t bytes, bool& failed);
    bool RecoverFromCorruption();
    bool Refuse(const char* what);

    const QString m_path;
    const OutboxOptions m_options;
    std::mutex m_mutex;
    CStoreLock m_lock;
    CSqliteConnection m_connection;
    CSqliteStatement m_insert;
    CSqliteStatement m_read;
    CSqliteStatement m_remove;
    CSqliteStatement m_dropOldest;
    CSqliteStatement m_oldest;
    CSqliteStatement m_countDropped;
    std::unique_ptr<CCheckpointer> m_pCheckpointer;
    bool m_bReady = false;
    bool m_bDropping = false;  // and logged
    int64_t m_nFirst = 0;      // number of the oldest event; 0 if there is none
    int64_t m_nBefore = 0;     // bytes of all events before the oldest
    int64_t m_nLast = 0;
    int64_t m_nBytes = 0;  // of all events up to the youngest one
    int64_t m_nDropped = 0;
    std::vector<std::pair<std::string, std::string>> m_kept;  // ids and events, while the file is locked
    size_t m_nKeptBytes = 0;
};
