#include "tracing/HttpRecorder.h"

#include <QElapsedTimer>

#include "tracing/TraceLog.h"

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

HttpTrace TraceOf(const HttpReqInfo& request) {
    HttpTrace trace;
    trace.isPost = request.m_enMethod == kHttpPost;
    trace.url = UrlWithQuery(request);
    trace.headers = Joined(request.m_mapHeader);
    trace.body = request.m_strBody.substr(0, HttpTrace::kBodyKept);
    trace.bodyBytes = request.m_strBody.size();
    return trace;
}

}  // namespace

CHttpRecorder::CHttpRecorder(IHttp& http, CTraceLog& traceLog) : m_http(http), m_traceLog(traceLog) {}

unsigned long CHttpRecorder::Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                                   HttpWorkPool pool, core::network::http::Progress upload,
                                   core::network::http::Progress download) {
    HttpTrace sent = TraceOf(request);
    HttpTrace end = sent;
    std::swap(end.requestBody, end.body);
    end.requestBytes = end.bodyBytes;
    QElapsedTimer clock;
    clock.start();
    const auto recording = [this, clock, end, callback = std::move(callback)](unsigned long task,
                                                                              const HttpRspInfo& response) mutable {
        end.kind = response.m_nResult == kHttpOk ? HttpTrace::EnKind::Answered : HttpTrace::EnKind::Failed;
        end.task = task;
        end.result = response.m_nResult;
        end.status = response.m_nHttpStatusCode;
        end.durationMs = clock.elapsed();
        end.body = response.m_strBody.substr(0, HttpTrace::kBodyKept);
        end.bodyBytes = response.m_strBody.size();
        m_traceLog.Record(std::move(end));
        if (callback) {
            callback(task, response);
        }
    };
    const unsigned long task = m_http.Start(request, recording, guard, pool, std::move(upload), std::move(download));
    sent.task = task;
    m_traceLog.Record(std::move(sent));
    return task;
}
