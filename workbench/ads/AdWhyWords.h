#pragma once

#include "workbench/ads/AdWords.h"

/// Why a slot's ad is not on screen, in words of the display language.
namespace ad_why_words {

/// What refused, what was compared, what was tested before it and what was not reached, and what time alone will do.
ad_words::Group Why(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs);

/// The one line of it that counts down.
QString Time(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs);

}  // namespace ad_why_words
