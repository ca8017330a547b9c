// How a popup leaves the screen, and what is withdrawn.
#include <QApplication>
#include <QLineEdit>
#include <QPointer>

#include "Ad/AdPopupTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class AdPopupCloseTest : public AdPopupTest {
protected:
    void Offline(QList<QString> ids) { slot.OfflineAd(ids); }

    bool IsOnScreen() { return !slot.m_adPopupView.isNull() && slot.m_adPopupView->isVisible(); }
};

TEST_F(AdPopupCloseTest, AClickReportsItselfClosesByItAndTakesTheCardAwayOnce) {
    Show();
    time.Advance(2500ms);
    Forget();

    Click(Card());

    EXPECT_FALSE(IsOnScreen());
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].businessType, 0);
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Open schema success, schema = https://www.test/autumn"),
                            Info("[Ad] Report ClickAd success, actionId = dev20218088, requestId = , actionType = 0, "
                                 "exposeId = dev20018088, adId = 18088, jumpResult = true"),
                            Info("[Ad] Delete ad popup close timer. adType = 2, adPosition = 42, adId = 18088"),
                            Info("[Ad] Delete AdPopupView, adType = 2, adPosition = 42, adId = 18088"),
                            Info("[Ad] Closed ad by ad clicked. adType = 2, adPosition = 42, adId = 18088"),
                            Info(StartsWith("[Ad] Report ExposeAd end success, exposeId = dev20018088, ")),
                            Error("[Ad] Expose ad start, path = /ad/expose, adType = 2, adPosition = 42, adId = 18088, "
                                  "exposeId = dev20018088, exposeDuration = 2500, pushId = p-1"),
                            Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = 18088")));
    ASSERT_THAT(reports.Names(), ElementsAre("ClickAd", "ExposeAd"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("result_status":1)"));
    EXPECT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    time.Settle();
    EXPECT_EQ(Card(), nullptr);
}

TEST_F(AdPopupCloseTest, AClickWhoseTargetIsRefusedClosesAllTheSame) {
    Json::Value data = DataOf({"18088"});
    data["ad"][0]["popup_ad"]["bottom_popup"]["schema"] = "ftp://www.test/";
    ShowList(data);

    Click(Card());

    EXPECT_FALSE(IsOnScreen());
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    ASSERT_THAT(reports.Names(), ElementsAre("ClickAd", "ExposeAd"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("result_status":0)"));
    Forget();
}

TEST_F(AdPopupCloseTest, TheCloseButtonReportsItselfClosesByItAndTakesTheCardAwayOnce) {
    Show();

    Click(CloseButton());

    EXPECT_FALSE(IsOnScreen());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Ad] Report ClickAd success, actionId = dev20018088, requestId = , actionType = 2, "
                         "exposeId = dev20018088, adId = 18088, jumpResult = false"),
                    Info(StartsWith("[Ad] Delete ad popup close timer. ")), Info(StartsWith("[Ad] Delete AdPopupView")),
                    Info("[Ad] Closed ad by close button clicked. adType = 2, adPosition = 42, adId = 18088"),
                    Info(StartsWith("[Ad] Report ExposeAd end success, ")), Error(StartsWith("[Ad] Expose ad start, ")),
                    Info(StartsWith("[Ad] Clear ad data. "))));
    ASSERT_THAT(reports.Names(), ElementsAre("ClickAd", "ExposeAd"));
    EXPECT_THAT(reports.Events()[0].params, AllOf(HasSubstr(R"("action_type":"2")"), Not(HasSubstr("result_status"))));
    http.Forget();
}

TEST_F(AdPopupCloseTest, FocusPassesOnWhenTheCardIsClosedByTheKeyboard) {
    QLineEdit page(&window);
    page.show();
    window.activateWindow();
    time.Settle();
    Show();
    page.setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), CloseButton());

    QTest::keyClick(window.windowHandle(), Qt::Key_Space);
    time.Settle();

    EXPECT_EQ(Card(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), &page);
    Forget();
}

TEST_F(AdPopupCloseTest, ACloseTakesTheViewAwayAheadOfItsReports) {
    Show();

    slot.CloseAd(ZRAdCloseTypeTabSwitched);

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info(StartsWith("[Ad] Delete ad popup close timer. ")), Info(StartsWith("[Ad] Delete AdPopupView")),
                    Info("[Ad] Closed ad by tab switched. adType = 2, adPosition = 42, adId = 18088"),
                    Info(StartsWith("[Ad] Report ExposeAd end ")), Error(StartsWith("[Ad] Expose ad start, ")),
                    Info(StartsWith("[Ad] Clear ad data. "))));
    EXPECT_EQ(slot.m_adId, QString());
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    http.Forget();
}

TEST_F(AdPopupCloseTest, WithoutAViewOnlyALogoutReachesTheBase) {
    Show();
    slot.DeleteAdPopupView();
    Forget();
    for (int type = -1; type <= 8; ++type) {
        if (type != ZRAdCloseTypeLogout) {
            slot.CloseAd(ZRAdCloseType(type));
        }
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_TRUE(slot.GetAdModelList());

    slot.CloseAd(ZRAdCloseTypeLogout);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Closed ad by logout. adType = 2, adPosition = 42, adId = 18088"),
                            Info(StartsWith("[Ad] Report ExposeAd end success, ")),
                            Error(StartsWith("[Ad] Expose ad start, ")), Info(StartsWith("[Ad] Clear ad data. "))));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    http.Forget();
}

TEST_F(AdPopupCloseTest, ALogoutWithoutAnAdOnScreenLeavesTheListToWhoeverClears) {
    slot.SetAdModelList(ListOf(DataOf({"1"})));

    slot.CloseAd(ZRAdCloseTypeLogout);

    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdPopupCloseTest, ALoadingCardWithoutAnAdDiesWithoutAReport) {
    Answer(DataOf({"18088"}));

    slot.CloseAd(ZRAdCloseTypeLanguageChanged);

    EXPECT_TRUE(slot.m_adPopupView.isNull());
    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Delete AdPopupView, adType = 2, adPosition = 42, adId = ")));
    EXPECT_THAT(reports.Events(), IsEmpty());
    pictures.Forget();
}

// Withdrawn ads

TEST_F(AdPopupCloseTest, TheAdOnScreenThatIsWithdrawnClosesByIt) {
    Show();

    Offline({QStringLiteral("7"), QStringLiteral("18088")});

    EXPECT_FALSE(IsOnScreen());
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    EXPECT_THAT(Texts(), HasSubstr("[Ad] Closed ad by push offline. adType = 2, adPosition = 42, adId = 18088\n"));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    Forget();
}

TEST_F(AdPopupCloseTest, AListThatWaitsBehindAWithdrawnAdStays) {
    Show("1");
    slot.SetAdModelList(ListOf(DataOf({"2", "1"})));
    CZRAdModelList* waiting = slot.GetAdModelList();

    Offline({QStringLiteral("1")});

    EXPECT_FALSE(IsOnScreen());
    ASSERT_EQ(slot.GetAdModelList(), waiting);
    EXPECT_EQ(First(waiting)->GetAdId(), QStringLiteral("2"));
    EXPECT_EQ(slot.m_adId, QString());
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_THAT(Texts(), HasSubstr("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = 1\n"));
    Forget();
}

TEST_F(AdPopupCloseTest, AWaitingListWhoseFirstAdIsWithdrawnGoesAndTheAdOnScreenStays) {
    Show("1");
    slot.SetAdModelList(ListOf(DataOf({"2", "3"})));
    const QPointer<CZRAdModelList> waiting = slot.GetAdModelList();

    Offline({QStringLiteral("3")});
    EXPECT_FALSE(waiting.isNull());
    Offline({QStringLiteral("2")});

    EXPECT_TRUE(waiting.isNull());
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    EXPECT_TRUE(IsOnScreen());
    EXPECT_EQ(slot.m_adId, QStringLiteral("1"));
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdPopupCloseTest, BothMayBeWithdrawnByOneWord) {
    Show("1");
    slot.SetAdModelList(ListOf(DataOf({"2"})));

    Offline({QStringLiteral("2"), QStringLiteral("1")});

    EXPECT_FALSE(IsOnScreen());
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    Forget();
}

TEST_F(AdPopupCloseTest, OtherAdsAndNoneWithdrawNothing) {
    Show();

    Offline({});
    Offline({QStringLiteral("1808"), QStringLiteral("180880"), QString()});

    EXPECT_TRUE(IsOnScreen());
    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdPopupCloseTest, AnEmptyIdDoesNotMeanACardWhoseAdIsNotOnScreenYet) {
    Answer(DataOf({"18088"}));

    Offline({QString()});

    EXPECT_FALSE(slot.m_adPopupView.isNull());
    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_THAT(log.Lines(), IsEmpty());
    pictures.Forget();
}

TEST_F(AdPopupCloseTest, AnAdThatIsWithdrawnWhileItsPictureComesIsNotShown) {
    Answer(DataOf({"18088"}));

    Offline({QStringLiteral("18088")});
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    LetPictureIn();

    EXPECT_TRUE(slot.m_adPopupView.isNull());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AdPopupCloseTest, AWithdrawnListWithoutAViewOnlyGoes) {
    slot.SetAdModelList(ListOf(DataOf({"1"})));

    Offline({QStringLiteral("1")});

    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
