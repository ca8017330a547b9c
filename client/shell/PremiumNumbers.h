#pragma once

#include <cstdint>

/// Message ids and states for rights and VIP status, shared with the growth module.
constexpr uint32_t kCommandPremiumAccess = 20637;
constexpr uint32_t kCommandVipStatus = 20831;
constexpr uint32_t kPushPremiumChange = 20837;
constexpr uint32_t kPushVipChange = 20832;

constexpr unsigned int kMsgPremiumDataChanged = 80050;      // rights changed without a request; no body
constexpr unsigned int kMsgPremiumRequestAnswered = 80051;  // p1: session; p2: 0 for success, 2 for failure
constexpr unsigned int kMsgVipStatusChanged = 80052;        // no body
