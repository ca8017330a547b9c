#pragma once

#include <QDateTime>
#include <QString>

class CCheckpointer;
struct SqliteError;

namespace host {
class CHostLog;
}  // namespace host

/// The three files of a database: the database itself, its log (-wal) and the log's index (-shm).
namespace store_files {

/// Renames them to `path`.corrupt-<yyyyMMddTHHmmss>, log and index with their suffixes, so that tools can open the
/// copy. Appends a number if the name is taken. Older copies than the last three are deleted. Returns the new name;
/// empty, with no file renamed, on failure.
QString Quarantine(const QString& path, const QDateTime& now);

/// Stops the checkpoints of a corrupt database, quarantines it and logs the result under the name `kind`. Call it
/// before the connection closes: closing writes to the log and removes it. `checkpointer` may be null.
bool QuarantineCorrupt(const host::CHostLog& log, const char* kind, const QString& path, const SqliteError& error,
                       CCheckpointer* checkpointer);

/// Number of the log's pages that SQLite will not recover although a write had finished behind the first of them.
/// Reads the whole log.
qint64 LostPages(const QString& path);

/// Call it before a database is opened for writing, which drops what can't be recovered from its log: copies such a log
/// to `path`-wal.corrupt-<yyyyMMddTHHmmss> and logs it under the name `kind`.
void KeepDamagedLog(const host::CHostLog& log, const char* kind, const QString& path);

/// Size of the database and its log.
qint64 Bytes(const QString& path);

/// Whether the log may hold changes that are not in the database yet.
bool HasLog(const QString& path);

}  // namespace store_files
