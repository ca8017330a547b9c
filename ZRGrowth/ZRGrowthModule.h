#pragma once

#include "plugin/IZRPluginModule.h"

/// The module as the plug-in centre sees it: forwards each callback to the managers of the subsystems.
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
