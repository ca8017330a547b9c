#pragma once

#include <QString>
#include <optional>
#include <string>

/// Converts bytes to readable text.
namespace readable {

/// Returns the text if the bytes are well-formed UTF-8 without control characters other than line breaks and tabs.
std::optional<QString> Utf8(const std::string& bytes);

/// Returns pairs of hex digits, such as "0a ff". More than `limit` bytes end in an ellipsis.
QString Hex(const std::string& bytes, size_t limit = 4096);

/// Returns the text if it is UTF-8, otherwise the hex digits.
QString Text(const std::string& bytes);

/// Decodes a text whose characters up to U+00FF are UTF-8 bytes, as in module lines. Returns nothing if they are not
/// UTF-8, or if they are plain ASCII and need no decoding.
std::optional<QString> FromLatin1(const QString& text);

}  // namespace readable
