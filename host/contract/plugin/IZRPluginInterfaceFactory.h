#pragma once

#include <memory>
#include <string>

#include "framework/export.h"

class IZRPluginInterface;

/// Makes the service that is registered under one interface name. Both operations are callable
/// from any thread.
class ZRHOST_API IZRPluginInterfaceFactory {
public:
    IZRPluginInterfaceFactory() = default;
    IZRPluginInterfaceFactory(const IZRPluginInterfaceFactory&) = delete;
    IZRPluginInterfaceFactory& operator=(const IZRPluginInterfaceFactory&) = delete;
    virtual ~IZRPluginInterfaceFactory();

    /// The compiler's type name of the interface, length digits included.
    virtual std::string GetInterfaceName() = 0;

    /// The service; shared with all who ask, or fresh for each, as the factory decides.
    virtual std::shared_ptr<IZRPluginInterface> CreateInterface() = 0;
};
