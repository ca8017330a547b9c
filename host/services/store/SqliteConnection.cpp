#include "store/SqliteConnection.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include <QFile>
#include <chrono>
#include <thread>

#include "core/MainThreadPoster.h"

namespace {

constexpr int64_t kMaxWaitMs = 30;
constexpr int64_t kWaitEveryMs = 1'000;

EnSqliteFault FaultOf(int code) {
    switch (code & 0xFF) {  // extended codes add details above the low byte
        case SQLITE_READONLY:
            return EnSqliteFault::kReadOnly;
        case SQLITE_IOERR:
        case SQLITE_FULL:
            return EnSqliteFault::kCantWrite;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return EnSqliteFault::kBusy;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return EnSqliteFault::kCorrupt;
        default:
            return EnSqliteFault::kOther;
    }
}

}  // namespace

CSqliteStatement::CSqliteStatement() = default;

CSqliteStatement::~CSqliteStatement() = default;

void CSqliteStatement::Finalize() {
    m_pStatement.reset();
}

template <class Call>
bool CSqliteStatement::Try(const Call& call) {
    m_bFailed = true;
    if (!m_pStatement) {
        return false;
    }
    try {
        call();
        m_bFailed = false;
    } catch (const SQLite::Exception& error) {
        m_pConnection->SetError(error.getErrorCode(), error.what());
    }
    return !m_bFailed;
}

bool CSqliteStatement::Bind(int parameter, int64_t value) {
    return Try([&] { m_pStatement->bind(parameter, value); });
}

bool CSqliteStatement::Bind(int parameter, const std::string& text) {
    return Try([&] { m_pStatement->bindNoCopy(parameter, text); });
}

bool CSqliteStatement::BindBlob(int parameter, const std::string& bytes) {
    return Try([&] { m_pStatement->bindNoCopy(parameter, bytes.data(), int(bytes.size())); });
}

bool CSqliteStatement::Step() {
    const int result = m_pStatement ? m_pStatement->tryExecuteStep() : SQLITE_MISUSE;
    m_bFailed = result != SQLITE_ROW && result != SQLITE_DONE;
    if (m_bFailed && m_pStatement) {
        m_pConnection->SetError(result, m_pStatement->getErrorMsg());
    }
    if (result != SQLITE_ROW) {
        Reset();
    }
    return result == SQLITE_ROW;
}

void CSqliteStatement::Reset() {
    if (m_pStatement) {
        m_pStatement->tryReset();
    }
}

template <class Get>
auto CSqliteStatement::ValueOf(int column, int type, const Get& get) const {
    std::optional<decltype(get(std::declval<const SQLite::Column&>()))> value;
    try {
        if (m_pStatement && m_pStatement->hasRow()) {
            const SQLite::Column found = m_pStatement->getColumn(column);
            if (found.getType() == type) {
                value = get(found);
            }
        }
    } catch (const SQLite::Exception&) {
        // A missing column has no value.
    }
    return value;
}

std::optional<int64_t> CSqliteStatement::Integer(int column) const {
    return ValueOf(column, SQLITE_INTEGER, [](const SQLite::Column& value) { return value.getInt64(); });
}

std::optional<std::string> CSqliteStatement::Text(int column) const {
    return ValueOf(column, SQLITE_TEXT, [](const SQLite::Column& value) { return value.getString(); });
}

std::optional<std::string> CSqliteStatement::Blob(int column) const {
    return ValueOf(column, SQLITE_BLOB, [](const SQLite::Column& value) { return value.getString(); });
}

CSqliteConnection::CSqliteConnection() = default;

CSqliteConnection::~CSqliteConnection() = default;

bool CSqliteConnection::Open(const QString& path, EnSqliteAccess access) {
    Close();
    m_error = {};
    QByteArray name = QFile::encodeName(path);
    int flags = SQLITE_OPEN_NOMUTEX;
    flags |= access == EnSqliteAccess::kReadWrite ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE : SQLITE_OPEN_READONLY;
    if (access == EnSqliteAccess::kImmutable) {
        flags |= SQLITE_OPEN_URI;
        name = "file:" + name.toPercentEncoding("/") + "?immutable=1";
    }
    try {
        m_pDatabase = std::make_unique<SQLite::Database>(name.constData(), flags);
        sqlite3_busy_handler(
            m_pDatabase->getHandle(),
            [](void* connection, int) { return int(static_cast<CSqliteConnection*>(connection)->WaitForLock()); },
            this);
    } catch (const SQLite::Exception& error) {
        SetError(error.getErrorCode(), error.what());
    }
    return m_pDatabase != nullptr;
}

bool CSqliteConnection::WaitForLock() {
    const int64_t now = CMainThreadPoster::SteadyMillis();
    if (now - m_nFirstWait >= kWaitEveryMs) {
        m_nFirstWait = now;
    }
    if (now - m_nFirstWait >= kMaxWaitMs) {
        return false;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return true;
}

void CSqliteConnection::Close() {
    m_pDatabase.reset();
}

bool CSqliteConnection::Run(const std::string& sql) {
    const int result = m_pDatabase ? m_pDatabase->tryExec(sql) : SQLITE_MISUSE;
    if (result != SQLITE_OK) {
        SetError(result, m_pDatabase ? m_pDatabase->getErrorMsg() : "the database is closed");
    }
    return result == SQLITE_OK;
}

bool CSqliteConnection::Prepare(CSqliteStatement& statement, const char* sql) {
    statement.Finalize();
    statement.m_pConnection = this;
    try {
        if (m_pDatabase) {
            statement.m_pStatement = std::make_unique<SQLite::Statement>(*m_pDatabase, sql);
        }
    } catch (const SQLite::Exception& error) {
        SetError(error.getErrorCode(), error.what());
    }
    return statement.IsPrepared();
}

std::optional<int64_t> CSqliteConnection::Integer(const char* sql) {
    CSqliteStatement statement;
    return Prepare(statement, sql) && statement.Step() ? statement.Integer(0) : std::nullopt;
}

bool CSqliteConnection::Check() {
    CSqliteStatement check;
    if (!Prepare(check, "PRAGMA quick_check(1)") || !check.Step()) {
        return false;
    }
    const std::string found = check.Text(0).value_or("");
    if (found != "ok") {
        SetError(SQLITE_CORRUPT, found.c_str());
    }
    return found == "ok";
}

bool CSqliteConnection::InTransaction(const std::function<bool()>& work) {
    if (!Run("BEGIN IMMEDIATE")) {
        return false;
    }
    if (work() && Run("COMMIT")) {
        return true;
    }
    const SqliteError error = m_error;
    Run("ROLLBACK");
    m_error = error;
    return false;
}

void CSqliteConnection::SetError(int code, const char* reason) {
    m_error = {FaultOf(code), reason};
}
