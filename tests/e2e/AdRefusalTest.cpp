// Each refusal of the bottom popup, produced from the workbench as a tester does. The module's own line is checked.
// Each case then removes the reason and expects the popup.
#include "AdPanelWindow.h"
#include "AdRefusalFixture.h"

using namespace ::testing;

namespace {

TEST_F(AdRefusalTest, ATabThatIsNotAmongItsAreas) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    ExpectRefused("\u00B7 current tab", "refused-tab");

    Override("AdTab", kQuotes);

    ExpectShown("shown-in-its-tab");
    EXPECT_TRUE(Child<QToolButton>("NavigationTab_quotes")->isChecked());
    EXPECT_TRUE(Child<QWidget>("Page_quotes")->isVisible());
    Override("AdTab", kNews);
    EXPECT_TRUE(WaitForLine("Closed ad by tab switched"));
    EXPECT_TRUE(WaitInRealTime([this] { return !IsCardSeen(); }));
}

TEST_F(AdRefusalTest, TheTabThatTheNavigationChoosesIsShownInItsSwitch) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    EXPECT_EQ(Child<QComboBox>("AdTab")->currentIndex(), kWatchlist);

    Choose("news");

    EXPECT_EQ(Child<QComboBox>("AdTab")->currentIndex(), kNews);
}

TEST_F(AdRefusalTest, ASlotThatIsRefused) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    Override("AdSlotPermission", 1);

    Override("AdTab", kQuotes);

    EXPECT_TRUE(WaitForLine("Popup isnot allowed to show by uniform resource slot, adType = 2, adPosition = 42"));
    EXPECT_EQ(Overridden(), "Overridden: slot 2 refused");
    ExpectRefused("\u00B7 shared slot", "refused-slot");
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("FilterAdDisplay") == 1; }));
    Override("AdSlotPermission", 0);
    Override("AdTab", kMarket);
    ExpectShown("shown-in-the-slot");
    EXPECT_EQ(Overridden(), "");
}

TEST_F(AdRefusalTest, AFocusThatIsNotThere) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    Override("AdFocus", 2);

    Override("AdTab", kQuotes);

    EXPECT_TRUE(WaitForLine("Main frame isnot focus in, adType = 2, adPosition = 42, adId = 701"));
    EXPECT_EQ(Overridden(), "Overridden: focus never");
    ExpectRefused("\u00B7 focus", "refused-focus");
    Override("AdFocus", 0);
    Override("AdTab", kMarket);
    ExpectShown("shown-with-focus");
}

TEST_F(AdRefusalTest, AFocusThatIsAlwaysThereStandsForAWindowInTheBackground) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    CAdPanelWindow::Open(window);
    ASSERT_TRUE(WaitInRealTime([this] { return !window->isActiveWindow(); }));
    Override("AdTab", kQuotes);
    ASSERT_TRUE(WaitForLine("Main frame isnot focus in"));

    Override("AdFocus", 1);
    Override("AdTab", kMarket);

    EXPECT_TRUE(WaitInRealTime([this] { return IsCardSeen(); }));
    EXPECT_FALSE(window->isActiveWindow());
}

TEST_F(AdRefusalTest, AnIntervalThatIsNotOver) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Click(Child<QWidget>("CZRAdBottomPopupViewCloseButton"));
    ASSERT_NO_FATAL_FAILURE(SetInterval("3600"));
    PassAMinute();

    PushNew();

    EXPECT_TRUE(WaitForLine("CurrentTime donot exceed showInterval."));
    EXPECT_EQ(ParsedLine("showInterval = 3600, adType = 2, adPosition = 42, adId = 701"), 1);
    ExpectRefused("\u00B7 interval since the last showing", "refused-interval");

    PassAnHour();
    Override("AdTab", kMarket);
    ExpectShown("shown-after-the-interval");
}

TEST_F(AdRefusalTest, AnIntervalEndsWhenItIsForgottenWhenThePopupWasShown) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Click(Child<QWidget>("CZRAdBottomPopupViewCloseButton"));
    ASSERT_NO_FATAL_FAILURE(SetInterval("3600"));
    PassAMinute();
    PushNew();
    ASSERT_TRUE(WaitForLine("CurrentTime donot exceed showInterval."));

    OpenServer("ClockPageScroll");
    Click(Child<QPushButton>("AdLastShownForget"));

    EXPECT_EQ(Child<QLabel>("PopupOutcome")->text(),
              QStringLiteral("It is forgotten when the popup was last shown to this user"));
    EXPECT_EQ(StoredValue("AdLastShowTimeStampKey_2_42_501_1"), "0");
    Override("AdTab", kMarket);
    ExpectShown("shown-after-forgetting");
}

TEST_F(AdRefusalTest, AnAdThatIsTakenOffline) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());

    PushChange("700 701", "600");

    EXPECT_TRUE(WaitForLine("Closed ad by push offline. adType = 2, adPosition = 42, adId = 701"));
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("ReportAdvertisementExposureResult") == 1; }));
    EXPECT_TRUE(WaitInRealTime([this] { return !IsCardSeen(); }));
    ExpectRefused("when the server took it offline", "refused-offline");
    Override("AdTab", kMarket);
    EXPECT_TRUE(WaitForLine("adModelList is null, m_adType = 2, adPosition = 42"));
}

TEST_F(AdRefusalTest, AStartThatHasNotCome) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    PassAMinute();

    PushCheck("703");

    EXPECT_TRUE(WaitForLine("CurrentTime < startTime"));
    EXPECT_EQ(ParsedLine("adType = 2, adPosition = 42, remove adId = 703"), 1);
    ExpectRefused("\u00B7 an ad that is due", "refused-start");
    PassAnHour();
    PushCheck("703");
    ExpectShown("shown-after-its-start");
}

TEST_F(AdRefusalTest, ABannerOfThreeAdsShowsADotForEach) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    Override("AdTab", kMarket);
    // The page asks again when its width has changed.
    ASSERT_TRUE(WaitInRealTime(
        [this] { return Banner(7) && Slide(2) && Slide(0)->isVisible() && ColoursAt(*Banner(7)) > 200; }));
    Picture("banner-of-three");

    auto* dots = Banner(7)->findChild<QWidget*>(QStringLiteral("ZSlideshowDots"));
    EXPECT_TRUE(dots->isVisible());
    EXPECT_EQ(CountOfDots(*dots), 3);
    ASSERT_TRUE(WaitInRealTime([&] { return Slide(1)->isVisible() && !Slide(0)->isVisible(); }));
    Picture("banner-of-three-second");
}

}  // namespace
