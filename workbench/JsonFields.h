#pragma once

#include <json/value.h>

#include "workbench/FieldNode.h"

/// JSON as fields: members by their names, items by their place in brackets.
std::vector<FieldNode> JsonFields(const Json::Value& json);

/// The body of a call: as fields where it is JSON, as text and as hex otherwise. `wholeBytes` is the length of
/// all of it, of which `body` may be the first part.
FieldNode BodyField(const QString& name, const std::string& body, size_t wholeBytes);
