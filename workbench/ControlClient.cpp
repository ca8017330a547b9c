#include "workbench/ControlClient.h"

#include "framework/JsonText.h"

ServerAnswer ServerAnswer::Read(int status, const QByteArray& json, const QString& transportError) {
    ServerAnswer answer;
    answer.reached = status != 0;
    std::string parseError;
    const auto body = host::ParseJson(json.toStdString(), parseError);
    if (status == 200 && body && body->isObject()) {
        answer.body = *body;
    } else if (body && body->isObject() && (*body)["error"].isString()) {
        answer.error = QString::fromStdString((*body)["error"].asString());
    } else {
        answer.error = status == 200 ? QStringLiteral("an unreadable answer") : transportError;
    }
    return answer;
}
