#pragma once

#include <cstdint>

/// A tab of the main window. The main window defines the numbers; other modules only compare them.
/// 0 is no tab.
enum EnZRTabFrameKey : int64_t {};
