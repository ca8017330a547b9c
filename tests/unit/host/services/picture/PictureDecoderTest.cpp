#include "picture/PictureDecoder.h"

#include <gmock/gmock.h>

#include <QImageReader>
#include <QPainter>

#include "PictureBytes.h"

using namespace ::testing;
using namespace picture_bytes;

namespace {

std::shared_ptr<const Picture> Decode(const std::string& bytes, const QSize& size, bool moving = true,
                                      bool cancelled = false) {
    std::string reason;
    const auto info = image_validator::Validate(bytes, {}, reason);
    EXPECT_TRUE(info) << reason;
    const std::atomic<bool> stopped = cancelled;
    return info ? picture_decoder::Decode(bytes, *info, size, moving, stopped) : nullptr;
}

/// Three stripes side by side: red, green, blue.
QImage Stripes(const QSize& size) {
    QImage image = Plain(size, Qt::red);
    QPainter painter(&image);
    painter.fillRect(size.width() / 3, 0, size.width(), size.height(), Qt::green);
    painter.fillRect(size.width() * 2 / 3, 0, size.width(), size.height(), Qt::blue);
    return image;
}

TEST(PictureDecoderTest, GivesEveryFormatInTheSizeThatIsWanted) {
    for (const std::string& bytes : {Png(), Jpeg(), Gif(1)}) {
        const auto picture = Decode(bytes, QSize(30, 15));
        ASSERT_TRUE(picture) << bytes.substr(0, 6);
        ASSERT_THAT(picture->frames, SizeIs(1));
        const QImage& image = picture->frames[0].image;
        EXPECT_EQ(image.size(), QSize(30, 15));
        EXPECT_GT(image.pixelColor(15, 7).red(), 250);
        EXPECT_LT(image.pixelColor(15, 7).blue(), 5);
    }
}

TEST(PictureDecoderTest, CutsOnBothSidesAlikeWhatStandsOver) {
    const auto picture = Decode(Encoded(Stripes(QSize(90, 30)), "png"), QSize(30, 30));

    EXPECT_EQ(picture->frames[0].image.pixelColor(0, 15), QColor(Qt::green));
    EXPECT_EQ(picture->frames[0].image.pixelColor(29, 15), QColor(Qt::green));
    const auto wide = Decode(Encoded(Stripes(QSize(90, 30)), "png"), QSize(900, 30));
    EXPECT_EQ(wide->frames[0].image.pixelColor(10, 15), QColor(Qt::red));
    EXPECT_EQ(wide->frames[0].image.pixelColor(890, 15), QColor(Qt::blue));
}

TEST(PictureDecoderTest, AStripOfOnePixelCostsNoMoreThanItsRoom) {
    const auto picture = Decode(Png(QSize(1, 20'000)), QSize(360, 120));

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->frames[0].image.size(), QSize(360, 120));
}

TEST(PictureDecoderTest, KeepsWhatIsTransparent) {
    QImage image(10, 10, QImage::Format_ARGB32);
    image.fill(Qt::transparent);

    const auto picture = Decode(Encoded(image, "png"), QSize(5, 5));

    EXPECT_EQ(picture->frames[0].image.pixelColor(2, 2).alpha(), 0);
}

TEST(PictureDecoderTest, APictureThatMovesHasItsFramesAndTheirTimes) {
    const auto picture = Decode(GifHead() + GifFrame(0, 20) + GifFrame(1, 7) + GifFrame(0, 0) + ";", QSize(4, 4));

    ASSERT_THAT(picture->frames, SizeIs(3));
    EXPECT_EQ(picture->frames[0].image.pixelColor(1, 1), QColor(Qt::red));
    EXPECT_EQ(picture->frames[1].image.pixelColor(1, 1), QColor(Qt::blue));
    EXPECT_EQ(picture->frames[0].millis, 200);
    EXPECT_EQ(picture->frames[1].millis, 70);
    EXPECT_EQ(picture->frames[2].millis, 100) << "no time at all is taken for the usual one";
}

TEST(PictureDecoderTest, StandsStillWhereItIsNotToMove) {
    EXPECT_THAT(Decode(Gif(5), QSize(4, 4), false)->frames, SizeIs(1));
}

TEST(PictureDecoderTest, AsManyFramesAsAreAllowedMoveInABannerOnASharpScreen) {
    EXPECT_THAT(Decode(Gif(ImageLimits().frames), QSize(1324, 220))->frames, SizeIs(300));
}

TEST(PictureDecoderTest, StandsStillWhereAllFramesWouldTakeTooMuch) {
    EXPECT_THAT(Decode(Gif(300), QSize(1400, 220))->frames, SizeIs(1));
    std::string wide = GifHead(QSize(4000, 4000));
    for (int i = 0; i < 20; ++i) {
        wide += GifFrame(0, 10);
    }
    EXPECT_THAT(Decode(wide + ";", QSize(10, 10))->frames, SizeIs(1));
}

TEST(PictureDecoderTest, WhatDoesNotHoldWhatItPromisesIsNoPicture) {
    EXPECT_EQ(Decode(PngOfSize(20, 20), QSize(5, 5)), nullptr);
    std::string garbled = Png(QSize(200, 200));
    garbled.replace(garbled.size() / 2, 20, 20, 'x');
    EXPECT_EQ(Decode(garbled, QSize(5, 5)), nullptr);
}

TEST(PictureDecoderTest, JpegHasTheOrientationThatItNames) {
    QImage quarters(80, 40, QImage::Format_RGB32);
    quarters.fill(Qt::red);
    QPainter painter(&quarters);
    painter.fillRect(40, 0, 40, 20, Qt::green);
    painter.fillRect(0, 20, 40, 20, Qt::blue);
    painter.end();
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const std::string jpeg = Oriented(Encoded(quarters, "jpeg"), orientation);
        QByteArray bytes = QByteArray::fromStdString(jpeg);
        QBuffer buffer(&bytes);
        QImageReader reader(&buffer);
        reader.setAutoTransform(true);
        const QImage expected = reader.read();
        ASSERT_EQ(expected.width() < expected.height(), orientation > 4);

        const auto picture = Decode(jpeg, expected.size());
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->frames[0].image.convertToFormat(QImage::Format_RGB32),
                  expected.convertToFormat(QImage::Format_RGB32))
            << orientation;
    }
}

TEST(PictureDecoderTest, ACancelledOneIsNoPicture) {
    EXPECT_EQ(Decode(Png(), QSize(5, 5), true, true), nullptr);
}

}  // namespace
