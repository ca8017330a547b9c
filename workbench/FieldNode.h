#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

/// A named value with its child fields, for a detail tree.
struct FieldNode {
    QString name;
    QString value;
    std::optional<std::string> raw;  // undecoded bytes; the value is their hex, possibly truncated
    std::vector<FieldNode> children;
    bool isWithheld = false;  // an export contains the name, but not the value
};

/// A field of undecoded bytes.
FieldNode RawField(const QString& name, const std::string& bytes);

/// A text field if the bytes are text; a raw field otherwise.
FieldNode BytesField(const QString& name, const std::string& bytes);
