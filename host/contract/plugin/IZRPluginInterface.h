#pragma once

#include "framework/export.h"

/// Base of every service that a module offers to other modules.
/// Ownership: held by std::shared_ptr.
class ZRHOST_API IZRPluginInterface {
public:
    IZRPluginInterface() = default;
    IZRPluginInterface(const IZRPluginInterface&) = delete;
    IZRPluginInterface& operator=(const IZRPluginInterface&) = delete;
    virtual ~IZRPluginInterface();

    /// Returns whether the service may be called from any thread.
    /// The default is false: main thread only.
    virtual bool SupportMultiThread();
};
