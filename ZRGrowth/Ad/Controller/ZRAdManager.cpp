#include "Ad/Controller/ZRAdManager.h"

#include <QPointer>
#include <QStringList>

#include "Ad/Controller/ZRAdBannerController.h"
#include "Ad/Controller/ZRAdBottomPopupController.h"
#include "Ad/View/ZRAdBottomPopupDeveloperView.h"
#include "Ad/ZRAdIds.h"
#include "GrowthBizLogUtil.h"
#include "ZRGrowthSingleton.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"
#include "core/environment.h"
#include "core/message_ids.h"
#include "core/post.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr uint32_t kMillisPerSecond = 1000;

QList<QString> ListOf(const google::protobuf::RepeatedPtrField<std::string>& ids) {
    QList<QString> list;
    for (const std::string& id : ids) {
        list.append(QString::fromStdString(id));
    }
    return list;
}

std::string Joined(const QList<QString>& ids) {
    return QStringList(ids).join(QLatin1Char(',')).toStdString();
}

}  // namespace

CZRAdManager* CZRAdManager::Singleton() {
    static CZRAdManager* manager = growth::NewManager<CZRAdManager>();
    return manager;
}

CZRAdManager::CZRAdManager() = default;

CZRAdManager::~CZRAdManager() = default;

void CZRAdManager::Init() {
    m_adBottomPopupController = new CZRAdBottomPopupController(this);
    core::__CMessageDispatch bus(GROWTH_HERE);
    bus.Bind(
        core::kMsgLoginChannelConnected,
        [this](unsigned int message, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
            OnLoginChannelConnect(message, wParam, std::move(body));
        },
        this);
    bus.Bind(
        core::kMsgLanguageChanged,
        [this](unsigned int message, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
            OnLanguageChanged(message, wParam, std::move(body));
        },
        this);
    bus.Bind(
        core::kMsgTabFrameChanged,
        [this](unsigned int message, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
            OnTabFrameChanged(message, wParam, std::move(body));
        },
        this);
    IZRChannelProxy::BindCallback(
        kCSChannelMain, kCmdAdStatusChangedPush,
        [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext) {
            OnAdStatusChangedPushCallback(session, error, data, ext);
        },
        this);
    IZRChannelProxy::BindCallback(
        kCSChannelMain, kCmdAdPush,
        [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext) {
            OnAdPushCallback(session, error, data, ext);
        },
        this);
    if (!core::environment::IsReleaseAppVersion()) {
        IZRChannelProxy::BindCallback(
            kCSChannelMain, kCmdAdCheckPush,
            [this](unsigned long session, CSProtoError error, const CSProtoData& data, const CSResponseExt* ext) {
                OnAdCheckPushCallback(session, error, data, ext);
            },
            this);
    }
}

// The controllers stay, and posted tasks still run.
void CZRAdManager::UnInit() {
    core::__CMessageDispatch(GROWTH_HERE).UnBind(this);
    IZRChannelProxy::UnbindCallback(this);
}

void CZRAdManager::OnLogin() {}

void CZRAdManager::OnLogout() {
    LogInfo("Login out");
    if (m_adBottomPopupController) {
        m_adBottomPopupController->CloseAd(ZRAdCloseTypeLogout);
        m_adBottomPopupController->ClearAd();
    }
}

void CZRAdManager::OnLoginChannelConnect(uint32_t /*uMsg*/, qulonglong /*wParam*/,
                                         std::shared_ptr<core::CMessageBody> /*pMsg*/) {
    LogInfo("Platform channel connected");
    if (m_adBottomPopupController) {
        m_adBottomPopupController->RequestAdBottomPopup(ZRAdApiTypeSearch, {});
    }
}

// Ads depend on the language.
void CZRAdManager::OnLanguageChanged(uint32_t /*uMsg*/, qulonglong /*wParam*/,
                                     std::shared_ptr<core::CMessageBody> /*pMsg*/) {
    LogInfo("Language changed");
    if (m_adBottomPopupController) {
        m_adBottomPopupController->CloseAd(ZRAdCloseTypeLanguageChanged);
        m_adBottomPopupController->ClearAd();
        m_adBottomPopupController->RequestAdBottomPopup(ZRAdApiTypeSearch, {});
    }
}

// The first change only sets the current tab and does not try a waiting popup. After a key of 0 the next change is a
// first one again.
void CZRAdManager::OnTabFrameChanged(uint32_t /*uMsg*/, qulonglong wParam,
                                     std::shared_ptr<core::CMessageBody> /*pMsg*/) {
    const auto newTab = EnZRTabFrameKey(int64_t(wParam));
    if (m_currentTab == 0) {
        LogInfo("Tab changed, first changed, oldTab = {}, newTab = {}", int64_t(m_currentTab), int64_t(newTab));
        m_currentTab = newTab;
        return;
    }
    if (newTab == m_currentTab) {
        LogInfo("Tab unchanged, current tab = {}", int64_t(m_currentTab));
        return;
    }
    LogInfo("Tab changed, oldTab = {}, newTab = {}", int64_t(m_currentTab), int64_t(newTab));
    m_currentTab = newTab;
    if (m_adBottomPopupController) {
        m_adBottomPopupController->CloseAd(ZRAdCloseTypeTabSwitched);
        m_adBottomPopupController->TryShowAdPopup();
    }
}

// No random delay is added: the server spreads its clients by the delay. The product wraps around in 32 bits.
void CZRAdManager::RequestAfterPush(uint32_t adType, uint32_t adPosition, uint32_t delay, ZRAdApiType apiType,
                                    const QList<QString>& adIds) {
    const auto request = [this, adType, adPosition, apiType, adIds] {
        if (int(adType) == ZRAdTypePopup && m_adBottomPopupController &&
            m_adBottomPopupController->GetAdPosition() == int(adPosition)) {
            m_adBottomPopupController->RequestAdBottomPopup(apiType, adIds);
        }
    };
    core::post::ToMainDelay(QPointer<QObject>(this), int(delay * kMillisPerSecond), request, nullptr);
}

void CZRAdManager::OnAdStatusChangedPushCallback(qulonglong /*nReqKey*/, CSProtoError enError, CSProtoData stRspData,
                                                 const CSResponseExt* /*pRspExt*/) {
    if (enError != kCSProtoOk || stRspData.m_nCmd != kCmdAdStatusChangedPush) {
        // The text names the other push. It is intended, since logs are searched for it.
        LogError("AdCheckPush callback, receive cmd error, error = {}, cmd = {}", int(enError), stRspData.m_nCmd);
        return;
    }
    ad_manage_oss::AdPush push;
    if (!push.ParseFromString(stRspData.m_strData)) {
        LogError("AdStatusChangedPush callback, receive cmd 20145, adPush parse failed");
        return;
    }
    QList<QString> offline = ListOf(push.offline_ad_id());
    LogInfo(
        "AdStatusChangedPush callback,receive cmd 20145, adType = {}, adPosition = {}, offlineAdId = {}, delay = {}",
        push.ad_type(), push.ad_position(), Joined(offline), push.delay());
    // At once, for every ad position of the push. Only the new request waits.
    if (m_adBottomPopupController) {
        m_adBottomPopupController->OfflineAd(offline);
    }
    RequestAfterPush(push.ad_type(), push.ad_position(), push.delay(), ZRAdApiTypeSearch, {});
}

void CZRAdManager::OnAdPushCallback(qulonglong /*nReqKey*/, CSProtoError enError, CSProtoData stRspData,
                                    const CSResponseExt* /*pRspExt*/) {
    if (enError != kCSProtoOk || stRspData.m_nCmd != kCmdAdPush) {
        LogError("AdPush callback, receive cmd error, error = {}, cmd = {}", int(enError), stRspData.m_nCmd);
        return;
    }
    ads_service::AdPush push;
    if (!push.ParseFromString(stRspData.m_strData)) {
        LogError("AdPush callback, receive 20171, adPush parse failed");
        return;
    }
    LogInfo("AdPush callback,receive cmd 20171, adType = {}, adPosition = {}, delay = {}", push.ad_type(),
            push.ad_position(), push.delay());
    RequestAfterPush(push.ad_type(), push.ad_position(), push.delay(), ZRAdApiTypeSearch, {});
}

// A release build does not bind this push and would ignore it.
void CZRAdManager::OnAdCheckPushCallback(qulonglong /*nReqKey*/, CSProtoError enError, CSProtoData stRspData,
                                         const CSResponseExt* /*pRspExt*/) {
    if (core::environment::IsReleaseAppVersion()) {
        LogError("AdCheckPush callback, receive cmd {}, release donot handle", stRspData.m_nCmd);
        return;
    }
    if (enError != kCSProtoOk || stRspData.m_nCmd != kCmdAdCheckPush) {
        LogError("AdCheckPush callback, receive cmd error, error = {}, cmd = {}", int(enError), stRspData.m_nCmd);
        return;
    }
    ad_manage_oss::AdCheckPush push;
    if (!push.ParseFromString(stRspData.m_strData)) {
        LogError("AdCheckPush callback, receive cmd 20170, adCheckPush parse failed");
        return;
    }
    const QList<QString> ads = ListOf(push.ad_id());
    LogInfo("AdCheckPush callback,receive cmd 20170, adType = {}, adPosition = {}, adId = {}, delay = {}",
            push.ad_type(), push.ad_position(), Joined(ads), push.delay());
    RequestAfterPush(push.ad_type(), push.ad_position(), push.delay(), ZRAdApiTypeCheck, ads);
}

void CZRAdManager::GetAdBannerAsync(int adPosition, QSize size, std::function<void(QWidget*)> callback,
                                    int topNonClickableAreaHeight, bool useCheck, QList<QString> adIds) {
    LogInfo("Get ad banner, adPosition = {}", adPosition);
    const auto get = [this, adPosition, size, callback = std::move(callback), topNonClickableAreaHeight, useCheck,
                      adIds = std::move(adIds)] {
        CZRAdBannerController*& controller = m_adBannerControllerMap[adPosition];
        if (!controller) {
            controller = new CZRAdBannerController(this, adPosition);
        }
        controller->GetAdBannerAsync(size, callback, topNonClickableAreaHeight, useCheck, adIds);
    };
    core::post::ToMain(QPointer<QObject>(this), get, nullptr);
}

QWidget* CZRAdManager::GetAdBottomPopupDeveloperView() {
    auto* view = new CZRAdBottomPopupDeveloperView(nullptr);
    // The caller owns the panel, which may outlive the displayed objects.
    const QPointer<CZRAdManager> alive(this);
    view->SetGetModelCallback([alive] {
        return alive && alive->m_adBottomPopupController ? alive->m_adBottomPopupController->GetAdModelList() : nullptr;
    });
    view->SetSetModelCallback([alive](CZRAdModelList* list) {
        if (alive && alive->m_adBottomPopupController) {
            alive->m_adBottomPopupController->SetAdModelList(list);
        } else {
            // The panel transfers ownership, and before the start nothing else would delete the list.
            delete list;
        }
    });
    view->UpdateTexts();
    return view;
}

void CZRAdManager::UpdateAdBottomPopupCoordinates() {
    if (m_adBottomPopupController) {
        m_adBottomPopupController->UpdateAdBottomPopupCoordinates();
    }
}
