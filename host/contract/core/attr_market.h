#pragma once

#include <vector>

#include "framework/export.h"

namespace core {
namespace attr_market {

/// The markets that the logged-in user is attributed to, the leading one first; empty if there is none
/// or nobody is logged in. Main thread.
ZRHOST_API std::vector<int> GetCurrentUserAttrMarket();

}  // namespace attr_market
}  // namespace core
