#pragma once

#include <memory>
#include <set>

#include "modules/IZRGrowthModuleInterface.h"

/// The growth module's service as the client sees it; the test says which scenes are open.
class CFakeGrowthService : public IZRGrowthModuleInterface {
public:
    /// Offers a service in the plug-in centre for as long as the result lives.
    static std::shared_ptr<CFakeGrowthService> Offer();

    bool IsAIChatEnable(ZRAIChatEntryScene scene) override;
    void SetAIChatDevelopEnableType(unsigned int type) override;

    std::set<int> open;
    unsigned int overrideType = 0;
};
