#pragma once

#include <QString>

/// Creates the folder of the store and the logs. Other users can neither enter it nor read or lock a file in it, also
/// one of an earlier start. Files that the process creates later are its user's alone.
void PrepareDataFolder(const QString& path);
