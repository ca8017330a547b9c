#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

#include "framework/export.h"

namespace core {

/// Hooks for URLs of the client's own scheme (zrclient).
/// Thread: main thread.
namespace scheme {

/// A URL of the client's scheme, in parts. Words and values are percent-encoded as in the URL.
struct SchemeInfo {
    QString text;
    /// The host of the URL, then the words of its path.
    QStringList pathWords;
    /// The pairs of the query.
    QMap<QString, QString> keys;
};

/// How a hook selects URLs. Values without a name here select nothing.
enum RouteMatchRule : int {
    /// The first path word equals the registered text.
    kFirstWordEquals = 1,
};

/// Handles a URL. `from` and `extra` are the arguments of core::urlhandler::DispatchUrl.
/// Returns whether it handled the URL; otherwise the next hook and then the client's pages are asked.
using PreCallback = std::function<bool(QObject* from, const SchemeInfo& scheme, QVariant extra)>;

/// Registers a hook. Hooks are called in order of registration, inside core::urlhandler::DispatchUrl.
/// Ownership: `owner` names the hook and is not dereferenced. A second registration of the same owner and text replaces
/// the first. A hook stays registered until the end of the host.
/// Failure: an empty text, a null owner or an empty callback registers nothing.
ZRHOST_API void RegisterPreCallback(const QString& schemeUrl, PreCallback callback, void* owner, RouteMatchRule rule);

}  // namespace scheme
}  // namespace core
