#include "Ad/Controller/ZRAdManager.h"

#include "ZRGrowthSingleton.h"

CZRAdManager* CZRAdManager::Singleton() {
    static CZRAdManager* manager = growth::NewManager<CZRAdManager>();
    return manager;
}

CZRAdManager::CZRAdManager() = default;

CZRAdManager::~CZRAdManager() = default;

void CZRAdManager::Init() {}

void CZRAdManager::UnInit() {}

void CZRAdManager::OnLogin() {}

void CZRAdManager::OnLogout() {}
