// How long a popup stays on screen.
#include <limits>

#include "Ad/AdPopupTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class AdPopupTimerTest : public AdPopupTest {};

TEST_F(AdPopupTimerTest, AfterItsDurationThePopupClosesByTimeout) {
    Show();
    time.Advance(14'999ms);
    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_THAT(log.Lines(), IsEmpty());

    time.Advance(1ms);

    EXPECT_EQ(Card(), nullptr);
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Ad] Delete ad popup close timer. adType = 2, adPosition = 42, adId = 18088"),
                    Info("[Ad] Delete AdPopupView, adType = 2, adPosition = 42, adId = 18088"),
                    Info("[Ad] Closed ad by timeout. adType = 2, adPosition = 42, adId = 18088"),
                    Info(StartsWith("[Ad] Report ExposeAd end success, ")), Error(StartsWith("[Ad] Expose ad start, ")),
                    Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = 18088")));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(slot.GetAdModelList(), nullptr);

    time.Advance(60s);
    EXPECT_THAT(log.Lines(), SizeIs(6));
}

TEST_F(AdPopupTimerTest, TheDurationBeginsWhenThePictureIsIn) {
    Answer(DataOf({"18088"}));
    time.Advance(20s);
    EXPECT_EQ(CloseTimer(), nullptr);
    LetPictureIn();
    ASSERT_TRUE(CloseTimer());
    EXPECT_TRUE(CloseTimer()->isSingleShot());
    EXPECT_EQ(CloseTimer()->interval(), 15'000);
    store.Forget();
    Forget();
}

TEST_F(AdPopupTimerTest, WithoutADurationThereIsNoTimerAndThePopupStays) {
    for (const int duration : {0, -1}) {
        Json::Value data = DataOf({"18088"});
        data["show_duration"] = duration;
        ShowList(data);
        EXPECT_EQ(CloseTimer(), nullptr);

        time.Advance(24h);

        EXPECT_TRUE(Card() && Card()->isVisible());
        slot.CloseAd(ZRAdCloseTypeTabSwitched);
        time.SetServerTime(kNow * 1000);
        Forget();
    }
}

TEST_F(AdPopupTimerTest, PopupClosesWhenItsDurationIsTheShortest) {
    Json::Value data = DataOf({"18088"});
    data["show_duration"] = 1;
    ShowList(data);
    EXPECT_TRUE(Card() && Card()->isVisible());

    time.Advance(1s);

    EXPECT_EQ(Card(), nullptr);
    Forget();
}

TEST_F(AdPopupTimerTest, ADurationBeyondWhatATimerCountsIsAsLongAsItCounts) {
    Json::Value data = DataOf({"18088"});
    for (const int duration : {2147484, std::numeric_limits<int>::max()}) {
        data["show_duration"] = duration;
        ShowList(data);
        ASSERT_TRUE(CloseTimer());
        EXPECT_EQ(CloseTimer()->interval(), std::numeric_limits<int>::max());
        slot.CloseAd(ZRAdCloseTypeTabSwitched);
        time.Settle();
        Forget();
    }
}

TEST_F(AdPopupTimerTest, ASecondShowBeginsTheDurationAnew) {
    Show("1");
    time.Advance(10s);
    Show("2");
    time.Settle();
    EXPECT_THAT(slot.findChildren<QTimer*>(), SizeIs(1));

    time.Advance(10s);
    EXPECT_TRUE(Card() && Card()->isVisible());
    time.Advance(5s);
    EXPECT_EQ(Card(), nullptr);
    Forget();
}

TEST_F(AdPopupTimerTest, CardStaysWhenItReplacesOneWhoseTimeIsOverInTheSameTurn) {
    QTimer::singleShot(15s, &slot, [this] { Show("2"); });  // ahead of the timer of the card
    Show("1");

    time.Advance(15s);

    ASSERT_TRUE(Card());
    EXPECT_TRUE(Card()->isVisible());
    EXPECT_EQ(slot.m_adId, QStringLiteral("2"));
    Forget();
}

TEST_F(AdPopupTimerTest, ASecondNoticeOfThePictureBeginsTheDurationAnewWithOneTimer) {
    Show();
    time.Advance(10s);

    slot.OnImageLoadSucceeded(QStringLiteral("https://pictures.test/card.png"), 1, 1, QStringLiteral("18088"),
                              QStringLiteral("p-1"));
    time.Settle();

    EXPECT_THAT(log.Lines(), Contains(Info("[Ad] Delete ad popup close timer. adType = 2, adPosition = 42, "
                                           "adId = 18088"))
                                 .Times(1));
    EXPECT_THAT(slot.findChildren<QTimer*>(), SizeIs(1));
    time.Advance(14'999ms);
    EXPECT_TRUE(Card() && Card()->isVisible());
    time.Advance(1ms);
    EXPECT_EQ(Card(), nullptr);
    store.Forget();
    Forget();
}

TEST_F(AdPopupTimerTest, TimerBeginsBeforeTheLastShowTimeIsStoredWhenANoticeOfThePictureComesAgain) {
    Show();

    slot.OnImageLoadSucceeded(QStringLiteral("https://pictures.test/card.png"), 1, 1, QStringLiteral("18088"),
                              QStringLiteral("p-1"));

    const std::string texts = Texts();
    const size_t timer = texts.find("[Ad] Delete ad popup close timer. ");
    const size_t lastShow = texts.find("[Ad] Update last show ad popup time stamp, ");
    ASSERT_NE(timer, std::string::npos);
    ASSERT_NE(lastShow, std::string::npos);
    EXPECT_LT(timer, lastShow);
    store.Forget();
    Forget();
}

TEST_F(AdPopupTimerTest, RunningTimerStaysWhenTheNextNoticeFindsAListWithoutADuration) {
    Show();
    time.Advance(10s);
    Json::Value data = DataOf({"18088"});
    data["show_duration"] = 0;
    slot.SetAdModelList(ListOf(data));

    slot.OnImageLoadSucceeded(QStringLiteral("https://pictures.test/card.png"), 1, 1, QStringLiteral("18088"),
                              QStringLiteral("p-1"));

    EXPECT_THAT(Texts(), Not(HasSubstr("Delete ad popup close timer")));
    time.Advance(4'999ms);
    EXPECT_TRUE(Card() && Card()->isVisible());
    time.Advance(1ms);
    EXPECT_EQ(Card(), nullptr);
    store.Forget();
    Forget();
}

TEST_F(AdPopupTimerTest, TheTimerGoesWithAWord) {
    Show();

    slot.DeleteAdPopupCloseTimer();
    slot.DeleteAdPopupCloseTimer();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Delete ad popup close timer. adType = 2, adPosition = 42, adId = 18088")));
    time.Advance(1h);
    EXPECT_TRUE(Card() && Card()->isVisible());
}

}  // namespace
