#pragma once

#include <json/value.h>

#include <optional>
#include <string>

#include "framework/export.h"

namespace host {

/// Parses untrusted JSON by RFC 8259, without duplicate keys and with at most 64 levels. Never throws. Empty on
/// failure, with the reason in `error`. Any thread.
ZRHOST_API std::optional<Json::Value> ParseJson(const std::string& text, std::string& error);

/// Returns the value as one line of JSON in UTF-8. The bytes of strings are copied without a check. Any thread.
ZRHOST_API std::string OneLine(const Json::Value& value);

}  // namespace host
