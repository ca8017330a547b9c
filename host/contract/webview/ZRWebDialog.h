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
    explicit ZRWebDialog(const ZRWebWindowInfo& info);
    ~ZRWebDialog() override;

    /// Shows the window, centred over its parent.
    void Open();
    /// Loads a page, with the rules of ZRWebWidget.
    void LoadUrl(const QString& url);
    /// Sets whether a link in the main frame goes to core::urlhandler::DispatchUrl, otherwise it is loaded here.
    /// The default is true.
    void SetUrlDispatchSwitch(bool dispatch);

Q_SIGNALS:
    /// As for ZRWebWidget.
    void LoadEnd(bool success, int httpCode, QString url);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

}  // namespace webview
}  // namespace core
