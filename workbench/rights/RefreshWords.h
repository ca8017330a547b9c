#pragma once

#include <QString>

#include "workbench/rights/RefreshBoard.h"

/// What the board knows, in words of the display language. Clock times are local.
namespace refresh_words {

QString Why(CRefreshBoard::EnWhy why);
QString Outcome(const CRefreshBoard::Refresh& refresh);
/// When, why, how it ended, and its session.
QString Refresh(const CRefreshBoard::Refresh& refresh);
QString InFlight(const std::vector<CRefreshBoard::Refresh>& inFlight);
QString Waiting(const std::vector<CRefreshBoard::Waiting>& waiting);
QString NextHourly(std::optional<qint64> nextMs, qint64 nowMs);

}  // namespace refresh_words
