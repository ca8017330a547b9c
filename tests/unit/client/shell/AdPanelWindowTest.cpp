#include "AdPanelWindow.h"

#include <QLabel>
#include <QPushButton>

#include "FakeGrowthService.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "workbench/ads/AdTracker.h"
#include "workbench/ads/AdView.h"

using namespace ::testing;

namespace {

class AdPanelWindowTest : public ScriptedHostTest {
protected:
    AdPanelWindowTest() {
        view.resize(560, 600);
        view.show();
        time.Settle();
    }

    void Open() {
        Click(view.findChild<QPushButton*>(QStringLiteral("AdPanelOpen")));
        time.Settle();
    }

    QWidget* Window() const { return view.findChild<QWidget*>(QStringLiteral("AdPanelWindow")); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAdTracker board{[](qint64 localMs) { return localMs; }};
    CAdView view{board};
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
