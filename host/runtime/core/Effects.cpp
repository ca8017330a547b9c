#include <algorithm>

#include "core/IHttp.h"
#include "core/IPoster.h"
#include "core/IReports.h"
#include "core/IUrlOpener.h"
#include "core/post.h"
#include "core/scheme.h"
#include "framework/Ports.h"

unsigned long core::network::http::StartRequest(const HttpReqInfo& request, Callback callback, QObject* guard,
                                                HttpWorkPool pool, Progress upload, Progress download) {
    const host::PortsLock ports;
    if (!ports->http || !guard) {
        return 0;
    }
    return ports->http->Start(request, std::move(callback), guard, pool, std::move(upload), std::move(download));
}

void core::post::ToMain(QPointer<QObject> context, std::function<void()> task, const char* name) {
    ToMainDelay(std::move(context), 0, std::move(task), name);
}

void core::post::ToMainDelay(QPointer<QObject> context, int delayMs, std::function<void()> task, const char* /*name*/) {
    const host::PortsLock ports;
    if (ports->poster && task) {
        ports->poster->Post(std::move(context), std::chrono::milliseconds(std::max(delayMs, 0)), std::move(task));
    }
}

bool core::report::Report(const std::string& event, int code, const Json::Value& params, CSBrokerId broker) {
    const host::PortsLock ports;
    return ports->reports && ports->reports->Report({event, code, params, broker});
}

std::shared_ptr<std::string> core::report::ReportTimerStart(const std::string& event) {
    const host::PortsLock ports;
    return ports->reports ? ports->reports->TimerStart(event) : nullptr;
}

bool core::report::ReportTimerEnd(const std::string& timer, int code, const Json::Value& params, CSBrokerId broker,
                                  long /*reserved*/) {
    const host::PortsLock ports;
    return ports->reports && ports->reports->TimerEnd({timer, code, params, broker});
}

bool core::urlhandler::DispatchUrl(const QString& url, BusinessType businessType, QObject* context, QVariant extra,
                                   FallbackMode fallbackMode) {
    const host::PortsLock ports;
    return ports->urls && ports->urls->Open({url, businessType, context, std::move(extra), fallbackMode});
}

void core::scheme::RegisterPreCallback(const QString& schemeUrl, PreCallback callback, void* owner,
                                       RouteMatchRule rule) {
    const host::PortsLock ports;
    if (ports->urls && callback && owner && !schemeUrl.isEmpty()) {
        ports->urls->AddHook(schemeUrl, std::move(callback), owner, rule);
    }
}
