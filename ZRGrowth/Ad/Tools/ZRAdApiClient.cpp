#include "Ad/Tools/ZRAdApiClient.h"

#include <json/reader.h>

#include <QPointer>
#include <optional>

#include "Ad/Tools/ZRAdReportJson.h"
#include "Ad/Tools/ZRAdTools.h"
#include "GrowthBizLogUtil.h"
#include "GrowthJson.h"
#include "core/login_status_data.h"
#include "core/post.h"
#include "core/time_date.h"
#include "core/url_data.h"

using namespace ad_report;

namespace {

constexpr auto kLogModuleType = CGrowthBizLogUtil::Ad;

// std::string is the parameter type of the host, so no call creates a copy. clazy:excludeall=non-pod-global-static
const std::string strAdSearchUrl = "/ad/search";
const std::string strAdCheckUrl = "/ad/check";
const std::string strAdExposeUrl = "/ad/expose";
const std::string kSessionHeader = "x-orvi-client-sessionid";
const QString kResultCodeExchangeFailed = QStringLiteral("1005");
const QString kResultCodeServerRefused = QStringLiteral("2001");

HttpReqInfo NewRequest(const std::string& path) {
    HttpReqInfo request;
    request.m_enMethod = kHttpPost;
    request.m_strUrl =
        fmt::format(FMT_STRING("{}{}"), core::url_data::GetDomainUrl("api", core::url_data::kDomainBizDefault), path);
    return request;
}

// The library's reader throws on text that is nested too deep.
bool ParseJson(const std::string& text, Json::Value& value) {
    try {
        return Json::Reader().parse(text, value);
    } catch (const std::exception&) {
        return false;
    }
}

// Returns the code of an answer to an exposure: 0 if it is absent, nothing if it is unreadable.
std::optional<int> CodeOf(const Json::Value& answer) {
    if (!answer.isObject()) {
        return answer.isNull() ? std::optional<int>(0) : std::nullopt;
    }
    const Json::Value& code = growth_json::Member(answer, "code");
    return code.isConvertibleTo(Json::intValue) ? std::optional<int>(code.asInt()) : std::nullopt;
}

// Converted after filling: a body that is converted alone loses the byte-order mark at its head.
QString Filled(const char* words, const std::string& value) {
    return QString::fromStdString(words + value);
}

QString ExchangeFailure(const HttpRspInfo& response) {
    return QString::fromStdString(
        fmt::format(FMT_STRING("Result = {}, HttpStatusCode = {}"), response.m_nResult, response.m_nHttpStatusCode));
}

}  // namespace

CZRAdApiClient::CZRAdApiClient(QObject* parent) : QObject(parent) {}

CZRAdApiClient::~CZRAdApiClient() = default;

void CZRAdApiClient::RequestAd(ZRAdApiType apiType, ZRAdType adType, int adPosition, QList<QString> const& adIdList) {
    const std::string& path = apiType == ZRAdApiTypeSearch ? strAdSearchUrl : strAdCheckUrl;
    HttpReqInfo request = NewRequest(path);
    request.m_mapHeader[kSessionHeader] = {fmt::format(FMT_STRING("{}"), core::login_status_data::GetSessionId())};
    // Replaced before anything is sent, also where nothing will be.
    const QString requestId = CZRAdTools::GenerateAdRequestId();
    m_adRequestId = requestId;
    Json::Value body;
    body["ad_type"] = int(adType);
    body["ad_position"] = adPosition;
    body["request_id"] = requestId.toStdString();
    if (!adIdList.isEmpty()) {
        body["ad_id"] = Texts(adIdList);
    }
    request.m_strBody = body.toStyledString();
    const auto start = qulonglong(core::time_date::GetSvrTimeMillis());
    LogInfo("Request ad start, path = {}, adType = {}, adPosition = {}, adIdList = {}, requestId = {}", path,
            int(adType), adPosition, Joined(adIdList), requestId.toStdString());
    const auto callback = [this, path, adType, adPosition, requestId, start](unsigned long taskId,
                                                                             const HttpRspInfo& response) {
        OnRequestAdCallback(taskId, response, path, adType, adPosition, requestId, start);
    };
    // 0 as well: it makes an answer that is still out a stranger's.
    m_requestTaskId =
        core::network::http::StartRequest(request, callback, this, kHttpWorkPoolDefault, nullptr, nullptr);
    if (m_requestTaskId == 0) {
        LogError("Request ad failed, requestTaskId = 0, path = {}, adType = {}, adPosition = {}, requestId = {}", path,
                 int(adType), adPosition, requestId.toStdString());
    }
}

void CZRAdApiClient::OnRequestAdCallback(qulonglong taskId, HttpRspInfo const& stRspInfo, std::string const& path,
                                         ZRAdType adType, int adPosition, QString const& requestId,
                                         qulonglong requestStartTimestamp) {
    if (taskId != m_requestTaskId) {
        LogError(
            "Request ad callback, requestTaskId unmatched, path = {}, adType = {}, adPosition = {}, requestId = {}, "
            "currentTaskId = {}, callbackTaskId = {}",
            path, int(adType), adPosition, requestId.toStdString(), m_requestTaskId, taskId);
        return;
    }
    const auto time = qlonglong(qulonglong(core::time_date::GetSvrTimeMillis()) - requestStartTimestamp);
    if (stRspInfo.m_nResult != kHttpOk) {
        LogError("Request ad failed, path = {}, result = {}, adType = {}, adPosition = {}, requestId = {}", path,
                 stRspInfo.m_nResult, int(adType), adPosition, requestId.toStdString());
        Q_EMIT RequestAdFailed(kResultCodeExchangeFailed, ExchangeFailure(stRspInfo), time);
        return;
    }
    Json::Value value;
    if (!ParseJson(stRspInfo.m_strBody, value)) {
        LogError("Request ad failed, path = {}, body parse failed, adType = {}, adPosition = {}, requestId = {}", path,
                 int(adType), adPosition, requestId.toStdString());
        Q_EMIT RequestAdFailed(kResultCodeExchangeFailed, Filled("body parse failed, body = ", stRspInfo.m_strBody),
                               time);
        return;
    }
    // The objects of the answer, their parents and who takes them live on the main thread.
    core::post::ToMain(
        QPointer<QObject>(this),
        [this, stRspInfo, value, path, adType, adPosition, requestId, time] {
            TakeAdAnswer(stRspInfo, value, path, adType, adPosition, requestId, time);
        },
        nullptr);
}

void CZRAdApiClient::TakeAdAnswer(HttpRspInfo const& stRspInfo, Json::Value const& value, std::string const& path,
                                  ZRAdType adType, int adPosition, QString const& requestId, qlonglong time) {
    auto* response = new CZRAdResponseModel(this);
    if (!response->Decode(value)) {
        LogError(
            "Request ad failed, path = {}, response model decode failed, adType = {}, adPosition = {}, requestId = {}",
            path, int(adType), adPosition, requestId.toStdString());
        Q_EMIT RequestAdFailed(kResultCodeExchangeFailed,
                               Filled("response model decode failed, body = ", stRspInfo.m_strBody), time);
        return;
    }
    if (response->GetCode() != 0) {
        // Nobody takes it: it stays with the answer.
        response->GetData()->setParent(response);
        LogError("Request ad failed, path = {}, code = {}, message= {}, adType = {}, adPosition = {}, requestId = {}",
                 path, response->GetCode(), response->GetMessage().toStdString(), int(adType), adPosition,
                 requestId.toStdString());
        Q_EMIT RequestAdFailed(kResultCodeServerRefused,
                               Filled("response code is ", std::to_string(response->GetCode())), time);
        return;
    }
    LogInfo("Request ad succeed, path = {}, adType = {}, adPosition = {}, requestId = {}", path, int(adType),
            adPosition, requestId.toStdString());
    if (response->GetData()) {
        const QPointer<CZRAdResponseModel> answer(response);  // goes with this client, which a listener may end
        Q_EMIT RequestAdSucceeded(response->GetData(), time);
        if (answer) {
            answer->deleteLater();
        }
    }
}

void CZRAdApiClient::ExposeAd(ZRAdType adType, int adPosition, QList<QString> const& adIdList, QString const& exposeId,
                              long long exposeDuration, QList<QString> const& pushIdList) {
    const std::string& path = strAdExposeUrl;
    // No header, on purpose: the session is for requests of ads.
    HttpReqInfo request = NewRequest(path);
    Json::Value body;
    body["ad_type"] = int(adType);
    body["ad_position"] = adPosition;
    if (!adIdList.isEmpty()) {
        body["ad_id"] = Texts(adIdList);
    }
    body["expose_id"] = exposeId.toStdString();
    body["expose_duration"] = Json::Int64(exposeDuration);
    if (!pushIdList.isEmpty()) {
        body["push_id"] = Texts(pushIdList);
    }
    request.m_strBody = body.toStyledString();
    const QString adIdListStr = QString::fromStdString(Joined(adIdList));
    // An error's line for a good thing, on purpose: exposures are to be found in every log.
    LogError(
        "Expose ad start, path = {}, adType = {}, adPosition = {}, adId = {}, exposeId = {}, exposeDuration = {}, "
        "pushId = {}",
        path, int(adType), adPosition, adIdListStr.toStdString(), exposeId.toStdString(), exposeDuration,
        Joined(pushIdList));
    const auto callback = [this, path, adType, adPosition, exposeId, adIdList, adIdListStr](
                              unsigned long taskId, const HttpRspInfo& response) {
        OnExposeAdCallback(taskId, response, path, adType, adPosition, exposeId, adIdList, adIdListStr);
    };
    if (core::network::http::StartRequest(request, callback, this, kHttpWorkPoolDefault, nullptr, nullptr) == 0) {
        LogError(
            "Expose ad failed, path = {}, ExposeTaskID  = 0, adType = {}, adPosition = {}, adId = {}, exposeId = {}",
            path, int(adType), adPosition, adIdListStr.toStdString(), exposeId.toStdString());
    }
}

// Each answer counts, so the task is not compared.
void CZRAdApiClient::OnExposeAdCallback(qulonglong /*taskId*/, HttpRspInfo const& stRspInfo, std::string const& path,
                                        ZRAdType adType, int adPosition, QString const& exposeId,
                                        QList<QString> const& adIdList, QString const& adIdListStr) {
    if (stRspInfo.m_nResult != kHttpOk) {
        LogError("Expose ad failed, path = {}, result = {}, adType = {}, adPosition = {}, adId = {}, exposeId = {}",
                 path, stRspInfo.m_nResult, int(adType), adPosition, adIdListStr.toStdString(), exposeId.toStdString());
        Q_EMIT ExposeAdFailed(kResultCodeExchangeFailed, ExchangeFailure(stRspInfo), adIdList);
        return;
    }
    Json::Value value;
    const std::optional<int> code = ParseJson(stRspInfo.m_strBody, value) ? CodeOf(value) : std::nullopt;
    if (!code) {
        LogError(
            "Expose ad failed, path = {}, body parse failed, errorCode = {}, httpCode = {}, adType = {}, "
            "adPosition = {}, adId = {}, exposeId = {}",
            path, stRspInfo.m_nResult, stRspInfo.m_nHttpStatusCode, int(adType), adPosition, adIdListStr.toStdString(),
            exposeId.toStdString());
        Q_EMIT ExposeAdFailed(kResultCodeExchangeFailed, Filled("body parse failed, body = ", stRspInfo.m_strBody),
                              adIdList);
        return;
    }
    if (*code != 0) {
        LogError("Expose ad failed, path = {}, code = {}, adType = {}, adPosition = {}, adId = {}, exposeId = {}", path,
                 *code, int(adType), adPosition, adIdListStr.toStdString(), exposeId.toStdString());
        Q_EMIT ExposeAdFailed(kResultCodeServerRefused, Filled("response code is ", std::to_string(*code)), adIdList);
        return;
    }
    LogInfo("Expose ad succeed, path = {}, adType = {}, adPosition = {}, adId = {}, exposeId = {}", path, int(adType),
            adPosition, adIdListStr.toStdString(), exposeId.toStdString());
    Q_EMIT ExposeAdSuccess(adIdList);
}
