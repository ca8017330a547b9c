#include "plugin/PluginLoader.h"

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <algorithm>

#include "framework/HostLog.h"
#include "framework/JsonText.h"
#include "plugin/PluginRegistry.h"

namespace host {
namespace {

constexpr CHostLog kLog("Plugin");

using LoadPluginModule = int (*)();

template <class Call>
void ForEachModule(const char* callback, const Call& call) {
    for (const auto& module : CPluginRegistry::Instance().Modules()) {
        CallAndLogExceptions(kLog, callback, [&] { call(*module); });
    }
}

QString Failed(const ModuleEntry& module, const QString& reason) {
    const QString line =
        QStringLiteral("Module %1 is not available: %2").arg(QString::fromStdString(module.name), reason.simplified());
    kLog.Error(FMT_STRING("{}"), line.toStdString());
    return line;
}

QString CallEntry(const ModuleEntry& module, LoadPluginModule load) {
    try {
        return load() != 0 ? QString() : Failed(module, QStringLiteral("its entry refused to register it"));
    } catch (const std::exception& error) {
        return Failed(module, QStringLiteral("its entry threw: %1").arg(QString::fromUtf8(error.what())));
    } catch (...) {
        return Failed(module, QStringLiteral("its entry threw something that is no exception"));
    }
}

}  // namespace

bool ReadModuleManifest(const QString& path, std::vector<ModuleEntry>& modules, QString& error) {
    const auto refuse = [&](const QString& reason) {
        error = QStringLiteral("Module manifest %1: %2").arg(path, reason.simplified());
        kLog.Error(FMT_STRING("{}"), error.toStdString());
        return false;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return refuse(file.errorString());
    }
    std::string reason;
    const auto manifest = ParseJson(file.readAll().toStdString(), reason);
    if (!manifest) {
        return refuse(QString::fromStdString(reason));
    }
    if (!manifest->isObject() || !(*manifest)["modules"].isArray()) {
        return refuse(QStringLiteral("modules: must be a list"));
    }
    std::vector<ModuleEntry> read;
    for (const Json::Value& entry : (*manifest)["modules"]) {
        if (!entry.isObject() || !entry["name"].isString() || !entry["library"].isString()) {
            return refuse(QStringLiteral("modules[%1]: must have the texts name and library").arg(read.size()));
        }
        const std::string name = entry["name"].asString();
        if (std::any_of(read.begin(), read.end(), [&name](const ModuleEntry& it) { return it.name == name; })) {
            return refuse(
                QStringLiteral("modules[%1]: %2 is listed twice").arg(read.size()).arg(QString::fromStdString(name)));
        }
        read.push_back({name, QString::fromStdString(entry["library"].asString())});
    }
    modules = std::move(read);
    return true;
}

namespace {

QString MapAndLoad(const ModuleEntry& module, const QString& folder) {
    QLibrary library(QDir(folder).absoluteFilePath(module.library));
    // Never unmapped: singletons, timers and bindings of a module live as long as the process.
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    if (!library.load()) {
        return Failed(module, library.errorString());
    }
    const std::string symbol = "LoadPluginModule" + module.name;
    const auto load = reinterpret_cast<LoadPluginModule>(library.resolve(symbol.c_str()));
    if (!load) {
        return Failed(module, QStringLiteral("its library has no entry %1").arg(QString::fromStdString(symbol)));
    }
    const QString failure = CallEntry(module, load);
    if (failure.isEmpty()) {
        kLog.Info(FMT_STRING("Module {} mapped from {}"), module.name, library.fileName().toStdString());
    }
    return failure;
}

}  // namespace

// A module is registered completely or not at all. Static initialisers may have registered factories before the entry
// failed.
QString MapModule(const ModuleEntry& module, const QString& folder) {
    CPluginRegistry& registry = CPluginRegistry::Instance();
    const uint64_t before = registry.Now();
    QString failure = MapAndLoad(module, folder);
    if (!failure.isEmpty()) {
        registry.WithdrawSince(before);
    }
    return failure;
}

void CModuleLifecycle::Init() {
    ForEachModule("OnInit of a module", [](IZRPluginModule& module) { module.OnInit(); });
}

void CModuleLifecycle::Login() {
    ForEachModule("OnLogin of a module", [](IZRPluginModule& module) { module.OnLogin(); });
}

void CModuleLifecycle::Logout() {
    ForEachModule("OnLogout of a module", [](IZRPluginModule& module) { module.OnLogout(); });
}

void CModuleLifecycle::Event(EnZRPluginEvent event, const std::shared_ptr<ZRPluginEventParam>& param) {
    ForEachModule("OnEvent of a module", [&](IZRPluginModule& module) { module.OnEvent(event, param); });
}

void CModuleLifecycle::UnInit() {
    ForEachModule("OnUnInit of a module", [](IZRPluginModule& module) { module.OnUnInit(); });
}

void CModuleLifecycle::Close() {
    CPluginRegistry::Instance().Close();
}

}  // namespace host
