#pragma once

#include <vector>

#include "framework/export.h"

namespace core {
namespace attr_market {

/// Returns the markets that the server attributes to the logged-in user, the leading one first.
/// Thread: main thread.
/// Failure: empty if nobody is logged in or the user has no market.
ZRHOST_API std::vector<int> GetCurrentUserAttrMarket();

}  // namespace attr_market
}  // namespace core
