#include "StoreSamples.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

double CSamples::Quantile(double part) const {
    if (m_samples.empty()) {
        return 0;
    }
    std::vector<double> sorted = m_samples;
    const auto at = sorted.begin() + std::ptrdiff_t(part * double(sorted.size() - 1));
    std::nth_element(sorted.begin(), at, sorted.end());
    return *at;
}

std::string FreshValue(size_t bytes, uint64_t round) {
    std::mt19937_64 random(round);
    std::string value(bytes, '\0');
    for (size_t at = 0; at < bytes; at += sizeof(uint64_t)) {
        const uint64_t part = random();
        std::memcpy(&value[at], &part, std::min(sizeof(part), bytes - at));
    }
    return value;
}

CBareSqlite::CBareSqlite(const std::string& path, EnCheckpoints checkpoints) {
    Check(sqlite3_open(path.c_str(), &m_pDatabase) == SQLITE_OK, path.c_str());
    Run("PRAGMA journal_mode=WAL");
    Run("PRAGMA synchronous=NORMAL");
    if (checkpoints == EnCheckpoints::kNever) {
        Run("PRAGMA wal_autocheckpoint=0");
    }
    Run("CREATE TABLE config (owner TEXT NOT NULL, key TEXT NOT NULL, value, PRIMARY KEY (owner, key)) WITHOUT ROWID");
    const char save[] =
        "INSERT INTO config (owner, key, value) VALUES (?, ?, ?)"
        " ON CONFLICT (owner, key) DO UPDATE SET value = excluded.value";
    Check(sqlite3_prepare_v2(m_pDatabase, save, -1, &m_pSave, nullptr) == SQLITE_OK, save);
}

CBareSqlite::~CBareSqlite() {
    sqlite3_finalize(m_pSave);
    sqlite3_close(m_pDatabase);
}

void CBareSqlite::Save(const std::string& key, const std::string& value) {
    sqlite3_bind_text(m_pSave, 1, "app", 3, SQLITE_STATIC);
    sqlite3_bind_text(m_pSave, 2, key.data(), int(key.size()), SQLITE_STATIC);
    sqlite3_bind_blob(m_pSave, 3, value.data(), int(value.size()), SQLITE_STATIC);
    Check(sqlite3_step(m_pSave) == SQLITE_DONE, "save");
    sqlite3_reset(m_pSave);
}

void CBareSqlite::Run(const char* sql) {
    Check(sqlite3_exec(m_pDatabase, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

void CBareSqlite::Check(bool good, const char* what) {
    if (!good) {
        std::fprintf(stderr, "%s: %s\n", what, sqlite3_errmsg(m_pDatabase));
        std::exit(1);
    }
}
