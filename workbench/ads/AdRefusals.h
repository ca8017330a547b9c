#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "workbench/ads/AdLines.h"

/// Where a slot stands on an ad's way to the screen, by the module's own lines alone. Times in milliseconds are of
/// the local clock.

/// The parts of the way, in the module's order.
enum class EnAdStage { Request, List, Moment, Card, Picture, Again };

/// What is tested on the way.
enum class EnAdTest {
    Limit,
    Task,
    Latest,
    Exchange,
    Json,
    Decode,
    Code,
    List,
    Type,
    Position,
    Ads,
    Window,
    Popup,
    AdId,
    Areas,
    Tab,
    Interval,
    Slot,
    Focus,
    Card,
    Interface,
    MainFrame,
    Picture,
    View,
    Layout,
    Caller,
    BannerType,
    // What ends it without a test.
    Closed,
    Cleared,
    Withdrawn,
    // What leaves all as it is.
    Push,
};

struct AdStep {
    EnAdStage stage = EnAdStage::Request;
    EnAdTest test = EnAdTest::Limit;
};

/// An answer for a popup, a popup's list that waited, and an answer for a banner.
enum class EnAdRoad { Answer, Waiting, Banner };

/// What keeps a slot's ad from the screen, or took it away.
struct AdRefusal {
    ad_lines::Said said;  // the line, with what was compared
    EnAdTest test = EnAdTest::Limit;
    EnAdRoad road = EnAdRoad::Answer;
    std::optional<size_t> place;          // on the road; nothing for what is no test
    std::vector<ad_lines::Said> dropped;  // the list's ads that are not due
    qint64 timeMs = 0;
    bool leavesRest = false;  // what was there before it is as it was

    EnAdStage Stage() const;
};

struct AdWhy {
    EnAdRoad road = EnAdRoad::Answer;  // of the last list that was judged
    size_t passed = 0;                 // steps of it
    bool isAsking = false;             // a request is out
    bool isLoading = false;            // a card waits for its picture
    std::optional<AdRefusal> last;
    std::optional<AdRefusal> before;  // what `last` left as it was: a refusal that still keeps the waiting list away
    int shownCount = 0;               // cards, or banners, that were handed out and are not closed
    QString shownAd;                  // of a card
    qint64 shownMs = 0;               // since when
    std::vector<ad_lines::Said> dropped;
    std::vector<qint64> pushesMs;  // when pushes have the slot ask again
    QStringList withdrawn;         // by a push, at `withdrawnMs`
    qint64 withdrawnMs = 0;
    ad_lines::EnLine clears = ad_lines::EnLine::Cleared;  // what has just been said to be a reason to clear
};

/// The one table of what the module's lines mean for that way.
namespace ad_why {

/// Of the year 9999: what is beyond is no moment that comes.
constexpr qint64 kLastSecond = 253'402'300'799;

enum class EnMeaning {
    Asks,
    Begins,  // to judge a list: `test` is the last that is behind
    Passes,  // `test` is behind
    Drops,
    Refuses,
    PictureFails,  // names no position
    Loads,
    Shows,
    Vanishes,
    Ends,
    Clears,
    Pushes,
    Misses,  // a push
    Reason,  // of a clearing that follows
};

struct Meaning {
    ad_lines::EnLine line;
    EnMeaning meaning;
    int typeAt;                            // among the values; -1 where the line names none
    int positionAt;                        // -1 for the bottom popup's slot, where the line names none
    EnAdStage stage = EnAdStage::Request;  // at the earliest
    EnAdTest test = EnAdTest::Limit;
};

/// Null for a line that means nothing here.
const Meaning* Find(ad_lines::EnLine line);

/// In the module's order.
const std::vector<AdStep>& Road(EnAdRoad road);

/// The next that is tested belongs to the list itself, and not to whether it may be shown now.
bool IsList(const AdWhy& why);

/// `hasStanding`: the slot's controller holds a list.
void Take(AdWhy& why, const Meaning& meaning, const ad_lines::Said& said, bool isBanner, bool hasStanding,
          qint64 timeMs);

/// What took the slot's ad, or its list, away without a test.
void TakeEnd(AdWhy& why, EnAdTest how, const ad_lines::Said& said, qint64 timeMs);

/// From which second of the server's clock on the test lets the ad through without anything else being done;
/// nothing where no moment does.
std::optional<qint64> FreeFromS(const AdRefusal& refusal);

}  // namespace ad_why
