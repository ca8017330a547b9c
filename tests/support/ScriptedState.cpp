#include "support/ScriptedState.h"

void CScriptedAccount::Set(uint64_t userId, uint64_t sessionId, std::vector<int> markets) {
    m_nUserId = userId;
    m_nSessionId = sessionId;
    m_markets = std::move(markets);
}

std::optional<QString> CScriptedLanguage::Text(unsigned int textId) const {
    const auto found = m_texts.find(textId);
    return found == m_texts.end() ? std::nullopt : std::optional<QString>(found->second);
}

Json::Value CScriptedConfig::ConfigByName(const std::string& name) const {
    const auto found = m_values.find(name);
    return m_refusedReads.Next() || found == m_values.end() ? Json::Value() : found->second;
}

void CScriptedRandom::WillReturn(const std::vector<uint32_t>& values) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_next.insert(m_next.end(), values.begin(), values.end());
}

uint32_t CScriptedRandom::RandomNumber() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_next.empty()) {
        return uint32_t(m_sequence());
    }
    const uint32_t value = m_next.front();
    m_next.pop_front();
    return value;
}

std::string CScriptedDomains::DomainUrl(const std::string& key, core::url_data::DomainBizType /*biz*/) const {
    const auto found = m_urls.find(key);
    return found == m_urls.end() ? std::string() : found->second;
}

std::string CScriptedLinks::LinkUrl(unsigned long linkId) const {
    m_asked.push_back(linkId);
    const auto found = m_urls.find(linkId);
    return found == m_urls.end() ? std::string() : found->second;
}

void CScriptedSlots::Allow(ZRUniformResourceSlotType type, bool allowed) {
    if (allowed) {
        m_forbidden.erase(type);
    } else {
        m_forbidden.insert(type);
    }
}

bool CScriptedSlots::IsAllowed(ZRUniformResourceSlotType type) const {
    ++m_nAsked;
    return m_forbidden.count(type) == 0;
}
