// Exposures, actions and pictures of a slot, and how its ad leaves the screen.
#include <QPointer>

#include "Ad/AdSlotTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QString kAd = QStringLiteral("18088");

ReportedEvent Event(const char* name, int code, const char* params, bool timed = false) {
    return {name, code, params, 0, timed};
}

class AdControllerExposureTest : public AdSlotTest {
protected:
    /// The ad "18088" of the stored list is on screen, since second 200.
    void ShowTheAd() {
        slot->SetAdModelList(Popups({"18088", "2"}));
        slot->m_adId = kAd;
        slot->m_pushId = QStringLiteral("p-1");
        slot->ReportExposeAdStart(kAd);
        Forget();
    }

    std::string Body() { return http.Started().empty() ? "" : http.Started().back().request.m_strBody; }
};

// Closing

struct CloseRow {
    const char* name;
    ZRAdCloseType type;
    const char* words;
};

std::ostream& operator<<(std::ostream& stream, const CloseRow& row) {
    return stream << row.name;
}

class AdCloseTest : public AdControllerExposureTest, public WithParamInterface<CloseRow> {};

TEST_P(AdCloseTest, LogsItsReasonEndsTheExposureAndClears) {
    ShowTheAd();
    const QPointer<CZRAdModelList> stored = slot->GetAdModelList();
    time.Advance(1500ms);

    // references to what is emptied on the way
    slot->CloseAd(GetParam().type, slot->m_adId, slot->m_pushId);

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(
            Info(std::string("[Ad] Closed ad by ") + GetParam().words + ". adType = 2, adPosition = 42, adId = 18088"),
            Info("[Ad] Report ExposeAd end success, exposeId = dev20018088, requestId = , adId = 18088,"),
            Error("[Ad] Expose ad start, path = /ad/expose, adType = 2, adPosition = 42, adId = 18088, "
                  "exposeId = dev20018088, exposeDuration = 1500, pushId = p-1"),
            Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = 18088")));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_THAT(http.Started(), SizeIs(1));
    EXPECT_TRUE(stored.isNull());
    EXPECT_EQ(slot->GetAdModelList(), nullptr);
    EXPECT_EQ(slot->m_adId, QString());
    EXPECT_EQ(slot->m_pushId, QString());
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_P(AdCloseTest, NamesTheAdAndThePushThatAreGivenAndNotThoseOnScreen) {
    slot = std::make_unique<CAdSlot>(ZRAdTypeBanner, 7);
    ShowTheAd();

    slot->CloseAd(GetParam().type, QStringLiteral("another"), QStringLiteral("p-2"));

    const auto closed =
        Info(std::string("[Ad] Closed ad by ") + GetParam().words + ". adType = 3, adPosition = 7, adId = another");
    EXPECT_THAT(log.Lines(), ElementsAre(closed, Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. "),
                                         Error("[Ad] Expose ad start, path = /ad/expose, adType = 3, adPosition = 7, "
                                               "adId = another, exposeId = , exposeDuration = 0, pushId = p-2"),
                                         Info("[Ad] Clear ad data. adType = 3, adPosition = 7, adId = 18088")));
    EXPECT_THAT(Body(), AllOf(HasSubstr("\"another\""), HasSubstr("\"p-2\"")));

    ShowTheAd();
    slot->CloseAd(GetParam().type, QStringLiteral("another"), QString());

    EXPECT_THAT(log.Lines(), Contains(closed));
    EXPECT_THAT(Body(), AllOf(HasSubstr("\"another\""), Not(HasSubstr("push_id"))));
}

INSTANTIATE_TEST_SUITE_P(Types, AdCloseTest,
                         Values(CloseRow{"AdClicked", ZRAdCloseType(0), "ad clicked"},
                                CloseRow{"CloseButton", ZRAdCloseType(1), "close button clicked"},
                                CloseRow{"Timeout", ZRAdCloseType(2), "timeout"},
                                CloseRow{"TabSwitched", ZRAdCloseType(3), "tab switched"},
                                CloseRow{"LanguageChanged", ZRAdCloseType(4), "language changed"},
                                CloseRow{"Login", ZRAdCloseType(5), "login"},
                                CloseRow{"Logout", ZRAdCloseType(6), "logout"},
                                CloseRow{"PushOffline", ZRAdCloseType(7), "push offline"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(AdControllerExposureTest, AnUnknownCloseTypeIsAssertedAndClosesAllTheSame) {
    for (const int type : {8, 100, -1}) {
        ShowTheAd();

        slot->CloseAd(ZRAdCloseType(type), kAd, QString());

        const auto assertions = log.Assertions();
        ASSERT_THAT(assertions, SizeIs(1));
        EXPECT_EQ(assertions[0].type, 3);
        EXPECT_EQ(assertions[0].expression, "0");
        EXPECT_EQ(assertions[0].detail, "");
        EXPECT_EQ(assertions[0].module, "ZRGrowth");
        EXPECT_EQ(assertions[0].file, "ZRGrowth/Ad/Controller/ZRAdController");
        EXPECT_GT(assertions[0].line, 0);
        EXPECT_THAT(log.Lines(),
                    ElementsAre(Info(StartsWith("[Ad] Report ExposeAd end ")),
                                Error(StartsWith("[Ad] Expose ad start, ")), Info(StartsWith("[Ad] Clear ad data. "))));
        EXPECT_EQ(slot->GetAdModelList(), nullptr);
        Forget();
    }
}

TEST_F(AdControllerExposureTest, ClosingNoAdDoesNothingAtAll) {
    auto* stored = Popups({"1"});
    slot->SetAdModelList(stored);
    slot->m_pushId = QStringLiteral("p-1");

    slot->CloseAd(ZRAdCloseTypeLogin, QString(), QStringLiteral("p-1"));
    slot->CloseAd(ZRAdCloseType(8), QString(), QString());

    EXPECT_EQ(slot->GetAdModelList(), stored);
    EXPECT_EQ(slot->m_pushId, QStringLiteral("p-1"));
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(log.Assertions(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdControllerExposureTest, ClosingAnyAdDestroysTheWaitingListWhateverItHolds) {
    slot->SetAdModelList(Popups({"1"}));

    slot->CloseAd(ZRAdCloseTypeLogout, QStringLiteral("another"), QString());

    EXPECT_EQ(slot->GetAdModelList(), nullptr);
    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = ")));
    http.Forget();
}

TEST_F(AdControllerExposureTest, TheSecondCloseOfAnAdReportsNoExposureAndTellsTheServer) {
    ShowTheAd();
    slot->CloseAd(ZRAdCloseTypeTimeout, kAd, QString());
    Forget();

    slot->CloseAd(ZRAdCloseTypeTimeout, kAd, QString());

    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Closed ad by timeout. ")),
                                         Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. "),
                                         Error(HasSubstr("exposeId = , exposeDuration = 0, "))));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), SizeIs(1));
}

// Clearing

TEST_F(AdControllerExposureTest, AnEmptySlotIsClearedWithoutAWord) {
    slot->ClearAd();

    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdControllerExposureTest, AnIdAPushIdOrAListIsEnoughToClear) {
    const auto cleared = Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = ");

    slot->m_pushId = QStringLiteral("p-1");
    slot->ClearAd();
    EXPECT_EQ(slot->m_pushId, QString());
    EXPECT_THAT(log.Lines(), ElementsAre(cleared));

    const QPointer<CZRAdModelList> stored = Popups({"1"});
    slot->SetAdModelList(stored);
    slot->ClearAd();
    EXPECT_TRUE(stored.isNull());
    EXPECT_THAT(log.Lines(), ElementsAre(cleared, cleared));

    slot->m_adId = kAd;
    slot->ClearAd();
    EXPECT_EQ(slot->m_adId, QString());
    EXPECT_THAT(log.Lines().back(), Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = 18088"));

    slot->ClearAd();
    EXPECT_THAT(log.Lines(), SizeIs(3));
    EXPECT_THAT(http.Started(), IsEmpty());
}

// Exposures

TEST_F(AdControllerExposureTest, AStartIsReportedWithTheLatestRequest) {
    Search();
    Forget();

    slot->ReportExposeAdStart(kAd);

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(Event("StartExposeAd", 1,
                          R"({"advertisement_id":"18088","exposure_id":"dev20018088","request_id":"dev20011"})")));
    EXPECT_THAT(http.Started(), IsEmpty());  // the server hears of it at the end
}

TEST_F(AdControllerExposureTest, AnEndIsReportedAndToldToTheServerWithItsLength) {
    slot->ReportExposeAdStart(kAd);
    time.Advance(10s);
    Search();
    Forget();

    slot->ReportExposeAdEnd(kAd, QStringLiteral("p-1"));

    // with the request that is the latest by now
    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ExposeAd", 1,
                                  R"({"advertisement_id":"18088","exposure_id":"dev20018088","request_id":"dev21011"})",
                                  true)));
    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(Body(),
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"18088\"\n\t],\n\t\"ad_position\" : 42,\n\t\"ad_type\" : 2,\n"
              "\t\"expose_duration\" : 10000,\n\t\"expose_id\" : \"dev20018088\",\n"
              "\t\"push_id\" : \n\t[\n\t\t\"p-1\"\n\t]\n}\n");
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Report ExposeAd end success, ")),
                                         Error(StartsWith("[Ad] Expose ad start, "))));
}

TEST_F(AdControllerExposureTest, WithoutAPushTheServerIsToldOfNone) {
    slot->ReportExposeAdStart(kAd);

    slot->ReportExposeAdEnd(kAd, QString());

    EXPECT_THAT(Body(), Not(HasSubstr("push_id")));
    Forget();
}

TEST_F(AdControllerExposureTest, AnEndWithoutAStartIsToldToTheServerAllTheSame) {
    slot->ReportExposeAdEnd(kAd, QString());

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_EQ(Body(),
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"18088\"\n\t],\n\t\"ad_position\" : 42,\n\t\"ad_type\" : 2,\n"
              "\t\"expose_duration\" : 0,\n\t\"expose_id\" : \"\"\n}\n");
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. "),
                                         Error(StartsWith("[Ad] Expose ad start, "))));
}

TEST_F(AdControllerExposureTest, AnEndWithoutATimerIsToldWithItsIdAndLength) {
    reports.GiveNoTimers();
    slot->ReportExposeAdStart(kAd);
    time.Advance(3s);
    Forget();

    slot->ReportExposeAdEnd(kAd, QString());

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(Body(), HasSubstr("\"expose_duration\" : 3000,\n\t\"expose_id\" : \"dev20018088\""));
    log.Forget();
}

TEST_F(AdControllerExposureTest, TheEndOfNoAdIsLoggedAlone) {
    slot->ReportExposeAdEnd(QString(), QStringLiteral("p-1"));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] ReportExposeAdEnd failed, adId is null. adType = 2, adPosition = 42")));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdControllerExposureTest, TheServersAnswerToAnExposureIsReported) {
    slot->ReportExposeAdEnd(kAd, QString());
    const unsigned long good = http.LastTask();
    slot->ReportExposeAdEnd(QStringLiteral("2"), QString());
    const unsigned long bad = http.LastTask();
    Forget();

    http.Answer(good, "{}");
    http.Answer(bad, R"({"code": 7})");
    EXPECT_THAT(reports.Events(), IsEmpty());
    time.Settle();

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":["18088"],"advertisement_type":"2","error_content":"",)"
                                  R"("result_code":"0"})"),
                            Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":["2"],"advertisement_type":"2",)"
                                  R"("error_content":"response code is 7","result_code":"2001"})")));
    log.Forget();
}

// Actions

TEST_F(AdControllerExposureTest, AClickIsReportedWithTheLatestRequest) {
    ShowTheAd();
    Search();
    Forget();

    slot->OnAdClicked(true, kAd);
    slot->OnAdClicked(false, kAd);

    EXPECT_THAT(slot->calls, ElementsAre("action 0 on 18088 jumped", "action 0 on 18088"));
    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ClickAd", 4,
                                  R"({"action_id":"dev20018088","action_type":"0","advertisement_id":"18088",)"
                                  R"("exposure_id":"dev20018088","request_id":"dev20011","result_status":1})"),
                            Event("ClickAd", 4,
                                  R"({"action_id":"dev20018088","action_type":"0","advertisement_id":"18088",)"
                                  R"("exposure_id":"dev20018088","request_id":"dev20011","result_status":0})")));
    EXPECT_EQ(slot->m_adId, kAd);  // a click alone closes nothing
}

TEST_F(AdControllerExposureTest, TheCloseButtonIsAnActionWithoutAnOutcome) {
    ShowTheAd();

    slot->OnCloseButtonClicked(kAd);

    EXPECT_THAT(slot->calls, ElementsAre("action 2 on 18088"));
    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ClickAd", 4,
                                  R"({"action_id":"dev20018088","action_type":"2","advertisement_id":"18088",)"
                                  R"("exposure_id":"dev20018088","request_id":""})")));
    EXPECT_EQ(slot->m_adId, kAd);
}

TEST_F(AdControllerExposureTest, AnActionOnNoAdIsLoggedAlone) {
    slot->OnAdClicked(true, QString());
    slot->OnCloseButtonClicked(QString());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] ReportClickAd failed, adId is null. adType = 2, actionType = 0"),
                                         Info("[Ad] ReportClickAd failed, adId is null. adType = 2, actionType = 2")));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdControllerExposureTest, AnActionBehindTheEndIsNotReported) {
    ShowTheAd();
    slot->CloseAd(ZRAdCloseTypeAdClicked, kAd, QString());
    Forget();

    slot->OnAdClicked(true, kAd);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Report ClickAd failed, exposeId is null. "))));
}

// Pictures

TEST_F(AdControllerExposureTest, APictureThatLoadedIsLoggedAndReported) {
    slot->OnImageLoadSucceeded(QStringLiteral("https://pictures.test/1.png"), 5'000'000'000, 2, kAd);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] OnImageLoadSucceeded. adType = 2, adId = 18088, "
                                 "imageUrl = https://pictures.test/1.png, loadCount = 2, time = 5000000000"),
                            Info(StartsWith("[Ad] Report AdvertisementImageResourceDownloadResult success, "))));
    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("AdvertisementImageResourceDownloadResult", 5,
                                  R"({"action_times":2,"advertisement_id":"18088","advertisement_type":"2",)"
                                  R"("error_content":"","event_duration":5000000000,"is_retry":true,)"
                                  R"("request_url":"https://pictures.test/1.png","result_code":"0"})")));
}

TEST_F(AdControllerExposureTest, APictureThatFailedIsLoggedAndReportedWithItsReason) {
    slot->OnImageLoadFailed(QStringLiteral("https://pictures.test/1.png"), QStringLiteral("timeout"), 30, 1, kAd);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] OnImageLoadFailed, adType = 2, imageUrl = https://pictures.test/1.png, "
                                 "loadCount = 1, time = 30"),
                            Info(StartsWith("[Ad] Report AdvertisementImageResourceDownloadResult success, "))));
    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("AdvertisementImageResourceDownloadResult", 5,
                                  R"({"action_times":1,"advertisement_id":"18088","advertisement_type":"2",)"
                                  R"("error_content":"timeout","event_duration":30,"is_retry":false,)"
                                  R"("request_url":"https://pictures.test/1.png","result_code":"-1"})")));
}

// A slot of another type

TEST_F(AdControllerExposureTest, ABannerSlotReportsExposuresAndPicturesUnderItsOwnTypeAndPosition) {
    slot = std::make_unique<CAdSlot>(ZRAdTypeBanner, 7);
    const QString url = QStringLiteral("https://pictures.test/1.png");

    slot->OnExposeAdSuccess({kAd});
    slot->OnExposeAdFailed(QStringLiteral("1005"), QStringLiteral("no"), {kAd});
    slot->OnImageLoadSucceeded(url, 30, 1, kAd);
    slot->OnImageLoadFailed(url, QStringLiteral("timeout"), 40, 3, kAd);

    EXPECT_THAT(reports.Events(),
                ElementsAre(Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":["18088"],"advertisement_type":"3","error_content":"",)"
                                  R"("result_code":"0"})"),
                            Event("ReportAdvertisementExposureResult", 1,
                                  R"({"advertisement_ids":["18088"],"advertisement_type":"3","error_content":"no",)"
                                  R"("result_code":"1005"})"),
                            Event("AdvertisementImageResourceDownloadResult", 5,
                                  R"({"action_times":1,"advertisement_id":"18088","advertisement_type":"3",)"
                                  R"("error_content":"","event_duration":30,"is_retry":false,)"
                                  R"("request_url":"https://pictures.test/1.png","result_code":"0"})"),
                            Event("AdvertisementImageResourceDownloadResult", 5,
                                  R"({"action_times":3,"advertisement_id":"18088","advertisement_type":"3",)"
                                  R"("error_content":"timeout","event_duration":40,"is_retry":true,)"
                                  R"("request_url":"https://pictures.test/1.png","result_code":"-1"})")));
    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] OnImageLoadSucceeded. adType = 3, adId = 18088, "
                                           "imageUrl = https://pictures.test/1.png, loadCount = 1, time = 30")));
    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] OnImageLoadFailed, adType = 3, "
                                           "imageUrl = https://pictures.test/1.png, loadCount = 3, time = 40")));
    Forget();

    slot->ReportExposeAdEnd(QString(), QStringLiteral("p-1"));
    slot->OnAdClicked(true, QString());
    slot->OnCloseButtonClicked(QString());

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] ReportExposeAdEnd failed, adId is null. adType = 3, adPosition = 7"),
                            Info("[Ad] ReportClickAd failed, adId is null. adType = 3, actionType = 0"),
                            Info("[Ad] ReportClickAd failed, adId is null. adType = 3, actionType = 2")));
}

TEST_F(AdControllerExposureTest, TheBasesOwnShowAndOfflineDoNothing) {
    CZRAdController base(nullptr);
    auto* stored = Popups({"1"});
    base.SetAdModelList(stored);
    QList<QString> ids{QStringLiteral("1")};

    base.ShowAd(stored);
    base.ShowAd(nullptr);
    base.OfflineAd(ids);

    EXPECT_EQ(base.GetAdModelList(), stored);
    EXPECT_THAT(ids, ElementsAre(QStringLiteral("1")));
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

}  // namespace
