// Whether a popup's list is good for anything, and whether it may be shown at this moment.
#include <limits>

#include "Ad/AdPopupTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

/// An ad whose data stops behind what every ad has.
class CHalfPopup : public CZRAdPopupModel {
public:
    explicit CHalfPopup(QObject* parent) : CZRAdPopupModel(parent) { EXPECT_TRUE(CZRAdModel::Decode(PopupAd("half"))); }
};

class AdPopupCheckTest : public AdPopupTest {
protected:
    bool MayShow() { return slot.CheckCanShowAd(list.get()); }

    /// In place of the list's ads.
    void PutFirst(CZRAdModel* ad) { *list->GetAdList() = {ad}; }

    void SetInterval(int seconds) {
        Json::Value data = DataOf({"18088"});
        data["show_interval"] = seconds;
        list.reset(ListOf(data));
    }

    std::unique_ptr<CZRAdModelList> list{ListOf(DataOf({"18088"}))};
};

// Good for anything

TEST_F(AdPopupCheckTest, AGoodListIsLogged) {
    EXPECT_TRUE(slot.CheckAdIsValid(list.get()));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Ad popup data is OK, adType = 2, adPosition = 42, adId = 18088")));
}

TEST_F(AdPopupCheckTest, WhatTheBaseRefusesIsNotLookedAt) {
    EXPECT_FALSE(slot.CheckAdIsValid(nullptr));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] adModelList is null, m_adType = 2, adPosition = 42")));
    log.Forget();

    time.SetServerTime(301'000);
    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("[Ad] CurrentTime > endTime, ")),
                                         Error(StartsWith("[Ad] Ad list has no valid ad. "))));
}

TEST_F(AdPopupCheckTest, AFirstAdOfAnotherKindIsNoPopup) {
    auto* plain = new CZRAdModel(list.get());
    ASSERT_TRUE(plain->Decode(PopupAd("plain")));
    list->GetAdList()->prepend(plain);

    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AdPopupModel is null, adType = 2, adPosition = 42")));
}

TEST_F(AdPopupCheckTest, AFirstEntryThatIsNoAdAtAllIsNoPopup) {
    list->GetAdList()->prepend(nullptr);

    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AdPopupModel is null, adType = 2, adPosition = 42")));

    slot.OnRequestAdSucceeded(list.release(), 5);
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    ASSERT_THAT(reports.Names(), ElementsAre("SendAdRequest", "SingleAdvertisementPullDataResult"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("advertisement_ids":["18088"])"));
}

TEST_F(AdPopupCheckTest, AFirstAdWithoutAnIdIsRefused) {
    time.SetServerTime(0);  // due, as its times are all 0
    PutFirst(new CZRAdPopupModel(list.get()));

    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AdId is null, adType = 2, adPosition = 42")));
}

TEST_F(AdPopupCheckTest, AFirstAdWithoutAreasIsRefused) {
    const auto refused = Info("[Ad] ShowAreas is null, adType = 2, adPosition = 42, adId = 18088");
    First(list.get())->GetShowAreas()->clear();
    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), ElementsAre(refused));
    log.Forget();

    PutFirst(new CHalfPopup(list.get()));
    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] ShowAreas is null, adType = 2, adPosition = 42, adId = half")));
}

// May be shown now

TEST_F(AdPopupCheckTest, WhenEverythingHoldsNothingIsSaid) {
    EXPECT_TRUE(MayShow());

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AdPopupCheckTest, NoListCannotBeShown) {
    EXPECT_FALSE(slot.CheckCanShowAd(nullptr));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Cannot show ad popup, adModelList is null, m_adType = 2, "
                                              "adPosition = 42")));
}

TEST_F(AdPopupCheckTest, AListWithoutAPopupAtItsHeadCannotBeShown) {
    const auto refused = Info("[Ad] AdPopupModel is null, adType = 2, adPosition = 42");
    PutFirst(new CZRAdModel(list.get()));
    EXPECT_FALSE(MayShow());
    PutFirst(nullptr);
    EXPECT_FALSE(MayShow());
    list->GetAdList()->clear();
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(log.Lines(), ElementsAre(refused, refused, refused));
    log.Forget();

    Json::Value data = DataOf({});
    data.removeMember("ad");
    list.reset(ListOf(data));
    ASSERT_EQ(list->GetAdList(), nullptr);
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(log.Lines(), ElementsAre(refused));
}

TEST_F(AdPopupCheckTest, AnAdWithoutAreasCannotBeShown) {
    First(list.get())->GetShowAreas()->clear();
    EXPECT_FALSE(MayShow());
    PutFirst(new CHalfPopup(list.get()));
    EXPECT_FALSE(MayShow());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] ShowAreas is null, adType = 2, adPosition = 42, adId = 18088"),
                                         Info("[Ad] ShowAreas is null, adType = 2, adPosition = 42, adId = half")));
}

TEST_F(AdPopupCheckTest, OnlyTheFirstAdOfTheListCounts) {
    Json::Value data = DataOf({"1", "2"});
    data["ad"][1]["popup_ad"]["show_areas"][0] = 506;
    data["ad"][1]["popup_ad"]["show_areas"][1] = 507;
    list.reset(ListOf(data));
    EXPECT_TRUE(MayShow());

    mainFrame.SetTabKey(20018);  // the second ad's area
    EXPECT_FALSE(MayShow());
}

TEST_F(AdPopupCheckTest, EachOfTheAdsAreasWillDoAndNoOther) {
    mainFrame.SetTabKey(20002);
    EXPECT_TRUE(MayShow());

    mainFrame.SetTabKey(20003);
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] ShowAreas donot contain currentTab, currentTab = 502, tabFrameKey = 20003, "
                                 "adType = 2, adPosition = 42, adId = 18088")));
}

TEST_F(AdPopupCheckTest, ATabWithoutAnAreaIsNowhere) {
    mainFrame.SetTabKey(99999999999);

    EXPECT_FALSE(MayShow());

    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] ShowAreas donot contain currentTab, currentTab = 0, "
                                                         "tabFrameKey = 99999999999, "))));
}

TEST_F(AdPopupCheckTest, WithoutAMainFrameTheAreaIsNoneAndTheFocusIsNowhere) {
    mainFrame.TakeAway();
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] ShowAreas donot contain currentTab, currentTab = 0, tabFrameKey = 0, "
                                 "adType = 2, adPosition = 42, adId = 18088")));
    log.Forget();

    First(list.get())->GetShowAreas()->append(ZRAdShowAreaType(0));
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Main frame isnot focus in, adType = 2, adPosition = 42, adId = 18088")));
}

TEST_F(AdPopupCheckTest, TheIntervalMustBeOverToTheLastSecond) {
    SetInterval(3600);
    store.SetInt64(kLastShow, kNow - 3600);
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] CurrentTime donot exceed showInterval. currentTime = 200, lastShowTime = "
                                 "-3400, showInterval = 3600, adType = 2, adPosition = 42, adId = 18088, key = "
                                 "AdLastShowTimeStampKey_2_42_77_1")));

    store.SetInt64(kLastShow, kNow - 3601);
    EXPECT_TRUE(MayShow());
}

TEST_F(AdPopupCheckTest, IntervalIsNotOverWhenItsLastSecondHasOnlyBegun) {
    SetInterval(60);
    store.SetInt64(kLastShow, kNow - 60);
    time.SetServerTime(kNow * 1000 + 999);
    EXPECT_FALSE(MayShow());

    time.SetServerTime(kNow * 1000 + 1000);
    EXPECT_TRUE(MayShow());
}

TEST_F(AdPopupCheckTest, TimePassingMakesTheIntervalOver) {
    SetInterval(60);
    store.SetInt64(kLastShow, kNow - 10);
    EXPECT_FALSE(MayShow());
    time.Advance(50s);
    EXPECT_FALSE(MayShow());

    time.Advance(1s);

    EXPECT_TRUE(MayShow());
}

TEST_F(AdPopupCheckTest, WhatWasNeverShownWasShownAtTheBeginningOfTime) {
    SetInterval(199);
    EXPECT_TRUE(MayShow());
    SetInterval(200);
    EXPECT_FALSE(MayShow());
    EXPECT_THAT(Texts(), HasSubstr("lastShowTime = 0, "));
}

TEST_F(AdPopupCheckTest, AnIntervalOfNothingIgnoresTheStoredTime) {
    for (const int interval : {0, -1, -3600}) {
        SetInterval(interval);
        for (const qint64 last : {kNow, kNow + 100, kNow - 1}) {
            store.SetInt64(kLastShow, last);
            EXPECT_TRUE(MayShow()) << interval << " " << last;
        }
    }
}

TEST_F(AdPopupCheckTest, LastShowTimeIsReadWhenThereIsNoInterval) {
    SetInterval(0);

    EXPECT_TRUE(MayShow());

    EXPECT_THAT(store.Int64Reads(), ElementsAre(kLastShow));
}

TEST_F(AdPopupCheckTest, AStoredTimeAheadOfTheClockRefuses) {
    SetInterval(1);
    store.SetInt64(kLastShow, kNow + 5);

    EXPECT_FALSE(MayShow());
}

TEST_F(AdPopupCheckTest, AStoredTimeMayLieAnywhere) {
    SetInterval(1);
    store.SetInt64(kLastShow, std::numeric_limits<int64_t>::min());
    EXPECT_TRUE(MayShow());

    store.SetInt64(kLastShow, std::numeric_limits<int64_t>::max());
    EXPECT_FALSE(MayShow());
}

TEST_F(AdPopupCheckTest, TheStoredTimeIsThatOfTheUserAndTheIntervalType) {
    Json::Value data = DataOf({"18088"});
    data["show_interval"] = 60;
    data["show_interval_type"] = 4;
    list.reset(ListOf(data));
    store.SetInt64(kLastShow, kNow);
    EXPECT_TRUE(MayShow());

    account.Set(78);
    store.SetInt64("AdLastShowTimeStampKey_2_42_78_4", kNow);
    EXPECT_FALSE(MayShow());
}

TEST_F(AdPopupCheckTest, ATakenSlotRefusesAndIsTheOneRefusalThatIsReported) {
    slot.RequestAdBottomPopup(ZRAdApiTypeSearch, {});
    Forget();
    slots.Allow(kSlotAdPopup, false);

    EXPECT_FALSE(MayShow());

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Popup isnot allowed to show by uniform resource slot, adType = 2, "
                                 "adPosition = 42, adId = 18088"),
                            Info("[Ad] Report AdDisplayFilter success, requestId = dev20011, adIds = 18088,")));
    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{"FilterAdDisplay", 1,
                                          R"({"advertisement_filter":["1"],"advertisement_ids":["18088"],)"
                                          R"("request_id":"dev20011"})",
                                          0, false}));
}

TEST_F(AdPopupCheckTest, ATakenSlotIsReportedOnlyWithAReporterAndAClient) {
    slots.Allow(kSlotAdPopup, false);
    CZRAdReporter* const reporter = slot.m_adReporter;
    slot.m_adReporter = nullptr;
    EXPECT_FALSE(MayShow());
    slot.m_adReporter = reporter;
    slot.m_adApiClient = nullptr;
    EXPECT_FALSE(MayShow());

    EXPECT_THAT(log.Lines(), SizeIs(2));
    EXPECT_THAT(log.Lines(), Each(Info(StartsWith("[Ad] Popup isnot allowed to show by uniform resource slot, "))));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdPopupCheckTest, TakenSlotIsNotReportedWhenTheAdHasNoId) {
    EXPECT_FALSE(First(list.get())->Decode(PopupAd("")));  // the areas stay
    log.Forget();
    slots.Allow(kSlotAdPopup, false);

    EXPECT_FALSE(MayShow());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Popup isnot allowed to show by uniform resource slot, adType = 2, "
                                              "adPosition = 42, adId = ")));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdPopupCheckTest, OnlyTheSlotOfPopupsIsAskedFor) {
    for (const int other : {0, 1, 3}) {
        slots.Allow(ZRUniformResourceSlotType(other), false);
    }

    EXPECT_TRUE(MayShow());
    EXPECT_EQ(slots.AskedCount(), 1);
}

TEST_F(AdPopupCheckTest, AMainFrameWithoutTheFocusRefuses) {
    mainFrame.SetFocusIn(false);

    EXPECT_FALSE(MayShow());

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Main frame isnot focus in, adType = 2, adPosition = 42, adId = 18088")));
}

TEST_F(AdPopupCheckTest, TheRulesAreAskedInTheirOrderAndTheFirstRefusalIsTheOnlyOne) {
    SetInterval(3600);
    First(list.get())->GetShowAreas()->clear();
    mainFrame.SetTabKey(20003);
    store.SetInt64(kLastShow, kNow);
    slots.Allow(kSlotAdPopup, false);
    mainFrame.SetFocusIn(false);
    const auto refusal = [this] {
        log.Forget();
        EXPECT_FALSE(MayShow());
        return log.Lines().empty() ? std::string() : log.Lines().front().text;
    };

    EXPECT_THAT(refusal(), StartsWith("[Ad] ShowAreas is null"));
    First(list.get())->GetShowAreas()->append(ZRAdShowAreaType(500));
    EXPECT_THAT(refusal(), StartsWith("[Ad] ShowAreas donot contain currentTab"));
    mainFrame.SetTabKey(20001);
    EXPECT_THAT(refusal(), StartsWith("[Ad] CurrentTime donot exceed showInterval"));
    EXPECT_THAT(log.Lines(), SizeIs(1));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_EQ(slots.AskedCount(), 0);
    store.SetInt64(kLastShow, 0 - 3600);
    EXPECT_THAT(refusal(), StartsWith("[Ad] Popup isnot allowed to show by uniform resource slot"));
    EXPECT_THAT(reports.Names(), ElementsAre("FilterAdDisplay"));
    slots.Allow(kSlotAdPopup, true);
    EXPECT_THAT(refusal(), StartsWith("[Ad] Main frame isnot focus in"));
    EXPECT_THAT(reports.Names(), SizeIs(1));
    mainFrame.SetFocusIn(true);
    EXPECT_TRUE(MayShow());
}

}  // namespace
