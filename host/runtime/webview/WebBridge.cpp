#include "webview/WebBridge.h"

#include <json/writer.h>

#include <algorithm>

#include "framework/HostLog.h"
#include "framework/JsonText.h"
#include "framework/LogText.h"
#include "webview/WebAddress.h"
#include "webview/WebHost.h"

namespace host::web {
namespace {

constexpr CHostLog kLog("WebBridge");
constexpr int kMaxLoggedLength = 200;
constexpr size_t kMaxPageName = 64;

constexpr char kErrorShape[] = "wrong-shape";
constexpr char kErrorName[] = "unknown-name";
constexpr char kErrorCalls[] = "too-many-calls";
constexpr char kErrorSize[] = "too-large";
constexpr char kErrorHandler[] = "failed";

std::string Logged(const QString& text) {
    return EscapedLogText(text.left(kMaxLoggedLength));
}

void Trace(WebTrace::EnKind kind, const QString& name, std::string text, int call = 0) {
    text.resize(std::min(text.size(), HttpTrace::kBodyKept));
    Q_EMIT CWebHost::Instance().Traced({kind, name, std::move(text), call, kind == WebTrace::EnKind::Refused});
}

std::string ToText(const Json::Value& value) {
    static const Json::StreamWriterBuilder builder = [] {
        Json::StreamWriterBuilder settings;
        settings["indentation"] = "";
        settings["emitUTF8"] = true;
        return settings;
    }();
    return Json::writeString(builder, value);
}

}  // namespace

CWebBridge::CWebBridge(std::function<QUrl()> committed, std::function<void(const QString&)> send)
    : m_fnCommitted(std::move(committed)), m_fnSend(std::move(send)) {}

void CWebBridge::Register(const QString& name, Handler handler, QObject* context) {
    m_handlers[name] = {std::move(handler), context, context != nullptr};
}

void CWebBridge::BeginLoad(bool open) {
    m_bOpen = open;
    m_open.clear();
    m_page.clear();
    m_nCalls = 0;
}

bool CWebBridge::IsServed() const {
    return m_bOpen && IsBridgeOrigin(m_fnCommitted());
}

void CWebBridge::Receive(const QString& text) {
    if (!IsServed()) {
        kLog.Error(FMT_STRING("Refused a message of a page without the bridge: {}"),
                   Logged(m_fnCommitted().toString()));
        Trace(WebTrace::EnKind::Refused, QString(), "the page has no bridge");
        return;
    }
    const std::string bytes = text.toStdString();
    if (bytes.size() > kMaxBytes) {
        kLog.Error(FMT_STRING("Refused a message of {} bytes"), bytes.size());
        Trace(WebTrace::EnKind::Refused, QString(), kErrorSize);
        return;
    }
    std::string error;
    const std::optional<Json::Value> message = ParseJson(bytes, error);
    if (!message) {
        kLog.Error(FMT_STRING("Refused a message that is no JSON, {}: {}"), error, Logged(text));
        Trace(WebTrace::EnKind::Refused, QString(), "no JSON: " + error);
        return;
    }
    const bool named = message->isObject() && (*message)["page"].isString() && !(*message)["page"].asString().empty() &&
                       (*message)["page"].asString().size() <= kMaxPageName;
    if (!named) {
        kLog.Error(FMT_STRING("Refused a message of no document: {}"), Logged(text));
        Trace(WebTrace::EnKind::Refused, QString(), "it names no document");
        return;
    }
    // The page can load itself again. Answers to its former document would be for the wrong calls.
    if ((*message)["page"].asString() != m_page) {
        BeginLoad(m_bOpen);
        m_page = (*message)["page"].asString();
    }
    if (message->isMember("name") || message->isMember("call")) {
        Handle(*message);
    }
}

void CWebBridge::Handle(const Json::Value& message) {
    Call call;
    const Json::Value& id = message["call"];
    if (id.isInt() && id.asInt() > 0) {
        call.id = id.asInt();
    }
    const Json::Value& name = message["name"];
    const Json::Value& params = message["params"];
    if (!name.isString() || !params.isObject() || !(id.isNull() || call.id > 0)) {
        kLog.Error(FMT_STRING("Refused a call of the wrong shape"));
        Fail(call.id, kErrorShape, QString());
        return;
    }
    call.name = QString::fromStdString(name.asString());
    Invoke(call, params);
}

void CWebBridge::Invoke(const Call& call, const Json::Value& params) {
    const auto found = m_handlers.find(call.name);
    const bool callable =
        found != m_handlers.end() && found->second.handler && !(found->second.guarded && !found->second.context);
    if (!callable) {
        kLog.Error(FMT_STRING("Refused a call of an unknown name: {}"), Logged(call.name));
        Fail(call.id, kErrorName, call.name);
        return;
    }
    Trace(WebTrace::EnKind::Call, call.name, ToText(params), call.id);
    // The handler can replace itself, load another page, or end the widget.
    const Handler handler = found->second.handler;
    const std::weak_ptr<int> alive = m_pAlive;
    const std::string page = m_page;
    const int number = ++m_nCalls;
    // Open before the handler runs, so that the handler can answer by OnResponseToJS.
    LeaveOpen(call);
    std::shared_ptr<Json::Value> answer;
    bool failed = true;
    CallAndLogExceptions(kLog, "A handler of the bridge", [&] {
        answer = handler(params, number);
        failed = false;
    });
    if (alive.expired() || m_page != page || !(failed || answer)) {
        return;
    }
    const auto open =
        std::find_if(m_open.begin(), m_open.end(), [&](const Call& other) { return other.id == call.id; });
    if (open == m_open.end()) {
        return;  // a notice, or answered
    }
    m_open.erase(open);
    if (failed) {
        Fail(call.id, kErrorHandler, call.name);
        return;
    }
    Json::Value message;
    message["call"] = call.id;
    message["answer"] = *answer;
    Trace(WebTrace::EnKind::Answer, call.name, ToText(*answer), call.id);
    if (!Send(std::move(message))) {
        Fail(call.id, kErrorSize, call.name);
    }
}

void CWebBridge::LeaveOpen(const Call& call) {
    if (call.id == 0) {
        return;
    }
    const auto same = [&call](const Call& other) { return other.name == call.name; };
    if (std::count_if(m_open.begin(), m_open.end(), same) >= kMaxOpenCalls) {
        const auto oldest = std::find_if(m_open.begin(), m_open.end(), same);
        const int id = oldest->id;
        m_open.erase(oldest);
        kLog.Error(FMT_STRING("Ended the oldest of too many open calls: {}"), Logged(call.name));
        Fail(id, kErrorCalls, call.name);
    }
    m_open.push_back(call);
}

void CWebBridge::Fail(int id, const char* code, const QString& name) {
    Trace(WebTrace::EnKind::Refused, name, code, id);
    if (id == 0) {
        return;
    }
    Json::Value message;
    message["call"] = id;
    message["error"]["code"] = code;
    message["error"]["name"] = name.left(kMaxLoggedLength).toStdString();
    Send(std::move(message));
}

void CWebBridge::Respond(const QString& name, const Json::Value& value) {
    const auto oldest =
        std::find_if(m_open.begin(), m_open.end(), [&name](const Call& call) { return call.name == name; });
    if (!IsServed() || oldest == m_open.end()) {
        kLog.Error(FMT_STRING("Dropped an answer without an open call: {}"), Logged(name));
        return;
    }
    const int id = oldest->id;
    m_open.erase(oldest);
    Json::Value message;
    message["call"] = id;
    message["answer"] = value;
    Trace(WebTrace::EnKind::Answer, name, ToText(value), id);
    if (!Send(std::move(message))) {
        Fail(id, kErrorSize, name);
    }
}

bool CWebBridge::Broadcast(const QString& name, const Json::Value& params) {
    Json::Value message;
    message["event"] = name.toStdString();
    Trace(WebTrace::EnKind::Event, name, ToText(params));
    message["params"] = params;
    return IsServed() && !m_page.empty() && Send(std::move(message));
}

// Returns false if the message is too large, and for a page without the bridge.
bool CWebBridge::Send(Json::Value message) {
    if (!IsServed()) {
        kLog.Error(FMT_STRING("Dropped a message to a page without the bridge"));
        return false;
    }
    message["page"] = m_page;
    const std::string text = ToText(message);
    if (text.size() > kMaxBytes) {
        kLog.Error(FMT_STRING("Dropped a message of {} bytes to a page"), text.size());
        return false;
    }
    m_fnSend(QString::fromStdString(text));
    return true;
}

}  // namespace host::web
