#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Behind core::config_local. Main thread.
class ILocalStore {
public:
    /// Whose value it is: the installation's (no value) or a user's.
    using Owner = std::optional<uint64_t>;

    virtual ~ILocalStore() = default;
    virtual bool ReadString(Owner owner, const std::string& key, std::string& value) = 0;
    virtual bool SaveString(Owner owner, const std::string& key, const std::string& value) = 0;
    virtual bool ReadInt64(const std::string& key, int64_t& value) = 0;
    virtual bool SaveInt64(const std::string& key, int64_t value) = 0;
};
