// How often a slot asks, and what becomes of the answers.
#include <QPointer>

#include "Ad/AdSlotTest.h"
#include "Ad/MethodsOf.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "Ad/Tools/ZRAdQualityMonitoringReporter.h"
#include "Ad/Tools/ZRAdReporter.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const char* const kTooOften = R"({"advertisement_type":"2","error_content":"请求过于频繁，未正常发起网络请求",)"
                              R"("request_time":0,"result_code":"1001"})";

class AdControllerRequestTest : public AdSlotTest {
protected:
    /// Whether a request leaves at that millisecond of the server's time.
    bool LeavesAt(int64_t millis) {
        time.SetServerTime(millis);
        Forget();
        Search();
        const bool left = !http.Started().empty();
        EXPECT_EQ(reports.Events().empty(), left);
        Forget();
        return left;
    }
};

// The limit

TEST_F(AdControllerRequestTest, ARequestLeavesWithTheSlotsTypeAndTheArgumentsPosition) {
    slot->RequestAd(ZRAdApiTypeCheck, 7, {QStringLiteral("1")});

    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(http.Started()[0].request.m_strUrl, "https://ads.test/ad/check");
    EXPECT_EQ(http.Started()[0].request.m_strBody,
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"1\"\n\t],\n\t\"ad_position\" : 7,\n\t\"ad_type\" : 2,\n"
              "\t\"request_id\" : \"dev20011\"\n}\n");
    EXPECT_EQ(slot->GetAdRequestId(), QStringLiteral("dev20011"));
    EXPECT_EQ(slot->m_lastRequestTimeStamp, 200);
    EXPECT_EQ(slot->GetAdPosition(), 42);
}

TEST_F(AdControllerRequestTest, TheNextMayLeaveAfterTenWholeSecondsOfTheServer) {
    EXPECT_TRUE(LeavesAt(100'000));
    EXPECT_FALSE(LeavesAt(100'000));
    EXPECT_FALSE(LeavesAt(109'000));
    EXPECT_FALSE(LeavesAt(109'999));
    EXPECT_TRUE(LeavesAt(110'000));
}

TEST_F(AdControllerRequestTest, TheSecondsAreCountedAndNotTheMilliseconds) {
    EXPECT_TRUE(LeavesAt(100'999));
    EXPECT_TRUE(LeavesAt(110'000));
}

TEST_F(AdControllerRequestTest, TheFirstRequestOfAnyClockOfOurDaysLeaves) {
    EXPECT_EQ(slot->m_lastRequestTimeStamp, 0);
    EXPECT_TRUE(LeavesAt(10'000));
}

TEST_F(AdControllerRequestTest, ARefusalIsLoggedAndReportedAndChangesNothing) {
    Search();
    Forget();
    time.Advance(9s);

    slot->RequestAd(ZRAdApiTypeSearch, 7, {QStringLiteral("1")});

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(reports.Events(), ElementsAre(PullResult(kTooOften)));
    const auto lines = log.Lines();
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines[0], Info("[Ad] Request ad limited. currentTimeStamp = 209, lastRequestTimeStamp = 200, "
                               "requestInterval = 10, adType = 2, adPosition = 7"));
    EXPECT_EQ(lines[0].function, "RequestAd");
    EXPECT_EQ(lines[0].file, "ZRGrowth/Ad/Controller/ZRAdController");
    EXPECT_EQ(lines[0].module, "ZRGrowth");
    EXPECT_THAT(lines[1], Info(StartsWith("[Ad] Report SingleAdvertisementPullDataResult success, ")));
    EXPECT_EQ(slot->GetAdRequestId(), QStringLiteral("dev20011"));
    EXPECT_EQ(slot->m_lastRequestTimeStamp, 200);
}

TEST_F(AdControllerRequestTest, WhatIsRefusedDoesNotProlongTheWait) {
    EXPECT_TRUE(LeavesAt(100'000));
    EXPECT_FALSE(LeavesAt(109'000));
    EXPECT_TRUE(LeavesAt(110'000));
    EXPECT_FALSE(LeavesAt(119'000));
    EXPECT_TRUE(LeavesAt(120'000));
}

TEST_F(AdControllerRequestTest, AClockThatWentBackRefusesUntilItHasCaughtUp) {
    EXPECT_TRUE(LeavesAt(100'000));
    EXPECT_FALSE(LeavesAt(99'000));
    EXPECT_FALSE(LeavesAt(50'000));
    EXPECT_FALSE(LeavesAt(-50'000));
    EXPECT_TRUE(LeavesAt(110'000));
}

TEST_F(AdControllerRequestTest, ARequestThatCouldNotBeStartedCountsAndIsNotReported) {
    http.RefuseStarts(Failing::Nth(1));

    Search();
    time.Settle();

    EXPECT_THAT(http.Started(), SizeIs(1));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Info(_), Error(HasSubstr("requestTaskId = 0"))));
    EXPECT_FALSE(LeavesAt(209'000));
    EXPECT_TRUE(LeavesAt(210'000));
}

TEST_F(AdControllerRequestTest, EachSlotHasItsOwnLimit) {
    CAdSlot other(ZRAdTypeBanner, 7);
    Search();
    other.RequestAd(ZRAdApiTypeSearch, 7, {});
    EXPECT_THAT(http.Started(), SizeIs(2));
    time.Advance(5s);
    CAdSlot third(ZRAdTypePopup, 42);
    third.RequestAd(ZRAdApiTypeSearch, 42, {});
    EXPECT_THAT(http.Started(), SizeIs(3));

    time.Advance(5s);
    Forget();
    Search();
    third.RequestAd(ZRAdApiTypeSearch, 42, {});

    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(slot->GetAdRequestId(), QStringLiteral("dev21044"));
    EXPECT_THAT(reports.Names(), SizeIs(1));
}

// A good answer

TEST_F(AdControllerRequestTest, AGoodAnswerIsReportedStoredAndShown) {
    Search();
    const unsigned long task = http.LastTask();
    log.Forget();
    time.Advance(120ms);

    http.Answer(task, AnswerOf(PopupsData({"1", "2"})).toStyledString());
    EXPECT_EQ(slot->GetAdModelList(), nullptr);  // it comes over the queue
    time.Settle();

    EXPECT_EQ(Ids(slot->GetAdModelList()), "1 2");
    EXPECT_EQ(slot->GetAdModelList()->parent(), nullptr);
    EXPECT_THAT(slot->calls, ElementsAre("ask about the stored list", "show the stored list"));
    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{"SendAdRequest", 3,
                                          R"({"advertisement_ids":["1","2"],"advertisement_position":"42",)"
                                          R"("request_id":"dev20011"})",
                                          0, false},
                            PullResult(R"({"advertisement_ids":["1","2"],"advertisement_type":"2","error_content":"",)"
                                       R"("request_time":120,"result_code":"0"})")));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Request ad succeed, ")),
                                         Info(StartsWith("[Ad] Report SendAdRequest success, ")),
                                         Info(StartsWith("[Ad] Report SingleAdvertisementPullDataResult success, "))));
}

TEST_F(AdControllerRequestTest, TheSlotHearsOfAnAnswerBehindAllThatListenAtOnce) {
    bool told = false;
    bool storedByThen = true;
    QObject::connect(slot->m_adApiClient, &CZRAdApiClient::RequestAdSucceeded, [&] {
        told = true;
        storedByThen = slot->GetAdModelList() != nullptr;
    });
    Search();

    http.Answer(http.LastTask(), PopupAnswer().toStyledString());
    time.Settle();

    EXPECT_TRUE(told);
    EXPECT_FALSE(storedByThen);
    EXPECT_TRUE(slot->GetAdModelList());
    reports.Forget();
}

TEST_F(AdControllerRequestTest, AListThatMayNotBeShownNowWaits) {
    slot->canShow = false;
    auto* list = Popups({"1"});

    slot->OnRequestAdSucceeded(list, 0);

    EXPECT_EQ(slot->GetAdModelList(), list);
    EXPECT_THAT(slot->calls, ElementsAre("ask about the stored list"));
    reports.Forget();
}

TEST_F(AdControllerRequestTest, ANewListTakesTheOldOnesPlaceWhileItsAdIsOnScreen) {
    const QPointer<CZRAdModelList> old = Popups({"1"});
    slot->OnRequestAdSucceeded(old, 0);
    slot->m_adId = QStringLiteral("1");
    slot->m_pushId = QStringLiteral("p-1");

    slot->OnRequestAdSucceeded(Popups({"2"}), 0);

    EXPECT_TRUE(old.isNull());
    EXPECT_EQ(Ids(slot->GetAdModelList()), "2");
    EXPECT_EQ(slot->m_adId, QStringLiteral("1"));
    EXPECT_EQ(slot->m_pushId, QStringLiteral("p-1"));
    reports.Forget();
}

TEST_F(AdControllerRequestTest, WithoutAListNothingHappens) {
    slot->OnRequestAdSucceeded(nullptr, 5);

    EXPECT_THAT(slot->calls, IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

// An answer that is no use

TEST_F(AdControllerRequestTest, AnAnswerForAnotherPositionIsCountedAndThenRefused) {
    auto* stored = Popups({"1"});
    slot->SetAdModelList(stored);
    slot->m_adId = QStringLiteral("1");
    Json::Value data = PopupsData({"9"});
    data["ad_position"] = 7;
    const QPointer<CZRAdModelList> foreign = ListOf(data);

    slot->OnRequestAdSucceeded(foreign, 5);

    EXPECT_TRUE(foreign.isNull());
    EXPECT_EQ(slot->GetAdModelList(), stored);
    EXPECT_EQ(slot->m_adId, QStringLiteral("1"));
    EXPECT_THAT(slot->calls, IsEmpty());
    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{"SendAdRequest", 3,
                                          R"({"advertisement_ids":["9"],"advertisement_position":"7","request_id":""})",
                                          0, false},
                            PullResult(R"({"advertisement_ids":["9"],"advertisement_type":"2","error_content":"",)"
                                       R"("request_time":5,"result_code":"0"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info(StartsWith("[Ad] Report SendAdRequest success, ")),
                            Info(StartsWith("[Ad] Report SingleAdvertisementPullDataResult success, ")),
                            Error("[Ad] Ad position unmatch, adType = 2, adPosition_svr = 7, adPosition_local = 42")));
}

TEST_F(AdControllerRequestTest, AnAnswerWithoutAdsIsReportedAsSuch) {
    Json::Value noKey = PopupData();
    noKey.removeMember("ad");
    for (const Json::Value& data : {PopupData(), noKey}) {
        const QPointer<CZRAdModelList> empty = ListOf(data);
        slot->OnRequestAdSucceeded(empty, 8);

        EXPECT_TRUE(empty.isNull());
        EXPECT_THAT(
            reports.Events(),
            ElementsAre(
                ReportedEvent{"SendAdRequest", 3,
                              R"({"advertisement_ids":[],"advertisement_position":"42","request_id":""})", 0, false},
                PullResult(R"({"advertisement_type":"2","error_content":"请求成功，但是无数据",)"
                           R"("request_time":8,"result_code":"1"})")));
        EXPECT_THAT(log.Lines().back(), Error("[Ad] Ad list is empty, adType = 2, adPosition = 42"));
        Forget();
    }
}

TEST_F(AdControllerRequestTest, AllIdsAreReportedThoughSomeAreOutOfDate) {
    Json::Value data = PopupsData({"1", "2"});
    data["ad"][0]["end_time"] = 199;
    slot->OnRequestAdSucceeded(ListOf(data), 0);

    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"(["1","2"])"));
    EXPECT_THAT(reports.Events()[1].params, HasSubstr(R"(["1","2"])"));
    EXPECT_EQ(Ids(slot->GetAdModelList()), "2");
    log.Forget();
}

TEST_F(AdControllerRequestTest, ALengthIsReportedAsItIsWithItsSignAndBeyond32Bits) {
    for (const auto& ids : {std::vector<std::string>{}, std::vector<std::string>{"1"}}) {
        for (const long long millis : {-5'000LL, 5'000'000'000LL}) {
            slot->OnRequestAdSucceeded(Popups(ids), millis);
            EXPECT_THAT(reports.Events().back().params, HasSubstr("\"request_time\":" + std::to_string(millis) + ","));
            Forget();
        }
    }
    for (const long long millis : {-5'000LL, 5'000'000'000LL}) {
        slot->OnRequestAdFailed(QStringLiteral("1005"), QStringLiteral("no"), millis);
        EXPECT_THAT(reports.Events().back().params, HasSubstr("\"request_time\":" + std::to_string(millis) + ","));
    }
}

TEST_F(AdControllerRequestTest, AFailureIsReportedAndTheStoredListStays) {
    auto* stored = Popups({"1"});
    slot->SetAdModelList(stored);
    Search();
    const unsigned long task = http.LastTask();
    log.Forget();
    time.Advance(10s);

    http.Fail(task, kHttpTimedOut);
    EXPECT_THAT(reports.Events(), IsEmpty());
    time.Settle();

    EXPECT_THAT(reports.Events(),
                ElementsAre(PullResult(R"({"advertisement_type":"2",)"
                                       R"("error_content":"Result = 3, HttpStatusCode = 0","request_time":10000,)"
                                       R"("result_code":"1005"})")));
    EXPECT_EQ(slot->GetAdModelList(), stored);
    EXPECT_THAT(slot->calls, IsEmpty());
    EXPECT_THAT(http.Started(), SizeIs(1));  // nothing is tried again
    log.Forget();
}

TEST_F(AdControllerRequestTest, ARefusalOfTheServerIsReportedWithItsCode) {
    Search();
    Json::Value answer = PopupAnswer();
    answer["code"] = 12;

    http.Answer(http.LastTask(), answer.toStyledString());
    time.Settle();

    EXPECT_THAT(reports.Events(),
                ElementsAre(PullResult(R"({"advertisement_type":"2","error_content":"response code is 12",)"
                                       R"("request_time":0,"result_code":"2001"})")));
    log.Forget();
}

TEST_F(AdControllerRequestTest, TheReportGoesByTheClientsLatestRequest) {
    Search();
    const unsigned long task = http.LastTask();
    http.Answer(task, PopupAnswer().toStyledString());
    slot->m_adApiClient->RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});
    time.Settle();

    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("request_id":"dev20022")"));
    http.Forget();
}

// A slot of another type

TEST_F(AdControllerRequestTest, ABannerSlotReportsItsRequestsUnderItsOwnTypeAndPosition) {
    slot = std::make_unique<CAdSlot>(ZRAdTypeBanner, 7);
    Json::Value good = BannerData();
    good["ad"].append(BannerAd("1"));

    slot->RequestAd(ZRAdApiTypeSearch, 7, {});
    slot->RequestAd(ZRAdApiTypeSearch, 7, {});
    slot->OnRequestAdFailed(QStringLiteral("1005"), QStringLiteral("no"), 1);
    slot->OnRequestAdSucceeded(ListOf(BannerData()), 2);
    slot->OnRequestAdSucceeded(ListOf(good), 3);

    const auto sent = [](const char* ids) {
        return ReportedEvent{
            "SendAdRequest", 3,
            std::string(R"({"advertisement_ids":)") + ids + R"(,"advertisement_position":"7","request_id":"dev20011"})",
            0, false};
    };
    EXPECT_THAT(
        reports.Events(),
        ElementsAre(PullResult(R"({"advertisement_type":"3","error_content":"请求过于频繁，未正常发起网络请求",)"
                               R"("request_time":0,"result_code":"1001"})"),
                    PullResult(R"({"advertisement_type":"3","error_content":"no","request_time":1,)"
                               R"("result_code":"1005"})"),
                    sent("[]"),
                    PullResult(R"({"advertisement_type":"3","error_content":"请求成功，但是无数据",)"
                               R"("request_time":2,"result_code":"1"})"),
                    sent(R"(["1"])"),
                    PullResult(R"({"advertisement_ids":["1"],"advertisement_type":"3","error_content":"",)"
                               R"("request_time":3,"result_code":"0"})")));
    EXPECT_THAT(
        log.Lines(),
        Contains(Info(AllOf(StartsWith("[Ad] Request ad limited. "), EndsWith(", adType = 3, adPosition = 7")))));
    EXPECT_THAT(log.Lines(), Contains(Error("[Ad] Ad list is empty, adType = 3, adPosition = 7")));
    EXPECT_THAT(http.Started(), SizeIs(1));
}

// How it is made

TEST_F(AdControllerRequestTest, AnEmptySlotHasItsThreeHelpersAsChildren) {
    ASSERT_THAT(slot->children(), SizeIs(3));
    EXPECT_EQ(slot->children()[0], slot->m_adReporter);
    EXPECT_EQ(slot->children()[1], slot->m_adQualityMonitoringReporter);
    EXPECT_EQ(slot->children()[2], slot->m_adApiClient);
    EXPECT_EQ(slot->GetAdModelList(), nullptr);
    EXPECT_EQ(slot->m_adId, QString());
    EXPECT_EQ(slot->m_pushId, QString());
    EXPECT_EQ(slot->GetAdRequestId(), QString());
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdControllerRequestTest, TheBaseItselfIsOfNoTypeAndNoPosition) {
    QObject parent;
    auto* base = new CZRAdController(&parent);

    EXPECT_EQ(base->parent(), &parent);
    EXPECT_EQ(base->GetAdPosition(), 0);
    base->RequestAd(ZRAdApiTypeSearch, 1, {});
    EXPECT_THAT(http.Started()[0].request.m_strBody, HasSubstr("\"ad_type\" : 0"));
}

TEST_F(AdControllerRequestTest, TheSlotsStandInTheirOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdController::staticMetaObject),
        ElementsAre("slot OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count, QString adId)",
                    "slot OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count, "
                    "QString adId)",
                    "slot OnAdClicked(bool jumpResult, QString adId)", "slot OnCloseButtonClicked(QString adId)"));
}

TEST_F(AdControllerRequestTest, TheOperationsStandInTheirOrderBehindThoseOfTheToolkit) {
    const std::vector<std::ptrdiff_t> places = {
        PlaceOf(&CAdSlot::disconnectNotify),
        PlaceOf(&CAdSlot::RequestAd),
        PlaceOf(&CAdSlot::ClearAd),
        PlaceOf(&CAdSlot::ShowAd),
        PlaceOf(&CAdSlot::CloseAd),
        PlaceOf(&CAdSlot::OfflineAd),
        PlaceOf(&CAdSlot::GetAdModelList),
        PlaceOf(&CAdSlot::SetAdModelList),
        PlaceOf(&CAdSlot::OnRequestAdSucceeded),
        PlaceOf(&CAdSlot::OnRequestAdFailed),
        PlaceOf(&CAdSlot::OnExposeAdSuccess),
        PlaceOf(&CAdSlot::OnExposeAdFailed),
        PlaceOf(&CAdSlot::CheckAdIsValid),
        PlaceOf(&CAdSlot::CheckCanShowAd),
        PlaceOf(&CAdSlot::ReportSendAdRequest),
        PlaceOf(&CAdSlot::ReportExposeAdStart),
        PlaceOf(&CAdSlot::ReportExposeAdEnd),
        PlaceOf(&CAdSlot::ReportClickAd),
        PlaceOf(&CAdSlot::OnImageLoadSucceeded),
        PlaceOf(&CAdSlot::OnImageLoadFailed),
        PlaceOf(&CAdSlot::OnAdClicked),
        PlaceOf(&CAdSlot::OnCloseButtonClicked),
    };
    for (size_t n = 1; n < places.size(); ++n) {
        EXPECT_EQ(places[n], places[n - 1] + 1) << "operation " << n;
    }
}

}  // namespace
