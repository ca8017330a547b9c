// Slots whose life ends at a bad moment, slots beside each other, and hosts that refuse everything.
#include <QPointer>
#include <cstdlib>

#include "Ad/AdSlotTest.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "framework/Ports.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QString kAd = QStringLiteral("18088");

class AdControllerLifeTest : public AdSlotTest {
protected:
    std::string GoodAnswer() { return PopupAnswer().toStyledString(); }

    [[noreturn]] void ExitByWhatIsReported() {
        slot->ReportExposeAdEnd(kAd, QString());
        http.Answer(http.LastTask(), "{}");
        slot->ReportExposeAdEnd(kAd, QString());
        http.Answer(http.LastTask(), "5");
        Search();
        http.Answer(http.LastTask(), GoodAnswer());
        time.Settle();
        const std::vector<std::string> expected = {"ReportAdvertisementExposureResult",
                                                   "ReportAdvertisementExposureResult", "SendAdRequest",
                                                   "SingleAdvertisementPullDataResult"};
        std::_Exit(reports.Names() == expected ? 0 : 1);
    }
};

/// A position that ends itself inside a callback.
class CEndingSlot : public CAdSlot {
public:
    CEndingSlot() : CAdSlot(ZRAdTypePopup, kAdPositionBottomPopup) {}

    void OnRequestAdFailed(const QString&, const QString&, long long) override { delete this; }
    void OnExposeAdSuccess(const QList<QString>&) override { delete this; }
    void OnExposeAdFailed(const QString&, const QString&, const QList<QString>&) override { delete this; }
};

// Ends

TEST_F(AdControllerLifeTest, AnAnswerToASlotThatIsGoneGoesNowhere) {
    Search();
    const unsigned long search = http.LastTask();
    slot->ReportExposeAdEnd(kAd, QString());
    const unsigned long expose = http.LastTask();
    slot.reset();
    Forget();

    http.Answer(search, GoodAnswer());
    http.Fail(expose, kHttpCut);
    time.Settle();

    EXPECT_EQ(http.OutstandingCount(), 0);
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdControllerLifeTest, ASlotThatGoesAheadOfTheReadingOfItsAnswerIsNotTouched) {
    Search();
    http.Answer(http.LastTask(), GoodAnswer());
    slot.reset();
    Forget();

    time.Settle();

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdControllerLifeTest, ASlotThatGoesAheadOfItsQueuedResultsIsNotTold) {
    slot->ReportExposeAdEnd(kAd, QString());
    http.Answer(http.LastTask(), "{}");
    Search();
    http.Fail(http.LastTask(), kHttpCut);
    slot.reset();
    Forget();

    time.Settle();

    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdControllerLifeTest, ASlotMayEndWhenItIsToShowItsAd) {
    Search();
    const unsigned long task = http.LastTask();
    const QPointer<CAdSlot> ended = slot.release();
    QPointer<CZRAdModelList> list;
    ended->onShow = [&] {
        list = ended->GetAdModelList();
        delete ended;
    };

    http.Answer(task, GoodAnswer());
    time.Settle();

    EXPECT_TRUE(ended.isNull());
    EXPECT_TRUE(list.isNull());
    EXPECT_THAT(reports.Names(), SizeIs(2));
}

TEST_F(AdControllerLifeTest, ASlotMayEndWhenItIsToldOfAFailure) {
    QPointer<CAdSlot> ended = new CEndingSlot;
    ended->RequestAd(ZRAdApiTypeSearch, 42, {});
    http.Answer(http.LastTask(), "{}");
    time.Settle();
    EXPECT_TRUE(ended.isNull());

    for (const char* body : {"{}", "[]"}) {
        ended = new CEndingSlot;
        ended->ReportExposeAdEnd(kAd, QString());
        const unsigned long first = http.LastTask();
        ended->ReportExposeAdEnd(kAd, QString());
        http.Answer(first, body);
        http.Answer(http.LastTask(), body);  // what is still in the queue goes with it
        time.Settle();
        EXPECT_TRUE(ended.isNull());
    }
    Forget();
}

TEST_F(AdControllerLifeTest, TheResultsComeInTheOrderOfTheirSignals) {
    slot->ReportExposeAdEnd(QStringLiteral("1"), QString());
    const unsigned long first = http.LastTask();
    slot->ReportExposeAdEnd(QStringLiteral("2"), QString());
    const unsigned long second = http.LastTask();
    Search();
    const unsigned long search = http.LastTask();
    Forget();

    http.Answer(second, "{}");
    http.Fail(search, kHttpCut);
    http.Fail(first, kHttpCut);
    time.Settle();

    EXPECT_THAT(reports.Names(), ElementsAre("ReportAdvertisementExposureResult", "SingleAdvertisementPullDataResult",
                                             "ReportAdvertisementExposureResult"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"(["2"])"));
    log.Forget();
}

// Two slots

TEST_F(AdControllerLifeTest, TwoSlotsShareNeitherListNorExposureNorAnswer) {
    CAdSlot banner(ZRAdTypeBanner, 7);
    Search();
    const unsigned long popups = http.LastTask();
    banner.RequestAd(ZRAdApiTypeSearch, 7, {});
    const unsigned long banners = http.LastTask();
    Json::Value data = BannerData();
    data["ad"].append(BannerAd("18088"));  // of the same id
    Forget();

    http.Answer(banners, AnswerOf(data).toStyledString());
    http.Answer(popups, GoodAnswer());
    time.Settle();

    EXPECT_EQ(slot->GetAdModelList()->GetAdType(), ZRAdTypePopup);
    EXPECT_EQ(banner.GetAdModelList()->GetAdType(), ZRAdTypeBanner);
    EXPECT_EQ(slot->GetAdRequestId(), QStringLiteral("dev20011"));
    EXPECT_EQ(banner.GetAdRequestId(), QStringLiteral("dev20022"));

    slot->ReportExposeAdStart(kAd);
    Forget();
    banner.OnAdClicked(true, kAd);
    EXPECT_THAT(reports.Events(), IsEmpty());
    slot->CloseAd(ZRAdCloseTypeLogin, kAd, QString());
    EXPECT_TRUE(banner.GetAdModelList());
    Forget();
}

// A queued signal of QList<QString>: in a process where nothing else has made that type known.

TEST_F(AdControllerLifeTest, ExposuresAreToldInAFreshProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ExitByWhatIsReported(), ExitedWithCode(0), "");
}

// Hosts that refuse

TEST_F(AdControllerLifeTest, ADayOfASlotOnAHostThatRefusesEachRequestAndReport) {
    http.RefuseStarts(Failing::Always());
    reports.Refuse(Failing::Always());
    reports.GiveNoTimers();
    domains.Set("api", "");

    Search();
    Search();
    slot->OnRequestAdSucceeded(Popups({"18088"}), 3);
    slot->ReportExposeAdStart(kAd);
    slot->OnImageLoadSucceeded(QStringLiteral("u"), 1, 1, kAd);
    slot->OnImageLoadFailed(QStringLiteral("u"), QStringLiteral("no"), 1, 2, kAd);
    slot->OnAdClicked(true, kAd);
    slot->OnCloseButtonClicked(kAd);
    slot->CloseAd(ZRAdCloseTypeCloseButton, kAd, QStringLiteral("p"));
    time.Settle();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info(StartsWith("[Ad] Request ad start, path = /ad/search, ")),
                            Error(StartsWith("[Ad] Request ad failed, requestTaskId = 0, path = /ad/search, ")),
                            Info(StartsWith("[Ad] Request ad limited. ")),
                            Info(StartsWith("[Ad] Report SingleAdvertisementPullDataResult failed, ")),
                            Info(StartsWith("[Ad] Report SendAdRequest failed, ")),
                            Info(StartsWith("[Ad] Report SingleAdvertisementPullDataResult failed, ")),
                            Info("[Ad] Report ExposeAd start failed, exposeAdEvent is null, adId = 18088,"),
                            Info(StartsWith("[Ad] Report StartExposeAd failed, ")),
                            Info(StartsWith("[Ad] OnImageLoadSucceeded. ")),
                            Info(StartsWith("[Ad] Report AdvertisementImageResourceDownloadResult failed, ")),
                            Info(StartsWith("[Ad] OnImageLoadFailed, ")),
                            Info(StartsWith("[Ad] Report AdvertisementImageResourceDownloadResult failed, ")),
                            Info(StartsWith("[Ad] Report ClickAd failed, actionId = ")),
                            Info(StartsWith("[Ad] Report ClickAd failed, actionId = ")),
                            Info(StartsWith("[Ad] Closed ad by close button clicked. ")),
                            Info("[Ad] Report ExposeAd end failed, m_exposeAdEvent is null. "),
                            Error(StartsWith("[Ad] Expose ad start, path = /ad/expose, ")),
                            Error(StartsWith("[Ad] Expose ad failed, path = /ad/expose, ExposeTaskID  = 0, ")),
                            Info(StartsWith("[Ad] Clear ad data. "))));
    EXPECT_EQ(http.OutstandingCount(), 0);
    for (const StartedRequest& started : http.Started()) {
        EXPECT_THAT(started.request.m_strUrl, StartsWith("/ad/"));
    }
    EXPECT_EQ(slot->GetAdModelList(), nullptr);
    reports.Forget();
}

/// Once each port is gone, in a fixture of its own.
TEST(AdSlotWithoutHostTest, ADayOfASlotWithoutAnyServiceIsQuiet) {
    host::Install({});
    {
        CAdSlot slot(ZRAdTypePopup, kAdPositionBottomPopup);
        slot.RequestAd(ZRAdApiTypeSearch, 42, {});
        // the clock reads 0 throughout, so that not even the first request leaves
        EXPECT_EQ(slot.GetAdRequestId(), QString());
        slot.m_adApiClient->RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});
        EXPECT_FALSE(slot.GetAdRequestId().isEmpty());
        auto* list = new CZRAdModelList(nullptr);
        EXPECT_TRUE(list->Decode(PopupData()));
        slot.OnRequestAdSucceeded(list, 0);
        EXPECT_EQ(slot.GetAdModelList(), nullptr);
        slot.ReportExposeAdStart(kAd);
        slot.OnAdClicked(true, kAd);
        slot.CloseAd(ZRAdCloseType(99), kAd, QString());
    }
    host::Uninstall();
}

}  // namespace
