#include "Ad/View/ZRAdImageView.h"

#include <QPointer>
#include <memory>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

// The kit defines the corners. Other clients of it use this number.
static_assert(kCornersAll == 2);

const QString kUrl = QStringLiteral("https://pictures.test/card.png");
const QString kSchema = QStringLiteral("zrclient://page/news");
constexpr auto kProgress = ZRImageLoadStatus(1);

class AdImageViewTest : public ScriptedHostTest {
protected:
    AdImageViewTest() {
        window.resize(500, 300);
        view->move(40, 30);
        QObject::connect(view, &CZRAdImageView::AdClicked, [this](bool jumped) {
            told.emplace_back(jumped ? "clicked, opened" : "clicked, not opened");
        });
        QObject::connect(
            view, &CZRAdImageView::ImageLoadSucceeded, [this](const QString& url, qlonglong millis, int count) {
                told.push_back("in " + url.toStdString() + " " + std::to_string(millis) + " " + std::to_string(count));
            });
        QObject::connect(view, &CZRAdImageView::ImageLoadFailed,
                         [this](const QString& url, const QString& content, qlonglong millis, int count) {
                             told.push_back("lost " + url.toStdString() + " \"" + content.toStdString() + "\" " +
                                            std::to_string(millis) + " " + std::to_string(count));
                         });
        window.show();
        time.Settle();
    }

    void Load() {
        view->SetImageUrl(kUrl);
        pictures.Succeed(pictures.LastLoad());
        told.clear();
        log.Forget();
    }

    void Fail() { pictures.Fail(pictures.LastLoad()); }

    /// A notice of the picture.
    void Notice(ZRImageLoadStatus status, const QString& url = kUrl) {
        Q_EMIT image->ImageLoadStatusSignal(url, status);
    }

    std::vector<std::string> Urls() {
        std::vector<std::string> addresses;
        for (const AskedPicture& asked : pictures.Asked()) {
            addresses.push_back(asked.url);
        }
        return addresses;
    }

    CAdWindow window;
    CZRAdImageView* view = new CZRAdImageView(&window, QSize(360, 120));
    ZRWebImageWidget* image = view->findChild<ZRWebImageWidget*>(QStringLiteral("CZRAdImageViewImage"));
    std::vector<std::string> told;  // the signals, in words
};

TEST_F(AdImageViewTest, HasItsSignalsAndItsSlotInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdImageView::staticMetaObject),
        ElementsAre("signal AdClicked(bool jumpResult)",
                    "signal ImageLoadSucceeded(QString imageUrl, qlonglong time, int count)",
                    "signal ImageLoadFailed(QString imageUrl, QString resultContent, qlonglong time, int count)",
                    "slot OnImageLoadStatus(QString imageUrl, ZRImageLoadStatus status)"));
}

TEST_F(AdImageViewTest, ASubclassIsReachedByThreeOperationsInTheFixedOrder) {
    const auto first = PlaceOf(&CZRAdImageView::SetImageUrl);
    EXPECT_EQ(PlaceOf(&CZRAdImageView::SetSchema), first + 1);
    EXPECT_EQ(PlaceOf(&CZRAdImageView::OnImageLoadStatus), first + 2);
}

TEST_F(AdImageViewTest, ViewAndPictureHaveTheSizeForGood) {
    const QSize size(360, 120);
    EXPECT_EQ(view->minimumSize(), size);
    EXPECT_EQ(view->maximumSize(), size);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->minimumSize(), size);
    EXPECT_EQ(image->maximumSize(), size);
    EXPECT_EQ(image->pos(), QPoint(0, 0));
    EXPECT_EQ(view->parentWidget(), &window);
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AdImageViewTest, RoundedCornersAreCutOffAllAround) {
    view->SetRoundedCorner(8.0);
    Load();

    const QImage seen = image->grab().toImage();

    for (const QPoint corner : {QPoint(0, 0), QPoint(359, 0), QPoint(0, 119), QPoint(359, 119)}) {
        EXPECT_NE(seen.pixelColor(corner), QColor(Qt::red)) << corner.x() << "," << corner.y();
    }
    // a smaller radius, along or across, would leave one of these whole
    for (const QPoint rim : {QPoint(4, 0), QPoint(0, 4)}) {
        EXPECT_NE(seen.pixelColor(rim), QColor(Qt::red)) << rim.x() << "," << rim.y();
    }
    for (const QPoint edge : {QPoint(10, 0), QPoint(0, 10), QPoint(359, 109), QPoint(349, 119), QPoint(3, 3)}) {
        EXPECT_EQ(seen.pixelColor(edge), QColor(Qt::red)) << edge.x() << "," << edge.y();
    }
}

TEST_F(AdImageViewTest, AnAddressIsLoggedAndItsPictureAskedFor) {
    view->SetImageUrl(kUrl);

    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, kUrl.toStdString());
    EXPECT_EQ(pictures.Asked()[0].size, QSize(360, 120));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Set image url, imageUrl = https://pictures.test/card.png")));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(AdImageViewTest, UntilThePictureIsInThereIsNothingInItsPlace) {
    ZRWebImageWidget empty(view);
    empty.setFixedSize(image->size());
    view->SetImageUrl(kUrl);
    EXPECT_EQ(image->grab().toImage(), empty.grab().toImage());

    Fail();
    EXPECT_EQ(image->grab().toImage(), empty.grab().toImage());

    pictures.Succeed(pictures.LastLoad());
    EXPECT_NE(image->grab().toImage(), empty.grab().toImage());
}

TEST_F(AdImageViewTest, CountAndTimeBeginBeforeThePictureIsAskedFor) {
    view->SetImageUrl(kUrl);
    Fail();
    time.Advance(5s);
    pictures.AnswerAtOnce();

    view->SetImageUrl(QStringLiteral("https://pictures.test/second.png"));

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/second.png 0 1"));
    EXPECT_THAT(Urls(), SizeIs(3));
}

TEST_F(AdImageViewTest, APictureThatSomebodyDeletedIsNotMissed) {
    view->SetImageUrl(kUrl);
    pictures.Forget();
    delete image;

    view->SetRoundedCorner(8.0);
    view->SetImageUrl(kUrl);
    view->OnImageLoadStatus(kUrl, kImageLoadFailed);
    EXPECT_THAT(told, IsEmpty());
    view->OnImageLoadStatus(kUrl, kImageLoadFailed);
    view->OnImageLoadStatus(kUrl, kImageLoadFailed);

    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/card.png \"\" 0 3"));
    EXPECT_THAT(Urls(), IsEmpty());
}

TEST_F(AdImageViewTest, APictureThatComesAtOnceIsToldWithTheTimeItTookAndOne) {
    view->SetImageUrl(kUrl);
    time.Advance(1500ms);
    log.Forget();

    pictures.Succeed(pictures.LastLoad());

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/card.png 1500 1"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdImageViewTest, LoadingIsMeasuredInTheServersTime) {
    time.SetServerTime(1'000'000);
    view->SetImageUrl(kUrl);
    time.SetServerTime(1'000'777);

    pictures.Succeed(pictures.LastLoad());

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/card.png 777 1"));
}

TEST_F(AdImageViewTest, ALostPictureIsTriedAgainTwiceAndReportedAtTheThirdNotice) {
    view->SetImageUrl(kUrl);
    log.Forget();

    time.Advance(100ms);
    Fail();
    EXPECT_THAT(Urls(), SizeIs(2));
    time.Advance(100ms);
    Fail();
    EXPECT_THAT(Urls(), ElementsAre(kUrl.toStdString(), kUrl.toStdString(), kUrl.toStdString()));
    EXPECT_THAT(told, IsEmpty());
    time.Advance(100ms);
    Fail();

    EXPECT_THAT(Urls(), SizeIs(3));
    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/card.png \"\" 300 3"));
    const std::string line =
        "[Ad] Load failed, reset image url, imageUrl = https://pictures.test/card.png, loadCount = ";
    EXPECT_THAT(log.Lines(), ElementsAre(Info(line + "1"), Info(line + "2"), Info(line + "3")));
}

TEST_F(AdImageViewTest, APictureThatComesAtTheSecondAttemptIsToldWithTwo) {
    view->SetImageUrl(kUrl);
    Fail();
    time.Advance(40ms);

    pictures.Succeed(pictures.LastLoad());

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/card.png 40 2"));
}

TEST_F(AdImageViewTest, EachFurtherNoticeOfALossIsReportedAnewAndNothingIsLoadedAgain) {
    view->SetImageUrl(kUrl);
    Fail();
    Fail();
    Fail();

    Notice(kImageLoadFailed);
    Notice(kImageLoadFailed);

    EXPECT_THAT(told, ElementsAre(EndsWith(" 3"), EndsWith(" 4"), EndsWith(" 5")));
    EXPECT_THAT(Urls(), SizeIs(3));
}

TEST_F(AdImageViewTest, NoticesOfProgressOnlyCount) {
    view->SetImageUrl(kUrl);
    log.Forget();

    Notice(kProgress);
    Notice(ZRImageLoadStatus(3));

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(Urls(), SizeIs(1));

    Notice(ZRImageLoadStatus(0));
    pictures.Succeed(pictures.LastLoad());
    EXPECT_THAT(told, ElementsAre("in https://pictures.test/card.png 0 4"));
}

TEST_F(AdImageViewTest, TheThirdNoticeEndsTheAttemptsWhateverTheFirstTwoWere) {
    view->SetImageUrl(kUrl);
    Notice(kProgress);
    Notice(kProgress);

    Fail();

    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/card.png \"\" 0 3"));
    EXPECT_THAT(Urls(), SizeIs(1));
}

TEST_F(AdImageViewTest, TheNextAttemptIsAtTheAddressOfTheNotice) {
    view->SetImageUrl(kUrl);

    Notice(kImageLoadFailed, QStringLiteral("https://pictures.test/other.png"));

    EXPECT_THAT(Urls(), ElementsAre(kUrl.toStdString(), "https://pictures.test/other.png"));
}

TEST_F(AdImageViewTest, ASuccessDoesNotBeginTheCountAnew) {
    Load();

    Notice(kImageLoadFailed);
    EXPECT_THAT(Urls(), SizeIs(2));
    Notice(kImageLoadFailed);

    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/card.png \"\" 0 3"));
    EXPECT_THAT(Urls(), SizeIs(2));
}

TEST_F(AdImageViewTest, AnotherAddressBeginsCountAndTimeAnew) {
    view->SetImageUrl(kUrl);
    Fail();
    Fail();
    time.Advance(5s);

    view->SetImageUrl(QStringLiteral("https://pictures.test/second.png"));
    EXPECT_THAT(Urls(), SizeIs(4));
    time.Advance(20ms);
    pictures.Succeed(pictures.LastLoad());

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/second.png 20 1"));
}

// Clicks

TEST_F(AdImageViewTest, AClickBeforeThePictureIsInOpensNothing) {
    view->SetSchema(kSchema);
    view->SetImageUrl(kUrl);
    log.Forget();

    Click(view);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Click ad image, load status is not success")));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 1);
    pictures.Forget();
}

TEST_F(AdImageViewTest, AClickAfterThePictureWasLostOpensNothing) {
    view->SetSchema(kSchema);
    view->SetImageUrl(kUrl);
    Fail();
    Fail();
    Fail();
    log.Forget();

    Click(view);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Click ad image, load status is not success")));
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

TEST_F(AdImageViewTest, AClickOnAPictureThatLeadsNowhereIsOnlyLogged) {
    Load();

    Click(view);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Open schema failed, schema is empty")));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdImageViewTest, AnotherButtonThanTheLeftDoesNothing) {
    view->SetSchema(kSchema);
    Load();

    Press(*view, Qt::RightButton);
    Press(*view, Qt::MiddleButton);

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 2);
}

TEST_F(AdImageViewTest, RightPressDoesNothingWhenTheLeftButtonIsHeld) {
    view->SetSchema(kSchema);
    Load();
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(180, 60), Qt::RightButton, Qt::LeftButton | Qt::RightButton,
                      Qt::NoModifier);

    QCoreApplication::sendEvent(view, &event);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

TEST_F(AdImageViewTest, ImageOpensTwiceAndReportsTwoClicksWhenItIsDoubleClicked) {
    view->SetSchema(kSchema);
    Load();

    DoubleClick(*view);

    EXPECT_THAT(urls.Opened(), SizeIs(2));
    EXPECT_THAT(told, ElementsAre("clicked, opened", "clicked, opened"));
}

TEST_F(AdImageViewTest, LossCarriesTheAddressOfTheNoticeWhenAnotherIsStored) {
    const QString other = QStringLiteral("https://pictures.test/other.png");
    view->SetImageUrl(kUrl);
    Notice(kProgress);
    Notice(kProgress);
    log.Forget();

    Notice(kImageLoadFailed, other);

    EXPECT_THAT(told, ElementsAre("lost https://pictures.test/other.png \"\" 0 3"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Load failed, reset image url, imageUrl = "
                                              "https://pictures.test/other.png, loadCount = 3")));
    pictures.Forget();
}

TEST_F(AdImageViewTest, TheStateOfThePictureIsLookedAtBeforeTheButton) {
    Press(*view, Qt::RightButton);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Click ad image, load status is not success")));
}

TEST_F(AdImageViewTest, TheButtonIsLookedAtBeforeTheTarget) {
    Load();

    Press(*view, Qt::RightButton);

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdImageViewTest, ATargetIsLogged) {
    view->SetSchema(kSchema);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Set schema, schema = zrclient://page/news")));
}

TEST_F(AdImageViewTest, AClickOpensTheTargetAndIsToldOf) {
    view->SetSchema(kSchema);
    Load();

    Click(view);

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    const OpenedUrl opened = urls.Opened()[0];
    EXPECT_EQ(opened.url, "zrclient://page/news");
    EXPECT_EQ(opened.businessType, 0);
    EXPECT_EQ(opened.fallbackMode, 1);
    EXPECT_EQ(opened.context, nullptr);
    EXPECT_STREQ(opened.extra.typeName(), "core::webview::ZRWebWindowInfo");
    const auto wanted = opened.extra.value<core::webview::ZRWebWindowInfo>();
    EXPECT_TRUE(wanted.parent.isNull());
    EXPECT_FALSE(wanted.size.isValid());
    EXPECT_FALSE(wanted.minimumSize.isValid());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Open schema success, schema = zrclient://page/news")));
    EXPECT_THAT(told, ElementsAre("clicked, opened"));
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdImageViewTest, ATargetThatTheHostRefusesIsToldAsNotOpened) {
    view->SetSchema(QStringLiteral("file:///etc/passwd"));
    Load();

    Click(view);

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("Refused to open a URL: ")),
                                         Info("[Ad] Open schema failed, schema = file:///etc/passwd")));
    EXPECT_THAT(told, ElementsAre("clicked, not opened"));
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdImageViewTest, AViewThatHasLoadedOnceCanBeClickedWhileAnotherPictureIsOnItsWay) {
    view->SetSchema(kSchema);
    Load();
    view->SetImageUrl(QStringLiteral("https://pictures.test/second.png"));

    Click(view);
    Fail();
    Fail();
    Fail();
    told.clear();
    Click(view);

    EXPECT_THAT(urls.Opened(), SizeIs(2));
    EXPECT_THAT(told, ElementsAre("clicked, opened"));
}

TEST_F(AdImageViewTest, AClickIsLoggedThenToldOfAndThenPassedOn) {
    view->SetSchema(kSchema);
    Load();
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(180, 60), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    bool kept = false;
    std::vector<LogLine> lines;
    QObject::connect(view, &CZRAdImageView::AdClicked, [&] {
        kept = event.isAccepted();
        lines = log.Lines();
    });

    QCoreApplication::sendEvent(view, &event);

    EXPECT_TRUE(kept);
    EXPECT_THAT(lines, ElementsAre(Info("[Ad] Open schema success, schema = zrclient://page/news")));
    EXPECT_THAT(told, ElementsAre("clicked, opened"));
    EXPECT_EQ(window.presses, 1);
    urls.Forget();
}

TEST_F(AdImageViewTest, ThePageThatAClickOpensMayTakeTheViewAway) {
    view->SetSchema(kSchema);
    Load();
    const QPointer<CZRAdImageView> alive = view;
    urls.WhenOpening([this] { delete view; });

    Click(view);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Open schema success, schema = zrclient://page/news")));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(AdImageViewTest, WhoeverHearsOfAClickMayDeleteTheViewAtOnce) {
    view->SetSchema(kSchema);
    Load();
    QPointer<CZRAdImageView> alive = view;
    QObject::connect(view, &CZRAdImageView::AdClicked, &window, [this] { delete view; });

    Click(view);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(told, ElementsAre("clicked, opened"));
}

TEST_F(AdImageViewTest, WhoeverHearsOfAPictureMayDeleteTheViewAtOnce) {
    QPointer<CZRAdImageView> alive = view;
    QObject::connect(view, &CZRAdImageView::ImageLoadFailed, &window, [this] { delete view; });
    view->SetImageUrl(kUrl);
    Fail();
    Fail();
    Fail();
    EXPECT_TRUE(alive.isNull());

    auto* another = new CZRAdImageView(&window, QSize(10, 10));
    alive = another;
    QObject::connect(another, &CZRAdImageView::ImageLoadSucceeded, &window, [another] { delete another; });
    another->SetImageUrl(kUrl);
    pictures.Succeed(pictures.LastLoad());
    EXPECT_TRUE(alive.isNull());
}

TEST_F(AdImageViewTest, NothingIsToldOfAViewThatIsGone) {
    view->SetImageUrl(kUrl);
    const int load = pictures.LastLoad();

    delete view;
    pictures.Succeed(load);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

}  // namespace
