#include "Premium/ZRPremiumManager.h"

#include "ZRGrowthSingleton.h"

CZRPremiumManager* CZRPremiumManager::Singleton() {
    static CZRPremiumManager* manager = growth::NewManager<CZRPremiumManager>();
    return manager;
}

CZRPremiumManager::CZRPremiumManager() = default;

CZRPremiumManager::~CZRPremiumManager() = default;

void CZRPremiumManager::Init() {}

void CZRPremiumManager::UnInit() {}

void CZRPremiumManager::OnLogin() {}

void CZRPremiumManager::OnLogout() {}
