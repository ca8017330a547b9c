#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include "framework/export.h"

namespace core {
namespace urlhandler {

/// The business that opens a URL. Values without a name here are valid and are recorded.
enum BusinessType : int {
    kBusinessDefault = 0,
    kBusinessAdClick = 8,
};

/// The fallback for a URL that matches no page of the client. Values without a name here are valid.
enum FallbackMode : int {
    kFallbackWeb = 1,
    kFallbackMenu = 4,
};

/// Opens a URL: a page of the client for the client's own scheme (zrclient), the web for https, and loopback http
/// in an internal build.
/// Returns whether it was opened.
/// Thread: main thread.
/// Ownership: `context` is not owned and may be null. `extra` may be invalid or hold a
/// core::webview::ZRWebWindowInfo.
/// Failure: any other URL, an empty one included, is refused with a log line and returns false. It never throws.
ZRHOST_API bool DispatchUrl(const QString& url, BusinessType businessType, QObject* context, QVariant extra,
                            FallbackMode fallbackMode);

}  // namespace urlhandler
}  // namespace core
