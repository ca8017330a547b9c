#pragma once

#include "workbench/FieldNode.h"
#include "workbench/ads/AdBoard.h"

/// What the board knows, in words of the display language. Clock times of what was seen are local; those of ads'
/// windows are the server's, in UTC.
namespace ad_words {

QString Clock(qint64 localMs);
QString ServerTime(qint64 seconds);
/// "in 5 s"; "now" where nothing is left.
QString Until(qint64 leftMs);
QString Slot(const AdSlot& slot);
/// When the next request is let out, counted from the server's time.
QString Next(const AdSlotState& slot, qint64 serverNowMs);
/// Empty for no request.
QString Outcome(const AdRequest* request);
/// "1 of 3"; empty where there are no ads.
QString Kept(const AdRequest* request);
QString Fate(const AdFate& fate);
/// The last thing that happened on the screen.
QString LastEvent(const AdSlotState& slot);

/// Lines on a slot that belong together.
struct Group {
    QString title;
    std::vector<FieldNode> lines;
    std::vector<std::optional<bool>> good;         // beside the lines; nothing where it is neither
    std::optional<size_t> ticking = std::nullopt;  // the line that changes with the time alone
};

std::vector<Group> Groups(const CAdBoard& board, const AdSlotState& slot);

}  // namespace ad_words
