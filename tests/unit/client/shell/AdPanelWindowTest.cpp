#include "AdPanelWindow.h"

#include <QLabel>

#include "FakeGrowthService.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class AdPanelWindowTest : public ScriptedHostTest {
protected:
    AdPanelWindowTest() {
        window.resize(560, 600);
        window.show();
        time.Settle();
    }

    void Open() {
        CAdPanelWindow::Open(&window);
        time.Settle();
    }

    QWidget* Window() const { return window.findChild<QWidget*>(QStringLiteral("AdPanelWindow")); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    QWidget window;
};

}  // namespace

TEST_F(AdPanelWindowTest, ThePanelStandsInAWindowOfItsOwn) {
    Open();

    ASSERT_NE(Window(), nullptr);
    EXPECT_TRUE(Window()->isWindow());
    EXPECT_TRUE(Window()->isVisible());
    EXPECT_EQ(Window()->windowTitle(), QStringLiteral("Popup panel"));
    const auto* panel = Window()->findChild<QWidget*>(QStringLiteral("Panel"));
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
}

TEST_F(AdPanelWindowTest, TheOneThatIsOpenIsBroughtToTheFront) {
    Open();
    QWidget* const first = Window();

    Open();

    EXPECT_EQ(Window(), first);
    EXPECT_EQ(service->panels, 1);
}

TEST_F(AdPanelWindowTest, AClosedOneIsGoneWithItsPanelAndTheNextIsNew) {
    Open();
    const QPointer<QWidget> panel = Window()->findChild<QWidget*>(QStringLiteral("Panel"));

    Window()->close();
    time.Settle();
    EXPECT_EQ(panel, nullptr);
    EXPECT_EQ(Window(), nullptr);
    Open();

    EXPECT_NE(Window(), nullptr);
    EXPECT_EQ(service->panels, 2);
}

TEST_F(AdPanelWindowTest, WithoutTheModuleTheWindowSaysSo) {
    service.reset();

    Open();

    ASSERT_NE(Window(), nullptr);
    EXPECT_EQ(Window()->findChild<QLabel*>(QStringLiteral("AdPanelNothing"))->text(),
              QStringLiteral("The module that serves ads is not there"));
}
