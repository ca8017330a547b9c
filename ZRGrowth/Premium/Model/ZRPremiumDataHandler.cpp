#include "Premium/Model/ZRPremiumDataHandler.h"

#include <QPointer>

#include "GrowthBizLogUtil.h"
#include "Premium/Model/ZRPremiumWire.h"
#include "Premium/ZRPremiumIds.h"
#include "Premium/ZRPremiumManager.h"
#include "core/message_ids.h"
#include "core/pb_helper.h"
#include "core/post.h"
#include "framework/defensive.h"
#include "modules/ZRGrowthMessages.h"
#include "premium_svr.pb.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Premium;
constexpr int kRefreshIntervalMs = 3600000;

void SendAnswered(unsigned long session, uint64_t outcome) {
    const auto body = std::make_shared<core::CMessageBody>();
    body->set_p1(session);
    body->set_p2(outcome);
    core::__CMessageDispatch(GROWTH_HERE).Send(kMsgPremiumRequestAnswered, body, true);
}

}  // namespace

CZRPremiumDataHandler::CZRPremiumDataHandler(QObject* parent) : QObject(parent) {
    Init();
}

CZRPremiumDataHandler::~CZRPremiumDataHandler() {
    UnInit();
}

void CZRPremiumDataHandler::Init() {
    LogInfo("Premium Data Handler Module Init Begin");
    m_pTimer = new QTimer(this);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pTimer, SIGNAL(timeout()), this, SLOT(OnTimerSlot()),
                              Qt::UniqueConnection);
    m_pTimer->start(kRefreshIntervalMs);
    IZRChannelProxy::BindCallback(
        kCSChannelMain, kCmdPremiumChangePush,
        [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext) {
            OnPremiumPushLoginNotify(session, error, data, ext);
        },
        this);
    core::__CMessageDispatch(GROWTH_HERE)
        .Bind(
            core::kMsgLanguageChanged,
            [this](unsigned int messageId, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
                OnMessageDispath(messageId, wParam, std::move(body));
            },
            this);
    LogInfo("Premium Data Handler Module Init End, Timer And Callbacks Ready");
}

void CZRPremiumDataHandler::UnInit() {
    LogInfo("Premium Data Handler Module Uninit Begin");
    m_pTimer->stop();
    IZRChannelProxy::UnbindCallback(this);
    core::__CMessageDispatch(GROWTH_HERE).UnBind(this);
    LogInfo("Premium Data Handler Module Uninit End");
}

void CZRPremiumDataHandler::OnLogin() {
    LogInfo("User Login Received, Request All Premium Data From Server");
    GetUiMsgAndPremiumAccessReq(false);
}

void CZRPremiumDataHandler::OnLogout() {
    LogInfo("User Logout Received");
}

unsigned long CZRPremiumDataHandler::GetUiMsgAndPremiumAccessReq(bool serverPush) {
    web_premium_access::GetUiMsgAndPremiumAccessReq request;
    request.set_need_all_access(true);
    const unsigned long session = SendRequest(request, serverPush);
    LogInfo("Send Request For All Premium Access, Session = {}, Server Push = {}", session, serverPush);
    return session;
}

unsigned long CZRPremiumDataHandler::GetUiMsgAndPremiumAccessReq(const QVector<int>& accessList, bool serverPush) {
    web_premium_access::GetUiMsgAndPremiumAccessReq request;
    request.set_need_all_access(false);
    request.mutable_access_list()->Add(accessList.begin(), accessList.end());
    const unsigned long session = SendRequest(request, serverPush);
    LogInfo("Send Request For Custom Premium Access, Count = {}, Session = {}, Server Push = {}", accessList.size(),
            session, serverPush);
    return session;
}

unsigned long CZRPremiumDataHandler::GetUiMsgAndPremiumAccessReq(const QVector<EnPremiumAccess>& accessList,
                                                                 bool serverPush) {
    QVector<int> numbers;
    numbers.reserve(accessList.size());
    for (const EnPremiumAccess access : accessList) {
        numbers.append(access);
    }
    return GetUiMsgAndPremiumAccessReq(numbers, serverPush);
}

unsigned long CZRPremiumDataHandler::SendRequest(const web_premium_access::GetUiMsgAndPremiumAccessReq& request,
                                                 bool serverPush) {
    CSProtoData data;
    data.m_nCmd = kCmdPremiumAccess;
    core::pb_helper::PBDataToBuf(&request, data.m_strData);
    const auto callback = [this](unsigned long session, CSProtoError error, const CSProtoData& reply,
                                 const CSResponseExt* ext) { ParsePremiumRsp(session, error, reply, ext); };
    const unsigned long session = IZRChannelProxy::SendCommand(kCSChannelMain, data, nullptr, callback, this);
    m_mapServerPush[session] = serverPush;
    return session;
}

void CZRPremiumDataHandler::OnTimerSlot() {
    LogInfo("Hourly Timer Fired, Refresh All Premium Data");
    GetUiMsgAndPremiumAccessReq(true);
}

void CZRPremiumDataHandler::OnMessageDispath(unsigned int messageId, unsigned long /*wParam*/,
                                             std::shared_ptr<core::CMessageBody> /*body*/) {
    if (messageId != core::kMsgLanguageChanged) {
        return;
    }
    LogInfo("Language Changed, Refresh All Premium Data");
    GetUiMsgAndPremiumAccessReq(true);
}

// The reply's command is not checked: the session identifies the request.
void CZRPremiumDataHandler::ParsePremiumRsp(unsigned long session, CSProtoError error, const CSProtoData& data,
                                            const CSResponseExt* /*ext*/) {
    // It is intended that the entry is never removed: each further reply of the session uses the flag.
    const auto found = m_mapServerPush.constFind(session);
    if (found == m_mapServerPush.constEnd()) {
        LogError("Unknown Request Session, Already Removed Or Never Sent, Session = {}", session);
        return;
    }
    if (error != kCSProtoOk) {
        LogError("Request Failed On Channel Error, Session = {}, Error = {}", session, int(error));
        SendAnswered(session, kPremiumRequestFailed);
        return;
    }
    ParseUiMsgAndPremiumAccessRsp(session, data, *found);
}

void CZRPremiumDataHandler::ParseUiMsgAndPremiumAccessRsp(unsigned long session, const CSProtoData& data,
                                                          bool serverPush) {
    web_premium_access::GetUiMsgAndPremiumAccessRsp response;
    if (!response.ParseFromString(data.m_strData)) {
        LogError("Parse Response Failed, Invalid Protobuf Data");
        SendAnswered(session, kPremiumRequestFailed);
        return;
    }
    if (!response.has_code()) {
        LogError("Parse Response Failed, Missing Code Field");
        SendAnswered(session, kPremiumRequestFailed);
        return;
    }
    if (response.code() != web_premium_access::SUCCESS) {
        LogError("Server Returned Error Code = {}", response.code());
        SendAnswered(session, kPremiumRequestFailed);
        return;
    }
    for (const web_premium_access::UiDataAndAccessData& element : response.data().ui_data_and_access_data()) {
        if (const auto record = premium_wire::ReadRecord(element)) {
            CZRPremiumManager::Singleton()->SetUIAccessData(EnPremiumAccess(element.access()), *record);
        }
    }
    // First the message, whose receivers read the new table, then the store.
    if (serverPush) {
        core::__CMessageDispatch(GROWTH_HERE).Send(kMsgPremiumDataChanged, nullptr, true);
    } else {
        SendAnswered(session, kPremiumRequestSucceeded);
    }
    CZRPremiumManager::Singleton()->SavePremiumData();
    LogInfo("Parse Response Success, Premium Data Updated And Saved");
}

void CZRPremiumDataHandler::OnPremiumPushLoginNotify(unsigned long /*session*/, CSProtoError error,
                                                     const CSProtoData& data, const CSResponseExt* /*ext*/) {
    if (error != kCSProtoOk || data.m_strData.empty()) {
        LogError("Premium Change Push Failed, Error = {}, Data Empty = {}", int(error), data.m_strData.empty());
        return;
    }
    web_premium_access::PremiumChangePush push;
    if (!push.ParseFromString(data.m_strData)) {
        LogError("Parse Push Failed, Invalid Protobuf Data");
        return;
    }
    if (!push.has_delay_seconds()) {
        LogError("Premium Change Push Received But No Delay Field, Ignored");
        return;
    }
    const bool needAll = push.need_all_access();
    const QVector<int> accessList(push.access_list().begin(), push.access_list().end());
    // Seconds from 4294968 on wrap around in 32 bits; the line shows the actual delay.
    const uint32_t delayMs = push.delay_seconds() * 1000u;
    LogInfo("Premium Change Push Received, Need All Access = {}, Custom Access Count = {}, Will Refresh After {} Ms",
            needAll, accessList.size(), delayMs);
    const auto refresh = [this, needAll, accessList] {
        if (needAll) {
            GetUiMsgAndPremiumAccessReq(true);
        } else {
            GetUiMsgAndPremiumAccessReq(accessList, true);
        }
    };
    core::post::ToMainDelay(QPointer<QObject>(this), int(delayMs), refresh, nullptr);
}
