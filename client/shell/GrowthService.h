#pragma once

#include <memory>

#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"

/// Returns the service of the growth module; null without the module. Callers do not keep it, because the module can be
/// replaced. Main thread.
inline std::shared_ptr<IZRGrowthModuleInterface> GrowthService() {
    return IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
}
