#pragma once

class IZRPluginModule;

/// The exported symbols of libZRGrowth.so.
extern "C" {

/// Returns a new module object. The caller passes it to the matching Destroy.
__attribute__((visibility("default"))) IZRPluginModule* CreateZRPluginModule();
__attribute__((visibility("default"))) IZRPluginModule* CreateZRPluginModuleCZRGrowthModule();

/// Deletes a module object; a null pointer does nothing.
__attribute__((visibility("default"))) void DestroyZRPluginModule(IZRPluginModule* module);
__attribute__((visibility("default"))) void DestroyZRPluginModuleCZRGrowthModule(IZRPluginModule* module);

/// Creates a module object and registers it with the plug-in centre. Returns the centre's result, or 0 if there is no
/// object. An exception of the centre is passed on.
__attribute__((visibility("default"))) int LoadPluginModuleCZRGrowthModule();

}  // extern "C"
