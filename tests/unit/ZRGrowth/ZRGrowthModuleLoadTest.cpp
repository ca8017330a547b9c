// The entry that registers the module, linked with a plug-in centre and a module object of its own.
#include <gmock/gmock.h>

#include <stdexcept>

#include "ZRGrowthModuleEntry.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/IZRPluginModule.h"

using namespace ::testing;

namespace {

class CFakeModule : public IZRPluginModule {
public:
    std::string GetSymbolName() override { return "fake"; }
    void OnInit() override {}
    void OnUnInit() override {}
    void OnLogin() override {}
    void OnLogout() override {}
};

bool g_creationFails = false;
bool g_centerThrows = false;
int g_centersAnswer = 1;
int g_alive = 0;
int g_registrations = 0;
std::shared_ptr<IZRPluginModule> g_registered;

class GrowthModuleLoadTest : public Test {};

TEST_F(GrowthModuleLoadTest, AFailedCreationGivesZeroAndCallsNothingElse) {
    g_creationFails = true;

    EXPECT_EQ(LoadPluginModuleCZRGrowthModule(), 0);
    EXPECT_EQ(g_registrations, 0);
}

TEST_F(GrowthModuleLoadTest, TheCentersAnswerIsGivenBackUnchanged) {
    g_centersAnswer = 42;
    EXPECT_EQ(LoadPluginModuleCZRGrowthModule(), 42);

    g_centersAnswer = 0;
    EXPECT_EQ(LoadPluginModuleCZRGrowthModule(), 0);
    EXPECT_EQ(g_registrations, 2);
}

TEST_F(GrowthModuleLoadTest, TheCenterAloneOwnsTheModuleWhichEndsThroughItsDestroyFunction) {
    LoadPluginModuleCZRGrowthModule();

    ASSERT_TRUE(g_registered);
    EXPECT_EQ(g_registered.use_count(), 1);
    EXPECT_EQ(g_alive, 1);

    g_registered.reset();
    EXPECT_EQ(g_alive, 0);
}

TEST_F(GrowthModuleLoadTest, ACenterThatThrowsIsHeardByTheCallerAndTheModuleIsReleased) {
    g_centerThrows = true;

    EXPECT_THROW(LoadPluginModuleCZRGrowthModule(), std::runtime_error);
    EXPECT_EQ(g_alive, 0);
}

}  // namespace

IZRPluginModule* CreateZRPluginModuleCZRGrowthModule() {
    if (g_creationFails) {
        return nullptr;
    }
    ++g_alive;
    return new CFakeModule;
}

void DestroyZRPluginModuleCZRGrowthModule(IZRPluginModule* module) {
    --g_alive;
    delete module;
}

int IZRPluginCenter::RegisterModule(std::shared_ptr<IZRPluginModule> module) {
    ++g_registrations;
    if (g_centerThrows) {
        throw std::runtime_error("the centre is full");
    }
    g_registered = std::move(module);
    return g_centersAnswer;
}
