#pragma once

#include <QString>
#include <string>

#include "framework/export.h"

namespace host {

/// Returns the text as one line of UTF-8. Control characters, line separators and direction marks become \xNN or
/// \uNNNN, so that logged bytes cannot forge a line.
ZRHOST_API std::string EscapedLogText(const QString& text);

}  // namespace host
