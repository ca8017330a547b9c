#include "observe/ObservedHttp.h"

#include <QElapsedTimer>

#include "observe/Observation.h"

namespace {

using Lists = std::map<std::string, std::vector<std::string>>;

std::string UrlWithQuery(const HttpReqInfo& request) {
    std::string url = request.m_strUrl;
    char mark = url.find('?') == std::string::npos ? '?' : '&';
    for (const auto& [name, values] : request.m_mapQuery) {
        for (const std::string& value : values) {
            url += mark + QByteArray::fromStdString(name).toPercentEncoding().toStdString() + '=' +
                   QByteArray::fromStdString(value).toPercentEncoding().toStdString();
            mark = '&';
        }
    }
    return url;
}

std::map<std::string, std::string> Joined(const Lists& headers) {
    std::map<std::string, std::string> joined;
    for (const auto& [name, values] : headers) {
        for (const std::string& value : values) {
            std::string& text = joined[name];
            text += (text.empty() ? "" : ", ") + value;
        }
    }
    return joined;
}

HttpSeen SeenOf(const HttpReqInfo& request) {
    HttpSeen seen;
    seen.isPost = request.m_enMethod == kHttpPost;
    seen.url = UrlWithQuery(request);
    seen.headers = Joined(request.m_mapHeader);
    seen.body = request.m_strBody.substr(0, HttpSeen::kBodyKept);
    seen.bodyBytes = request.m_strBody.size();
    return seen;
}

}  // namespace

CObservedHttp::CObservedHttp(IHttp& http, CObservation& observation) : m_http(http), m_observation(observation) {}

unsigned long CObservedHttp::Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                                   HttpWorkPool pool, core::network::http::Progress upload,
                                   core::network::http::Progress download) {
    HttpSeen sent = SeenOf(request);
    HttpSeen end = sent;
    std::swap(end.requestBody, end.body);
    end.requestBytes = end.bodyBytes;
    QElapsedTimer clock;
    clock.start();
    const auto observed = [this, clock, end, callback = std::move(callback)](unsigned long task,
                                                                             const HttpRspInfo& response) mutable {
        end.kind = response.m_nResult == kHttpOk ? HttpSeen::EnKind::Answered : HttpSeen::EnKind::Failed;
        end.task = task;
        end.result = response.m_nResult;
        end.status = response.m_nHttpStatusCode;
        end.durationMs = clock.elapsed();
        end.body = response.m_strBody.substr(0, HttpSeen::kBodyKept);
        end.bodyBytes = response.m_strBody.size();
        m_observation.Report(std::move(end));
        if (callback) {
            callback(task, response);
        }
    };
    const unsigned long task = m_http.Start(request, observed, guard, pool, std::move(upload), std::move(download));
    sent.task = task;
    m_observation.Report(std::move(sent));
    return task;
}
