#include "ZRGrowthModuleUtil.h"

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Premium/View/ZRPremiumMenuEntryAction.h"
#include "Premium/View/ZRPremiumTimeActivationStateWidget.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipMenuEntryAction.h"
#include "Vip/View/ZRVipTitleBarEntryWidget.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/TplZRPluginInterfaceFactoryUnique.h"
#include "ui/ZMenu.h"

namespace {

bool RegisterFactory() {
    IZRPluginCenter::RegisterInterfaceFactory(
        std::make_shared<TplZRPluginInterfaceFactoryUnique<CZRGrowthModuleUtil, IZRGrowthModuleInterface>>(), false);
    return true;
}

// Runs when the library is loaded, before any callback of the module.
[[maybe_unused]] const bool kFactoryRegistered = RegisterFactory();

}  // namespace

CZRGrowthModuleUtil::CZRGrowthModuleUtil() = default;

CZRGrowthModuleUtil::~CZRGrowthModuleUtil() = default;

void CZRGrowthModuleUtil::GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                                           int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) {
    CZRAdManager::Singleton()->GetAdBannerAsync(adPosition, size, callback, topNonClickableAreaHeight, useCheck, adIds);
}

void CZRGrowthModuleUtil::UpdateAdBottomPopupCoordinates() {
    CZRAdManager::Singleton()->UpdateAdBottomPopupCoordinates();
}

QWidget* CZRGrowthModuleUtil::GetAdBottomPopupDeveloperView() {
    return CZRAdManager::Singleton()->GetAdBottomPopupDeveloperView();
}

unsigned long CZRGrowthModuleUtil::GetUiMsgAndPremiumAccessReq(bool serverPush) {
    return CZRPremiumManager::Singleton()->GetUiMsgAndPremiumAccessReq(serverPush);
}

unsigned long CZRGrowthModuleUtil::GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) {
    return CZRPremiumManager::Singleton()->GetUiMsgAndPremiumAccessReq(accessList, serverPush);
}

unsigned long CZRGrowthModuleUtil::GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList,
                                                               bool serverPush) {
    return CZRPremiumManager::Singleton()->GetUiMsgAndPremiumAccessReq(accessList, serverPush);
}

CPremiumUIData CZRGrowthModuleUtil::GetUIData(EnPremiumAccess access) const {
    return CZRPremiumManager::Singleton()->GetUIData(access);
}

CPremiumAccessData CZRGrowthModuleUtil::GetAccessData(EnPremiumAccess access) const {
    return CZRPremiumManager::Singleton()->GetAccessData(access);
}

CPremiumUIAccessData CZRGrowthModuleUtil::GetUIAccessData(EnPremiumAccess access) const {
    return CZRPremiumManager::Singleton()->GetUIAccessData(access);
}

QMap<EnPremiumAccess, CPremiumUIAccessData> CZRGrowthModuleUtil::GetUIAccessData() const {
    return CZRPremiumManager::Singleton()->GetUIAccessData();
}

void CZRGrowthModuleUtil::SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) {
    CZRPremiumManager::Singleton()->SetUIAccessData(access, data);
}

IGrowthPremiumWidget* CZRGrowthModuleUtil::GetPremiumTimeActivationStateWidget(const QString& mainTitle,
                                                                               const QString& mainBtn,
                                                                               const QString& uiType,
                                                                               const QString& detailTitle, int daysLeft,
                                                                               QWidget* parent) {
    return new CZRPremiumTimeActivationStateWidget(mainTitle, mainBtn, uiType, detailTitle, daysLeft, parent);
}

ZAction* CZRGrowthModuleUtil::GetPremiumMenuEntryAction(ZMenu* menu) {
    return new CZRPremiumMenuEntryAction(menu);
}

ZAction* CZRGrowthModuleUtil::GetVipMenuEntryAction(ZMenu* menu) {
    return new CZRVipMenuEntryAction(menu);
}

QWidget* CZRGrowthModuleUtil::GetVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged) {
    return new CZRVipTitleBarEntryWidget(parent, fnChanged);
}

bool CZRGrowthModuleUtil::HasVipQualification() {
    return CZRVipManager::Singleton()->HasVipQualification();
}

int CZRGrowthModuleUtil::GetVipGrade() {
    return CZRVipManager::Singleton()->GetVipGrade();
}

int CZRGrowthModuleUtil::GetVipState() {
    return CZRVipManager::Singleton()->GetVipState();
}

bool CZRGrowthModuleUtil::IsNewVipSystem() {
    return CZRVipManager::Singleton()->IsNewVipSystem();
}

int CZRGrowthModuleUtil::GetVipEngineStatus() {
    return CZRVipManager::Singleton()->GetVipEngineStatus();
}

int CZRGrowthModuleUtil::GetNewVipState() {
    return CZRVipManager::Singleton()->GetNewVipState();
}

bool CZRGrowthModuleUtil::IsVipIconEnabled(EnPremiumAccess access) {
    return CZRVipManager::Singleton()->IsVipIconEnabled(access);
}

IGrowthVipBaseWidget* CZRGrowthModuleUtil::GetVipIcon(EnPremiumAccess access, QWidget* parent) {
    return CZRVipManager::Singleton()->GetVipIcon(access, parent);
}

QString CZRGrowthModuleUtil::GetVipIconImageName() {
    return CZRVipManager::Singleton()->GetVipIconImageName();
}

QSize CZRGrowthModuleUtil::GetVipIconImageSize() {
    return CZRVipManager::Singleton()->GetVipIconImageSize();
}

bool CZRGrowthModuleUtil::IsVipTagEnabled(EnPremiumAccess access) {
    return CZRVipManager::Singleton()->IsVipTagEnabled(access);
}

IGrowthVipBaseWidget* CZRGrowthModuleUtil::GetVipTag(EnPremiumAccess access, ZRVipTagType tagType,
                                                     const QString& pageId, QWidget* parent) {
    return CZRVipManager::Singleton()->GetVipTag(access, tagType, pageId, parent);
}

QString CZRGrowthModuleUtil::GetVipTagImageName(ZRVipTagType tagType) {
    return CZRVipManager::Singleton()->GetVipTagImageName(tagType);
}

QSize CZRGrowthModuleUtil::GetVipTagImageSize(ZRVipTagType tagType) {
    return CZRVipManager::Singleton()->GetVipTagImageSize(tagType);
}

bool CZRGrowthModuleUtil::IsVipBannerEnabled(EnPremiumAccess access, ZRVipUIDataType dataType) {
    return CZRVipManager::Singleton()->IsVipBannerEnabled(access, dataType);
}

IGrowthVipBaseWidget* CZRGrowthModuleUtil::GetVipBanner(EnPremiumAccess access, ZRVipUIDataType dataType,
                                                        const QString& pageId, QWidget* parent) {
    return CZRVipManager::Singleton()->GetVipBanner(access, dataType, pageId, parent);
}

bool CZRGrowthModuleUtil::IsVipMaskEnabled(ZRVipMaskType maskType, EnPremiumAccess access, ZRVipUIDataType dataType) {
    return CZRVipManager::Singleton()->IsVipMaskEnabled(maskType, access, dataType);
}

IGrowthVipBaseWidget* CZRGrowthModuleUtil::GetVipMask(ZRVipMaskType maskType, EnPremiumAccess access,
                                                      ZRVipUIDataType dataType, const QString& pageId, QWidget* parent,
                                                      zrstdui::image_blur::WidgetPainterBufferSource bufferSource,
                                                      double blurRadiusTheme3, double blurRadiusOther,
                                                      bool popupStyle) {
    return CZRVipManager::Singleton()->GetVipMask(maskType, access, dataType, pageId, parent, bufferSource,
                                                  blurRadiusTheme3, blurRadiusOther, popupStyle);
}

void CZRGrowthModuleUtil::HandleVipWidgetClicked(EnPremiumAccess access, ZRVipUIDataType dataType,
                                                 QPointer<QWidget> activeVipPopupParent) {
    CZRVipManager::Singleton()->HandleVipWidgetClicked(access, dataType, activeVipPopupParent);
}

void CZRGrowthModuleUtil::OpenVipWebPage(const QString& url) {
    CZRVipManager::Singleton()->OpenVipWebPage(url);
}

bool CZRGrowthModuleUtil::IsAIChatEnable(ZRAIChatEntryScene scene) {
    return CZRAIChatManager::Singleton()->IsAIChatEnable(scene);
}

void CZRGrowthModuleUtil::OpenAIChatPage(ZRAIChatPageScene pageScene, const QMap<QString, QString>& params,
                                         bool needChangeSessionId, bool showPage) {
    CZRAIChatManager::Singleton()->OpenAIChatPage(pageScene, params, needChangeSessionId, showPage, false, QString());
}

bool CZRGrowthModuleUtil::InvokeAIChatWebJSAPI(const QString& name, const Json::Value& params) {
    return CZRAIChatManager::Singleton()->InvokeWebJSAPI(name, params);
}

bool CZRGrowthModuleUtil::RegisterAIChatNativeJSAPI(
    const QString& name, std::function<std::shared_ptr<Json::Value>(const Json::Value&, int)> handler) {
    return CZRAIChatManager::Singleton()->RegisterNativeJSAPI(name, handler);
}

void CZRGrowthModuleUtil::RespondToNativeJSAPI(const QString& name, const Json::Value& value) {
    CZRAIChatManager::Singleton()->RespondToNativeJSAPI(name, value);
}

void CZRGrowthModuleUtil::UnregisterAIChatNativeJSAPI(const QString& name) {
    CZRAIChatManager::Singleton()->UnregisterNativeJSAPI(name);
}

void CZRGrowthModuleUtil::SetAIChatDevelopEnableType(unsigned int type) {
    CZRAIChatManager::Singleton()->SetAIChatDevelopEnableType(type);
}
