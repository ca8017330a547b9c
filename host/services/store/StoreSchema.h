#pragma once

#include <QString>
#include <vector>

class CSqliteConnection;

/// The store's tables by version; a file carries its version as its user_version. Main thread.
namespace store_schema {

/// What makes a file of the version before into one of `version`.
struct Step {
    int version;
    std::vector<QString> statements;
};

/// In order of their versions. A file that was made before versions were written is of version 0, and so is
/// an empty one.
const std::vector<Step>& Steps();

/// The version that this program writes.
int Latest();

/// The file's version; negative if the file can't be read, and the connection's last error says why.
int VersionOf(CSqliteConnection& connection);

/// Takes the steps that the file lacks, all of them or none, and by that proves that the file can be
/// written. False: the connection's last error says why.
bool Migrate(CSqliteConnection& connection, const std::vector<Step>& steps);

}  // namespace store_schema
