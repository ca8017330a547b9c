#include "Vip/Controller/ZRVipManager.h"

#include "Vip/Model/ZRVipDataHandler.h"
#include "ZRGrowthSingleton.h"
#include "core/environment.h"

CZRVipManager* CZRVipManager::Singleton() {
    static growth::CStartedManager<CZRVipManager> manager;
    return manager.Get();
}

CZRVipManager::CZRVipManager() = default;

CZRVipManager::~CZRVipManager() = default;

void CZRVipManager::Init() {
    m_pDataHandler = new CZRVipDataHandler(this);
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
