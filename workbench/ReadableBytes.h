#pragma once

#include <QString>
#include <optional>
#include <string>

/// Bytes as a person can read them.
namespace readable {

/// The text of well-formed UTF-8 whose control characters are line breaks and tabs at most; nothing otherwise.
std::optional<QString> Utf8(const std::string& bytes);

/// Pairs of hex digits, "0a ff". What is longer than `limit` bytes ends in an ellipsis.
QString Hex(const std::string& bytes, size_t limit = 4096);

/// Utf8 where it is, Hex otherwise.
QString Text(const std::string& bytes);

/// The bytes that a text's characters up to U+00FF stand for, read as UTF-8: what module lines carry. Nothing
/// where they are no UTF-8, or plain ASCII, which reads the same as it is.
std::optional<QString> FromLatin1(const QString& text);

}  // namespace readable
