#pragma once

#include <QString>
#include <string>
#include <vector>

#include "framework/export.h"
#include "plugin/IZRPluginModule.h"

namespace host {

/// One module of the manifest: the name in its entry symbol ("LoadPluginModule" + name) and its library,
/// a file name beside the others or an absolute path.
struct ModuleEntry {
    std::string name;
    QString library;
};

/// Reads a manifest: a JSON object whose member "modules" lists objects with "name" and "library".
/// False, with a line that names file and reason, on a file that is not one.
ZRHOST_API bool ReadModuleManifest(const QString& path, std::vector<ModuleEntry>& modules, QString& error);

/// Maps a module's library from `folder`, for good, and calls its entry, which registers the module.
/// Returns what went wrong in one line, which is logged as well; empty if all went well. Of a module that is
/// not available nothing stays registered.
ZRHOST_API QString MapModule(const ModuleEntry& module, const QString& folder);

/// Drives the registered modules through their life, in order of registration. Main thread.
class ZRHOST_API CModuleLifecycle {
public:
    static void Init();
    static void Login();
    static void Logout();
    static void Event(EnZRPluginEvent event, const std::shared_ptr<ZRPluginEventParam>& param);
    static void UnInit();

    /// Drops modules and factories, for good: the plug-in centre answers empty from then on.
    static void Close();
};

}  // namespace host
