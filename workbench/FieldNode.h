#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

/// A named value with its child fields, for a detail tree.
struct FieldNode {
    QString name;
    QString value = {};
    std::optional<std::string> raw = {};  // undecoded bytes; the value is their hex, possibly truncated
    std::vector<FieldNode> children = {};
    bool isWithheld = false;  // an export contains the name, but not the value
};

/// A field of undecoded bytes. More than 4096 bytes end in an ellipsis.
FieldNode RawField(const QString& name, const std::string& bytes);

/// A text field if the bytes are UTF-8 without control characters other than line breaks and tabs; a raw field
/// otherwise.
FieldNode BytesField(const QString& name, const std::string& bytes);

/// The body of a call: fields if it is a JSON object or array, text if BytesField is, otherwise text and hex.
/// `wholeBytes` is the total length; `body` can be only its first part.
FieldNode BodyField(const QString& name, const std::string& body, size_t wholeBytes);

/// Converts bytes and times to readable text.
namespace readable {

/// Returns the start of the text if it is UTF-8, otherwise hex digits, on one line.
QString Preview(const std::string& bytes);

/// Decodes a text whose characters up to U+00FF are UTF-8 bytes, as in module lines. Returns nothing if they are not
/// UTF-8, or if they are plain ASCII and need no decoding.
std::optional<QString> FromLatin1(const QString& text);

/// The name of this computer's time zone, in which all times are displayed.
QString Zone();

/// Time of day with milliseconds. The date precedes it on any day but today.
QString LocalTime(qint64 timeMs);

/// Difference of the server's clock in its two largest units, such as "+1 h 3 s"; empty if it is less than two seconds.
QString ServerOffset();

}  // namespace readable
