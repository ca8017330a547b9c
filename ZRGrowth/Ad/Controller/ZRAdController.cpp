#include "Ad/Controller/ZRAdController.h"

#include <algorithm>
#include <map>

#include "Ad/Tools/ZRAdApiClient.h"
#include "Ad/Tools/ZRAdQualityMonitoringReporter.h"
#include "Ad/Tools/ZRAdReporter.h"
#include "GrowthBizLogUtil.h"
#include "core/login_status_data.h"
#include "core/time_date.h"
#include "framework/assertion.h"
#include "framework/defensive.h"

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr qint64 kRequestInterval = 10;  // seconds

constexpr char kAdLastShowTimeStampKey[] = "AdLastShowTimeStampKey";

constexpr auto kQueuedOnce = Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection);

}  // namespace

CZRAdController::CZRAdController(QObject* parent)
    : QObject(parent),
      m_adReporter(new CZRAdReporter(this)),
      m_adQualityMonitoringReporter(new CZRAdQualityMonitoringReporter(this)) {
    m_adApiClient = new CZRAdApiClient(this);
    // A unique connection does not register the types of the parameters, and queued signals would be lost.
    qRegisterMetaType<CZRAdModelList*>("CZRAdModelList*");
    qRegisterMetaType<QList<QString>>("QList<QString>");
    FrameWork::ConnectChecked(kGrowthModuleTag, m_adApiClient, &CZRAdApiClient::RequestAdSucceeded, this,
                              &CZRAdController::OnRequestAdSucceeded, kQueuedOnce);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_adApiClient, &CZRAdApiClient::RequestAdFailed, this,
                              &CZRAdController::OnRequestAdFailed, kQueuedOnce);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_adApiClient, &CZRAdApiClient::ExposeAdSuccess, this,
                              &CZRAdController::OnExposeAdSuccess, kQueuedOnce);
    FrameWork::ConnectChecked(kGrowthModuleTag, m_adApiClient, &CZRAdApiClient::ExposeAdFailed, this,
                              &CZRAdController::OnExposeAdFailed, kQueuedOnce);
}

CZRAdController::~CZRAdController() {
    // The list has no parent, so nothing else would destroy it.
    delete m_adModelList;
}

void CZRAdController::RequestAd(ZRAdApiType apiType, int adPosition, QList<QString> const& adIdList) {
    const qint64 now = core::time_date::GetSvrTimeStamp();
    // A clock that was set back refuses too. A refused request does not prolong the interval.
    if (now - m_lastRequestTimeStamp < kRequestInterval) {
        LogInfo(
            "Request ad limited. currentTimeStamp = {}, lastRequestTimeStamp = {}, requestInterval = {}, adType = {}, "
            "adPosition = {}",
            now, m_lastRequestTimeStamp, kRequestInterval, int(m_adType), adPosition);
        if (m_adQualityMonitoringReporter) {
            m_adQualityMonitoringReporter->ReportAdPullDataResult(
                m_adType, QStringLiteral("1001"), QStringLiteral("请求过于频繁，未正常发起网络请求"), 0, {});
        }
        return;
    }
    if (m_adApiClient) {
        m_adApiClient->RequestAd(apiType, m_adType, adPosition, adIdList);
    }
    m_lastRequestTimeStamp = now;
}

void CZRAdController::ClearAd() {
    if (m_adId.isEmpty() && m_pushId.isEmpty() && !m_adModelList) {
        return;
    }
    LogInfo("Clear ad data. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
            m_adId.toStdString());
    m_adId.clear();
    m_pushId.clear();
    delete m_adModelList;
    m_adModelList = nullptr;
}

void CZRAdController::ShowAd(CZRAdModelList* /*list*/) {}

void CZRAdController::CloseAd(ZRAdCloseType closeType, QString const& adId, QString const& pushId) {
    if (adId.isEmpty()) {
        return;
    }
    switch (closeType) {
        case ZRAdCloseTypeAdClicked:
            LogInfo("Closed ad by ad clicked. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                    adId.toStdString());
            break;
        case ZRAdCloseTypeCloseButton:
            LogInfo("Closed ad by close button clicked. adType = {}, adPosition = {}, adId = {}", int(m_adType),
                    m_adPosition, adId.toStdString());
            break;
        case ZRAdCloseTypeTimeout:
            LogInfo("Closed ad by timeout. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                    adId.toStdString());
            break;
        case ZRAdCloseTypeTabSwitched:
            LogInfo("Closed ad by tab switched. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                    adId.toStdString());
            break;
        case ZRAdCloseTypeLanguageChanged:
            LogInfo("Closed ad by language changed. adType = {}, adPosition = {}, adId = {}", int(m_adType),
                    m_adPosition, adId.toStdString());
            break;
        case ZRAdCloseTypeLogin:
            LogInfo("Closed ad by login. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                    adId.toStdString());
            break;
        case ZRAdCloseTypeLogout:
            LogInfo("Closed ad by logout. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                    adId.toStdString());
            break;
        case ZRAdCloseTypePushOffline:
            LogInfo("Closed ad by push offline. adType = {}, adPosition = {}, adId = {}", int(m_adType), m_adPosition,
                    adId.toStdString());
            break;
        default:
            FrameWork::_FW_OnAssertFailed(FrameWork::kAssetDefensive, "", kGrowthModuleTag, GROWTH_SOURCE, __LINE__,
                                          "0");
            break;
    }
    ReportExposeAdEnd(adId, pushId);
    // The two ids may be references to members that this call clears. Do not use them after it.
    ClearAd();
}

void CZRAdController::OfflineAd(QList<QString>& /*adIds*/) {}

CZRAdModelList* CZRAdController::GetAdModelList() {
    return m_adModelList;
}

void CZRAdController::SetAdModelList(CZRAdModelList* list) {
    if (list == m_adModelList) {
        return;
    }
    delete m_adModelList;
    m_adModelList = list;
}

ZRAdShowAreaType CZRAdController::ConvertTabFrameKeyToShowAreaType(EnZRTabFrameKey key) {
    static const std::map<int64_t, int> areas = {{20001, 500}, {20002, 501}, {20003, 502}, {20004, 504},
                                                 {20005, 507}, {20013, 505}, {20017, 503}, {20018, 506}};
    const auto found = areas.find(key);
    return ZRAdShowAreaType(found == areas.end() ? 0 : found->second);
}

void CZRAdController::OnRequestAdSucceeded(CZRAdModelList* list, long long time) {
    if (!list) {
        return;
    }
    // The report is first, because it counts every answer.
    ReportSendAdRequest(list->GetAdPosition(), GetAllAdIdFromDataModel(list), (unsigned long)(time));
    if (!CheckAdIsValid(list)) {
        delete list;
        return;
    }
    delete m_adModelList;
    m_adModelList = list;
    // A list that cannot be shown now waits for the next trigger.
    if (CheckCanShowAd(list)) {
        ShowAd(list);
    }
}

void CZRAdController::OnRequestAdFailed(QString const& resultCode, QString const& errorContent, long long time) {
    if (m_adQualityMonitoringReporter) {
        m_adQualityMonitoringReporter->ReportAdPullDataResult(m_adType, resultCode, errorContent, time, {});
    }
}

void CZRAdController::OnExposeAdSuccess(QList<QString> const& adIds) {
    if (m_adQualityMonitoringReporter) {
        m_adQualityMonitoringReporter->ReportAdExposureResult(m_adType, QStringLiteral("0"), QString(), adIds);
    }
}

void CZRAdController::OnExposeAdFailed(QString const& resultCode, QString const& errorContent,
                                       QList<QString> const& adIds) {
    if (m_adQualityMonitoringReporter) {
        m_adQualityMonitoringReporter->ReportAdExposureResult(m_adType, resultCode, errorContent, adIds);
    }
}

bool CZRAdController::CheckAdIsValid(CZRAdModelList* list) {
    if (!list) {
        LogError("adModelList is null, m_adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    if (list->GetAdType() != m_adType) {
        LogError("Ad type unmatch, adType_local = {}, adType_svr = {}, adPosition_local = {}, adPosition_svr = {}",
                 int(m_adType), int(list->GetAdType()), m_adPosition, list->GetAdPosition());
        return false;
    }
    if (list->GetAdPosition() != m_adPosition) {
        LogError("Ad position unmatch, adType = {}, adPosition_svr = {}, adPosition_local = {}", int(m_adType),
                 list->GetAdPosition(), m_adPosition);
        return false;
    }
    QList<CZRAdModel*>* ads = list->GetAdList();
    if (!ads || ads->isEmpty()) {
        LogError("Ad list is empty, adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    const qint64 now = core::time_date::GetSvrTimeStamp();
    // A removed ad stays the list's child and is deleted with it. Subclasses refuse entries without an ad.
    ads->erase(std::remove_if(ads->begin(), ads->end(), [this, now](CZRAdModel* ad) { return ad && !IsDue(*ad, now); }),
               ads->end());
    if (ads->isEmpty()) {
        LogError("Ad list has no valid ad. adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return false;
    }
    return true;
}

// The server counts whole seconds, so both limits are inside the window.
bool CZRAdController::IsDue(CZRAdModel& ad, qint64 now) const {
    if (now < ad.GetStartTime()) {
        LogError(
            "CurrentTime < startTime, currentTime = {}, startTime = {}, adType = {}, adPosition = {}, remove adId = {}",
            now, ad.GetStartTime(), int(m_adType), m_adPosition, ad.GetAdId().toStdString());
        return false;
    }
    if (now > ad.GetEndTime()) {
        LogError(
            "CurrentTime > endTime, currentTime = {}, endTime = {}, adType = {}, adPosition = {}, remove adId = {}",
            now, ad.GetEndTime(), int(m_adType), m_adPosition, ad.GetAdId().toStdString());
        return false;
    }
    if (now > ad.GetExpireTime()) {
        LogError(
            "CurrentTime > expireTime, currentTime = {}, expireTime = {}, adType = {}, adPosition = {}, "
            "remove adId = {}",
            now, ad.GetExpireTime(), int(m_adType), m_adPosition, ad.GetAdId().toStdString());
        return false;
    }
    return true;
}

bool CZRAdController::CheckCanShowAd(CZRAdModelList* /*list*/) {
    return true;
}

void CZRAdController::ReportSendAdRequest(int adPosition, QList<QString> const& adIds, unsigned long time) {
    if (m_adReporter) {
        m_adReporter->ReportSendAdRequest(GetAdRequestId(), adPosition, adIds);
    }
    if (!m_adQualityMonitoringReporter) {
        return;
    }
    if (adIds.isEmpty()) {
        m_adQualityMonitoringReporter->ReportAdPullDataResult(
            m_adType, QStringLiteral("1"), QStringLiteral("请求成功，但是无数据"), qlonglong(time), {});
    } else {
        m_adQualityMonitoringReporter->ReportAdPullDataResult(m_adType, QStringLiteral("0"), QString(), qlonglong(time),
                                                              adIds);
    }
}

void CZRAdController::ReportExposeAdStart(QString const& adId) {
    if (m_adReporter) {
        m_adReporter->ReportExposeAdStart(GetAdRequestId(), adId);
    }
}

void CZRAdController::ReportExposeAdEnd(QString const& adId, QString const& pushId) {
    if (adId.isEmpty()) {
        LogInfo("ReportExposeAdEnd failed, adId is null. adType = {}, adPosition = {}", int(m_adType), m_adPosition);
        return;
    }
    QString exposeId;
    long long duration = 0;
    if (m_adReporter) {
        // Read before the end of the exposure, which clears them.
        exposeId = m_adReporter->GetExposeId(adId);
        duration = m_adReporter->GetAdExposeDuration(adId);
        m_adReporter->ReportExposeAdEnd(GetAdRequestId(), adId);
    }
    QList<QString> pushIds;
    if (!pushId.isEmpty()) {
        pushIds.append(pushId);
    }
    if (m_adApiClient) {
        m_adApiClient->ExposeAd(m_adType, m_adPosition, {adId}, exposeId, duration, pushIds);
    }
}

void CZRAdController::ReportClickAd(ZRAdActionType actionType, QString const& adId, bool jumpResult) {
    if (adId.isEmpty()) {
        LogInfo("ReportClickAd failed, adId is null. adType = {}, actionType = {}", int(m_adType), int(actionType));
        return;
    }
    if (m_adReporter) {
        m_adReporter->ReportClickAd(GetAdRequestId(), actionType, adId, jumpResult);
    }
}

void CZRAdController::OnImageLoadSucceeded(QString const& imageUrl, qlonglong time, int count, QString const& adId) {
    LogInfo("OnImageLoadSucceeded. adType = {}, adId = {}, imageUrl = {}, loadCount = {}, time = {}", int(m_adType),
            adId.toStdString(), imageUrl.toStdString(), count, time);
    if (m_adQualityMonitoringReporter) {
        m_adQualityMonitoringReporter->ReportAdImageResourceDownloadResult(m_adType, imageUrl, QStringLiteral("0"),
                                                                           QString(), adId, time, count);
    }
}

void CZRAdController::OnImageLoadFailed(QString const& imageUrl, QString const& resultContent, qlonglong time,
                                        int count, QString const& adId) {
    LogInfo("OnImageLoadFailed, adType = {}, imageUrl = {}, loadCount = {}, time = {}", int(m_adType),
            imageUrl.toStdString(), count, time);
    if (m_adQualityMonitoringReporter) {
        m_adQualityMonitoringReporter->ReportAdImageResourceDownloadResult(m_adType, imageUrl, QStringLiteral("-1"),
                                                                           resultContent, adId, time, count);
    }
}

void CZRAdController::OnAdClicked(bool jumpResult, QString const& adId) {
    ReportClickAd(ZRAdActionTypeClick, adId, jumpResult);
}

void CZRAdController::OnCloseButtonClicked(QString const& adId) {
    ReportClickAd(ZRAdActionTypeClose, adId, false);
}

QString CZRAdController::GetFirstAdIdFromDataModel(CZRAdModelList* list) {
    const QList<QString> ids = GetAllAdIdFromDataModel(list);
    return ids.isEmpty() ? QString() : ids.first();
}

QList<QString> CZRAdController::GetAllAdIdFromDataModel(CZRAdModelList* list) {
    QList<QString> ids;
    if (list && list->GetAdList()) {
        for (CZRAdModel* ad : qAsConst(*list->GetAdList())) {
            if (ad) {
                ids.append(ad->GetAdId());
            }
        }
    }
    return ids;
}

QString CZRAdController::GetAdLastShowTimeStampKey(int adPosition, int showIntervalType) {
    return QString::fromStdString(fmt::format(FMT_STRING("{}_{}_{}_{}_{}"), kAdLastShowTimeStampKey, int(m_adType),
                                              adPosition, core::login_status_data::Login_GetUserID(),
                                              showIntervalType));
}

QString CZRAdController::GetAdRequestId() {
    return m_adApiClient ? m_adApiClient->GetAdRequestId() : QString();
}
