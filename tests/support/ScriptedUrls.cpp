#include "support/ScriptedUrls.h"

#include <gtest/gtest.h>

const std::vector<OpenedUrl>& CScriptedUrls::Opened() {
    m_nLookedAt = m_opened.size();
    return m_opened;
}

void CScriptedUrls::Forget() {
    m_opened.clear();
    m_nLookedAt = 0;
}

void CScriptedUrls::CheckAllLookedAt() {
    for (size_t i = m_nLookedAt; i < m_opened.size(); ++i) {
        ADD_FAILURE() << "An unexpected URL was opened: " << m_opened[i].url;
    }
    m_nLookedAt = m_opened.size();
}

bool CScriptedUrls::Open(const UrlRequest& request) {
    m_opened.push_back({request.url.toStdString(), int(request.businessType), int(request.fallbackMode),
                        request.context, request.extra});
    return !m_refused.Next() && !request.url.isEmpty();
}
