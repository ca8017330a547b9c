#pragma once

#include <QMetaType>
#include <QPointer>
#include <QSize>
#include <QWidget>

namespace core {
namespace webview {

/// How a web window is to look, by way of the extra argument of core::urlhandler::DispatchUrl. As it comes, the
/// host chooses everything. A wish: a host that opens links in the system's browser has no window to shape.
struct ZRWebWindowInfo {
    QPointer<QWidget> parent;  // null: the main window
    QSize size;                // pixels; invalid: the host's
    QSize minimumSize;         // pixels; invalid: the host's
};

}  // namespace webview
}  // namespace core

Q_DECLARE_METATYPE(core::webview::ZRWebWindowInfo)
