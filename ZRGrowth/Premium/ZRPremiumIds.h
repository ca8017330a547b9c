#pragma once

#include <cstdint>

/// Commands of premium rights.
constexpr uint32_t kCmdPremiumAccess = 20637;
constexpr uint32_t kCmdPremiumChangePush = 20837;
