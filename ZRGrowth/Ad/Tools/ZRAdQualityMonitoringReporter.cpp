#include "Ad/Tools/ZRAdQualityMonitoringReporter.h"

#include "Ad/Tools/ZRAdReportJson.h"
#include "GrowthBizLogUtil.h"
#include "core/report.h"

using namespace ad_report;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;
constexpr CSBrokerId kBroker = 0;

// std::string is the parameter type of the host, so no report creates a copy. clazy:excludeall=non-pod-global-static
const std::string kReportEventAdPullDataResult = "SingleAdvertisementPullDataResult";
const std::string kReportEventAdExposureResult = "ReportAdvertisementExposureResult";
const std::string kReportEventAdImageResourceDownloadResult = "AdvertisementImageResourceDownloadResult";
constexpr int kCodeAdPullDataResult = 2;
constexpr int kCodeAdExposureResult = 1;
constexpr int kCodeAdImageResourceDownloadResult = 5;

}  // namespace

CZRAdQualityMonitoringReporter::CZRAdQualityMonitoringReporter(QObject* parent) : QObject(parent) {}

CZRAdQualityMonitoringReporter::~CZRAdQualityMonitoringReporter() = default;

// Without ads the key is missing. It is intended, unlike in the report of an exposure.
void CZRAdQualityMonitoringReporter::ReportAdPullDataResult(ZRAdType adType, QString const& resultCode,
                                                            QString const& errorContent, long long requestTime,
                                                            QList<QString> const& adIds) {
    Json::Value params;
    params["advertisement_type"] = NumberText(adType);
    params["result_code"] = resultCode.toStdString();
    params["error_content"] = errorContent.toStdString();
    params["request_time"] = Json::Int64(requestTime);
    if (!adIds.isEmpty()) {
        params["advertisement_ids"] = Texts(adIds);
    }
    const bool taken = core::report::Report(kReportEventAdPullDataResult, kCodeAdPullDataResult, params, kBroker);
    LogInfo(
        "Report SingleAdvertisementPullDataResult {}, adType = {}, resultCode = {}, errorContent = {}, "
        "requestTime = {}, adIdList = {}",
        Outcome(taken), int(adType), resultCode.toStdString(), errorContent.toStdString(), requestTime, Joined(adIds));
}

void CZRAdQualityMonitoringReporter::ReportAdExposureResult(ZRAdType adType, QString const& resultCode,
                                                            QString const& errorContent, QList<QString> const& adIds) {
    Json::Value params;
    params["advertisement_type"] = NumberText(adType);
    params["result_code"] = resultCode.toStdString();
    params["error_content"] = errorContent.toStdString();
    params["advertisement_ids"] = Texts(adIds);
    const bool taken = core::report::Report(kReportEventAdExposureResult, kCodeAdExposureResult, params, kBroker);
    LogInfo(
        "Report ReportAdvertisementExposureResult {}, adType = {}, resultCode = {}, errorContent = {}, adIdList = {}",
        Outcome(taken), int(adType), resultCode.toStdString(), errorContent.toStdString(), Joined(adIds));
}

void CZRAdQualityMonitoringReporter::ReportAdImageResourceDownloadResult(ZRAdType adType, QString const& requestUrl,
                                                                         QString const& resultCode,
                                                                         QString const& errorContent,
                                                                         QString const& adId, long long time,
                                                                         int count) {
    Json::Value params;
    params["advertisement_type"] = NumberText(adType);
    params["request_url"] = requestUrl.toStdString();
    params["result_code"] = resultCode.toStdString();
    params["error_content"] = errorContent.toStdString();
    params["advertisement_id"] = adId.toStdString();
    params["event_duration"] = Json::Int64(time);
    params["is_retry"] = count > 1;
    params["action_times"] = count;
    const bool taken = core::report::Report(kReportEventAdImageResourceDownloadResult,
                                            kCodeAdImageResourceDownloadResult, params, kBroker);
    LogInfo(
        "Report AdvertisementImageResourceDownloadResult {}, adType = {}, requestUrl = {}, resultCode = {}, "
        "errorContent = {}, adId = {}, count = {}, time = {}",
        Outcome(taken), int(adType), requestUrl.toStdString(), resultCode.toStdString(), errorContent.toStdString(),
        adId.toStdString(), count, time);
}
