#pragma once

#include <QObject>
#include <QSqlQuery>
#include <QString>
#include <memory>

#include "core/ILocalStore.h"
#include "store/Checkpointer.h"
#include "store/SqliteConnection.h"
#include "store/StoreLock.h"

/// Why the store takes no saves.
enum class EnStoreTrouble {
    kNone,
    kNotAvailable,  ///< nothing can be read either
    kReadOnly,      ///< file or folder
    kDiskFull,      ///< or it fails; clears itself at the first save that it takes again
    kSecondClient,  ///< another client has the folder, and keeps it until it ends
    kNewerFile,     ///< a later version of this program wrote it
};

/// The local configuration in one SQLite file. What a save acknowledged is in the write-ahead log, and
/// survives the process's end. Checkpoints are taken on a thread of the store's own. Main thread.
///
/// A damaged file, found at opening or at any later call, is moved aside with the day and time in its new
/// name, which the log says, and a new one is begun. Small files are checked whole before anything is read from
/// them; large ones on the store's thread, so that no start waits for that, and what it finds the next call heeds.
class CSqliteStore : public QObject, public ILocalStore {
    Q_OBJECT

public:
    /// Opens the file, or makes it. Where it can't be written the log says why, saves give false until they
    /// can be taken, what is there is read as far as possible, and the client goes on.
    explicit CSqliteStore(const QString& path, const CheckpointOptions& checkpoints = {});
    ~CSqliteStore() override;

    CSqliteStore(const CSqliteStore&) = delete;
    CSqliteStore& operator=(const CSqliteStore&) = delete;

    bool IsOpen() const { return m_pRead != nullptr; }
    EnStoreTrouble Trouble() const { return m_trouble; }

    bool ReadString(Owner owner, const std::string& key, std::string& value) override;
    bool SaveString(Owner owner, const std::string& key, const std::string& value) override;
    bool ReadInt64(const std::string& key, int64_t& value) override;
    bool SaveInt64(const std::string& key, int64_t value) override;

Q_SIGNALS:
    /// Inside the call that met it.
    void TroubleChanged(EnStoreTrouble trouble);

private:
    void Open();
    void Close();
    EnStoreTrouble OpenForWriting();
    bool MakeReadyForWriting();
    bool OpenForReading(EnSqliteAccess access);
    bool Prepare(std::unique_ptr<QSqlQuery>& query, const char* sql);
    bool StartAnew();
    void LeaveFileFoundDamaged();
    void SetTrouble(EnStoreTrouble trouble, const std::string& reason);

    QVariant Read(Owner owner, const std::string& key);
    bool Save(Owner owner, const std::string& key, const QVariant& value, qint64 bytes);
    EnSqliteFault Write(Owner owner, const std::string& key, const QVariant& value);

    const QString m_path;
    const CheckpointOptions m_checkpoints;
    CStoreLock m_lock;
    CSqliteConnection m_connection;
    std::unique_ptr<QSqlQuery> m_pRead;
    std::unique_ptr<QSqlQuery> m_pSave;  // only while the file can be written
    std::unique_ptr<CCheckpointer> m_pCheckpointer;
    bool m_bCheckLater = false;
    EnStoreTrouble m_trouble = EnStoreTrouble::kNone;
};
