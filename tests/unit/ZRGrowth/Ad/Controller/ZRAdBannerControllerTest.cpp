#include "Ad/Controller/ZRAdBannerController.h"

#include <QPointer>

#include "Ad/MethodsOf.h"
#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/View/ZRAdBannerView.h"
#include "ui/ZSlideshow.h"

#include "Ad/AdSamples.h"
#include "Ad/AdWindow.h"
#include "Ad/Controller/ZRAdManager.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QSize kSize(600, 100);

class CBannerSlot : public CZRAdBannerController {
public:
    CBannerSlot() : CZRAdBannerController(nullptr, 7) {}

    using CZRAdBannerController::CheckAdIsValid;
    using CZRAdBannerController::m_adType;
    using CZRAdBannerController::OnRequestAdSucceeded;
};

class AdBannerControllerTest : public ScriptedHostTest {
protected:
    AdBannerControllerTest() {
        environment.SetDeviceId("dev");
        random.WillReturn({11, 22, 33, 44});
        time.SetServerTime(200'000);
    }
    ~AdBannerControllerTest() override {
        qDeleteAll(banners);
        Forget();
        pictures.Forget();
    }

    static Json::Value DataOf(const std::vector<std::string>& ids, int bannerType = 2) {
        Json::Value data = BannerData();
        data["banner_position"]["banner_type"] = bannerType;
        for (const std::string& id : ids) {
            Json::Value ad = BannerAd(id);
            ad["banner_ad"]["img"] = "https://pictures.test/" + id + ".png";
            ad["banner_ad"]["schema"] = "https://www.test/" + id;
            data["ad"].append(ad);
        }
        return data;
    }
    static CZRAdModelList* ListOf(const Json::Value& data) {
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(data));
        return list;
    }

    /// Takes banners into `banners`, null ones too.
    std::function<void(QWidget*)> Taker() {
        return [this](QWidget* banner) { banners.append(banner); };
    }
    void Ask() {
        slot.GetAdBannerAsync(kSize, Taker(), 0, false, {});
        Forget();
    }
    void Answer(const Json::Value& data) { slot.OnRequestAdSucceeded(ListOf(data), 5); }

    /// A banner of these ads, in the caller's window.
    CZRAdBannerView* Show(const std::vector<std::string>& ids, int bannerType = 2) {
        Ask();
        Answer(DataOf(ids, bannerType));
        return banners.isEmpty() ? nullptr : qobject_cast<CZRAdBannerView*>(banners.last());
    }

    void Forget() {
        log.Forget();
        reports.Forget();
        http.Forget();
    }

    CBannerSlot slot;
    QList<QWidget*> banners;
};

TEST_F(AdBannerControllerTest, HasItsSlotsInTheFixedOrder) {
    EXPECT_THAT(MethodsOf(CZRAdBannerController::staticMetaObject),
                ElementsAre("slot OnCloseAd(QString adId)", "slot OnExposeAdStart(QString adId)",
                            "slot OnExposeAdEnd(QString adId)"));
}

TEST_F(AdBannerControllerTest, IsTheSlotOfBannersAtItsPosition) {
    EXPECT_EQ(slot.GetAdPosition(), 7);
    EXPECT_EQ(slot.m_adType, ZRAdTypeBanner);
}

TEST_F(AdBannerControllerTest, AsksForWhatIsDueOrForExactlyTheseAds) {
    slot.GetAdBannerAsync(kSize, Taker(), 0, false, {});
    time.Advance(10s);
    slot.GetAdBannerAsync(kSize, Taker(), 0, true, {QStringLiteral("8")});

    ASSERT_THAT(http.Started(), SizeIs(2));
    EXPECT_EQ(http.Started()[0].request.m_strUrl, "https://ads.test/ad/search");
    EXPECT_EQ(http.Started()[0].request.m_strBody,
              "{\n\t\"ad_position\" : 7,\n\t\"ad_type\" : 3,\n\t\"request_id\" : \"dev20011\"\n}\n");
    EXPECT_EQ(http.Started()[1].request.m_strUrl, "https://ads.test/ad/check");
    EXPECT_THAT(http.Started()[1].request.m_strBody, HasSubstr("\"ad_id\" : \n\t[\n\t\t\"8\"\n\t],"));
    EXPECT_THAT(banners, IsEmpty());
}

// Good for anything

TEST_F(AdBannerControllerTest, WhatTheBaseRefusesIsNotLookedAt) {
    EXPECT_FALSE(slot.CheckAdIsValid(nullptr));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] adModelList is null, m_adType = 3, adPosition = 7")));
}

TEST_F(AdBannerControllerTest, AListWithoutAPositionsLayoutIsRefused) {
    CZRAdModelList list(nullptr);
    Json::Value data = DataOf({"a"});
    data.removeMember("banner_position");
    list.Decode(data);
    ASSERT_EQ(list.GetBannerPosition(), nullptr);
    Ask();

    EXPECT_FALSE(slot.CheckAdIsValid(&list));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Banner position is null, adType = 3, m_adPosition = 7")));
    slot.ShowAd(&list);
    EXPECT_THAT(log.Lines().back(), Info("[Ad] Banner position is null, adType = 3, m_adPosition = 7"));
    EXPECT_THAT(banners, IsEmpty());
}

TEST_F(AdBannerControllerTest, AListThatNobodyAskedForIsRefused) {
    const std::unique_ptr<CZRAdModelList> list(ListOf(DataOf({"a"})));

    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Banner complete callback is null, adType = 3, adPosition = 7")));

    Ask();
    EXPECT_TRUE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

// Showing

TEST_F(AdBannerControllerTest, TheBannerIsTheCallersOfTheSizeThatWasAskedFor) {
    CZRAdBannerView* banner = Show({"a", "b"});

    ASSERT_TRUE(banner);
    EXPECT_THAT(banners, SizeIs(1));
    EXPECT_EQ(banner->parent(), nullptr);
    EXPECT_EQ(banner->size(), kSize);
    EXPECT_TRUE(banner->isHidden());
    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] Create ad banner, adType = 3, adPosition = 7")));
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdBannerControllerTest, ASingleImageShowsOneAdHoweverManyThereAre) {
    EXPECT_EQ(Show({"a", "b", "c"}, 1)->findChild<ZSlideshow*>()->count(), 1);
    EXPECT_THAT(pictures.Asked(), SizeIs(1));
}

TEST_F(AdBannerControllerTest, AnyOtherTypeShowsAll) {
    for (const int type : {2, 3, -1}) {
        time.Advance(10s);
        EXPECT_EQ(Show({"a", "b", "c"}, type)->findChild<ZSlideshow*>()->count(), 3) << type;
    }
}

TEST_F(AdBannerControllerTest, AnAdThatIsNoBannerIsLeftOutAndTheOthersMoveUp) {
    Ask();
    CZRAdModelList* list = ListOf(DataOf({"a", "b"}));
    auto* plain = new CZRAdModel(list);
    ASSERT_TRUE(plain->Decode(BannerAd("plain")));
    list->GetAdList()->prepend(plain);
    for (const int type : {1, 2}) {
        list->GetAdList()->swapItemsAt(0, type == 1 ? 0 : 1);  // in front, then between the two
        slot.ShowAd(list);
    }
    delete list;

    ASSERT_THAT(banners, SizeIs(2));
    for (QWidget* banner : qAsConst(banners)) {
        EXPECT_EQ(banner->findChild<ZSlideshow*>()->count(), 2);
    }
    reports.Forget();
    banners.last()->show();
    time.Settle();
    time.Advance(5s);
    Click(banners.last());
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].url, "https://www.test/b");
    EXPECT_THAT(reports.Names(), Contains("ClickAd"));
}

TEST_F(AdBannerControllerTest, ASingleImageIsTheFirstAdThatIsABanner) {
    Ask();
    CZRAdModelList* list = ListOf(DataOf({"a", "b"}, 1));
    list->GetAdList()->prepend(new CZRAdModel(list));

    slot.ShowAd(list);
    delete list;

    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, "https://pictures.test/a.png");
}

TEST_F(AdBannerControllerTest, IfNoneIsABannerAnEmptyViewIsHandedOver) {
    Ask();
    CZRAdModelList* list = ListOf(DataOf({"a"}));
    *list->GetAdList() = {new CZRAdModel(list)};

    slot.ShowAd(list);
    delete list;

    ASSERT_THAT(banners, SizeIs(1));
    EXPECT_EQ(banners[0]->findChild<ZSlideshow*>()->count(), 0);
}

TEST_F(AdBannerControllerTest, TheStripIsHandedOnToTheView) {
    slot.GetAdBannerAsync(kSize, Taker(), 30, false, {});
    Answer(DataOf({"a"}));
    banners[0]->show();
    time.Settle();

    PressAt(*banners[0], Qt::LeftButton, QPoint(5, 29));
    EXPECT_THAT(urls.Opened(), IsEmpty());
    PressAt(*banners[0], Qt::LeftButton, QPoint(5, 30));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AdBannerControllerTest, NoListIsNotShownAndNobodyIsCalled) {
    environment.SetRelease(false);
    Ask();

    slot.ShowAd(nullptr);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Show ad banner Failed, adModelList is null, adType = 3, m_adPosition = 7")));
    EXPECT_THAT(banners, IsEmpty());
}

struct Nothing {
    const char* name;
    bool withAds;
    int bannerType;
    const char* line;
};

class AdBannerNothingTest : public AdBannerControllerTest, public WithParamInterface<Nothing> {};

TEST_P(AdBannerNothingTest, AnInternalBuildIsCalledWithNullAndAReleaseNotAtAll) {
    const std::unique_ptr<CZRAdModelList> list(ListOf(DataOf({"a"}, GetParam().bannerType)));
    if (!GetParam().withAds) {
        list->GetAdList()->clear();
    }
    slot.ShowAd(list.get());  // nobody asked
    Ask();
    slot.ShowAd(list.get());
    EXPECT_THAT(banners, IsEmpty());

    environment.SetRelease(false);
    slot.ShowAd(list.get());

    EXPECT_THAT(banners, ElementsAre(nullptr));
    EXPECT_THAT(log.Lines(), Each(Info(GetParam().line)));
    EXPECT_THAT(log.Lines(), SizeIs(2));
}

INSTANTIATE_TEST_SUITE_P(
    Lists, AdBannerNothingTest,
    Values(Nothing{"NoAds", false, 2, "[Ad] Show ad banner Failed, ad List is null, adType = 3, adPosition = 7"},
           Nothing{"NoAdsOfNoType", false, 0,
                   "[Ad] Show ad banner Failed, ad List is null, adType = 3, adPosition = 7"},
           Nothing{"NoType", true, 0, "[Ad] Ad banner type is unknown, adType = 3, adPosition = 7, bannerType = 0"}),
    [](const auto& row) { return row.param.name; });

TEST_F(AdBannerControllerTest, AnEmptyAnswerIsRefusedAheadAndCallsNobody) {
    environment.SetRelease(false);
    Ask();

    Answer(DataOf({}));

    EXPECT_THAT(banners, IsEmpty());
    EXPECT_THAT(log.Lines().back(), Error("[Ad] Ad list is empty, adType = 3, adPosition = 7"));
}

// Who is called

TEST_F(AdBannerControllerTest, OnlyTheLatestCallerGetsABanner) {
    int first = 0;
    slot.GetAdBannerAsync(kSize, [&first](QWidget* /*banner*/) { ++first; }, 0, false, {});
    slot.GetAdBannerAsync(QSize(50, 40), Taker(), 0, false, {});  // refused, for the limit

    Answer(DataOf({"a"}));

    EXPECT_EQ(first, 0);
    ASSERT_THAT(banners, SizeIs(1));
    EXPECT_EQ(banners[0]->size(), QSize(50, 40));
}

TEST_F(AdBannerControllerTest, TheCallerIsKeptForTheNextAnswer) {
    Ask();
    Answer(DataOf({"a"}));
    Answer(DataOf({"b"}));

    EXPECT_THAT(banners, SizeIs(2));
}

TEST_F(AdBannerControllerTest, WhoeverGetsABannerMayAskForTheNextAtOnce) {
    const auto owned = std::make_shared<std::string>("what the first caller holds for as long as it is called");
    std::string seen;
    slot.GetAdBannerAsync(kSize,
                          [this, owned, &seen](QWidget* banner) {
                              banners.append(banner);
                              slot.GetAdBannerAsync(kSize, Taker(), 0, false, {});
                              seen = *owned;
                          },
                          0, false, {});

    Answer(DataOf({"a"}));

    EXPECT_EQ(seen, *owned);
    EXPECT_EQ(owned.use_count(), 1);
    EXPECT_THAT(banners, SizeIs(1));
}

TEST_F(AdBannerControllerTest, WhoeverGetsABannerMayDeleteItAtOnce) {
    slot.GetAdBannerAsync(kSize, [](QWidget* banner) { delete banner; }, 0, false, {});

    Answer(DataOf({"a", "b"}));

    EXPECT_THAT(reports.Names(),
                ElementsAre("SendAdRequest", "SingleAdvertisementPullDataResult", "StartExposeAd", "ExposeAd"));
}

// What is reported

TEST_F(AdBannerControllerTest, ExposuresOfEachAdAreReportedAsTheBannerRuns) {
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

TEST_F(AdBannerControllerTest, PicturesAndClicksAreReported) {
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

TEST_F(AdBannerControllerTest, APictureThatIsLostIsReported) {
    Show({"a"});
    Forget();
    for (int i = 0; i < 3; ++i) {
        pictures.FailUrl("https://pictures.test/a.png");
    }
    ASSERT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult"));
    EXPECT_THAT(reports.Events()[0].params,
                AllOf(HasSubstr(R"("result_code":"-1")"), HasSubstr(R"("action_times":3)")));
}

TEST_F(AdBannerControllerTest, ItsEndIsReportedOnceAsByLoginAndClearsTheList) {
    CZRAdBannerView* banner = Show({"a", "b"});
    Forget();
    time.Advance(2s);

    banners.clear();
    delete banner;
    time.Advance(1min);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Closed ad by login. adType = 3, adPosition = 7, adId = a"),
                            Info(StartsWith("[Ad] Report ExposeAd end success, ")),
                            Error(AllOf(StartsWith("[Ad] Expose ad start, "), HasSubstr("exposeDuration = 2000, "))),
                            Info("[Ad] Clear ad data. adType = 3, adPosition = 7, adId = ")));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
}

TEST_F(AdBannerControllerTest, ABannerThatOutlivesItsSlotReportsToNobody) {
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

// By way of the manager

class AdBannerManagerTest : public AdBannerControllerTest {
protected:
    ~AdBannerManagerTest() override {
        qDeleteAll(banners);
        banners.clear();
    }
    QList<CZRAdBannerController*> Controllers() { return manager.findChildren<CZRAdBannerController*>(); }

    CZRAdManager manager;
};

TEST_F(AdBannerManagerTest, ABannerIsAskedForLaterAndComesByTheCallback) {
    manager.GetAdBannerAsync(7, kSize, Taker(), 12, true, {QStringLiteral("8")});
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Get ad banner, adPosition = 7")));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(0));

    time.Settle();
    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(http.Started()[0].request.m_strUrl, "https://ads.test/ad/check");
    EXPECT_THAT(http.Started()[0].request.m_strBody,
                AllOf(HasSubstr("\"8\""), HasSubstr("\"ad_position\" : 7"), HasSubstr("\"ad_type\" : 3")));
    http.Answer(http.LastTask(), AnswerOf(DataOf({"a"})).toStyledString());
    time.Settle();

    ASSERT_THAT(banners, SizeIs(1));
    EXPECT_EQ(banners[0]->size(), kSize);
}

TEST_F(AdBannerManagerTest, EachPositionHasOneSlotForGood) {
    manager.GetAdBannerAsync(7, kSize, Taker(), 0, false, {});
    manager.GetAdBannerAsync(7, kSize, Taker(), 0, false, {});
    EXPECT_THAT(Controllers(), IsEmpty());
    time.Settle();
    EXPECT_THAT(Controllers(), SizeIs(1));
    EXPECT_THAT(http.Started(), SizeIs(1));  // the limit spans all callers of the position
    EXPECT_THAT(reports.Names(), ElementsAre("SingleAdvertisementPullDataResult"));

    manager.GetAdBannerAsync(9, kSize, Taker(), 0, false, {});
    time.Settle();

    ASSERT_THAT(Controllers(), SizeIs(2));
    EXPECT_EQ(Controllers()[0]->GetAdPosition(), 7);
    EXPECT_EQ(Controllers()[1]->GetAdPosition(), 9);
    EXPECT_EQ(Controllers()[0]->parent(), &manager);
    EXPECT_THAT(http.Started(), SizeIs(2));
}

TEST_F(AdBannerManagerTest, NeitherLanguageNorTabNorLogoutTouchesABanner) {
    manager.Init();
    manager.GetAdBannerAsync(7, kSize, Taker(), 0, false, {});
    time.Settle();
    http.Answer(http.LastTask(), AnswerOf(DataOf({"a"})).toStyledString());
    time.Settle();
    ASSERT_THAT(banners, SizeIs(1));
    Forget();

    bus.HostSend(20157, 1);
    bus.HostSend(20157, 2);
    bus.HostSend(20100);
    manager.OnLogout();

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_TRUE(Controllers()[0]->GetAdModelList());
}

}  // namespace
