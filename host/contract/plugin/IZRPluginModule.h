#pragma once

#include <memory>
#include <string>

#include "framework/export.h"

class IZRPluginInterface;

/// Identifies an interface of a module object. A module that registers a factory does not need it.
struct ZRPluginIID {
    std::string m_strName;
};

/// An event of the client that all modules receive in addition to the lifecycle callbacks.
enum EnZRPluginEvent : int {
    /// The client is about to end. The user is still logged in. No parameter.
    kZRPluginEventBeforeQuit = 1,
};

/// Base of the parameters of an event.
class ZRHOST_API ZRPluginEventParam {
public:
    ZRPluginEventParam() = default;
    ZRPluginEventParam(const ZRPluginEventParam&) = delete;
    ZRPluginEventParam& operator=(const ZRPluginEventParam&) = delete;
    virtual ~ZRPluginEventParam();
};

/// The module object of a plug-in.
/// Order: OnInit once; then OnLogin and OnLogout in pairs, any number of times; OnUnInit once, last.
/// Thread: all callbacks run on the main thread.
/// Ownership: shared with the plug-in centre.
/// Failure: the centre logs an exception of a callback and continues with the other modules.
class ZRHOST_API IZRPluginModule {
public:
    IZRPluginModule() = default;
    IZRPluginModule(const IZRPluginModule&) = delete;
    IZRPluginModule& operator=(const IZRPluginModule&) = delete;
    virtual ~IZRPluginModule();

    /// Returns the module's name in logs: words joined by dots, the same in all releases.
    virtual std::string GetSymbolName() = 0;

    /// Returns a service by its id.
    /// The default is empty.
    virtual std::shared_ptr<IZRPluginInterface> CreateInterface(const ZRPluginIID& iid);

    /// All modules are loaded and the services of the host are available.
    virtual void OnInit() = 0;
    /// The client ends. The services of the host are still available.
    virtual void OnUnInit() = 0;
    /// A user logged in; core::login_status_data returns the user already.
    virtual void OnLogin() = 0;
    /// The user logged out; core::login_status_data returns 0 already.
    virtual void OnLogout() = 0;

    /// Receives an event of the client. `param` may be null.
    /// The default does nothing.
    virtual void OnEvent(EnZRPluginEvent event, std::shared_ptr<ZRPluginEventParam> param);
};
