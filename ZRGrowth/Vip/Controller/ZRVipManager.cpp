#include "Vip/Controller/ZRVipManager.h"

#include "ZRGrowthSingleton.h"

CZRVipManager* CZRVipManager::Singleton() {
    static CZRVipManager* manager = growth::NewStartedManager<CZRVipManager>();
    return manager;
}

CZRVipManager::CZRVipManager() = default;

CZRVipManager::~CZRVipManager() = default;

void CZRVipManager::Init() {}

void CZRVipManager::UnInit() {}

void CZRVipManager::OnLogin() {}

void CZRVipManager::OnLogout() {}
