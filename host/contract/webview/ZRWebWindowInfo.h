#pragma once

#include <QMetaType>
#include <QPointer>
#include <QSize>
#include <QWidget>

namespace core {
namespace webview {

/// The requested appearance of a web window, passed as `extra` of core::urlhandler::DispatchUrl. With default values
/// the host chooses. A host that opens links in the system's browser ignores it.
struct ZRWebWindowInfo {
    /// Null: the main window. Not owned; a parent that is destroyed before the window opens counts as null.
    QPointer<QWidget> parent;
    /// Pixels; invalid: the host's.
    QSize size;
    /// Pixels; invalid: the host's.
    QSize minimumSize;
    /// Opens the page in the system's browser and not in a window of the client.
    bool inBrowser = false;
};

}  // namespace webview
}  // namespace core

Q_DECLARE_METATYPE(core::webview::ZRWebWindowInfo)
