#pragma once

#include <json/value.h>

#include <string>

#include "framework/export.h"

namespace core {
namespace config_common {

/// Returns a copy of the configuration that the server keeps under `name`. The value may have any JSON type.
/// Bus message 10250 announces that a value may have changed.
/// Thread: main thread.
/// Failure: null for an unknown name.
ZRHOST_API Json::Value GetJsonConfigByName(const std::string& name);

}  // namespace config_common
}  // namespace core
