#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

/// A prepared statement. What is bound must live until Step has given false or Reset was called.
class CSqliteStatement {
public:
    CSqliteStatement() = default;
    explicit CSqliteStatement(sqlite3_stmt* statement) : m_pStatement(statement) {}

    void Bind(int at, int64_t value);
    void Bind(int at, const std::string& text);

    /// Whether there is a row to be read; at the end, and after an error, there is none.
    bool Step();
    /// Whether the last step met an error.
    bool Failed() const { return m_bFailed; }
    /// Runs a statement that gives no rows.
    bool Run();
    void Reset();

    /// Of the row; 0 and empty text for what is something else.
    int64_t Integer(int column) const;
    std::string Text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalize> m_pStatement;
    bool m_bFailed = false;
};

/// A SQLite file for callers of several threads, who take turns by a lock of their own: the toolkit's own
/// connection is bound to the thread that opened it. A writer that meets a lock waits up to five seconds.
class CSqliteFile {
public:
    bool Open(const std::string& path);
    /// Statements are gone before.
    void Close() { m_pFile.reset(); }
    bool IsOpen() const { return m_pFile != nullptr; }

    bool Run(const char* sql);
    bool Prepare(CSqliteStatement& statement, const char* sql);

    /// Of the last call that failed.
    bool IsDamaged() const;
    std::string Reason() const;

private:
    struct Closer {
        void operator()(sqlite3* file) const;
    };
    std::unique_ptr<sqlite3, Closer> m_pFile;
};
