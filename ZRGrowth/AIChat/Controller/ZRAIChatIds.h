#pragma once

#include <cstdint>

/// Commands and messages of AI chat.
constexpr uint32_t kCmdAIChatEnableStatus = 20982;
constexpr unsigned int kMsgAIChatEnableChanged = 20300;
