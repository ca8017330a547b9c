#pragma once

#include <QString>
#include <string>
#include <vector>

#include "framework/export.h"
#include "plugin/IZRPluginModule.h"

namespace host {

/// A module of the manifest: the name in its entry symbol ("LoadPluginModule" + name) and its library. The library is
/// a file name or an absolute path.
struct ModuleEntry {
    std::string name;
    QString library;
};

/// Reads a manifest: a JSON object whose member "modules" lists objects with "name" and "library". Returns false, with
/// file and reason in `error`, for other content.
ZRHOST_API bool ReadModuleManifest(const QString& path, std::vector<ModuleEntry>& modules, QString& error);

/// Maps a module library from `folder` and calls its entry, which registers the module. Never unmapped. Returns an
/// empty text, or the reason of a failure, which is also logged. After a failure nothing stays registered.
ZRHOST_API QString MapModule(const ModuleEntry& module, const QString& folder);

/// Calls the registered modules in order of registration. Main thread.
class ZRHOST_API CModuleLifecycle {
public:
    static void Init();
    static void Login();
    static void Logout();
    static void Event(EnZRPluginEvent event, const std::shared_ptr<ZRPluginEventParam>& param);
    static void UnInit();

    /// Releases modules and factories. The plug-in centre then returns null for each service.
    static void Close();
};

}  // namespace host
