#pragma once

#include "workbench/ads/AdText.h"

/// Explains in the display language why a slot's ad is not shown.
namespace ad_diagnosis_text {

/// The refusal, the compared values, the passed checks, the remaining checks, and the next change by time.
ad_text::Group Why(const CAdTracker& board, const AdSlotState& slot, qint64 serverNowMs);

/// The countdown line of Why.
QString Time(const CAdTracker& board, const AdSlotState& slot, qint64 serverNowMs);

}  // namespace ad_diagnosis_text
