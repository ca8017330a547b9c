#pragma once

#include "plugin/IZRPluginModule.h"

/// The module object: forwards each callback of the plug-in centre to the managers of the subsystems.
class CZRGrowthModule : public IZRPluginModule {
public:
    CZRGrowthModule();
    ~CZRGrowthModule() override;

    std::string GetSymbolName() override;

    void OnInit() override;
    void OnUnInit() override;
    void OnLogin() override;
    void OnLogout() override;
};
