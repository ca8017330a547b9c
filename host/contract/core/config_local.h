#pragma once

#include <string>

#include "framework/export.h"

namespace core {

/// The client's persistent key-value store. Keys are UTF-8. Values may hold any bytes, zero bytes included.
/// A read returns true and sets `value`, or returns false and leaves `value` unchanged.
/// A save returns true when the value is stored durably: it survives any end of the process.
/// Thread: main thread.
/// Failure: a read of an absent key, or of a key of the other type, returns false. A save returns false if nothing
/// was written. While another program locks the store, the value is kept in memory without a promise, and read.
namespace config_local {

/// The store of the installation, shared by all users.
/// Returns whether the key has a string value, and sets `value` to it.
ZRHOST_API bool AppCfgReadString(const std::string& key, std::string& value);
/// Returns whether the value was stored.
ZRHOST_API bool AppCfgSaveString(const std::string& key, const std::string& value);
/// Returns whether the key has an integer value, and sets `value` to it.
ZRHOST_API bool AppCfgReadInt64(const std::string& key, long& value);
/// Returns whether the value was stored.
ZRHOST_API bool AppCfgSaveInt64(const std::string& key, const long& value);

/// The store of the logged-in user. While nobody is logged in, it is the store of user 0.
/// Returns whether the key has a string value, and sets `value` to it.
ZRHOST_API bool UserCfgReadString(const std::string& key, std::string& value);
/// Returns whether the value was stored.
ZRHOST_API bool UserCfgSaveString(const std::string& key, const std::string& value);

}  // namespace config_local
}  // namespace core
