#pragma once

#include <json/value.h>

#include <QPointer>
#include <QString>
#include <QUrl>
#include <deque>
#include <functional>
#include <map>
#include <memory>

#include "framework/export.h"

namespace host::web {

/// The client's end of the bridge between a page and native handlers. Each document has its own name, which its bridge
/// object puts into each message; an answer carries the name of the document that called. Main thread.
class ZRHOST_API CWebBridge {
public:
    /// Returns null to leave the call open.
    using Handler = std::function<std::shared_ptr<Json::Value>(const Json::Value& params, int call)>;

    /// Bytes of the longest message, in either direction.
    static constexpr size_t kMaxBytes = 1024 * 1024;
    /// Open calls of one name. One more ends the oldest.
    static constexpr int kMaxOpenCalls = 64;

    /// `committed` returns the address of the displayed document.
    CWebBridge(std::function<QUrl()> committed, std::function<void(const QString&)> send);

    void Register(const QString& name, Handler handler, QObject* context);

    /// Opens or closes the bridge, and ends all calls.
    void BeginLoad(bool open);

    /// Handles a message of the page.
    void Receive(const QString& text);
    /// Answers the oldest open call of that name.
    void Respond(const QString& name, const Json::Value& value);
    /// Returns whether the page has the bridge.
    bool Broadcast(const QString& name, const Json::Value& params);

private:
    struct Registered {
        Handler handler;
        QPointer<QObject> context;
        bool guarded = false;
    };
    struct Call {
        QString name;
        int id = 0;  // the page's number of the call; 0 if it wants no answer
    };

    bool IsServed() const;
    void Handle(const Json::Value& message);
    void Invoke(const Call& call, const Json::Value& params);
    void LeaveOpen(const Call& call);
    void Fail(int id, const char* code, const QString& name);
    bool Send(Json::Value message);

    const std::function<QUrl()> m_fnCommitted;
    const std::function<void(const QString&)> m_fnSend;
    std::map<QString, Registered> m_handlers;
    std::deque<Call> m_open;
    std::string m_page;  // name of the document; empty until its first message
    int m_nCalls = 0;
    bool m_bOpen = false;
    std::shared_ptr<int> m_pAlive = std::make_shared<int>();
};

}  // namespace host::web
