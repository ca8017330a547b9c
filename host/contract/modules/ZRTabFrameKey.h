#pragma once

#include <cstdint>

/// A tab of the main window. The numbers belong to the main frame; other modules only compare them.
enum EnZRTabFrameKey : int64_t {};
