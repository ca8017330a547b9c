#pragma once

#include <memory>
#include <string>

#include "framework/export.h"

class IZRPluginInterface;

/// Creates the service that is registered under one interface name.
/// Thread: any.
class ZRHOST_API IZRPluginInterfaceFactory {
public:
    IZRPluginInterfaceFactory() = default;
    IZRPluginInterfaceFactory(const IZRPluginInterfaceFactory&) = delete;
    IZRPluginInterfaceFactory& operator=(const IZRPluginInterfaceFactory&) = delete;
    virtual ~IZRPluginInterfaceFactory();

    /// Returns the type name of the interface, as the compiler mangles it, for example "20IMainFrameModuleUtil".
    virtual std::string GetInterfaceName() = 0;

    /// Returns the service. The factory decides whether all callers share one object.
    /// Ownership: shared with the caller.
    /// Failure: empty if the service cannot be created; callers must check.
    virtual std::shared_ptr<IZRPluginInterface> CreateInterface() = 0;
};
