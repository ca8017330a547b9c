// Reports to the server about a banner's pictures, exposures, clicks and end.
#include "Ad/AdBannerTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class AdBannerReportTest : public AdBannerControllerTest {};

TEST_F(AdBannerReportTest, ExposuresOfEachAdAreReportedAsTheBannerRuns) {
    Show({"a", "b"});
    EXPECT_THAT(reports.Names(), Contains("StartExposeAd").Times(1));
    Forget();

    time.Advance(5s);

    ASSERT_THAT(reports.Names(), ElementsAre("ExposeAd", "StartExposeAd"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("advertisement_id":"a")"));
    EXPECT_THAT(reports.Events()[1].params, HasSubstr(R"("advertisement_id":"b")"));
    EXPECT_THAT(log.Lines()[1], Error("[Ad] Expose ad start, path = /ad/expose, adType = 3, adPosition = 7, adId = a, "
                                      "exposeId = dev200a, exposeDuration = 5000, pushId = "));
}

TEST_F(AdBannerReportTest, PicturesAndClicksAreReported) {
    CZRAdBannerView* banner = Show({"a"});
    banner->show();
    time.Settle();
    Forget();

    pictures.SucceedUrl("https://pictures.test/a.png");
    Click(banner);

    ASSERT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult", "ClickAd"));
    EXPECT_THAT(reports.Events()[0].params,
                AllOf(HasSubstr(R"("advertisement_type":"3")"), HasSubstr(R"("action_times":1)")));
    EXPECT_THAT(reports.Events()[1].params, HasSubstr(R"("result_status":1)"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_TRUE(slot.GetAdModelList());  // a click closes nothing
}

TEST_F(AdBannerReportTest, BannerOpensTwiceAndReportsTwoClicksWhenItIsDoubleClicked) {
    CZRAdBannerView* banner = Show({"a"});
    banner->show();
    time.Settle();
    Forget();

    DoubleClick(*banner);

    EXPECT_THAT(urls.Opened(), SizeIs(2));
    EXPECT_THAT(reports.Names(), ElementsAre("ClickAd", "ClickAd"));
    pictures.Forget();
}

TEST_F(AdBannerReportTest, AClickWhoseTargetIsRefusedIsReportedAsThat) {
    Json::Value data = DataOf({"a"});
    data["ad"][0]["banner_ad"]["schema"] = "ftp://www.test/";
    Ask();
    Answer(data);
    banners[0]->show();
    time.Settle();
    Forget();

    Click(banners[0]);

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    ASSERT_THAT(reports.Names(), ElementsAre("ClickAd"));
    EXPECT_THAT(reports.Events()[0].params,
                AllOf(HasSubstr(R"("advertisement_id":"a")"), HasSubstr(R"("result_status":0)")));
}

TEST_F(AdBannerReportTest, APictureThatIsLostIsReported) {
    Show({"a"});
    Forget();
    for (int i = 0; i < 3; ++i) {
        pictures.FailUrl("https://pictures.test/a.png");
    }
    ASSERT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult"));
    EXPECT_THAT(reports.Events()[0].params,
                AllOf(HasSubstr(R"("result_code":"-1")"), HasSubstr(R"("action_times":3)")));
}

TEST_F(AdBannerReportTest, ItsEndIsReportedOnceAsByLoginAndClearsTheList) {
    CZRAdBannerView* banner = Show({"a", "b"});
    Forget();
    time.Advance(2s);

    banners.clear();
    delete banner;
    time.Advance(1min);

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Ad] Closed ad by login. adType = 3, adPosition = 7, adId = a"),
                    Info(StartsWith("[Ad] Report ExposeAd end success, ")),
                    Error(AllOf(StartsWith("[Ad] Expose ad start, "), EndsWith(", exposeDuration = 2000, pushId = "))),
                    Info("[Ad] Clear ad data. adType = 3, adPosition = 7, adId = ")));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
}

TEST_F(AdBannerReportTest, ABannerThatOutlivesItsSlotReportsToNobody) {
    auto passing = std::make_unique<CBannerSlot>();
    passing->GetAdBannerAsync(kSize, Taker(), 0, false, {});
    passing->OnRequestAdSucceeded(ListOf(DataOf({"a", "b"})), 5);
    passing.reset();
    Forget();

    time.Advance(20s);
    pictures.SucceedUrl("https://pictures.test/a.png");
    qDeleteAll(banners);
    banners.clear();

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
