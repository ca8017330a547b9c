// What keeps the bottom popup off the screen, each brought about from the workbench, as a tester does, and seen in the
// module's own line. Behind each refusal stands what ends it: the popup shown.
#include <QComboBox>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>

#include "AdClientFixture.h"
#include "AdPanelWindow.h"
#include "TabPages.h"
#include "core/time_date.h"
#include "support/Click.h"

using namespace ::testing;

namespace {

constexpr int kWatchlist = 0, kMarket = 1, kQuotes = 2, kNews = 4;  // places in kTabPages
constexpr qint64 kHourMs = 3'600'000;

/// The popup 701 is for two tabs and not for the first. Only who names them gets 702, whose picture is missing, and
/// 703, which begins in an hour.
QByteArray Scenario() {
    const QByteArray start = QByteArray::number(QDateTime::currentSecsSinceEpoch() + 3600);
    return R"({"schema":1,"users":[{"id":501,"name":"One"}],
    "ads":[
      {"adType":2,"adPosition":42,"showDuration":600,"showInterval":0,"showIntervalType":1,"enableClose":true,
       "campaigns":[
         {"id":"701","pushId":"p-701","startInS":-100,"endInS":100000,"expireInS":200000,
          "image":"card-open-account.png","schema":"https://ads.example/1","showAreas":[501,505]},
         {"id":"702","startInS":-100,"endInS":100000,"expireInS":200000,"users":[599],
          "image":"no-such-picture.png","schema":"https://ads.example/2","showAreas":[500,501,505]},
         {"id":"703","start":)" +
           start + R"(,"end":4000000000,"expire":4000000000,"users":[599],
          "image":"card-seminar.png","schema":"https://ads.example/3","showAreas":[500,501,505]}]},
      {"adType":3,"adPosition":7,"enableClose":false,"bannerPosition":{"bannerType":2,"materialScale":"6:1",
         "materialCorner":"8"},
       "campaigns":[
         {"id":"801","startInS":-100,"endInS":100000,"expireInS":200000,"image":"first-trade-en.png",
          "schema":"https://ads.example/801"},
         {"id":"802","startInS":-100,"endInS":100000,"expireInS":200000,"image":"night-session.png",
          "schema":"https://ads.example/802"},
         {"id":"803","startInS":-100,"endInS":100000,"expireInS":200000,"image":"research-weekly.svg",
          "schema":"https://ads.example/803"}]}],
    "commonConfig":{}})";
}

class AdRefusalTest : public AdClientTest {
protected:
    AdRefusalTest() { options.scenario = WriteFile("scenario.json", Scenario()); }

    // The popup has come and may not be shown on the first tab.
    void StartAndSeeNothing() {
        Start();
        ASSERT_TRUE(WaitForLine("ShowAreas donot contain currentTab, currentTab = 500, tabFrameKey = 20001"));
        ASSERT_FALSE(IsCardSeen());
        Open("WorkbenchTabs", "AdTabPage");
    }

    void StartAndSeePopup() {
        ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
        Override("AdTab", kQuotes);
        ASSERT_TRUE(WaitInRealTime([this] { return IsCardSeen(); }));
    }

    void Open(const char* tabs, const char* page) { Child<QTabWidget>(tabs)->setCurrentWidget(Child<QWidget>(page)); }

    void Override(const char* switchName, int choice) {
        Open("AdTabs", "AdSwitches");
        Child<QComboBox>(switchName)->setCurrentIndex(choice);
    }

    void SetInterval(const char* seconds) {
        Open("AdTabs", "AdSwitches");
        Child<QLineEdit>("AdInterval")->setText(QString::fromLatin1(seconds));
        Click(Child<QPushButton>("AdIntervalSet"));
        ASSERT_TRUE(WaitInRealTime([this] { return !Child<QLabel>("AdSwitchesMessage")->text().isEmpty(); }));
        ASSERT_TRUE(Child<QLabel>("AdSwitchesMessage")->property("good").toBool());
    }

    /// Its place in the choice of pushes.
    enum EnPush { kPushChange, kPushCheck, kPushNew };

    void Push(EnPush push, const char* ids = "", const char* delay = "0") {
        Open("AdTabs", "AdPushPanel");
        Child<QComboBox>("AdPush")->setCurrentIndex(push);
        Child<QLineEdit>("AdPushIds")->setText(QString::fromLatin1(ids));
        Child<QLineEdit>("AdPushDelay")->setText(QString::fromLatin1(delay));
        Child<QLabel>("AdPushMessage")->clear();
        Click(Child<QPushButton>("AdPushSend"));
        ASSERT_TRUE(WaitInRealTime(
            [this] { return Child<QLabel>("AdPushMessage")->text() == QStringLiteral("Sent to connections: 1"); }));
    }

    /// The server's clock goes on by that step, which is longer than two requests must be apart.
    void MoveClock(const char* step, qint64 byMs) {
        const qint64 wanted = core::time_date::GetSvrTimeMillis() + byMs - 1'000;
        Open("WorkbenchTabs", "ServerTab");
        Click(Child<QPushButton>(step));
        ASSERT_TRUE(WaitInRealTime([=] { return core::time_date::GetSvrTimeMillis() >= wanted; }));
        Open("WorkbenchTabs", "AdTabPage");
    }
    void PassAMinute() { MoveClock("ClockPlusMinute", 60'000); }
    void PassAnHour() { MoveClock("ClockPlusHour", kHourMs); }

    /// The refusal as a person sees it: the popup's place is bare, and the workbench says why.
    void ExpectRefused(const char* why, const char* picture) {
        EXPECT_FALSE(IsCardSeen());
        EXPECT_TRUE(WaitInRealTime([=] { return WorkbenchSays(why); })) << why;
        Picture(picture);
    }

    bool WorkbenchSays(const char* words) {
        return !Child<QTreeWidget>("AdDetail")
                    ->findItems(QString::fromLatin1(words), Qt::MatchContains | Qt::MatchRecursive, 1)
                    .isEmpty();
    }

    void ExpectShown(const char* picture) {
        ASSERT_TRUE(WaitInRealTime([this] { return IsCardSeen() && ColoursAt(*Card()) > 200; }));
        EXPECT_TRUE(WaitInRealTime([this] { return WorkbenchSays("shown since"); }));
        Picture(picture);
    }

    std::string Overridden() {
        const auto* label = Child<QLabel>("AdOverridden");
        return label->isVisible() ? label->text().toStdString() : std::string();
    }
};

TEST_F(AdRefusalTest, ATabThatIsNotAmongItsAreas) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    ExpectRefused("refused (moment): current tab", "refused-tab");

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
    ExpectRefused("refused (moment): shared slot", "refused-slot");
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
    ExpectRefused("refused (moment): focus", "refused-focus");
    Override("AdFocus", 0);
    Override("AdTab", kMarket);
    ExpectShown("shown-with-focus");
}

TEST_F(AdRefusalTest, AFocusThatIsAlwaysThereStandsForAWindowInTheBackground) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    CAdPanelWindow::Open(window.get());
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

    Push(kPushNew);

    EXPECT_TRUE(WaitForLine("CurrentTime donot exceed showInterval."));
    EXPECT_EQ(Said("showInterval = 3600, adType = 2, adPosition = 42, adId = 701"), 1);
    EXPECT_EQ(Overridden(), "Overridden: interval 3600 s instead of 0 s");
    ExpectRefused("refused (moment): interval since the last showing", "refused-interval");

    PassAnHour();
    Override("AdTab", kMarket);
    ExpectShown("shown-after-the-interval");
}

TEST_F(AdRefusalTest, AnIntervalEndsWhenItIsForgottenWhenThePopupWasShown) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Click(Child<QWidget>("CZRAdBottomPopupViewCloseButton"));
    ASSERT_NO_FATAL_FAILURE(SetInterval("3600"));
    PassAMinute();
    Push(kPushNew);
    ASSERT_TRUE(WaitForLine("CurrentTime donot exceed showInterval."));

    Open("AdTabs", "AdSwitches");
    Click(Child<QPushButton>("AdLastShownForget"));

    EXPECT_EQ(Child<QLabel>("AdSwitchesMessage")->text(),
              QStringLiteral("It is forgotten when the popup was last shown to this user"));
    EXPECT_EQ(StoredValue("AdLastShowTimeStampKey_2_42_501_1"), "0");
    Override("AdTab", kMarket);
    ExpectShown("shown-after-forgetting");
}

TEST_F(AdRefusalTest, AnAdThatIsTakenOffline) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());

    Push(kPushChange, "700 701", "600");

    EXPECT_TRUE(WaitForLine("Closed ad by push offline. adType = 2, adPosition = 42, adId = 701"));
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("ReportAdvertisementExposureResult") == 1; }));
    EXPECT_TRUE(WaitInRealTime([this] { return !IsCardSeen(); }));
    ExpectRefused("closed by push offline", "refused-offline");
    Override("AdTab", kMarket);
    EXPECT_TRUE(WaitForLine("adModelList is null, m_adType = 2, adPosition = 42"));
}

TEST_F(AdRefusalTest, APictureThatFails) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    PassAMinute();

    Push(kPushCheck, "702");

    EXPECT_TRUE(WaitForLine("OnImageLoadFailed, adType = 2"));
    ExpectRefused("refused (picture): picture loaded", "refused-picture");
    EXPECT_EQ(server->HttpTo("/pictures/no-such-picture.png").size(), 3u);
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("AdvertisementImageResourceDownloadResult") == 1; }));
    EXPECT_EQ(server->ReportsOf("AdvertisementImageResourceDownloadResult")[0]["result_code"], "-1");
    PassAMinute();
    Push(kPushNew);
    Override("AdTab", kMarket);
    ExpectShown("shown-after-a-failed-picture");
}

TEST_F(AdRefusalTest, AStartThatHasNotCome) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    PassAMinute();

    Push(kPushCheck, "703");

    EXPECT_TRUE(WaitForLine("CurrentTime < startTime"));
    EXPECT_EQ(Said("adType = 2, adPosition = 42, remove adId = 703"), 1);
    ExpectRefused("refused (list): an ad that is due", "refused-start");
    PassAnHour();
    Push(kPushCheck, "703");
    ExpectShown("shown-after-its-start");
}

TEST_F(AdRefusalTest, ABannerOfThreeAdsShowsADotForEach) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    Override("AdTab", kMarket);
    ASSERT_TRUE(WaitForBanner(7));
    ASSERT_TRUE(WaitInRealTime([this] { return Pictured().size() == 4; }));
    const auto slide = [this](int index) {
        return Banner(7)->findChild<QWidget*>(QStringLiteral("ZSlideshowSlide%1").arg(index));
    };
    ASSERT_NE(slide(2), nullptr);
    EXPECT_TRUE(slide(0)->isVisible());
    EXPECT_GT(ColoursAt(*Banner(7)), 200u);
    Picture("banner-of-three");

    auto* dots = Banner(7)->findChild<QWidget*>(QStringLiteral("ZSlideshowDots"));
    EXPECT_TRUE(dots->isVisible());
    QImage drawn(dots->size(), QImage::Format_ARGB32_Premultiplied);
    drawn.fill(Qt::transparent);
    dots->render(&drawn, QPoint(), QRegion(), QWidget::RenderFlags());
    int edges = 0;
    for (int x = 1; x < drawn.width(); ++x) {
        const int middle = drawn.height() / 2;
        edges += qAlpha(drawn.pixel(x, middle)) > 0 && qAlpha(drawn.pixel(x - 1, middle)) == 0 ? 1 : 0;
    }
    EXPECT_EQ(edges, 3);
    ASSERT_TRUE(WaitInRealTime([&] { return slide(1)->isVisible() && !slide(0)->isVisible(); }));
    Picture("banner-of-three-second");
}

}  // namespace
