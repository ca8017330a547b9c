#pragma once

#include "modules/IZRGrowthModuleInterface.h"

/// The service. It has no logic of its own: each operation goes to the manager of its subsystem, which
/// comes into being if this is its first use.
class CZRGrowthModuleUtil : public IZRGrowthModuleInterface {
public:
    CZRGrowthModuleUtil();
    ~CZRGrowthModuleUtil() override;

    bool IsAIChatEnable(ZRAIChatEntryScene scene) override;
    void SetAIChatDevelopEnableType(unsigned int type) override;
};
