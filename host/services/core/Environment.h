#pragma once

#include "core/IEnvironment.h"

class ILocalStore;

struct EnvironmentOptions {
    bool release = false;
    bool velora = false;
};

/// What client this is. The device id is made at the first start and kept in the store; where the store
/// refuses it, it lasts for the process.
class CEnvironment : public IEnvironment {
public:
    CEnvironment(ILocalStore& store, const EnvironmentOptions& options);

    bool IsReleaseAppVersion() const override;
    bool IsVelora() const override;
    std::string DeviceId() const override;

    void SetVelora(bool velora);

private:
    EnvironmentOptions m_options;
    std::string m_strDeviceId;
};
