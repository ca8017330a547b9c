#include "store/Checkpointer.h"

#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Store");

// Each page of the log has a header.
constexpr qint64 kFrameHeaderBytes = 24;

}  // namespace

CCheckpointer::CCheckpointer(const QString& path, const CheckpointOptions& options, bool check)
    : m_path(path), m_options(options), m_bCheck(check), m_thread([this] { Run(); }) {}

CCheckpointer::~CCheckpointer() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bStop = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

std::unique_lock<std::mutex> CCheckpointer::LockForWrite() {
    const std::lock_guard<std::mutex> next(m_nextWriter);
    return std::unique_lock<std::mutex>(m_writer);
}

void CCheckpointer::Written(qint64 bytes) {
    bool wake = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const qint64 before = m_nWritten;
        m_nWritten += bytes;
        // Only when a limit is crossed: a wake-up per save would take the processor from the writer.
        const auto passed = [&](qint64 limit) { return before < limit && m_nWritten >= limit; };
        wake = before == 0 || passed(m_options.afterBytes) || passed(m_options.maxBytes);
    }
    if (wake) {
        m_wake.notify_one();
    }
}

void CCheckpointer::Abandon() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bAbandoned = true;
}

std::optional<SqliteError> CCheckpointer::Damage() const {
    return m_bDamaged ? std::make_optional(m_damage) : std::nullopt;
}

void CCheckpointer::Run() {
    CSqliteConnection connection;
    if (m_bCheck) {
        Check(connection);
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_bStop || (!m_bAbandoned && m_nWritten > 0); });
        WaitUntilIdle(lock, m_options.quiet, m_options.afterBytes);
        WaitUntilIdle(lock, m_options.pause, m_options.maxBytes);
        if (m_bStop) {
            break;
        }
        if (m_bAbandoned) {
            continue;
        }
        m_nWritten = 0;
        lock.unlock();
        TakeCheckpoint(connection);
        lock.lock();
        m_wake.wait_for(lock, m_options.pause, [this] { return m_bStop; });
    }
    const bool abandoned = m_bAbandoned;
    lock.unlock();
    if (!abandoned) {
        Checkpoint(connection, "TRUNCATE");
    }
}

void CCheckpointer::Check(CSqliteConnection& connection) {
    if (EnsureOpen(connection) && !connection.Check() && connection.IsCorrupt()) {
        m_damage = connection.LastError();
        m_bDamaged = true;
        Abandon();
    }
}

void CCheckpointer::WaitUntilIdle(std::unique_lock<std::mutex>& lock, std::chrono::milliseconds pause, qint64 bytes) {
    qint64 before = -1;
    while (!m_bStop && m_nWritten < bytes && m_nWritten != before) {
        before = m_nWritten;
        m_wake.wait_for(lock, pause, [&] { return m_bStop || m_nWritten >= bytes; });
    }
}

void CCheckpointer::TakeCheckpoint(CSqliteConnection& connection) {
    Outcome outcome = Checkpoint(connection, "PASSIVE");
    if (!outcome.done) {
        return;
    }
    StoreCheckpoint taken;
    taken.logBytes = outcome.logPages * (m_nPageBytes + kFrameHeaderBytes);
    if (taken.logBytes > m_options.restartBytes) {
        // During steady writing a passive checkpoint never copies the whole log, which would grow without limit. The
        // second one copies what was written during the first, so the restart blocks the writer only shortly.
        Checkpoint(connection, "PASSIVE");
        const std::unique_lock<std::mutex> lock = LockForWrite();
        taken.restarted = Checkpoint(connection, "RESTART").done;
        if (taken.restarted) {
            kLog.Info(FMT_STRING("The log of {} had {} bytes and is restarted"), m_path.toStdString(), taken.logBytes);
        }
    }
    if (m_options.fnTaken) {
        m_options.fnTaken(taken);
    }
}

CCheckpointer::Outcome CCheckpointer::Checkpoint(CSqliteConnection& connection, const char* mode) {
    Outcome outcome;
    if (EnsureOpen(connection)) {
        CSqliteStatement checkpoint;
        const std::string sql = fmt::format(FMT_STRING("PRAGMA wal_checkpoint({})"), mode);
        if (connection.Prepare(checkpoint, sql.c_str()) && checkpoint.Step()) {
            outcome.done = checkpoint.Integer(0) == 0;  // otherwise a reader blocks it, and the next one tries again
            outcome.logPages = checkpoint.Integer(1).value_or(0);
            m_bFailing = false;
            return outcome;
        }
    }
    // Nothing is lost: saved values are in the log. The next checkpoint retries, and repeated failures are not logged.
    if (!m_bFailing) {
        m_bFailing = true;
        kLog.Info(FMT_STRING("A checkpoint of {} failed: {}"), m_path.toStdString(), connection.LastError().reason);
    }
    return outcome;
}

bool CCheckpointer::EnsureOpen(CSqliteConnection& connection) {
    if (m_bOpen) {
        return true;
    }
    // A restart that waits for a reader blocks the writer, so it gives up soon, and the next one tries again.
    if (!connection.Open(m_path, EnSqliteAccess::kReadWrite) || !connection.Run("PRAGMA busy_timeout=20") ||
        !connection.Run("PRAGMA synchronous=NORMAL")) {
        return false;
    }
    const std::optional<int64_t> bytes = connection.Integer("PRAGMA page_size");
    m_nPageBytes = bytes.value_or(0);
    m_bOpen = bytes.has_value();
    return m_bOpen;
}
