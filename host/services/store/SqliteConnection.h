#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>

namespace SQLite {
class Database;
class Statement;
}  // namespace SQLite

class CSqliteConnection;

/// Classes of SQLite's errors that need different handling.
enum class EnSqliteFault {
    kNone,
    kCorrupt,    ///< not a database, or one with damaged pages
    kCantWrite,  ///< the disk is full, over quota, or fails
    kReadOnly,   ///< permissions of the file or its folder
    kBusy,       ///< another program locks the file
    kOther,
};

struct SqliteError {
    EnSqliteFault fault = EnSqliteFault::kNone;
    std::string reason;  ///< SQLite's text
};

enum class EnSqliteAccess {
    kReadWrite,  ///< creates the file if it does not exist
    kReadOnly,   ///< sees other connections' writes; needs the log's index, or a folder in which to create it
    kImmutable,  ///< takes no lock and needs no index: only for a file without a log that nobody writes
};

/// A prepared statement. Failures are reported by return values and as the connection's last error.
/// Destroy or finalize it before its connection closes.
class CSqliteStatement {
public:
    CSqliteStatement();
    ~CSqliteStatement();
    CSqliteStatement(const CSqliteStatement&) = delete;
    CSqliteStatement& operator=(const CSqliteStatement&) = delete;

    bool IsPrepared() const { return m_pStatement != nullptr; }
    void Finalize();

    /// Parameters count from 1. Texts and blobs are not copied: they must live until Step returns false or Reset.
    bool Bind(int parameter, int64_t value);
    bool Bind(int parameter, const std::string& text);
    bool BindBlob(int parameter, const std::string& bytes);

    /// True if there is a row to read. The statement is reset after the last row and after an error.
    bool Step();
    /// Executes a statement that returns no rows.
    bool Run() { return !Step() && !m_bFailed; }
    void Reset();
    /// Whether the last Bind or Step met an error.
    bool Failed() const { return m_bFailed; }

    /// Columns count from 0. Empty if the value has another type.
    std::optional<int64_t> Integer(int column) const;
    std::optional<std::string> Text(int column) const;
    std::optional<std::string> Blob(int column) const;

private:
    friend class CSqliteConnection;

    template <class Call>
    bool Try(const Call& call);
    template <class Get>
    auto ValueOf(int column, int type, const Get& get) const;

    std::unique_ptr<SQLite::Statement> m_pStatement;
    CSqliteConnection* m_pConnection = nullptr;
    bool m_bFailed = false;
};

/// A connection to a SQLite file. One thread at a time. In each second it waits at most 30 ms for locks of other
/// programs: many calls in one slice of the main thread must not add up.
class CSqliteConnection {
public:
    CSqliteConnection();
    ~CSqliteConnection();
    CSqliteConnection(const CSqliteConnection&) = delete;
    CSqliteConnection& operator=(const CSqliteConnection&) = delete;

    /// Clears the last error. The first statement, not this call, reads the file.
    bool Open(const QString& path, EnSqliteAccess access);
    void Close();

    bool Run(const std::string& sql);
    bool Prepare(CSqliteStatement& statement, const char* sql);
    /// The first column of the first row; empty if the statement failed or returned no integer.
    std::optional<int64_t> Integer(const char* sql);
    /// Reads all pages. If they are inconsistent, the last error is a kCorrupt.
    bool Check();
    /// Commits all changes of `work`, or none if it returns false.
    bool InTransaction(const std::function<bool()>& work);

    /// Error of the last failed call.
    const SqliteError& LastError() const { return m_error; }
    bool IsCorrupt() const { return m_error.fault == EnSqliteFault::kCorrupt; }
    void SetError(SqliteError error) { m_error = std::move(error); }

private:
    friend class CSqliteStatement;

    void SetError(int code, const char* reason);
    bool WaitForLock();

    std::unique_ptr<SQLite::Database> m_pDatabase;
    SqliteError m_error;
    int64_t m_nFirstWait = std::numeric_limits<int64_t>::min() / 2;
};
