#pragma once

#include <memory>
#include <string>
#include <typeinfo>

#include "framework/export.h"
#include "plugin/IZRPluginInterface.h"

class IZRPluginInterfaceFactory;
class IZRPluginModule;

/// The plug-in centre. Modules register here and find each other's services by interface name.
/// It works from the first static initialiser on.
/// Thread: any.
class ZRHOST_API IZRPluginCenter {
public:
    /// Registers a module object.
    /// Returns a non-zero value for success.
    /// Ownership: shared until the end of the client.
    /// Failure: 0 for a null pointer, a module object that is already registered, or after the end of the client.
    static int RegisterModule(std::shared_ptr<IZRPluginModule> module);

    /// Registers the factory of a service. If the name is in use, `replace` decides whether the new factory replaces
    /// the old one.
    /// Ownership: shared until the end of the client.
    static void RegisterInterfaceFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace);

    /// Returns the service that is registered under the type name of its interface, as the compiler mangles it.
    /// Ownership: shared with the caller.
    /// Failure: empty for an unknown name.
    static std::shared_ptr<IZRPluginInterface> _CreateInterface(const std::string& interfaceName);

    /// Returns the service of interface T, which is in the global namespace.
    /// Ownership: shared with the caller.
    /// Failure: empty if no module registered one.
    template <class T>
    static std::shared_ptr<T> CreateInterface() {
        return std::static_pointer_cast<T>(_CreateInterface(typeid(T).name()));
    }
};
