#include "core/Environment.h"

#include <QUuid>

#include "core/ILocalStore.h"
#include "framework/HostLog.h"

namespace {

constexpr host::CHostLog kLog("Environment");
constexpr const char* kDeviceIdKey = "Host_DeviceId";

}  // namespace

CEnvironment::CEnvironment(ILocalStore& store, const EnvironmentOptions& options) : m_options(options) {
    if (store.ReadString(std::nullopt, kDeviceIdKey, m_strDeviceId) && !m_strDeviceId.empty()) {
        return;
    }
    m_strDeviceId = QUuid::createUuid().toString(QUuid::Id128).toStdString();
    if (!store.SaveString(std::nullopt, kDeviceIdKey, m_strDeviceId)) {
        kLog.Error(FMT_STRING("The device id could not be kept: this installation gets another one at its next start"));
    }
}
