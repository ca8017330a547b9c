#pragma once

#include <QString>
#include <vector>

/// A field of something that is looked at, with the fields inside it.
struct FieldNode {
    QString name;
    QString value;
    bool isRaw = false;  // the value is the hex of bytes that nobody could read
    std::vector<FieldNode> children;
};
