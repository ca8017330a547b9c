#include "core/CommonConfig.h"

#include "core/ILocalStore.h"
#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Config");
constexpr const char* kCommonConfigKey = "Host_CommonConfig";

}  // namespace

CCommonConfig::CCommonConfig(ILocalStore& store) : m_store(store) {
    std::string kept;
    std::string error;
    if (m_store.ReadString(std::nullopt, kCommonConfigKey, kept) && !Decode(kept, m_configs, error)) {
        kLog.Error(FMT_STRING("The kept common configuration is of no use: {}"), error);
    }
}

Json::Value CCommonConfig::ConfigByName(const std::string& name) const {
    const auto found = m_configs.find(name);
    return found == m_configs.end() ? Json::Value() : found->second;
}

bool CCommonConfig::Decode(const std::string& json, std::map<std::string, Json::Value>& configs, std::string& error) {
    const auto root = host::ParseJson(json, error);
    if (!root) {
        return false;
    }
    if (!root->isObject()) {
        error = "must be an object with one member per name";
        return false;
    }
    configs.clear();
    for (const std::string& name : root->getMemberNames()) {
        configs[name] = (*root)[name];
    }
    return true;
}

void CCommonConfig::Receive(const std::string& json) {
    std::map<std::string, Json::Value> received;
    std::string error;
    if (!Decode(json, received, error)) {
        kLog.Error(FMT_STRING("Common configuration refused: {}"), error);
        return;
    }
    if (received == m_configs) {
        return;
    }
    m_configs = std::move(received);
    if (!m_store.SaveString(std::nullopt, kCommonConfigKey, json)) {
        kLog.Error(FMT_STRING("Common configuration could not be kept"));
    }
    Q_EMIT Changed();
}
