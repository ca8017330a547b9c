#pragma once

#include <cstdint>

/// Commands and pushes of ads on the channel.
constexpr uint16_t kCmdAdStatusChangedPush = 20145;  // ads were taken offline
constexpr uint16_t kCmdAdCheckPush = 20170;          // fetch exactly these ads; internal builds only
constexpr uint16_t kCmdAdPush = 20171;               // there are new ads
