#include "Ad/Controller/ZRAdPopupController.h"

#include <QTimer>
#include <algorithm>
#include <limits>

#include "Ad/Model/ZRAdPopupModel.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "Ad/Tools/ZRAdReporter.h"
#include "GrowthBizLogUtil.h"
#include "core/config_local.h"
#include "core/time_date.h"
#include "core/uniform_resource_slot.h"
#include "framework/defensive.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr qint64 kMillisPerSecond = 1000;
const QString kFilterBySlot = QStringLiteral("1");

// Only the first ad of a popup's list is ever shown.
CZRAdPopupModel* FirstPopup(CZRAdModelList& list) {
    QList<CZRAdModel*>* ads = list.GetAdList();
    return ads && !ads->isEmpty() ? qobject_cast<CZRAdPopupModel*>(ads->first()) : nullptr;
}

// Logs a missing list.
bool HasAreas(CZRAdPopupModel& popup, int adType, int adPosition) {
    if (popup.GetShowAreas() && !popup.GetShowAreas()->isEmpty()) {
        return true;
    }
    LogInfo("ShowAreas is null, adType = {}, adPosition = {}, adId = {}", adType, adPosition,
            popup.GetAdId().toStdString());
    return false;
}

}  // namespace

CZRAdPopupController::CZRAdPopupController(QObject* parent) : CZRAdController(parent) {
    m_adType = ZRAdTypePopup;
}

CZRAdPopupController::~CZRAdPopupController() = default;

void CZRAdPopupController::AddAdPopupView(CZRAdPopupModel* /*model*/, bool /*enableClose*/, int /*showDuration*/,
                                          const QString& /*adId*/, const QString& /*pushId*/) {}

bool CZRAdPopupController::CheckAdIsValid(CZRAdModelList* list) {
    if (!CZRAdController::CheckAdIsValid(list)) {
        return false;
    }
    CZRAdPopupModel* popup = FirstPopup(*list);
    if (!popup) {
        LogInfo("AdPopupModel is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    const QString adId = popup->GetAdId();
    if (adId.isEmpty()) {
        LogInfo("AdId is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    if (!HasAreas(*popup, int(m_adType), m_adPosition)) {
        return false;
    }
    LogInfo("Ad popup data is OK, adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
            adId.toStdString());
    return true;
}

bool CZRAdPopupController::CheckCanShowAd(CZRAdModelList* list) {
    if (!list) {
        LogInfo("Cannot show ad popup, adModelList is null, m_adType = {}, adPosition = {}", int(m_adType),
                m_adPosition);
        return false;
    }
    CZRAdPopupModel* popup = FirstPopup(*list);
    if (!popup) {
        LogInfo("AdPopupModel is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    if (!HasAreas(*popup, int(m_adType), m_adPosition)) {
        return false;
    }
    const QString adId = popup->GetAdId();
    return IsCurrentTabAmong(*popup->GetShowAreas(), adId) && IsIntervalOver(*list, adId) && IsSlotFree(adId) &&
           IsMainFrameFocused(adId);
}

bool CZRAdPopupController::IsCurrentTabAmong(const QList<ZRAdShowAreaType>& areas, const QString& adId) {
    EnZRTabFrameKey key{};
    ZRAdShowAreaType area{};
    if (const auto mainFrame = IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>()) {
        key = mainFrame->GetCurrentTabFrameKey();
        area = ConvertTabFrameKeyToShowAreaType(key);
    }
    if (!areas.contains(area)) {
        LogInfo(
            "ShowAreas donot contain currentTab, currentTab = {}, tabFrameKey = {}, adType = {}, adPosition = {}, "
            "adId = {}",
            int(area), int64_t(key), int(m_adType), m_adPosition, adId.toStdString());
        return false;
    }
    return true;
}

// The interval includes the second in which it ends. The difference has no sign, because the stored time may also be
// in the future.
bool CZRAdPopupController::IsIntervalOver(CZRAdModelList& list, const QString& adId) {
    const qint64 now = core::time_date::GetSvrTimeStamp();
    const qint64 interval = list.GetShowInterval();
    const std::string key = GetAdLastShowTimeStampKey(m_adPosition, list.GetShowIntervalType()).toStdString();
    long last = 0;
    core::config_local::AppCfgReadInt64(key, last);
    if (interval > 0 && (last >= now || quint64(now) - quint64(last) <= quint64(interval))) {
        LogInfo(
            "CurrentTime donot exceed showInterval. currentTime = {}, lastShowTime = {}, showInterval = {}, "
            "adType = {}, adPosition = {}, adId = {}, key = {}",
            now, last, interval, int(m_adType), m_adPosition, adId.toStdString(), key);
        return false;
    }
    return true;
}

// Only this refusal is reported to the server.
bool CZRAdPopupController::IsSlotFree(const QString& adId) {
    if (core::uniform_resource_slot::IsAllowedToShowUniformResourceSlot(kSlotAdPopup)) {
        return true;
    }
    LogInfo("Popup isnot allowed to show by uniform resource slot, adType = {}, adPosition = {}, adId = {}",
            int(m_adType), m_adPosition, adId.toStdString());
    if (m_adReporter && m_adApiClient && !adId.isEmpty()) {
        m_adReporter->ReportAdDisplayFilter(m_adApiClient->GetAdRequestId(), {adId}, {kFilterBySlot});
    }
    return false;
}

bool CZRAdPopupController::IsMainFrameFocused(const QString& adId) {
    const auto mainFrame = IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
    if (!mainFrame || !mainFrame->IsMainFrameFocusIn()) {
        LogInfo("Main frame isnot focus in, adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                adId.toStdString());
        return false;
    }
    return true;
}

void CZRAdPopupController::TryShowAdPopup() {
    LogInfo("Try show ad popup, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
    if (!CheckAdIsValid(m_adModelList)) {
        SetAdModelList(nullptr);
    } else if (CheckCanShowAd(m_adModelList)) {
        ShowAd(m_adModelList);
    }
}

void CZRAdPopupController::ShowAd(CZRAdModelList* list) {
    if (!list) {
        LogInfo("Show ad popup Failed, adModelList is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return;
    }
    LogInfo("Show ad popup start. adType = {}, adPosition = {}", int(m_adType), m_adPosition);
    if (list->GetAdPosition() != m_adPosition) {
        LogInfo(
            "Show ad popup failed, adPosition from svr is unknown, adType = {}, adPosition = {}, adPositionSvr = {}",
            int(m_adType), m_adPosition, list->GetAdPosition());
        return;
    }
    CZRAdPopupModel* popup = FirstPopup(*list);
    if (!popup) {
        LogInfo("Show ad popup failed, data error, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return;
    }
    AddAdPopupView(popup, list->GetEnableClose(), list->GetShowDuration(), popup->GetAdId(), popup->GetPushId());
}

void CZRAdPopupController::OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count, QString adId,
                                                QString pushId) {
    if (adId.isEmpty()) {
        LogInfo("OnImageLoadSucceeded, adId is null, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return;
    }
    // The display conditions may have changed during loading.
    if (!CheckCanShowAd(m_adModelList)) {
        DeleteAdPopupView();
        return;
    }
    CZRAdController::OnImageLoadSucceeded(imageUrl, time, count, adId);
    // A slot that observes the card may delete the card or this controller.
    const QPointer<CZRAdPopupController> alive(this);
    if (m_adPopupView) {
        m_adPopupView->setVisible(true);
    }
    if (alive && m_adPopupView) {
        m_adPopupView->show();
    }
    if (!alive) {
        return;
    }
    if (!m_adPopupView) {
        LogInfo("Show ad popup failed, adPopupView is null. adType = {}, adPosition = {}, adId = {}", int(m_adType),
                m_adPosition, adId.toStdString());
        return;
    }
    LogInfo("Show ad popup success. adType = {}, adPosition = {}, adId = {}, pushId = {}", int(m_adType), m_adPosition,
            adId.toStdString(), pushId.toStdString());
    m_adId = adId;
    m_pushId = pushId;
    ReportExposeAdStart(adId);
    if (m_adModelList && m_adModelList->GetShowDuration() > 0) {
        StartCloseTimer(m_adModelList->GetShowDuration());
    }
    if (m_adModelList) {
        SaveLastShowTime(adId);
    }
}

void CZRAdPopupController::StartCloseTimer(int seconds) {
    DeleteAdPopupCloseTimer();
    m_pCloseTimer = new QTimer(this);
    // The maximum of a timer limits the duration.
    m_pCloseTimer->start(int(std::min<qint64>(seconds * kMillisPerSecond, std::numeric_limits<int>::max())));
    m_pCloseTimer->setSingleShot(true);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_pCloseTimer, &QTimer::timeout, this,
                              [this] { CloseAd(ZRAdCloseTypeTimeout); });
}

// The interval starts when the ad is shown, not when it is closed. After a failed save the ad is shown again earlier.
void CZRAdPopupController::SaveLastShowTime(const QString& adId) {
    const qint64 now = core::time_date::GetSvrTimeStamp();
    const std::string key = GetAdLastShowTimeStampKey(m_adPosition, m_adModelList->GetShowIntervalType()).toStdString();
    core::config_local::AppCfgSaveInt64(key, now);
    LogInfo("Update last show ad popup time stamp, timeStamp = {}, adType = {}, adId = {}, adPosition = {}, key = {}",
            now, int(m_adType), adId.toStdString(), m_adPosition, key);
}

void CZRAdPopupController::CloseAd(ZRAdCloseType closeType) {
    if (m_adPopupView) {
        DeleteAdPopupView();
        CZRAdController::CloseAd(closeType, m_adId, m_pushId);
    } else if (closeType == ZRAdCloseTypeLogout) {
        CZRAdController::CloseAd(closeType, m_adId, m_pushId);
    }
}

void CZRAdPopupController::OnAdClicked(bool jumpResult, QString const& adId) {
    CZRAdController::OnAdClicked(jumpResult, adId);
    CloseAd(ZRAdCloseTypeAdClicked);
    DeleteAdPopupView();
}

void CZRAdPopupController::OnCloseButtonClicked(QString const& adId) {
    CZRAdController::OnCloseButtonClicked(adId);
    CloseAd(ZRAdCloseTypeCloseButton);
    DeleteAdPopupView();
}

void CZRAdPopupController::OnImageLoadFailed(QString const& imageUrl, QString const& resultContent, qlonglong time,
                                             int count, QString const& adId) {
    CZRAdController::OnImageLoadFailed(imageUrl, resultContent, time, count, adId);
    DeleteAdPopupView();
}

void CZRAdPopupController::DeleteAdPopupView() {
    DeleteAdPopupCloseTimer();
    if (m_adPopupView) {
        // Deleted later, because the view may be the caller. It is hidden first, so that the focus of its button moves.
        // That is posted too, because a page may act when it gets the focus.
        QMetaObject::invokeMethod(m_adPopupView, &QWidget::hide, Qt::QueuedConnection);
        m_adPopupView->deleteLater();
        m_adPopupView = nullptr;
        LogInfo("Delete AdPopupView, adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                m_adId.toStdString());
    }
}

void CZRAdPopupController::DeleteAdPopupCloseTimer() {
    if (m_pCloseTimer) {
        m_pCloseTimer->stop();
        m_pCloseTimer->deleteLater();
        m_pCloseTimer = nullptr;
        LogInfo("Delete ad popup close timer. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                m_adId.toStdString());
    }
}

// The displayed ad and the waiting list may be different ads and are removed separately. Closing an ad also clears the
// list, so a list that stays is set aside meanwhile. An empty id means that no ad is displayed, and no ad has an empty
// id.
void CZRAdPopupController::OfflineAd(QList<QString>& adIds) {
    const bool listGoes = m_adModelList && adIds.contains(GetFirstAdIdFromDataModel(m_adModelList));
    if (!m_adId.isEmpty() && adIds.contains(m_adId)) {
        CZRAdModelList* kept = listGoes ? nullptr : m_adModelList;
        if (kept) {
            m_adModelList = nullptr;
        }
        CloseAd(ZRAdCloseTypePushOffline);
        if (kept) {
            SetAdModelList(kept);
        }
    }
    if (listGoes) {
        SetAdModelList(nullptr);
    }
}
