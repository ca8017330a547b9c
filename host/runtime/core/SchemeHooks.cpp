#include "core/SchemeHooks.h"

#include <QUrl>
#include <QUrlQuery>
#include <algorithm>

#include "framework/HostLog.h"

namespace host {
namespace {

constexpr CHostLog kLog("Scheme");

}  // namespace

void CSchemeHooks::Add(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
                       core::scheme::RouteMatchRule rule) {
    const auto same = std::find_if(m_hooks.begin(), m_hooks.end(), [&](const Hook& hook) {
        return hook.owner == owner && hook.schemeUrl == schemeUrl;
    });
    Hook hook{schemeUrl, std::move(callback), owner, rule};
    if (same != m_hooks.end()) {
        *same = std::move(hook);
    } else {
        m_hooks.push_back(std::move(hook));
    }
}

bool CSchemeHooks::Handle(const UrlRequest& request) const {
    const core::scheme::SchemeInfo info = Parts(request.url);
    const std::vector<Hook> hooks = m_hooks;
    for (const Hook& hook : hooks) {
        const bool matches = hook.rule == core::scheme::kFirstWordEquals && !info.pathWords.isEmpty() &&
                             info.pathWords.front() == hook.schemeUrl;
        bool handled = false;
        if (matches) {
            CallAndLogExceptions(kLog, "A hook of a scheme",
                                 [&] { handled = hook.callback(request.context, info, request.extra); });
        }
        if (handled) {
            return true;
        }
    }
    return false;
}

core::scheme::SchemeInfo CSchemeHooks::Parts(const QString& url) {
    core::scheme::SchemeInfo info;
    info.text = url;
    const QUrl parsed(url, QUrl::StrictMode);
    if (!parsed.isValid()) {
        return info;
    }
    if (!parsed.host().isEmpty()) {
        info.pathWords << parsed.host(QUrl::FullyEncoded);
    }
    info.pathWords << parsed.path(QUrl::FullyEncoded).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const QUrlQuery query(parsed);
    const auto pairs = query.queryItems(QUrl::FullyEncoded);
    for (const auto& [key, value] : pairs) {
        info.keys[key] = value;
    }
    return info;
}

}  // namespace host
