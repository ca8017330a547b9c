#pragma once

#include <vector>

#include "framework/export.h"

namespace core {
namespace attr_market {

/// Returns the markets that the server attributes to the logged-in user, the leading one first.
/// The login answer contains them, so OnLogin can read them already. A reconnect may change them.
/// Thread: main thread.
/// Failure: empty if nobody is logged in or the user has no market.
ZRHOST_API std::vector<int> GetCurrentUserAttrMarket();

}  // namespace attr_market
}  // namespace core
