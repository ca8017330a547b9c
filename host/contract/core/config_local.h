#pragma once

#include <string>

#include "framework/export.h"

namespace core {

/// The client's persistent key-value store. Main thread. Values may hold any bytes, zero bytes included;
/// keys are UTF-8. A read gives false, and leaves `value` alone, where the key is absent or holds the
/// other type. A save gives false if nothing was written; once it gave true the value survives the end
/// of the process, however it ends.
namespace config_local {

/// The store of the installation, shared by all users.
ZRHOST_API bool AppCfgReadString(const std::string& key, std::string& value);
ZRHOST_API bool AppCfgSaveString(const std::string& key, const std::string& value);
ZRHOST_API bool AppCfgReadInt64(const std::string& key, long& value);
ZRHOST_API bool AppCfgSaveInt64(const std::string& key, const long& value);

/// The store of the logged-in user; with nobody logged in, that of user 0.
ZRHOST_API bool UserCfgReadString(const std::string& key, std::string& value);
ZRHOST_API bool UserCfgSaveString(const std::string& key, const std::string& value);

}  // namespace config_local
}  // namespace core
