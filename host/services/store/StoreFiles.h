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
/// copy. Appends a number if the name is taken. Returns the new name; empty, with no file renamed, on failure.
QString Quarantine(const QString& path, const QDateTime& now);

/// Stops the checkpoints of a corrupt database, quarantines it and logs the result under the name `kind`. Call it
/// before the connection closes: closing writes to the log and removes it. `checkpointer` may be null.
bool QuarantineCorrupt(const host::CHostLog& log, const char* kind, const QString& path, const SqliteError& error,
                       CCheckpointer* checkpointer);

/// Size of the database and its log.
qint64 Bytes(const QString& path);

/// Whether the log may hold changes that are not in the database yet.
bool HasLog(const QString& path);

}  // namespace store_files
