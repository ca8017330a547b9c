#include "Ad/Controller/ZRAdBottomPopupController.h"

#include <QPointer>

#include "Ad/AdPopupTest.h"
#include "Ad/MethodsOf.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QString kAd = QStringLiteral("18088");
const QString kPush = QStringLiteral("p-1");

class AdBottomPopupTest : public AdPopupTest {
protected:
    void Add() { slot.AddAdPopupView(First(list.get()), true, 15, kAd, kPush); }

    std::unique_ptr<CZRAdModelList> list{ListOf(DataOf({"18088"}))};
};

TEST_F(AdBottomPopupTest, IsTheSlotOfPopupsAtPosition42) {
    EXPECT_EQ(slot.GetAdPosition(), 42);
    EXPECT_EQ(slot.m_adType, ZRAdTypePopup);
}

TEST_F(AdBottomPopupTest, ARequestNamesThePositionTheTypeAndTheAdsWanted) {
    slot.RequestAdBottomPopup(ZRAdApiTypeCheck, {QStringLiteral("8"), QStringLiteral("9")});

    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(http.Started()[0].request.m_strUrl, "https://ads.test/ad/check");
    EXPECT_EQ(http.Started()[0].request.m_strBody,
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"8\",\n\t\t\"9\"\n\t],\n\t\"ad_position\" : 42,\n\t\"ad_type\" : 2,\n"
              "\t\"request_id\" : \"dev20011\"\n}\n");

    time.Advance(10s);
    slot.RequestAdBottomPopup(ZRAdApiTypeSearch, {});
    EXPECT_EQ(http.Started().back().request.m_strUrl, "https://ads.test/ad/search");
    EXPECT_THAT(http.Started().back().request.m_strBody, Not(HasSubstr("ad_id\"")));
}

// Conditions that prevent a card, in the order of the checks

TEST_F(AdBottomPopupTest, NoAdMakesNoCard) {
    mainFrame.TakeAway();

    slot.AddAdPopupView(nullptr, true, 15, kAd, kPush);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AddAdBottomPopupView, adPopupModel is null, adType = 2, "
                                              "adPosition = 42, adId = 18088")));
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdBottomPopupTest, AnAdWithoutACardsContentMakesNone) {
    mainFrame.TakeAway();
    CZRAdPopupModel bare(nullptr);

    slot.AddAdPopupView(&bare, true, 15, kAd, kPush);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AddAdBottomPopupView, adBottomPopupModel is null, adType = 2, "
                                              "adPosition = 42, adId = 18088")));
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdBottomPopupTest, WithoutAMainFrameThereIsNoCard) {
    mainFrame.TakeAway();

    Add();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AddAdBottomPopupView, spMainFrameInterface is null, adType = 2, "
                                              "adPosition = 42, adId = 18088")));
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdBottomPopupTest, WithoutAMainWindowThereIsNoCard) {
    mainFrame.Offer(nullptr);

    Add();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] AddAdBottomPopupView, MainFrame is null, adType = 2, "
                                              "adPosition = 42, adId = 18088")));
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdBottomPopupTest, ARefusalLeavesAnEarlierCardAlone) {
    Add();
    CZRAdBottomPopupView* card = Card();
    Forget();

    slot.AddAdPopupView(nullptr, true, 15, kAd, kPush);
    mainFrame.Offer(nullptr);
    Add();
    time.Settle();

    EXPECT_THAT(Cards(), ElementsAre(card));
    EXPECT_EQ(slot.m_adPopupView, card);
    pictures.Forget();
}

// The card

TEST_F(AdBottomPopupTest, ACardIsMadeHiddenWithItsTargetAheadOfItsPicture) {
    Add();

    ASSERT_TRUE(Card());
    EXPECT_EQ(slot.m_adPopupView, Card());
    EXPECT_EQ(Card()->parentWidget(), &window);
    EXPECT_TRUE(Card() && Card()->isHidden());
    EXPECT_EQ(Card()->geometry(), QRect(160, 432, 360, 120));
    EXPECT_TRUE(CloseButton());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Create CZRAdBottomPopupView, adType = 2, adPosition = 42, adId = 18088, "
                                 "pushId = p-1, enableClose = true, showDuration = 15s"),
                            Info("[Ad] Set schema, schema = https://www.test/autumn"),
                            Info("[Ad] Set image url, imageUrl = https://pictures.test/card.png")));
    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, "https://pictures.test/card.png");
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdBottomPopupTest, APictureThatIsInAtOnceShowsTheCardWithItsTarget) {
    pictures.AnswerAtOnce();

    slot.OnRequestAdSucceeded(list.release(), 5);

    ASSERT_TRUE(Card());
    EXPECT_TRUE(Card()->isVisible());
    EXPECT_EQ(slot.m_adId, kAd);
    Click(Card());
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].url, "https://www.test/autumn");
    store.Forget();
    Forget();
}

TEST_F(AdBottomPopupTest, WithoutTheCloseOptionTheCardHasNoButton) {
    slot.AddAdPopupView(First(list.get()), false, 0, kAd, QString());

    EXPECT_TRUE(Card());
    EXPECT_FALSE(CloseButton());
    EXPECT_THAT(Texts(), HasSubstr("pushId = , enableClose = false, showDuration = 0s\n"));
    pictures.Forget();
}

TEST_F(AdBottomPopupTest, TheDurationIsOnlyLogged) {
    Add();
    EXPECT_EQ(CloseTimer(), nullptr);
    pictures.Forget();
}

TEST_F(AdBottomPopupTest, ASecondCardReplacesTheFirstWhichIsHeardNoMore) {
    Add();
    const QPointer<CZRAdBottomPopupView> first = Card();
    const int firstLoad = pictures.LastLoad();
    Forget();

    Add();

    ASSERT_THAT(Cards(), SizeIs(2));
    EXPECT_NE(slot.m_adPopupView, first);
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Delete AdPopupView, adType = 2, adPosition = 42, adId = "),
                            Info(StartsWith("[Ad] Create CZRAdBottomPopupView, ")),
                            Info(StartsWith("[Ad] Set schema, ")), Info(StartsWith("[Ad] Set image url"))));
    Forget();
    pictures.Succeed(firstLoad);
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_TRUE(Card() && Card()->isHidden());

    time.Settle();
    EXPECT_TRUE(first.isNull());
    EXPECT_THAT(Cards(), SizeIs(1));
    pictures.Forget();
}

TEST_F(AdBottomPopupTest, ACardOnItsWayOutReportsNothing) {
    Show();
    CZRAdBottomPopupView* card = Card();

    slot.DeleteAdPopupView();
    EXPECT_TRUE(slot.m_adPopupView.isNull());
    Forget();
    card->OnImageLoadSucceeded(QStringLiteral("u"), 1, 1);
    card->OnImageLoadFailed(QStringLiteral("u"), QString(), 1, 3);
    card->OnAdClicked(true);
    card->OnCloseButtonClicked();

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdBottomPopupTest, DeletingNoCardDoesNothing) {
    slot.DeleteAdPopupView();

    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdBottomPopupTest, TheCardMovesWhenTheLayoutIsToldToHaveChanged) {
    mainFrame.SetNavigationCollapsed(true);
    Show();
    mainFrame.SetNavigationCollapsed(false);
    window.resize(900, 500);
    time.Settle();
    EXPECT_EQ(Card()->pos(), QPoint(84, 432));

    slot.UpdateAdBottomPopupCoordinates();

    EXPECT_EQ(Card()->pos(), QPoint(160, 332));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdBottomPopupTest, WithoutACardThereIsNothingToMove) {
    slot.UpdateAdBottomPopupCoordinates();
    Show();
    slot.DeleteAdPopupView();
    const QPoint before = Card()->pos();
    mainFrame.SetNavigationCollapsed(true);

    slot.UpdateAdBottomPopupCoordinates();

    EXPECT_EQ(Card()->pos(), before);
}

TEST_F(AdBottomPopupTest, ACardThatWasRefusedLeavesTheAdForALaterTry) {
    mainFrame.Offer(nullptr);
    slot.OnRequestAdSucceeded(list.release(), 5);
    Forget();
    EXPECT_EQ(Card(), nullptr);
    EXPECT_TRUE(slot.GetAdModelList());

    mainFrame.Offer(&window);
    slot.TryShowAdPopup();

    EXPECT_TRUE(Card());
    pictures.Forget();
}

}  // namespace
