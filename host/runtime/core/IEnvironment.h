#pragma once

#include <string>

/// Behind core::environment. Main thread.
class IEnvironment {
public:
    virtual ~IEnvironment() = default;
    virtual bool IsReleaseAppVersion() const = 0;
    virtual bool IsVelora() const = 0;
    virtual std::string DeviceId() const = 0;
};
