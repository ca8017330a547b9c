#pragma once

#include <json/value.h>

#include <QList>
#include <QString>
#include <string>

/// Builds the JSON of reports and requests of ads.
namespace ad_report {

/// Returns an array, also for an empty list.
Json::Value Texts(QList<QString> const& texts);

/// Returns the number as a decimal text, the form in reports.
Json::Value NumberText(int number);

/// Returns the texts joined by commas, for a log line.
std::string Joined(QList<QString> const& texts);

/// Returns the word for the result of a report in a log line.
const char* Outcome(bool taken);

}  // namespace ad_report
