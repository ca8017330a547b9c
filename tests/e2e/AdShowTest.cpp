// The bottom popup and the banners on the screen of the real client against the real server.
#include <QApplication>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include "AdClientFixture.h"
#include "core/urlhandler.h"
#include "support/Click.h"
#include "ui/ZText.h"

using namespace ::testing;

namespace {

constexpr const char* kScenario = R"({"schema":1,
    "users":[{"id":501,"name":"One"},{"id":502,"name":"Two"}],
    "ads":[
      {"adType":2,"adPosition":42,"showDuration":600,"showInterval":0,"showIntervalType":1,"enableClose":true,
       "campaigns":[{"id":"701","pushId":"p-701","startInS":-100,"endInS":10000,"expireInS":20000,
         "image":"card-invite.png","schema":"https://ads.example/1","popupType":2,
         "showAreas":[500,501,502,503,504,505,506]}]},
      {"adType":3,"adPosition":7,"enableClose":false,"bannerPosition":{"bannerType":2,"materialScale":"6:1",
         "materialCorner":"8"},
       "campaigns":[
         {"id":"801","startInS":-100,"endInS":10000,"expireInS":20000,"image":"first-trade-en.png",
          "schema":"https://ads.example/801","users":[501]},
         {"id":"802","startInS":-100,"endInS":10000,"expireInS":20000,"image":"night-session.png",
          "schema":"https://ads.example/802","users":[501]}]},
      {"adType":3,"adPosition":9,"enableClose":false,"bannerPosition":{"bannerType":1,"materialScale":"6:1",
         "materialCorner":"8"},
       "campaigns":[
         {"id":"901","startInS":-100,"endInS":10000,"expireInS":20000,"image":"research-weekly.png",
          "schema":"https://ads.example/901"}]}],
    "commonConfig":{}})";

class AdShowTest : public AdClientTest {
protected:
    AdShowTest() { options.scenario = WriteFile("scenario.json", kScenario); }

    // Bindings call members of this class.
    ~AdShowTest() override { End(); }

    void StartAndSeePopup() {
        Make();
        Bind(20157, [this](unsigned int, unsigned long key, auto) { tabs.push_back(key); });
        Show();
        ASSERT_TRUE(WaitInRealTime([this] { return Card() && Card()->isVisible(); }));
    }

    std::vector<unsigned long> tabs;
};

TEST_F(AdShowTest, APopupComesByItselfAndItsExposureIsToldWhenItIsClosed) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Picture("popup");

    EXPECT_EQ(Card()->parentWidget(), window);
    EXPECT_EQ(Card()->geometry(), QRect(160, window->height() - 168, 360, 120));
    EXPECT_EQ(Child<QWidget>("Navigation")->geometry().right() + 1, 156);
    EXPECT_THAT(tabs, ElementsAre(20001));
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("StartExposeAd") == 1; }));
    const QPointer<QWidget> card = Card();

    Click(Child<QWidget>("CZRAdBottomPopupViewCloseButton"));

    ASSERT_TRUE(WaitInRealTime([&] { return !card; }));
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ReportAdvertisementExposureResult") == 1; }));
    const std::map<std::string, int> all{{"SendAdRequest", 1},
                                         {"SingleAdvertisementPullDataResult", 1},
                                         {"AdvertisementImageResourceDownloadResult", 1},
                                         {"StartExposeAd", 1},
                                         {"ClickAd", 1},
                                         {"ExposeAd", 1},
                                         {"ReportAdvertisementExposureResult", 1}};
    EXPECT_EQ(server->ReportCounts(), all);
    EXPECT_EQ(server->ReportsOf("ReportAdvertisementExposureResult")[0]["result_code"], "0");
    EXPECT_EQ(server->HttpTo("/ad/expose").size(), 1u);
}

TEST_F(AdShowTest, ThePopupKeepsItsPlaceOverEveryLayoutOfTheWindow) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());

    Click(Child<QWidget>("NavigationToggle"));
    EXPECT_EQ(Card()->pos(), QPoint(84, window->height() - 168));
    ASSERT_TRUE(WaitInRealTime([this] { return Child<QWidget>("Navigation")->width() == 72; }));
    Picture("popup-collapsed");

    window->resize(window->width(), window->height() - 60);
    ASSERT_TRUE(WaitInRealTime([this] { return Card()->y() == window->height() - 168; }));
    EXPECT_EQ(Card()->x(), 84);
    Click(Child<QWidget>("NavigationToggle"));
    EXPECT_EQ(Card()->x(), 160);
}

TEST_F(AdShowTest, ThePopupTakesNoFocusByComingAndByAClick) {
    Make();
    Show();
    // any widget may have the focus before the popup is shown
    auto* edit = Child<QLineEdit>("ExportPath");
    edit->setFocus();
    ASSERT_TRUE(WaitInRealTime([&] { return Card() && Card()->isVisible() && edit->hasFocus(); }));

    Click(Card());

    EXPECT_TRUE(edit->hasFocus());
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ReportAdvertisementExposureResult") == 1; }));
    EXPECT_EQ(Card(), nullptr);
    EXPECT_EQ(Reported("ClickAd"), 1);
}

TEST_F(AdShowTest, ThePopupIsReachedByTabAndPressedByTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Child<QWidget>("ExportPath")->setFocus();
    auto* button = Child<QWidget>("CZRAdBottomPopupViewCloseButton");

    for (int press = 0; press < 200 && !button->hasFocus(); ++press) {
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
    }
    ASSERT_TRUE(button->hasFocus());
    QTest::keyClick(window->windowHandle(), Qt::Key_Space);

    EXPECT_TRUE(WaitInRealTime([this] { return Card() == nullptr; }));
}

TEST_F(AdShowTest, ThePopupThatLeadsToAPageIsClickedFirstAndGoneThen) {
    options.scenario =
        WriteFile("page.json", QByteArray(kScenario).replace("https://ads.example/1", "zrclient://page/account"));
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    const QPointer<QWidget> card = Card();

    Click(Card());

    ASSERT_TRUE(WaitInRealTime([&] { return !card && tabs.back() == 20017; }));
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ExposeAd") == 1; }));
    ASSERT_EQ(Reported("ClickAd"), 1);
    EXPECT_EQ(server->ReportsOf("ClickAd")[0]["result_status"], 1);
}

TEST_F(AdShowTest, EachPageOfTheClientThatABuiltInAdNamesIsThere) {
    options.scenario.clear();
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(WaitInRealTime([this] { return server != nullptr && client->UserId() != 0; }));
    int pages = 0;
    const Json::Value scenario = server->Get("/v1/scenario");
    for (const Json::Value& slot : scenario["ads"]) {
        for (const Json::Value& campaign : slot["campaigns"]) {
            const std::string schema = campaign["schema"].asString();
            if (schema.rfind("zrclient:", 0) == 0) {
                ++pages;
                EXPECT_TRUE(core::urlhandler::DispatchUrl(QString::fromStdString(schema),
                                                          core::urlhandler::kBusinessDefault, nullptr, QVariant(),
                                                          core::urlhandler::kFallbackWeb))
                    << schema;
            }
        }
    }
    EXPECT_GE(pages, 2);
}

TEST_F(AdShowTest, AnotherTabIsToldOnceAndEndsThePopup) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    const QPointer<QWidget> card = Card();
    Choose("watchlist");
    EXPECT_NE(card, nullptr);

    for (const char* page : {"market", "quotes", "research", "news", "alerts", "portfolio", "account"}) {
        Choose(page);
    }

    EXPECT_THAT(tabs, ElementsAre(20001, 20013, 20002, 20003, 20004, 20018, 20005, 20017));
    ASSERT_TRUE(WaitInRealTime([&] { return !card; }));
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("ReportAdvertisementExposureResult") == 1; }));
}

TEST_F(AdShowTest, ABannerStandsAtBothPositionsWithItsPictures) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    const QSize size = window->size();

    Choose("market");
    ASSERT_TRUE(WaitForBanner(7));
    ASSERT_TRUE(WaitInRealTime([this] { return Pictured() == std::multiset<std::string>({"701", "801", "802"}); }));
    Picture("banner-market");
    Choose("alerts");
    ASSERT_TRUE(WaitForBanner(9));
    ASSERT_TRUE(WaitInRealTime([this] { return Pictured().count("901") == 1; }));
    Picture("banner-alerts");

    EXPECT_EQ(Banner(9)->size(), QSize(662, 110));
    EXPECT_EQ(window->size(), size);
    Choose("account");
    Picture("account");
}

TEST_F(AdShowTest, ABannerIsItsUsersAndEndsWithHisLogout) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Choose("market");
    ASSERT_TRUE(WaitForBanner(7));
    const QPointer<QWidget> banner = Banner(7);
    const auto* table = Child<QWidget>("SectorsTable");
    const int below = table->mapTo(window, QPoint()).y();

    client->Logout();

    ASSERT_TRUE(WaitInRealTime([&] { return !banner; }));
    EXPECT_TRUE(WaitInRealTime([&] { return table->mapTo(window, QPoint()).y() < below - 100; }));
    EXPECT_FALSE(Child<QWidget>("AdBannerSlot7")->isVisible());
}

TEST_F(AdShowTest, TheDeveloperPanelOpensFromTheWorkbench) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeePopup());
    Open("WorkbenchTabs", "WhyPage");
    Click(Child<QWidget>("AdPanelOpen"));
    auto* panel = Child<QWidget>("CZRAdBottomPopupDeveloperView");
    ASSERT_NE(panel, nullptr);
    ASSERT_TRUE(WaitInRealTime([&] { return panel->window()->isActiveWindow(); }));

    Click(Child<QWidget>("UpdateText"));

    EXPECT_THAT(Child<ZText>("CacheDataText")->text().toStdString(), HasSubstr("ad_id: 701"));
    EXPECT_THAT(Child<ZText>("LastShowText")->text().toStdString(), HasSubstr("ShowIntervalType:1"));
    // the workbench lists the slot as well
    EXPECT_TRUE(WaitForWhy("Popup 42", "shown"));
    QCoreApplication::sendPostedEvents();
    Picture("panel", panel->window());
    Picture("workbench-ads");
}

}  // namespace
