#pragma once

#include <json/value.h>

#include <QObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The answer of the server's control API. `error` is empty on success; otherwise it is the server's reason or the
/// transport error.
struct ServerAnswer {
    bool reached = false;
    QString error;
    Json::Value body;

    /// Reads an HTTP response. Only status 200 with a JSON object is success. Status 0 means no response.
    static ServerAnswer Read(int status, const QByteArray& json, const QString& transportError);

    /// The error as a sentence for the user.
    QString Failure() const;
};

/// A request to the server's control API. An empty `json` sends no body.
struct ControlRequest {
    QByteArray method;
    QString path;
    QByteArray json;
};

/// Sends requests to the server's control API. Main thread.
class IControlClient {
public:
    using Answered = std::function<void(const ServerAnswer& answer)>;

    virtual ~IControlClient() = default;

    /// Calls `answered` once, later, unless `context` was destroyed before. An empty `json` sends no body.
    virtual void Ask(const char* method, const QString& path, const QByteArray& json, QObject* context,
                     Answered answered) = 0;

    /// Reads the server's state again, for example after a change of its users.
    virtual void Refresh() = 0;

    /// A command line for a shell that sends the request to the server of this moment, with its token.
    virtual QString Curl(const ControlRequest& request) const = 0;
};

/// Writes a command line for curl. All texts are quoted for a shell.
QString CurlLine(const ControlRequest& request, const QString& url, const QString& token);

/// Reads JSON of any shape: another type than the expected one reads as an absent value. The operators and conversions
/// of the library throw then.
namespace json {

/// The member, or null.
const Json::Value& Member(const Json::Value& json, const std::string& key);

/// The items of a list. Empty for anything else.
std::vector<Json::Value> Items(const Json::Value& json);

/// The whole number, or nothing.
std::optional<qint64> Number(const Json::Value& json);

/// A text unchanged, a number, a flag, a list or an object as JSON in one line, nothing for null.
QString Text(const Json::Value& json);

/// The value on several lines, indented.
QString Indented(const Json::Value& json);

}  // namespace json
