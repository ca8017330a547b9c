#include "ZRGrowthModuleUtil.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

#include "plugin/IZRPluginCenter.h"
#include "plugin/TplZRPluginInterfaceFactoryUnique.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr const char* kInterfaceName = "24IZRGrowthModuleInterface";

class GrowthModuleUtilTest : public ScriptedHostTest {};

TEST_F(GrowthModuleUtilTest, TheFactoryIsRegisteredBeforeAnybodyAsks) {
    const auto service = IZRPluginCenter::_CreateInterface(kInterfaceName);

    ASSERT_TRUE(service);
    EXPECT_TRUE(dynamic_cast<CZRGrowthModuleUtil*>(service.get()));
    EXPECT_EQ(IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>(), service);
}

TEST_F(GrowthModuleUtilTest, TheInterfaceNameIsTheCompilersTypeName) {
    TplZRPluginInterfaceFactoryUnique<CZRGrowthModuleUtil, IZRGrowthModuleInterface> factory;

    EXPECT_EQ(factory.GetInterfaceName(), kInterfaceName);
}

TEST_F(GrowthModuleUtilTest, AFactoryGivesEverybodyTheSameService) {
    TplZRPluginInterfaceFactoryUnique<CZRGrowthModuleUtil, IZRGrowthModuleInterface> factory;

    const auto first = factory.CreateInterface();

    ASSERT_TRUE(first);
    EXPECT_EQ(factory.CreateInterface(), first);
}

class ICountedInterface : public IZRPluginInterface {};

std::atomic<int> g_made{0};

class CCounted : public ICountedInterface {
public:
    CCounted() {
        ++g_made;
        std::this_thread::yield();
    }
};

TEST_F(GrowthModuleUtilTest, AFactoryMakesItsServiceAtTheFirstCallAndOnceForAllThreads) {
    TplZRPluginInterfaceFactoryUnique<CCounted, ICountedInterface> factory;
    EXPECT_EQ(g_made, 0);

    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    std::vector<std::shared_ptr<IZRPluginInterface>> services(8);
    for (auto& service : services) {
        threads.emplace_back([&] {
            while (!go) {
            }
            service = factory.CreateInterface();
        });
    }
    go = true;
    for (std::thread& thread : threads) {
        thread.join();
    }

    EXPECT_EQ(g_made, 1);
    EXPECT_THAT(services, Each(services[0]));
}

TEST_F(GrowthModuleUtilTest, TheServiceIsForTheMainThreadAlone) {
    EXPECT_FALSE(CZRGrowthModuleUtil().SupportMultiThread());
}

TEST_F(GrowthModuleUtilTest, AIChatOperationsGoToTheManagerWhichComesIntoBeing) {
    CZRGrowthModuleUtil service;

    EXPECT_FALSE(service.IsAIChatEnable(ZRAIChatEntryScene(3)));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(HasSubstr("chat url from")), Info(HasSubstr("preload url from")),
                                         Info("[AIChat] Read cache failed"),
                                         Info("[AIChat] Is AI chat enable, entryScene = 3, enable = false")));

    service.SetAIChatDevelopEnableType(1);
    EXPECT_TRUE(service.IsAIChatEnable(ZRAIChatEntryScene(3)));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20300)));
}

}  // namespace
