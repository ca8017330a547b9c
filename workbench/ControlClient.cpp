#include "workbench/ControlClient.h"

#include <json/writer.h>

#include <QStringList>

#include "framework/JsonText.h"

ServerAnswer ServerAnswer::Read(int status, const QByteArray& json, const QString& transportError) {
    ServerAnswer answer;
    answer.reached = status != 0;
    std::string parseError;
    const auto body = host::ParseJson(json.toStdString(), parseError);
    if (status == 200 && body && body->isObject()) {
        answer.body = *body;
    } else if (body && json::Member(*body, "error").isString()) {
        answer.error = QString::fromStdString((*body)["error"].asString());
    } else {
        answer.error = status == 200 ? QStringLiteral("an unreadable answer") : transportError;
    }
    return answer;
}

QString ServerAnswer::Failure() const {
    return (reached ? QStringLiteral("The server refuses: %1") : QStringLiteral("The server does not answer: %1"))
        .arg(error);
}

QString CurlLine(const ControlRequest& request, const QString& url, const QString& token) {
    const auto quoted = [](QString text) {
        return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
    };
    QStringList words{QStringLiteral("curl -X"), QString::fromLatin1(request.method), QStringLiteral("-H"),
                      quoted(QStringLiteral("Authorization: Bearer ") + token)};
    if (!request.json.isEmpty()) {
        words << QStringLiteral("--data-raw") << quoted(QString::fromUtf8(request.json));
    }
    words << quoted(url);
    return words.join(QLatin1Char(' '));
}

namespace json {

const Json::Value& Member(const Json::Value& json, const std::string& key) {
    const Json::Value* member = json.isObject() ? json.find(key.data(), key.data() + key.size()) : nullptr;
    return member ? *member : Json::Value::nullSingleton();
}

std::vector<Json::Value> Items(const Json::Value& json) {
    return json.isArray() ? std::vector<Json::Value>(json.begin(), json.end()) : std::vector<Json::Value>();
}

std::optional<qint64> Number(const Json::Value& json) {
    return json.isInt64() ? std::make_optional(qint64(json.asInt64())) : std::nullopt;
}

QString Text(const Json::Value& json) {
    if (json.isNull()) {
        return {};
    }
    return QString::fromStdString(json.isString() ? json.asString() : host::OneLine(json));
}

QString Indented(const Json::Value& json) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "    ";
    builder["emitUTF8"] = true;
    return QString::fromStdString(Json::writeString(builder, json));
}

}  // namespace json
