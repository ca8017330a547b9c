#pragma once

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <functional>
#include <optional>

/// What an error of SQLite means to the store.
enum class EnSqliteFault {
    kNone,
    kCorrupt,    ///< no database, or one with damaged pages
    kCantWrite,  ///< the disk is full, over quota, or fails
    kReadOnly,   ///< file or folder don't let us write
    kOther,
};

enum class EnSqliteAccess {
    kReadWrite,
    kReadOnly,   ///< sees what other connections write; needs their log's index, or a folder to make it in
    kImmutable,  ///< takes no lock and needs no index: only for a file that nobody writes and that has no log
};

EnSqliteFault FaultOf(const QSqlError& error);
std::string ReasonOf(const QSqlError& error);

/// One connection to a SQLite file. Stays on the thread that opened it. A writer that meets a lock waits up
/// to five seconds.
class CSqliteConnection {
public:
    CSqliteConnection() = default;
    ~CSqliteConnection() { Close(); }
    CSqliteConnection(const CSqliteConnection&) = delete;
    CSqliteConnection& operator=(const CSqliteConnection&) = delete;

    /// The file itself is looked at by the first statement only.
    bool Open(const QString& path, EnSqliteAccess access);
    /// Queries on the connection are gone before.
    void Close();

    bool Run(const QString& sql);
    /// The first column of the first row; empty if the statement failed or gave no row.
    std::optional<QVariant> Value(const QString& sql);
    /// Whether the pages hang together; reads all of them. Where they don't the last error is a kCorrupt.
    bool Check();
    /// Keeps all of `work`, or nothing where it gives false.
    bool InTransaction(const std::function<bool()>& work);

    const QSqlDatabase& Database() const { return m_database; }
    /// Of the last of these calls that failed.
    const QSqlError& LastError() const { return m_error; }
    void SetError(const QSqlError& error) { m_error = error; }

private:
    QSqlDatabase m_database;
    QSqlError m_error;
};
