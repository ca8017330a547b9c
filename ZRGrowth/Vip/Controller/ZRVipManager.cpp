#include "Vip/Controller/ZRVipManager.h"

#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRActiveVipPopupController.h"
#include "Vip/Model/ZRVipDataHandler.h"
#include "Vip/Model/ZRVipTexts.h"
#include "Vip/View/ZRVipBannerWidget.h"
#include "Vip/View/ZRVipIconWidget.h"
#include "Vip/View/ZRVipMaskWidget.h"
#include "Vip/View/ZRVipTagWidget.h"
#include "Vip/View/ZRVipViewTools.h"
#include "Vip/ZRVipIds.h"
#include "ZRGrowthSingleton.h"
#include "core/environment.h"
#include "core/urlhandler.h"
#include "framework/defensive.h"
#include "premium_svr.pb.h"
#include "webview/ZRWebWindowInfo.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;
constexpr QSize kWebPageSize(390, 848);

// Returns the page to which an activation leads. Empty if the data names none.
QString TargetUrl(const QString& otherInfo) {
    if (otherInfo.isEmpty()) {
        return QString();
    }
    Json::Value root;
    std::string error;
    if (!growth_json::Parse(otherInfo.toStdString(), root, error)) {
        LogError("Parse strOtherInfo failed, error = {}", error);
    }
    return growth_json::Text(growth_json::Member(growth_json::Member(root, "active_premium_popup_info"), "target_url"));
}

}  // namespace

CZRVipManager* CZRVipManager::Singleton() {
    static growth::CStartedManager<CZRVipManager> manager;
    return manager.Get();
}

CZRVipManager::CZRVipManager() = default;

CZRVipManager::~CZRVipManager() = default;

void CZRVipManager::Init() {
    m_pDataHandler = new CZRVipDataHandler(this);
    m_pActiveVipPopupController = new CZRActiveVipPopupController(this);
}

void CZRVipManager::UnInit() {}

void CZRVipManager::OnLogin() {
    RequestVipStatus();
}

void CZRVipManager::OnLogout() {
    ClearVipStatus();
}

void CZRVipManager::RequestVipStatus() {
    if (m_pDataHandler) {
        m_pDataHandler->RequestVipStatus();
    }
}

void CZRVipManager::ClearVipStatus() {
    if (m_pDataHandler) {
        m_pDataHandler->ClearVipStatus();
    }
}

bool CZRVipManager::HasVipQualification() const {
    return m_pDataHandler && m_pDataHandler->HasVipQualification();
}

int CZRVipManager::GetVipGrade() const {
    return m_pDataHandler ? m_pDataHandler->GetVipGrade() : 0;
}

int CZRVipManager::GetVipState() const {
    return m_pDataHandler ? m_pDataHandler->GetVipState() : 0;
}

int CZRVipManager::GetNewVipState() const {
    return m_pDataHandler ? m_pDataHandler->GetNewVipState() : 0;
}

ZRVipEngineStatus CZRVipManager::GetVipEngineStatus() const {
    return m_pDataHandler ? m_pDataHandler->GetVipEngineStatus() : kVipEngineUndetermined;
}

bool CZRVipManager::IsNewVipSystem() const {
    return core::environment::IsVelora() && m_pDataHandler && m_pDataHandler->IsNewVipSystem();
}

bool CZRVipManager::IsVipMember() const {
    return (IsNewVipSystem() ? GetNewVipState() : GetVipState()) == kVipStateMember;
}

// Whether a click activates depends on the right's state alone, never on the text set.
void CZRVipManager::HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType dataType,
                                           QPointer<QWidget> activeVipPopupParent) {
    const CPremiumUIAccessData data = CZRPremiumManager::Singleton()->GetUIAccessData(access);
    if (data.nActivationType == web_premium_access::READY_ACTIVATION) {
        const QString targetUrl = TargetUrl(data.strOtherInfo);
        if (!targetUrl.isEmpty()) {
            LogInfo("Active vip, access = {}, dataType = {}, targetUrl = {}", int(access), int(dataType),
                    targetUrl.toStdString());
            if (m_pActiveVipPopupController) {
                m_pActiveVipPopupController->RequestActiveVip(access, targetUrl, activeVipPopupParent);
            }
            return;
        }
    }
    const auto texts = SelectVipTexts(data, dataType);
    if (!texts || texts->nBtnUrlID <= 0) {
        LogError("Click vip widget failed, btnUrlID = 0, access = {}, dataType = {}", int(access), int(dataType));
        return;
    }
    const QString url = vip_view::LinkUrl(static_cast<unsigned long>(texts->nBtnUrlID));
    LogInfo("Click vip widget, access = {}, dataType = {}, btnUrlID = {}, url = {}", int(access), int(dataType),
            texts->nBtnUrlID, url.toStdString());
    OpenVipWebPage(url);
}

void CZRVipManager::OpenVipWebPage(const QString& strUrl) {
    if (strUrl.isEmpty()) {
        LogError("Open Vip Web Page failed, strUrl is empty");
        return;
    }
    core::webview::ZRWebWindowInfo info;
    info.size = kWebPageSize;
    info.minimumSize = kWebPageSize;
    using namespace core::urlhandler;
    DispatchUrl(strUrl, kBusinessDefault, nullptr, QVariant::fromValue(info), kFallbackWeb);
}

bool CZRVipManager::IsVipIconEnabled(EnPremiumAccess access) {
    return CZRVipIconWidget::IsVipIconEnabled(access);
}

IGrowthVipBaseWidget* CZRVipManager::GetVipIcon(EnPremiumAccess access, QWidget* parent) {
    return new CZRVipIconWidget(access, parent);
}

QString CZRVipManager::GetVipIconImageName() {
    return CZRVipIconWidget::GetIconImageName(true);
}

QSize CZRVipManager::GetVipIconImageSize() {
    return CZRVipIconWidget::GetIconImageSize();
}

bool CZRVipManager::IsVipTagEnabled(EnPremiumAccess access) {
    return CZRVipTagWidget::IsVipTagEnabled(access);
}

IGrowthVipBaseWidget* CZRVipManager::GetVipTag(EnPremiumAccess access, ZRVipTagType tagType, const QString& pageId,
                                               QWidget* parent) {
    return new CZRVipTagWidget(access, tagType, pageId, parent);
}

QString CZRVipManager::GetVipTagImageName(ZRVipTagType tagType) {
    return CZRVipTagWidget::GetTagImageName(tagType, ZRVipGrade(GetVipGrade()));
}

QSize CZRVipManager::GetVipTagImageSize(ZRVipTagType tagType) {
    return CZRVipTagWidget::GetTagImageSize(tagType);
}

bool CZRVipManager::IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) {
    return CZRVipBannerWidget::IsVipBannerEnabled(access, dataType);
}

IGrowthVipBaseWidget* CZRVipManager::GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType,
                                                  const QString& pageId, QWidget* parent) {
    auto* banner = new CZRVipBannerWidget(access, dataType, pageId, parent);
    FrameWork::ConnectChecked(kGrowthModuleTag, banner, &CZRVipBannerWidget::ActionButtonClicked, this,
                              [this](EnPremiumAccess right, ZRVipUIDataType texts, const QPointer<QWidget>& window) {
                                  HandleVipWidgetClicked(right, texts, window);
                              });
    return banner;
}

// Any type but the exclusive one follows the rule of the locked mask, also one without a mask.
bool CZRVipManager::IsVipMaskEnabled(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType) {
    return maskType == ZRVipMaskExclusive ? CZRVipExclusiveMaskWidget::IsVipMaskEnabled(access, dataType)
                                          : CZRVipLockedMaskWidget::IsVipMaskEnabled(access, dataType);
}

IGrowthVipBaseWidget* CZRVipManager::GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access,
                                                ZRVipUIDataType dataType, const QString& pageId, QWidget* parent,
                                                const zrstdui::image_blur::WidgetPainterBufferSource& bufferSource,
                                                double blurRadiusTheme3, double blurRadiusOther, bool popupStyle) {
    switch (maskType) {
        case ZRVipMaskLocked:
        case ZRVipMaskLockedCompact: {
            auto* mask = new CZRVipLockedMaskWidget(maskType, access, dataType, pageId, parent, bufferSource,
                                                    blurRadiusTheme3, blurRadiusOther, popupStyle);
            FrameWork::ConnectChecked(
                kGrowthModuleTag, mask, &CZRVipLockedMaskWidget::ActionButtonClicked, this,
                [this](EnPremiumAccess right, ZRVipUIDataType texts, const QPointer<QWidget>& window) {
                    HandleVipWidgetClicked(right, texts, window);
                });
            return mask;
        }
        case ZRVipMaskExclusive:
            return new CZRVipExclusiveMaskWidget(access, dataType, pageId, parent, bufferSource, blurRadiusTheme3,
                                                 blurRadiusOther, popupStyle);
    }
    return nullptr;
}
