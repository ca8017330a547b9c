#pragma once

#include "workbench/FieldNode.h"
#include "workbench/ads/AdBoard.h"

/// The actual and the expected value of a failed check, in the display language.
namespace ad_compared {

struct Compared {
    QString here;
    QString needed;
    std::vector<FieldNode> each;  // one for each ad of the list, if each was checked
};

QString NameOf(EnAdTest test);

/// Empty if `refusal` is not a failed check.
Compared Of(const CAdBoard& board, const AdSlotState& slot, const AdRefusal& refusal);

}  // namespace ad_compared
