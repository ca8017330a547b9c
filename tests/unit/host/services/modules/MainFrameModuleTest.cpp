#include "modules/MainFrameModule.h"

#include <QWidget>
#include <thread>

#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class MainFrameModuleTest : public ScriptedHostTest {
protected:
    MainFrameModuleTest() {
        EXPECT_EQ(factory->GetInterfaceName(), "20IMainFrameModuleUtil");
        IZRPluginCenter::RegisterInterfaceFactory(factory, true);
    }
    // The plug-in centre keeps the factory after the case.
    ~MainFrameModuleTest() override { factory->TakeAway(); }

    void Offer() {
        factory->Offer({[this] { return &window; }, [this] { return EnZRTabFrameKey(tabKey); },
                        [this] { return focused; }, [this] { return collapsed; }});
    }

    static std::shared_ptr<IMainFrameModuleUtil> Ask() {
        return IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
    }

    const std::shared_ptr<CMainFrameModuleFactory> factory = std::make_shared<CMainFrameModuleFactory>();
    QWidget window;
    int64_t tabKey = 20002;
    bool focused = true;
    bool collapsed = false;
};

}  // namespace

TEST_F(MainFrameModuleTest, ThereIsNoMainFrameBeforeTheWindowAndAfterIt) {
    EXPECT_EQ(Ask(), nullptr);
    Offer();
    EXPECT_NE(Ask(), nullptr);
    factory->TakeAway();
    EXPECT_EQ(Ask(), nullptr);
}

TEST_F(MainFrameModuleTest, TheWindowIsAskedAtEachQuestion) {
    Offer();
    const auto shown = Ask();
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->GetMainFrameWidget(), &window);
    EXPECT_EQ(shown->GetCurrentTabFrameKey(), 20002);
    EXPECT_TRUE(shown->IsMainFrameFocusIn());
    EXPECT_FALSE(shown->IsNavigationCollapsed());

    tabKey = 20018;
    focused = false;
    collapsed = true;

    EXPECT_EQ(shown->GetCurrentTabFrameKey(), 20018);
    EXPECT_FALSE(shown->IsMainFrameFocusIn());
    EXPECT_TRUE(shown->IsNavigationCollapsed());
}

TEST_F(MainFrameModuleTest, AServiceThatIsHeldBeyondTheWindowSaysNothingOfIt) {
    collapsed = true;
    Offer();
    const auto held = Ask();
    ASSERT_NE(held, nullptr);

    factory->TakeAway();

    EXPECT_EQ(held->GetMainFrameWidget(), nullptr);
    EXPECT_EQ(held->GetCurrentTabFrameKey(), 0);
    EXPECT_FALSE(held->IsMainFrameFocusIn());
    EXPECT_FALSE(held->IsNavigationCollapsed());
}

TEST_F(MainFrameModuleTest, OnAnotherThreadThereIsNoMainFrame) {
    Offer();
    std::shared_ptr<IMainFrameModuleUtil> elsewhere = Ask();
    ASSERT_NE(elsewhere, nullptr);

    std::thread([&elsewhere] { elsewhere = Ask(); }).join();

    EXPECT_EQ(elsewhere, nullptr);
}
