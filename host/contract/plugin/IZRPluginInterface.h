#pragma once

#include "framework/export.h"

/// Base of every service that one module offers to the others. Held by std::shared_ptr.
class ZRHOST_API IZRPluginInterface {
public:
    IZRPluginInterface() = default;
    IZRPluginInterface(const IZRPluginInterface&) = delete;
    IZRPluginInterface& operator=(const IZRPluginInterface&) = delete;
    virtual ~IZRPluginInterface();

    /// Whether the service may be called from any thread. False unless overridden: main thread only.
    virtual bool SupportMultiThread();
};
