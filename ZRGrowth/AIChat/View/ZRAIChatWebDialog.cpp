#include "AIChat/View/ZRAIChatWebDialog.h"

#include <QCloseEvent>

#include "AIChat/View/ZRAIChatWebTitleBar.h"
#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"
#include "core/environment.h"
#include "core/langx.h"
#include "core/post.h"
#include "framework/defensive.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "webview/ZRWebDialog.h"
#include "webview/ZRWebWidget.h"

namespace {

using core::webview::ZRWebDialog;
using core::webview::ZRWebWidget;

constexpr auto kLogModuleType = CGrowthBizLogUtil::AIChat;
constexpr QSize kMinSize(320, 520);
constexpr QSize kInitialSize(480, 800);
constexpr int kContextMenuFlags = 0x31;
constexpr int kHideDelayMs = 100;
// With exactly 0 some platforms unmap the window.
constexpr double kTransparent = 0.001;

// Returns the member that holds a handler's parameters. Null if the page sent another shape.
const Json::Value& DataOf(const Json::Value& root) {
    return growth_json::Member(growth_json::Member(root, "params"), "data");
}

}  // namespace

CZRAIChatWebDialog::CZRAIChatWebDialog(QWidget* parent) : ZFrameLessWnd(parent) {
    InitUI();
}

CZRAIChatWebDialog::~CZRAIChatWebDialog() {
    // The bar is deleted after this object's own part.
    disconnect(m_pTitleBar, nullptr, this, nullptr);
}

void CZRAIChatWebDialog::InitUI() {
    setObjectName(QStringLiteral("CZRAIChatWebDialog"));
    setAttribute(Qt::WA_StyledBackground);
    setMinimumSize(kMinSize);
    resize(kInitialSize);
    setWindowTitle(core::environment::IsVelora() ? core::langx::tr(299180, "Velora AI")
                                                 : core::langx::tr(291435, "KestrelAI"));
    m_pTitleBar = new CZRAIChatWebTitleBar(this);
    setTitleBar(m_pTitleBar);
    using Bar = CZRAIChatWebTitleBar;
    using Dialog = CZRAIChatWebDialog;
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pTitleBar, &Bar::NewSessionBtnClicked, this,
                              &Dialog::OnNewSessionBtnClicked, Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pTitleBar, &Bar::PinBtnClicked, this, &Dialog::OnPinBtnClicked,
                              Qt::UniqueConnection);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pTitleBar, &Bar::CloseButtonClicked, this,
                              &Dialog::OnCloseButtonClicked, Qt::UniqueConnection);
    showMaxBtn(true);
    showMinBtn(true);
    InitWebWidget();
    RegisterReservedJSAPIs();
    setContentWidget(m_pWebWidget);
}

void CZRAIChatWebDialog::InitWebWidget() {
    m_pWebWidget = new ZRWebWidget(this);
    m_pWebWidget->ShowLoadingOnFirstLoadUrl(true);
    m_pWebWidget->SetNetworkDisconnectedToastVisible(true);
    m_pWebWidget->EnableJSBridge(true);
    m_pWebWidget->SetContextMenuFlags(kContextMenuFlags);
    m_pWebWidget->SetLoadingStatusVisible(false);
    m_pWebWidget->SetPopupEnabled(true);
    m_pWebWidget->SetSameUrlPolicy(core::webview::kSameUrlReloads);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pWebWidget, &ZRWebWidget::LoadEnd, this,
                              &CZRAIChatWebDialog::OnWebLoadEnd);
    // Direct: the slot answers through the pointer before the signal returns.
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pWebWidget, &ZRWebWidget::BeforePopup, this,
                              &CZRAIChatWebDialog::OnBeforePopup,
                              Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
}

// None answers the page: a null pointer leaves the call open.
void CZRAIChatWebDialog::RegisterReservedJSAPIs() {
    const auto offer = [this](const char* name, void (CZRAIChatWebDialog::*handle)(const Json::Value&)) {
        m_pWebWidget->RegisterJSAPI(
            QString::fromLatin1(name),
            [this, handle](const Json::Value& params, int /*call*/) -> std::shared_ptr<std::string> {
                (this->*handle)(params);
                return nullptr;
            },
            this);
    };
    offer(kAIChatJSAPISetNewSessionEnable, &CZRAIChatWebDialog::HandleSetNewSessionEnable);
    offer(kAIChatJSAPIUpdateNetworkStatus, &CZRAIChatWebDialog::HandleUpdateNetworkStatus);
    offer(kAIChatJSAPICloseWindow, &CZRAIChatWebDialog::HandleCloseWindow);
}

void CZRAIChatWebDialog::LoadUrl(const QString& url) {
    m_pWebWidget->LoadUrl(url);
}

bool CZRAIChatWebDialog::InvokeJSAPI(const QString& name, const Json::Value& params) {
    return m_pWebWidget && m_pWebWidget->BroadcastEvent(name, params);
}

bool CZRAIChatWebDialog::IsReservedJSAPIName(const QString& name) {
    return name == QLatin1String(kAIChatJSAPISetNewSessionEnable) ||
           name == QLatin1String(kAIChatJSAPIUpdateNetworkStatus) || name == QLatin1String(kAIChatJSAPICloseWindow);
}

bool CZRAIChatWebDialog::RegisterExtendJSAPI(const QString& name, Handler handler) {
    if (!m_pWebWidget || name.isEmpty() || !handler) {
        return false;
    }
    m_pWebWidget->RegisterJSAPIV2(name, std::move(handler), this);
    return true;
}

void CZRAIChatWebDialog::RespondToExtendJSAPI(const QString& name, const Json::Value& value) {
    m_pWebWidget->OnResponseToJS(name, value);
}

void CZRAIChatWebDialog::OnWebLoadEnd(bool /*success*/, int httpCode, QString url) {
    // Written twice, on purpose.
    LogInfo("Load AI chat page end, httpCode = {}, url = {}", httpCode, url.toStdString());
    LogInfo("Load AI chat page end, httpCode = {}, url = {}", httpCode, url.toStdString());
    Q_EMIT LoadEnd();
}

void CZRAIChatWebDialog::OnBeforePopup(QString const& url, bool* handled, QSize size) {
    *handled = true;
    core::post::ToMain(
        this, [this, url, size] { OpenPopup(url, size); }, nullptr);
}

void CZRAIChatWebDialog::OpenPopup(const QString& url, QSize size) {
    core::webview::ZRWebWindowInfo info;
    info.parent = this;
    info.size = size;
    auto* popup = new ZRWebDialog(info);
    // Links of the first page stay in the popup.
    const auto once = std::make_shared<QMetaObject::Connection>();
    *once = FrameWork::ConnectChecked(kGrowthModuleTag, popup, &ZRWebDialog::LoadEnd, popup, [popup, once] {
        popup->SetUrlDispatchSwitch(true);
        QObject::disconnect(*once);
    });
    popup->SetUrlDispatchSwitch(false);
    popup->LoadUrl(url);
    popup->Open();
}

void CZRAIChatWebDialog::HandleSetNewSessionEnable(const Json::Value& params) {
    LogInfo("Receive JS SetNewSessionEnable ,param = {}", params.toStyledString());
    const Json::Value& enable = growth_json::Member(DataOf(params), "enable");
    if (enable.isBool()) {
        m_pTitleBar->SetNewSessionEnable(enable.asBool());
    }
}

void CZRAIChatWebDialog::HandleUpdateNetworkStatus(const Json::Value& params) {
    LogInfo("Receive JS updateAIChatNetworkStatus, param = {}", params.toStyledString());
    const Json::Value& report = DataOf(params);
    if (!growth_json::IsObject(report)) {
        return;
    }
    const Json::Value& status = growth_json::Member(report, "status");
    m_pTitleBar->SetDescAndTips(status.isInt() ? ZRAIChatWebNetWorkStatus(status.asInt()) : ZRAIChatNetworkGood,
                                growth_json::Text(growth_json::Member(report, "desc")),
                                growth_json::Text(growth_json::Member(report, "tips")));
}

void CZRAIChatWebDialog::HandleCloseWindow(const Json::Value& /*params*/) {
    LogInfo("Receive JS closeWindow");
    Hide();
    Q_EMIT HiddenButNotClosed();
}

void CZRAIChatWebDialog::Show() {
    setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    if (isHidden()) {
        const auto mainFrame = IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
        showCenter(mainFrame ? mainFrame->GetMainFrameWidget() : nullptr, QSize(-1, -1));
    } else {
        ZDialogBase::show();
    }
    raise();
    activateWindow();
}

void CZRAIChatWebDialog::Hide() {
    LogInfo("Hide web page, clear web data");
    Clear();
    setWindowOpacity(kTransparent);
    core::post::ToMainDelay(
        this, kHideDelayMs, [this] { QWidget::hide(); }, nullptr);
}

// The page is emptied, not unloaded: the next load fills it.
void CZRAIChatWebDialog::Clear() {
    m_pTitleBar->Clear();
    m_pWebWidget->CloseContextMenu();
    if (m_pWebWidget->IsLoading()) {
        m_pWebWidget->StopLoad();
    }
    m_pWebWidget->ExecuteJS(QStringLiteral("document.body.innerHTML='';"));
}

void CZRAIChatWebDialog::closeEvent(QCloseEvent* event) {
    event->ignore();
    Hide();
    Q_EMIT HiddenButNotClosed();
}

void CZRAIChatWebDialog::OnCloseButtonClicked() {
    Hide();
    Q_EMIT HiddenButNotClosed();
}

void CZRAIChatWebDialog::OnNewSessionBtnClicked() {
    InvokeJSAPI(QStringLiteral("createSession"), Json::Value());
}

void CZRAIChatWebDialog::OnPinBtnClicked(bool isChecked) {
    setTopMost(isChecked);
}
