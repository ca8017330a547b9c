#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"

namespace {

class CGoodService : public IZRPluginInterface {};

class CGoodFactory : public IZRPluginInterfaceFactory {
public:
    std::string GetInterfaceName() override { return "8GoodName"; }
    std::shared_ptr<IZRPluginInterface> CreateInterface() override { return std::make_shared<CGoodService>(); }
};

[[maybe_unused]] const bool kRegistered = [] {
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CGoodFactory>(), false);
    return true;
}();

}  // namespace

extern "C" __attribute__((visibility("default"))) int LoadPluginModuleCGood() {
    return 1;
}
