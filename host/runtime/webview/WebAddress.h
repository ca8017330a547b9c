#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

#include "framework/export.h"

/// The rules for addresses of web pages. Main thread.
namespace host::web {

/// Returns scheme, ASCII host and port as "https://host:443". Empty for other schemes than https and http, without a
/// host, and with user information.
ZRHOST_API QString OriginOf(const QUrl& url);

/// Returns whether a page may go there: what core::urlhandler opens as web, and the client's own server. Otherwise sets
/// the reason.
ZRHOST_API bool IsLoadable(const QUrl& url, QString& reason);
ZRHOST_API bool IsLoadable(const QString& text, QString& reason);

/// Returns the origins with the bridge: the valid ones in "origins" of the common configuration "web_bridge", and the
/// client's own server in internal builds.
ZRHOST_API QStringList BridgeOrigins();

/// Returns whether a document at this address has the bridge.
ZRHOST_API bool IsBridgeOrigin(const QUrl& committed);

}  // namespace host::web
