#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// The port behind core::config_local. Each operation returns false on failure and leaves `value` unchanged. Main
/// thread.
class ILocalStore {
public:
    /// The owner of a value: a user id, or empty for the installation.
    using Owner = std::optional<uint64_t>;

    virtual ~ILocalStore() = default;
    virtual bool ReadString(Owner owner, const std::string& key, std::string& value) = 0;
    virtual bool SaveString(Owner owner, const std::string& key, const std::string& value) = 0;
    virtual bool ReadInt64(const std::string& key, int64_t& value) = 0;
    virtual bool SaveInt64(const std::string& key, int64_t value) = 0;
};
