#include "report/SqliteFile.h"

#include <sqlite3.h>

namespace {

constexpr int kBusyLimitMs = 5'000;

}  // namespace

void CSqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

void CSqliteStatement::Bind(int at, int64_t value) {
    sqlite3_bind_int64(m_pStatement.get(), at, value);
}

void CSqliteStatement::Bind(int at, const std::string& text) {
    sqlite3_bind_text64(m_pStatement.get(), at, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
}

bool CSqliteStatement::Step() {
    const int result = sqlite3_step(m_pStatement.get());
    m_bFailed = result != SQLITE_ROW && result != SQLITE_DONE;
    if (result != SQLITE_ROW) {
        Reset();
    }
    return result == SQLITE_ROW;
}

bool CSqliteStatement::Run() {
    const bool done = sqlite3_step(m_pStatement.get()) == SQLITE_DONE;
    Reset();
    return done;
}

void CSqliteStatement::Reset() {
    sqlite3_reset(m_pStatement.get());
}

int64_t CSqliteStatement::Integer(int column) const {
    return sqlite3_column_int64(m_pStatement.get(), column);
}

std::string CSqliteStatement::Text(int column) const {
    if (sqlite3_column_type(m_pStatement.get(), column) != SQLITE_TEXT) {
        return {};
    }
    const unsigned char* text = sqlite3_column_text(m_pStatement.get(), column);
    const int bytes = sqlite3_column_bytes(m_pStatement.get(), column);
    return text ? std::string(reinterpret_cast<const char*>(text), size_t(bytes)) : std::string();
}

void CSqliteFile::Closer::operator()(sqlite3* file) const {
    sqlite3_close(file);
}

bool CSqliteFile::Open(const std::string& path) {
    sqlite3* file = nullptr;
    const int result =
        sqlite3_open_v2(path.c_str(), &file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    m_pFile.reset(file);  // also after a failure: it holds the reason
    if (result == SQLITE_OK) {
        sqlite3_busy_timeout(file, kBusyLimitMs);
    }
    return result == SQLITE_OK;
}

bool CSqliteFile::Run(const char* sql) {
    return sqlite3_exec(m_pFile.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool CSqliteFile::Prepare(CSqliteStatement& statement, const char* sql) {
    sqlite3_stmt* prepared = nullptr;
    const int result = sqlite3_prepare_v3(m_pFile.get(), sql, -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
    statement = CSqliteStatement(prepared);
    return result == SQLITE_OK;
}

bool CSqliteFile::IsDamaged() const {
    const int code = m_pFile ? sqlite3_errcode(m_pFile.get()) & 0xFF : SQLITE_OK;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

std::string CSqliteFile::Reason() const {
    return m_pFile ? sqlite3_errmsg(m_pFile.get()) : "it could not be opened";
}
