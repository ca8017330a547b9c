#pragma once

#include <QString>
#include <string>

#include "framework/export.h"

namespace host {

/// Returns the text as one line of UTF-8. Control characters, line separators and format characters (direction marks,
/// zero-width characters) become \xNN, \uNNNN or \UNNNNNNNN. Logged bytes cannot forge a line.
ZRHOST_API std::string EscapedLogText(const QString& text);

}  // namespace host
