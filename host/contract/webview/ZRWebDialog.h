#pragma once

#include <QString>
#include <QWidget>
#include <memory>

#include "framework/export.h"
#include "webview/ZRWebWindowInfo.h"

namespace core {
namespace webview {

/// A window with a web page and without a bridge.
/// Thread: main thread.
/// Ownership: a dialog that was opened deletes itself when it is closed; hold it by QPointer only.
class ZRHOST_API ZRWebDialog : public QWidget {
    Q_OBJECT

public:
    /// Creates a hidden window. It is closed when the user changes.
    explicit ZRWebDialog(const ZRWebWindowInfo& info);
    ~ZRWebDialog() override;

    /// Shows the window, centred over its parent and activated. Without a parent it is centred over the main window.
    void Open();
    /// Loads a page, with the rules of ZRWebWidget. The title is the host of the address.
    /// Failure: a refused address is logged and ends in LoadEnd(false, 0, url).
    void LoadUrl(const QString& url);
    /// Sets whether a link in the main frame goes to core::urlhandler::DispatchUrl, otherwise it is loaded here.
    /// The default is true.
    void SetUrlDispatchSwitch(bool dispatch);

Q_SIGNALS:
    /// A load ended. `httpCode` is 200 for a good load and 0 if it is not known.
    void LoadEnd(bool success, int httpCode, QString url);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

}  // namespace webview
}  // namespace core
