#pragma once

#include <json/value.h>

#include <QString>

/// Access to JSON from a server without exceptions: the library throws if a value has another type.
namespace ad_json {

/// Returns whether the value is an object.
inline bool IsObject(const Json::Value& value) {
    return value.type() == Json::objectValue;
}

/// Returns the member of an object; null if there is none.
const Json::Value& Member(const Json::Value& object, const char* key);

/// Returns a text, read as UTF-8; empty for any other type.
QString Text(const Json::Value& value);

}  // namespace ad_json
