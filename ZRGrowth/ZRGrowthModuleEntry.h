#pragma once

class IZRPluginModule;

/// The exported symbols of libZRGrowth.so.
extern "C" {

/// A new module object, which the caller gives back to the matching Destroy.
__attribute__((visibility("default"))) IZRPluginModule* CreateZRPluginModule();
__attribute__((visibility("default"))) IZRPluginModule* CreateZRPluginModuleCZRGrowthModule();

/// Deletes a module object; a null pointer does nothing.
__attribute__((visibility("default"))) void DestroyZRPluginModule(IZRPluginModule* module);
__attribute__((visibility("default"))) void DestroyZRPluginModuleCZRGrowthModule(IZRPluginModule* module);

/// Makes a module object and registers it with the plug-in centre. Returns what the centre returned, or 0
/// if there is no object. An exception of the centre reaches the caller.
__attribute__((visibility("default"))) int LoadPluginModuleCZRGrowthModule();

}  // extern "C"
