#include "support/ScriptedUrls.h"

#include <gtest/gtest.h>

#include <QUrl>

#include "core/environment.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Url");

// The rules that the contract states for the URL itself. The real opener also refuses disguised URLs.
bool IsAllowed(const QUrl& url) {
    if (url.scheme() == QLatin1String("http")) {
        const bool isThisMachine = url.host() == QLatin1String("127.0.0.1") || url.host() == QLatin1String("localhost");
        return isThisMachine && !core::environment::IsReleaseAppVersion();
    }
    return !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("zrclient"));
}

}  // namespace

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
    if (m_fnWhenOpening) {
        m_fnWhenOpening();
    }
    const QUrl url(request.url, QUrl::StrictMode);
    const bool allowed = !m_refused.Next() && IsAllowed(url);
    if (allowed && url.scheme() == QLatin1String("zrclient")) {
        m_hooks.Handle(request);
    }
    if (!allowed) {
        kLog.Error(FMT_STRING("Refused to open a URL: {}"), request.url.toStdString());
    }
    return allowed;
}
