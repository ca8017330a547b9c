#include "store/StoreSchema.h"

#include <algorithm>

#include "store/SqliteConnection.h"

namespace store_schema {

const std::vector<Step>& Steps() {
    static const std::vector<Step> steps = {
        // The table may exist already: the first files had it, but no version.
        {1,
         {"CREATE TABLE IF NOT EXISTS config (owner TEXT NOT NULL, key TEXT NOT NULL, value,"
          " PRIMARY KEY (owner, key)) WITHOUT ROWID"}},
    };
    return steps;
}

int Latest() {
    return Steps().back().version;
}

int VersionOf(CSqliteConnection& connection) {
    return int(connection.Integer("PRAGMA user_version").value_or(-1));
}

bool Migrate(CSqliteConnection& connection, const std::vector<Step>& steps) {
    return connection.InTransaction([&] {
        int version = VersionOf(connection);
        if (version < 0) {
            return false;
        }
        for (const Step& step : steps) {
            if (step.version > version) {
                if (!std::all_of(step.statements.begin(), step.statements.end(),
                                 [&](const char* sql) { return connection.Run(sql); })) {
                    return false;
                }
                version = step.version;
            }
        }
        // Written even if unchanged: a transaction alone succeeds on a read-only file.
        return connection.Run("PRAGMA user_version=" + std::to_string(version));
    });
}

}  // namespace store_schema
