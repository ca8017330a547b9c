#pragma once

#include <memory>
#include <string>

#include "framework/export.h"

class IZRPluginInterface;

/// Names an interface to a module object. Modules that register a factory do not need it.
struct ZRPluginIID {
    std::string m_strName;
};

/// What the client tells all modules beyond the lifecycle callbacks.
enum EnZRPluginEvent : int {
    /// The client is about to end; whoever is logged in still is. No parameter.
    kZRPluginEventBeforeQuit = 1,
};

/// Base of an event's parameters.
class ZRHOST_API ZRPluginEventParam {
public:
    ZRPluginEventParam() = default;
    ZRPluginEventParam(const ZRPluginEventParam&) = delete;
    ZRPluginEventParam& operator=(const ZRPluginEventParam&) = delete;
    virtual ~ZRPluginEventParam();
};

/// A module as the plug-in centre sees it. All callbacks come on the main thread:
/// OnInit once; then OnLogin and OnLogout any number of times in pairs; OnUnInit once, last.
/// An exception that leaves a callback is logged by the centre, and the other modules go on.
class ZRHOST_API IZRPluginModule {
public:
    IZRPluginModule() = default;
    IZRPluginModule(const IZRPluginModule&) = delete;
    IZRPluginModule& operator=(const IZRPluginModule&) = delete;
    virtual ~IZRPluginModule();

    /// The module's name in logs: dotted words, stable over releases.
    virtual std::string GetSymbolName() = 0;

    /// A service by its id. Empty unless overridden.
    virtual std::shared_ptr<IZRPluginInterface> CreateInterface(const ZRPluginIID& iid);

    virtual void OnInit() = 0;
    virtual void OnUnInit() = 0;
    virtual void OnLogin() = 0;
    virtual void OnLogout() = 0;

    /// Does nothing unless overridden. `param` may be null.
    virtual void OnEvent(EnZRPluginEvent event, std::shared_ptr<ZRPluginEventParam> param);
};
