#include "webview/WebShell.h"

#include "core/urlhandler.h"
#include "framework/HostLog.h"
#include "framework/LogText.h"
#include "framework/Ports.h"
#include "ui/ZMenu.h"
#include "ui/ZToast.h"
#include "webview/WebAddress.h"
#include "webview/WebHost.h"
#include "webview/WebOverlay.h"
#include "webview/WebTexts.h"
#include "webview/ZRWebWidget.h"
#include "webview/ZRWebWindowInfo.h"

namespace host::web {
namespace {

constexpr CHostLog kLog("Web");
constexpr int kMaxLoggedLength = 200;
constexpr int kFreezeMs = 1000;
constexpr int kMaxRestarts = 3;
constexpr int kRestartsMs = 5 * 60 * 1000;
// The engine closes a popup that has no address after this time.
constexpr int kStandInMs = 1000;

std::string Logged(const QString& text) {
    return EscapedLogText(text.left(kMaxLoggedLength));
}

QString TextOf(const QUrl& url) {
    return QString::fromLatin1(url.toEncoded());
}

void Dispatch(const QString& url) {
    core::urlhandler::DispatchUrl(url, core::urlhandler::kBusinessDefault, nullptr, QVariant(),
                                  core::urlhandler::kFallbackWeb);
}

void Trace(const QUrl& url, const char* text, bool isBad = false) {
    Q_EMIT CWebHost::Instance().Traced({WebTrace::EnKind::Page, TextOf(url), text, 0, isBad});
}

void OpenInBrowser(const QString& url) {
    core::webview::ZRWebWindowInfo info;
    info.inBrowser = true;
    core::urlhandler::DispatchUrl(url, core::urlhandler::kBusinessDefault, nullptr, QVariant::fromValue(info),
                                  core::urlhandler::kFallbackWeb);
}

}  // namespace

CWebShell::CWebShell(QWidget* parent)
    : QWidget(parent),
      m_pOverlay(new CWebOverlay(this)),
      m_bridge([this] { return m_pView ? m_pView->CommittedUrl() : QUrl(); },
               [this](const QString& message) {
                   if (m_pView) {
                       m_pView->Send(message);
                   }
               }) {
    setFocusPolicy(Qt::StrongFocus);
    m_freeze.setSingleShot(true);
    connect(&m_freeze, &QTimer::timeout, this, [this] {
        m_bFrozen = true;
        m_pView->SetFrozen(true);
    });
    CWebHost& host = CWebHost::Instance();
    connect(&host, &CWebHost::UserChanged, this, &CWebShell::OnUserChanged);
    connect(&host, &CWebHost::Ending, this, [this] {
        CloseView();
        if (m_load) {
            Finish(false, 0);
        }
    });
}

CWebShell::~CWebShell() {
    DropView();
}

void CWebShell::LoadUrl(const QString& text) {
    CWebHost::Instance().CheckUser();
    QString reason;
    if (!IsLoadable(text, reason)) {
        kLog.Error(FMT_STRING("Refused to load a page, {}: {}"), reason.toStdString(), Logged(text));
        EndLater(false, 0, text);
        return;
    }
    const QUrl url(text, QUrl::StrictMode);
    if (m_nSameUrlPolicy == core::webview::kSameUrlStays && url == m_shown.url && !m_bCrashed &&
        m_nGeneration == CWebHost::Instance().Generation()) {
        if (m_load) {
            ++m_load->ends;
            return;
        }
        if (m_bIntact) {
            EndLater(true, 200, text);
            return;
        }
    }
    Start({text, url});
}

// The view is replaced later if it is another user's: this call can come from a handler of that view.
void CWebShell::Start(const Load& load) {
    if (m_load) {
        Finish(false, 0);
    }
    m_load = load;
    m_shown = load;
    if (m_bCrashed) {
        CloseView();  // a bridge does not come back with the process
    }
    m_bIntact = false;
    m_freeze.stop();
    m_bridge.BeginLoad(false);
    m_pOverlay->Clear();
    ShowIndication();
    if (m_pView && m_nGeneration == CWebHost::Instance().Generation()) {
        Submit();
    } else if (isVisible()) {
        CreateView();
    } else {
        CreateViewWhenIdle();
    }
}

// A timer without delay runs when the pending events were handled.
void CWebShell::CreateViewWhenIdle() {
    if (isVisible() || CWebHost::Instance().HasBegun()) {
        QTimer::singleShot(0, this, &CWebShell::CreateView);
        return;
    }
    connect(&CWebHost::Instance(), &CWebHost::Begun, this, &CWebShell::CreateViewWhenIdle, Qt::UniqueConnection);
}

void CWebShell::CreateView() {
    CWebHost& host = CWebHost::Instance();
    if (m_pView || !m_load) {
        return;
    }
    if (!host.HasEnded()) {
        const PortsLock ports;
        m_pView = ports->web ? ports->web->NewView(*this, this) : nullptr;
    }
    m_nGeneration = host.Generation();
    if (!m_pView) {
        Trace(m_load->url, "not displayed: there is no web engine", true);
        Finish(false, 0);
        ShowMessage(EnWebText::kNoEngine, false);
        return;
    }
    host.AddView(m_pView);
    m_pView->setGeometry(rect());
    m_pView->show();
    m_pOverlay->raise();
    setFocusProxy(m_pView);
    if (window()->focusWidget() == this) {
        m_pView->setFocus();
    }
    Submit();
}

void CWebShell::Submit() {
    const QStringList origins = m_bBridge ? BridgeOrigins() : QStringList();
    m_bridge.BeginLoad(m_bBridge);
    m_bFrozen = false;
    Trace(m_load->url, "loads");
    m_pView->Load({m_load->url, origins});
}

void CWebShell::CloseView() {
    const bool focused = isAncestorOf(window()->focusWidget());
    DropView();
    if (focused) {
        setFocus();  // the next view takes it over
    }
}

void CWebShell::DropView() {
    m_freeze.stop();
    m_bFrozen = false;
    m_bCrashed = false;
    CloseContextMenu();
    CWebHost::Instance().RemoveView(m_pView);
    delete std::exchange(m_pView, nullptr);
}

void CWebShell::OnUserChanged() {
    if (m_nGeneration == CWebHost::Instance().Generation()) {
        return;
    }
    CloseView();
    if (m_load) {
        CreateViewWhenIdle();
    } else {
        m_pOverlay->Clear();
        m_shown = {};
    }
}

void CWebShell::StopLoad() {
    if (!m_load) {
        return;
    }
    Finish(false, 0);
    if (m_pView) {
        m_pView->Stop();
    }
}

void CWebShell::Run(const QString& script) {
    if (m_pView) {
        m_pView->Run(script);
    }
}

void CWebShell::LoadStarted() {
    m_freeze.stop();
    if (!m_load) {
        // The page loads another one itself.
        const QUrl url = m_pView->CommittedUrl();
        m_load = Load{TextOf(url), url};
        m_bIntact = false;
        ShowIndication();
    }
}

void CWebShell::LoadFinished(bool success, int httpCode) {
    if (!m_load) {
        return;
    }
    const QUrl committed = m_pView->CommittedUrl();
    QString reason;
    if (success && IsLoadable(committed, reason)) {
        m_shown = {TextOf(committed), committed};
    }
    Trace(committed, success ? "loaded" : "failed", !success);
    Finish(success, httpCode);
    m_bIntact = success;
    if (success) {
        m_pOverlay->Clear();
    } else {
        Fail();
    }
}

void CWebShell::Fail() {
    ShowMessage(EnWebText::kLoadFailed, true);
    if (m_bToast && isVisible()) {
        auto* toast = new ZToast(this);
        ZToast::ToastInfo info;
        info.style = ZToast::kWarning;
        info.text = Text(EnWebText::kNoConnection);
        toast->showToast(info);
    }
}

void CWebShell::ShowMessage(EnWebText text, bool retry) {
    std::function<void()> again;
    if (retry) {
        again = [this] { Start(Load(m_shown)); };
    }
    m_pOverlay->ShowMessage(Text(text), std::move(again), [url = m_shown.text] { OpenInBrowser(url); });
}

void CWebShell::Finish(bool success, int httpCode) {
    const Load ended = *m_load;
    m_load.reset();
    m_bFirstIndicated = m_bFirstIndicated || (m_bFirstIndication && isVisible());
    if (!m_pOverlay->HasMessage()) {
        m_pOverlay->Clear();
    }
    for (int i = 0; i < ended.ends; ++i) {
        EndLater(success, httpCode, ended.text);
    }
    ArmFreeze();
}

void CWebShell::EndLater(bool success, int httpCode, const QString& text) {
    QTimer::singleShot(0, this, [this, success, httpCode, text] { Q_EMIT LoadEnd(success, httpCode, text); });
}

bool CWebShell::GoesToDispatch(const QUrl& url) const {
    switch (m_links) {
        case EnLinks::kLoaded:
            return false;
        case EnLinks::kDispatched:
            return true;
        case EnLinks::kOwnOrigin:
            break;
    }
    const QUrl committed = m_pView->CommittedUrl();
    return !(IsBridgeOrigin(committed) && OriginOf(url) == OriginOf(committed));
}

bool CWebShell::AcceptNavigation(const QUrl& url, EnWebNavigation type, bool mainFrame) {
    if (mainFrame && type == EnWebNavigation::kLink && GoesToDispatch(url)) {
        QTimer::singleShot(0, this, [text = TextOf(url)] { Dispatch(text); });
        return false;
    }
    QString reason;
    if (IsLoadable(url, reason)) {
        return true;
    }
    kLog.Error(FMT_STRING("Refused an address of a page, {}: {}"), reason.toStdString(), Logged(TextOf(url)));
    const bool ofLoad = type == EnWebNavigation::kLoad || type == EnWebNavigation::kRedirect;
    if (mainFrame && ofLoad && m_load) {
        Finish(false, 0);
        Fail();
    } else if (mainFrame) {
        EndLater(false, 0, TextOf(url));
    }
    return false;
}

void CWebShell::MessageReceived(const QString& text) {
    m_bridge.Receive(text);
}

void CWebShell::RenderProcessGone() {
    kLog.Error(FMT_STRING("The process of a page ended: {}"), Logged(m_shown.text));
    Trace(m_shown.url, "its process ended", true);
    m_bridge.BeginLoad(false);
    m_freeze.stop();
    m_bCrashed = true;
    if (m_load) {
        Finish(false, 0);
    }
    if (isVisible()) {
        QTimer::singleShot(0, this, &CWebShell::Recover);
    }
}

void CWebShell::Recover() {
    if (!m_bCrashed) {
        return;
    }
    if (m_nRestarts < kMaxRestarts) {
        ++m_nRestarts;
        QTimer::singleShot(kRestartsMs, this, [this] { --m_nRestarts; });
        Start(Load(m_shown));
    } else {
        ShowMessage(EnWebText::kPageEnded, true);
    }
}

bool CWebShell::AcceptPopup() {
    const int open = CWebHost::Instance().WindowCount() + m_nStandIns;
    if (!m_bPopups || open >= CWebHost::kMaxWindows) {
        kLog.Error(FMT_STRING("Refused a popup, {}"), m_bPopups ? "too many are open" : "the page may open none");
        return false;
    }
    ++m_nStandIns;
    QTimer::singleShot(kStandInMs, this, [this] { --m_nStandIns; });
    return true;
}

void CWebShell::PopupAddressed(const QUrl& url, const QSize& size) {
    if (url.scheme() == QLatin1String("zrclient")) {
        QTimer::singleShot(0, this, [text = TextOf(url)] { Dispatch(text); });
        return;
    }
    QString reason;
    if (!IsLoadable(url, reason)) {
        kLog.Error(FMT_STRING("Refused a popup, {}: {}"), reason.toStdString(), Logged(TextOf(url)));
        return;
    }
    bool handled = false;
    Q_EMIT BeforePopup(TextOf(url), &handled, size);
    if (!handled) {
        kLog.Info(FMT_STRING("Dropped a popup: {}"), Logged(TextOf(url)));
    }
}

void CWebShell::ContextMenuWanted(const QPoint& place, int possible, std::function<void(int)> edit) {
    CloseContextMenu();
    using core::webview::kMenuCopy;
    using core::webview::kMenuCut;
    using core::webview::kMenuPaste;
    if ((m_nMenuFlags & (kMenuCopy | kMenuCut | kMenuPaste)) == 0) {
        return;
    }
    m_pMenu = new ZMenu(this);
    m_pMenu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](EnWebText text, int flag) {
        QAction* action = m_pMenu->addAction(Text(text));
        action->setEnabled(flag == 0 || (possible & flag) != 0);
        connect(action, &QAction::triggered, this, [edit, flag] { edit(flag); });
    };
    for (const auto& [flag, text] : {std::pair(kMenuCopy, EnWebText::kCopy), std::pair(kMenuCut, EnWebText::kCut),
                                     std::pair(kMenuPaste, EnWebText::kPaste)}) {
        if ((m_nMenuFlags & flag) != 0) {
            add(text, flag);
        }
    }
    add(EnWebText::kSelectAll, 0);
    m_pMenu->popup(place);
}

void CWebShell::CloseContextMenu() {
    if (m_pMenu) {
        m_pMenu->close();
    }
}

void CWebShell::SetIndication(bool eachLoad) {
    m_bEachIndication = eachLoad;
    ShowIndication();
}

void CWebShell::SetFirstIndication(bool firstVisibleLoad) {
    m_bFirstIndication = firstVisibleLoad;
    ShowIndication();
}

void CWebShell::ShowIndication() {
    const bool wanted = m_bEachIndication || (m_bFirstIndication && !m_bFirstIndicated);
    if (m_load && wanted && isVisible()) {
        m_pOverlay->ShowLoading();
    } else if (m_load && !m_pOverlay->HasMessage()) {
        m_pOverlay->Clear();
    }
}

void CWebShell::ArmFreeze() {
    if (m_pView && !isVisible() && !m_load && !m_bCrashed) {
        m_freeze.start(kFreezeMs);
    }
}

void CWebShell::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Before the window is active: its first button would get the focus otherwise.
    if (!window()->focusWidget()) {
        setFocus();
    }
    m_freeze.stop();
    if (m_bFrozen) {
        m_bFrozen = false;
        m_pView->SetFrozen(false);
    }
    if (m_load && !m_pView) {
        CreateViewWhenIdle();
    }
    ShowIndication();
    if (m_bCrashed) {
        QTimer::singleShot(0, this, &CWebShell::Recover);
    }
}

void CWebShell::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    CloseContextMenu();
    ArmFreeze();
}

void CWebShell::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    m_pOverlay->setGeometry(rect());
    if (m_pView) {
        m_pView->setGeometry(rect());
    }
}

}  // namespace host::web
