#include "http/HttpService.h"

#include "core/IClientState.h"
#include "core/IPoster.h"
#include "framework/HostLog.h"
#include "framework/LogText.h"
#include "http/HttpRequest.h"

namespace {

constexpr host::CHostLog kLog("Http");
constexpr int kMaxLoggedLength = 200;

}  // namespace

CHttpService::CHttpService(IPoster& poster, const IClientState& environment, const HttpOptions& options)
    : m_poster(poster), m_environment(environment), m_options(options) {}

CHttpService::~CHttpService() = default;

unsigned long CHttpService::Start(const HttpReqInfo& request, core::network::http::Callback callback, QObject* guard,
                                  HttpWorkPool /*pool*/, core::network::http::Progress upload,
                                  core::network::http::Progress download) {
    const unsigned long task = ++m_nLastTask;
    CHttpExchange::Listeners listeners{guard, std::move(callback), std::move(upload), std::move(download)};
    std::string reason;
    auto message = http_request::Make(request, !m_environment.IsReleaseAppVersion(), m_insecureOrigin, reason);
    if (!message) {
        kLog.Error(FMT_STRING("Refused a request, {}: {}"), reason,
                   host::EscapedLogText(QString::fromStdString(request.m_strUrl).left(kMaxLoggedLength)));
        auto response = std::make_shared<HttpRspInfo>();
        response->m_nResult = kHttpBadRequest;
        DeliverLater(listeners, task, std::move(response));
        return task;
    }
    auto& exchange = m_running[task];
    exchange =
        std::make_unique<CHttpExchange>(m_loop, std::move(*message), http_request::TimeoutMs(request), m_options);
    exchange->listeners = std::move(listeners);
    connect(exchange.get(), &CHttpExchange::Ended, this, [this, task](const std::shared_ptr<HttpRspInfo>& response) {
        const CHttpExchange::Listeners answering = m_running.at(task)->listeners;
        Drop(task);
        // The poster can run a task before events that wait, and reports of progress do.
        const auto deliver = [this, answering, task, response] { DeliverLater(answering, task, response); };
        QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
    });
    connect(guard, &QObject::destroyed, exchange.get(), [this, task] { Drop(task); });
    exchange->Begin();
    return task;
}

// A callback may run an event loop or destroy the service, so it is called from a task.
void CHttpService::DeliverLater(const CHttpExchange::Listeners& listeners, unsigned long task,
                                std::shared_ptr<HttpRspInfo> response) {
    m_poster.Post(this, std::chrono::milliseconds(0), [listeners, task, response = std::move(response)] {
        if (listeners.guard && listeners.answered) {
            host::CallAndLogExceptions(kLog, "A request's callback", [&] { listeners.answered(task, *response); });
        }
    });
}

// The exchange may be the caller, so it is deleted later.
void CHttpService::Drop(unsigned long task) {
    const auto found = m_running.find(task);
    if (found == m_running.end()) {
        return;
    }
    CHttpExchange* exchange = found->second.release();
    m_running.erase(found);
    exchange->disconnect();
    exchange->Abort();
    exchange->deleteLater();
}
