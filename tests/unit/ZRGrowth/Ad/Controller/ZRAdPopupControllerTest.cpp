// From a list to a popup on screen.
#include <QPointer>
#include <functional>

#include "Ad/AdPopupTest.h"
#include "Ad/MethodsOf.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QString kAd = QStringLiteral("18088");
const QString kPush = QStringLiteral("p-1");
const QString kUrl = QStringLiteral("https://pictures.test/card.png");

class AdPopupControllerTest : public AdPopupTest {};

TEST_F(AdPopupControllerTest, HasItsSlotsInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdPopupController::staticMetaObject),
        ElementsAre("slot OnAdClicked(bool jumpResult, QString adId)", "slot OnCloseButtonClicked(QString adId)",
                    "slot OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count, QString adId, "
                    "QString pushId)",
                    "slot OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count, "
                    "QString adId)"));
}

TEST_F(AdPopupControllerTest, ASubclassIsReachedByTwoOperationsBehindTheBasesInTheFixedOrder) {
    const auto last = PlaceOf(&CZRAdController::OnCloseButtonClicked);
    EXPECT_EQ(PlaceOf(&CBottomSlot::AddAdPopupView), last + 1);
    EXPECT_EQ(PlaceOf(&CBottomSlot::DeleteAdPopupView), last + 2);
}

TEST_F(AdPopupControllerTest, ThePlainPopupIsOfTheTypeOfPopupsAndDrawsNothing) {
    class CPlainPopup : public CZRAdPopupController {
    public:
        CPlainPopup() : CZRAdPopupController(nullptr) {}
        using CZRAdPopupController::m_adPopupView;
        using CZRAdPopupController::m_adType;
    } plain;
    EXPECT_EQ(plain.m_adType, ZRAdTypePopup);
    EXPECT_EQ(plain.GetAdPosition(), 0);
    Json::Value data = DataOf({"1"});
    data["ad_position"] = 0;
    const std::unique_ptr<CZRAdModelList> list(new CZRAdModelList(nullptr));
    list->Decode(data);

    plain.ShowAd(list.get());

    EXPECT_TRUE(plain.m_adPopupView.isNull());
    EXPECT_EQ(Card(), nullptr);
}

// Trying

TEST_F(AdPopupControllerTest, AnAnswerThatMayBeShownIsShownAtOnce) {
    slot.OnRequestAdSucceeded(ListOf(DataOf({"18088"})), 5);

    EXPECT_TRUE(Card());
    EXPECT_THAT(Texts(), HasSubstr("[Ad] Ad popup data is OK, adType = 2, adPosition = 42, adId = 18088\n"
                                   "[Ad] Show ad popup start. adType = 2, adPosition = 42\n"
                                   "[Ad] Create CZRAdBottomPopupView, "));
    reports.Forget();
    pictures.Forget();
}

TEST_F(AdPopupControllerTest, AListThatMayNotBeShownWaitsAndIsShownAtALaterTry) {
    mainFrame.SetFocusIn(false);
    Answer(DataOf({"18088"}));
    CZRAdModelList* list = slot.GetAdModelList();
    ASSERT_TRUE(list);

    slot.TryShowAdPopup();
    EXPECT_EQ(slot.GetAdModelList(), list);
    EXPECT_EQ(Card(), nullptr);
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Try show ad popup, adType = 2, adPosition = 42"),
                            Info(StartsWith("[Ad] Ad popup data is OK, ")), Info(StartsWith("[Ad] Main frame isnot"))));

    mainFrame.SetFocusIn(true);
    slot.TryShowAdPopup();
    EXPECT_TRUE(Card());
    EXPECT_EQ(slot.GetAdModelList(), list);
    pictures.Forget();
}

TEST_F(AdPopupControllerTest, TryReplacesTheCardWhenOneIsThere) {
    for (const bool onScreen : {false, true}) {
        onScreen ? Show() : Answer(DataOf({"18088"}));
        const QPointer<QWidget> first = slot.m_adPopupView;
        ASSERT_EQ(first && first->isVisible(), onScreen);

        slot.TryShowAdPopup();

        EXPECT_FALSE(slot.m_adPopupView.isNull()) << onScreen;
        EXPECT_NE(slot.m_adPopupView, first) << onScreen;
        time.Settle();
        EXPECT_TRUE(first.isNull()) << onScreen;
        pictures.Forget();
        Forget();
    }
}

TEST_F(AdPopupControllerTest, IdsAreStoredWhenTheExposureBegins) {
    class CStart : public CBottomSlot {
    public:
        QString seen;

    protected:
        void ReportExposeAdStart(QString const& adId) override {
            seen = m_adId + m_pushId;
            CBottomSlot::ReportExposeAdStart(adId);
        }
    } start;
    start.OnRequestAdSucceeded(ListOf(DataOf({"18088"})), 5);
    LetPictureIn();

    EXPECT_EQ(start.seen, kAd + kPush);
    store.Forget();
    Forget();
}

TEST_F(AdPopupControllerTest, AListThatIsGoodForNothingAnyMoreIsThrownAway) {
    mainFrame.SetFocusIn(false);
    Answer(DataOf({"18088"}));
    const QPointer<CZRAdModelList> list = slot.GetAdModelList();
    time.SetServerTime(301'000);

    slot.TryShowAdPopup();

    EXPECT_TRUE(list.isNull());
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    log.Forget();
}

TEST_F(AdPopupControllerTest, AListIsThrownAwayByEachOfThePopupsOwnRefusals) {
    const auto tryWith = [this](const std::function<void(CZRAdModelList&)>& spoil) {
        const QPointer<CZRAdModelList> list = ListOf(DataOf({"18088"}));
        slot.SetAdModelList(list);
        spoil(*list);
        log.Forget();
        slot.TryShowAdPopup();
        EXPECT_TRUE(list.isNull());
        EXPECT_EQ(slot.GetAdModelList(), nullptr);
        return log.Lines().empty() ? std::string() : log.Lines().back().text;
    };

    EXPECT_THAT(tryWith([](CZRAdModelList& list) { list.GetAdList()->prepend(nullptr); }),
                StartsWith("[Ad] AdPopupModel is null, "));
    EXPECT_THAT(tryWith([](CZRAdModelList& list) { First(&list)->GetShowAreas()->clear(); }),
                StartsWith("[Ad] ShowAreas is null, "));
    time.SetServerTime(0);  // when an ad without a window is due
    EXPECT_THAT(tryWith([](CZRAdModelList& list) { *list.GetAdList() = {new CZRAdPopupModel(&list)}; }),
                StartsWith("[Ad] AdId is null, "));
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdPopupControllerTest, WithoutAListATryIsLoggedAsTheBaseDoes) {
    slot.TryShowAdPopup();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Try show ad popup, adType = 2, adPosition = 42"),
                                         Error("[Ad] adModelList is null, m_adType = 2, adPosition = 42")));
}

// Showing

TEST_F(AdPopupControllerTest, NoListIsNotShown) {
    slot.ShowAd(nullptr);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Show ad popup Failed, adModelList is null, adType = 2, "
                                              "adPosition = 42")));
}

TEST_F(AdPopupControllerTest, AListOfAnotherPositionIsNotShown) {
    Json::Value data = DataOf({"18088"});
    data["ad_position"] = 7;
    const std::unique_ptr<CZRAdModelList> list(ListOf(data));

    slot.ShowAd(list.get());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Show ad popup start. adType = 2, adPosition = 42"),
                                         Info("[Ad] Show ad popup failed, adPosition from svr is unknown, adType = 2, "
                                              "adPosition = 42, adPositionSvr = 7")));
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdPopupControllerTest, AListWithoutAPopupAtItsHeadIsNotShown) {
    const std::unique_ptr<CZRAdModelList> list(ListOf(DataOf({"18088"})));
    for (const QList<CZRAdModel*>& ads : {QList<CZRAdModel*>{}, {nullptr}, {new CZRAdModel(list.get())}}) {
        *list->GetAdList() = ads;
        log.Forget();

        slot.ShowAd(list.get());

        EXPECT_THAT(log.Lines(),
                    ElementsAre(Info("[Ad] Show ad popup start. adType = 2, adPosition = 42"),
                                Info("[Ad] Show ad popup failed, data error, adType = 2, adPosition = 42")));
    }
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdPopupControllerTest, TheListsOptionsAndTheFirstAdMakeTheCard) {
    Json::Value data = DataOf({"1", "2"});
    data["enable_close"] = false;
    data["show_duration"] = 33;
    const std::unique_ptr<CZRAdModelList> list(ListOf(data));

    slot.ShowAd(list.get());

    EXPECT_THAT(Texts(), HasSubstr("adId = 1, pushId = p-1, enableClose = false, showDuration = 33s\n"));
    EXPECT_FALSE(CloseButton());
    pictures.Forget();
}

// The picture is in

TEST_F(AdPopupControllerTest, WhenThePictureIsInTheCardIsShownReportedAndNoted) {
    slot.RequestAdBottomPopup(ZRAdApiTypeSearch, {});
    Answer(DataOf({"18088"}));
    time.Advance(1500ms);
    EXPECT_TRUE(Card() && Card()->isHidden());

    LetPictureIn();

    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_EQ(slot.m_adId, kAd);
    EXPECT_EQ(slot.m_pushId, kPush);
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(
            Info("[Ad] OnImageLoadSucceeded. adType = 2, adId = 18088, imageUrl = https://pictures.test/card.png, "
                 "loadCount = 1, time = 1500"),
            Info(StartsWith("[Ad] Report AdvertisementImageResourceDownloadResult success, ")),
            Info("[Ad] Show ad popup success. adType = 2, adPosition = 42, adId = 18088, pushId = p-1"),
            Info("[Ad] Report ExposeAd start, exposeAdEvent = ExposeAd, adId = 18088,"),
            Info("[Ad] Report StartExposeAd success, exposeId = dev20118088, requestId = dev20011, adId = 18088,"),
            Info("[Ad] Update last show ad popup time stamp, timeStamp = 201, adType = 2, adId = 18088, "
                 "adPosition = 42, key = AdLastShowTimeStampKey_2_42_77_1")));
    ASSERT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult", "StartExposeAd"));
    EXPECT_EQ(reports.Events()[0].params,
              R"({"action_times":1,"advertisement_id":"18088","advertisement_type":"2","error_content":"",)"
              R"("event_duration":1500,"is_retry":false,"request_url":"https://pictures.test/card.png",)"
              R"("result_code":"0"})");
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, kLastShow, "201"}));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_TRUE(slot.GetAdModelList());
}

TEST_F(AdPopupControllerTest, AWriteOfTheTimeThatFailsChangesNothing) {
    store.RefuseSaves(Failing::Always());
    Answer(DataOf({"18088"}));

    LetPictureIn();

    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_THAT(Texts(), HasSubstr("[Ad] Update last show ad popup time stamp, timeStamp = 200, "));
    reports.Forget();
    store.Forget();
}

TEST_F(AdPopupControllerTest, APictureWithoutAnAdIsPassedOver) {
    Answer(DataOf({"18088"}));

    slot.OnImageLoadSucceeded(kUrl, 1, 1, QString(), kPush);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] OnImageLoadSucceeded, adId is null, adType = 2, adPosition = 42")));
    EXPECT_TRUE(Card() && Card()->isHidden());
    EXPECT_FALSE(slot.m_adPopupView.isNull());
    EXPECT_THAT(reports.Events(), IsEmpty());
    pictures.Forget();
}

TEST_F(AdPopupControllerTest, ATabThatChangedWhileThePictureCameTakesTheCardAwayAndLeavesTheList) {
    Answer(DataOf({"18088"}));
    mainFrame.SetTabKey(20003);

    LetPictureIn();

    EXPECT_TRUE(slot.m_adPopupView.isNull());
    EXPECT_TRUE(Card() && Card()->isHidden());
    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_EQ(slot.m_adId, QString());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] ShowAreas donot contain currentTab")),
                                         Info("[Ad] Delete AdPopupView, adType = 2, adPosition = 42, adId = ")));
    time.Settle();
    EXPECT_EQ(Card(), nullptr);

    mainFrame.SetTabKey(20001);
    slot.TryShowAdPopup();
    LetPictureIn();
    EXPECT_TRUE(Card() && Card()->isVisible());
    store.Forget();
    Forget();
}

TEST_F(AdPopupControllerTest, ASlotThatWasTakenMeanwhileIsReportedAndNothingElse) {
    Answer(DataOf({"18088"}));
    slots.Allow(kSlotAdPopup, false);

    LetPictureIn();

    EXPECT_THAT(reports.Names(), ElementsAre("FilterAdDisplay"));
    EXPECT_EQ(slots.AskedCount(), 2);
    EXPECT_TRUE(slot.m_adPopupView.isNull());
}

TEST_F(AdPopupControllerTest, AViewThatIsGoneIsNotShown) {
    slot.SetAdModelList(ListOf(DataOf({"18088"})));

    slot.OnImageLoadSucceeded(kUrl, 1, 1, kAd, kPush);

    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] OnImageLoadSucceeded. ")),
                                         Info(StartsWith("[Ad] Report AdvertisementImageResource")),
                                         Info("[Ad] Show ad popup failed, adPopupView is null. adType = 2, "
                                              "adPosition = 42, adId = 18088")));
    EXPECT_EQ(slot.m_adId, QString());
    EXPECT_THAT(reports.Names(), SizeIs(1));
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AdPopupControllerTest, AListThatWentMeanwhileTakesTheCardAlong) {
    Answer(DataOf({"18088"}));
    slot.SetAdModelList(nullptr);

    LetPictureIn();

    EXPECT_TRUE(slot.m_adPopupView.isNull());
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Cannot show ad popup, adModelList is null, ")),
                                         Info(StartsWith("[Ad] Delete AdPopupView, "))));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdPopupControllerTest, TheCardsAdIsShownByTheRulesOfTheListThatIsStoredByThen) {
    Answer(DataOf({"1"}));
    Json::Value data = DataOf({"2"});
    data["show_duration"] = 33;
    data["show_interval_type"] = 5;
    data["ad"][0]["popup_ad"]["show_areas"] = JsonOf("[503]");
    slot.SetAdModelList(ListOf(data));
    mainFrame.SetTabKey(20017);  // an area of the second list alone

    LetPictureIn();

    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_EQ(slot.m_adId, QStringLiteral("1"));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, "AdLastShowTimeStampKey_2_42_77_5", "200"}));
    ASSERT_TRUE(CloseTimer());
    EXPECT_EQ(CloseTimer()->interval(), 33'000);
    ASSERT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult", "StartExposeAd"));
    EXPECT_THAT(reports.Events()[1].params, HasSubstr(R"("advertisement_id":"1")"));
}

TEST_F(AdPopupControllerTest, TheTimeIsSavedForTheUserAndTheIntervalType) {
    Json::Value data = DataOf({"18088"});
    data["show_interval_type"] = 4;
    account.Set(78);
    Answer(data);

    LetPictureIn();

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, "AdLastShowTimeStampKey_2_42_78_4", "200"}));
    EXPECT_THAT(log.Lines().back(), Info(EndsWith(", key = AdLastShowTimeStampKey_2_42_78_4")));
    reports.Forget();
}

TEST_F(AdPopupControllerTest, ACardThatIsTakenAwayAsItComesUpCountsAsGone) {
    Answer(DataOf({"18088"}));
    class CTaker : public QObject {
    public:
        explicit CTaker(CBottomSlot& from) : m_from(from) {}
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Show) {
                m_from.DeleteAdPopupView();
            }
            return false;
        }

    private:
        CBottomSlot& m_from;
    } taker(slot);
    Card()->installEventFilter(&taker);

    LetPictureIn();

    EXPECT_THAT(log.Lines().back(), Info("[Ad] Show ad popup failed, adPopupView is null. adType = 2, adPosition = 42, "
                                         "adId = 18088"));
    EXPECT_EQ(slot.m_adId, QString());
    EXPECT_EQ(CloseTimer(), nullptr);
    EXPECT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult"));
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AdPopupControllerTest, ANewListReplacesTheCardOnScreenWithoutClosingItsExposure) {
    Show("1");
    CZRAdBottomPopupView* before = Card();

    Answer(DataOf({"2"}));
    EXPECT_EQ(slot.m_adId, QStringLiteral("1"));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    time.Settle();
    EXPECT_NE(Card(), before);
    EXPECT_TRUE(Card() && Card()->isHidden());

    LetPictureIn();
    EXPECT_EQ(slot.m_adId, QStringLiteral("2"));
    store.Forget();
    Forget();
}

// Lost pictures

TEST_F(AdPopupControllerTest, APictureThatIsLostTakesTheCardAwayAndClosesNothing) {
    Answer(DataOf({"18088"}));
    for (int i = 0; i < 3; ++i) {
        pictures.Fail(pictures.LastLoad());
    }

    EXPECT_TRUE(slot.m_adPopupView.isNull());
    EXPECT_TRUE(slot.GetAdModelList());
    ASSERT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult"));
    EXPECT_THAT(reports.Events()[0].params,
                HasSubstr(R"("is_retry":true,"request_url":"https://pictures.test/card.png",)"
                          R"("result_code":"-1")"));
    EXPECT_THAT(Texts(), HasSubstr("[Ad] OnImageLoadFailed, adType = 2, imageUrl = https://pictures.test/card.png, "
                                   "loadCount = 3, time = 0\n[Ad] Report AdvertisementImageResourceDownloadResult"));
    EXPECT_THAT(log.Lines().back(), Info("[Ad] Delete AdPopupView, adType = 2, adPosition = 42, adId = "));
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
}

}  // namespace
