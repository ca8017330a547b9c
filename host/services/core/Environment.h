#pragma once

#include <string>

class ILocalStore;

struct EnvironmentOptions {
    bool release = false;
    bool velora = false;
};

/// Build, edition and device of this client. The device id is generated at the first start and saved in the store.
/// If the save fails, it lasts for the process. Main thread.
class CEnvironment {
public:
    CEnvironment(ILocalStore& store, const EnvironmentOptions& options);

    bool IsReleaseAppVersion() const { return m_options.release; }
    bool IsVelora() const { return m_options.velora; }
    std::string DeviceId() const { return m_strDeviceId; }

    void SetVelora(bool velora) { m_options.velora = velora; }

private:
    EnvironmentOptions m_options;
    std::string m_strDeviceId;
};
