#include "workbench/FieldNode.h"

#include "workbench/ReadableBytes.h"

FieldNode RawField(const QString& name, const std::string& bytes) {
    return {name, readable::Hex(bytes), bytes, {}};
}

FieldNode BytesField(const QString& name, const std::string& bytes) {
    const auto text = readable::Utf8(bytes);
    return text ? FieldNode{name, *text, {}, {}} : RawField(name, bytes);
}
