#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "workbench/ads/AdLines.h"

/// The progress of a slot's ad to the screen, computed from the module's log lines only. Times in milliseconds are
/// local.

/// The stages in the module's order. Moment is the stage of the display conditions.
enum class EnAdStage { Request, List, Moment, Card, Picture, Again };

/// The checks before an ad is shown.
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
    // Ends without a check.
    Closed,
    Cleared,
    Withdrawn,
    // Changes nothing.
    Push,
};

struct AdStep {
    EnAdStage stage = EnAdStage::Request;
    EnAdTest test = EnAdTest::Limit;
};

/// The sequences of checks: an answer for a popup, a waiting popup list, and an answer for a banner.
enum class EnAdFlow { Answer, Waiting, Banner };

/// The reason why a slot's ad is not shown, or no longer shown.
struct AdRefusal {
    ad_lines::ParsedLine said;  // the line, with the compared values
    EnAdTest test = EnAdTest::Limit;
    EnAdFlow road = EnAdFlow::Answer;
    std::optional<size_t> place;                // index in the sequence; nothing if it is not a check
    std::vector<ad_lines::ParsedLine> dropped;  // ads of the list that are not due
    qint64 timeMs = 0;
    bool leavesRest = false;  // the previous state is unchanged

    EnAdStage Stage() const;
};

struct AdDiagnosis {
    EnAdFlow road = EnAdFlow::Answer;  // of the last checked list
    size_t passed = 0;                 // number of steps passed
    bool isAsking = false;             // a request is pending
    bool isLoading = false;            // a card waits for its picture
    std::optional<AdRefusal> last;
    std::optional<AdRefusal>
        before;          // the refusal that `last` did not change and that still applies to the waiting list
    int shownCount = 0;  // cards or banners that were created and not closed
    QString shownAd;     // of a card
    qint64 shownMs = 0;  // start of the display
    std::vector<ad_lines::ParsedLine> dropped;
    std::vector<qint64> pushesMs;  // due times of requests after a push
    QStringList withdrawn;         // by a push, at `withdrawnMs`
    qint64 withdrawnMs = 0;
    ad_lines::EnLine clears = ad_lines::EnLine::Cleared;  // the reason of a following clear
};

/// The meanings of the module's lines in these sequences.
namespace ad_diagnosis {

/// The year 9999. Later times are treated as never.
constexpr qint64 kLastSecond = 253'402'300'799;

enum class EnMeaning {
    Asks,
    Begins,  // checks of a list; `test` is the last passed one
    Passes,  // `test` was passed
    Drops,
    Refuses,
    PictureFails,  // names no position
    Loads,
    Shows,
    Vanishes,
    Ends,
    Clears,
    Pushes,
    Misses,  // a malformed push
    Reason,  // of a following clear
};

struct Meaning {
    ad_lines::EnLine line;
    EnMeaning meaning;
    int typeAt;                            // index of the value; -1 if the line names no type
    int positionAt;                        // -1 for the bottom popup, whose lines name no position
    EnAdStage stage = EnAdStage::Request;  // the earliest possible stage
    EnAdTest test = EnAdTest::Limit;
};

/// Null for a line without a meaning here.
const Meaning* Find(ad_lines::EnLine line);

/// The steps in the module's order.
const std::vector<AdStep>& Flow(EnAdFlow road);

/// Returns true if the next check belongs to the list and not to the display conditions.
bool IsList(const AdDiagnosis& why);

/// `hasStanding` is true if the slot's controller has a list.
void Take(AdDiagnosis& why, const Meaning& meaning, const ad_lines::ParsedLine& said, bool isBanner, bool hasStanding,
          qint64 timeMs);

/// Records that the ad or its list was removed without a check.
void TakeEnd(AdDiagnosis& why, EnAdTest how, const ad_lines::ParsedLine& said, qint64 timeMs);

/// Returns the second of server time from which the check passes without any other change; nothing if no time is
/// enough.
std::optional<qint64> FreeFromS(const AdRefusal& refusal);

}  // namespace ad_diagnosis
