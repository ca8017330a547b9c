#include <malloc.h>

#include <QPointer>

#include "KitTest.h"
#include "support/Cost.h"
#include "ui/ZRWebImageWidget.h"
#include "ui/ZResource.h"
#include "ui/ZSlideshow.h"

using namespace ::testing;

namespace {

using Change = std::pair<int, int>;
constexpr std::chrono::seconds kInterval(5);

QString Url(int number) {
    return QStringLiteral("https://pictures.test/%1.png").arg(number);
}

class SlideshowTest : public KitTest {
protected:
    SlideshowTest() {
        slideshow.setFixedSize(300, 100);
        slideshow.move(10, 10);
        QObject::connect(&slideshow, &ZSlideshowBase::currentChanged, &slideshow,
                         [this](int now, int before) { changes.emplace_back(now, before); });
        QObject::connect(&slideshow, &ZSlideshow::webImageLoadSucess, &slideshow,
                         [this](const QString& url, int index, int count) { Note("in", url, index, count); });
        QObject::connect(&slideshow, &ZSlideshow::webImageLoadFinalFailed, &slideshow,
                         [this](const QString& url, int index, int count) { Note("lost", url, index, count); });
    }

    void Note(const char* what, const QString& url, int index, int count) {
        loads.push_back(what + (" " + url.toStdString()) + " " + std::to_string(index) + " " + std::to_string(count));
    }

    void Add(int number) { slideshow.addWebImageOrGif(Url(number), QString(), ZSlideshow::kMoving); }
    void AddThree() {
        for (const int number : {0, 1, 2}) {
            Add(number);
        }
        slideshow.setCurrentIndex(1);  // the third is loaded
        pictures.Succeed(1, Qt::red);
        pictures.Succeed(2, Qt::green);
        pictures.Succeed(3, Qt::blue);
        slideshow.setCurrentIndex(0);
        changes.clear();
    }
    void Run() {
        slideshow.m_bAutomatic = true;
        slideshow.setAutoSwitch(true);
    }
    QWidget* Dots() { return slideshow.findChild<QWidget*>(QStringLiteral("ZSlideshowDots")); }

    ZSlideshow slideshow{&window, ZSlideshowBase::kRatioFree};
    std::vector<Change> changes;
    std::vector<std::string> loads;
};

TEST_F(SlideshowTest, TheFirstSlideIsShownInsideTheCallThatAddsIt) {
    EXPECT_EQ(slideshow.count(), 0);
    EXPECT_EQ(slideshow.currentIndex(), -1);

    Add(0);

    EXPECT_THAT(changes, ElementsAre(Change(0, -1)));
    EXPECT_EQ(slideshow.currentIndex(), 0);
    Add(1);
    EXPECT_THAT(changes, SizeIs(1));
    EXPECT_EQ(slideshow.count(), 2);
    EXPECT_THAT(pictures.Asked(), SizeIs(2));
}

TEST_F(SlideshowTest, LoadsThePicturesOfTheCurrentAndTheNextSlide) {
    for (const int number : {0, 1, 2, 3}) {
        Add(number);
    }
    EXPECT_THAT(pictures.Asked(), SizeIs(2));
    pictures.Succeed(1);
    pictures.Succeed(2);
    EXPECT_EQ(pictures.OutstandingCount(), 0);

    slideshow.setCurrentIndex(1);
    ASSERT_THAT(pictures.Asked(), SizeIs(3));
    EXPECT_EQ(pictures.Asked()[2].url, Url(2).toStdString());
    pictures.Succeed(3);

    slideshow.setCurrentIndex(3);
    ASSERT_THAT(pictures.Asked(), SizeIs(4));
    EXPECT_EQ(pictures.Asked()[3].url, Url(3).toStdString());
    pictures.Succeed(4);
    EXPECT_THAT(loads, SizeIs(4));
}

TEST_F(SlideshowTest, KeepsTenPicturesAndReportsEachOnce) {
    for (int number = 0; number < 12; ++number) {
        Add(number);
    }
    pictures.Succeed(1);
    pictures.Succeed(2);
    for (int index = 1; index < 11; ++index) {
        slideshow.setCurrentIndex(index);
        pictures.Succeed(pictures.LastLoad(), Qt::green);
    }
    EXPECT_THAT(loads, SizeIs(12));
    EXPECT_EQ(slideshow.findChildren<ZRWebImageWidget*>().size(), 10);

    slideshow.setCurrentIndex(0);
    EXPECT_THAT(pictures.Asked(), SizeIs(14));
    pictures.Succeed(13, Qt::red);
    pictures.Fail(14);

    Show();
    EXPECT_EQ(Look(&slideshow).pixelColor(0, 0), QColor(Qt::red));
    EXPECT_THAT(loads, SizeIs(12));
    EXPECT_EQ(slideshow.findChildren<ZRWebImageWidget*>().size(), 10);
    EXPECT_EQ(pictures.OutstandingCount(), 1) << "a second attempt";
    pictures.Succeed(15);
    EXPECT_THAT(loads, SizeIs(12));
}

TEST_F(SlideshowTest, AddingASlideCostsTheSameWhateverIsThere) {
    constexpr int kSlides = 30'000;
    Add(0);
    Add(1);
    pictures.Succeed(1);
    pictures.Succeed(2);
    const CCost cost;
    for (int number = 2; number < kSlides; ++number) {
        Add(number);
    }
    cost.CheckTime(std::chrono::seconds(1));
    cost.CheckMemory(30 << 20);
    EXPECT_EQ(slideshow.count(), kSlides);
    EXPECT_THAT(pictures.Asked(), SizeIs(2));
}

TEST_F(SlideshowTest, GoesOnByItselfEveryFiveSecondsAndRoundTheEnd) {
    AddThree();
    Run();

    time.Advance(kInterval - std::chrono::milliseconds(1));
    EXPECT_THAT(changes, IsEmpty());
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_THAT(changes, ElementsAre(Change(1, 0)));
    time.Advance(2 * kInterval);

    EXPECT_THAT(changes, ElementsAre(Change(1, 0), Change(2, 1), Change(0, 2)));
}

TEST_F(SlideshowTest, GoesOnAlsoWhenItIsHidden) {
    AddThree();
    Run();
    slideshow.hide();

    time.Advance(2 * kInterval);

    EXPECT_THAT(changes, SizeIs(2));
}

TEST_F(SlideshowTest, GoesOnOnlyWithBothTheFlagAndTheSwitch) {
    AddThree();
    time.Advance(2 * kInterval);
    slideshow.setAutoSwitch(true);
    time.Advance(2 * kInterval);
    EXPECT_THAT(changes, IsEmpty());

    slideshow.m_bAutomatic = true;
    time.Advance(kInterval);
    EXPECT_THAT(changes, SizeIs(1));

    slideshow.setAutoSwitch(false);
    time.Advance(10 * kInterval);
    EXPECT_THAT(changes, SizeIs(1));
}

TEST_F(SlideshowTest, ASingleSlideStaysAndASecondBeginsTheTime) {
    Run();
    Add(0);
    time.Advance(10 * kInterval);
    EXPECT_THAT(changes, SizeIs(1));

    Add(1);
    pictures.LastLoad();
    pictures.Fail(1);
    pictures.Forget();
    time.Advance(std::chrono::seconds(3));
    Add(2);
    time.Advance(std::chrono::seconds(2));
    pictures.Forget();

    EXPECT_THAT(changes, ElementsAre(Change(0, -1), Change(1, 0)));
}

TEST_F(SlideshowTest, ASlideThatIsChosenStandsForItsWholeTime) {
    AddThree();
    Run();
    time.Advance(std::chrono::seconds(4));

    slideshow.setCurrentIndex(2);

    EXPECT_THAT(changes, ElementsAre(Change(2, 0)));
    time.Advance(std::chrono::seconds(4));
    EXPECT_THAT(changes, SizeIs(1));
    time.Advance(std::chrono::seconds(1));
    EXPECT_THAT(changes, ElementsAre(Change(2, 0), Change(0, 2)));
}

TEST_F(SlideshowTest, ANumberThatNoSlideHasAndThatOfTheMomentChangeNothing) {
    AddThree();
    for (const int index : {-1, 0, 3, 1000}) {
        slideshow.setCurrentIndex(index);
    }
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_EQ(slideshow.currentIndex(), 0);
}

TEST_F(SlideshowTest, ShowsOneSlideAtATimeOverItsWholeSize) {
    AddThree();
    Show();

    EXPECT_EQ(Look(&slideshow).pixelColor(0, 0), QColor(Qt::red));
    slideshow.setCurrentIndex(1);
    const QImage look = Look(&slideshow);
    EXPECT_EQ(look.pixelColor(0, 0), QColor(Qt::green));
    EXPECT_EQ(look.pixelColor(299, 99), QColor(Qt::green));
    EXPECT_EQ(pictures.Asked()[0].size, QSize(300, 100));
}

TEST_F(SlideshowTest, HasADotPerSlideFromTwoOn) {
    Add(0);
    Show();
    ASSERT_TRUE(Dots());
    EXPECT_FALSE(Dots()->isVisible());

    Add(1);
    pictures.Succeed(1, Qt::red);
    pictures.Succeed(2, Qt::red);
    EXPECT_TRUE(Dots()->isVisible());
    const QImage first = Look(&slideshow);
    EXPECT_EQ(first.pixelColor(143, 90), QColor(Qt::white));
    EXPECT_NE(first.pixelColor(157, 90), QColor(Qt::white));
    EXPECT_NE(first.pixelColor(157, 90), QColor(Qt::red));

    slideshow.setCurrentIndex(1);
    EXPECT_EQ(Look(&slideshow).pixelColor(157, 90), QColor(Qt::white));
}

TEST_F(SlideshowTest, KeepsARatioOnlyWhereItIsToAndHasOne) {
    ZSlideshow square(&window, ZSlideshowBase::kRatio1To1);
    square.setFixedSize(300, 100);
    square.addWebImageOrGif(Url(1), QString(), ZSlideshow::kStill);
    auto* slide = square.findChild<ZRWebImageWidget*>();
    ASSERT_TRUE(slide);

    EXPECT_TRUE(square.keepRatio());
    EXPECT_EQ(slide->geometry(), QRect(100, 0, 100, 100));
    EXPECT_FALSE(pictures.Asked()[0].moving);
    square.setKeepRatio(false);
    EXPECT_FALSE(square.keepRatio());
    EXPECT_EQ(slide->geometry(), QRect(0, 0, 300, 100));
}

TEST_F(SlideshowTest, TheSlidesGrowWithIt) {
    AddThree();
    slideshow.setFixedSize(200, 80);
    Show();

    const auto slides = slideshow.findChildren<ZRWebImageWidget*>();
    ASSERT_EQ(slides.size(), 3);
    for (const ZRWebImageWidget* slide : slides) {
        EXPECT_EQ(slide->geometry(), QRect(0, 0, 200, 80));
    }
}

TEST_F(SlideshowTest, TriesEachPictureThreeTimesAndTellsTheAttempt) {
    Add(0);
    Add(1);
    pictures.Fail(1);     // 3 begins
    pictures.Succeed(3);  // the second attempt
    pictures.Fail(2);     // 4
    pictures.Fail(4);     // 5
    EXPECT_THAT(loads, ElementsAre("in https://pictures.test/0.png 0 2"));
    pictures.Fail(5);
    time.Advance(std::chrono::minutes(1));

    EXPECT_THAT(loads, ElementsAre("in https://pictures.test/0.png 0 2", "lost https://pictures.test/1.png 1 3"));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(SlideshowTest, AnEmptyAddressIsTriedThreeTimesToo) {
    slideshow.addWebImageOrGif(QString(), QString(), ZSlideshow::kMoving);
    EXPECT_THAT(loads, IsEmpty());

    time.Settle();

    EXPECT_THAT(loads, ElementsAre("lost  0 3"));
}

TEST_F(SlideshowTest, MayBeDeletedInsideItsSignals) {
    QPointer<ZSlideshow> first = new ZSlideshow(&window, ZSlideshowBase::kRatioFree);
    QObject::connect(first, &ZSlideshowBase::currentChanged, &window, [&] { delete first; });
    first->addWebImageOrGif(Url(0), QString(), 2);
    EXPECT_FALSE(first);

    QPointer<ZSlideshow> second = new ZSlideshow(&window, ZSlideshowBase::kRatioFree);
    second->addWebImageOrGif(Url(0), QString(), 2);
    QObject::connect(second, &ZSlideshow::webImageLoadSucess, &window, [&] { delete second; });
    pictures.Succeed(pictures.LastLoad());
    EXPECT_FALSE(second);

    QPointer<ZSlideshow> lost = new ZSlideshow(&window, ZSlideshowBase::kRatioFree);
    lost->addWebImageOrGif(Url(0), QString(), 2);
    QObject::connect(lost, &ZSlideshow::webImageLoadFinalFailed, &window, [&] { delete lost; });
    for (int attempt = 0; attempt < 3; ++attempt) {
        ASSERT_TRUE(lost);
        pictures.Fail(pictures.LastLoad());
    }
    EXPECT_FALSE(lost);
    EXPECT_EQ(pictures.OutstandingCount(), 0);

    QPointer<ZSlideshow> third = new ZSlideshow(&window, ZSlideshowBase::kRatioFree);
    third->m_bAutomatic = true;
    third->setAutoSwitch(true);
    third->addWebImageOrGif(Url(0), QString(), 2);
    third->addWebImageOrGif(Url(1), QString(), 2);
    pictures.Forget();
    QObject::connect(third, &ZSlideshowBase::currentChanged, &window, [&] { delete third; });
    time.Advance(kInterval);
    EXPECT_FALSE(third);
}

TEST_F(SlideshowTest, ASlideThatSomebodyDeletesIsPassedOver) {
    AddThree();
    Run();
    delete slideshow.findChild<ZRWebImageWidget*>(QStringLiteral("ZSlideshowSlide1"));

    time.Advance(3 * kInterval);

    EXPECT_THAT(changes, ElementsAre(Change(1, 0), Change(2, 1), Change(0, 2)));
}

TEST_F(SlideshowTest, TheDotsStayAwayFromASlideWithoutItsPicture) {
    Add(0);
    Add(1);
    Show();
    EXPECT_FALSE(Dots()->isVisible());

    pictures.Succeed(2, Qt::red);
    EXPECT_FALSE(Dots()->isVisible());
    slideshow.setCurrentIndex(1);
    EXPECT_TRUE(Dots()->isVisible());
    slideshow.setCurrentIndex(0);
    EXPECT_FALSE(Dots()->isVisible());

    pictures.Succeed(1, Qt::red);
    EXPECT_TRUE(Dots()->isVisible());
}

TEST_F(SlideshowTest, APlaceholderCarriesTheDots) {
    for (const int number : {0, 1}) {
        slideshow.addWebImageOrGif(Url(number), ZResource::icon_close_16, ZSlideshow::kMoving);
    }
    Show();

    EXPECT_THAT(pictures.Asked(), SizeIs(2));
    EXPECT_TRUE(Dots()->isVisible());
}

TEST_F(SlideshowTest, StandInStaysWhenAnAttemptFails) {
    slideshow.addWebImageOrGif(Url(0), ZResource::icon_blackvip_16_normal, ZSlideshow::kMoving);
    Show();
    const QImage before = Look(&slideshow);

    pictures.Fail(1);
    EXPECT_EQ(Look(&slideshow), before);
    pictures.Fail(2);
    EXPECT_EQ(Look(&slideshow), before);
    pictures.Fail(3);
    EXPECT_EQ(Look(&slideshow), before);
}

TEST_F(SlideshowTest, PassesPressesOnToItsParentAlsoOnTheDots) {
    AddThree();
    Show();

    Press(&slideshow);
    Press(Dots());
    Tab();

    EXPECT_EQ(window.presses, 2);
    EXPECT_FALSE(slideshow.hasFocus());
}

TEST_F(SlideshowTest, AThousandSwitchesGrowTheHeapByNothing) {
    AddThree();
    Run();
    Show();
    changes.reserve(2000);
    time.Advance(20 * kInterval);

    const size_t before = mallinfo2().uordblks;
    time.Advance(1000 * kInterval);
    const size_t after = mallinfo2().uordblks;

    EXPECT_THAT(changes, SizeIs(1020));
    EXPECT_LE(after, before);
}

}  // namespace
