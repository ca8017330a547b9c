#pragma once

#include <vector>

#include "core/IUrlOpener.h"
#include "framework/export.h"

namespace host {

/// The hooks of core::scheme, in order of registration. Main thread.
class ZRHOST_API CSchemeHooks {
public:
    /// Replaces the hook of the same owner and text, if there is one.
    void Add(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
             core::scheme::RouteMatchRule rule);

    /// Returns whether a hook handled the URL. A hook may add others.
    bool Handle(const UrlRequest& request) const;

    /// Returns the parts of a URL.
    static core::scheme::SchemeInfo Parts(const QString& url);

private:
    struct Hook {
        QString schemeUrl;
        core::scheme::PreCallback callback;
        void* owner;
        core::scheme::RouteMatchRule rule;
    };
    std::vector<Hook> m_hooks;
};

}  // namespace host
