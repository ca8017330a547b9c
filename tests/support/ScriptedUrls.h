#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/IUrlOpener.h"
#include "core/SchemeHooks.h"
#include "support/Failing.h"

/// A URL as it was requested. `context` may be gone and is for comparison only.
struct OpenedUrl {
    std::string url;
    int businessType = 0;
    int fallbackMode = 0;
    QObject* context = nullptr;
    QVariant extra;
};

/// Records URLs and opens none. It returns true for URLs that the contract allows. A URL that no test looked at
/// (Opened) fails the test, refused or not.
class CScriptedUrls : public IUrlOpener {
public:
    const std::vector<OpenedUrl>& Opened();

    /// The calls that `which` selects are refused with a log line, and recorded.
    void RefuseOpens(Failing which) { m_refused = which; }

    /// `act` runs inside each later call, before it returns. An opened page may close others.
    void WhenOpening(std::function<void()> act) { m_fnWhenOpening = std::move(act); }

    /// Marks all URLs as looked at and clears the record.
    void Forget();

    /// Fails the test for each URL that no test looked at.
    void CheckAllLookedAt();

    bool Open(const UrlRequest& request) override;
    void AddHook(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
                 core::scheme::RouteMatchRule rule) override {
        m_hooks.Add(schemeUrl, std::move(callback), owner, rule);
    }

private:
    host::CSchemeHooks m_hooks;
    std::vector<OpenedUrl> m_opened;
    size_t m_nLookedAt = 0;
    Failing m_refused = Failing::Never();
    std::function<void()> m_fnWhenOpening;
};
