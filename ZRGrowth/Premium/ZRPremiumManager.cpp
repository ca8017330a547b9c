#include "Premium/ZRPremiumManager.h"

#include "Premium/Model/ZRPremiumAccessModel.h"
#include "Premium/Model/ZRPremiumDataHandler.h"
#include "ZRGrowthSingleton.h"

CZRPremiumManager* CZRPremiumManager::Singleton() {
    static CZRPremiumManager* manager = growth::NewManager<CZRPremiumManager>();
    return manager;
}

CZRPremiumManager::CZRPremiumManager() = default;

CZRPremiumManager::~CZRPremiumManager() = default;

// The handler works from its construction on, but nothing reaches it before this returns.
void CZRPremiumManager::Init() {
    m_pDataHandler = new CZRPremiumDataHandler(this);
    m_pModel = std::make_unique<CZRPremiumAccessModel>();
}

// It is intended that handler and table live as long as the process.
void CZRPremiumManager::UnInit() {}

void CZRPremiumManager::OnLogin() {
    if (m_pDataHandler) {
        m_pDataHandler->OnLogin();
    }
}

// It is intended that the handler is not notified: its timer and requests continue.
void CZRPremiumManager::OnLogout() {
    if (m_pModel) {
        m_pModel->ClearPremiumData();
    }
}

unsigned long CZRPremiumManager::GetUiMsgAndPremiumAccessReq(bool serverPush) {
    return m_pDataHandler ? m_pDataHandler->GetUiMsgAndPremiumAccessReq(serverPush) : 0;
}

unsigned long CZRPremiumManager::GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) {
    return m_pDataHandler ? m_pDataHandler->GetUiMsgAndPremiumAccessReq(accessList, serverPush) : 0;
}

unsigned long CZRPremiumManager::GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList,
                                                             bool serverPush) {
    return m_pDataHandler ? m_pDataHandler->GetUiMsgAndPremiumAccessReq(accessList, serverPush) : 0;
}

CPremiumUIData CZRPremiumManager::GetUIData(EnPremiumAccess access) const {
    return GetUIAccessData(access);
}

CPremiumAccessData CZRPremiumManager::GetAccessData(EnPremiumAccess access) const {
    return GetUIAccessData(access);
}

CPremiumUIAccessData CZRPremiumManager::GetUIAccessData(EnPremiumAccess access) const {
    return m_pModel ? m_pModel->GetUIAccessData(access) : CPremiumUIAccessData();
}

QMap<EnPremiumAccess, CPremiumUIAccessData> CZRPremiumManager::GetUIAccessData() const {
    return m_pModel ? m_pModel->GetUIAccessData() : QMap<EnPremiumAccess, CPremiumUIAccessData>();
}

void CZRPremiumManager::SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) {
    if (m_pModel) {
        m_pModel->SetUIAccessData(access, data);
    }
}

void CZRPremiumManager::SavePremiumData() {
    if (m_pModel) {
        m_pModel->SavePremiumData();
    }
}
