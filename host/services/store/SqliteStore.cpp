#include "store/SqliteStore.h"

#include "framework/HostLog.h"
#include "store/StoreFiles.h"
#include "store/StoreSchema.h"

namespace {

constexpr host::CHostLog kLog("Store");

constexpr char kReadSql[] = "SELECT value FROM config WHERE owner = ? AND key = ?";
constexpr char kSaveSql[] =
    "INSERT INTO config (owner, key, value) VALUES (?, ?, ?)"
    " ON CONFLICT (owner, key) DO UPDATE SET value = excluded.value";

// A check reads the whole file: a file of this size takes about 1 ms, or 20 ms from a cold disk.
constexpr qint64 kMaxBytesCheckedAtStart = 2 << 20;

// Bytes of index pages that a save writes besides its value.
constexpr qint64 kPagesPerSaveBytes = 2 * 4096;

// Values of the installation share the table with those of users, whose ids are numbers.
std::string OwnerText(ILocalStore::Owner owner) {
    return owner ? std::to_string(*owner) : "app";
}

EnStoreTrouble TroubleOf(EnSqliteFault fault) {
    switch (fault) {
        case EnSqliteFault::kNone:
            return EnStoreTrouble::kNone;
        case EnSqliteFault::kCantWrite:
            return EnStoreTrouble::kDiskFull;
        case EnSqliteFault::kReadOnly:
            return EnStoreTrouble::kReadOnly;
        case EnSqliteFault::kCorrupt:
        case EnSqliteFault::kOther:
            break;
    }
    return EnStoreTrouble::kNotAvailable;
}

const char* TextOf(EnStoreTrouble trouble) {
    switch (trouble) {
        case EnStoreTrouble::kNone:
            return "takes saves again";
        case EnStoreTrouble::kNotAvailable:
            return "is not available";
        case EnStoreTrouble::kReadOnly:
            return "is read-only, nothing is saved";
        case EnStoreTrouble::kDiskFull:
            return "can't be written, the disk is full or fails, nothing is saved";
        case EnStoreTrouble::kSecondClient:
            return "is in use by another client, nothing is saved";
        case EnStoreTrouble::kNewerFile:
            return "is of a newer version, nothing is saved";
    }
    return "";
}

}  // namespace

CSqliteStore::CSqliteStore(const QString& path, const CheckpointOptions& checkpoints)
    : m_path(path), m_checkpoints(checkpoints), m_lock(path + QStringLiteral(".lock")) {
    Open();
}

CSqliteStore::~CSqliteStore() {
    Close();
}

void CSqliteStore::Close() {
    m_read.Finalize();
    m_save.Finalize();
    // Before the connection: the last connection to close takes a checkpoint, here on the main thread.
    m_pCheckpointer.reset();
    m_connection.Close();
}

void CSqliteStore::Open() {
    Close();
    m_connection.SetError({});
    EnStoreTrouble trouble = EnStoreTrouble::kNotAvailable;
    switch (m_lock.Take()) {
        case CStoreLock::EnResult::kTaken:
            trouble = OpenForWriting();
            break;
        case CStoreLock::EnResult::kHeldElsewhere:
            trouble = EnStoreTrouble::kSecondClient;
            break;
        case CStoreLock::EnResult::kReadOnly:
            trouble = EnStoreTrouble::kReadOnly;
            break;
        case CStoreLock::EnResult::kFailed:
            break;
    }
    if (trouble == EnStoreTrouble::kNone) {
        m_pCheckpointer = std::make_unique<CCheckpointer>(m_path, m_checkpoints, m_bCheckLater);
        SetTrouble(trouble, {});
        return;
    }
    const std::string reason = m_connection.LastError().reason;
    // In a read-only folder the log's index can't be created. Without a log none is needed.
    const bool readable = OpenForReading(EnSqliteAccess::kReadOnly) ||
                          (trouble != EnStoreTrouble::kSecondClient && !store_files::HasLog(m_path) &&
                           OpenForReading(EnSqliteAccess::kImmutable));
    if (readable && trouble == EnStoreTrouble::kNotAvailable) {
        trouble = EnStoreTrouble::kReadOnly;
    } else if (!readable && trouble == EnStoreTrouble::kReadOnly) {
        trouble = EnStoreTrouble::kNotAvailable;
    }
    SetTrouble(trouble, readable || !reason.empty() ? reason : m_connection.LastError().reason);
}

EnStoreTrouble CSqliteStore::OpenForWriting() {
    m_bCheckLater = store_files::Bytes(m_path) > kMaxBytesCheckedAtStart;
    bool ready = m_connection.Open(m_path, EnSqliteAccess::kReadWrite);
    const int version = ready ? store_schema::VersionOf(m_connection) : -1;
    if (version > store_schema::Latest()) {
        return EnStoreTrouble::kNewerFile;
    }
    ready = version >= 0 && MakeReadyForWriting();
    if (!ready && m_connection.IsCorrupt() && Quarantine()) {
        m_bCheckLater = false;
        ready = m_connection.Open(m_path, EnSqliteAccess::kReadWrite) && MakeReadyForWriting();
    }
    return ready ? EnStoreTrouble::kNone : TroubleOf(m_connection.LastError().fault);
}

bool CSqliteStore::MakeReadyForWriting() {
    return (m_bCheckLater || m_connection.Check()) && m_connection.Run("PRAGMA journal_mode=WAL") &&
           m_connection.Run("PRAGMA synchronous=NORMAL") && m_connection.Run("PRAGMA wal_autocheckpoint=0") &&
           store_schema::Migrate(m_connection, store_schema::Steps()) && m_connection.Prepare(m_read, kReadSql) &&
           m_connection.Prepare(m_save, kSaveSql);
}

bool CSqliteStore::OpenForReading(EnSqliteAccess access) {
    m_read.Finalize();
    m_save.Finalize();
    return m_connection.Open(m_path, access) && m_connection.Prepare(m_read, kReadSql);
}

bool CSqliteStore::Quarantine() {
    const bool moved =
        store_files::QuarantineCorrupt(kLog, "store", m_path, m_connection.LastError(), m_pCheckpointer.get());
    m_pCheckpointer.reset();
    if (moved) {
        Close();
    } else {
        m_save.Finalize();  // it needs the checkpointer; the next save opens the file again
    }
    return moved;
}

bool CSqliteStore::Recreate() {
    const bool moved = Quarantine();
    if (moved) {
        Open();
    }
    return moved;
}

void CSqliteStore::SetTrouble(EnStoreTrouble trouble, const std::string& reason) {
    if (trouble == m_trouble) {
        return;
    }
    m_trouble = trouble;
    if (trouble == EnStoreTrouble::kNone) {
        kLog.Info(FMT_STRING("The store {} {}"), m_path.toStdString(), TextOf(trouble));
    } else {
        kLog.Error(FMT_STRING("The store {} {}{}{}"), m_path.toStdString(), TextOf(trouble), reason.empty() ? "" : ": ",
                   reason);
    }
    Q_EMIT TroubleChanged(trouble);
}

void CSqliteStore::ReplaceCorruptFile() {
    if (const std::optional<SqliteError> damage = m_pCheckpointer ? m_pCheckpointer->Damage() : std::nullopt) {
        m_connection.SetError(*damage);
        Recreate();
    }
}

bool CSqliteStore::Read(Owner owner, const std::string& key, const std::function<bool()>& take) {
    ReplaceCorruptFile();
    if (!m_read.IsPrepared()) {
        return false;
    }
    const std::string ownerText = OwnerText(owner);
    if (m_read.Bind(1, ownerText) && m_read.Bind(2, key) && m_read.Step()) {
        const bool taken = take();
        m_read.Reset();
        return taken;
    }
    if (m_read.Failed()) {
        kLog.Error(FMT_STRING("Reading {} failed: {}"), key, m_connection.LastError().reason);
        if (m_save.IsPrepared() && m_connection.IsCorrupt()) {
            Recreate();
        }
    }
    return false;
}

bool CSqliteStore::Save(Owner owner, const std::string& key, const Bind& bindValue, qint64 bytes) {
    ReplaceCorruptFile();
    // The reason why the file could not be opened for writing may be gone. A newer file stays newer.
    if (!m_save.IsPrepared() && m_trouble != EnStoreTrouble::kNewerFile) {
        Open();
    }
    if (!m_save.IsPrepared()) {
        return false;
    }
    EnSqliteFault fault = Write(owner, key, bindValue);
    if (fault == EnSqliteFault::kCorrupt && Recreate()) {
        fault = m_save.IsPrepared() ? Write(owner, key, bindValue) : EnSqliteFault::kOther;
    }
    if (fault != EnSqliteFault::kNone) {
        if (fault == EnSqliteFault::kCantWrite || fault == EnSqliteFault::kReadOnly) {
            SetTrouble(TroubleOf(fault), m_connection.LastError().reason);
        }
        if (fault == EnSqliteFault::kReadOnly) {
            m_save.Finalize();  // the path names another file now; the next save opens it
        }
        return false;
    }
    m_pCheckpointer->Written(bytes + kPagesPerSaveBytes);
    SetTrouble(EnStoreTrouble::kNone, {});
    return true;
}

EnSqliteFault CSqliteStore::Write(Owner owner, const std::string& key, const Bind& bindValue) {
    const std::string ownerText = OwnerText(owner);
    const std::unique_lock<std::mutex> lock = m_pCheckpointer->LockForWrite();
    if (m_save.Bind(1, ownerText) && m_save.Bind(2, key) && bindValue(m_save, 3) && m_save.Run()) {
        return EnSqliteFault::kNone;
    }
    kLog.Error(FMT_STRING("Saving {} failed: {}"), key, m_connection.LastError().reason);
    return m_connection.LastError().fault;
}

bool CSqliteStore::ReadString(Owner owner, const std::string& key, std::string& value) {
    return Read(owner, key, [&] {
        std::optional<std::string> stored = m_read.Blob(0);
        value = stored ? std::move(*stored) : value;
        return stored.has_value();
    });
}

bool CSqliteStore::SaveString(Owner owner, const std::string& key, const std::string& value) {
    const auto bindValue = [&](CSqliteStatement& save, int parameter) { return save.BindBlob(parameter, value); };
    return Save(owner, key, bindValue, qint64(value.size()));
}

bool CSqliteStore::ReadInt64(const std::string& key, int64_t& value) {
    return Read(std::nullopt, key, [&] {
        const std::optional<int64_t> stored = m_read.Integer(0);
        value = stored.value_or(value);
        return stored.has_value();
    });
}

bool CSqliteStore::SaveInt64(const std::string& key, int64_t value) {
    const auto bindValue = [&](CSqliteStatement& save, int parameter) { return save.Bind(parameter, value); };
    return Save(std::nullopt, key, bindValue, sizeof(value));
}
