#include "ZRGrowthModuleEntry.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"

int LoadPluginModuleCZRGrowthModule() {
    IZRPluginModule* created = CreateZRPluginModuleCZRGrowthModule();
    if (!created) {
        return 0;
    }
    const std::shared_ptr<IZRPluginModule> module(created, DestroyZRPluginModuleCZRGrowthModule);
    return IZRPluginCenter::RegisterModule(module);
}
