#pragma once

#include <QString>
#include <string>

/// The text as one line of UTF-8: control characters, line separators and marks that turn the direction of
/// writing come out as \xNN or \uNNNN, so that logged bytes can't forge a line.
std::string EscapedLogText(const QString& text);
