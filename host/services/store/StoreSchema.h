#pragma once

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

/// The file's version; negative if the file can't be read, with the connection's last error set.
int VersionOf(CSqliteConnection& connection);

/// Applies the missing steps, all or none, which also proves that the file is writable. If it returns false, the
/// connection's last error is set.
bool Migrate(CSqliteConnection& connection, const std::vector<Step>& steps);

}  // namespace store_schema
