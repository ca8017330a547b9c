#include "picture/ImageValidator.h"

#include <gmock/gmock.h>

#include <functional>
#include <random>

#include "PictureBytes.h"
#include "picture/PictureDecoder.h"
#include "picture/PngChunks.h"
#include "support/Cost.h"

using namespace ::testing;
using namespace picture_bytes;

namespace {

std::optional<ImageInfo> Validate(const std::string& bytes, const ImageLimits& limits = {}) {
    std::string reason;
    return image_validator::Validate(bytes, limits, reason);
}

std::string Refusal(const std::string& bytes, const ImageLimits& limits = {}) {
    std::string reason;
    return image_validator::Validate(bytes, limits, reason) ? "valid" : reason;
}

/// Whether validator and decoder together give a picture.
bool IsShown(const std::string& bytes) {
    const auto info = Validate(bytes);
    return info && picture_decoder::Decode(bytes, *info, QSize(4, 2), true, false);
}

TEST(ImageValidatorTest, FormatAndSizeAreReadFromTheContent) {
    EXPECT_EQ(Validate(Png())->format, EnImageFormat::kPng);
    EXPECT_EQ(Validate(Png())->size, QSize(40, 20));
    EXPECT_EQ(Validate(Jpeg())->format, EnImageFormat::kJpeg);
    EXPECT_EQ(Validate(Jpeg())->size, QSize(40, 20));
    EXPECT_EQ(Validate(Gif(3))->format, EnImageFormat::kGif);
    EXPECT_EQ(Validate(Gif(3))->frames, 3);
    EXPECT_EQ(Validate(Gif(3))->size, QSize(1, 1));
}

TEST(ImageValidatorTest, FormatsHaveTheReadersNames) {
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kPng), "png");
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kJpeg), "jpeg");
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kGif), "gif");
}

TEST(ImageValidatorTest, PixelsAreLimitedTo40Million) {
    EXPECT_TRUE(Validate(PngOfSize(800'000, 50)));
    EXPECT_EQ(Refusal(PngOfSize(800'001, 50)), "it has too many pixels");
    EXPECT_TRUE(Validate(PngOfSize(8000, 5000)));
    EXPECT_EQ(Refusal(PngOfSize(8000, 5001)), "it has too many pixels");
    // The library itself refuses a side of more than a million.
    EXPECT_EQ(Refusal(PngOfSize(1'000'000, 1'000'000)), "it has too many pixels");
    EXPECT_EQ(Refusal(PngOfSize(1'000'001, 1)), "it is cut or garbled");
    EXPECT_EQ(Refusal(PngOfSize(0x80000000, 1)), "it is cut or garbled");
    EXPECT_EQ(Refusal(PngOfSize(0, 10)), "it is cut or garbled");
}

TEST(ImageValidatorTest, PixelsOfAJpegAreReadWithoutDecodingIt) {
    std::string jpeg = Jpeg();
    const size_t frame = jpeg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    jpeg.replace(frame + 5, 4, "\x40\x00\x40\x00", 4);

    EXPECT_EQ(Refusal(jpeg), "it has too many pixels");
}

TEST(ImageValidatorTest, FramesAreLimitedTo300) {
    EXPECT_EQ(Validate(Gif(300))->frames, 300);
    EXPECT_EQ(Refusal(Gif(301)), "it has too many frames");
    // The end is missing, but the limit is reached first.
    std::string endless = GifHead();
    for (int i = 0; i < 301; ++i) {
        endless += GifFrame(0, 1);
    }
    EXPECT_EQ(Refusal(endless), "it has too many frames");
}

TEST(ImageValidatorTest, PixelsAreLimitedForScreenAndFrameOfAGif) {
    EXPECT_EQ(Refusal(GifHead() + GifFrame(0, 1, QSize(60'000, 60'000)) + ";"), "it has too many pixels");
    EXPECT_EQ(Refusal(GifHead(QSize(65'535, 65'535)) + GifFrame(0, 1) + ";"), "it has too many pixels");
}

TEST(ImageValidatorTest, BytesAreLimitedTo20Mebibytes) {
    const std::string png = Png();
    ImageLimits limits;
    EXPECT_EQ(limits.bytes, 20 * 1024 * 1024);
    limits.bytes = int(png.size());
    EXPECT_TRUE(Validate(png, limits));
    limits.bytes = int(png.size()) - 1;
    EXPECT_EQ(Refusal(png, limits), "it is too large");
}

TEST(ImageValidatorTest, CutImageIsRefused) {
    for (const std::string& whole : {Png(), Jpeg(), Gif(2)}) {
        EXPECT_TRUE(IsShown(whole));
        for (size_t length = 0; length < whole.size(); ++length) {
            ASSERT_FALSE(Validate(whole.substr(0, length))) << whole.substr(0, 6) << " " << length;
        }
    }
}

TEST(ImageValidatorTest, BytesAfterTheEndAreIgnored) {
    for (const std::string& whole : {Png(), Jpeg(), Gif(2)}) {
        EXPECT_TRUE(Validate(whole + "more")) << whole.substr(0, 6);
    }
}

TEST(ImageValidatorTest, OtherContentIsRefused) {
    for (const std::string& bytes : {std::string(), std::string("x"), std::string("BM......"),
                                     std::string("RIFF....WEBP"), std::string("%PDF-1.7"), std::string(1000, '\0')}) {
        EXPECT_EQ(Refusal(bytes), "it is no picture");
    }
    EXPECT_EQ(Refusal("<html><body/></html>"), "it is no picture");
}

TEST(ImageValidatorTest, ImageWithPartsInAWrongOrderIsNotShown) {
    const std::string png = Png();
    const size_t head = 8 + 12 + 13;
    const size_t end = png.size() - 12;
    EXPECT_FALSE(IsShown(png.substr(0, head) + png.substr(8, head - 8) + png.substr(head))) << "a second head";
    EXPECT_FALSE(IsShown(png.substr(0, head) + png.substr(end))) << "no pixels";
    const std::string jpeg = Jpeg();
    const size_t frame = jpeg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    EXPECT_FALSE(IsShown(jpeg.substr(0, frame) + jpeg.substr(frame, 19) + jpeg.substr(frame))) << "a second frame";
    EXPECT_FALSE(IsShown(jpeg.substr(0, jpeg.find("\xFF\xDA")) + jpeg.substr(jpeg.size() - 2))) << "no scan";
    EXPECT_FALSE(IsShown(GifHead() + ";")) << "no frame";
}

TEST(ImageValidatorTest, ScansAreLimitedTo64) {
    const std::string jpeg = Jpeg();
    const size_t scan = jpeg.find("\xFF\xDA");
    const size_t end = jpeg.size() - 2;
    const auto repeated = [&](int scans) {
        std::string bytes = jpeg.substr(0, scan);
        for (int i = 0; i < scans; ++i) {
            bytes += jpeg.substr(scan, end - scan);
        }
        return bytes + jpeg.substr(end);
    };
    EXPECT_TRUE(Validate(repeated(64)));
    EXPECT_FALSE(Validate(repeated(65)));
}

TEST(ImageValidatorTest, GarbledBytesNeverExceedTheLimits) {
    std::mt19937 random(7);
    for (const std::string& whole : {Png(), Jpeg(), Gif(5)}) {
        for (int round = 0; round < 2000; ++round) {
            std::string bytes = whole;
            for (int i = 0; i < 3; ++i) {
                bytes[random() % bytes.size()] = char(random());
            }
            const auto info = Validate(bytes);
            if (info) {
                ASSERT_GT(info->size.width() * qint64(info->size.height()), 0);
                ASSERT_LE(info->size.width() * qint64(info->size.height()), 40'000'000);
            }
        }
    }
}

TEST(ImageValidatorTest, DrawingIsRefusedWithItsReason) {
    for (const std::string& bytes : {Svg(), "\xEF\xBB\xBF \n" + Svg(), "<?xml version=\"1.0\"?><!-- words -->" + Svg(),
                                     Svg().substr(0, 50), "<!DOCTYPE svg [<!ENTITY a \"x\">]>" + Svg()}) {
        EXPECT_EQ(Refusal(bytes), "it is an SVG") << bytes;
    }
}

TEST(ImageValidatorTest, TextOfAPngIsNotUnpacked) {
    const std::string text = PackedText(7'900'000);
    std::string texts;
    for (int i = 0; i < 20; ++i) {
        texts += text;
    }
    const std::string png = WithChunks(Png(), texts);
    EXPECT_LT(png.size(), 200'000u);

    const CCost cost;
    EXPECT_TRUE(IsShown(png));

    cost.CheckMemory(20 << 20);
}

TEST(ImageValidatorTest, RepeatedChunksOfAPngAreLeftOut) {
    QImage image(8, 8, QImage::Format_Indexed8);
    image.setColorTable({qRgba(255, 0, 0, 0), qRgb(0, 0, 255)});
    image.fill(1);
    const std::string png = Encoded(image, "png");
    const size_t key = png.find("tRNS") - 4;
    const std::string chunk = png.substr(key, 12 + 1);
    std::string many = png;
    for (int i = 0; i < 1000; ++i) {
        many.insert(key, chunk);
    }
    EXPECT_EQ(png_chunks::Essential(many).size(), png_chunks::Essential(png).size());
    EXPECT_TRUE(IsShown(many));
}

TEST(ImageValidatorTest, SixteenBitColoursWithATransparentOneAreRefused) {
    const auto png = [](int depth, int type, bool hasKey) {
        return std::string("\x89PNG\r\n\x1A\n", 8) +
               PngChunk("IHDR" + Big32(4) + Big32(4) + char(depth) + char(type) + std::string(3, '\0')) +
               (hasKey ? PngChunk("tRNS" + std::string(6, '\0')) : "") + PngChunk("IDAT") + PngChunk("IEND");
    };
    EXPECT_EQ(Refusal(png(16, 2, true)), "it has a transparent colour of 16 bits");
    EXPECT_EQ(Refusal(png(16, 2, false)), "valid");
    EXPECT_EQ(Refusal(png(8, 2, true)), "valid");
}

TEST(ImageValidatorTest, MemoryIsLimited) {
    const auto deep = [](int height) {
        return std::string("\x89PNG\r\n\x1A\n", 8) +
               PngChunk("IHDR" + Big32(5000) + Big32(height) + std::string("\x10\x02\0\0\0", 5)) + PngChunk("IDAT") +
               PngChunk("IEND");
    };
    EXPECT_EQ(Refusal(deep(4800)), "valid");
    EXPECT_EQ(Refusal(deep(5000)), "it needs too much memory");
    EXPECT_EQ(Refusal(GifHead(QSize(4900, 4900)) + GifFrame(0, 1) + ";"), "valid");
    EXPECT_EQ(Refusal(GifHead(QSize(5000, 5000)) + GifFrame(0, 1) + ";"), "it needs too much memory");
}

TEST(ImageValidatorTest, StrayBytesBetweenTheSegmentsOfAJpegAreSkipped) {
    const std::string jpeg = Jpeg();
    for (const std::string& stray : {std::string("abc"), std::string("\xFF\x01", 2), std::string("\xFF\xD0", 2),
                                     std::string("\0\0\xFF\0", 4), std::string("\xFF\xFF\xFF")}) {
        for (const size_t at : {size_t(2), jpeg.find("\xFF\xDB"), jpeg.find("\xFF\xC0"), jpeg.find("\xFF\xDA")}) {
            EXPECT_TRUE(IsShown(jpeg.substr(0, at) + stray + jpeg.substr(at))) << at;
        }
    }
}

/// Pictures near the limits. None may take more memory or time than a decoder has.
struct LargePicture {
    const char* name;
    std::function<std::string()> bytes;
    QSize size;
};

void PrintTo(const LargePicture& row, std::ostream* stream) {
    *stream << row.name;
}

class LargePictureTest : public TestWithParam<LargePicture> {};

TEST_P(LargePictureTest, CostsAtMost350MegabytesAndTwoSeconds) {
    const std::string bytes = GetParam().bytes();
    ASSERT_EQ(Refusal(bytes), "valid");
    const auto info = Validate(bytes);
    const CCost cost;
    EXPECT_TRUE(picture_decoder::Decode(bytes, *info, GetParam().size, true, false));

    cost.CheckMemory(350 << 20);
    cost.CheckTime(std::chrono::seconds(2));
}

std::string Progressive(const QSize& size) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.write(Plain(size, Qt::red));
    return bytes.toStdString();
}

std::string Deep(const QSize& size) {
    QImage image(size, QImage::Format_RGBA64);
    image.fill(Qt::red);
    return Encoded(image, "png");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, LargePictureTest,
    Values(LargePicture{"Png", [] { return Png(QSize(8000, 5000)); }, QSize(1324, 220)},
           LargePicture{"DeepPng", [] { return Deep(QSize(5000, 4800)); }, QSize(4000, 4000)},
           LargePicture{"ProgressiveJpeg", [] { return Progressive(QSize(8000, 4900)); }, QSize(4000, 4000)},
           LargePicture{"TurnedJpeg", [] { return Oriented(Jpeg(QSize(8000, 5000)), 6); }, QSize(4000, 4000)},
           LargePicture{
               "Gif",
               [] { return GifHead(QSize(4900, 4900)) + GifFrame(0, 1, QSize(4900, 4900)) + GifFrame(1, 1) + ";"; },
               QSize(4000, 4000)},
           LargePicture{"MovingGif", [] { return Gif(300); }, QSize(1324, 220)}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
