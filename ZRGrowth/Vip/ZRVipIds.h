#pragma once

#include <cstdint>

/// The numbers by which the VIP status is known outside of the module.
constexpr uint32_t kCmdVipStatus = 20831;
constexpr uint32_t kCmdVipStatusPush = 20832;
constexpr unsigned int kMsgVipStatusChanged = 80052;

/// The query to the trade module about a user who is no member.
constexpr int kTradeQueryVipEngine = 1007;
