#pragma once

#include <QFont>

#include "framework/export.h"

namespace zr_ui_font {

/// Returns `font` with the size of that token and all else unchanged. Sizes grow with the number, from 0:
/// 11, 12, 13, 14, 16 and 20 pixels.
/// Thread: main thread.
/// Failure: a number without a token leaves the size unchanged.
ZRHOST_API QFont WithToken(QFont font, int token);

}  // namespace zr_ui_font
