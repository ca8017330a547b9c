#include "ZRGrowthModuleEntry.h"

#include "ZRGrowthModule.h"

IZRPluginModule* CreateZRPluginModule() {
    return new CZRGrowthModule;
}

void DestroyZRPluginModule(IZRPluginModule* module) {
    delete module;
}

IZRPluginModule* CreateZRPluginModuleCZRGrowthModule() {
    return CreateZRPluginModule();
}

void DestroyZRPluginModuleCZRGrowthModule(IZRPluginModule* module) {
    DestroyZRPluginModule(module);
}
