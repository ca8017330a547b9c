#pragma once

#include <json/value.h>

#include <QList>
#include <QString>
#include <string>

/// Builds the JSON of reports and requests of ads.
namespace ad_report {

/// An array, also of no texts.
Json::Value Texts(QList<QString> const& texts);

/// A number as the decimal text that the reports carry.
Json::Value NumberText(int number);

/// Joined with ",", for a log line.
std::string Joined(QList<QString> const& texts);

/// The word of a log line for whether the host took a report.
const char* Outcome(bool taken);

}  // namespace ad_report
