#pragma once

#include <QString>
#include <string>

/// The text as one line of UTF-8. Control characters, line separators and direction marks become \xNN or \uNNNN, so
/// that logged bytes cannot forge a line.
std::string EscapedLogText(const QString& text);
