#pragma once

#include <QString>
#include <string>

/// Keys and values that the two processes share.
namespace store_kill {

constexpr int kKeys = 64;

inline std::string KeyOf(uint64_t id) {
    return "key" + std::to_string(id % kKeys);
}

/// The value of an id: its number, a checksum, and 10 B to 64 KB of which every byte is new with each id.
std::string ValueOf(uint64_t id);

/// The id of a value that is whole; 0 if it is torn. No value has the id 0.
uint64_t IdOf(const std::string& value);

/// Saves the values of `firstId` and of all that follow, and writes each id that was acknowledged to
/// `pipe`. Comes back only when a save or the pipe fails.
int RunChild(const QString& path, uint64_t firstId, int pipe);

}  // namespace store_kill
