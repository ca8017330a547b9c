#include "report/Outbox.h"

#include <algorithm>

#include "framework/HostLog.h"
#include "framework/JsonText.h"
#include "store/StoreFiles.h"
#include "store/StoreSchema.h"

namespace {

constexpr host::CHostLog kLog("Report");

constexpr int kVersion = 1;

// `before` is the number of bytes of all earlier events since the file was last empty. The size of a range of events
// is the difference of two values.
constexpr char kSchema[] =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE IF NOT EXISTS event (number INTEGER PRIMARY KEY, before INTEGER NOT NULL, id TEXT NOT NULL,"
    " json TEXT NOT NULL);"
    "CREATE TABLE IF NOT EXISTS dropped (one INTEGER PRIMARY KEY CHECK (one = 1), count INTEGER NOT NULL);"
    "INSERT OR IGNORE INTO dropped VALUES (1, 0);"
    "PRAGMA user_version=1;"
    "PRAGMA application_id=1515323393;"  // store_schema::MarkOf(1)
    "COMMIT";
constexpr char kInsertSql[] = "INSERT INTO event (number, before, id, json) VALUES (?, ?, ?, ?)";
constexpr char kReadSql[] = "SELECT number, id, json FROM event WHERE number > ? ORDER BY number LIMIT ?";
// The id is compared too: the numbers of a recreated file start again.
constexpr char kRemoveSql[] = "DELETE FROM event WHERE number = ? AND (id = ? OR typeof(id) <> 'text')";
constexpr char kDropOldestSql[] = "DELETE FROM event WHERE number = ?";
constexpr char kOldestSql[] = "SELECT number, before FROM event ORDER BY number LIMIT 1";
constexpr char kYoungestSql[] =
    "SELECT number, before + length(CAST(json AS BLOB)) FROM event ORDER BY number DESC LIMIT 1";
constexpr char kCountDroppedSql[] = "UPDATE dropped SET count = ?";

constexpr size_t kMaxKeptBytes = 4 << 20;

// Bytes that an event writes besides its text: its page.
constexpr qint64 kPageBytes = 4096;

bool IsWhole(const OutboxEvent& event) {
    std::string error;
    const auto parsed = host::ParseJson(event.json, error);
    return parsed && parsed->isObject() && !event.id.empty() && (*parsed)["id"] == Json::Value(event.id);
}

}  // namespace

COutbox::COutbox(QString path, const OutboxOptions& options)
    : m_path(std::move(path)), m_options(options), m_lock(m_path + QStringLiteral(".lock")) {}

COutbox::~COutbox() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_kept.empty() && !(EnsureOpen() && WriteKept())) {
        kLog.Error(FMT_STRING("{} events that waited for the outbox {} are lost"), m_kept.size(), m_path.toStdString());
    }
    Close();
}

void COutbox::Close() {
    m_bReady = false;
    for (CSqliteStatement* statement : {&m_insert, &m_read, &m_remove, &m_dropOldest, &m_oldest, &m_countDropped}) {
        statement->Finalize();
    }
    // Before the connection: the last connection to close takes a checkpoint, here.
    m_pCheckpointer.reset();
    m_connection.Close();
}

bool COutbox::EnsureOpen() {
    if (!m_bReady) {
        m_connection.SetError({});
        m_bReady = m_lock.Take() == CStoreLock::EnResult::kTaken && OpenFile();
        if (m_bReady) {
            m_pCheckpointer = std::make_unique<CCheckpointer>(m_path, m_options.checkpoints);
        }
    }
    return m_bReady;
}

bool COutbox::OpenFile() {
    Close();
    store_files::KeepDamagedLog(kLog, "outbox", m_path);
    const auto open = [this] { return m_connection.Open(m_path, EnSqliteAccess::kReadWrite) && MakeReady(); };
    return open() || (m_connection.IsCorrupt() && Quarantine() && open());
}

bool COutbox::MakeReady() {
    const store_schema::EnVersion version = store_schema::Judge(m_connection, kVersion);
    if (version == store_schema::EnVersion::kNewer) {
        kLog.Error(FMT_STRING("The outbox {} is of a newer version"), m_path.toStdString());
    }
    if (version != store_schema::EnVersion::kKnown) {
        return false;
    }
    return m_connection.Run("PRAGMA journal_mode=WAL") && m_connection.Run("PRAGMA synchronous=NORMAL") &&
           m_connection.Run("PRAGMA wal_autocheckpoint=0") && m_connection.Run(kSchema) &&
           store_schema::HasColumns(m_connection, "event", "number1,before0,id0,json0") &&
           store_schema::HasColumns(m_connection, "dropped", "one1,count0") &&
           m_connection.Prepare(m_insert, kInsertSql) && m_connection.Prepare(m_read, kReadSql) &&
           m_connection.Prepare(m_remove, kRemoveSql) && m_connection.Prepare(m_dropOldest, kDropOldestSql) &&
           m_connection.Prepare(m_oldest, kOldestSql) && m_connection.Prepare(m_countDropped, kCountDroppedSql) &&
           ReadBounds();
}

bool COutbox::ReadBounds() {
    CSqliteStatement youngest;
    const std::optional<int64_t> dropped = m_connection.Integer("SELECT count FROM dropped");
    if (!dropped || !m_connection.Prepare(youngest, kYoungestSql)) {
        return false;
    }
    youngest.Step();
    if (youngest.Failed()) {
        return false;
    }
    m_nDropped = *dropped;
    m_nLast = youngest.Integer(0).value_or(0);
    m_nBytes = youngest.Integer(1).value_or(0);
    return FindOldest();
}

bool COutbox::FindOldest() {
    m_oldest.Step();
    if (m_oldest.Failed()) {
        return false;
    }
    m_nFirst = m_oldest.Integer(0).value_or(0);
    m_nBefore = m_oldest.Integer(1).value_or(m_nBytes);
    m_oldest.Reset();
    return true;
}

bool COutbox::Quarantine() {
    const bool moved =
        store_files::QuarantineCorrupt(kLog, "outbox", m_path, m_connection.LastError(), m_pCheckpointer.get());
    if (moved) {
        Close();
    }
    return moved;
}

bool COutbox::Refuse(const char* what) {
    const std::string& reason = m_connection.LastError().reason;
    kLog.Error(FMT_STRING("{} the outbox {} failed: {}"), what, m_path.toStdString(),
               reason.empty() ? "it can't be used, or another client has it" : reason);
    return false;
}

bool COutbox::RecoverFromCorruption() {
    return m_bReady && m_connection.IsCorrupt() && Quarantine() && EnsureOpen();
}

bool COutbox::Add(const std::string& id, const std::string& json) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!EnsureOpen()) {
        return KeepOrRefuse("Opening", id, json);
    }
    // Older events are written first.
    if (!WriteKept() || (!Insert(id, json) && !(RecoverFromCorruption() && Insert(id, json)))) {
        return KeepOrRefuse("Writing to", id, json);
    }
    m_pCheckpointer->Written(qint64(json.size()) + kPageBytes);
    if (IsFull()) {
        DropOldest();
    }
    return true;
}

/// Returns false: the event is not written yet.
bool COutbox::KeepOrRefuse(const char* what, const std::string& id, const std::string& json) {
    if (m_connection.LastError().fault != EnSqliteFault::kBusy || m_nKeptBytes + json.size() > kMaxKeptBytes) {
        return Refuse(what);
    }
    if (m_kept.empty()) {
        kLog.Error(FMT_STRING("The outbox {} is locked by another program, events wait in memory"),
                   m_path.toStdString());
    }
    m_kept.emplace_back(id, json);
    m_nKeptBytes += json.size();
    return false;
}

bool COutbox::Insert(const std::string& id, const std::string& json) {
    const std::unique_lock<std::mutex> lock = m_pCheckpointer->LockForWrite();
    return InsertRow(id, json);
}

bool COutbox::WriteKept() {
    if (m_kept.empty()) {
        return true;
    }
    const bool written = InTransaction([this] {
        return std::all_of(m_kept.begin(), m_kept.end(),
                           [this](const auto& event) { return InsertRow(event.first, event.second); });
    });
    if (written) {
        kLog.Info(FMT_STRING("{} events that waited for the outbox {} are written"), m_kept.size(),
                  m_path.toStdString());
        m_pCheckpointer->Written(qint64(m_nKeptBytes) + qint64(m_kept.size()) * kPageBytes);
        m_kept.clear();
        m_nKeptBytes = 0;
    }
    return written;
}

bool COutbox::InsertRow(const std::string& id, const std::string& json) {
    if (!(m_insert.Bind(1, m_nLast + 1) && m_insert.Bind(2, m_nBytes) && m_insert.Bind(3, id) &&
          m_insert.Bind(4, json) && m_insert.Run())) {
        return false;
    }
    ++m_nLast;
    if (m_nFirst == 0) {
        m_nFirst = m_nLast;
        m_nBefore = m_nBytes;
    }
    m_nBytes += int64_t(json.size());
    return true;
}

bool COutbox::IsFull() const {
    return m_nFirst != 0 && (m_nLast - m_nFirst >= m_options.maxEvents || m_nBytes - m_nBefore > m_options.maxBytes);
}

// A failure loses no event, and the next Add tries again.
void COutbox::DropOldest() {
    const bool dropped = InTransaction([this] {
        while (IsFull()) {
            if (!m_dropOldest.Bind(1, m_nFirst) || !m_dropOldest.Run() || !FindOldest()) {
                return false;
            }
            ++m_nDropped;
        }
        return m_countDropped.Bind(1, m_nDropped) && m_countDropped.Run();
    });
    if (!dropped) {
        Refuse("Making room in");
        RecoverFromCorruption();
        return;
    }
    // One line per burst: the next one is logged after events were removed.
    if (!m_bDropping) {
        m_bDropping = true;
        kLog.Error(FMT_STRING("The outbox {} is full: its oldest events are dropped, {} so far"), m_path.toStdString(),
                   m_nDropped);
    }
}

bool COutbox::InTransaction(const std::function<bool()>& work) {
    const std::unique_lock<std::mutex> lock = m_pCheckpointer->LockForWrite();
    if (m_connection.InTransaction(work)) {
        return true;
    }
    if (!m_connection.IsCorrupt()) {
        // Without known bounds the next call opens the file again.
        m_bReady = ReadBounds();
    }
    return false;
}

std::vector<OutboxEvent> COutbox::ReadRows(int64_t after, size_t count, size_t bytes, bool& failed) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<OutboxEvent> rows;
    failed = !EnsureOpen();
    if (failed) {
        return rows;
    }
    WriteKept();
    size_t total = 0;
    const bool bound = m_read.Bind(1, after) && m_read.Bind(2, int64_t(count));
    while (bound && m_read.Step()) {
        OutboxEvent row{m_read.Integer(0).value_or(0), m_read.Text(1).value_or(""), m_read.Text(2).value_or("")};
        total += row.json.size();
        if (!rows.empty() && total > bytes) {
            m_read.Reset();
            return rows;
        }
        rows.push_back(std::move(row));
    }
    failed = m_read.Failed() || (rows.empty() && !m_kept.empty());
    if (m_read.Failed() && m_connection.IsCorrupt()) {
        rows.clear();
        failed = !RecoverFromCorruption();
    }
    return rows;
}

std::vector<OutboxEvent> COutbox::Read(int64_t after, size_t count, size_t bytes, bool* failed) {
    for (;;) {
        bool unreadable = false;
        std::vector<OutboxEvent> rows = ReadRows(after, count, bytes, unreadable);
        if (failed) {
            *failed = unreadable;
        }
        if (rows.empty()) {
            return rows;
        }
        after = rows.back().number;
        const auto spoilt = std::stable_partition(rows.begin(), rows.end(), IsWhole);
        const std::vector<OutboxEvent> dropped(spoilt, rows.end());
        rows.erase(spoilt, rows.end());
        if (!dropped.empty()) {
            kLog.Error(FMT_STRING("{} events in the outbox {} can't be read and are dropped"), dropped.size(),
                       m_path.toStdString());
            Remove(dropped);
        }
        if (!rows.empty()) {
            return rows;
        }
    }
}

bool COutbox::Remove(const std::vector<OutboxEvent>& events) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!EnsureOpen()) {
        return Refuse("Opening");
    }
    const bool removed = InTransaction([&] {
        return std::all_of(events.begin(), events.end(),
                           [this](const OutboxEvent& event) {
                               return m_remove.Bind(1, event.number) && m_remove.Bind(2, event.id) && m_remove.Run();
                           }) &&
               FindOldest();
    });
    if (!removed) {
        Refuse("Removing from");
        RecoverFromCorruption();
        return false;
    }
    m_pCheckpointer->Written(qint64(events.size()) * kPageBytes);
    m_bDropping = false;
    return true;
}

bool COutbox::IsEmpty() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_kept.empty() && (!EnsureOpen() || m_nFirst == 0);
}

int64_t COutbox::Dropped() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return EnsureOpen() ? m_nDropped : 0;
}
