#include "Ad/View/ZRAdBottomPopupView.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZIconButton.h"
#include "ui/ZResource.h"

using namespace ::testing;

namespace {

class AdBottomPopupViewTest : public ScriptedHostTest {
protected:
    AdBottomPopupViewTest() {
        window.resize(900, 600);
        mainFrame.Offer(&window);
    }

    CZRAdBottomPopupView* NewCard(bool enableClose = true) {
        auto* card = new CZRAdBottomPopupView(&window, enableClose, kAdBottomPopupSize, QStringLiteral("18088"),
                                              QStringLiteral("p-1"));
        QObject::connect(
            card, &CZRAdBottomPopupView::LoadImageSucceeded,
            [this](const QString& url, qlonglong millis, int count, const QString& ad, const QString& push) {
                Tell({"in", url, Text(millis), Text(count), ad, push});
            });
        QObject::connect(
            card, &CZRAdBottomPopupView::LoadImageFailed,
            [this](const QString& url, const QString& content, qlonglong millis, int count, const QString& ad) {
                Tell({"lost", url, content, Text(millis), Text(count), ad});
            });
        QObject::connect(card, &CZRAdBottomPopupView::ClickAd, [this](bool jumped, const QString& ad) {
            Tell({jumped ? "clicked, opened" : "clicked, not opened", ad});
        });
        QObject::connect(card, &CZRAdBottomPopupView::CloseButtonClicked, [this](const QString& ad) {
            Tell({"closed", ad});
        });
        window.show();
        time.Settle();
        return card;
    }

    struct Word {
        Word(const char* plain) : text(plain) {}
        Word(const QString& words) : text(words.toStdString()) {}
        std::string text;
    };
    static QString Text(qlonglong number) { return QString::number(number); }
    void Tell(const std::vector<Word>& words) {
        std::string line;
        for (const Word& word : words) {
            line += (line.empty() ? "" : " ") + word.text;
        }
        told.push_back(line);
    }

    static ZIconButton* CloseButton(QWidget* card) {
        return card->findChild<ZIconButton*>(QStringLiteral("CZRAdBottomPopupViewCloseButton"));
    }

    CAdWindow window;
    std::vector<std::string> told;  // the signals, in words
};

TEST_F(AdBottomPopupViewTest, HasItsSignalsAndSlotsInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdBottomPopupView::staticMetaObject),
        ElementsAre(
            "signal LoadImageSucceeded(QString imageUrl, qlonglong time, int count, QString adId, QString pushId)",
            "signal LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, int count, QString adId)",
            "signal ClickAd(bool jumpResult, QString adId)", "signal CloseButtonClicked(QString adId)",
            "slot OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count)",
            "slot OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count)",
            "slot OnAdClicked(bool jumpResult)", "slot OnCloseButtonClicked()", "slot UpdateCoordinates()"));
}

TEST_F(AdBottomPopupViewTest, IsACardOf360By120WithCornersOf4) {
    EXPECT_EQ(kAdBottomPopupSize, QSize(360, 120));
    CZRAdBottomPopupView* card = NewCard(false);
    EXPECT_EQ(card->size(), QSize(360, 120));
    EXPECT_FALSE(card->isWindow());

    card->SetImageUrl(QStringLiteral("https://pictures.test/card.png"));
    pictures.Succeed(pictures.LastLoad());
    const QImage seen = card->findChild<ZRWebImageWidget*>(QStringLiteral("CZRAdImageViewImage"))->grab().toImage();

    for (const QPoint corner : {QPoint(0, 0), QPoint(359, 0), QPoint(0, 119), QPoint(359, 119)}) {
        EXPECT_NE(seen.pixelColor(corner), QColor(Qt::red)) << corner.x() << "," << corner.y();
    }
    // a larger radius would cut these off
    for (const QPoint edge : {QPoint(5, 0), QPoint(0, 5), QPoint(2, 2), QPoint(357, 117)}) {
        EXPECT_EQ(seen.pixelColor(edge), QColor(Qt::red)) << edge.x() << "," << edge.y();
    }
    // A radius of 3 paints the first two in full; a radius of 5 cuts the others.
    for (const QPoint rim : {QPoint(1, 1), QPoint(358, 118)}) {
        EXPECT_NE(seen.pixelColor(rim), QColor(Qt::red)) << rim.x() << "," << rim.y();
    }
    for (const QPoint edge : {QPoint(4, 0), QPoint(0, 4)}) {
        EXPECT_EQ(seen.pixelColor(edge), QColor(Qt::red)) << edge.x() << "," << edge.y();
    }
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdBottomPopupViewTest, TheCloseButtonLiesAtTheTopRightAndLooksAsItShould) {
    ZIconButton* button = CloseButton(NewCard());

    ASSERT_TRUE(button);
    EXPECT_EQ(button->geometry(), QRect(324, 12, 24, 24));
    EXPECT_EQ(button->minimumSize(), QSize(24, 24));
    EXPECT_EQ(button->maximumSize(), QSize(24, 24));
    button->clearFocus();  // a window without another taker gives it to the first
    ZIconButton like(button->parentWidget());
    like.setIconButtonSize(QSize(24, 24));
    like.setIconMargins(4);
    like.setSvgIconName(QStringLiteral("icon_close_16"));
    like.setIconColorStyle(ZIconColorStyle::type(5));
    like.setHoverBackground(false);
    EXPECT_EQ(button->grab().toImage(), like.grab().toImage());
    for (ZIconButton* each : {button, &like}) {
        each->setDown(true);
    }
    EXPECT_EQ(button->grab().toImage(), like.grab().toImage());  // its disc stays as it is
    like.setIconMargins(3);
    EXPECT_NE(button->grab().toImage(), like.grab().toImage());
}

TEST_F(AdBottomPopupViewTest, WithoutTheCloseOptionThereIsNoButton) {
    EXPECT_TRUE(NewCard(false)->findChildren<QAbstractButton*>().isEmpty());
}

TEST_F(AdBottomPopupViewTest, TheCloseButtonIsHeardWithTheAdAndThePictureIsNotClicked) {
    CZRAdBottomPopupView* card = NewCard();
    log.Forget();

    Click(CloseButton(card));

    EXPECT_THAT(told, ElementsAre("closed 18088"));
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(window.presses, 0);
}

TEST_F(AdBottomPopupViewTest, TheSlotsAddTheIdsAndPassOn) {
    CZRAdBottomPopupView* card = NewCard();

    card->OnImageLoadSucceeded(QStringLiteral("u"), 5'000'000'000, 2);
    card->OnImageLoadFailed(QStringLiteral("u"), QStringLiteral("why"), 6, 3);
    card->OnAdClicked(true);
    card->OnAdClicked(false);
    card->OnCloseButtonClicked();

    EXPECT_THAT(told, ElementsAre("in u 5000000000 2 18088 p-1", "lost u why 6 3 18088", "clicked, opened 18088",
                                  "clicked, not opened 18088", "closed 18088"));
}

TEST_F(AdBottomPopupViewTest, PictureAndClickReachTheSlots) {
    CZRAdBottomPopupView* card = NewCard();
    card->SetSchema(QStringLiteral("zrclient://page/news"));
    card->SetImageUrl(QStringLiteral("https://pictures.test/card.png"));
    pictures.Succeed(pictures.LastLoad());

    Click(card);

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/card.png 0 1 18088 p-1", "clicked, opened 18088"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AdBottomPopupViewTest, AnImageThatStaysLostReachesItsSlot) {
    CZRAdBottomPopupView* card = NewCard();
    card->SetImageUrl(QStringLiteral("https://pictures.test/card.png"));
    for (int i = 0; i < 3; ++i) {
        pictures.Fail(pictures.LastLoad());
    }

    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/card.png  0 3 18088"));
}

// Its place

TEST_F(AdBottomPopupViewTest, LiesBesideTheNavigationAndAboveTheLowerEdge) {
    EXPECT_EQ(NewCard()->pos(), QPoint(160, 600 - 120 - 48));

    mainFrame.SetNavigationCollapsed(true);
    EXPECT_EQ(NewCard()->pos(), QPoint(84, 432));
}

TEST_F(AdBottomPopupViewTest, WithoutAMainFrameTheNavigationCountsAsWide) {
    mainFrame.SetNavigationCollapsed(true);
    mainFrame.TakeAway();

    EXPECT_EQ(NewCard()->pos(), QPoint(160, 432));
}

TEST_F(AdBottomPopupViewTest, NeverRisesAboveTheTop) {
    for (const auto& [height, y] : {std::pair(50, 0), {167, 0}, {168, 0}, {169, 1}}) {
        window.setFixedHeight(height);
        EXPECT_EQ(NewCard()->y(), y) << height;
    }
}

TEST_F(AdBottomPopupViewTest, PlaceFollowsItsOwnHeightWhenThatIsAnother) {
    CZRAdBottomPopupView card(&window, false, QSize(300, 100), QString(), QString());
    EXPECT_EQ(card.y(), 600 - 100 - 48);
}

TEST_F(AdBottomPopupViewTest, PlaceFollowsTheParentsHeightWhenTheParentIsNoWindow) {
    QWidget frame(&window);
    frame.resize(700, 400);
    const CZRAdBottomPopupView card(&frame, false, kAdBottomPopupSize, QString(), QString());
    EXPECT_EQ(card.pos(), QPoint(160, 400 - 120 - 48));
}

TEST_F(AdBottomPopupViewTest, FollowsTheWindowOnlyWhenItIsTold) {
    CZRAdBottomPopupView* card = NewCard();
    mainFrame.SetNavigationCollapsed(true);
    window.resize(1000, 700);
    time.Settle();
    EXPECT_EQ(card->pos(), QPoint(160, 432));

    card->UpdateCoordinates();

    EXPECT_EQ(card->pos(), QPoint(84, 532));
}

TEST_F(AdBottomPopupViewTest, ACardOnItsOwnStaysWhereItIs) {
    CZRAdBottomPopupView card(nullptr, false, kAdBottomPopupSize, QString(), QString());
    card.move(7, 9);

    card.UpdateCoordinates();

    EXPECT_EQ(card.pos(), QPoint(7, 9));
}

TEST_F(AdBottomPopupViewTest, TakesTheFocusNeitherByShowingNorByAClick) {
    QLineEdit field(&window);
    window.show();
    window.activateWindow();
    field.setFocus();
    time.Settle();
    ASSERT_EQ(QApplication::focusWidget(), &field);

    CZRAdBottomPopupView* card = NewCard();
    card->hide();
    card->show();
    Click(card);
    Click(CloseButton(card));
    EXPECT_EQ(QApplication::focusWidget(), &field);

    QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), CloseButton(card));
    log.Forget();
}

}  // namespace
