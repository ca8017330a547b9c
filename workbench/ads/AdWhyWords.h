#pragma once

#include "workbench/ads/AdWords.h"

/// Explains in the display language why a slot's ad is not shown.
namespace ad_why_words {

/// The refusal, the compared values, the passed checks, the remaining checks, and the next change by time.
ad_words::Group Why(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs);

/// The countdown line of Why.
QString Time(const CAdBoard& board, const AdSlotState& slot, qint64 serverNowMs);

}  // namespace ad_why_words
