#pragma once

#include <cstdint>

/// Bus messages of the growth module. The state changes before its message is sent.

/// Rights changed without a request of a caller. No body.
constexpr unsigned int kMsgPremiumDataChanged = 80050;
/// A request for rights was answered. p1 holds its session, p2 its result.
constexpr unsigned int kMsgPremiumRequestAnswered = 80051;
constexpr uint64_t kPremiumRequestSucceeded = 0;
constexpr uint64_t kPremiumRequestFailed = 2;
/// The VIP status was received again. No body.
constexpr unsigned int kMsgVipStatusChanged = 80052;
/// The AI chat's entries may have been opened or closed. No body.
constexpr unsigned int kMsgAIChatEnableChanged = 20300;
/// The user closed the window of the AI chat. No body.
constexpr unsigned int kMsgAIChatHiddenButNotClosed = 20301;
/// The AI chat is opened for another page. p1 holds the previous page scene, p2 the new one.
constexpr unsigned int kMsgAIChatPageSceneChanged = 20302;
