#pragma once

#include <cstdint>

/// Commands and pushes for rights and VIP status, shared with the growth module.
constexpr uint32_t kCommandPremiumAccess = 20637;
constexpr uint32_t kCommandVipStatus = 20831;
constexpr uint32_t kPushPremiumChange = 20837;
constexpr uint32_t kPushVipChange = 20832;
