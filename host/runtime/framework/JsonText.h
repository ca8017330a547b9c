#pragma once

#include <json/value.h>

#include <optional>
#include <string>

#include "framework/export.h"

namespace host {

/// JSON from bytes that are not to be trusted: strict (no comments, no trailing bytes, no duplicate keys),
/// nested 64 deep at most. Nothing is thrown; on failure the result is empty and `error` says why.
ZRHOST_API std::optional<Json::Value> ParseJson(const std::string& text, std::string& error);

}  // namespace host
