#include "ZRGrowthModuleUtil.h"

#include "AIChat/Controller/ZRAIChatManager.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/TplZRPluginInterfaceFactoryUnique.h"

namespace {

bool RegisterFactory() {
    IZRPluginCenter::RegisterInterfaceFactory(
        std::make_shared<TplZRPluginInterfaceFactoryUnique<CZRGrowthModuleUtil, IZRGrowthModuleInterface>>(), false);
    return true;
}

// Runs when the library is mapped, ahead of any callback of the module.
[[maybe_unused]] const bool kFactoryRegistered = RegisterFactory();

}  // namespace

CZRGrowthModuleUtil::CZRGrowthModuleUtil() = default;

CZRGrowthModuleUtil::~CZRGrowthModuleUtil() = default;

bool CZRGrowthModuleUtil::IsAIChatEnable(ZRAIChatEntryScene scene) {
    return CZRAIChatManager::Singleton()->IsAIChatEnable(scene);
}

void CZRGrowthModuleUtil::SetAIChatDevelopEnableType(unsigned int type) {
    CZRAIChatManager::Singleton()->SetAIChatDevelopEnableType(type);
}
