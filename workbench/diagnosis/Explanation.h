#pragma once

#include "modules/ZRPremiumRecords.h"
#include "workbench/diagnosis/Tracker.h"

class CAIChatEntries;
class CPremiumRights;

/// The answer to "why is it not shown?" for one subject.
struct Explanation {
    QStringList steps;    // of the strip, each with a sign for its state; at most one is stopped
    QString state;        // in a few words
    QString sentence;     // the reason, and what to do or to wait for
    QStringList details;  // "name: value" each, indented below their group
    QString counts;       // of an ad's last list
    QString image;        // URL of an ad's picture
};

/// Computes explanations from the tracker's states and the module's answers.
namespace explanation {

Explanation OfAd(const CTracker& tracker, const AdSlot& slot, qint64 localNowMs);

/// The refreshes of all rights.
Explanation OfRefresh(const CTracker& tracker, qint64 localNowMs);
Explanation OfVip(const CTracker& tracker, const CPremiumRights& rights, qint64 localNowMs);
Explanation OfRight(const CTracker& tracker, const CPremiumRights& rights, EnPremiumAccess right, qint64 localNowMs);

/// The VIP widgets of a right: icon, tag, and banner and masks with each text set. Each has the rules by which the
/// module shows it, in the module's order.
QStringList WidgetsOf(const CPremiumUIAccessData& record, bool isNewSystem);

/// The entry of a scene to the AI chat.
Explanation OfScene(const CTracker& tracker, const CAIChatEntries& entries, ZRAIChatEntryScene scene,
                    qint64 localNowMs);
Explanation OfOpen(const ChatOpen& open);

/// "login · good", or the reason of a failure.
QString OutcomeOf(const RefreshState::Request& request);

}  // namespace explanation
