#pragma once

#include <json/value.h>

#include <QString>
#include <string>

/// Access to JSON from a server without exceptions: the library throws if a value has another type.
namespace growth_json {

/// Reads a JSON text with the library's default rules. On failure returns false, with the reason, and `value` is null.
bool Parse(const std::string& text, Json::Value& value, std::string& error);

/// Returns whether the value is an object.
inline bool IsObject(const Json::Value& value) {
    return value.type() == Json::objectValue;
}

/// Returns the member of an object; null if there is none.
const Json::Value& Member(const Json::Value& object, const char* key);

/// Returns a text, read as UTF-8; empty for a value of another type.
QString Text(const Json::Value& value);

}  // namespace growth_json
