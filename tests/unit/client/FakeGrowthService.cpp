#include "FakeGrowthService.h"

#include "EntryScenes.h"
#include "core/message_dispatch.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginInterfaceFactory.h"

namespace {

class CFakeFactory : public IZRPluginInterfaceFactory {
public:
    explicit CFakeFactory(std::weak_ptr<CFakeGrowthService> service) : m_service(std::move(service)) {}

    std::string GetInterfaceName() override { return "24IZRGrowthModuleInterface"; }
    std::shared_ptr<IZRPluginInterface> CreateInterface() override { return m_service.lock(); }

private:
    std::weak_ptr<CFakeGrowthService> m_service;
};

}  // namespace

std::shared_ptr<CFakeGrowthService> CFakeGrowthService::Offer() {
    auto service = std::make_shared<CFakeGrowthService>();
    IZRPluginCenter::RegisterInterfaceFactory(std::make_shared<CFakeFactory>(service), true);
    return service;
}

bool CFakeGrowthService::IsAIChatEnable(ZRAIChatEntryScene scene) {
    return overrideType != 0 ? overrideType == 1 : open.count(int(scene)) != 0;
}

void CFakeGrowthService::SetAIChatDevelopEnableType(unsigned int type) {
    overrideType = type;
    core::__CMessageDispatch("[Test]").Send(kMsgAIChatEntriesChanged, nullptr, true);
}
