#pragma once

#include <cstdint>

/// The numbers by which the client and the growth module speak of rights and of the VIP status.
constexpr uint32_t kCommandPremiumAccess = 20637;
constexpr uint32_t kCommandVipStatus = 20831;
constexpr uint32_t kPushPremiumChange = 20837;
constexpr uint32_t kPushVipChange = 20832;

constexpr unsigned int kMsgPremiumDataChanged = 80050;      // nobody waited for the answer; no body
constexpr unsigned int kMsgPremiumRequestAnswered = 80051;  // p1 the session, p2 0 for success or 2 for failure
constexpr unsigned int kMsgVipStatusChanged = 80052;        // no body
