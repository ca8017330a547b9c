#pragma once

#include "workbench/ads/AdFacts.h"

/// Reads bodies of calls to the ad server and parameters of ad reports. Unexpected values are ignored.
namespace ad_bodies {

struct Request {
    QString id;
    AdSlot slot;
    QStringList askedFor;
};

/// Reads the body of /ad/search or /ad/check. Returns nothing for any other path or body.
std::optional<Request> ReadRequest(const std::string& url, const std::string& body);

struct Answer {
    std::optional<qint64> code;
    std::optional<std::vector<AdOffer>> offers;
};

Answer ReadAnswer(const std::string& body);

/// The parameters of a report.
class CParams {
public:
    explicit CParams(const std::string& params);

    /// Empty if the parameter is missing or not a text.
    QString Text(const char* name) const;
    QStringList Texts(const char* name) const;
    std::optional<qint64> Number(const char* name) const;

private:
    std::map<std::string, QString> m_texts;
    std::map<std::string, QStringList> m_lists;
    std::map<std::string, qint64> m_numbers;
};

}  // namespace ad_bodies
