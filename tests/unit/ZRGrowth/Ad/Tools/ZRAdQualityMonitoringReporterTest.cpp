#include "Ad/Tools/ZRAdQualityMonitoringReporter.h"

#include <gmock/gmock.h>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const QString kAd = QStringLiteral("18088");
const QString kUrl = QStringLiteral("https://pictures.test/card.png");

ReportedEvent Event(const char* name, int code, const char* params) {
    return {name, code, params, 0, false};
}

class AdQualityReporterTest : public ScriptedHostTest {
protected:
    CZRAdQualityMonitoringReporter reporter{nullptr};
};

TEST_F(AdQualityReporterTest, APullIsReportedWithItsAds) {
    reporter.ReportAdPullDataResult(ZRAdTypePopup, QStringLiteral("0"), QString(), 123, {kAd, QStringLiteral("2")});

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("SingleAdvertisementPullDataResult", 2,
                                  R"({"advertisement_ids":["18088","2"],"advertisement_type":"2","error_content":"",)"
                                  R"("request_time":123,"result_code":"0"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report SingleAdvertisementPullDataResult success, adType = 2, resultCode = 0, "
                                 "errorContent = , requestTime = 123, adIdList = 18088,2")));
}

TEST_F(AdQualityReporterTest, APullWithoutAdsHasNoKeyForThem) {
    reporter.ReportAdPullDataResult(ZRAdTypeBanner, QStringLiteral("1005"), QStringLiteral("bad"), -7, {});

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("SingleAdvertisementPullDataResult", 2,
                                  R"({"advertisement_type":"3","error_content":"bad","request_time":-7,)"
                                  R"("result_code":"1005"})")));
}

TEST_F(AdQualityReporterTest, ATimeBeyond32BitsIsReportedWhole) {
    reporter.ReportAdPullDataResult(ZRAdTypeBanner, QStringLiteral("0"), QString(), 5'000'000'000, {kAd});

    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("request_time":5000000000)"));
}

TEST_F(AdQualityReporterTest, AnExposureIsReportedWithAnArrayAlsoOfNoAds) {
    reporter.ReportAdExposureResult(ZRAdTypePopup, QStringLiteral("2001"), QStringLiteral("code"), {});
    reporter.ReportAdExposureResult(ZRAdTypePopup, QStringLiteral("0"), QString(), {kAd});

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":[],"advertisement_type":"2","error_content":"code",)"
                                  R"("result_code":"2001"})"),
                            Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":["18088"],"advertisement_type":"2","error_content":"",)"
                                  R"("result_code":"0"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ReportAdvertisementExposureResult success, adType = 2, "
                                 "resultCode = 2001, errorContent = code, adIdList = "),
                            Info("[Ad] Report ReportAdvertisementExposureResult success, adType = 2, resultCode = 0, "
                                 "errorContent = , adIdList = 18088")));
}

TEST_F(AdQualityReporterTest, APictureIsARetryFromTheSecondAttemptOn) {
    reporter.ReportAdImageResourceDownloadResult(ZRAdTypeBanner, kUrl, QStringLiteral("0"), QString(), kAd, 50, 1);
    reporter.ReportAdImageResourceDownloadResult(ZRAdTypeBanner, kUrl, QStringLiteral("-1"), QStringLiteral("cut"), kAd,
                                                 60, 2);

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(Event("AdvertisementImageResourceDownloadResult", 5,
                          R"({"action_times":1,"advertisement_id":"18088","advertisement_type":"3","error_content":"",)"
                          R"("event_duration":50,"is_retry":false,"request_url":"https://pictures.test/card.png",)"
                          R"("result_code":"0"})"),
                    Event("AdvertisementImageResourceDownloadResult", 5,
                          R"({"action_times":2,"advertisement_id":"18088","advertisement_type":"3",)"
                          R"("error_content":"cut","event_duration":60,"is_retry":true,)"
                          R"("request_url":"https://pictures.test/card.png","result_code":"-1"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report AdvertisementImageResourceDownloadResult success, adType = 3, "
                                 "requestUrl = https://pictures.test/card.png, resultCode = 0, errorContent = , "
                                 "adId = 18088, count = 1, time = 50"),
                            Info("[Ad] Report AdvertisementImageResourceDownloadResult success, adType = 3, "
                                 "requestUrl = https://pictures.test/card.png, resultCode = -1, errorContent = cut, "
                                 "adId = 18088, count = 2, time = 60")));
}

TEST_F(AdQualityReporterTest, APictureWithoutAnAttemptIsNoRetry) {
    for (const int count : {0, -1}) {
        reporter.ReportAdImageResourceDownloadResult(ZRAdTypeBanner, kUrl, QStringLiteral("0"), QString(), kAd, 50,
                                                     count);
        EXPECT_THAT(reports.Events().back().params, AllOf(HasSubstr("\"action_times\":" + std::to_string(count) + ","),
                                                          HasSubstr(R"("is_retry":false,)")));
    }
}

TEST_F(AdQualityReporterTest, APicturesTimeIsReportedWholeAndWithItsSign) {
    reporter.ReportAdImageResourceDownloadResult(ZRAdTypePopup, kUrl, QStringLiteral("0"), QString(), kAd,
                                                 5'000'000'000, 1);
    reporter.ReportAdImageResourceDownloadResult(ZRAdTypePopup, kUrl, QStringLiteral("0"), QString(), kAd, -7, 1);

    const auto events = reports.Events();
    ASSERT_THAT(events, SizeIs(2));
    EXPECT_THAT(events[0].params, HasSubstr(R"("event_duration":5000000000,)"));
    EXPECT_THAT(events[1].params, HasSubstr(R"("event_duration":-7,)"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info(EndsWith("count = 1, time = 5000000000")), Info(EndsWith("count = 1, time = -7"))));
}

TEST_F(AdQualityReporterTest, TextsOfAnyScriptAreReportedAndLoggedAsTheyAre) {
    const QString ad = QStringLiteral("广告一");
    const QString why = QStringLiteral("图片损坏");
    reporter.ReportAdPullDataResult(ZRAdTypePopup, QStringLiteral("1005"), why, 1, {ad, ad});
    reporter.ReportAdExposureResult(ZRAdTypePopup, QStringLiteral("1005"), why, {ad});
    reporter.ReportAdImageResourceDownloadResult(ZRAdTypePopup, kUrl, QStringLiteral("-1"), why, ad, 1, 1);

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("SingleAdvertisementPullDataResult", 2,
                                  R"({"advertisement_ids":["广告一","广告一"],"advertisement_type":"2",)"
                                  R"("error_content":"图片损坏","request_time":1,"result_code":"1005"})"),
                            Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":["广告一"],"advertisement_type":"2",)"
                                  R"("error_content":"图片损坏","result_code":"1005"})"),
                            Event("AdvertisementImageResourceDownloadResult", 5,
                                  R"({"action_times":1,"advertisement_id":"广告一","advertisement_type":"2",)"
                                  R"("error_content":"图片损坏","event_duration":1,"is_retry":false,)"
                                  R"("request_url":"https://pictures.test/card.png","result_code":"-1"})")));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report SingleAdvertisementPullDataResult success, adType = 2, "
                                 "resultCode = 1005, errorContent = 图片损坏, requestTime = 1, "
                                 "adIdList = 广告一,广告一"),
                            Info("[Ad] Report ReportAdvertisementExposureResult success, adType = 2, "
                                 "resultCode = 1005, errorContent = 图片损坏, adIdList = 广告一"),
                            Info("[Ad] Report AdvertisementImageResourceDownloadResult success, adType = 2, "
                                 "requestUrl = https://pictures.test/card.png, resultCode = -1, "
                                 "errorContent = 图片损坏, adId = 广告一, count = 1, time = 1")));
}

TEST_F(AdQualityReporterTest, ARefusedReportSaysFailed) {
    reports.Refuse(Failing::Always());

    reporter.ReportAdPullDataResult(ZRAdTypePopup, QStringLiteral("0"), QString(), 1, {});
    reporter.ReportAdExposureResult(ZRAdTypePopup, QStringLiteral("0"), QString(), {});
    reporter.ReportAdImageResourceDownloadResult(ZRAdTypePopup, kUrl, QStringLiteral("0"), QString(), kAd, 1, 1);

    EXPECT_THAT(reports.Names(), SizeIs(3));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info(StartsWith("[Ad] Report SingleAdvertisementPullDataResult failed, ")),
                            Info(StartsWith("[Ad] Report ReportAdvertisementExposureResult failed, ")),
                            Info(StartsWith("[Ad] Report AdvertisementImageResourceDownloadResult failed, "))));
}

}  // namespace
