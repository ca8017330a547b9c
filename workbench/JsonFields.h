#pragma once

#include <json/value.h>

#include "workbench/FieldNode.h"

/// Converts JSON to fields. Members have their names, array items their index in brackets.
std::vector<FieldNode> JsonFields(const Json::Value& json);

/// The body of a call: fields if it is JSON, otherwise text and hex. `wholeBytes` is the total length; `body` can be
/// only its first part.
FieldNode BodyField(const QString& name, const std::string& body, size_t wholeBytes);
