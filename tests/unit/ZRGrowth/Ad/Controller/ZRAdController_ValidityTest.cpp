// Validity of a list for a position, due ads, and the small readers.
#include <QPointer>
#include <limits>

#include "Ad/AdSlotTest.h"

using namespace ::testing;

namespace {

struct Window {
    qint64 start;
    qint64 end;
    qint64 expire;
};

class AdControllerValidityTest : public AdSlotTest {
protected:
    /// A list of popups "1", "2" ... with these windows.
    CZRAdModelList* ListOfWindows(const std::vector<Window>& windows) {
        Json::Value data = PopupData();
        for (size_t i = 0; i < windows.size(); ++i) {
            Json::Value ad = PopupAd(std::to_string(i + 1));
            ad["start_time"] = Json::Int64(windows[i].start);
            ad["end_time"] = Json::Int64(windows[i].end);
            ad["expire_time"] = Json::Int64(windows[i].expire);
            data["ad"].append(ad);
        }
        list.reset(ListOf(data));
        return list.get();
    }

    std::unique_ptr<CZRAdModelList> list;
};

TEST_F(AdControllerValidityTest, AListForTheSlotWithAdsThatAreDueIsValidAndStaysWhole) {
    list.reset(Popups({"1", "2", "1"}));

    EXPECT_TRUE(slot->CheckAdIsValid(list.get()));

    EXPECT_EQ(Ids(list.get()), "1 2 1");
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(slot->GetAdModelList(), nullptr);
}

TEST_F(AdControllerValidityTest, NoListIsNotValid) {
    EXPECT_FALSE(slot->CheckAdIsValid(nullptr));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] adModelList is null, m_adType = 2, adPosition = 42")));
}

TEST_F(AdControllerValidityTest, AnotherTypeIsRefusedAheadOfAnotherPosition) {
    Json::Value data = BannerData();
    data["ad"].append(BannerAd());
    list.reset(ListOf(data));

    EXPECT_FALSE(slot->CheckAdIsValid(list.get()));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Ad type unmatch, adType_local = 2, adType_svr = 3, "
                                               "adPosition_local = 42, adPosition_svr = 7")));
    EXPECT_EQ(list->GetAdList()->size(), 1);
}

TEST_F(AdControllerValidityTest, AnotherPositionIsRefusedAheadOfAnEmptyList) {
    Json::Value data = PopupData();
    data["ad_position"] = -42;
    list.reset(ListOf(data));

    EXPECT_FALSE(slot->CheckAdIsValid(list.get()));

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Error("[Ad] Ad position unmatch, adType = 2, adPosition_svr = -42, adPosition_local = 42")));
}

TEST_F(AdControllerValidityTest, AListWithoutAdsIsRefused) {
    Json::Value noKey = PopupData();
    noKey.removeMember("ad");
    for (const Json::Value& data : {PopupData(), noKey}) {
        list.reset(ListOf(data));
        EXPECT_FALSE(slot->CheckAdIsValid(list.get()));
        EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Ad list is empty, adType = 2, adPosition = 42")));
        log.Forget();
    }
}

// The windows

TEST_F(AdControllerValidityTest, TheMomentItselfIsInTimeOnEachSide) {
    EXPECT_TRUE(slot->CheckAdIsValid(ListOfWindows({{kNow, kNow, kNow}})));
    time.SetServerTime(kNow * 1000 + 999);
    EXPECT_TRUE(slot->CheckAdIsValid(list.get()));

    EXPECT_EQ(Ids(list.get()), "1");
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdControllerValidityTest, AnAdThatHasNotBegunIsTakenOut) {
    EXPECT_FALSE(slot->CheckAdIsValid(ListOfWindows({{201, 300, 400}})));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] CurrentTime < startTime, currentTime = 200, startTime = 201, adType = 2, "
                                  "adPosition = 42, remove adId = 1"),
                            Error("[Ad] Ad list has no valid ad. adType = 2, adPosition = 42")));
    EXPECT_THAT(*list->GetAdList(), IsEmpty());
}

TEST_F(AdControllerValidityTest, AnAdThatHasEndedIsTakenOut) {
    EXPECT_FALSE(slot->CheckAdIsValid(ListOfWindows({{100, 199, 400}})));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] CurrentTime > endTime, currentTime = 200, endTime = 199, adType = 2, "
                                  "adPosition = 42, remove adId = 1"),
                            Error("[Ad] Ad list has no valid ad. adType = 2, adPosition = 42")));
}

TEST_F(AdControllerValidityTest, AnAdWhoseEndIsBehindItsExpiryIsTakenOutAtTheExpiry) {
    EXPECT_FALSE(slot->CheckAdIsValid(ListOfWindows({{100, 300, 199}})));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] CurrentTime > expireTime, currentTime = 200, expireTime = 199, adType = 2, "
                                  "adPosition = 42, remove adId = 1"),
                            Error("[Ad] Ad list has no valid ad. adType = 2, adPosition = 42")));
}

TEST_F(AdControllerValidityTest, TheFirstTestThatFailsNamesTheReason) {
    EXPECT_FALSE(slot->CheckAdIsValid(ListOfWindows({{201, 199, 199}, {100, 199, 199}})));

    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("[Ad] CurrentTime < startTime, ")),
                                         Error(StartsWith("[Ad] CurrentTime > endTime, ")), Error(_)));
}

TEST_F(AdControllerValidityTest, WhatIsLeftKeepsItsOrderAndWhatIsTakenOutStaysTheListsChild) {
    const qint64 never = std::numeric_limits<qint64>::min();
    const qint64 always = std::numeric_limits<qint64>::max();
    ListOfWindows(
        {{100, 300, 400}, {300, 400, 400}, {never, always, always}, {100, 150, 400}, {200, 200, 400}, {100, 300, 150}});
    const QPointer<CZRAdModel> removed = list->GetAdList()->at(1);

    EXPECT_TRUE(slot->CheckAdIsValid(list.get()));

    EXPECT_EQ(Ids(list.get()), "1 3 5");
    EXPECT_THAT(log.Lines(), ElementsAre(Error(EndsWith("remove adId = 2")), Error(EndsWith("remove adId = 4")),
                                         Error(EndsWith("remove adId = 6"))));
    ASSERT_TRUE(removed);
    EXPECT_EQ(removed->parent(), list.get());
    EXPECT_THAT(list->findChildren<CZRAdModel*>(QString(), Qt::FindDirectChildrenOnly), SizeIs(6));
    list.reset();
    EXPECT_TRUE(removed.isNull());
}

TEST_F(AdControllerValidityTest, TheClockIsReadInSecondsOfTheServer) {
    ListOfWindows({{100, 300, 400}});
    time.SetServerTime(99'999);
    EXPECT_FALSE(slot->CheckAdIsValid(list.get()));
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("currentTime = 99, startTime = 100"))));
}

TEST_F(AdControllerValidityTest, ABannerSlotNamesItsOwnTypeAndPositionInEachLine) {
    slot = std::make_unique<CAdSlot>(ZRAdTypeBanner, 7);
    Json::Value data = BannerData();
    for (const char* id : {"1", "2", "3"}) {
        data["ad"].append(BannerAd(id));
    }
    data["ad"][0]["start_time"] = 201;
    data["ad"][1]["end_time"] = 199;
    data["ad"][2]["expire_time"] = 199;
    list.reset(ListOf(data));
    Json::Value elsewhere = BannerData();
    elsewhere["ad_position"] = 8;
    const std::unique_ptr<CZRAdModelList> foreign(ListOf(elsewhere));
    const std::unique_ptr<CZRAdModelList> popups(Popups({"1"}));

    EXPECT_FALSE(slot->CheckAdIsValid(nullptr));
    EXPECT_FALSE(slot->CheckAdIsValid(popups.get()));
    EXPECT_FALSE(slot->CheckAdIsValid(foreign.get()));
    EXPECT_FALSE(slot->CheckAdIsValid(list.get()));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] adModelList is null, m_adType = 3, adPosition = 7"),
                            Error("[Ad] Ad type unmatch, adType_local = 3, adType_svr = 2, adPosition_local = 7, "
                                  "adPosition_svr = 42"),
                            Error("[Ad] Ad position unmatch, adType = 3, adPosition_svr = 8, adPosition_local = 7"),
                            Error("[Ad] CurrentTime < startTime, currentTime = 200, startTime = 201, adType = 3, "
                                  "adPosition = 7, remove adId = 1"),
                            Error("[Ad] CurrentTime > endTime, currentTime = 200, endTime = 199, adType = 3, "
                                  "adPosition = 7, remove adId = 2"),
                            Error("[Ad] CurrentTime > expireTime, currentTime = 200, expireTime = 199, adType = 3, "
                                  "adPosition = 7, remove adId = 3"),
                            Error("[Ad] Ad list has no valid ad. adType = 3, adPosition = 7")));
}

// The list

TEST_F(AdControllerValidityTest, ANewListDestroysTheStoredOneAtOnce) {
    const QPointer<CZRAdModelList> first = Popups({"1"});
    slot->SetAdModelList(first);
    auto* second = Popups({"2"});

    slot->SetAdModelList(second);

    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(slot->GetAdModelList(), second);
}

TEST_F(AdControllerValidityTest, TheStoredListItselfStays) {
    const QPointer<CZRAdModelList> stored = Popups({"1"});
    slot->SetAdModelList(stored);

    slot->SetAdModelList(stored);

    ASSERT_TRUE(stored);
    EXPECT_EQ(slot->GetAdModelList(), stored);
    EXPECT_EQ(Ids(stored), "1");
}

TEST_F(AdControllerValidityTest, NoListTakesTheStoredOnesPlace) {
    const QPointer<CZRAdModelList> stored = Popups({"1"});
    slot->SetAdModelList(stored);

    slot->SetAdModelList(nullptr);

    EXPECT_TRUE(stored.isNull());
    EXPECT_EQ(slot->GetAdModelList(), nullptr);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdControllerValidityTest, TheStoredListGoesWithTheSlot) {
    const QPointer<CZRAdModelList> stored = Popups({"1"});
    slot->SetAdModelList(stored);

    slot.reset();

    EXPECT_TRUE(stored.isNull());
}

TEST_F(AdControllerValidityTest, IdsAreReadOffAListThatMayBeAbsentOrEmpty) {
    EXPECT_EQ(CAdSlot::GetFirstAdIdFromDataModel(nullptr), QString());
    EXPECT_THAT(CAdSlot::GetAllAdIdFromDataModel(nullptr), IsEmpty());

    CZRAdModelList undecoded(nullptr);
    EXPECT_EQ(CAdSlot::GetFirstAdIdFromDataModel(&undecoded), QString());
    EXPECT_THAT(CAdSlot::GetAllAdIdFromDataModel(&undecoded), IsEmpty());

    list.reset(Popups({}));
    EXPECT_EQ(CAdSlot::GetFirstAdIdFromDataModel(list.get()), QString());
    EXPECT_THAT(CAdSlot::GetAllAdIdFromDataModel(list.get()), IsEmpty());

    list.reset(Popups({"3", "1", "2"}));
    EXPECT_EQ(CAdSlot::GetFirstAdIdFromDataModel(list.get()), QStringLiteral("3"));
    EXPECT_EQ(Ids(list.get()), "3 1 2");

    list.reset(Popups({" 3  1 "}));
    EXPECT_EQ(CAdSlot::GetFirstAdIdFromDataModel(list.get()), QStringLiteral(" 3  1 "));
}

TEST_F(AdControllerValidityTest, TheKeyOfTheLastShowIsPerTypePositionUserAndIntervalType) {
    EXPECT_EQ(slot->GetAdLastShowTimeStampKey(42, 1), QStringLiteral("AdLastShowTimeStampKey_2_42_0_1"));

    account.Set(std::numeric_limits<uint64_t>::max());
    slot->m_adType = ZRAdTypeBanner;
    EXPECT_EQ(slot->GetAdLastShowTimeStampKey(-7, -1),
              QStringLiteral("AdLastShowTimeStampKey_3_-7_18446744073709551615_-1"));
}

TEST_F(AdControllerValidityTest, EightTabsAreAreasAndNoOtherIs) {
    const std::map<int64_t, int> areas = {{20001, 500}, {20002, 501}, {20003, 502}, {20004, 504},
                                          {20005, 507}, {20013, 505}, {20017, 503}, {20018, 506}};
    std::map<int64_t, int> found;
    for (int64_t key = 19'990; key < 20'030; ++key) {
        if (const int area = CZRAdController::ConvertTabFrameKeyToShowAreaType(EnZRTabFrameKey(key))) {
            found[key] = area;
        }
    }
    EXPECT_EQ(found, areas);
    for (const int64_t key : {int64_t(0), int64_t(-1), int64_t(-20001), 20001 + (int64_t(1) << 32)}) {
        EXPECT_EQ(CZRAdController::ConvertTabFrameKeyToShowAreaType(EnZRTabFrameKey(key)), 0) << key;
    }
}

}  // namespace
