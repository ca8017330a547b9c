#include "ZRGrowthModuleUtil.h"

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/TplZRPluginInterfaceFactoryUnique.h"

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

bool CZRGrowthModuleUtil::IsAIChatEnable(ZRAIChatEntryScene scene) {
    return CZRAIChatManager::Singleton()->IsAIChatEnable(scene);
}

void CZRGrowthModuleUtil::SetAIChatDevelopEnableType(unsigned int type) {
    CZRAIChatManager::Singleton()->SetAIChatDevelopEnableType(type);
}
