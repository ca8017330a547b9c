// The bottom popup whose window, card, slot or manager goes at any moment.
#include <QApplication>
#include <QLineEdit>
#include <QPointer>

#include "Ad/AdManagerTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QString kAd = QStringLiteral("18088");

/// Acts once, as its widget comes up or gets another event.
class CAtShow : public QObject {
public:
    CAtShow(QWidget* widget, std::function<void()> act, QEvent::Type type = QEvent::Show)
        : m_fnAct(std::move(act)), m_type(type) {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == m_type) {
            watched->removeEventFilter(this);
            m_fnAct();
        }
        return false;
    }

private:
    std::function<void()> m_fnAct;
    QEvent::Type m_type;
};

/// A card in a main window which dies ahead of the slot.
class AdPopupWindowLifeTest : public AdPopupTest {
protected:
    AdPopupWindowLifeTest() {
        passing->resize(900, 600);
        passing->show();
        time.Settle();
        mainFrame.Offer(passing.get());
    }

    CZRAdBottomPopupView* PassingCard() { return passing->findChild<CZRAdBottomPopupView*>(); }

    void EndTheWindow() {
        const QPointer<QWidget> card = PassingCard();
        passing.reset();
        EXPECT_TRUE(card.isNull());
        EXPECT_TRUE(slot.m_adPopupView.isNull());
    }

    std::unique_ptr<CAdWindow> passing = std::make_unique<CAdWindow>();
};

TEST_F(AdPopupWindowLifeTest, ALoadingCardGoesWithItsWindowAndNothingIsReported) {
    Answer(DataOf({"18088"}));
    ASSERT_TRUE(PassingCard() && PassingCard()->isHidden());

    EndTheWindow();
    LetPictureIn();
    slot.UpdateAdBottomPopupCoordinates();
    time.Advance(1h);
    slot.CloseAd(ZRAdCloseTypeTimeout);
    slot.CloseAd(ZRAdCloseTypeTabSwitched);
    slot.CloseAd(ZRAdCloseTypeLogout);
    slot.DeleteAdPopupView();

    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
}

TEST_F(AdPopupWindowLifeTest, AnAdWhoseWindowDiedIsTriedInTheNextOne) {
    Answer(DataOf({"18088"}));
    ASSERT_TRUE(PassingCard());
    EndTheWindow();
    pictures.Forget();
    time.SetServerTime(kNow * 1000);
    mainFrame.Offer(&window);

    slot.TryShowAdPopup();
    ASSERT_TRUE(Card());
    LetPictureIn();

    EXPECT_TRUE(Card()->isVisible());
    EXPECT_EQ(slot.m_adId, kAd);
    EXPECT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult", "StartExposeAd"));
    store.Forget();
    Forget();
}

TEST_F(AdPopupWindowLifeTest, AfterAShownCardsWindowDiedNeitherTimeNorTabCloses) {
    Show();
    ASSERT_TRUE(PassingCard() && PassingCard()->isVisible());
    ASSERT_TRUE(CloseTimer());

    EndTheWindow();
    time.Advance(15s);
    slot.CloseAd(ZRAdCloseTypeTabSwitched);
    slot.UpdateAdBottomPopupCoordinates();

    EXPECT_EQ(slot.m_adId, kAd);
    EXPECT_TRUE(slot.GetAdModelList());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdPopupWindowLifeTest, AfterAShownCardsWindowDiedALogoutEndsTheExposure) {
    Show();
    ASSERT_TRUE(PassingCard() && PassingCard()->isVisible());
    time.Advance(4s);

    EndTheWindow();
    slot.CloseAd(ZRAdCloseTypeLogout);

    EXPECT_EQ(slot.m_adId, QString());
    EXPECT_EQ(slot.GetAdModelList(), nullptr);
    EXPECT_THAT(Texts(), StartsWith("[Ad] Closed ad by logout. adType = 2, adPosition = 42, adId = 18088\n"));
    EXPECT_THAT(Texts(), HasSubstr(", exposeDuration = 4000, "));
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_THAT(http.Started()[0].request.m_strUrl, EndsWith("/ad/expose"));
    Forget();
    time.Advance(1h);
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdPopupWindowLifeTest, LoadingCardStaysWhenTheTimeOfACardBeforeItWithoutAWindowIsOver) {
    Show("1");
    ASSERT_TRUE(CloseTimer());
    EndTheWindow();
    time.Advance(10s);
    mainFrame.Offer(&window);
    Answer(DataOf({"2"}));
    ASSERT_TRUE(Card());

    time.Advance(6s);

    EXPECT_TRUE(Card());
    EXPECT_FALSE(slot.m_adPopupView.isNull());
    pictures.Forget();
    Forget();
}

TEST_F(AdPopupWindowLifeTest, CardWithoutADurationStaysWhenTheTimeOfACardBeforeItWithoutAWindowIsOver) {
    Show("1");
    ASSERT_TRUE(CloseTimer());
    EndTheWindow();
    mainFrame.Offer(&window);
    Json::Value data = DataOf({"2"});
    data["show_duration"] = 0;
    ShowList(data);

    time.Advance(1h);

    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdPopupWindowLifeTest, TimerIsDeletedWhenAClickIsReportedAfterTheWindowDied) {
    Show();
    EndTheWindow();
    slot.OnAdClicked(true, kAd);
    EXPECT_THAT(log.Lines().back(), Info(StartsWith("[Ad] Delete ad popup close timer. ")));
    Forget();
}

TEST_F(AdPopupWindowLifeTest, TimerIsDeletedWhenACloseIsReportedAfterTheWindowDied) {
    Show();
    EndTheWindow();
    slot.OnCloseButtonClicked(kAd);
    EXPECT_THAT(log.Lines().back(), Info(StartsWith("[Ad] Delete ad popup close timer. ")));
    Forget();
}

// A card that somebody else deletes

class AdPopupLifeTest : public AdPopupTest {};

TEST_F(AdPopupLifeTest, ACardThatSomebodyDeletedIsNotMissed) {
    Show();
    ASSERT_TRUE(Card());

    delete Card();
    slot.UpdateAdBottomPopupCoordinates();
    time.Advance(15s);
    slot.DeleteAdPopupCloseTimer();
    slot.CloseAd(ZRAdCloseTypeLanguageChanged);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_EQ(slot.m_adId, kAd);
    log.Forget();
}

TEST_F(AdPopupLifeTest, ALoadingCardWhoseConnectionsWereUndoneReportsNothing) {
    Answer(DataOf({"18088"}));
    const QPointer<CZRAdBottomPopupView> card = Card();
    ASSERT_TRUE(card);

    slot.DeleteAdPopupView();
    log.Forget();
    LetPictureIn();
    EXPECT_TRUE(card && card->isHidden());
    card->OnCloseButtonClicked();
    card->OnAdClicked(true);
    time.Settle();

    EXPECT_TRUE(card.isNull());
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    for (const LogLine& line : log.Lines()) {
        EXPECT_THAT(line.text, Not(HasSubstr("OnImageLoadSucceeded")));
    }
    log.Forget();
}

TEST_F(AdPopupLifeTest, ACardThatItsOwnSignalsDeleteIsReportedAsAnyOther) {
    Show();
    CZRAdBottomPopupView* card = Card();
    ASSERT_TRUE(card && CloseButton());
    const QPointer<QWidget> alive = card;
    QObject::connect(card, &CZRAdBottomPopupView::CloseButtonClicked, &window, [card] { delete card; });

    Click(CloseButton());
    time.Advance(1h);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(reports.Names(), ElementsAre("ClickAd", "ExposeAd"));
    EXPECT_EQ(slot.m_adId, QString());
    Forget();
}

// The manager and its slot

class AdPopupManagerLifeTest : public AdManagerTest {
protected:
    /// Does everything that the user and the web can still do to a card without listeners.
    void UseUp(CZRAdBottomPopupView* card) {
        if (pictures.OutstandingCount() > 0) {
            LetPictureIn();
        }
        card->show();
        time.Settle();
        Click(CloseButton());
        Click(card);
        time.Advance(1h);
    }
};

TEST_F(AdPopupManagerLifeTest, ALoadingCardWhoseManagerIsGoneReportsNothing) {
    Start();
    bus.HostSend(10650);
    http.Answer(http.LastTask(), Text(DataOf({"18088"})));
    time.Settle();
    const QPointer<CZRAdBottomPopupView> card = Card();
    ASSERT_TRUE(card && card->isHidden());
    Forget();

    manager.reset();
    ASSERT_TRUE(card);
    UseUp(card);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(store.Saves(), IsEmpty());
    log.Forget();
    urls.Forget();
}

TEST_F(AdPopupManagerLifeTest, AShownCardWhoseManagerIsGoneReportsNothing) {
    StartAndShow();
    const QPointer<CZRAdBottomPopupView> card = Card();
    ASSERT_TRUE(card);

    manager.reset();
    ASSERT_TRUE(card);
    bus.HostSend(20157, 20002);
    UseUp(card);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    log.Forget();
}

TEST_F(AdPopupManagerLifeTest, ThePageThatAClickOpensMayTakeTheManagerAway) {
    StartAndShow();
    const QPointer<CZRAdManager> alive = manager.get();
    urls.WhenOpening([this] { manager.reset(); });

    Click(Card());
    time.Advance(1h);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
    log.Forget();
}

TEST_F(AdPopupManagerLifeTest, WhoeverHearsOfACloseMayDeleteCardAndManagerAtOnce) {
    StartAndShow();
    CZRAdBottomPopupView* card = Card();
    const QPointer<QWidget> alive = card;
    QObject::connect(card, &CZRAdBottomPopupView::CloseButtonClicked, &window, [this, card] {
        manager.reset();
        delete card;
    });

    Click(CloseButton());
    time.Advance(1h);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(reports.Names(), ElementsAre("ClickAd", "ExposeAd"));
    Forget();
}

TEST_F(AdPopupManagerLifeTest, WhoeverSeesACardComeUpMayTakeTheManagerAway) {
    Start();
    bus.HostSend(10650);
    http.Answer(http.LastTask(), Text(DataOf({"18088"})));
    time.Settle();
    ASSERT_TRUE(Card());
    Forget();
    const QPointer<CZRAdManager> alive = manager.get();
    const CAtShow taker(Card(), [this] { manager.reset(); });

    LetPictureIn();
    time.Advance(1h);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(reports.Names(), ElementsAre("AdvertisementImageResourceDownloadResult"));
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(Texts(), Not(HasSubstr("Show ad popup")));
    log.Forget();
}

TEST_F(AdPopupManagerLifeTest, CloseIsReportedWhenThePageThatGetsTheFocusTakesTheManagerAway) {
    QLineEdit page(&window);
    page.show();
    window.activateWindow();
    time.Settle();
    StartAndShow();
    page.setFocus();
    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), CloseButton());
    const QPointer<CZRAdManager> alive = manager.get();
    const CAtShow taker(
        &page, [this] { manager.reset(); }, QEvent::FocusIn);

    QTest::keyClick(window.windowHandle(), Qt::Key_Space);
    time.Settle();

    EXPECT_TRUE(alive.isNull());
    EXPECT_EQ(Card(), nullptr);
    EXPECT_THAT(reports.Names(), ElementsAre("ClickAd", "ExposeAd"));
    Forget();
}

TEST_F(AdPopupManagerLifeTest, WhoeverSeesACardComeUpMayTakeItsWindowAway) {
    auto passing = std::make_unique<CAdWindow>();
    passing->resize(900, 600);
    passing->show();
    time.Settle();
    mainFrame.Offer(passing.get());
    Start();
    bus.HostSend(10650);
    http.Answer(http.LastTask(), Text(DataOf({"18088"})));
    time.Settle();
    const QPointer<CZRAdBottomPopupView> card = passing->findChild<CZRAdBottomPopupView*>();
    ASSERT_TRUE(card);
    QObject::connect(card, &CZRAdBottomPopupView::LoadImageSucceeded, &window, [&passing] { passing.reset(); });

    LetPictureIn();
    EXPECT_TRUE(card.isNull());
    store.Forget();
    Forget();
    bus.HostSend(20157, 20001);
    bus.HostSend(20157, 20002);
    EXPECT_THAT(reports.Events(), IsEmpty());

    manager->OnLogout();
    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
    Forget();
}

TEST_F(AdPopupManagerLifeTest, APictureThatIsInAtOnceMayEndTheManagerInsideTheAnswer) {
    Start();
    pictures.AnswerAtOnce();
    const QPointer<CZRAdManager> alive = manager.get();
    class CAtCard : public QObject {
    public:
        explicit CAtCard(std::function<void()> act) : m_fnAct(std::move(act)) {}
        bool eventFilter(QObject*, QEvent* event) override {
            auto* added = event->type() == QEvent::ChildAdded ? static_cast<QChildEvent*>(event)->child() : nullptr;
            if (added && added->isWidgetType()) {
                m_pAtShow = std::make_unique<CAtShow>(static_cast<QWidget*>(added), m_fnAct);
            }
            return false;
        }

    private:
        std::function<void()> m_fnAct;
        std::unique_ptr<CAtShow> m_pAtShow;
    } atCard([this] { manager.reset(); });
    window.installEventFilter(&atCard);

    bus.HostSend(10650);
    http.Answer(http.LastTask(), Text(DataOf({"18088"})));
    time.Settle();

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(reports.Names(), Contains("AdvertisementImageResourceDownloadResult").Times(1));
    EXPECT_THAT(store.Saves(), IsEmpty());
    Forget();
}

}  // namespace
