#pragma once

#include <cstdint>

/// The numbers by which the VIP status and its widgets are known outside of the module.
constexpr uint32_t kCmdVipStatus = 20831;
constexpr uint32_t kCmdVipStatusPush = 20832;
constexpr uint32_t kCmdActivePermission = 20981;

/// The query to the trade module about a user who is no member.
constexpr int kTradeQueryVipEngine = 1007;

/// The link to the membership centre.
constexpr unsigned long kLinkMembershipCentre = 202011732;

/// Report codes of the VIP events.
constexpr int kReportCodeMarket = 4;
constexpr int kReportCodeFunction = 3;
