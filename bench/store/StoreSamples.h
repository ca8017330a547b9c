#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// Durations of many calls, in nanoseconds.
class CSamples {
public:
    template <class Call>
    void Measure(const Call& call) {
        const auto began = std::chrono::steady_clock::now();
        call();
        const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - began;
        Add(took.count());
    }
    void Add(double nanos) { m_samples.push_back(nanos); }

    /// 0.5 is the median. 0 without samples.
    double Quantile(double part) const;

private:
    std::vector<double> m_samples;
};

/// A value of `bytes` pseudo-random bytes, different in each `round`.
std::string FreshValue(size_t bytes, uint64_t round);

/// The store's table and settings with SQLite's C API: a prepared statement, bound and stepped. It is the floor of the
/// store's cost, and with automatic checkpoints its peer.
class CBareSqlite {
public:
    enum class EnCheckpoints { kNever, kAutomatic };

    CBareSqlite(const std::string& path, EnCheckpoints checkpoints);
    ~CBareSqlite();
    CBareSqlite(const CBareSqlite&) = delete;
    CBareSqlite& operator=(const CBareSqlite&) = delete;

    /// Ends the program on an error.
    void Save(const std::string& key, const std::string& value);

private:
    void Run(const char* sql);
    void Check(bool good, const char* what);

    sqlite3* m_pDatabase = nullptr;
    sqlite3_stmt* m_pSave = nullptr;
};
