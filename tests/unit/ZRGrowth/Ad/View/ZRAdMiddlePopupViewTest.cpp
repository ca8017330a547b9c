#include "Ad/View/ZRAdMiddlePopupView.h"

#include <QPointer>
#include <QResizeEvent>
#include <QVBoxLayout>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "Ad/View/ZRAdImageView.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZIconButton.h"

using namespace ::testing;

namespace {

const QString kUrl = QStringLiteral("https://pictures.test/offer.png");

class AdMiddlePopupViewTest : public ScriptedHostTest {
protected:
    AdMiddlePopupViewTest() { window.resize(900, 700); }

    CZRAdMiddlePopupView* NewView(bool flag = true) {
        auto* view = new CZRAdMiddlePopupView(&window, flag);
        QObject::connect(view, &CZRAdMiddlePopupView::ClickAd, [this](bool jumped) {
            told.emplace_back(jumped ? "clicked, opened" : "clicked, not opened");
        });
        QObject::connect(view, &CZRAdMiddlePopupView::Closed, [this] { told.emplace_back("closed"); });
        QObject::connect(
            view, &CZRAdMiddlePopupView::LoadImageSucceeded, [this](const QString& url, qlonglong millis, int count) {
                told.push_back("in " + url.toStdString() + " " + std::to_string(millis) + " " + std::to_string(count));
            });
        QObject::connect(view, &CZRAdMiddlePopupView::LoadImageFailed,
                         [this](const QString& url, const QString& content, qlonglong millis, int count) {
                             told.push_back("lost " + url.toStdString() + " \"" + content.toStdString() + "\" " +
                                            std::to_string(millis) + " " + std::to_string(count));
                         });
        window.show();
        time.Settle();
        return view;
    }

    static CZRAdImageView* Image(QWidget* view) { return view->findChild<CZRAdImageView*>(); }
    static ZIconButton* CloseButton(QWidget* view) {
        return view->findChild<ZIconButton*>(QStringLiteral("CZRAdMiddlePopupViewCloseButton"));
    }

    CAdWindow window;
    std::vector<std::string> told;  // the signals, in words
};

TEST_F(AdMiddlePopupViewTest, HasItsSignalsAndSlotsInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdMiddlePopupView::staticMetaObject),
        ElementsAre("signal ClickAd(bool jumpResult)", "signal Closed()",
                    "signal LoadImageSucceeded(QString imageUrl, qlonglong time, int count)",
                    "signal LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, int count)",
                    "slot OnImageLoadSucceeded(QString imageUrl, qlonglong time, int count)",
                    "slot OnImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count)",
                    "slot OnAdClicked(bool jumpResult)", "slot OnCloseButtonClicked()"));
}

TEST_F(AdMiddlePopupViewTest, CoversItsParentWhateverTheFlagSays) {
    for (const bool flag : {true, false}) {
        CZRAdMiddlePopupView* view = NewView(flag);
        EXPECT_EQ(view->geometry(), window.rect());
        EXPECT_EQ(view->minimumSize(), window.size());
        EXPECT_EQ(view->maximumSize(), window.size());
        EXPECT_EQ(view->objectName(), QStringLiteral("CZRAdMaskBg"));
        EXPECT_TRUE(view->testAttribute(Qt::WA_StyledBackground));
        delete view;
    }
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdMiddlePopupViewTest, FollowsItsParentsSize) {
    CZRAdMiddlePopupView* view = NewView();

    window.resize(1000, 800);
    time.Settle();

    EXPECT_EQ(view->size(), QSize(1000, 800));
    EXPECT_EQ(view->maximumSize(), QSize(1000, 800));
}

TEST_F(AdMiddlePopupViewTest, SizeIsTheParentsWhenTheParentIsNoWindow) {
    QWidget page(&window);
    page.resize(700, 600);
    const CZRAdMiddlePopupView view(&page, true);
    EXPECT_EQ(view.maximumSize(), QSize(700, 600));

    window.show();
    time.Settle();
    page.resize(710, 620);

    EXPECT_EQ(view.maximumSize(), QSize(710, 620));
}

TEST_F(AdMiddlePopupViewTest, LeavesItsParentsEventsToTheParent) {
    CZRAdMiddlePopupView* view = NewView();
    QEvent resize(QEvent::Resize);
    QEvent move(QEvent::Move);
    QWidget another;
    another.resize(10, 10);

    EXPECT_FALSE(view->eventFilter(&window, &resize));
    EXPECT_FALSE(view->eventFilter(&window, &move));
    EXPECT_EQ(view->size(), QSize(900, 700));
    view->setFixedSize(50, 50);
    EXPECT_FALSE(view->eventFilter(&another, &resize));

    EXPECT_EQ(view->size(), QSize(50, 50));
}

TEST_F(AdMiddlePopupViewTest, OtherEventsThanAResizeDoNotChangeItsSize) {
    CZRAdMiddlePopupView* view = NewView();
    view->setFixedSize(50, 50);
    QEvent move(QEvent::Move);

    QCoreApplication::sendEvent(&window, &move);
    EXPECT_EQ(view->size(), QSize(50, 50));

    QResizeEvent resize(window.size(), window.size());
    QCoreApplication::sendEvent(&window, &resize);
    EXPECT_EQ(view->size(), window.size());
}

TEST_F(AdMiddlePopupViewTest, StandsAloneWithoutAParent) {
    CZRAdMiddlePopupView view(nullptr, false);
    EXPECT_TRUE(view.isWindow());
    EXPECT_NE(view.minimumSize(), view.maximumSize());
    QEvent resize(QEvent::Resize);
    EXPECT_FALSE(view.eventFilter(nullptr, &resize));
}

TEST_F(AdMiddlePopupViewTest, ThePictureStandsInTheMiddleWithTheButtonBelow) {
    CZRAdMiddlePopupView* view = NewView();

    const QRect picture = Image(view)->geometry();
    const QRect button = CloseButton(view)->geometry();

    EXPECT_EQ(picture.size(), QSize(360, 424));
    EXPECT_EQ(button.size(), QSize(32, 32));
    EXPECT_EQ(picture.left(), (900 - 360) / 2);
    EXPECT_EQ(button.left(), (900 - 32) / 2);
    QWidget plain;
    const int between = QVBoxLayout(&plain).spacing();  // the style's, once for each pair
    EXPECT_EQ(button.top() - (picture.bottom() + 1), 33 + between);
    // what is left is shared above the spacing and below the button
    const int above = picture.top() - 65;
    const int below = 700 - (button.bottom() + 1);
    EXPECT_NEAR(above, below, 1);
}

TEST_F(AdMiddlePopupViewTest, ThePicturesCornersAreRound) {
    CZRAdMiddlePopupView* view = NewView();
    view->SetImageUrl(kUrl);
    pictures.Succeed(pictures.LastLoad());

    const QImage seen =
        Image(view)->findChild<ZRWebImageWidget*>(QStringLiteral("CZRAdImageViewImage"))->grab().toImage();

    EXPECT_NE(seen.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_NE(seen.pixelColor(2, 2), QColor(Qt::red));  // a radius of 4 would leave it
    EXPECT_EQ(seen.pixelColor(3, 3), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(9, 0), QColor(Qt::red));
}

TEST_F(AdMiddlePopupViewTest, TheButtonLooksAsItShould) {
    ZIconButton* button = CloseButton(NewView());
    button->clearFocus();
    ZIconButton like(button->parentWidget());
    like.setIconButtonSize(QSize(32, 32));
    like.setIconMargins(0);
    like.setSvgIconName(QStringLiteral("icon_close_32_normal"));
    like.setIconColorStyle(ZIconColorStyle::type(0));
    like.setHoverBackground(false);

    EXPECT_EQ(button->grab().toImage(), like.grab().toImage());
    button->setDown(true);
    like.setDown(true);
    EXPECT_EQ(button->grab().toImage(), like.grab().toImage());  // no plate below it
}

TEST_F(AdMiddlePopupViewTest, AnAddressGoesToThePictureWhichIsShown) {
    CZRAdMiddlePopupView* view = NewView();
    Image(view)->hide();

    view->SetImageUrl(kUrl);

    EXPECT_TRUE(Image(view)->isVisible());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Set image url, imageUrl = https://pictures.test/offer.png")));
    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].size, QSize(360, 424));
}

TEST_F(AdMiddlePopupViewTest, PictureClickAndButtonAreToldOf) {
    CZRAdMiddlePopupView* view = NewView();
    view->SetSchema(QStringLiteral("zrclient://page/offer"));
    view->SetImageUrl(kUrl);
    pictures.Succeed(pictures.LastLoad());

    Click(Image(view));
    Click(CloseButton(view));

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/offer.png 0 1", "clicked, opened", "closed"));
    ASSERT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(urls.Opened()[0].url, "zrclient://page/offer");
}

TEST_F(AdMiddlePopupViewTest, APictureThatIsLostIsToldOf) {
    CZRAdMiddlePopupView* view = NewView();
    view->SetImageUrl(kUrl);
    for (int i = 0; i < 3; ++i) {
        pictures.Fail(pictures.LastLoad());
    }

    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/offer.png \"\" 0 3"));
}

TEST_F(AdMiddlePopupViewTest, TheSlotsOnlyPassOn) {
    CZRAdMiddlePopupView* view = NewView();

    view->OnImageLoadSucceeded(QStringLiteral("u"), 5'000'000'000, 2);
    view->OnImageLoadFailed(QStringLiteral("u"), QStringLiteral("why"), 6, 3);
    view->OnAdClicked(true);
    view->OnAdClicked(false);
    view->OnCloseButtonClicked();

    EXPECT_THAT(told, ElementsAre("in u 5000000000 2", "lost u \"why\" 6 3", "clicked, opened", "clicked, not opened",
                                  "closed"));
}

TEST_F(AdMiddlePopupViewTest, WhoeverHearsOfTheCloseMayDeleteTheView) {
    CZRAdMiddlePopupView* view = NewView();
    const QPointer<QWidget> alive = view;
    QObject::connect(view, &CZRAdMiddlePopupView::Closed, &window, [view] { view->deleteLater(); });

    Click(CloseButton(view));
    time.Settle();
    window.resize(300, 300);
    time.Settle();

    EXPECT_TRUE(alive.isNull());
}

}  // namespace
