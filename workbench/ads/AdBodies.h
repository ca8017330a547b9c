#pragma once

#include "workbench/ads/AdFacts.h"

/// What the bodies of calls to the ad server and the parameters of reports on ads say. Anything may come: what
/// is not as expected is left out.
namespace ad_bodies {

struct Request {
    QString id;
    AdSlot slot;
    QStringList askedFor;
};

/// Of /ad/search and /ad/check; nothing for any other path or body.
std::optional<Request> ReadRequest(const std::string& url, const std::string& body);

struct Answer {
    std::optional<qint64> code;
    std::optional<std::vector<AdOffer>> offers;
};

Answer ReadAnswer(const std::string& body);

/// Parameters of a report.
class CParams {
public:
    explicit CParams(const std::string& params);

    /// Empty where there is none, or something else.
    QString Text(const char* name) const;
    QStringList Texts(const char* name) const;
    std::optional<qint64> Number(const char* name) const;

private:
    std::map<std::string, QString> m_texts;
    std::map<std::string, QStringList> m_lists;
    std::map<std::string, qint64> m_numbers;
};

}  // namespace ad_bodies
