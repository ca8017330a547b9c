#include "Ad/Tools/ZRAdReporter.h"

#include "Ad/Tools/ZRAdReportJson.h"
#include "Ad/Tools/ZRAdTools.h"
#include "GrowthBizLogUtil.h"
#include "core/report.h"
#include "core/time_date.h"

using namespace ad_report;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr CSBrokerId kBroker = 0;

// std::string is the parameter type of the host, so no report creates a copy. clazy:excludeall=non-pod-global-static
const std::string kReportEventSendAdRequest = "SendAdRequest";
const std::string kReportEventAdDisplayFilter = "FilterAdDisplay";
const std::string kReportEventStartExposeAd = "StartExposeAd";
const std::string kReportEventExposeAd = "ExposeAd";
const std::string kReportEventClickAd = "ClickAd";
constexpr int kCodeSendAdRequest = 3;
constexpr int kCodeAdDisplayFilter = 1;
constexpr int kCodeStartExposeAd = 1;
constexpr int kCodeExposeAd = 1;
constexpr int kCodeClickAd = 4;

}  // namespace

CZRAdReporter::CZRAdReporter(QObject* parent) : QObject(parent) {}

CZRAdReporter::~CZRAdReporter() = default;

void CZRAdReporter::ReportSendAdRequest(QString const& requestId, int adPosition, QList<QString> const& adIds) {
    Json::Value params;
    params["request_id"] = requestId.toStdString();
    params["advertisement_position"] = NumberText(adPosition);
    params["advertisement_ids"] = Texts(adIds);
    const bool taken = core::report::Report(kReportEventSendAdRequest, kCodeSendAdRequest, params, kBroker);
    LogInfo("Report SendAdRequest {}, requestId = {}, adPosition = {}, adIds = {}", Outcome(taken),
            requestId.toStdString(), adPosition, Joined(adIds));
}

void CZRAdReporter::ReportAdDisplayFilter(QString const& requestId, QList<QString> const& adIds,
                                          QList<QString> const& filters) {
    Json::Value params;
    params["request_id"] = requestId.toStdString();
    params["advertisement_ids"] = Texts(adIds);
    params["advertisement_filter"] = Texts(filters);
    const bool taken = core::report::Report(kReportEventAdDisplayFilter, kCodeAdDisplayFilter, params, kBroker);
    LogInfo("Report AdDisplayFilter {}, requestId = {}, adIds = {},", Outcome(taken), requestId.toStdString(),
            Joined(adIds));
}

void CZRAdReporter::ReportExposeAdStart(QString const& requestId, QString const& adId) {
    if (adId.isEmpty()) {
        LogInfo("Report ExposeAd start failed, adId is empty, requestId = {},", requestId.toStdString());
        return;
    }
    m_exposeStartTime[adId] = core::time_date::GetSvrTimeMillis();
    const QString exposeId = CZRAdTools::GenerateAdReportId(adId);
    m_exposeId[adId] = exposeId;
    const std::shared_ptr<std::string> timer = core::report::ReportTimerStart(kReportEventExposeAd);
    m_exposeAdEvent[adId] = timer;
    if (timer) {
        LogInfo("Report ExposeAd start, exposeAdEvent = {}, adId = {},", *timer, adId.toStdString());
    } else {
        LogInfo("Report ExposeAd start failed, exposeAdEvent is null, adId = {},", adId.toStdString());
    }
    Json::Value params;
    params["request_id"] = requestId.toStdString();
    params["exposure_id"] = exposeId.toStdString();
    params["advertisement_id"] = adId.toStdString();
    const bool taken = core::report::Report(kReportEventStartExposeAd, kCodeStartExposeAd, params, kBroker);
    LogInfo("Report StartExposeAd {}, exposeId = {}, requestId = {}, adId = {},", Outcome(taken),
            exposeId.toStdString(), requestId.toStdString(), adId.toStdString());
}

void CZRAdReporter::ReportExposeAdEnd(QString const& requestId, QString const& adId) {
    if (adId.isEmpty()) {
        LogInfo("Report ExposeAd end failed, adId is empty, requestId = {},", requestId.toStdString());
        return;
    }
    const std::shared_ptr<std::string> timer = m_exposeAdEvent.value(adId);
    if (!timer) {
        LogInfo("Report ExposeAd end failed, m_exposeAdEvent is null. ");
        return;
    }
    const QString exposeId = GetExposeId(adId);
    if (exposeId.isEmpty()) {
        LogInfo("Report ExposeAd end failed, exposeId is null. requestId = {}, adId = {}", requestId.toStdString(),
                adId.toStdString());
        return;
    }
    Json::Value params;
    params["exposure_id"] = exposeId.toStdString();
    params["request_id"] = requestId.toStdString();
    params["advertisement_id"] = adId.toStdString();
    const bool taken = core::report::ReportTimerEnd(*timer, kCodeExposeAd, params, kBroker, 0);
    LogInfo("Report ExposeAd end {}, exposeId = {}, requestId = {}, adId = {},", Outcome(taken), exposeId.toStdString(),
            requestId.toStdString(), adId.toStdString());
    m_exposeStartTime.remove(adId);
    m_exposeId.remove(adId);
    m_exposeAdEvent.remove(adId);
}

void CZRAdReporter::ReportClickAd(QString const& requestId, ZRAdActionType actionType, QString const& adId,
                                  bool jumpResult) {
    const QString exposeId = GetExposeId(adId);
    if (exposeId.isEmpty()) {
        LogInfo("Report ClickAd failed, exposeId is null. requestId = {}, actionType = {}, adId = {}",
                requestId.toStdString(), int(actionType), adId.toStdString());
        return;
    }
    const QString actionId = CZRAdTools::GenerateAdReportId(adId);
    Json::Value params;
    params["action_id"] = actionId.toStdString();
    params["request_id"] = requestId.toStdString();
    params["action_type"] = NumberText(actionType);
    params["exposure_id"] = exposeId.toStdString();
    params["advertisement_id"] = adId.toStdString();
    if (actionType == ZRAdActionTypeClick) {
        params["result_status"] = jumpResult ? 1 : 0;
    }
    const bool taken = core::report::Report(kReportEventClickAd, kCodeClickAd, params, kBroker);
    LogInfo(
        "Report ClickAd {}, actionId = {}, requestId = {}, actionType = {}, exposeId = {}, adId = {}, jumpResult = {}",
        Outcome(taken), actionId.toStdString(), requestId.toStdString(), int(actionType), exposeId.toStdString(),
        adId.toStdString(), jumpResult);
}

QString CZRAdReporter::GetExposeId(QString const& adId) {
    return adId.isEmpty() ? QString() : m_exposeId.value(adId);
}

long long CZRAdReporter::GetAdExposeDuration(QString const& adId) {
    const auto start = m_exposeStartTime.constFind(adId);
    if (adId.isEmpty() || start == m_exposeStartTime.constEnd()) {
        return 0;
    }
    return core::time_date::GetSvrTimeMillis() - *start;
}
