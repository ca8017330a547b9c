#pragma once

#include <QString>

#include "workbench/rights/RefreshTracker.h"

/// Describes the board in the display language. Times are local.
namespace refresh_text {

QString Why(CRefreshTracker::EnRefreshReason why);
QString Outcome(const CRefreshTracker::Refresh& refresh);
/// The time, reason, result and session of a refresh.
QString Refresh(const CRefreshTracker::Refresh& refresh);
QString InFlight(const std::vector<CRefreshTracker::Refresh>& inFlight);
QString Waiting(const std::vector<CRefreshTracker::Waiting>& waiting);
QString NextHourly(std::optional<qint64> nextMs, qint64 nowMs);

}  // namespace refresh_text
