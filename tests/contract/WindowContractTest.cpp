// The theme and the main window.
#include <gmock/gmock.h>

#include "HostSet.h"
#include "core/message_ids.h"
#include "framework/Ports.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

using ThemeContractTest = HostContractTest;

class MainFrameContractTest : public HostContractTest {
protected:
    static std::shared_ptr<IMainFrameModuleUtil> MainFrame() {
        return IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
    }
};

}  // namespace

TEST_F(ThemeContractTest, ThemeChangesBeforeTheSignalAndTheMessageFollows) {
    const auto theme = [] { return std::to_string(Manager::instance()->getTheme()); };
    m_set->SetTheme(Manager::kThemeLight);
    QObject::connect(Manager::instance(), &Manager::themeChanged, &subscriber, [&](Manager::Theme changed) {
        recorded.push_back("signal " + std::to_string(changed) + ": " + theme());
    });
    RecordMessage(core::kMsgThemeChanged, theme);

    m_set->SetTheme(Manager::kThemeBlack);

    EXPECT_THAT(recorded, ElementsAre("signal 3: 3", "20101: 3"));
}

TEST_F(ThemeContractTest, SameThemeAgainNotifiesNobody) {
    m_set->SetTheme(Manager::kThemeBlack);
    RecordMessage(core::kMsgThemeChanged, [] { return std::string(); });

    m_set->SetTheme(Manager::kThemeBlack);

    EXPECT_THAT(recorded, IsEmpty());
}

TEST_F(ThemeContractTest, ManagerIsTheSameObjectAndHiddenAfterTheEnd) {
    Manager* const manager = Manager::instance();
    EXPECT_EQ(Manager::instancePtr(), manager);

    host::Uninstall();

    EXPECT_EQ(Manager::instance(), manager);
    EXPECT_EQ(Manager::instancePtr(), nullptr);
}

TEST_F(MainFrameContractTest, ServiceExistsOnlyWhileThereIsAWindow) {
    EXPECT_EQ(MainFrame(), nullptr);

    m_set->SetMainFrame(EnZRTabFrameKey(3));
    EXPECT_NE(MainFrame(), nullptr);

    m_set->ClearMainFrame();
    EXPECT_EQ(MainFrame(), nullptr);
}

TEST_F(MainFrameContractTest, TabChangesBeforeItsMessage) {
    RecordMessage(core::kMsgTabFrameChanged, [] { return std::to_string(MainFrame()->GetCurrentTabFrameKey()); });

    m_set->SetMainFrame(EnZRTabFrameKey(3));

    EXPECT_THAT(recorded, ElementsAre("20157 wParam 3: 3"));
}

TEST_F(MainFrameContractTest, HeldServiceReturnsNullZeroAndFalseAfterTheWindowsEnd) {
    m_set->SetMainFrame(EnZRTabFrameKey(3));
    const auto held = MainFrame();
    ASSERT_TRUE(held);
    EXPECT_TRUE(held->IsNavigationCollapsed());
    EXPECT_TRUE(held->IsMainFrameFocusIn());

    m_set->ClearMainFrame();

    EXPECT_EQ(held->GetMainFrameWidget(), nullptr);
    EXPECT_EQ(held->GetCurrentTabFrameKey(), 0);
    EXPECT_FALSE(held->IsMainFrameFocusIn());
    EXPECT_FALSE(held->IsNavigationCollapsed());
}
