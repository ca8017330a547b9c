#pragma once

#include <json/value.h>

#include <string>

/// Behind core::config_common. Main thread.
class ICommonConfig {
public:
    virtual ~ICommonConfig() = default;
    virtual Json::Value ConfigByName(const std::string& name) const = 0;
};
