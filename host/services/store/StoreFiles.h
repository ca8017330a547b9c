#pragma once

#include <QDateTime>
#include <QString>

/// The three files of a store: the database, its log (-wal) and the log's index (-shm).
namespace store_files {

/// Renames them to `path`.corrupt-<yyyyMMddTHHmmss>, the log and its index with their endings, so that a tool
/// can open them as they were; with a number behind where the name is taken. Gives the new name; empty if the
/// database could not be renamed, and everything is where it was.
QString MoveAside(const QString& path, const QDateTime& now);

/// Of the database and its log.
qint64 Bytes(const QString& path);

/// Whether the log holds anything that may not be in the database.
bool HasLog(const QString& path);

}  // namespace store_files
