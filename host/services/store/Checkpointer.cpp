#include "store/Checkpointer.h"

#include <QVariant>

#include "framework/HostLog.h"
#include "store/SqliteConnection.h"

namespace {

constexpr host::CHostLog kLog("Store");

// Before each page of the log stands a header.
constexpr qint64 kFrameHeaderBytes = 24;

}  // namespace

CCheckpointer::CCheckpointer(const QString& path, const CheckpointOptions& options, bool check)
    : m_path(path), m_options(options), m_bCheck(check), m_thread([this] { Run(); }) {}

CCheckpointer::~CCheckpointer() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bEnd = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

std::unique_lock<std::mutex> CCheckpointer::TakeTurn() {
    const std::lock_guard<std::mutex> next(m_nextTurn);
    return std::unique_lock<std::mutex>(m_turn);
}

void CCheckpointer::Written(qint64 bytes) {
    bool wake = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const qint64 before = m_nWritten;
        m_nWritten += bytes;
        // Not at each save: the thread would take the processor from the writer.
        const auto passed = [&](qint64 limit) { return before < limit && m_nWritten >= limit; };
        wake = passed(m_options.afterBytes) || passed(m_options.atMostBytes);
    }
    if (wake) {
        m_wake.notify_one();
    }
}

void CCheckpointer::Abandon() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bAbandoned = true;
}

std::optional<QSqlError> CCheckpointer::Damage() const {
    return m_bDamaged ? std::make_optional(m_damage) : std::nullopt;
}

void CCheckpointer::Run() {
    CSqliteConnection connection;
    if (m_bCheck) {
        Check(connection);
    }
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_bEnd || (!m_bAbandoned && m_nWritten >= m_options.afterBytes); });
        WaitForRest(lock);
        if (m_bEnd) {
            break;
        }
        m_nWritten = 0;
        lock.unlock();
        Take(connection);
        lock.lock();
        m_wake.wait_for(lock, m_options.pause, [this] { return m_bEnd; });
    }
    const bool abandoned = m_bAbandoned;
    lock.unlock();
    if (!abandoned) {
        Empty(connection);
    }
}

void CCheckpointer::Check(CSqliteConnection& connection) {
    if (EnsureOpen(connection) && !connection.Check() && FaultOf(connection.LastError()) == EnSqliteFault::kCorrupt) {
        m_damage = connection.LastError();
        m_bDamaged = true;
        Abandon();
    }
}

void CCheckpointer::WaitForRest(std::unique_lock<std::mutex>& lock) {
    qint64 before = -1;
    while (!m_bEnd && m_nWritten < m_options.atMostBytes && m_nWritten != before) {
        before = m_nWritten;
        m_wake.wait_for(lock, m_options.pause, [this] { return m_bEnd || m_nWritten >= m_options.atMostBytes; });
    }
}

void CCheckpointer::Take(CSqliteConnection& connection) {
    Outcome outcome = Checkpoint(connection, "PASSIVE");
    if (!outcome.done) {
        return;
    }
    StoreCheckpoint taken;
    taken.logBytes = outcome.logPages * (m_nPageBytes + kFrameHeaderBytes);
    if (taken.logBytes > m_options.restartBytes) {
        // Under steady writing a passive one never finds the log all copied, so that it would grow for ever. What
        // was written during the first, a second copies, so that little is left to copy while the writer waits.
        Checkpoint(connection, "PASSIVE");
        const std::unique_lock<std::mutex> turn = TakeTurn();
        taken.restarted = Checkpoint(connection, "RESTART").done;
        if (taken.restarted) {
            kLog.Info(FMT_STRING("The log of {} had {} bytes and begins anew"), m_path.toStdString(), taken.logBytes);
        }
    }
    if (m_options.fnTaken) {
        m_options.fnTaken(taken);
    }
}

void CCheckpointer::Empty(CSqliteConnection& connection) {
    Checkpoint(connection, "TRUNCATE");
}

CCheckpointer::Outcome CCheckpointer::Checkpoint(CSqliteConnection& connection, const char* mode) {
    Outcome outcome;
    if (EnsureOpen(connection)) {
        QSqlQuery query(connection.Database());
        query.setForwardOnly(true);
        if (query.exec(QStringLiteral("PRAGMA wal_checkpoint(%1)").arg(QLatin1String(mode))) && query.next()) {
            outcome.done = query.value(0).toInt() == 0;  // else a reader was in the way, and the next one will do
            outcome.logPages = query.value(1).toLongLong();
            m_bFailing = false;
            return outcome;
        }
        connection.SetError(query.lastError());
    }
    // Nothing is lost by that: what was saved is in the log. The next one tries again, and says nothing more.
    if (!m_bFailing) {
        m_bFailing = true;
        kLog.Info(FMT_STRING("A checkpoint of {} failed: {}"), m_path.toStdString(), ReasonOf(connection.LastError()));
    }
    return outcome;
}

bool CCheckpointer::EnsureOpen(CSqliteConnection& connection) {
    if (m_bOpen) {
        return true;
    }
    // A restart that waits for a reader holds the writer off: it gives up soon, and the next one tries again.
    if (!connection.Open(m_path, EnSqliteAccess::kReadWrite) ||
        !connection.Value(QStringLiteral("PRAGMA busy_timeout=20")) ||
        !connection.Run(QStringLiteral("PRAGMA synchronous=NORMAL"))) {
        return false;
    }
    const auto bytes = connection.Value(QStringLiteral("PRAGMA page_size"));
    m_nPageBytes = bytes ? bytes->toLongLong() : 0;
    m_bOpen = bytes.has_value();
    return m_bOpen;
}
