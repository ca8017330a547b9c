#pragma once

#include "workbench/FieldNode.h"
#include "workbench/ads/AdTracker.h"

/// Describes the board in the display language. Times of events are local. Times of ad windows are server time, in UTC.
namespace ad_text {

QString Clock(qint64 localMs);
QString ServerTime(qint64 seconds);
/// "in 5 s"; "now" if no time is left.
QString Until(qint64 leftMs);
QString Slot(const AdSlot& slot);
/// Time until the slot's next request is possible.
QString Next(const AdSlotState& slot, qint64 serverNowMs);
/// Empty for null.
QString Outcome(const AdRequest* request);
/// "1 of 3"; empty without ads.
QString Kept(const AdRequest* request);
QString Fate(const AdFate& fate);
/// The last event on the screen.
QString LastEvent(const AdSlotState& slot);

/// A titled group of lines about a slot.
struct Group {
    QString title;
    std::vector<FieldNode> lines;
    std::vector<std::optional<bool>> good;         // by line; nothing if it is neither good nor bad
    std::optional<size_t> ticking = std::nullopt;  // the line that changes with time only
};

std::vector<Group> Groups(const CAdTracker& board, const AdSlotState& slot);

}  // namespace ad_text
