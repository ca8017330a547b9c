#pragma once

#include <string>
#include <tuple>

#include "workbench/diagnosis/LogTable.h"

/// An ad position with its type.
struct AdSlot {
    int type = 0;
    int position = 0;
};

inline bool operator<(const AdSlot& left, const AdSlot& right) {
    return std::tie(left.type, left.position) < std::tie(right.type, right.position);
}
inline bool operator==(const AdSlot& left, const AdSlot& right) {
    return std::tie(left.type, left.position) == std::tie(right.type, right.position);
}

constexpr int kTypePopup = 2;
constexpr int kTypeBanner = 3;

/// The client's only popup. Lines without type and position belong to it.
constexpr AdSlot kBottomPopup{kTypePopup, 42};

/// An ad in the server's answer. Times are seconds on the server's clock.
struct AdOffer {
    QString id;
    QString image;  // URL of the picture
    std::optional<qint64> startS, endS, expireS;
    std::vector<int> areas;  // of the main window, in which a popup can be shown

    /// Returns false if the ad is over at that second.
    bool LastsUntil(qint64 second) const;
};

/// A request for ads and its answer, from the traffic. Local times in milliseconds, 0 if unknown.
struct AdRequest {
    QString id;
    AdSlot slot;
    QString path;
    QStringList askedFor;
    qint64 sentMs = 0;
    qint64 answeredMs = 0;
    qint64 durationMs = -1;
    int status = 0;  // HTTP status
    std::optional<qint64> code;
    std::vector<AdOffer> ads;
    std::vector<log_table::ParsedLine> drops;  // the lines about ads that were removed from the list
    QString refusal;                           // of the whole list

    /// The line about an ad that was not kept; null if there is none.
    const log_table::ParsedLine* DropOf(const AdOffer& ad) const;
    std::vector<const AdOffer*> Kept() const;
    /// Null if no ad has the id.
    const AdOffer* Find(const QString& ad) const;
};

/// Reads the body of /ad/search or /ad/check. Returns nothing for any other path or body.
std::optional<AdRequest> ReadAdRequest(const std::string& url, const std::string& body);

/// Reads code and ads from the answer's body. Unexpected values are ignored.
void ReadAdAnswer(const std::string& body, AdRequest& request);
