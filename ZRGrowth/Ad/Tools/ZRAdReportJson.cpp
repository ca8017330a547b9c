#include "Ad/Tools/ZRAdReportJson.h"

#include <QStringList>

namespace ad_report {

Json::Value Texts(QList<QString> const& texts) {
    Json::Value array(Json::arrayValue);
    for (const QString& text : texts) {
        array.append(text.toStdString());
    }
    return array;
}

Json::Value NumberText(int number) {
    return std::to_string(number);
}

std::string Joined(QList<QString> const& texts) {
    return QStringList(texts).join(QLatin1Char(',')).toStdString();
}

const char* Outcome(bool taken) {
    return taken ? "success" : "failed";
}

}  // namespace ad_report
