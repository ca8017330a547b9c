#include "Ad/View/ZRAdBannerView.h"

#include <QPointer>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZRWebImageWidget.h"
#include "ui/ZSlideshow.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

// The kit defines the meaning. Other clients of it use these numbers.
static_assert(ZSlideshowBase::kRatioFree == 8);
static_assert(ZSlideshow::kMoving == 2);

const QSize kSize(600, 100);

QString UrlOf(const QString& id) {
    return QStringLiteral("https://pictures.test/%1.png").arg(id);
}

class AdBannerViewTest : public ScriptedHostTest {
protected:
    AdBannerViewTest() {
        window.resize(700, 300);
        view->move(20, 30);
        Listen(view);
        window.show();
        time.Settle();
    }
    ~AdBannerViewTest() override { pictures.Forget(); }

    void Listen(CZRAdBannerView* banner) {
        const auto load = [this](const char* what) {
            return [this, what](const std::string& rest) { told.push_back(what + rest); };
        };
        QObject::connect(banner, &CZRAdBannerView::LoadImageSucceeded,
                         [say = load("in ")](const QString& url, qlonglong millis, uint count, const QString& ad) {
                             say(url.toStdString() + " " + std::to_string(millis) + " " + std::to_string(count) + " " +
                                 ad.toStdString());
                         });
        QObject::connect(banner, &CZRAdBannerView::LoadImageFailed,
                         [say = load("lost ")](const QString& url, const QString& content, qlonglong millis, uint count,
                                               const QString& ad) {
                             say(url.toStdString() + " \"" + content.toStdString() + "\" " + std::to_string(millis) +
                                 " " + std::to_string(count) + " " + ad.toStdString());
                         });
        QObject::connect(banner, &CZRAdBannerView::ExposeAdStart,
                         [say = load("start ")](const QString& ad) { say(ad.toStdString()); });
        QObject::connect(banner, &CZRAdBannerView::ExposeAdEnd,
                         [say = load("end ")](const QString& ad) { say(ad.toStdString()); });
        QObject::connect(banner, &CZRAdBannerView::ClickAd, [this](bool jumped, const QString& ad) {
            told.push_back((jumped ? "clicked, opened " : "clicked, not opened ") + ad.toStdString());
        });
        QObject::connect(banner, &CZRAdBannerView::CloseAd,
                         [say = load("close ")](const QString& ad) { say(ad.toStdString()); });
    }

    void Add(const QString& id, const QString& schema = QStringLiteral("zrclient://page/news")) {
        view->AddAdId(id);
        view->AddImageUrl(UrlOf(id));
        view->AddSchema(schema);
    }
    void AddThree() {
        for (const char* id : {"a", "b", "c"}) {
            Add(QString::fromLatin1(id));
        }
        told.clear();
        log.Forget();
    }

    ZSlideshow* Slideshow() { return view->findChild<ZSlideshow*>(QStringLiteral("CZRAdBannerViewSlideshow")); }

    QWidget* Slide(int index) {
        return Slideshow()->findChild<ZRWebImageWidget*>(QStringLiteral("ZSlideshowSlide%1").arg(index));
    }

    std::vector<std::string> told;  // the signals, in words, also of a banner that goes with the window
    CAdWindow window;
    CZRAdBannerView* view = new CZRAdBannerView(&window, kSize);
};

TEST_F(AdBannerViewTest, HasItsSignalsAndSlotsInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdBannerView::staticMetaObject),
        ElementsAre(
            "signal LoadImageSucceeded(QString imageUrl, qlonglong time, uint count, QString adId)",
            "signal LoadImageFailed(QString imageUrl, QString resultContent, qlonglong time, uint count, QString adId)",
            "signal ExposeAdStart(QString adId)", "signal ExposeAdEnd(QString adId)",
            "signal ClickAd(bool jumpResult, QString adId)", "signal CloseAd(QString adId)",
            "slot OnImageLoadSucceeded(QString imageUrl, int index, uint loadCount)",
            "slot OnImageLoadFailed(QString imageUrl, int index, uint failedCount)",
            "slot OnCurrentIndexChanged(int newIndex, int oldIndex)"));
}

TEST_F(AdBannerViewTest, ViewAndSlideshowHaveTheSizeForGood) {
    EXPECT_EQ(view->minimumSize(), kSize);
    EXPECT_EQ(view->maximumSize(), kSize);
    ASSERT_TRUE(Slideshow());
    EXPECT_EQ(Slideshow()->minimumSize(), kSize);
    EXPECT_EQ(Slideshow()->maximumSize(), kSize);
    EXPECT_EQ(Slideshow()->pos(), QPoint(0, 0));
    EXPECT_TRUE(Slideshow()->m_bAutomatic);
    EXPECT_EQ(view->objectName(), QStringLiteral("CZRAdBannerView"));
    EXPECT_THAT(log.Assertions(), IsEmpty());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(AdBannerViewTest, TheSlideshowNeitherKeepsARatioNorHasOne) {
    EXPECT_FALSE(Slideshow()->keepRatio());

    Slideshow()->setKeepRatio(true);
    Add(QStringLiteral("a"));

    EXPECT_EQ(Slide(0)->geometry(), QRect(QPoint(0, 0), kSize));
    pictures.Forget();
}

TEST_F(AdBannerViewTest, APictureFillsTheWholeBanner) {
    Add(QStringLiteral("a"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Set banner image url, imageUrl = https://pictures.test/a.png")));
    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].size, kSize);
    EXPECT_TRUE(pictures.Asked()[0].moving);
}

TEST_F(AdBannerViewTest, UntilItsPictureIsInASlideIsEmpty) {
    Add(QStringLiteral("a"));
    ZRWebImageWidget empty(Slideshow());
    empty.setFixedSize(kSize);

    EXPECT_EQ(Slide(0)->grab().toImage(), empty.grab().toImage());

    pictures.Succeed(pictures.LastLoad());
    EXPECT_NE(Slide(0)->grab().toImage(), empty.grab().toImage());
}

// Exposures

TEST_F(AdBannerViewTest, OneAdStartsOnceAndNeverEnds) {
    Add(QStringLiteral("a"));
    time.Advance(1h);

    EXPECT_THAT(told, ElementsAre("start a"));
    delete view;
    EXPECT_THAT(told, ElementsAre("start a", "close a"));
}

TEST_F(AdBannerViewTest, EachSwitchEndsTheOldAdAndThenStartsTheNew) {
    AddThree();

    time.Advance(15s);

    EXPECT_THAT(told, ElementsAre("end a", "start b", "end b", "start c", "end c", "start a"));
}

TEST_F(AdBannerViewTest, ABannerOutOfSightGoesOn) {
    AddThree();
    window.hide();

    time.Advance(10s);

    EXPECT_THAT(told, ElementsAre("end a", "start b", "end b", "start c"));
}

TEST_F(AdBannerViewTest, NumbersThatNoAdHasAreNeitherEndedNorStarted) {
    AddThree();

    view->OnCurrentIndexChanged(3, 0);
    view->OnCurrentIndexChanged(1, 3);
    view->OnCurrentIndexChanged(-1, 1);
    view->OnCurrentIndexChanged(2, -1);
    view->OnCurrentIndexChanged(2, 2);

    EXPECT_THAT(told, ElementsAre("end a", "start b", "end b", "start c", "end c", "start c"));
}

// Pictures

TEST_F(AdBannerViewTest, PicturesAreToldWithTheirAdAndTheTimeSinceTheViewWasMade) {
    AddThree();
    time.Advance(100ms);
    pictures.SucceedUrl("https://pictures.test/b.png");
    time.Advance(200ms);
    Slideshow()->setCurrentIndex(1);
    EXPECT_THAT(told, ElementsAre("in https://pictures.test/b.png 100 1 b", "end a", "start b"));
    told.clear();
    for (int i = 0; i < 3; ++i) {
        pictures.FailUrl("https://pictures.test/c.png");
    }
    pictures.FailUrl("https://pictures.test/a.png");
    pictures.SucceedUrl("https://pictures.test/a.png");

    EXPECT_THAT(told,
                ElementsAre("lost https://pictures.test/c.png \"\" 300 3 c", "in https://pictures.test/a.png 300 2 a"));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdBannerViewTest, ThePicturesTimeIsTheServers) {
    AddThree();
    time.SetServerTime(time.ServerTime() + 12'345);

    pictures.SucceedUrl("https://pictures.test/a.png");

    EXPECT_THAT(told, ElementsAre("in https://pictures.test/a.png 12345 1 a"));
}

TEST_F(AdBannerViewTest, APictureMayBeInAsItsAddressIsAdded) {
    pictures.AnswerAtOnce();
    time.Advance(70ms);

    Add(QStringLiteral("a"));

    EXPECT_THAT(told, ElementsAre("start a", "in https://pictures.test/a.png 70 1 a"));
}

TEST_F(AdBannerViewTest, PicturesOfNoAdAreNotToldOf) {
    AddThree();

    for (const int index : {-1, 3, 100}) {
        view->OnImageLoadSucceeded(UrlOf(QStringLiteral("a")), index, 1);
        view->OnImageLoadFailed(UrlOf(QStringLiteral("a")), index, 3);
    }

    EXPECT_THAT(told, IsEmpty());
}

// Clicks

TEST_F(AdBannerViewTest, AClickOpensTheTargetOfTheAdThatIsSeen) {
    Add(QStringLiteral("a"), QStringLiteral("https://www.test/a"));
    Add(QStringLiteral("b"), QStringLiteral("https://www.test/b"));
    time.Advance(5s);
    told.clear();
    log.Forget();

    Click(view);

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    const OpenedUrl opened = urls.Opened()[0];
    EXPECT_EQ(opened.url, "https://www.test/b");
    EXPECT_EQ(opened.businessType, 8);
    EXPECT_EQ(opened.fallbackMode, 1);
    EXPECT_EQ(opened.context, nullptr);
    EXPECT_STREQ(opened.extra.typeName(), "core::webview::ZRWebWindowInfo");
    const auto wanted = opened.extra.value<core::webview::ZRWebWindowInfo>();
    EXPECT_TRUE(wanted.parent.isNull());
    EXPECT_FALSE(wanted.size.isValid());
    EXPECT_FALSE(wanted.minimumSize.isValid());
    EXPECT_THAT(told, ElementsAre("clicked, opened b"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] [CZRAdImageView] Open schema success, schema = https://www.test/b, adId = b")));
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdBannerViewTest, AClickNeedsNoPicture) {
    AddThree();
    Click(view);
    EXPECT_THAT(told, ElementsAre("clicked, opened a"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AdBannerViewTest, ATargetThatTheHostRefusesIsToldAsNotOpened) {
    Add(QStringLiteral("a"), QStringLiteral("file:///etc/passwd"));
    told.clear();
    log.Forget();

    Click(view);

    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(told, ElementsAre("clicked, not opened a"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error(StartsWith("Refused to open a URL: ")),
                            Info("[Ad] [CZRAdImageView] Open schema failed, schema = file:///etc/passwd, adId = a")));
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdBannerViewTest, AnAdWithoutATargetOnlyLogsTheClick) {
    Add(QStringLiteral("a"), QString());
    told.clear();
    log.Forget();

    Click(view);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] [CZRAdImageView] Open schema failed, schema is empty, adId = a")));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 1);
}

TEST_F(AdBannerViewTest, AnotherButtonThanTheLeftDoesNothing) {
    AddThree();

    Press(*view, Qt::RightButton);
    Press(*view, Qt::MiddleButton);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(window.presses, 2);
}

TEST_F(AdBannerViewTest, RightPressDoesNothingWhenTheLeftButtonIsHeld) {
    AddThree();
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(300, 50), Qt::RightButton, Qt::LeftButton | Qt::RightButton,
                      Qt::NoModifier);

    QCoreApplication::sendEvent(view, &event);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

TEST_F(AdBannerViewTest, ButtonAndStripAreLookedAtBeforeTheTarget) {
    Add(QStringLiteral("a"), QString());
    view->SetTopNonClickableAreaHeight(24);
    told.clear();
    log.Forget();

    Press(*view, Qt::RightButton);
    PressAt(*view, Qt::LeftButton, QPoint(300, 10));

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(window.presses, 2);
}

TEST_F(AdBannerViewTest, AClickIsLoggedThenToldOfAndThenPassedOn) {
    AddThree();
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(300, 50), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    bool kept = false;
    std::vector<LogLine> lines;
    QObject::connect(view, &CZRAdBannerView::ClickAd, [&] {
        kept = event.isAccepted();
        lines = log.Lines();
    });

    QCoreApplication::sendEvent(view, &event);

    EXPECT_TRUE(kept);
    EXPECT_THAT(lines, ElementsAre(Info(StartsWith("[Ad] [CZRAdImageView] Open schema success, "))));
    EXPECT_THAT(told, ElementsAre("clicked, opened a"));
    EXPECT_EQ(window.presses, 1);
    urls.Forget();
}

TEST_F(AdBannerViewTest, TheStripAtTheTopTakesNoClick) {
    AddThree();
    view->SetTopNonClickableAreaHeight(24);

    for (const QPoint point : {QPoint(0, 0), QPoint(599, 0), QPoint(300, 23), QPoint(599, 23)}) {
        PressAt(*view, Qt::LeftButton, point);
    }
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(window.presses, 4);

    PressAt(*view, Qt::LeftButton, QPoint(300, 24));
    EXPECT_THAT(told, ElementsAre("clicked, opened a"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_EQ(window.presses, 5);
}

TEST_F(AdBannerViewTest, APlaceBetweenTwoPixelsCountsAsTheNearerOne) {
    AddThree();
    view->SetTopNonClickableAreaHeight(24);
    const auto press = [this](double y) {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(10, y), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &event);
        return urls.Opened().size();
    };

    EXPECT_EQ(press(23.4), 0u);
    EXPECT_EQ(press(23.6), 1u);
}

TEST_F(AdBannerViewTest, WithoutAStripTheWholeBannerTakesClicks) {
    AddThree();
    PressAt(*view, Qt::LeftButton, QPoint(0, 0));
    for (const int height : {0, -5}) {
        view->SetTopNonClickableAreaHeight(height);
        PressAt(*view, Qt::LeftButton, QPoint(0, 0));
    }
    EXPECT_THAT(urls.Opened(), SizeIs(3));
}

TEST_F(AdBannerViewTest, StripTakesNoClickWhenItIsOnePixelHigh) {
    AddThree();
    view->SetTopNonClickableAreaHeight(1);

    PressAt(*view, Qt::LeftButton, QPoint(300, 0));
    EXPECT_THAT(urls.Opened(), IsEmpty());
    PressAt(*view, Qt::LeftButton, QPoint(300, 1));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AdBannerViewTest, AClickWithoutAnAdOrATargetInItsPlaceDoesNothing) {
    Click(view);
    view->AddAdId(QStringLiteral("a"));
    view->OnCurrentIndexChanged(0, -1);
    told.clear();
    Click(view);
    view->AddSchema(QStringLiteral("https://www.test/a"));
    view->OnCurrentIndexChanged(1, -1);
    Click(view);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_EQ(window.presses, 3);
}

// The end

TEST_F(AdBannerViewTest, ItsEndClosesTheAdThatIsSeenAndEndsNoExposure) {
    AddThree();
    time.Advance(5s);
    told.clear();

    delete view;
    time.Advance(1min);

    EXPECT_THAT(told, ElementsAre("close b"));
}

TEST_F(AdBannerViewTest, BannerThatShowedNothingReportsNothingAtItsEnd) {
    delete view;
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(AdBannerViewTest, ADyingSlideshowIsHeardNoMore) {
    AddThree();
    const ZSlideshow* slideshow = Slideshow();
    const QObject* listener = view;
    std::vector<bool> heard;
    // The slideshow still exists after the view's own part is destroyed.
    QObject::connect(view, &QObject::destroyed, slideshow, [&] {
        heard.push_back(QObject::disconnect(slideshow, &ZSlideshowBase::currentChanged, listener, nullptr));
        heard.push_back(QObject::disconnect(slideshow, &ZSlideshow::webImageLoadSucess, listener, nullptr));
        heard.push_back(QObject::disconnect(slideshow, &ZSlideshow::webImageLoadFinalFailed, listener, nullptr));
    });

    delete view;

    EXPECT_THAT(heard, ElementsAre(false, false, false));
    EXPECT_THAT(told, ElementsAre("close a"));
}

TEST_F(AdBannerViewTest, ASlideshowThatSomebodyDeletedIsNotMissed) {
    AddThree();
    delete Slideshow();

    Add(QStringLiteral("d"));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Set banner image url, imageUrl = https://pictures.test/d.png")));

    delete view;
    EXPECT_THAT(told, ElementsAre("close a"));
}

TEST_F(AdBannerViewTest, ThePageThatAClickOpensMayTakeTheViewAway) {
    AddThree();
    const QPointer<QWidget> alive = view;
    urls.WhenOpening([this] { delete view; });

    Click(view);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] [CZRAdImageView] Open schema success, schema = "
                                              "zrclient://page/news, adId = a")));
    EXPECT_THAT(told, ElementsAre("close a"));
}

TEST_F(AdBannerViewTest, WhoeverHearsOfAClickMayDeleteTheViewAtOnce) {
    AddThree();
    const QPointer<QWidget> alive = view;
    QObject::connect(view, &CZRAdBannerView::ClickAd, &window, [this] { delete view; });

    Click(view);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(told, ElementsAre("clicked, opened a", "close a"));
    urls.Forget();
}

TEST_F(AdBannerViewTest, WhoeverHearsOfAnExposuresEndMayDeleteTheViewAtOnce) {
    AddThree();
    const QPointer<QWidget> alive = view;
    QObject::connect(view, &CZRAdBannerView::ExposeAdEnd, &window, [this] { delete view; });

    time.Advance(1min);

    EXPECT_TRUE(alive.isNull());
    EXPECT_THAT(told, ElementsAre("end a", "close b"));
}

}  // namespace
