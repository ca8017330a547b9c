#pragma once

#include "workbench/FieldNode.h"
#include "workbench/ads/AdBoard.h"

/// Both sides of a test that refused, in words of the display language.
namespace ad_compared {

struct Compared {
    QString here;
    QString needed;
    std::vector<FieldNode> each;  // of the list's ads, where each was looked at
};

QString NameOf(EnAdTest test);

/// Empty for what is no test.
Compared Of(const CAdBoard& board, const AdSlotState& slot, const AdRefusal& refusal);

}  // namespace ad_compared
