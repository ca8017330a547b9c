#include "store/StoreSchema.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

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

int MarkOf(int version) {
    constexpr int name = 0x5A52;  // "ZR"
    return (name << 16) + version;
}

EnVersion Judge(CSqliteConnection& connection, int latest) {
    constexpr int lastWithoutMark = 1;
    const std::optional<int64_t> version = connection.Integer("PRAGMA user_version");
    const std::optional<int64_t> mark = connection.Integer("PRAGMA application_id");
    if (!version || !mark) {
        return EnVersion::kUnreadable;
    }
    if (*version >= 0 && *mark == (*version <= 0xFFFF ? MarkOf(int(*version)) : 0)) {
        return *version > latest ? EnVersion::kNewer : EnVersion::kKnown;
    }
    if (*mark == 0 && *version >= 0 && *version <= lastWithoutMark) {
        return EnVersion::kKnown;
    }
    connection.SetError(
        {EnSqliteFault::kCorrupt, fmt::format(FMT_STRING("its version {} has the mark {}"), *version, *mark)});
    return EnVersion::kUnreadable;
}

bool HasColumns(CSqliteConnection& connection, const std::string& table, const std::string& columns) {
    CSqliteStatement list;
    const std::string sql =
        fmt::format(FMT_STRING("SELECT group_concat(name || pk) FROM pragma_table_info('{}')"), table);
    if (!connection.Prepare(list, sql.c_str()) || !list.Step()) {
        return false;
    }
    const std::string found = list.Text(0).value_or("");
    if (found != columns) {
        connection.SetError({EnSqliteFault::kCorrupt, fmt::format(FMT_STRING("its table has the columns {}"), found)});
    }
    return found == columns;
}

bool Migrate(CSqliteConnection& connection, const std::vector<Step>& steps) {
    return connection.InTransaction([&] {
        const std::optional<int64_t> stored = connection.Integer("PRAGMA user_version");
        if (!stored) {
            return false;
        }
        int version = int(*stored);
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
        return connection.Run("PRAGMA user_version=" + std::to_string(version)) &&
               connection.Run("PRAGMA application_id=" + std::to_string(MarkOf(version)));
    });
}

}  // namespace store_schema
