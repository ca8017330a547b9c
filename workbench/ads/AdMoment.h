#pragma once

#include "workbench/ads/AdBoard.h"

/// What time alone does for a slot that shows nothing.
struct AdMoment {
    enum class EnWhat {
        Nothing,
        Free,  // what refused last lets the ad through, when it is tried then
        Over,  // the ad's own window ends before that
        Push,  // a push has the slot ask again
    };

    EnWhat what = EnWhat::Nothing;
    qint64 atMs = 0;  // of the server's clock

    /// Told of the last refusal; of the one before it where the last has no moment and left all as it was. One that
    /// has passed stands back behind a push that is to come.
    static AdMoment Of(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs);
};
