#pragma once

#include "workbench/FieldNode.h"
#include "workbench/ads/AdTracker.h"

/// The actual and the expected value of a failed check, in the display language.
namespace ad_comparison {

struct Comparison {
    QString actual;
    QString expected;
    std::vector<FieldNode> each;  // one for each ad of the list, if each was checked
};

QString NameOf(EnAdTest test);

/// Empty if `refusal` is not a failed check.
Comparison Of(const CAdTracker& board, const AdSlotState& slot, const AdRefusal& refusal);

}  // namespace ad_comparison
