#pragma once

#include <json/value.h>

#include <string>

#include "framework/export.h"

namespace core {
namespace config_common {

/// A copy of the configuration that the server keeps under `name`, of any JSON type; a null value if the
/// name is unknown. Main thread. Bus message 10250 tells that a value may have changed.
ZRHOST_API Json::Value GetJsonConfigByName(const std::string& name);

}  // namespace config_common
}  // namespace core
