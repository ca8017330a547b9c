#include "ZRGrowthModuleEntry.h"

#include <gmock/gmock.h>

#include <memory>

#include "ZRGrowthModule.h"
#include "plugin/IZRPluginInterface.h"
#include "plugin/IZRPluginModule.h"

using namespace ::testing;

namespace {

using Create = IZRPluginModule* (*)();
using Destroy = void (*)(IZRPluginModule*);

class CDeletionModule : public CZRGrowthModule {
public:
    explicit CDeletionModule(bool& deleted) : m_deleted(deleted) {}
    ~CDeletionModule() override { m_deleted = true; }

private:
    bool& m_deleted;
};

class GrowthModuleEntryTest : public TestWithParam<std::pair<Create, Destroy>> {};

TEST_P(GrowthModuleEntryTest, MakesTheModuleAndDestroysIt) {
    IZRPluginModule* module = GetParam().first();

    ASSERT_TRUE(module);
    EXPECT_EQ(module->GetSymbolName(), "zelkor.zrgrowth.main");
    GetParam().second(module);
}

TEST_P(GrowthModuleEntryTest, ModuleIsDeletedWhenItIsDestroyed) {
    bool deleted = false;

    GetParam().second(new CDeletionModule(deleted));

    EXPECT_TRUE(deleted);
}

TEST_P(GrowthModuleEntryTest, MakesANewModuleEachTime) {
    IZRPluginModule* first = GetParam().first();
    IZRPluginModule* second = GetParam().first();

    EXPECT_NE(first, second);
    GetParam().second(first);
    GetParam().second(second);
}

TEST_P(GrowthModuleEntryTest, DestroyingNothingDoesNothing) {
    GetParam().second(nullptr);
}

TEST_P(GrowthModuleEntryTest, TheModuleObjectGivesOutNoServiceAndTakesEvents) {
    const std::unique_ptr<IZRPluginModule, Destroy> module(GetParam().first(), GetParam().second);

    EXPECT_FALSE(module->CreateInterface(ZRPluginIID{"24IZRGrowthModuleInterface"}));
    module->OnEvent(kZRPluginEventBeforeQuit, nullptr);
}

INSTANTIATE_TEST_SUITE_P(BothPairs, GrowthModuleEntryTest,
                         Values(std::make_pair(&CreateZRPluginModule, &DestroyZRPluginModule),
                                std::make_pair(&CreateZRPluginModuleCZRGrowthModule,
                                               &DestroyZRPluginModuleCZRGrowthModule)));

}  // namespace
