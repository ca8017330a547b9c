#include "Vip/Model/ZRVipDataHandler.h"

#include <QPointer>

#include "GrowthBizLogUtil.h"
#include "Vip/ZRVipIds.h"
#include "core/message_dispatch.h"
#include "core/pb_helper.h"
#include "core/post.h"
#include "core/random.h"
#include "framework/assertion.h"
#include "modules/ITradeModuleUtil.h"
#include "modules/ZRGrowthMessages.h"
#include "plugin/IZRPluginCenter.h"
#include "vip_base_service.pb.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Vip;
constexpr int kAutoRenewalOn = 1;

// Uniform from 0 up to `window`, which is left out.
uint32_t RandomBelow(uint32_t window) {
    return uint32_t((uint64_t(window) * core::random::GetRandUInt32()) >> 32);
}

ZRVipEngineStatus EngineStatusOfNonMember() {
    const auto trade = IZRPluginCenter::CreateInterface<ITradeModuleUtil>();
    if (!trade) {
        return kVipEngineUndetermined;
    }
    return trade->QueryTradeStatus(kTradeQueryVipEngine) ? kVipEngineUndetermined : kVipEngineNonMember;
}

}  // namespace

CZRVipDataHandler::CZRVipDataHandler(QObject* parent) : QObject(parent) {
    Init();
}

CZRVipDataHandler::~CZRVipDataHandler() = default;

void CZRVipDataHandler::Init() {
    LogInfo("Vip Data Handler Module Init Begin");
    IZRChannelProxy::BindCallback(
        kCSChannelMain, kCmdVipStatusPush,
        [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext) {
            OnVipStatusChangedPushCallback(session, error, data, ext);
        },
        this);
    LogInfo("Vip Data Handler Module Init End, Push Callback Ready");
}

void CZRVipDataHandler::RequestVipStatus() {
    const vip_base_service::GetAppEntryMessageReq request;
    CSProtoData data;
    data.m_nCmd = kCmdVipStatus;
    core::pb_helper::PBDataToBuf(&request, data.m_strData);
    LogInfo("Send Request For Vip Status From Server");
    const auto callback = [this](unsigned long session, CSProtoError error, const CSProtoData& reply,
                                 const CSResponseExt* ext) { OnRequestVipStatusCallback(session, error, reply, ext); };
    IZRChannelProxy::SendCommand(kCSChannelMain, data, nullptr, callback, this);
}

void CZRVipDataHandler::ClearVipStatus() {
    LogInfo("Clear Vip Status, Reset To Default");
    m_status = {};
}

bool CZRVipDataHandler::IsNewVipSystem() const {
    return m_status.nVipVersion == vip_base_service::VIP_VERSION_NEW;
}

void CZRVipDataHandler::OnRequestVipStatusCallback(qulonglong /*nReqKey*/, CSProtoError enError, CSProtoData stRspData,
                                                   const CSResponseExt* /*pRspExt*/) {
    if (enError != kCSProtoOk || stRspData.m_nCmd != kCmdVipStatus) {
        LogError("Vip Status Response Failed, Error = {}, Cmd = {}", int(enError), stRspData.m_nCmd);
        return;
    }
    vip_base_service::GetAppEntryMessageRsp response;
    if (!response.ParseFromString(stRspData.m_strData)) {
        LogError("Vip Status Response Parse Failed, Invalid Protobuf Data");
        return;
    }
    // The result code is not looked at: an answer that parses is taken as it is.
    const vip_base_service::AppEntryMessageData& data = response.data();
    if (data.has_has_vip_qualification()) {
        m_status.bHasVipQualification = data.has_vip_qualification();
    }
    if (!data.has_vip_basic_data()) {
        // On purpose this wipes the qualification as well, also one that was just stored.
        ClearVipStatus();
    } else {
        const vip_base_service::VipBasicData& basic = data.vip_basic_data();
        m_status.nVipGrade = int(basic.vip_level());
        m_status.nVipState = basic.vip_state();
        m_status.nVipVersion = int(basic.vip_version());
        m_status.nNewVipState = int(basic.new_vip_state());
        m_status.nNewVipSubState = int(basic.new_vip_sub_state());
        m_status.bAutoRenewal = basic.auto_renewal() == kAutoRenewalOn;
        LogInfo(
            "Vip Status Updated, Level = {}, Vip State = {}, Version = {}, New Vip State = {}, Sub State = {}, "
            "Auto Renewal = {}",
            m_status.nVipGrade, m_status.nVipState, m_status.nVipVersion, m_status.nNewVipState,
            m_status.nNewVipSubState, m_status.bAutoRenewal);
    }
    core::__CMessageDispatch(GROWTH_HERE).Send(kMsgVipStatusChanged, nullptr, true);
}

void CZRVipDataHandler::OnVipStatusChangedPushCallback(qulonglong /*nReqKey*/, CSProtoError enError,
                                                       CSProtoData stRspData, const CSResponseExt* /*pRspExt*/) {
    if (enError != kCSProtoOk || stRspData.m_nCmd != kCmdVipStatusPush) {
        LogError("Vip Status Push Failed, Error = {}, Cmd = {}", int(enError), stRspData.m_nCmd);
        return;
    }
    vip_base_service::UserVipStateChangePush push;
    if (!push.ParseFromString(stRspData.m_strData)) {
        LogError("Vip Status Push Parse Failed, Invalid Protobuf Data");
        return;
    }
    // Spread over the window, so that a push to all clients is not answered by all at once. The window wraps
    // around in 32 bits.
    const uint32_t delayMs = RandomBelow(push.refresh_window_seconds() * 1000u);
    LogInfo("Vip Status Change Push Received, Will Refresh After {} Ms", delayMs);
    core::post::ToMainDelay(
        QPointer<QObject>(this), int(delayMs), [this] { RequestVipStatus(); }, nullptr);
}

// Takes no notice of the version: a user of the older system has no state of the newer one, and is decided as
// a non-member.
ZRVipEngineStatus CZRVipDataHandler::GetVipEngineStatus() const {
    switch (m_status.nNewVipState) {
        case vip_base_service::NEW_VIP_STATE_EXPIRED:
            return kVipEngineExpired;
        case vip_base_service::NEW_VIP_STATE_ACTIVE:
            return EngineStatusOfMember();
        default:
            return EngineStatusOfNonMember();
    }
}

ZRVipEngineStatus CZRVipDataHandler::EngineStatusOfMember() const {
    switch (m_status.nNewVipSubState) {
        case vip_base_service::NEW_VIP_SUB_STATE_TRIAL:
            return kVipEngineTrial;
        case vip_base_service::NEW_VIP_SUB_STATE_GIFT:
        case vip_base_service::NEW_VIP_SUB_STATE_ASSET_QUALIFIED:
            return kVipEngineMember;
        case vip_base_service::NEW_VIP_SUB_STATE_MONTHLY:
        case vip_base_service::NEW_VIP_SUB_STATE_ANNUAL:
            return m_status.bAutoRenewal ? kVipEngineMember : kVipEngineRenewalOff;
        case vip_base_service::NEW_VIP_SUB_STATE_ASSET_PROTECTION:
            return kVipEngineAssetProtection;
        default:
            FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", kGrowthModuleTag, GROWTH_SOURCE, __LINE__,
                                          "Unexpected New Vip Sub State While Active");
            LogError("Unexpected Sub State While Active, Sub State = {}", m_status.nNewVipSubState);
            return kVipEngineUndetermined;
    }
}
