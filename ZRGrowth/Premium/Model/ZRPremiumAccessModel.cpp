#include "Premium/Model/ZRPremiumAccessModel.h"

#include <QReadLocker>
#include <QWriteLocker>

#include "GrowthBizLogUtil.h"
#include "Premium/Model/ZRPremiumWire.h"
#include "core/config_local.h"
#include "core/pb_helper.h"
#include "premium_svr.pb.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Premium;

}  // namespace

CZRPremiumAccessModel::CZRPremiumAccessModel()
    : m_pLock(std::make_unique<QReadWriteLock>()), m_strKey("Growth_PremiumData") {}

CZRPremiumAccessModel::~CZRPremiumAccessModel() = default;

CPremiumUIData CZRPremiumAccessModel::GetUIData(EnPremiumAccess access) const {
    const QReadLocker locker(m_pLock.get());
    const auto found = m_mapData.constFind(access);
    return found == m_mapData.constEnd() ? CPremiumUIData() : CPremiumUIData(*found);
}

CPremiumAccessData CZRPremiumAccessModel::GetAccessData(EnPremiumAccess access) const {
    const QReadLocker locker(m_pLock.get());
    const auto found = m_mapData.constFind(access);
    return found == m_mapData.constEnd() ? CPremiumAccessData() : CPremiumAccessData(*found);
}

CPremiumUIAccessData CZRPremiumAccessModel::GetUIAccessData(EnPremiumAccess access) const {
    const QReadLocker locker(m_pLock.get());
    const auto found = m_mapData.constFind(access);
    return found == m_mapData.constEnd() ? CPremiumUIAccessData() : *found;
}

QMap<EnPremiumAccess, CPremiumUIAccessData> CZRPremiumAccessModel::GetUIAccessData() const {
    const QReadLocker locker(m_pLock.get());
    return m_mapData;
}

void CZRPremiumAccessModel::SetUIAccessData(EnPremiumAccess access, const CPremiumUIAccessData& data) {
    const QWriteLocker locker(m_pLock.get());
    m_mapData.insert(access, data);
}

void CZRPremiumAccessModel::ClearPremiumData() {
    const QWriteLocker locker(m_pLock.get());
    m_mapData = {};
}

// It reads without the lock: only this thread writes the table. The loop uses constant iterators, since a detached
// table would be a change that other threads see.
void CZRPremiumAccessModel::SavePremiumData() {
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    for (auto right = m_mapData.constBegin(); right != m_mapData.constEnd(); ++right) {
        premium_wire::WriteRecord(right.key(), right.value(), *saved.add_ui_data_and_access_data());
    }
    // The two texts name another operation. It is intended, since logs are searched for them.
    std::string bytes;
    if (!core::pb_helper::PBDataToBuf(&saved, bytes)) {
        LogError("Latest News Filter Parse To String Failed.");
    }
    if (!core::config_local::UserCfgSaveString(m_strKey, bytes)) {
        LogError("Latest News Filter Save Failed.");
    }
}

void CZRPremiumAccessModel::InitPremiumData() {
    web_premium_access::GetUiMsgAndPremiumAccessData saved;
    std::string bytes;
    if (!core::config_local::UserCfgReadString(m_strKey, bytes) || !core::pb_helper::PBBufToData(bytes, &saved)) {
        return;
    }
    for (const web_premium_access::UiDataAndAccessData& element : saved.ui_data_and_access_data()) {
        if (const auto record = premium_wire::ReadRecord(element)) {
            SetUIAccessData(EnPremiumAccess(element.access()), *record);
        }
    }
}
