#pragma once

#include "workbench/ads/AdTracker.h"

/// The next change of an empty slot that needs nothing but time.
struct DisplayConditions {
    enum class EnWhat {
        Nothing,
        Free,  // the last refusal no longer applies then
        Over,  // the ad's own window ends before that
        Push,  // the slot requests ads after a push
    };

    EnWhat what = EnWhat::Nothing;
    qint64 atMs = 0;  // server time

    /// Uses the last refusal. Uses the one before if the last has no end in time and changed nothing. A future push is
    /// preferred to a time that has passed.
    static DisplayConditions Of(const CAdTracker& board, const AdSlotState& slot, qint64 serverNowMs);
};
