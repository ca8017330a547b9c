#pragma once

#include <cstdint>

/// The numbers by which AI chat is known outside of the module.
constexpr uint32_t kCmdAIChatEnableStatus = 20982;
constexpr unsigned int kMsgAIChatEnableChanged = 20300;
