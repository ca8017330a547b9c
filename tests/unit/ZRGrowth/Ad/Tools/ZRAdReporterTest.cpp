// Reports about an ad, and its open exposures.
#include "Ad/Tools/ZRAdReporter.h"

#include <gmock/gmock.h>

#include "Ad/Tools/ZRAdTools.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const QString kRequest = QStringLiteral("r-1");
const QString kAd = QStringLiteral("18088");

ReportedEvent Event(const char* name, int code, const char* params) {
    return {name, code, params, 0, false};
}

class AdReporterTest : public ScriptedHostTest {
protected:
    void Start(const QString& ad = kAd) {
        reporter.ReportExposeAdStart(kRequest, ad);
        reports.Forget();
        log.Forget();
    }

    CZRAdReporter reporter{nullptr};
};

// Ids

TEST_F(AdReporterTest, ARequestIdIsDeviceSecondsAndChanceWithoutSeparators) {
    environment.SetDeviceId("dev");
    time.SetServerTime(1'700'000'123'999);
    random.WillReturn({42});

    EXPECT_EQ(CZRAdTools::GenerateAdRequestId(), QStringLiteral("dev170000012342"));
}

TEST_F(AdReporterTest, TheChanceOfARequestIdHasNoSign) {
    environment.SetDeviceId("");
    random.WillReturn({0xFFFFFFFF});

    EXPECT_EQ(CZRAdTools::GenerateAdRequestId(), QStringLiteral("17000000004294967295"));
}

TEST_F(AdReporterTest, AReportIdIsDeviceSecondsAndAd) {
    environment.SetDeviceId("dev");
    time.SetServerTime(1'700'000'123'999);

    EXPECT_EQ(CZRAdTools::GenerateAdReportId(kAd), QStringLiteral("dev170000012318088"));
}

// The request

TEST_F(AdReporterTest, ARequestIsReportedWithTheIdsOfItsAnswer) {
    reporter.ReportSendAdRequest(kRequest, 42, {kAd, QStringLiteral("2")});

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(Event("SendAdRequest", 3,
                          R"({"advertisement_ids":["18088","2"],"advertisement_position":"42","request_id":"r-1"})")));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report SendAdRequest success, requestId = r-1, adPosition = 42, "
                                              "adIds = 18088,2")));
}

TEST_F(AdReporterTest, ARequestWithoutAdsIsReportedWithAnEmptyArray) {
    reporter.ReportSendAdRequest(kRequest, -1, {});

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("SendAdRequest", 3,
                                  R"({"advertisement_ids":[],"advertisement_position":"-1","request_id":"r-1"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report SendAdRequest success, requestId = r-1, adPosition = -1, adIds = ")));
}

TEST_F(AdReporterTest, AReportThatTheHostRefusesChangesTheWordOfTheLineAlone) {
    reports.Refuse(Failing::Always());

    reporter.ReportSendAdRequest(kRequest, 42, {kAd});

    EXPECT_THAT(reports.Names(), ElementsAre("SendAdRequest"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report SendAdRequest failed, requestId = r-1, adPosition = 42, "
                                              "adIds = 18088")));
}

// The filter

TEST_F(AdReporterTest, AFilterIsReportedWithItsReasonsAndLoggedWithoutThem) {
    reporter.ReportAdDisplayFilter(kRequest, {kAd}, {QStringLiteral("a"), QStringLiteral("b")});

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(Event("FilterAdDisplay", 1,
                          R"({"advertisement_filter":["a","b"],"advertisement_ids":["18088"],"request_id":"r-1"})")));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report AdDisplayFilter success, requestId = r-1, adIds = 18088,")));
}

TEST_F(AdReporterTest, AFilterOfNothingForNothingHasTwoEmptyArrays) {
    reporter.ReportAdDisplayFilter(kRequest, {}, {});

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("FilterAdDisplay", 1,
                                  R"({"advertisement_filter":[],"advertisement_ids":[],"request_id":"r-1"})")));
}

// The start of an exposure

TEST_F(AdReporterTest, AStartOpensTheExposureStartsTheTimerAndReports) {
    environment.SetDeviceId("dev");
    time.SetServerTime(1'700'000'000'500);

    reporter.ReportExposeAdStart(kRequest, kAd);

    EXPECT_THAT(reports.Started(), ElementsAre("ExposeAd"));
    EXPECT_THAT(
        reports.Events(),
        ElementsAre(Event("StartExposeAd", 1,
                          R"({"advertisement_id":"18088","exposure_id":"dev170000000018088","request_id":"r-1"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ExposeAd start, exposeAdEvent = ExposeAd, adId = 18088,"),
                            Info("[Ad] Report StartExposeAd success, exposeId = dev170000000018088, requestId = r-1, "
                                 "adId = 18088,")));
    EXPECT_EQ(reporter.GetExposeId(kAd), QStringLiteral("dev170000000018088"));
}

TEST_F(AdReporterTest, AStartWithoutAnAdIsRefused) {
    reporter.ReportExposeAdStart(kRequest, QString());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd start failed, adId is empty, requestId = r-1,")));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(reports.Started(), IsEmpty());
}

TEST_F(AdReporterTest, AStartWithoutATimerCarriesOn) {
    reports.GiveNoTimers();
    environment.SetDeviceId("dev");

    reporter.ReportExposeAdStart(kRequest, kAd);

    EXPECT_THAT(reports.Names(), ElementsAre("StartExposeAd"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ExposeAd start failed, exposeAdEvent is null, adId = 18088,"),
                            Info("[Ad] Report StartExposeAd success, exposeId = dev170000000018088, requestId = r-1, "
                                 "adId = 18088,")));
    EXPECT_EQ(reporter.GetExposeId(kAd), QStringLiteral("dev170000000018088"));
}

TEST_F(AdReporterTest, TwoExposuresOfOneAdWithinASecondHaveTheSameId) {
    Start();
    const QString first = reporter.GetExposeId(kAd);
    time.Advance(std::chrono::milliseconds(900));
    Start();

    EXPECT_EQ(reporter.GetExposeId(kAd), first);
}

// The length

TEST_F(AdReporterTest, TheLengthIsTheMillisecondsSinceTheStart) {
    Start();
    time.Advance(std::chrono::milliseconds(1234));

    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 1234);
    EXPECT_EQ(reporter.GetAdExposeDuration(QStringLiteral("other")), 0);
    EXPECT_EQ(reporter.GetAdExposeDuration(QString()), 0);
    EXPECT_EQ(reporter.GetExposeId(QStringLiteral("other")), QString());
    EXPECT_EQ(reporter.GetExposeId(QString()), QString());
}

TEST_F(AdReporterTest, TheLengthIsCountedInMillisecondsFromWithinASecond) {
    time.SetServerTime(1'700'000'000'750);
    Start();
    time.Advance(std::chrono::milliseconds(500));

    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 500);
}

TEST_F(AdReporterTest, TheLengthFollowsTheServersClockWhereverItGoes) {
    time.SetServerTime(1'700'000'010'000);
    Start();

    time.SetServerTime(1'700'000'007'500);
    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), -2'500);

    time.SetServerTime(1'705'000'010'000);
    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 5'000'000'000);
}

// A second start

TEST_F(AdReporterTest, ASecondStartTakesTheFirstOnesId) {
    environment.SetDeviceId("dev");
    Start();
    time.Advance(std::chrono::seconds(5));
    Start();

    EXPECT_EQ(reporter.GetExposeId(kAd), QStringLiteral("dev170000000518088"));
}

TEST_F(AdReporterTest, ASecondStartWithoutATimerForgetsTheFirstOnes) {
    Start();
    reports.GiveNoTimers();
    Start();

    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. ")));
}

// The end

TEST_F(AdReporterTest, AnEndReportsByTheTimerAndForgetsTheExposure) {
    environment.SetDeviceId("dev");
    Start();
    time.Advance(std::chrono::seconds(3));

    reporter.ReportExposeAdEnd(QStringLiteral("r-2"), kAd);

    const ReportedEvent expected{
        "ExposeAd", 1, R"({"advertisement_id":"18088","exposure_id":"dev170000000018088","request_id":"r-2"})", 0,
        true};
    EXPECT_THAT(reports.Events(), ElementsAre(expected));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end success, exposeId = dev170000000018088, "
                                              "requestId = r-2, adId = 18088,")));
    EXPECT_EQ(reporter.GetExposeId(kAd), QString());
    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 0);
}

TEST_F(AdReporterTest, AnEndWithoutAnAdIsRefused) {
    reporter.ReportExposeAdEnd(kRequest, QString());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end failed, adId is empty, requestId = r-1,")));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdReporterTest, AnEndWithoutAStartIsRefused) {
    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. ")));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdReporterTest, AnEndWithoutATimerIsRefusedAndTheExposureStaysOpen) {
    reports.GiveNoTimers();
    Start();

    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. ")));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_NE(reporter.GetExposeId(kAd), QString());
}

TEST_F(AdReporterTest, AnEndThatTheHostRefusesForgetsTheExposureAllTheSame) {
    Start();
    reports.Refuse(Failing::Always());

    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Report ExposeAd end failed, exposeId = "))));
    EXPECT_EQ(reporter.GetExposeId(kAd), QString());
}

TEST_F(AdReporterTest, TwoStartsReportTwiceAndOneEndClosesTheLater) {
    reporter.ReportExposeAdStart(kRequest, kAd);
    time.Advance(std::chrono::seconds(5));
    reporter.ReportExposeAdStart(kRequest, kAd);
    time.Advance(std::chrono::seconds(2));

    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 2000);
    reporter.ReportExposeAdEnd(kRequest, kAd);
    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(reports.Names(), ElementsAre("StartExposeAd", "StartExposeAd", "ExposeAd"));
}

TEST_F(AdReporterTest, ExposuresOfTwoAdsAreApart) {
    Start(QStringLiteral("1"));
    time.Advance(std::chrono::seconds(1));
    Start(QStringLiteral("2"));

    reporter.ReportExposeAdEnd(kRequest, QStringLiteral("1"));

    EXPECT_EQ(reporter.GetExposeId(QStringLiteral("1")), QString());
    EXPECT_NE(reporter.GetExposeId(QStringLiteral("2")), QString());
    reports.Forget();
}

// Actions

TEST_F(AdReporterTest, AnActionThatIsNoClickIsReportedWithoutAnOutcome) {
    environment.SetDeviceId("dev");
    Start();

    for (const int type : {1, 2, 3}) {
        reporter.ReportClickAd(kRequest, ZRAdActionType(type), kAd, true);
    }

    const auto events = reports.Events();
    ASSERT_THAT(events, SizeIs(3));
    for (int type = 1; type <= 3; ++type) {
        EXPECT_EQ(events[size_t(type - 1)].params,
                  R"({"action_id":"dev170000000018088","action_type":")" + std::to_string(type) +
                      R"(","advertisement_id":"18088","exposure_id":"dev170000000018088","request_id":"r-1"})");
    }
}

TEST_F(AdReporterTest, AClickIsReportedWithItsOutcome) {
    environment.SetDeviceId("dev");
    Start();
    time.Advance(std::chrono::seconds(1));

    reporter.ReportClickAd(kRequest, ZRAdActionTypeClick, kAd, true);
    reporter.ReportClickAd(kRequest, ZRAdActionTypeClick, kAd, false);

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ClickAd", 4,
                                  R"({"action_id":"dev170000000118088","action_type":"0","advertisement_id":"18088",)"
                                  R"("exposure_id":"dev170000000018088","request_id":"r-1","result_status":1})"),
                            Event("ClickAd", 4,
                                  R"({"action_id":"dev170000000118088","action_type":"0","advertisement_id":"18088",)"
                                  R"("exposure_id":"dev170000000018088","request_id":"r-1","result_status":0})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ClickAd success, actionId = dev170000000118088, requestId = r-1, "
                                 "actionType = 0, exposeId = dev170000000018088, adId = 18088, jumpResult = true"),
                            Info("[Ad] Report ClickAd success, actionId = dev170000000118088, requestId = r-1, "
                                 "actionType = 0, exposeId = dev170000000018088, adId = 18088, jumpResult = false")));
}

TEST_F(AdReporterTest, AnotherActionHasNoOutcomeInItsReport) {
    environment.SetDeviceId("dev");
    Start();
    time.Advance(std::chrono::seconds(1));

    reporter.ReportClickAd(kRequest, ZRAdActionTypeClose, kAd, true);

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ClickAd", 4,
                                  R"({"action_id":"dev170000000118088","action_type":"2","advertisement_id":"18088",)"
                                  R"("exposure_id":"dev170000000018088","request_id":"r-1"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ClickAd success, actionId = dev170000000118088, requestId = r-1, "
                                 "actionType = 2, exposeId = dev170000000018088, adId = 18088, jumpResult = true")));
}

TEST_F(AdReporterTest, AClickWithoutAnOpenExposureIsNotReported) {
    Start();
    reporter.ReportExposeAdEnd(kRequest, kAd);
    reports.Forget();
    log.Forget();

    reporter.ReportClickAd(kRequest, ZRAdActionTypeClick, kAd, true);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ClickAd failed, exposeId is null. requestId = r-1, "
                                              "actionType = 0, adId = 18088")));
}

}  // namespace
