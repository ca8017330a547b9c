#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "framework/export.h"
#include "webview/IWebEngine.h"
#include "webview/WebBridge.h"

class QMenu;

namespace host::web {

class CWebOverlay;
enum class EnWebText : unsigned int;

/// The body of ZRWebWidget and ZRWebDialog: a page with the rules for its addresses, loads, links, popups and failures.
/// The view behind it is created for the first load. Main thread.
class ZRHOST_API CWebShell : public QWidget, private IWebViewOwner {
    Q_OBJECT

public:
    /// The effect of a link in the main frame.
    enum class EnLinks {
        /// Stays in the page's own origin if that has the bridge; otherwise as kDispatched.
        kOwnOrigin,
        kDispatched,
        kLoaded,
    };

    explicit CWebShell(QWidget* parent);
    ~CWebShell() override;

    void LoadUrl(const QString& text);
    void StopLoad();
    bool IsLoading() const { return m_load.has_value(); }
    void Run(const QString& script);

    CWebBridge& Bridge() { return m_bridge; }
    /// From the next load on.
    void SetBridge(bool open) { m_bBridge = open; }
    void SetLinks(EnLinks links) { m_links = links; }
    void SetPopups(bool enabled) { m_bPopups = enabled; }
    void SetSameUrlPolicy(int policy) { m_nSameUrlPolicy = policy; }
    void SetContextMenu(int flags) { m_nMenuFlags = flags; }
    void CloseContextMenu();
    void SetIndication(bool eachLoad);
    void SetFirstIndication(bool firstVisibleLoad);
    void SetToast(bool enabled) { m_bToast = enabled; }

Q_SIGNALS:
    void LoadEnd(bool success, int httpCode, QString url);
    void BeforePopup(const QString& url, bool* handled, QSize size);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Load {
        QString text;  // as LoadEnd reports it
        QUrl url;
        int ends = 1;  // LoadEnd signals that it owes
    };

    bool AcceptNavigation(const QUrl& url, EnWebNavigation type, bool mainFrame) override;
    void LoadStarted() override;
    void LoadFinished(bool success, int httpCode) override;
    void MessageReceived(const QString& text) override;
    void RenderProcessGone() override;
    bool AcceptPopup() override;
    void PopupAddressed(const QUrl& url, const QSize& size) override;
    void ContextMenuWanted(const QPoint& place, int possible, std::function<void(int)> edit) override;

    void Start(const Load& load);
    void CreateViewWhenIdle();
    void CreateView();
    void Submit();
    void CloseView();
    void DropView();
    void OnUserChanged();
    void Finish(bool success, int httpCode);
    void Fail();
    void ShowMessage(EnWebText text, bool retry);
    void EndLater(bool success, int httpCode, const QString& text);
    void Recover();
    void ArmFreeze();
    void ShowIndication();
    bool GoesToDispatch(const QUrl& url) const;

    IWebView* m_pView = nullptr;
    CWebOverlay* m_pOverlay;
    QPointer<QMenu> m_pMenu;
    CWebBridge m_bridge;
    QTimer m_freeze;
    std::optional<Load> m_load;
    Load m_shown;  // the last load, for the button and after a crash
    EnLinks m_links = EnLinks::kOwnOrigin;
    int m_nGeneration = -1;  // of the view
    int m_nRestarts = 0;     // within the last minutes
    int m_nStandIns = 0;     // popups without an address yet
    int m_nSameUrlPolicy = 0;
    int m_nMenuFlags = 0;
    bool m_bBridge = false;
    bool m_bPopups = false;
    bool m_bEachIndication = true;
    bool m_bFirstIndication = false;
    bool m_bFirstIndicated = false;
    bool m_bToast = false;
    bool m_bFrozen = false;
    bool m_bCrashed = false;
    bool m_bIntact = false;  // the last load was good
};

}  // namespace host::web
