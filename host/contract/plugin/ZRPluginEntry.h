#pragma once

#include "plugin/IZRPluginCenter.h"

/// Declares the entry of a module: a function with C linkage that the library exports. The client maps the libraries of
/// its manifest, modules.json beside the program, in their order and calls the entry of each:
///
///     { "modules": [ { "name": "CMyModule", "library": "libMyModule.so" } ] }
///
/// `name` completes the entry's symbol, here LoadPluginModuleCMyModule. `library` is a file name in the client's module
/// folder, or an absolute path. The library is never unmapped.
/// The entry registers the module object, as in `return
/// IZRPluginCenter::RegisterModule(std::make_shared<CMyModule>())`. Returns a non-zero value for success. Thread: main
/// thread. The services of the host are available at OnInit, not yet in the entry. Failure: with 0 or an exception,
/// nothing that the module registered stays registered, and the client runs on.
#define ZR_PLUGIN_ENTRY(name) extern "C" __attribute__((visibility("default"))) int LoadPluginModule##name()
