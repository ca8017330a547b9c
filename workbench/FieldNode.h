#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

/// A field of something that is looked at, with the fields inside it.
struct FieldNode {
    QString name;
    QString value;
    std::optional<std::string> raw;  // bytes that nobody could read; the value is their hex, or the start of it
    std::vector<FieldNode> children;
    bool isWithheld = false;  // an export names it, and leaves its value out
};

/// A field of bytes that nobody can read.
FieldNode RawField(const QString& name, const std::string& bytes);

/// A text where the bytes are one, raw otherwise.
FieldNode BytesField(const QString& name, const std::string& bytes);
