#pragma once

#include <cstdint>

/// Commands and messages of premium rights.
constexpr uint32_t kCmdPremiumAccess = 20637;
constexpr uint32_t kCmdPremiumChangePush = 20837;
constexpr unsigned int kMsgPremiumDataChanged = 80050;      // nobody waits for the answer; no body
constexpr unsigned int kMsgPremiumRequestAnswered = 80051;  // p1 the session, p2 how it went

/// The result of a request in message 80051.
constexpr uint64_t kPremiumRequestSucceeded = 0;
constexpr uint64_t kPremiumRequestFailed = 2;
