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

// Tries to write what is kept in memory.
constexpr int kKeptRetryMs = 1'000;
constexpr size_t kMaxKeptBytes = 1 << 20;

constexpr char kColumns[] = "owner1,key2,value0";

template <class Value>
size_t BytesOf(const Value& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text ? text->size() : sizeof(int64_t);
}

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
        case EnSqliteFault::kBusy:
            return EnStoreTrouble::kLocked;
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
        case EnStoreTrouble::kLocked:
            return "is locked by another program, saves wait in memory";
    }
    return "";
}

}  // namespace

CSqliteStore::CSqliteStore(const QString& path, const CheckpointOptions& checkpoints)
    : m_path(path), m_checkpoints(checkpoints), m_lock(path + QStringLiteral(".lock")) {
    m_keptTimer.setInterval(kKeptRetryMs);
    connect(&m_keptTimer, &QTimer::timeout, this, &CSqliteStore::WriteKept);
    Open();
}

CSqliteStore::~CSqliteStore() {
    if (!WriteKept()) {
        kLog.Error(FMT_STRING("{} values that waited for the store {} are lost"), m_kept.size(), m_path.toStdString());
    }
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
    store_files::KeepDamagedLog(kLog, "store", m_path);
    bool ready = m_connection.Open(m_path, EnSqliteAccess::kReadWrite);
    if (ready) {
        const store_schema::EnVersion version = store_schema::Judge(m_connection, store_schema::Latest());
        if (version == store_schema::EnVersion::kNewer) {
            return EnStoreTrouble::kNewerFile;
        }
        ready = version == store_schema::EnVersion::kKnown && MakeReadyForWriting();
    }
    if (!ready && m_connection.IsCorrupt() && Quarantine()) {
        m_bCheckLater = false;
        ready = m_connection.Open(m_path, EnSqliteAccess::kReadWrite) && MakeReadyForWriting();
    }
    return ready ? EnStoreTrouble::kNone : TroubleOf(m_connection.LastError().fault);
}

bool CSqliteStore::MakeReadyForWriting() {
    return (m_bCheckLater || m_connection.Check()) && m_connection.Run("PRAGMA journal_mode=WAL") &&
           m_connection.Run("PRAGMA synchronous=NORMAL") && m_connection.Run("PRAGMA wal_autocheckpoint=0") &&
           store_schema::Migrate(m_connection, store_schema::Steps()) &&
           store_schema::HasColumns(m_connection, "config", kColumns) && m_connection.Prepare(m_read, kReadSql) &&
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

std::optional<CSqliteStore::Value> CSqliteStore::Read(Owner owner, const std::string& key) {
    const Place place(OwnerText(owner), key);
    const auto kept = m_kept.find(place);
    return kept != m_kept.end() ? std::make_optional(kept->second) : ReadFile(place);
}

std::optional<CSqliteStore::Value> CSqliteStore::ReadFile(const Place& place) {
    ReplaceCorruptFile();
    std::optional<Value> value;
    if (!m_read.IsPrepared()) {
        return value;
    }
    if (m_read.Bind(1, place.first) && m_read.Bind(2, place.second) && m_read.Step()) {
        if (const auto number = m_read.Integer(0)) {
            value = *number;
        } else if (auto bytes = m_read.Blob(0)) {
            value = std::move(*bytes);
        }
        m_read.Reset();
        return value;
    }
    if (m_read.Failed()) {
        kLog.Error(FMT_STRING("Reading {} failed: {}"), place.second, m_connection.LastError().reason);
        if (m_save.IsPrepared() && m_connection.IsCorrupt()) {
            Recreate();
        }
    }
    return value;
}

bool CSqliteStore::Save(Owner owner, const std::string& key, const Value& value) {
    ReplaceCorruptFile();
    const Place place(OwnerText(owner), key);
    // Older values are written first.
    const bool saved = WriteKept() && SaveIntoFile(place, value);
    if (!saved && m_trouble == EnStoreTrouble::kLocked) {
        Keep(place, value);
    }
    return saved;
}

bool CSqliteStore::SaveIntoFile(const Place& place, const Value& value) {
    // The reason why the file could not be opened for writing may be gone. A newer file stays newer.
    if (!m_save.IsPrepared() && m_trouble != EnStoreTrouble::kNewerFile) {
        Open();
    }
    if (!m_save.IsPrepared()) {
        return false;
    }
    EnSqliteFault fault = Write(place, value);
    if (fault == EnSqliteFault::kCorrupt && Recreate()) {
        fault = m_save.IsPrepared() ? Write(place, value) : EnSqliteFault::kOther;
    }
    if (fault != EnSqliteFault::kNone) {
        if (fault != EnSqliteFault::kCorrupt && fault != EnSqliteFault::kOther) {
            SetTrouble(TroubleOf(fault), m_connection.LastError().reason);
        }
        if (fault == EnSqliteFault::kReadOnly) {
            m_save.Finalize();  // the path names another file now; the next save opens it
        }
        return false;
    }
    m_pCheckpointer->Written(qint64(BytesOf(value)) + kPagesPerSaveBytes);
    SetTrouble(EnStoreTrouble::kNone, {});
    return true;
}

EnSqliteFault CSqliteStore::Write(const Place& place, const Value& value) {
    const std::unique_lock<std::mutex> lock = m_pCheckpointer->LockForWrite();
    const auto bind = [this](const auto& bound) {
        if constexpr (std::is_same_v<std::decay_t<decltype(bound)>, std::string>) {
            return m_save.BindBlob(3, bound);
        } else {
            return m_save.Bind(3, bound);
        }
    };
    if (m_save.Bind(1, place.first) && m_save.Bind(2, place.second) && std::visit(bind, value) && m_save.Run()) {
        return EnSqliteFault::kNone;
    }
    if (m_connection.LastError().fault != EnSqliteFault::kBusy) {
        kLog.Error(FMT_STRING("Saving {} failed: {}"), place.second, m_connection.LastError().reason);
    }
    return m_connection.LastError().fault;
}

void CSqliteStore::Keep(const Place& place, const Value& value) {
    size_t bytes = place.first.size() + place.second.size() + BytesOf(value);
    for (const auto& [otherPlace, other] : m_kept) {
        bytes += otherPlace == place ? 0 : otherPlace.first.size() + otherPlace.second.size() + BytesOf(other);
    }
    if (bytes > kMaxKeptBytes) {
        kLog.Error(FMT_STRING("Saving {} failed: too much waits for the locked store"), place.second);
        return;
    }
    m_kept[place] = value;
    m_keptTimer.start();
}

/// Returns whether nothing is left to be written.
bool CSqliteStore::WriteKept() {
    while (!m_kept.empty()) {
        const auto first = m_kept.begin();
        if (!SaveIntoFile(first->first, first->second)) {
            return false;
        }
        m_kept.erase(first);
    }
    m_keptTimer.stop();
    return true;
}

bool CSqliteStore::ReadString(Owner owner, const std::string& key, std::string& value) {
    std::optional<Value> stored = Read(owner, key);
    auto* text = stored ? std::get_if<std::string>(&*stored) : nullptr;
    value = text ? std::move(*text) : value;
    return text != nullptr;
}

bool CSqliteStore::SaveString(Owner owner, const std::string& key, const std::string& value) {
    return Save(owner, key, value);
}

bool CSqliteStore::ReadInt64(const std::string& key, int64_t& value) {
    const std::optional<Value> stored = Read(std::nullopt, key);
    const auto* number = stored ? std::get_if<int64_t>(&*stored) : nullptr;
    value = number ? *number : value;
    return number != nullptr;
}

bool CSqliteStore::SaveInt64(const std::string& key, int64_t value) {
    return Save(std::nullopt, key, value);
}
