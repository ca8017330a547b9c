#pragma once

#include "framework/export.h"
#include "modules/ZRGrowthTypes.h"
#include "plugin/IZRPluginInterface.h"

/// The growth module's one service, under the interface name "24IZRGrowthModuleInterface".
/// Main thread only. The order of the operations is fixed.
class ZRHOST_API IZRGrowthModuleInterface : public IZRPluginInterface {
public:
    ~IZRGrowthModuleInterface() override;

    /// Whether the AI chat entry of that scene is open to the user. False from the login until the server
    /// has answered. Ask again at bus message 20300.
    virtual bool IsAIChatEnable(ZRAIChatEntryScene scene) = 0;

    /// Overrides the server's answer for all scenes until the process ends: 0 no override, 1 open,
    /// any other value closed. Sends bus message 20300.
    virtual void SetAIChatDevelopEnableType(unsigned int type) = 0;
};
