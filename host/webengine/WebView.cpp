#include "WebView.h"

#include <QContextMenuEvent>
#include <QVBoxLayout>
#include <QWebChannel>
#include <QWebEngineContextMenuData>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include "BridgeScripts.h"
#include "webview/ZRWebWidget.h"

namespace {

constexpr const char* kBlank = "about:blank";
constexpr int kStopLimitMs = 200;

class CView : public QWebEngineView {
public:
    CView(IWebViewOwner& owner, QWidget* parent) : QWebEngineView(parent), m_owner(owner) {}

protected:
    void contextMenuEvent(QContextMenuEvent* event) override {
        const auto flags = page()->contextMenuData().editFlags();
        int possible = 0;
        possible |= flags.testFlag(QWebEngineContextMenuData::CanCopy) ? core::webview::kMenuCopy : 0;
        possible |= flags.testFlag(QWebEngineContextMenuData::CanPaste) ? core::webview::kMenuPaste : 0;
        possible |= flags.testFlag(QWebEngineContextMenuData::CanCut) ? core::webview::kMenuCut : 0;
        m_owner.ContextMenuWanted(event->globalPos(), possible, [edited = QPointer<QWebEnginePage>(page())](int flag) {
            if (edited) {
                edited->triggerAction(flag == core::webview::kMenuCopy    ? QWebEnginePage::Copy
                                      : flag == core::webview::kMenuPaste ? QWebEnginePage::Paste
                                      : flag == core::webview::kMenuCut   ? QWebEnginePage::Cut
                                                                          : QWebEnginePage::SelectAll);
            }
        });
    }

private:
    IWebViewOwner& m_owner;
};

void Restrict(QWebEngineSettings& settings) {
    settings.setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    settings.setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings.setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    settings.setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    settings.setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    settings.setAttribute(QWebEngineSettings::HyperlinkAuditingEnabled, false);
    settings.setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings.setAttribute(QWebEngineSettings::ScreenCaptureEnabled, false);
    settings.setAttribute(QWebEngineSettings::FullScreenSupportEnabled, false);
    settings.setAttribute(QWebEngineSettings::WebRTCPublicInterfacesOnly, true);
    settings.setAttribute(QWebEngineSettings::DnsPrefetchEnabled, false);
    settings.setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
}

}  // namespace

CWebView::CWebView(IWebViewOwner& owner, std::shared_ptr<QWebEngineProfile> profile, QWidget* parent)
    : IWebView(parent),
      m_owner(owner),
      m_pProfile(std::move(profile)),
      m_pView(new CView(owner, this)),
      m_pPage(new CWebPage(*m_pProfile, owner, nullptr)),
      m_pPort(new CBridgePort(owner, this)),
      m_pChannel(new QWebChannel(this)) {
    Restrict(*m_pPage->settings());
    m_pChannel->registerObject(QStringLiteral("port"), m_pPort);
    m_pView->setPage(m_pPage);
    setFocusProxy(m_pView);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pView);
    m_stopLimit.setSingleShot(true);
    connect(&m_stopLimit, &QTimer::timeout, this, &CWebView::Begin);
    connect(m_pPage, &QWebEnginePage::loadStarted, this, &CWebView::OnLoadStarted);
    connect(m_pPage, &QWebEnginePage::loadFinished, this, &CWebView::OnLoadFinished);
    connect(m_pPage, &QWebEnginePage::renderProcessTerminated, this, [this] { m_owner.RenderProcessGone(); });
}

CWebView::~CWebView() {
    m_pPage->disconnect(this);
    delete m_pPage;
    delete m_pView;
}

// The engine reports one start and one end for a load and another that interrupts it. The older one therefore ends
// first.
void CWebView::Load(const WebLoad& load) {
    bridge_scripts::Install(m_pPage->scripts(), load.bridgeOrigins);
    m_pPage->setWebChannel(load.bridgeOrigins.isEmpty() ? nullptr : m_pChannel, QWebEngineScript::ApplicationWorld);
    m_pPage->SetLeaving(true);
    m_next = load.url;
    if (m_bRunning) {
        m_bStopping = true;
        m_stopLimit.start(kStopLimitMs);
        m_pPage->triggerAction(QWebEnginePage::Stop);
    } else {
        Begin();
    }
}

// The engine does not load an address that differs from the displayed one behind "#" only.
void CWebView::Begin() {
    m_stopLimit.stop();
    m_bStopping = false;
    m_bStarted = false;
    m_bRunning = true;
    const QUrl shown = m_pPage->url();
    m_bBlank = m_next != shown && m_next.matches(shown, QUrl::RemoveFragment);
    m_pPage->load(m_bBlank ? QUrl(QString::fromLatin1(kBlank)) : m_next);
}

void CWebView::OnLoadStarted() {
    m_bStarted = true;
    m_bRunning = true;
    if (!m_bBlank && !m_bStopping) {
        m_owner.LoadStarted();
    }
}

void CWebView::OnLoadFinished(bool success) {
    if (m_bStopping || (m_bStarted && m_bBlank)) {
        m_stopLimit.start(0);
        return;
    }
    if (!m_bStarted) {
        return;  // of a load that did not stop in time
    }
    m_bStarted = false;
    m_bRunning = false;
    m_pPage->SetLeaving(false);
    m_owner.LoadFinished(success, success ? 200 : 0);
}

void CWebView::Stop() {
    m_stopLimit.stop();
    m_bBlank = false;
    m_bStopping = false;
    m_pPage->triggerAction(QWebEnginePage::Stop);
}

void CWebView::Run(const QString& script) {
    m_pPage->runJavaScript(script);
}

void CWebView::Send(const QString& message) {
    Q_EMIT m_pPort->message(message);
}

void CWebView::SetFrozen(bool frozen) {
    m_pPage->setLifecycleState(frozen ? QWebEnginePage::LifecycleState::Frozen
                                      : QWebEnginePage::LifecycleState::Active);
}

QUrl CWebView::CommittedUrl() const {
    return m_pPage->url();
}

qint64 CWebView::ProcessId() const {
    return m_pPage->renderProcessPid();
}
