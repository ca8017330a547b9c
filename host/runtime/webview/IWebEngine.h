#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QWidget>
#include <functional>
#include <memory>

/// Why a page goes to an address.
enum class EnWebNavigation {
    kLoad,
    kLink,
    kRedirect,
    kOther,
};

/// A load of a new document.
struct WebLoad {
    QUrl url;
    /// Pages of these origins get the bridge object. Empty: the bridge is closed.
    QStringList bridgeOrigins;
};

/// The user of a view. It outlives the view. The operations are called on the main thread, never inside an operation of
/// the view unless noted.
class IWebViewOwner {
public:
    virtual ~IWebViewOwner() = default;

    /// Returns whether the page may go there. May be called inside Load.
    virtual bool AcceptNavigation(const QUrl& url, EnWebNavigation type, bool mainFrame) = 0;
    /// The main frame began to load, also without a call of Load.
    virtual void LoadStarted() = 0;
    /// The load that began last ended. `httpCode` is 0 if it is not known. After a call of Load no older load ends.
    virtual void LoadFinished(bool success, int httpCode) = 0;
    /// A message of the bridge object, from the main frame.
    virtual void MessageReceived(const QString& text) = 0;
    /// The page's process ended. The view shows nothing until the next load.
    virtual void RenderProcessGone() = 0;
    /// Returns whether the page may ask for a window.
    virtual bool AcceptPopup() = 0;
    /// The address of an accepted window, and the requested size or an invalid one.
    virtual void PopupAddressed(const QUrl& url, const QSize& size) = 0;
    /// The user wants a context menu at a global position. `possible` and the argument of `edit`, which runs an entry,
    /// are core::webview::ContextMenuFlag; 0 is "select all".
    virtual void ContextMenuWanted(const QPoint& place, int possible, std::function<void(int)> edit) = 0;
};

/// A page in a widget. Main thread.
class IWebView : public QWidget {
public:
    using QWidget::QWidget;

    /// Loads a new document, also for the displayed address. Ends a running load without LoadFinished.
    virtual void Load(const WebLoad& load) = 0;
    virtual void Stop() = 0;
    /// Runs a script in the page, without a result.
    virtual void Run(const QString& script) = 0;
    /// Passes a message to the bridge object of the page.
    virtual void Send(const QString& message) = 0;
    /// A frozen page runs nothing. A load unfreezes it.
    virtual void SetFrozen(bool frozen) = 0;
    /// Returns the address of the displayed document, also while another one is loading.
    virtual QUrl CommittedUrl() const = 0;
    /// Returns the process that renders the page; 0 if there is none.
    virtual qint64 ProcessId() const = 0;
};

/// The port behind core::webview. Main thread.
class IWebEngine {
public:
    virtual ~IWebEngine() = default;

    /// Loads the engine if that is the first call. The caller deletes the view before the engine ends.
    /// Returns null if pages cannot be displayed here.
    virtual IWebView* NewView(IWebViewOwner& owner, QWidget* parent) = 0;

    /// Views made afterwards share no cookies and no storage with older ones. The data that pages stored is
    /// deleted with the last older view.
    virtual void ForgetData() = 0;
};
