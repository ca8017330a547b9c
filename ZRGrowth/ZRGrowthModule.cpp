#include "ZRGrowthModule.h"

#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Premium/ZRPremiumManager.h"
#include "Vip/Controller/ZRVipManager.h"

CZRGrowthModule::CZRGrowthModule() = default;

CZRGrowthModule::~CZRGrowthModule() = default;

std::string CZRGrowthModule::GetSymbolName() {
    return "zelkor.zrgrowth.main";
}

// It is intended that the four orders differ. VIP and AI chat start at their first use, so they are not started here.
void CZRGrowthModule::OnInit() {
    CZRPremiumManager::Singleton()->Init();
    CZRAdManager::Singleton()->Init();
}

// VIP never stops; AI chat unbinds, also where this is its first use.
void CZRGrowthModule::OnUnInit() {
    CZRPremiumManager::Singleton()->UnInit();
    CZRAdManager::Singleton()->UnInit();
    CZRAIChatManager::Singleton()->UnInit();
}

void CZRGrowthModule::OnLogin() {
    CZRPremiumManager::Singleton()->OnLogin();
    CZRAdManager::Singleton()->OnLogin();
    CZRVipManager::Singleton()->OnLogin();
    CZRAIChatManager::Singleton()->OnLogin();
}

// The AI chat page closes first: it is a separate window and must not outlive the login.
void CZRGrowthModule::OnLogout() {
    CZRAIChatManager::Singleton()->OnLogout();
    CZRPremiumManager::Singleton()->OnLogout();
    CZRAdManager::Singleton()->OnLogout();
    CZRVipManager::Singleton()->OnLogout();
}
