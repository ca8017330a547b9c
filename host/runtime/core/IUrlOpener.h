#pragma once

#include "core/urlhandler.h"

/// A URL as somebody asks for it. `context` is not owned, may be null, and is good for the call alone.
struct UrlRequest {
    QString url;
    core::urlhandler::BusinessType businessType = core::urlhandler::kBusinessDefault;
    QObject* context = nullptr;
    QVariant extra;
    core::urlhandler::FallbackMode fallbackMode = core::urlhandler::kFallbackWeb;
};

/// Behind core::urlhandler. Main thread.
class IUrlOpener {
public:
    virtual ~IUrlOpener() = default;
    virtual bool Open(const UrlRequest& request) = 0;
};
