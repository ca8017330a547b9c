#include "report/Outbox.h"

#include <QDateTime>
#include <QFile>
#include <algorithm>

#include "framework/HostLog.h"
#include "framework/JsonText.h"
#include "store/StoreFiles.h"

namespace {

constexpr host::CHostLog kLog("Report");

constexpr int kVersion = 1;

// `before` is the bytes of all events before this one since the file was last empty: what lies between two
// events is known without a look at those between.
constexpr char kSchema[] =
    "BEGIN IMMEDIATE;"
    "CREATE TABLE IF NOT EXISTS event (number INTEGER PRIMARY KEY, before INTEGER NOT NULL, id TEXT NOT NULL,"
    " json TEXT NOT NULL);"
    "CREATE TABLE IF NOT EXISTS dropped (one INTEGER PRIMARY KEY CHECK (one = 1), count INTEGER NOT NULL);"
    "INSERT OR IGNORE INTO dropped VALUES (1, 0);"
    "PRAGMA user_version=1;"
    "COMMIT";
constexpr char kInsertSql[] = "INSERT INTO event (number, before, id, json) VALUES (?, ?, ?, ?)";
constexpr char kReadSql[] = "SELECT number, id, json FROM event WHERE number > ? ORDER BY number LIMIT ?";
// By its id too: a file that was begun anew in between counts from the start.
constexpr char kRemoveSql[] = "DELETE FROM event WHERE number = ? AND (id = ? OR typeof(id) <> 'text')";
constexpr char kDropOldestSql[] = "DELETE FROM event WHERE number = ?";
constexpr char kOldestSql[] = "SELECT number, before FROM event ORDER BY number LIMIT 1";
constexpr char kYoungestSql[] =
    "SELECT number, before + length(CAST(json AS BLOB)) FROM event ORDER BY number DESC LIMIT 1";
constexpr char kCountDroppedSql[] = "UPDATE dropped SET count = ?";

// What an event writes beside itself: the page that it stands on.
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
    Close();
}

void COutbox::Close() {
    m_bReady = false;
    for (CSqliteStatement* statement : {&m_insert, &m_read, &m_remove, &m_dropOldest, &m_oldest, &m_countDropped}) {
        *statement = CSqliteStatement();
    }
    // Before the file: the last one to close would take the checkpoint here.
    m_pCheckpointer.reset();
    m_file.Close();
}

bool COutbox::EnsureOpen() {
    if (!m_bReady) {
        m_bReady = m_lock.Take() == CStoreLock::EnResult::kTaken && OpenFile();
        if (m_bReady) {
            m_pCheckpointer = std::make_unique<CCheckpointer>(m_path, m_options.checkpoints);
        }
    }
    return m_bReady;
}

bool COutbox::OpenFile() {
    Close();
    if (m_file.Open(QFile::encodeName(m_path).toStdString()) && MakeReady()) {
        return true;
    }
    return m_file.IsDamaged() && StartAnew() && m_file.Open(QFile::encodeName(m_path).toStdString()) && MakeReady();
}

bool COutbox::MakeReady() {
    CSqliteStatement version;
    if (!m_file.Prepare(version, "PRAGMA user_version") || !version.Step()) {
        return false;
    }
    if (version.Integer(0) > kVersion) {
        kLog.Error(FMT_STRING("The outbox {} is of a newer version"), m_path.toStdString());
        return false;
    }
    version.Reset();
    return m_file.Run("PRAGMA journal_mode=WAL") && m_file.Run("PRAGMA synchronous=NORMAL") &&
           m_file.Run("PRAGMA wal_autocheckpoint=0") && m_file.Run(kSchema) && m_file.Prepare(m_insert, kInsertSql) &&
           m_file.Prepare(m_read, kReadSql) && m_file.Prepare(m_remove, kRemoveSql) &&
           m_file.Prepare(m_dropOldest, kDropOldestSql) && m_file.Prepare(m_oldest, kOldestSql) &&
           m_file.Prepare(m_countDropped, kCountDroppedSql) && ReadBounds();
}

bool COutbox::ReadBounds() {
    CSqliteStatement youngest;
    CSqliteStatement dropped;
    if (!m_file.Prepare(youngest, kYoungestSql) || !m_file.Prepare(dropped, "SELECT count FROM dropped") ||
        !dropped.Step()) {
        return false;
    }
    const bool any = youngest.Step();
    if (youngest.Failed()) {
        return false;
    }
    m_nDropped = dropped.Integer(0);
    m_nLast = any ? youngest.Integer(0) : 0;
    m_nBytes = any ? youngest.Integer(1) : 0;
    return FindOldest();
}

bool COutbox::FindOldest() {
    const bool found = m_oldest.Step();
    if (m_oldest.Failed()) {
        return false;
    }
    m_nFirst = found ? m_oldest.Integer(0) : 0;
    m_nBefore = found ? m_oldest.Integer(1) : m_nBytes;
    m_oldest.Reset();
    return true;
}

// Renamed before the file is closed, which would else write to the log and remove it.
bool COutbox::StartAnew() {
    const std::string reason = m_file.Reason();
    if (m_pCheckpointer) {
        m_pCheckpointer->Abandon();
    }
    const QString aside = store_files::MoveAside(m_path, QDateTime::currentDateTimeUtc());
    if (aside.isEmpty()) {
        kLog.Error(FMT_STRING("The outbox {} is damaged and can't be moved aside: {}"), m_path.toStdString(), reason);
        return false;
    }
    kLog.Error(FMT_STRING("The outbox {} is damaged and was moved to {}: {}"), m_path.toStdString(),
               aside.toStdString(), reason);
    Close();
    return true;
}

bool COutbox::Refuse(const char* what) {
    const std::string reason = m_file.IsOpen() ? m_file.Reason() : "it can't be opened, or another client has it";
    kLog.Error(FMT_STRING("{} the outbox {} failed: {}"), what, m_path.toStdString(), reason);
    return false;
}

bool COutbox::HealDamage() {
    return m_bReady && m_file.IsDamaged() && StartAnew() && EnsureOpen();
}

bool COutbox::Add(const std::string& id, const std::string& json) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!EnsureOpen()) {
        return Refuse("Opening");
    }
    if (!Insert(id, json) && !(HealDamage() && Insert(id, json))) {
        return Refuse("Writing to");
    }
    m_pCheckpointer->Written(qint64(json.size()) + kPageBytes);
    if (IsFull()) {
        DropOldest();
    }
    return true;
}

bool COutbox::Insert(const std::string& id, const std::string& json) {
    const std::unique_lock<std::mutex> turn = m_pCheckpointer->TakeTurn();
    m_insert.Bind(1, m_nLast + 1);
    m_insert.Bind(2, m_nBytes);
    m_insert.Bind(3, id);
    m_insert.Bind(4, json);
    if (!m_insert.Run()) {
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
    return m_nFirst != 0 && (m_nLast - m_nFirst >= m_options.mostEvents || m_nBytes - m_nBefore > m_options.mostBytes);
}

// The events themselves are safe either way: where this fails the next one tries again.
void COutbox::DropOldest() {
    const bool dropped = InTransaction([this] {
        while (IsFull()) {
            m_dropOldest.Bind(1, m_nFirst);
            if (!m_dropOldest.Run() || !FindOldest()) {
                return false;
            }
            ++m_nDropped;
        }
        m_countDropped.Bind(1, m_nDropped);
        return m_countDropped.Run();
    });
    if (!dropped) {
        Refuse("Making room in");
        HealDamage();
        return;
    }
    // A line for a burst: the next one follows when there was room in between.
    if (!m_bDropping) {
        m_bDropping = true;
        kLog.Error(FMT_STRING("The outbox {} is full: its oldest events are dropped, {} so far"), m_path.toStdString(),
                   m_nDropped);
    }
}

bool COutbox::InTransaction(const std::function<bool()>& work) {
    const std::unique_lock<std::mutex> turn = m_pCheckpointer->TakeTurn();
    if (m_file.Run("BEGIN IMMEDIATE") && work() && m_file.Run("COMMIT")) {
        return true;
    }
    // Damage is found by the error, which the next call would overwrite.
    if (!m_file.IsDamaged()) {
        m_file.Run("ROLLBACK");
        // What the bounds are nobody knows then: the next call opens the file anew.
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
    m_read.Bind(1, after);
    m_read.Bind(2, int64_t(count));
    size_t total = 0;
    while (m_read.Step()) {
        OutboxEvent row{m_read.Integer(0), m_read.Text(1), m_read.Text(2)};
        total += row.json.size();
        if (!rows.empty() && total > bytes) {
            m_read.Reset();
            return rows;
        }
        rows.push_back(std::move(row));
    }
    failed = m_read.Failed();
    if (failed && m_file.IsDamaged()) {
        rows.clear();
        failed = !HealDamage();
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
                               m_remove.Bind(1, event.number);
                               m_remove.Bind(2, event.id);
                               return m_remove.Run();
                           }) &&
               FindOldest();
    });
    if (!removed) {
        Refuse("Removing from");
        HealDamage();
        return false;
    }
    m_pCheckpointer->Written(qint64(events.size()) * kPageBytes);
    m_bDropping = false;
    return true;
}

bool COutbox::IsEmpty() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !EnsureOpen() || m_nFirst == 0;
}

int64_t COutbox::Dropped() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return EnsureOpen() ? m_nDropped : 0;
}
