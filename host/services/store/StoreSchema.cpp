#include "store/StoreSchema.h"

#include <QVariant>
#include <algorithm>

#include "store/SqliteConnection.h"

namespace store_schema {

const std::vector<Step>& Steps() {
    static const std::vector<Step> steps = {
        // The first files had this table and no number, so it may be there.
        {1,
         {QStringLiteral("CREATE TABLE IF NOT EXISTS config (owner TEXT NOT NULL, key TEXT NOT NULL, value,"
                         " PRIMARY KEY (owner, key)) WITHOUT ROWID")}},
    };
    return steps;
}

int Latest() {
    return Steps().back().version;
}

int VersionOf(CSqliteConnection& connection) {
    const auto version = connection.Value(QStringLiteral("PRAGMA user_version"));
    return version ? version->toInt() : -1;
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
                                 [&](const QString& sql) { return connection.Run(sql); })) {
                    return false;
                }
                version = step.version;
            }
        }
        // Written also where it stands already: a file that is read-only lets even a transaction begin.
        return connection.Run(QStringLiteral("PRAGMA user_version=%1").arg(version));
    });
}

}  // namespace store_schema
