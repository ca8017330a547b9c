#include "Ad/Controller/ZRAdBannerController.h"

#include <QApplication>
#include <memory>

#include "Ad/AdBannerTest.h"
#include "Ad/Controller/ZRAdManager.h"
#include "Ad/MethodsOf.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

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
    environment.SetRelease(false);
    Ask();

    EXPECT_FALSE(slot.CheckAdIsValid(&list));

    const auto refused = Info("[Ad] Banner position is null, adType = 3, m_adPosition = 7");
    EXPECT_THAT(log.Lines(), ElementsAre(refused));
    slot.ShowAd(&list);
    EXPECT_THAT(log.Lines(), ElementsAre(refused, refused));
    EXPECT_THAT(banners, IsEmpty());
}

TEST_F(AdBannerControllerTest, WhereLayoutAndCallerAreMissingTheLayoutIsWhatIsTold) {
    CZRAdModelList list(nullptr);
    Json::Value data = DataOf({"a"});
    data.removeMember("banner_position");
    list.Decode(data);

    EXPECT_FALSE(slot.CheckAdIsValid(&list));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Banner position is null, adType = 3, m_adPosition = 7")));
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
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdBannerControllerTest, CallerIsCalledOnceWhenAnInternalBuildHasABanner) {
    environment.SetRelease(false);

    Show({"a"});

    EXPECT_THAT(banners, ElementsAre(NotNull()));
}

TEST_F(AdBannerControllerTest, ABannerIsLoggedAheadOfItsAds) {
    Ask();
    const std::unique_ptr<CZRAdModelList> list(ListOf(DataOf({"a", "b"})));

    slot.ShowAd(list.get());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Create ad banner, adType = 3, adPosition = 7"),
                                         Info("[Ad] Set banner image url, imageUrl = https://pictures.test/a.png"),
                                         Info(StartsWith("[Ad] Report ExposeAd start, ")),
                                         Info(StartsWith("[Ad] Report StartExposeAd success, ")),
                                         Info("[Ad] Set banner image url, imageUrl = https://pictures.test/b.png")));
}

TEST_F(AdBannerControllerTest, ThePositionsSpeedScaleAndCornersAreNotApplied) {
    Json::Value data = DataOf({"a", "b"});
    data["banner_position"]["carousel_interval"] = 1;
    data["banner_position"]["material_scale"] = "1:1";
    data["banner_position"]["material_corner"] = "40";
    Ask();
    Answer(data);
    ASSERT_THAT(banners, SizeIs(1));
    banners[0]->show();
    time.Settle();
    pictures.SucceedUrl("https://pictures.test/a.png");

    for (const QString& name : {QStringLiteral("ZSlideshowSlide0"), QStringLiteral("ZSlideshowSlide1")}) {
        EXPECT_EQ(banners[0]->findChild<QWidget*>(name)->geometry(), QRect(QPoint(0, 0), kSize));
    }
    const QImage seen = banners[0]->grab().toImage();
    for (const QPoint corner : {QPoint(0, 0), QPoint(599, 0), QPoint(0, 99), QPoint(599, 99)}) {
        EXPECT_EQ(seen.pixelColor(corner), QColor(Qt::red)) << corner.x() << "," << corner.y();
    }
    time.Advance(4900ms);
    EXPECT_EQ(Slideshow(banners[0])->currentIndex(), 0);
    time.Advance(100ms);
    EXPECT_EQ(Slideshow(banners[0])->currentIndex(), 1);
}

TEST_F(AdBannerControllerTest, ASingleImageShowsOneAdHoweverManyThereAre) {
    EXPECT_EQ(Slideshow(Show({"a", "b", "c"}, 1))->count(), 1);
    EXPECT_THAT(pictures.Asked(), SizeIs(1));
}

TEST_F(AdBannerControllerTest, AnyOtherTypeShowsAll) {
    for (const int type : {2, 3, -1}) {
        time.Advance(10s);
        CZRAdBannerView* banner = Show({"a", "b", "c"}, type);
        ASSERT_TRUE(banner) << type;
        EXPECT_EQ(Slideshow(banner)->count(), 3) << type;
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
        EXPECT_EQ(Slideshow(banner)->count(), 2);
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
    EXPECT_EQ(Slideshow(banners[0])->count(), 0);
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

TEST_F(AdBannerControllerTest, StripOfAnEarlierCallIsForgottenWhenTheNextCallHasNone) {
    slot.GetAdBannerAsync(kSize, Taker(), 30, false, {});
    slot.GetAdBannerAsync(kSize, Taker(), 0, false, {});  // refused by the limit
    Answer(DataOf({"a"}));
    banners[0]->show();
    time.Settle();

    PressAt(*banners[0], Qt::LeftButton, QPoint(5, 5));

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

TEST_F(AdBannerControllerTest, ABannerThatNobodyAskedForIsNotLeftBehind) {
    const std::unique_ptr<CZRAdModelList> list(ListOf(DataOf({"a"})));
    slot.GetAdBannerAsync(kSize, nullptr, 0, false, {});
    Forget();

    slot.ShowAd(list.get());

    EXPECT_THAT(QApplication::allWidgets(), IsEmpty());
    EXPECT_THAT(reports.Names(), ElementsAre("StartExposeAd", "ExposeAd"));  // what was begun has its end
    EXPECT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

enum class Ads { kNoArray, kNone, kOne };

struct Nothing {
    const char* name;
    Ads ads;
    int bannerType;
    const char* line;
};

class AdBannerNothingTest : public AdBannerControllerTest, public WithParamInterface<Nothing> {
protected:
    AdBannerNothingTest() {
        Json::Value data = DataOf({"a"}, GetParam().bannerType);
        if (GetParam().ads == Ads::kNoArray) {
            data.removeMember("ad");
        }
        list.reset(ListOf(data));
        if (GetParam().ads == Ads::kNone) {
            list->GetAdList()->clear();
        }
    }

    std::unique_ptr<CZRAdModelList> list;
};

TEST_P(AdBannerNothingTest, AnInternalBuildIsCalledWithNullAndAReleaseNotAtAll) {
    Ask();
    slot.ShowAd(list.get());
    EXPECT_THAT(banners, IsEmpty());

    environment.SetRelease(false);
    slot.ShowAd(list.get());

    EXPECT_THAT(banners, ElementsAre(nullptr));
    EXPECT_THAT(log.Lines(), Each(Info(GetParam().line)));
    EXPECT_THAT(log.Lines(), SizeIs(2));
}

TEST_P(AdBannerNothingTest, WhereNobodyAskedAnInternalBuildCallsNobody) {
    environment.SetRelease(false);

    EXPECT_NO_THROW(slot.ShowAd(list.get()));

    EXPECT_THAT(log.Lines(), ElementsAre(Info(GetParam().line)));
}

INSTANTIATE_TEST_SUITE_P(Lists, AdBannerNothingTest,
                         Values(Nothing{"NoArray", Ads::kNoArray, 2,
                                        "[Ad] Show ad banner Failed, ad List is null, adType = 3, adPosition = 7"},
                                Nothing{"NoAds", Ads::kNone, 2,
                                        "[Ad] Show ad banner Failed, ad List is null, adType = 3, adPosition = 7"},
                                Nothing{"NoAdsOfNoType", Ads::kNone, 0,
                                        "[Ad] Show ad banner Failed, ad List is null, adType = 3, adPosition = 7"},
                                Nothing{"NoType", Ads::kOne, 0,
                                        "[Ad] Ad banner type is unknown, adType = 3, adPosition = 7, bannerType = 0"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(AdBannerControllerTest, AnEmptyAnswerIsRefusedAheadAndCallsNobody) {
    environment.SetRelease(false);
    Ask();

    Answer(DataOf({}));

    EXPECT_THAT(banners, IsEmpty());
    EXPECT_THAT(log.Lines().back(), Error("[Ad] Ad list is empty, adType = 3, adPosition = 7"));
}

TEST_F(AdBannerControllerTest, ARefusedRequestCallsNobodyAlsoInAnInternalBuild) {
    environment.SetRelease(false);
    Ask();

    slot.GetAdBannerAsync(kSize, Taker(), 0, false, {});
    time.Settle();

    EXPECT_THAT(reports.Names(), ElementsAre("SingleAdvertisementPullDataResult"));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(banners, IsEmpty());
}

// Receivers of the calls

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
