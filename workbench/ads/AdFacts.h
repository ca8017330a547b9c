#pragma once

#include <QStringList>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

#include "workbench/ads/AdRefusals.h"

/// What is known of ads. Times in milliseconds are of the local clock and 0 where nothing was seen; times in
/// seconds are the server's.

/// A place for ads.
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

/// The types of slots that the client shows.
constexpr int kTypePopup = 2;
constexpr int kTypeBanner = 3;

/// The bottom popup's, the one popup that the client shows: lines without a slot are about it.
constexpr AdSlot kBottomPopup{kTypePopup, 42};

/// An ad as the server sent it.
struct AdOffer {
    QString id;
    std::optional<qint64> startS, endS, expireS;
    std::vector<int> areas;  // of the main window, where a popup may appear
};

/// What became of an ad, or would have.
enum class EnAdFate {
    Unknown,  // not yet said
    Kept,
    Cleared,   // kept, and forgotten since
    Filtered,  // kept, and held back for the reasons of the filter
    TooEarly,
    Over,
    Expired,
    ForeignType,
    ForeignPosition,
    NotDecoded,  // with the whole answer
    Refused,     // with the whole answer, whose code is another than 0
    Unshowable,  // of a type that this client does not show
    Superseded,  // with the whole answer, which came after the next request
    Unfit,       // with the whole list, which lacks something
};

struct AdFate {
    AdOffer ad;
    EnAdFate fate = EnAdFate::Unknown;
    qint64 nowS = 0;        // when its window was looked at
    qint64 limitS = 0;      // the end of the window that it missed
    QStringList reasons;    // of the filter
    QString pictureFailed;  // why its picture could not be loaded, at the last try; the address where nobody said
};

/// What came of an ad's picture, at the last try.
struct AdPicture {
    bool hasCome = false;
    QString url;
    qint64 tries = 0;
    QString words;  // why it did not
};

enum class EnAdOutcome {
    InFlight,
    Arrived,  // what became of the answer was not yet said
    NoTask,
    Superseded,
    ExchangeFailed,  // number: the result
    NoJson,
    NotDecoded,  // words: what is wrong
    Refused,     // number: the code; words: the server's
    Good,
};

/// What a controller said of a whole list.
enum class EnAdVerdict { None, ForeignType, ForeignPosition, Empty, NoneValid, Unfit };

/// A request for ads and its answer.
struct AdRequest {
    /// An ad that a line took out.
    struct Drop {
        QString id;
        EnAdFate why = EnAdFate::Over;
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
    int status = 0;  // of HTTP
    EnAdOutcome outcome = EnAdOutcome::InFlight;
    qint64 number = 0;
    QString words;
    std::optional<qint64> code;                  // in the body
    std::optional<std::vector<AdOffer>> offers;  // in the body, where that was readable whole
    QStringList decoded;                         // the ads that the module reported, in order
    std::vector<Drop> drops;
    EnAdVerdict verdict = EnAdVerdict::None;
    AdSlot answerSlot;  // of a foreign list
    std::map<QString, QStringList> filtered;
    std::map<QString, AdPicture> pictures;  // that were told, by ad
    bool isCleared = false;

    /// In the server's order.
    std::vector<AdFate> Fates() const;

    /// Pictures have failed, and not one has come.
    bool IsWithoutPicture() const;
};

/// What happened to an ad on the screen.
struct AdEvent {
    qint64 timeMs = 0;
    QString adId;
};

struct AdExposure : AdEvent {
    qint64 endMs = 0;
    qint64 durationMs = -1;
    bool taken = false;  // by the reports
};

struct AdClick : AdEvent {
    enum class EnReport { Taken, Refused, NoExposure };
    EnReport report = EnReport::Taken;
    bool hasJumped = false;
};

struct AdClosing : AdEvent {
    QString why;  // as the module words it
};

/// An exposure that the server was told of.
struct AdExposeCall : AdEvent {
    enum class EnOutcome { InFlight, NoTask, Failed, NoJson, Refused, Good };
    EnOutcome outcome = EnOutcome::InFlight;
    QString exposeId;
    qint64 durationMs = 0;
    qint64 number = 0;  // the result, or the code
};

struct AdSlotState {
    AdSlot slot;
    QString lastRequest;   // ids of requests
    QString lastAnswered;  // empty before the first
    QString standing;      // whose list the controller has; empty if none
    QString made;          // whose list the youngest banner was made of: it stands on when the list is cleared
    qint64 stampS = 0;     // of the last request that left
    int refusedCount = 0;  // requests since that came too early
    std::optional<AdExposure> exposure;
    std::optional<AdExposeCall> call;
    std::optional<AdClick> click;
    std::optional<AdClick> closeButton;
    std::optional<AdClosing> closing;
    AdWhy why;
};
