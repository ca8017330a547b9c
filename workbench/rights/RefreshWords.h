#pragma once

#include <QString>

#include "workbench/rights/RefreshBoard.h"

/// Describes the board in the display language. Times are local.
namespace refresh_words {

QString Why(CRefreshBoard::EnWhy why);
QString Outcome(const CRefreshBoard::Refresh& refresh);
/// The time, reason, result and session of a refresh.
QString Refresh(const CRefreshBoard::Refresh& refresh);
QString InFlight(const std::vector<CRefreshBoard::Refresh>& inFlight);
QString Waiting(const std::vector<CRefreshBoard::Waiting>& waiting);
QString NextHourly(std::optional<qint64> nextMs, qint64 nowMs);

}  // namespace refresh_words
