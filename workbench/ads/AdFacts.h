#pragma once

#include <QStringList>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "workbench/ads/AdRefusals.h"

/// Recorded facts about ads. Times in milliseconds are local, and 0 if unknown. Times in seconds are server time.

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

/// The ad types that the client shows.
constexpr int kTypePopup = 2;
constexpr int kTypeBanner = 3;

/// The client's only popup. Lines without type and position belong to it.
constexpr AdSlot kBottomPopup{kTypePopup, 42};

/// An ad in the server's answer.
struct AdOffer {
    QString id;
    std::optional<qint64> startS, endS, expireS;
    std::vector<int> areas;  // of the main window, in which a popup can be shown
};

/// The result for an ad of an answer.
enum class EnAdResult {
    Unknown,  // not yet reported
    Kept,
    Cleared,   // kept at first, cleared later
    Filtered,  // kept, but held back by the filter
    TooEarly,
    Over,
    Expired,
    ForeignType,
    ForeignPosition,
    NotDecoded,  // with the whole answer
    Refused,     // with the whole answer, whose code is not 0
    Unshowable,  // the client does not show this type
    Superseded,  // with the whole answer, which arrived after the next request
    Unfit,       // with the whole list, which is incomplete
};

struct AdFate {
    AdOffer ad;
    EnAdResult fate = EnAdResult::Unknown;
    qint64 nowS = 0;        // time of the check of its window
    qint64 limitS = 0;      // the violated limit of its window
    QStringList reasons;    // of the filter
    QString pictureFailed;  // reason of the last failure to load its picture; the URL if no reason is known
};

/// The result of the last attempt to load an ad's picture.
struct AdPicture {
    bool hasCome = false;
    QString url;
    qint64 tries = 0;
    QString words;  // reason of the failure
};

enum class EnAdOutcome {
    InFlight,
    Arrived,  // the result is not yet known
    NoTask,
    Superseded,
    ExchangeFailed,  // number: the result
    NoJson,
    NotDecoded,  // words: the reason
    Refused,     // number: the code; words: the server's message
    Good,
};

/// A controller's result for a whole list.
enum class EnAdVerdict { None, ForeignType, ForeignPosition, Empty, NoneValid, Unfit };

/// A request for ads and its answer.
struct AdRequest {
    /// An ad that was removed from the list.
    struct Drop {
        QString id;
        EnAdResult why = EnAdResult::Over;
        qint64 nowS = 0;
        qint64 limitS = 0;
    };

    QString id;
    AdSlot slot;
    QString path;
    QStringList askedFor;
    unsigned long task = 0;
    qint64 sentMs = 0;
    qint64 answeredMs = 0;
    qint64 durationMs = -1;
    int status = 0;  // HTTP status
    EnAdOutcome outcome = EnAdOutcome::InFlight;
    qint64 number = 0;
    QString words;
    std::optional<qint64> code;                  // from the body
    std::optional<std::vector<AdOffer>> offers;  // from the body; nothing if it could not be parsed completely
    QStringList decoded;                         // ads that the module reported, in order
    std::vector<Drop> drops;
    EnAdVerdict verdict = EnAdVerdict::None;
    AdSlot answerSlot;  // of a list for another slot
    std::map<QString, QStringList> filtered;
    std::map<QString, AdPicture> pictures;  // by ad id
    bool isCleared = false;

    /// In the server's order.
    std::vector<AdFate> Results() const;

    /// Returns true if at least one picture failed and none was loaded.
    bool IsWithoutPicture() const;
};

/// An event of an ad on the screen.
struct AdEvent {
    qint64 timeMs = 0;
    QString adId;
};

struct AdExposure : AdEvent {
    qint64 endMs = 0;
    qint64 durationMs = -1;
    bool taken = false;  // accepted for the reports
};

struct AdClick : AdEvent {
    enum class EnReport { Taken, Refused, NoExposure };
    EnReport report = EnReport::Taken;
    bool hasJumped = false;
};

struct AdClosing : AdEvent {
    QString why;  // in the module's words
};

/// A call that reports an exposure to the server.
struct AdExposeCall : AdEvent {
    enum class EnOutcome { InFlight, NoTask, Failed, NoJson, Refused, Good };
    EnOutcome outcome = EnOutcome::InFlight;
    QString exposeId;
    qint64 durationMs = 0;
    qint64 number = 0;  // the result, or the code
};

struct AdSlotState {
    AdSlot slot;
    QString lastRequest;   // request ids
    QString lastAnswered;  // empty before the first answer
    QString standing;      // the request of the controller's list; empty if there is none
    QString made;          // the request of the newest banner's list; the banner remains when the list is cleared
    qint64 stampS = 0;     // time of the last sent request
    int refusedCount = 0;  // requests since then that were too early
    std::optional<AdExposure> exposure;
    std::optional<AdExposeCall> call;
    std::optional<AdClick> click;
    std::optional<AdClick> closeButton;
    std::optional<AdClosing> closing;
    AdDiagnosis why;
};
