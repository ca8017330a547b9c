// The views of the popups, deleted by who listens to them.
#include <QPointer>

#include "Ad/AdWindow.h"
#include "Ad/View/ZRAdBottomPopupView.h"
#include "Ad/View/ZRAdMiddlePopupView.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZIconButton.h"

using namespace ::testing;

namespace {

const QString kUrl = QStringLiteral("https://pictures.test/card.png");

class AdPopupViewLifeTest : public ScriptedHostTest {
protected:
    AdPopupViewLifeTest() {
        window.resize(900, 700);
        mainFrame.Offer(&window);
        window.show();
        time.Settle();
    }
    ~AdPopupViewLifeTest() override { log.Forget(); }

    /// A view in the window, shown, which goes at the first of these signals.
    template <class View, class Signal, class... Args>
    QPointer<View> DeletedAt(Signal signal, Args... args) {
        QPointer<View> view = new View(&window, args...);
        view->show();
        time.Settle();
        QObject::connect(view.data(), signal, &window, [this, view] {
            ++heard;
            delete view;
        });
        return view;
    }
    template <class Signal>
    QPointer<CZRAdBottomPopupView> CardDeletedAt(Signal signal) {
        return DeletedAt<CZRAdBottomPopupView>(signal, true, kAdBottomPopupSize, QStringLiteral("18088"),
                                               QStringLiteral("p-1"));
    }
    template <class Signal>
    QPointer<CZRAdMiddlePopupView> MiddleDeletedAt(Signal signal) {
        return DeletedAt<CZRAdMiddlePopupView>(signal, true);
    }

    template <class View>
    void Load(View& view) {
        view.SetSchema(QStringLiteral("zrclient://page/news"));
        view.SetImageUrl(kUrl);
    }
    void LetPictureIn() { pictures.Succeed(pictures.LastLoad()); }
    void LosePicture() {
        for (int i = 0; i < 3; ++i) {
            pictures.Fail(pictures.LastLoad());
        }
    }

    CAdWindow window;
    int heard = 0;
};

// The bare picture

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfAPictureThatIsInAtOnceMayDeleteItsView) {
    pictures.AnswerAtOnce();
    const auto view = DeletedAt<CZRAdImageView>(&CZRAdImageView::ImageLoadSucceeded, QSize(360, 120));

    view->SetImageUrl(kUrl);

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 1);
}

// The card

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfACardsPictureMayDeleteTheCard) {
    const auto card = CardDeletedAt(&CZRAdBottomPopupView::LoadImageSucceeded);
    Load(*card);

    LetPictureIn();

    EXPECT_TRUE(card.isNull());
    EXPECT_EQ(heard, 1);
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfACardsPictureThatIsInAtOnceMayDeleteTheCard) {
    pictures.AnswerAtOnce();
    const auto card = CardDeletedAt(&CZRAdBottomPopupView::LoadImageSucceeded);

    Load(*card);

    EXPECT_TRUE(card.isNull());
    EXPECT_EQ(heard, 1);
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfACardsLossMayDeleteTheCard) {
    const auto card = CardDeletedAt(&CZRAdBottomPopupView::LoadImageFailed);
    Load(*card);

    LosePicture();

    EXPECT_TRUE(card.isNull());
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfACardsClickMayDeleteTheCard) {
    const auto card = CardDeletedAt(&CZRAdBottomPopupView::ClickAd);
    Load(*card);
    LetPictureIn();

    Click(card);

    EXPECT_TRUE(card.isNull());
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(window.presses, 0);
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfACardsButtonMayDeleteTheCardInsideTheRelease) {
    const auto card = CardDeletedAt(&CZRAdBottomPopupView::CloseButtonClicked);
    auto* button = card->findChild<ZIconButton*>();
    ASSERT_TRUE(button);
    const QPointer<ZIconButton> pressed = button;

    Click(button);

    EXPECT_TRUE(card.isNull());
    EXPECT_TRUE(pressed.isNull());
    EXPECT_EQ(heard, 1);

    PressAt(window, Qt::LeftButton, QPoint(10, 10));
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdPopupViewLifeTest, ThePageThatACardOpensMayTakeItsWindowAway) {
    auto passing = std::make_unique<CAdWindow>();
    passing->resize(900, 600);
    QPointer<CZRAdBottomPopupView> card =
        new CZRAdBottomPopupView(passing.get(), true, kAdBottomPopupSize, QStringLiteral("1"), QString());
    passing->show();
    time.Settle();
    Load(*card);
    LetPictureIn();
    QObject::connect(card.data(), &CZRAdBottomPopupView::ClickAd, &window, [this] { ++heard; });
    urls.WhenOpening([&passing] { passing.reset(); });

    Click(card);

    EXPECT_TRUE(card.isNull());
    EXPECT_EQ(heard, 0);
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

// The middle popup

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfTheMiddlesCloseMayDeleteItInsideTheRelease) {
    const auto view = MiddleDeletedAt(&CZRAdMiddlePopupView::Closed);

    Click(view->findChild<ZIconButton*>());
    window.resize(300, 300);
    time.Settle();

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 1);
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfTheMiddlesClickMayDeleteIt) {
    const auto view = MiddleDeletedAt(&CZRAdMiddlePopupView::ClickAd);
    Load(*view);
    LetPictureIn();

    Click(view->findChild<CZRAdImageView*>());

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 1);
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfTheMiddlesPictureMayDeleteIt) {
    const auto view = MiddleDeletedAt(&CZRAdMiddlePopupView::LoadImageSucceeded);
    Load(*view);

    LetPictureIn();

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 1);
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfTheMiddlesPictureThatIsInAtOnceMayDeleteIt) {
    pictures.AnswerAtOnce();
    const auto view = MiddleDeletedAt(&CZRAdMiddlePopupView::LoadImageSucceeded);

    Load(*view);

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 1);
}

TEST_F(AdPopupViewLifeTest, WhoeverHearsOfTheMiddlesLossMayDeleteIt) {
    const auto view = MiddleDeletedAt(&CZRAdMiddlePopupView::LoadImageFailed);
    Load(*view);

    LosePicture();

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 1);
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(AdPopupViewLifeTest, TheMiddleGoesWithItsParentAndIsToldOfNothing) {
    auto page = std::make_unique<QWidget>(&window);
    page->resize(600, 600);
    QPointer<CZRAdMiddlePopupView> view = new CZRAdMiddlePopupView(page.get(), true);
    QObject::connect(view.data(), &CZRAdMiddlePopupView::LoadImageSucceeded, &window, [this] { ++heard; });
    Load(*view);
    const int load = pictures.LastLoad();

    page.reset();
    pictures.Succeed(load);

    EXPECT_TRUE(view.isNull());
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

}  // namespace
