#pragma once

#include <memory>
#include <string>
#include <typeinfo>

#include "framework/export.h"
#include "plugin/IZRPluginInterface.h"

class IZRPluginInterfaceFactory;
class IZRPluginModule;

/// The plug-in centre: where modules announce themselves and find each other's services.
/// Works from the first static initialiser on. All operations are callable from any thread.
class ZRHOST_API IZRPluginCenter {
public:
    /// Takes shared ownership of the module object until the client's end. Non-zero for success;
    /// 0 for a null pointer, a module object that is registered already, or after the client's end.
    static int RegisterModule(std::shared_ptr<IZRPluginModule> module);

    /// Takes shared ownership of the factory until the client's end. Where the name is taken,
    /// `replace` decides: true puts the new factory in its place, false leaves the old one.
    static void RegisterInterfaceFactory(std::shared_ptr<IZRPluginInterfaceFactory> factory, bool replace);

    /// The service under the compiler's type name of its interface, length digits included;
    /// empty if there is none.
    static std::shared_ptr<IZRPluginInterface> _CreateInterface(const std::string& interfaceName);

    /// The same by type: the service under T's type name, cast down. T must stand in the global namespace.
    template <class T>
    static std::shared_ptr<T> CreateInterface() {
        return std::static_pointer_cast<T>(_CreateInterface(typeid(T).name()));
    }
};
