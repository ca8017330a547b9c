#include "core/Domains.h"

void CDomains::Set(const std::string& key, std::string url) {
    while (!url.empty() && url.back() == '/') {
        url.pop_back();
    }
    std::string& stored = m_urls[key];
    if (stored != url) {
        stored = std::move(url);
        Q_EMIT Changed();
    }
}

std::string CDomains::DomainUrl(const std::string& key) const {
    const auto found = m_urls.find(key);
    return found == m_urls.end() ? std::string() : found->second;
}
