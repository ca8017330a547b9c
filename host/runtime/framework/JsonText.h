#pragma once

#include <json/value.h>

#include <optional>
#include <string>

#include "framework/export.h"

namespace host {

/// Parses untrusted JSON: no comments, no trailing bytes, no duplicate keys, at most 64 levels. Never throws. Empty on
/// failure, with the reason in `error`. Any thread.
ZRHOST_API std::optional<Json::Value> ParseJson(const std::string& text, std::string& error);

}  // namespace host
