#include "store/SqliteStore.h"

#include <QVariant>

#include "framework/HostLog.h"
#include "store/StoreFiles.h"
#include "store/StoreSchema.h"

namespace {

constexpr host::CHostLog kLog("Store");

constexpr char kReadSql[] = "SELECT value FROM config WHERE owner = ? AND key = ?";
constexpr char kSaveSql[] =
    "INSERT INTO config (owner, key, value) VALUES (?, ?, ?)"
    " ON CONFLICT (owner, key) DO UPDATE SET value = excluded.value";

// A check reads the whole file: about a millisecond for this, and twenty times that from a cold disk.
constexpr qint64 kCheckedAtOnceBytes = 2 << 20;

// What a save writes beside its value: the pages that lead to it.
constexpr qint64 kPagesPerSaveBytes = 2 * 4096;

// The installation's values stand beside those of the users, whose ids are numbers.
QVariant OwnerText(ILocalStore::Owner owner) {
    return owner ? QString::number(*owner) : QStringLiteral("app");
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

const char* WordsOf(EnStoreTrouble trouble) {
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
    m_pRead.reset();
    m_pSave.reset();
    // Before the connection: the last one to close would take the checkpoint here, on the main thread.
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
    const std::string reason = ReasonOf(m_connection.LastError());
    // In a folder that takes no new file the log's index can't be made; without a log none is needed.
    const bool readable = OpenForReading(EnSqliteAccess::kReadOnly) ||
                          (trouble != EnStoreTrouble::kSecondClient && !store_files::HasLog(m_path) &&
                           OpenForReading(EnSqliteAccess::kImmutable));
    if (readable && trouble == EnStoreTrouble::kNotAvailable) {
        trouble = EnStoreTrouble::kReadOnly;
    } else if (!readable && trouble == EnStoreTrouble::kReadOnly) {
        trouble = EnStoreTrouble::kNotAvailable;
    }
    SetTrouble(trouble, readable || !reason.empty() ? reason : ReasonOf(m_connection.LastError()));
}

EnStoreTrouble CSqliteStore::OpenForWriting() {
    m_bCheckLater = store_files::Bytes(m_path) > kCheckedAtOnceBytes;
    bool ready = m_connection.Open(m_path, EnSqliteAccess::kReadWrite);
    const int version = ready ? store_schema::VersionOf(m_connection) : -1;
    if (version > store_schema::Latest()) {
        return EnStoreTrouble::kNewerFile;
    }
    ready = version >= 0 && MakeReadyForWriting();
    if (!ready && FaultOf(m_connection.LastError()) == EnSqliteFault::kCorrupt && StartAnew()) {
        m_bCheckLater = false;
        ready = m_connection.Open(m_path, EnSqliteAccess::kReadWrite) && MakeReadyForWriting();
    }
    return ready ? EnStoreTrouble::kNone : TroubleOf(FaultOf(m_connection.LastError()));
}

bool CSqliteStore::MakeReadyForWriting() {
    return (m_bCheckLater || m_connection.Check()) && m_connection.Run(QStringLiteral("PRAGMA journal_mode=WAL")) &&
           m_connection.Run(QStringLiteral("PRAGMA synchronous=NORMAL")) &&
           m_connection.Run(QStringLiteral("PRAGMA wal_autocheckpoint=0")) &&
           store_schema::Migrate(m_connection, store_schema::Steps()) && Prepare(m_pRead, kReadSql) &&
           Prepare(m_pSave, kSaveSql);
}

bool CSqliteStore::OpenForReading(EnSqliteAccess access) {
    m_pRead.reset();
    m_pSave.reset();
    return m_connection.Open(m_path, access) && Prepare(m_pRead, kReadSql);
}

bool CSqliteStore::Prepare(std::unique_ptr<QSqlQuery>& query, const char* sql) {
    query = std::make_unique<QSqlQuery>(m_connection.Database());
    query->setForwardOnly(true);
    if (!query->prepare(QString::fromLatin1(sql))) {
        m_connection.SetError(query->lastError());
        query.reset();
    }
    return query != nullptr;
}

// Renamed before the connection is closed, which would else write to the log and remove it.
bool CSqliteStore::StartAnew() {
    const std::string reason = ReasonOf(m_connection.LastError());
    if (m_pCheckpointer) {
        m_pCheckpointer->Abandon();
        m_pCheckpointer.reset();
    }
    const QString aside = store_files::MoveAside(m_path, QDateTime::currentDateTimeUtc());
    if (aside.isEmpty()) {
        kLog.Error(FMT_STRING("The store {} is damaged and can't be moved aside: {}"), m_path.toStdString(), reason);
        m_pSave.reset();  // there is no checkpointer any more; the next save opens the file anew
        return false;
    }
    kLog.Error(FMT_STRING("The store {} is damaged and was moved to {}: {}"), m_path.toStdString(), aside.toStdString(),
               reason);
    Close();
    return true;
}

void CSqliteStore::SetTrouble(EnStoreTrouble trouble, const std::string& reason) {
    if (trouble == m_trouble) {
        return;
    }
    m_trouble = trouble;
    if (trouble == EnStoreTrouble::kNone) {
        kLog.Info(FMT_STRING("The store {} {}"), m_path.toStdString(), WordsOf(trouble));
    } else {
        kLog.Error(FMT_STRING("The store {} {}{}{}"), m_path.toStdString(), WordsOf(trouble),
                   reason.empty() ? "" : ": ", reason);
    }
    Q_EMIT TroubleChanged(trouble);
}

void CSqliteStore::LeaveFileFoundDamaged() {
    const std::optional<QSqlError> damage = m_pCheckpointer ? m_pCheckpointer->Damage() : std::nullopt;
    if (damage) {
        m_connection.SetError(*damage);
        if (StartAnew()) {
            Open();
        }
    }
}

QVariant CSqliteStore::Read(Owner owner, const std::string& key) {
    LeaveFileFoundDamaged();
    if (!m_pRead) {
        return {};
    }
    m_pRead->bindValue(0, OwnerText(owner));
    m_pRead->bindValue(1, QString::fromStdString(key));
    QVariant value;
    const bool read = m_pRead->exec();
    if (read && m_pRead->next()) {
        value = m_pRead->value(0);
    }
    const QSqlError error = m_pRead->lastError();
    m_pRead->finish();
    if (error.isValid()) {
        m_connection.SetError(error);
        kLog.Error(FMT_STRING("Reading {} failed: {}"), key, ReasonOf(error));
        if (m_pSave && FaultOf(error) == EnSqliteFault::kCorrupt && StartAnew()) {
            Open();
        }
        return {};
    }
    return value;
}

bool CSqliteStore::Save(Owner owner, const std::string& key, const QVariant& value, qint64 bytes) {
    LeaveFileFoundDamaged();
    // What kept the file from being opened for writing may be over. A newer file stays newer.
    if (!m_pSave && m_trouble != EnStoreTrouble::kNewerFile) {
        Open();
    }
    if (!m_pSave) {
        return false;
    }
    EnSqliteFault fault = Write(owner, key, value);
    if (fault == EnSqliteFault::kCorrupt && StartAnew()) {
        Open();
        fault = m_pSave ? Write(owner, key, value) : EnSqliteFault::kOther;
    }
    if (fault != EnSqliteFault::kNone) {
        if (fault == EnSqliteFault::kCantWrite || fault == EnSqliteFault::kReadOnly) {
            SetTrouble(TroubleOf(fault), ReasonOf(m_connection.LastError()));
        }
        if (fault == EnSqliteFault::kReadOnly) {
            m_pSave.reset();  // the file is not the one that was opened; the next save looks for it anew
        }
        return false;
    }
    m_pCheckpointer->Written(bytes + kPagesPerSaveBytes);
    SetTrouble(EnStoreTrouble::kNone, {});
    return true;
}

EnSqliteFault CSqliteStore::Write(Owner owner, const std::string& key, const QVariant& value) {
    m_pSave->bindValue(0, OwnerText(owner));
    m_pSave->bindValue(1, QString::fromStdString(key));
    m_pSave->bindValue(2, value);
    const std::unique_lock<std::mutex> turn = m_pCheckpointer->TakeTurn();
    if (m_pSave->exec()) {
        m_pSave->finish();
        return EnSqliteFault::kNone;
    }
    const QSqlError error = m_pSave->lastError();
    m_pSave->finish();
    m_connection.SetError(error);
    kLog.Error(FMT_STRING("Saving {} failed: {}"), key, ReasonOf(error));
    return FaultOf(error);
}

bool CSqliteStore::ReadString(Owner owner, const std::string& key, std::string& value) {
    const QVariant stored = Read(owner, key);
    if (stored.type() != QVariant::ByteArray) {
        return false;
    }
    value = stored.toByteArray().toStdString();
    return true;
}

bool CSqliteStore::SaveString(Owner owner, const std::string& key, const std::string& value) {
    // Not null even when empty: an empty text is a value. No copy: it is bound only for the length of the call.
    const auto bytes = value.empty() ? QByteArray("") : QByteArray::fromRawData(value.data(), int(value.size()));
    return Save(owner, key, bytes, bytes.size());
}

bool CSqliteStore::ReadInt64(const std::string& key, int64_t& value) {
    const QVariant stored = Read(std::nullopt, key);
    if (stored.type() != QVariant::LongLong) {
        return false;
    }
    value = stored.toLongLong();
    return true;
}

bool CSqliteStore::SaveInt64(const std::string& key, int64_t value) {
    return Save(std::nullopt, key, qlonglong(value), sizeof(value));
}
