#include "core/ServerDocument.h"

#include <utility>

#include "core/ILocalStore.h"
#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Config");

}  // namespace

CServerDocument::CServerDocument(ILocalStore& store, std::string storeKey, std::string name)
    : m_store(store), m_strStoreKey(std::move(storeKey)), m_strName(std::move(name)) {
    std::string kept;
    std::string error;
    if (m_store.ReadString(std::nullopt, m_strStoreKey, kept) && !Decode(kept, m_members, error)) {
        kLog.Error(FMT_STRING("{} in the store is invalid: {}"), m_strName, error);
    }
}

Json::Value CServerDocument::Member(const std::string& name) const {
    const auto found = m_members.find(name);
    return found == m_members.end() ? Json::Value() : found->second;
}

bool CServerDocument::Decode(const std::string& json, std::map<std::string, Json::Value>& members, std::string& error) {
    const auto root = host::ParseJson(json, error);
    if (!root) {
        return false;
    }
    if (!root->isObject()) {
        error = "must be an object";
        return false;
    }
    members.clear();
    for (const std::string& name : root->getMemberNames()) {
        members[name] = (*root)[name];
    }
    return true;
}

void CServerDocument::Receive(const std::string& json) {
    std::map<std::string, Json::Value> received;
    std::string error;
    if (!Decode(json, received, error)) {
        kLog.Error(FMT_STRING("{} is refused: {}"), m_strName, error);
        return;
    }
    if (received == m_members) {
        return;
    }
    m_members = std::move(received);
    if (!m_store.SaveString(std::nullopt, m_strStoreKey, json)) {
        kLog.Error(FMT_STRING("{} could not be saved"), m_strName);
    }
    Q_EMIT Changed();
}

std::string CLinkTable::Url(unsigned long linkId) const {
    const Json::Value url = Member(std::to_string(linkId));
    return url.isString() ? url.asString() : std::string();
}
