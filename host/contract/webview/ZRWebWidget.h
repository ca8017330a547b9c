#pragma once

#include <json/value.h>

#include <QSize>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>

#include "framework/export.h"

namespace core {
namespace webview {

/// Entries of the context menu that ZRWebWidget::SetContextMenuFlags enables.
enum ContextMenuFlag : int {
    kMenuCopy = 0x01,
    kMenuPaste = 0x10,
    kMenuCut = 0x20,
};

/// How ZRWebWidget::LoadUrl treats an address that equals the displayed one.
enum SameUrlPolicy : int {
    kSameUrlStays = 0,
    /// Each call loads a new document.
    kSameUrlReloads = 1,
};

/// Displays a web page, with a bridge between the page and native handlers. The engine is loaded for the first address,
/// when the client is idle, or at once if the widget is visible.
/// The page is a guest: it loads what core::urlhandler opens as web, and the client's own server. It has no
/// permissions, downloads, file dialogs, certificate exceptions or blocking script boxes. The bridge serves the main
/// frame of allow-listed origins only, tested at each call in both directions. Thread: main thread. Handlers and
/// signals run there as well.
class ZRHOST_API ZRWebWidget : public QWidget {
    Q_OBJECT

public:
    /// Handles a call of the page. `params` is the object that the page passed. `call` numbers the call within its page
    /// load, from 1. Returns the answer; null leaves the call open until OnResponseToJS.
    using Handler = std::function<std::shared_ptr<std::string>(const Json::Value& params, int call)>;
    using HandlerV2 = std::function<std::shared_ptr<Json::Value>(const Json::Value& params, int call)>;

    explicit ZRWebWidget(QWidget* parent = nullptr);
    ~ZRWebWidget() override;

    /// Loads a page. Each call ends in one LoadEnd, later; a newer call ends an older one as failed.
    /// Failure: a refused address is logged and ends in LoadEnd(false, 0, url).
    void LoadUrl(const QString& url);
    /// Ends a running load as failed.
    void StopLoad();
    /// Returns whether a load is running.
    bool IsLoading() const;

    /// Runs a script in the page, without a result. Nothing happens before the first load.
    void ExecuteJS(const QString& script);

    /// Opens or closes the bridge, from the next load on. The default is closed.
    void EnableJSBridge(bool enabled);
    /// Offers a handler to the page. Other names are unknown to it. A second registration replaces the first.
    /// Ownership: the handler is not called after the end of `context`.
    void RegisterJSAPI(const QString& name, Handler handler, QObject* context);
    void RegisterJSAPIV2(const QString& name, HandlerV2 handler, QObject* context);
    /// Answers the oldest open call of that name that the present page load made.
    /// Failure: without such a call, or on a page that the bridge does not serve, the answer is dropped and logged.
    void OnResponseToJS(const QString& name, const Json::Value& value);
    /// Sends an event to the page.
    /// Returns whether the page has the bridge.
    bool BroadcastEvent(const QString& name, const Json::Value& params);

    /// Sets whether pages may ask for new windows; each request emits BeforePopup. The default is false.
    void SetPopupEnabled(bool enabled);
    /// The default is kSameUrlStays.
    void SetSameUrlPolicy(int policy);
    /// Sets the entries of the context menu, a combination of ContextMenuFlag; 0, the default, for none.
    void SetContextMenuFlags(int flags);
    /// Closes an open context menu.
    void CloseContextMenu();

    /// Sets whether each load shows an indication while the widget is visible. The default is true.
    void SetLoadingStatusVisible(bool visible);
    /// Sets whether the first load that is under way while the widget is visible shows it. The default is false.
    void ShowLoadingOnFirstLoadUrl(bool show);
    /// Sets whether a toast reports a lost connection while the widget is visible. The default is false.
    void SetNetworkDisconnectedToastVisible(bool visible);

Q_SIGNALS:
    /// A load ended. `httpCode` is 200 for a good load and 0 if it is not known.
    void LoadEnd(bool success, int httpCode, QString url);

    /// The page asks for a window. A slot sets `*handled`, before it returns, to take the request; otherwise it is
    /// dropped. `size` is what the page asked for and may be invalid.
    void BeforePopup(QString const& url, bool* handled, QSize size);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};

}  // namespace webview
}  // namespace core
