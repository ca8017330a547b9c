#pragma once

#include <json/value.h>

#include <QObject>
#include <functional>

/// The answer of the server's control API. `error` is empty on success; otherwise it is the server's reason or the
/// transport error.
struct ServerAnswer {
    bool reached = false;
    QString error;
    Json::Value body;

    /// Reads an HTTP response. Only status 200 with a JSON object is success. Status 0 means no response.
    static ServerAnswer Read(int status, const QByteArray& json, const QString& transportError);
};

/// Sends requests to the server's control API. Main thread.
class IControlClient {
public:
    using Answered = std::function<void(const ServerAnswer& answer)>;

    virtual ~IControlClient() = default;

    /// Calls `answered` once, later, unless `context` was destroyed before. An empty `json` sends no body.
    virtual void Ask(const char* method, const QString& path, const QByteArray& json, QObject* context,
                     Answered answered) = 0;
};
