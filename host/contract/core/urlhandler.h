#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include "framework/export.h"

namespace core {
namespace urlhandler {

/// On whose behalf a URL is opened. Other values than these are allowed, and kept for the record.
enum BusinessType : int {
    kBusinessDefault = 0,
    kBusinessAdClick = 8,
};

/// What a URL that matches no page of the client falls back to. Other values than these are allowed.
enum FallbackMode : int {
    kFallbackWeb = 1,
    kFallbackMenu = 4,
};

/// Opens a URL: a page of the client for its own scheme (zrclient), the web for https, and in an internal
/// build loopback http. True if it was opened. Anything else, an empty text included, is refused with a line
/// in the log and gives false; nothing is thrown. Main thread. `context` may be null and is not owned;
/// `extra` may be invalid, or hold a
/// core::webview::ZRWebWindowInfo.
ZRHOST_API bool DispatchUrl(const QString& url, BusinessType businessType, QObject* context, QVariant extra,
                            FallbackMode fallbackMode);

}  // namespace urlhandler
}  // namespace core
