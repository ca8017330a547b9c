#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "core/ILocalStore.h"
#include "store/Checkpointer.h"
#include "store/SqliteConnection.h"
#include "store/StoreLock.h"

/// Why the store refuses saves.
enum class EnStoreTrouble {
    kNone,
    kNotAvailable,  ///< reads fail too
    kReadOnly,      ///< permissions of the file or its folder
    kDiskFull,      ///< or a disk error; ends with the first save that succeeds
    kSecondClient,  ///< another client uses the folder until it ends
    kNewerFile,     ///< written by a later version of this program
    kLocked,        ///< by another program, as a backup
};

/// The local configuration in one SQLite file. An acknowledged save is in the write-ahead log and survives the end of
/// the process. Checkpoints run on a separate thread. Main thread.
///
/// While another program locks the file, saves return false, but their values are kept in memory, up to 1 MiB. Reads
/// return them, and they are written as soon as the lock is gone.
///
/// A corrupt file, found when opening or in any later call, is renamed with date and time, logged, and replaced by a
/// new one. A file with another schema counts as corrupt. Small files are verified before the first read; large ones in
/// the background, so that the start does not wait, and the next call handles the result.
class CSqliteStore : public QObject, public ILocalStore {
    Q_OBJECT

public:
    /// Opens or creates the file. If it can't be written, the reason is logged, saves return false until they succeed
    /// again, and existing values are read as far as possible.
    explicit CSqliteStore(const QString& path, const CheckpointOptions& checkpoints = {});
    ~CSqliteStore() override;

    CSqliteStore(const CSqliteStore&) = delete;
    CSqliteStore& operator=(const CSqliteStore&) = delete;

    bool IsOpen() const { return m_read.IsPrepared(); }
    EnStoreTrouble Trouble() const { return m_trouble; }

    bool ReadString(Owner owner, const std::string& key, std::string& value) override;
    bool SaveString(Owner owner, const std::string& key, const std::string& value) override;
    bool ReadInt64(const std::string& key, int64_t& value) override;
    bool SaveInt64(const std::string& key, int64_t value) override;

Q_SIGNALS:
    /// Emitted inside the call that detects the change.
    void TroubleChanged(EnStoreTrouble trouble);

private:
    void Open();
    void Close();
    EnStoreTrouble OpenForWriting();
    bool MakeReadyForWriting();
    bool OpenForReading(EnSqliteAccess access);
    bool Quarantine();
    bool Recreate();
    void ReplaceCorruptFile();
    void SetTrouble(EnStoreTrouble trouble, const std::string& reason);

    using Value = std::variant<int64_t, std::string>;
    using Place = std::pair<std::string, std::string>;  // owner and key
    std::optional<Value> Read(Owner owner, const std::string& key);
    std::optional<Value> ReadFile(const Place& place);
    bool Save(Owner owner, const std::string& key, const Value& value);
    bool SaveIntoFile(const Place& place, const Value& value);
    EnSqliteFault Write(const Place& place, const Value& value);
    void Keep(const Place& place, const Value& value);
    bool WriteKept();

    const QString m_path;
    const CheckpointOptions m_checkpoints;
    CStoreLock m_lock;
    CSqliteConnection m_connection;
    CSqliteStatement m_read;
    CSqliteStatement m_save;  // prepared only while the file is writable
    std::unique_ptr<CCheckpointer> m_pCheckpointer;
    bool m_bCheckLater = false;
    EnStoreTrouble m_trouble = EnStoreTrouble::kNone;
    std::map<Place, Value> m_kept;  // while the file is locked
    QTimer m_keptTimer;
};
