// The server's three pushes.
#include <json/reader.h>

#include "Ad/AdManagerTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class AdPushTest : public AdManagerTest {
protected:
    AdPushTest() {
        environment.SetRelease(false);
        Start();
    }

    std::string Body() { return http.Started().empty() ? "" : http.Started().back().request.m_strBody; }
};

// New ads

TEST_F(AdPushTest, NewAdsAreSearchedForWhenTheDelayIsOver) {
    channel.Push(20171, AdPush(2, 42, 5));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AdPush callback,receive cmd 20171, adType = 2, adPosition = 42, "
                                              "delay = 5")));
    EXPECT_THAT(poster.Delays(), ElementsAre(5000));
    time.Advance(4'999ms);
    EXPECT_THAT(http.Started(), IsEmpty());
    time.Advance(1ms);

    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
    EXPECT_THAT(Body(), Not(HasSubstr("\"ad_id\"")));
}

TEST_F(AdPushTest, ADelayOfNothingIsStillLater) {
    channel.Push(20171, AdPush(2, 42, 0));

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(0));
    time.Settle();
    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
}

class AdPushDelayTest : public AdPushTest, public WithParamInterface<int> {
protected:
    void Push(uint32_t delay) {
        switch (GetParam()) {
            case 20145:
                channel.Push(20145, StatusPush(2, 42, delay, {}));
                break;
            case 20170:
                channel.Push(20170, CheckPush(2, 42, delay, {"8"}));
                break;
            default:
                channel.Push(20171, AdPush(2, 42, delay));
                break;
        }
    }
};

TEST_P(AdPushDelayTest, IsCountedIn32Bits) {
    Push(4294968);  // 4294968000 milliseconds are 704 beyond

    EXPECT_THAT(poster.Delays(), ElementsAre(704));
    time.Advance(703ms);
    EXPECT_THAT(http.Started(), IsEmpty());
    time.Advance(1ms);
    EXPECT_THAT(http.Started(), SizeIs(1));
}

TEST_P(AdPushDelayTest, ThatIsNegativeAsANumberOfMillisecondsIsLaterAndAtOnce) {
    Push(2147484);

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(0));
    time.Settle();
    EXPECT_THAT(http.Started(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Commands, AdPushDelayTest, Values(20145, 20170, 20171),
                         [](const TestParamInfo<int>& row) { return std::to_string(row.param); });

TEST_F(AdPushTest, ARequestWithinTheLimitIsRefusedWhenTheDelayIsOver) {
    bus.HostSend(10650);
    Forget();
    channel.Push(20171, AdPush(2, 42, 5));

    time.Advance(5s);

    EXPECT_THAT(http.Started(), IsEmpty());
    ASSERT_THAT(reports.Names(), ElementsAre("SingleAdvertisementPullDataResult"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("result_code":"1001")"));
}

TEST_F(AdPushTest, OtherTypesAndPositionsAskForNothing) {
    channel.Push(20171, AdPush(3, 42, 0));
    channel.Push(20171, AdPush(2, 7, 0));
    channel.Push(20145, StatusPush(3, 42, 0, {}));
    channel.Push(20145, StatusPush(2, 7, 0, {}));
    channel.Push(20170, CheckPush(3, 42, 0, {"1"}));
    channel.Push(20170, CheckPush(2, 7, 0, {"1"}));
    channel.Push(20171, ads_service::AdPush());
    time.Settle();

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), SizeIs(7));
    EXPECT_THAT(log.Lines().back(),
                Info("[Ad] AdPush callback,receive cmd 20171, adType = 0, adPosition = 0, delay = 0"));
}

TEST_F(AdPushTest, PushRequestsNothingWhenTypeOrPositionIsNotThePopups) {
    for (const uint32_t type : {0u, 1u, 4u}) {
        channel.Push(20171, AdPush(type, 42, 0));
    }
    for (const uint32_t position : {0u, 41u, 43u}) {
        channel.Push(20171, AdPush(2, position, 0));
    }
    time.Settle();

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), SizeIs(6));
    log.Forget();
}

TEST_F(AdPushTest, IdsAreReadAsUtf8WhenAPushCarriesThem) {
    channel.Push(20145, StatusPush(3, 7, 0, {"秋", "é"}));
    channel.Push(20170, CheckPush(2, 42, 0, {"秋"}));
    time.Settle();

    ASSERT_THAT(http.Started(), SizeIs(1));
    Json::Value body;
    ASSERT_TRUE(Json::Reader().parse(Body(), body));
    EXPECT_EQ(body["ad_id"][0].asString(), "秋");
    EXPECT_THAT(Texts(), AllOf(HasSubstr("offlineAdId = 秋,é, delay = 0\n"), HasSubstr("adId = 秋, delay = 0\n")));
    log.Forget();
}

TEST_F(AdPushTest, NewAdsWithAnErrorAreLoggedAndDropped) {
    channel.PushWith(20171, CSProtoError(-3), Data(20171, AdPush(2, 42, 0)));
    channel.PushWith(20171, kCSProtoOk, Data(20145, AdPush(2, 42, 0)));
    channel.Push(20171, std::string("\xff\xff"));
    time.Settle();

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] AdPush callback, receive cmd error, error = -3, cmd = 20171"),
                                         Error("[Ad] AdPush callback, receive cmd error, error = 0, cmd = 20145"),
                                         Error("[Ad] AdPush callback, receive 20171, adPush parse failed")));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

// Withdrawn ads

TEST_F(AdPushTest, WithdrawnAdsGoAtOnceAndTheRefillWaits) {
    ShowByAnswer();
    poster.Forget();

    channel.Push(20145, StatusPush(2, 42, 20, {"7", "18088"}));

    time.Settle();
    EXPECT_EQ(Card(), nullptr);
    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
    EXPECT_THAT(log.Lines().front(), Info("[Ad] AdStatusChangedPush callback,receive cmd 20145, adType = 2, "
                                          "adPosition = 42, offlineAdId = 7,18088, delay = 20"));
    EXPECT_THAT(Texts(), HasSubstr("[Ad] Closed ad by push offline. adType = 2, adPosition = 42, adId = 18088\n"));
    EXPECT_THAT(poster.Delays(), ElementsAre(20'000));
    EXPECT_THAT(Paths(), ElementsAre("/ad/expose"));
    Forget();

    time.Advance(20s);
    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
    Forget();
}

TEST_F(AdPushTest, AWithdrawalTakesPlaceBeforeTheRefillIsPosted) {
    ShowByAnswer();
    poster.Forget();
    std::vector<int64_t> postedBefore{-1};
    QObject::connect(Popup()->GetAdModelList(), &QObject::destroyed, manager.get(),
                     [&] { postedBefore = poster.Delays(); });

    channel.Push(20145, StatusPush(2, 42, 20, {"18088"}));

    EXPECT_THAT(postedBefore, IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(20'000));
    Forget();
}

TEST_F(AdPushTest, AWithdrawalForAnotherSlotReachesThePopupAllTheSame) {
    ShowByAnswer();

    channel.Push(20145, StatusPush(3, 7, 0, {"18088"}));

    time.Settle();
    EXPECT_EQ(Card(), nullptr);
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_THAT(Paths(), ElementsAre("/ad/expose"));
    log.Forget();
    time.Advance(1h);
    EXPECT_THAT(Paths(), ElementsAre("/ad/expose"));
}

TEST_F(AdPushTest, AWithdrawalOfNothingOnlyRefills) {
    ShowByAnswer();
    time.Advance(10s);
    log.Forget();

    channel.Push(20145, StatusPush(2, 42, 0, {}));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AdStatusChangedPush callback,receive cmd 20145, adType = 2, "
                                              "adPosition = 42, offlineAdId = , delay = 0")));
    EXPECT_TRUE(Card() && Card()->isVisible());
    time.Settle();
    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
}

TEST_F(AdPushTest, AWithdrawalWithAnErrorSaysTheOtherPushsNameAndWithdrawsNothing) {
    ShowByAnswer();

    channel.PushWith(20145, CSProtoError(5), Data(20145, StatusPush(2, 42, 0, {"18088"})));
    channel.PushWith(20145, kCSProtoOk, Data(20170, StatusPush(2, 42, 0, {"18088"})));
    channel.Push(20145, std::string("\xff\xff"));
    time.Settle();

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] AdCheckPush callback, receive cmd error, error = 5, cmd = 20145"),
                                         Error("[Ad] AdCheckPush callback, receive cmd error, error = 0, cmd = 20170"),
                                         Error("[Ad] AdStatusChangedPush callback, receive cmd 20145, adPush parse "
                                               "failed")));
    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_THAT(http.Started(), IsEmpty());
}

// Ads to be looked at

TEST_F(AdPushTest, AdsToBeLookedAtAreAskedForByTheirIds) {
    channel.Push(20170, CheckPush(2, 42, 3, {"8", "9"}));

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AdCheckPush callback,receive cmd 20170, adType = 2, "
                                              "adPosition = 42, adId = 8,9, delay = 3")));
    EXPECT_THAT(poster.Delays(), ElementsAre(3000));
    time.Advance(3s);

    EXPECT_THAT(Paths(), ElementsAre("/ad/check"));
    EXPECT_THAT(Body(), HasSubstr("\"ad_id\" : \n\t[\n\t\t\"8\",\n\t\t\"9\"\n\t],"));
}

TEST_F(AdPushTest, AdsToBeLookedAtWithAnErrorAreLoggedAndDropped) {
    channel.PushWith(20170, CSProtoError(-1), Data(20170, CheckPush(2, 42, 0, {"8"})));
    channel.PushWith(20170, kCSProtoOk, Data(20171, CheckPush(2, 42, 0, {"8"})));
    channel.Push(20170, std::string("\xff\xff"));
    time.Settle();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] AdCheckPush callback, receive cmd error, error = -1, cmd = 20170"),
                            Error("[Ad] AdCheckPush callback, receive cmd error, error = 0, cmd = 20171"),
                            Error("[Ad] AdCheckPush callback, receive cmd 20170, adCheckPush parse failed")));
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdPushTest, AReleaseDoesNotHandleACheckEvenIfItComes) {
    environment.SetRelease(true);

    channel.Push(20170, CheckPush(2, 42, 0, {"8"}));
    channel.PushWith(20170, CSProtoError(-1), Data(7, CheckPush(2, 42, 0, {"8"})));
    time.Settle();

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] AdCheckPush callback, receive cmd 20170, release donot handle"),
                                         Error("[Ad] AdCheckPush callback, receive cmd 7, release donot handle")));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

TEST_F(AdPushTest, InAReleaseTheCheckHasNoEffectAtAll) {
    environment.SetRelease(true);
    manager = std::make_unique<CZRAdManager>();
    Start();

    channel.Push(20170, CheckPush(2, 42, 0, {"8"}));
    time.Settle();

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

// The end

TEST_F(AdPushTest, WhatIsPostedStillRunsAfterTheEnd) {
    channel.Push(20171, AdPush(2, 42, 5));

    manager->UnInit();
    time.Advance(5s);

    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
}

TEST_F(AdPushTest, WhatIsPostedDiesWithTheManager) {
    channel.Push(20171, AdPush(2, 42, 5));

    manager.reset();
    time.Advance(5s);

    EXPECT_THAT(http.Started(), IsEmpty());
}

}  // namespace
