#pragma once

#include <string>
#include <vector>

class CSqliteConnection;

/// The store's tables by version. A file stores its version as its user_version.
namespace store_schema {

/// Statements that migrate a file of the previous version to `version`.
struct Step {
    int version;
    std::vector<const char*> statements;
};

/// In order of versions. An empty file, and one older than version numbers, has version 0.
const std::vector<Step>& Steps();

/// The version that this program writes.
int Latest();

/// The file's version as a file stores it a second time, as its application_id. A file without it has version 1 at
/// most.
int MarkOf(int version);

enum class EnVersion {
    kKnown,
    kNewer,
    kUnreadable,  ///< the connection's last error is set, and a kCorrupt if version and mark contradict each other
};

/// Judges the version of a file whose latest known one is `latest`.
EnVersion Judge(CSqliteConnection& connection, int latest);

/// Applies the missing steps, all or none, which also proves that the file is writable. If it returns false, the
/// connection's last error is set.
bool Migrate(CSqliteConnection& connection, const std::vector<Step>& steps);

/// Returns whether the table has exactly these columns. A column of the primary key is followed by its place in it, any
/// other by 0, as in "owner1,key2,value0". Otherwise the connection's last error is set, a kCorrupt for other columns.
bool HasColumns(CSqliteConnection& connection, const std::string& table, const std::string& columns);

}  // namespace store_schema
