#include "PremiumRights.h"

#include "GrowthService.h"
#include "core/message_dispatch.h"
#include "core/message_ids.h"
#include "modules/ZRGrowthMessages.h"

CPremiumRights::CPremiumRights(QObject* parent) : QObject(parent) {
    for (const unsigned int message : {kMsgPremiumDataChanged, kMsgPremiumRequestAnswered, kMsgVipStatusChanged,
                                       unsigned(core::kMsgLanguageChanged)}) {
        core::__CMessageDispatch("[Client]")
            .Bind(
                message, [this](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { Refresh(); },
                this);
    }
    Refresh();
}

CPremiumUIAccessData CPremiumRights::Record(EnPremiumAccess access) {
    const auto service = GrowthService();
    return service ? service->GetUIAccessData(access) : CPremiumUIAccessData();
}

bool CPremiumRights::HasModule() {
    return GrowthService() != nullptr;
}

unsigned long CPremiumRights::AskAll(bool serverPush) {
    const auto service = GrowthService();
    return service ? service->GetUiMsgAndPremiumAccessReq(serverPush) : 0;
}

unsigned long CPremiumRights::AskList(const QVector<int>& rights, bool serverPush) {
    const auto service = GrowthService();
    return service ? service->GetUiMsgAndPremiumAccessReq(rights, serverPush) : 0;
}

void CPremiumRights::Refresh() {
    m_table.clear();
    m_vip = VipStatus();
    if (const auto service = GrowthService()) {
        m_table = service->GetUIAccessData();
        m_vip.qualification = service->HasVipQualification();
        m_vip.grade = service->GetVipGrade();
        m_vip.state = service->GetVipState();
        m_vip.isNewSystem = service->IsNewVipSystem();
        m_vip.newState = service->GetNewVipState();
        m_vip.engine = service->GetVipEngineStatus();
    }
    Q_EMIT Changed();
}
