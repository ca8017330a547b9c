#pragma once

#include "core/scheme.h"
#include "core/urlhandler.h"

/// A URL to be opened. `context` is not owned, may be null, and is valid only during the call.
struct UrlRequest {
    QString url;
    core::urlhandler::BusinessType businessType = core::urlhandler::kBusinessDefault;
    QObject* context = nullptr;
    QVariant extra;
    core::urlhandler::FallbackMode fallbackMode = core::urlhandler::kFallbackWeb;
};

/// The port behind core::urlhandler. Main thread.
class IUrlOpener {
public:
    virtual ~IUrlOpener() = default;
    virtual bool Open(const UrlRequest& request) = 0;

    /// Adds a hook of core::scheme, which Open asks ahead of the client's pages. The arguments are valid.
    virtual void AddHook(const QString& schemeUrl, core::scheme::PreCallback callback, void* owner,
                         core::scheme::RouteMatchRule rule) = 0;
};
