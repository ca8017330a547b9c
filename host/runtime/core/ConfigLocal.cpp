#include "core/config_local.h"

#include "core/IClientState.h"
#include "core/ILocalStore.h"
#include "framework/Ports.h"

namespace core::config_local {
namespace {

ILocalStore::Owner Installation() {
    return std::nullopt;
}

// Without a login it is user 0, so that values saved then are kept too.
ILocalStore::Owner CurrentUser(const host::PortsLock& ports) {
    return ports->state ? ports->state->UserId() : 0;
}

}  // namespace

bool AppCfgReadString(const std::string& key, std::string& value) {
    const host::PortsLock ports;
    return ports->store && ports->store->ReadString(Installation(), key, value);
}

bool AppCfgSaveString(const std::string& key, const std::string& value) {
    const host::PortsLock ports;
    return ports->store && ports->store->SaveString(Installation(), key, value);
}

bool AppCfgReadInt64(const std::string& key, long& value) {
    const host::PortsLock ports;
    int64_t stored = 0;
    if (!ports->store || !ports->store->ReadInt64(key, stored)) {
        return false;
    }
    value = stored;
    return true;
}

bool AppCfgSaveInt64(const std::string& key, const long& value) {
    const host::PortsLock ports;
    return ports->store && ports->store->SaveInt64(key, value);
}

bool UserCfgReadString(const std::string& key, std::string& value) {
    const host::PortsLock ports;
    return ports->store && ports->store->ReadString(CurrentUser(ports), key, value);
}

bool UserCfgSaveString(const std::string& key, const std::string& value) {
    const host::PortsLock ports;
    return ports->store && ports->store->SaveString(CurrentUser(ports), key, value);
}

}  // namespace core::config_local
