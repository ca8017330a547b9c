#include <QPainter>
#include <QPointer>
#include <QSignalSpy>

#include "KitTest.h"
#include "framework/Ports.h"
#include "ui/ZRWebImageWidget.h"
#include "ui/ZResource.h"

using namespace ::testing;

namespace {

const QString kUrl = QStringLiteral("https://pictures.test/a.png");

/// Red on the left half, blue on the right.
std::shared_ptr<const Picture> Halves(const QSize& size) {
    auto picture = std::make_shared<Picture>();
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter(&image).fillRect(size.width() / 2, 0, size.width(), size.height(), Qt::blue);
    picture->frames.push_back({image, 0});
    return picture;
}

std::shared_ptr<const Picture> Moving(const std::vector<std::pair<QColor, int>>& frames) {
    auto picture = std::make_shared<Picture>();
    for (const auto& [color, millis] : frames) {
        picture->frames.push_back({CScriptedPictures::Plain(QSize(120, 40), color)->frames[0].image, millis});
    }
    return picture;
}

class WebImageTest : public KitTest {
protected:
    WebImageTest() {
        image.setFixedSize(120, 40);
        image.move(20, 20);
        QObject::connect(&image, &ZRWebImageWidget::ImageLoadStatusSignal, &image,
                         [this](const QString& url, ZRImageLoadStatus status) {
                             told.push_back(url.toStdString() + " " + std::to_string(status));
                         });
    }

    ZRWebImageWidget image{&window};
    std::vector<std::string> told;
};

TEST_F(WebImageTest, AsksForAMovingPictureOfItsSize) {
    image.SetUrl(kUrl, QString());

    ASSERT_THAT(pictures.Asked(), SizeIs(1));
    EXPECT_EQ(pictures.Asked()[0].url, kUrl.toStdString());
    EXPECT_EQ(pictures.Asked()[0].size, QSize(120, 40));
    EXPECT_TRUE(pictures.Asked()[0].moving);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(WebImageTest, AsksForAStillOneWhereNothingIsToMove) {
    image.SetMoving(false);

    image.SetUrl(kUrl, QString());

    EXPECT_FALSE(pictures.Asked()[0].moving);
}

TEST_F(WebImageTest, TellsOnceHowALoadEnded) {
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1);
    image.SetUrl(kUrl + QLatin1Char('2'), QString());
    pictures.Fail(2);
    time.Advance(std::chrono::minutes(1));

    EXPECT_THAT(told, ElementsAre(kUrl.toStdString() + " 4", kUrl.toStdString() + "2 2"));
}

TEST_F(WebImageTest, LoadsAgainWhatItShowsAlready) {
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1);

    image.SetUrl(kUrl, QString());

    EXPECT_THAT(pictures.Asked(), SizeIs(2));
    EXPECT_EQ(pictures.OutstandingCount(), 1);
}

TEST_F(WebImageTest, ForgetsALoadForTheNextWithoutAWord) {
    image.SetUrl(kUrl, QString());
    image.SetUrl(kUrl, QString());
    EXPECT_EQ(pictures.OutstandingCount(), 1);

    pictures.Succeed(1);
    EXPECT_THAT(told, IsEmpty());
    pictures.Fail(2);

    EXPECT_THAT(told, ElementsAre(kUrl.toStdString() + " 2"));
}

TEST_F(WebImageTest, AnEmptyAddressFailsLater) {
    image.SetUrl(QString(), QString());
    EXPECT_THAT(told, IsEmpty());

    time.Settle();

    EXPECT_THAT(told, ElementsAre(" 2"));
}

TEST_F(WebImageTest, AfterTheHostsEndALoadFailsLater) {
    host::Uninstall();

    image.SetUrl(kUrl, QString());
    EXPECT_THAT(told, IsEmpty());
    time.Settle();

    EXPECT_THAT(told, ElementsAre(kUrl.toStdString() + " 2"));
}

TEST_F(WebImageTest, ANewAddressForgetsTheFailureOfAnEmptyOne) {
    image.SetUrl(QString(), QString());
    image.SetUrl(kUrl, QString());
    time.Settle();
    EXPECT_THAT(told, IsEmpty());

    pictures.Succeed(1);

    EXPECT_THAT(told, ElementsAre(kUrl.toStdString() + " 4"));
}

TEST_F(WebImageTest, MayBeGivenTheNextAddressInsideItsOwnSignal) {
    QObject::connect(&image, &ZRWebImageWidget::ImageLoadStatusSignal, &image,
                     [this](const QString& url, ZRImageLoadStatus status) {
                         if (status == kImageLoadFailed && told.size() < 3) {
                             image.SetUrl(url, QString());
                         }
                     });
    image.SetUrl(kUrl, QString());
    pictures.Fail(1);
    pictures.Fail(2);
    pictures.Fail(3);

    EXPECT_THAT(told, SizeIs(3));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(WebImageTest, MayBeDeletedInsideItsOwnSignal) {
    auto* other = new ZRWebImageWidget(&window);
    QObject::connect(other, &ZRWebImageWidget::ImageLoadStatusSignal, &window, [other] { delete other; });
    other->SetUrl(kUrl, QString());

    pictures.Succeed(1);

    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(WebImageTest, ALoadEndsWithItsWidget) {
    auto other = std::make_unique<ZRWebImageWidget>();
    other->SetUrl(kUrl, QString());
    EXPECT_EQ(pictures.OutstandingCount(), 1);

    other.reset();

    EXPECT_EQ(pictures.OutstandingCount(), 0);
    pictures.Succeed(pictures.LastLoad());
}

TEST_F(WebImageTest, IsEmptyUntilThePictureIsInAndKeepsItUntilTheNext) {
    Show();
    image.SetUrl(kUrl, QString());
    EXPECT_EQ(Count(Look(&image), Qt::white), 120 * 40);

    pictures.Succeed(1, Qt::red);
    EXPECT_EQ(Count(Look(&image), Qt::red), 120 * 40);

    image.SetUrl(kUrl, QString());
    EXPECT_EQ(Count(Look(&image), Qt::red), 120 * 40);
    pictures.Fail(2);
    EXPECT_EQ(Count(Look(&image), Qt::red), 120 * 40);
    image.SetUrl(kUrl, QString());
    pictures.Succeed(3, Qt::blue);
    EXPECT_EQ(Count(Look(&image), Qt::blue), 120 * 40);
}

TEST_F(WebImageTest, ShowsWhatHoldsThePlaceWhileItIsEmpty) {
    Show();
    image.SetUrl(kUrl, ZResource::icon_blackvip_16_normal);
    EXPECT_EQ(Look(&image).pixelColor(60, 20), Color("muted"));

    pictures.Succeed(1, Qt::red);
    EXPECT_EQ(Count(Look(&image), Qt::red), 120 * 40);
}

TEST_F(WebImageTest, APlaceHolderThatIsNotKnownIsLogged) {
    image.SetUrl(kUrl, QStringLiteral("nothing"));

    pictures.Succeed(1);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("ZRWebImageWidget: there is no drawing \"nothing\"")));
}

TEST_F(WebImageTest, CutsWhatStandsOverOnBothSidesAlike) {
    Show();
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1, Halves(QSize(400, 40)));

    const QImage look = Look(&image);
    EXPECT_EQ(Count(look, Qt::red), 60 * 40);
    EXPECT_EQ(Count(look, Qt::blue), 60 * 40);

    image.setFixedSize(80, 40);
    EXPECT_EQ(Count(Look(&image), Qt::red), 40 * 40);
}

TEST_F(WebImageTest, RoundsAllCornersOrTheUpperOnesSmoothly) {
    Show();
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1, Qt::red);

    image.SetRoundedCorner(kCornersAll, 10, 10);
    QImage look = Look(&image);
    for (const QPoint corner : {QPoint(0, 0), QPoint(119, 0), QPoint(0, 39), QPoint(119, 39)}) {
        EXPECT_EQ(look.pixelColor(corner), QColor(Qt::white)) << corner.x() << "," << corner.y();
    }
    EXPECT_EQ(look.pixelColor(60, 0), QColor(Qt::red));
    EXPECT_EQ(look.pixelColor(0, 20), QColor(Qt::red));
    EXPECT_GT(120 * 40 - Count(look, Qt::red) - Count(look, Qt::white), 10);  // the edge is smooth

    image.SetRoundedCorner(kCornersTop, 10, 10);
    look = Look(&image);
    EXPECT_EQ(look.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(look.pixelColor(119, 0), QColor(Qt::white));
    EXPECT_EQ(look.pixelColor(0, 39), QColor(Qt::red));
    EXPECT_EQ(look.pixelColor(119, 39), QColor(Qt::red));

    image.SetRoundedCorner(kCornersNone, 10, 10);
    EXPECT_EQ(Count(Look(&image), Qt::red), 120 * 40);
}

TEST_F(WebImageTest, MovesAsLongAsEachFrameStands) {
    Show();
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1, Moving({{Qt::red, 100}, {Qt::green, 300}, {Qt::blue, 50}}));
    time.Settle();

    std::vector<QRgb> seen;
    for (const int millis : {99, 1, 299, 1, 49, 1, 99, 1}) {
        time.Advance(std::chrono::milliseconds(millis));
        seen.push_back(Look(&image).pixel(60, 20));
    }

    const QRgb red = QColor(Qt::red).rgb();
    const QRgb green = QColor(Qt::green).rgb();
    const QRgb blue = QColor(Qt::blue).rgb();
    EXPECT_THAT(seen, ElementsAre(red, green, green, blue, blue, red, red, green));
}

TEST_F(WebImageTest, PictureBeginsWithItsFirstFrameWhenItFollowsAMovingOne) {
    Show();
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1, Moving({{Qt::red, 100}, {Qt::green, 100}, {Qt::blue, 100}}));
    time.Settle();
    time.Advance(std::chrono::milliseconds(280));
    ASSERT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::blue));

    image.SetUrl(kUrl, QString());
    pictures.Succeed(2, Moving({{Qt::yellow, 100}, {Qt::black, 100}}));
    EXPECT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::yellow));
    time.Advance(std::chrono::milliseconds(99));
    EXPECT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::yellow));
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::black));

    image.SetUrl(kUrl, QString());
    pictures.Succeed(3, Qt::green);
    EXPECT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::green));
}

// It advances at most by the step that was due when it was hidden.
TEST_F(WebImageTest, WhatNobodySeesDoesNotMove) {
    Show();
    image.SetUrl(kUrl, QString());
    pictures.Succeed(1, Moving({{Qt::red, 100}, {Qt::green, 100}, {Qt::blue, 100}}));
    time.Settle();

    image.hide();
    time.Advance(std::chrono::milliseconds(2'950));  // to the third, if it moved
    image.show();
    EXPECT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::green));

    time.Advance(std::chrono::milliseconds(100));
    EXPECT_EQ(Look(&image).pixelColor(60, 20), QColor(Qt::blue));
}

TEST_F(WebImageTest, ReleaseReachesTheParentWhenAPictureIsUnderThePointer) {
    class CReleases : public QObject {
    public:
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == QEvent::MouseButtonRelease ? 1 : 0;
            return false;
        }
    } releases;
    window.installEventFilter(&releases);
    Show();

    Press(&image);
    Release(&image);

    EXPECT_EQ(releases.count, 1);
}

TEST_F(WebImageTest, PassesPressesOnToItsParentAndTakesNoFocus) {
    Show();

    Press(&image);
    Release(&image);
    Press(&image, Qt::RightButton);
    Tab();

    EXPECT_EQ(window.presses, 2);
    EXPECT_FALSE(image.hasFocus());
}

}  // namespace
