#pragma once

#include <json/value.h>

#include <QString>

/// Safe steps into JSON from a server: the library throws where a value is of another type than asked for.
namespace ad_json {

/// Whether a value has members.
inline bool IsObject(const Json::Value& value) {
    return value.type() == Json::objectValue;
}

/// The member of an object; null where there is none.
const Json::Value& Member(const Json::Value& object, const char* key);

/// A text, read as UTF-8; empty for what is no text.
QString Text(const Json::Value& value);

}  // namespace ad_json
