#pragma once

#include <QString>
#include <string>

/// Keys and values that the two processes share.
namespace store_kill {

constexpr int kKeys = 64;

inline std::string KeyOf(uint64_t id) {
    return "key" + std::to_string(id % kKeys);
}

/// The value of an id: the id, a checksum, and 10 B to 64 KB of pseudo-random bytes.
std::string ValueOf(uint64_t id);

/// The id of an intact value; 0 if it is torn. No value has the id 0.
uint64_t IdOf(const std::string& value);

/// Saves the values of ascending ids from `firstId` and writes each acknowledged id to `pipe`.
/// Returns only if a save or the pipe fails.
int RunChild(const QString& path, uint64_t firstId, int pipe);

}  // namespace store_kill
