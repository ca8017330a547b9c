#include "picture/ImageValidator.h"

#include <gmock/gmock.h>

#include <random>

#include "PictureBytes.h"
#include "picture/PictureDecoder.h"

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
    EXPECT_EQ(Validate(GoodSvg())->format, EnImageFormat::kSvg);
}

TEST(ImageValidatorTest, FormatsHaveTheReadersNames) {
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kPng), "png");
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kJpeg), "jpeg");
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kGif), "gif");
    EXPECT_STREQ(image_validator::FormatName(EnImageFormat::kSvg), "svg");
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
    for (const std::string& whole : {Png(), Jpeg(), Gif(2), GoodSvg()}) {
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
    for (const std::string& whole : {Png(), Jpeg(), Gif(5), GoodSvg()}) {
        for (int round = 0; round < 2000; ++round) {
            std::string bytes = whole;
            for (int i = 0; i < 3; ++i) {
                bytes[random() % bytes.size()] = char(random());
            }
            const auto info = Validate(bytes);
            if (info && info->format != EnImageFormat::kSvg) {
                ASSERT_GT(info->size.width() * qint64(info->size.height()), 0);
                ASSERT_LE(info->size.width() * qint64(info->size.height()), 40'000'000);
            }
        }
    }
}

struct BadSvg {
    const char* name;
    std::string bytes;
    const char* reason;
};

void PrintTo(const BadSvg& row, std::ostream* stream) {
    *stream << row.name;
}

class BadSvgTest : public TestWithParam<BadSvg> {};

TEST_P(BadSvgTest, IsRefused) {
    EXPECT_EQ(Refusal(GetParam().bytes), GetParam().reason);
}

constexpr char kOutside[] = "it refers to something outside";
constexpr char kStyleOutside[] = "its style refers to something outside";

std::vector<BadSvg> BadSvgs() {
    const std::string deep = [] {
        std::string open;
        std::string close;
        for (int i = 0; i < 200; ++i) {
            open += "<g>";
            close += "</g>";
        }
        return open + close;
    }();
    std::string many;
    for (int i = 0; i < 20'001; ++i) {
        many += "<g/>";
    }
    return {
        {"Doctype", "<!DOCTYPE svg>" + GoodSvg(), "it has entities"},
        {"Entities", "<!DOCTYPE svg [<!ENTITY a \"x\">]>" + Svg("<text>&a;</text>"), "it has entities"},
        {"StyleSheet", "<?xml-stylesheet href=\"a.css\"?>" + GoodSvg(), "it asks for a style sheet"},
        {"Script", Svg("<script>1</script>"), "it holds <script>"},
        {"ScriptInCapitals", Svg("<SCRIPT/>"), "it holds <script>"},
        {"Handler", Svg("<rect onclick=\"x()\"/>"), "it holds code"},
        {"Image", Svg("<image xlink:href=\"#a\"/>"), "it holds <image>"},
        {"ImageOfData", Svg("<image href=\"data:image/png;base64,AAAA\"/>"), kOutside},
        {"ForeignObject", Svg("<foreignObject/>"), "it holds <foreignobject>"},
        {"Animation", Svg("<rect><animate/></rect>"), "it holds <animate>"},
        {"LinkOutside", Svg("<a xlink:href=\"https://a.example/\"/>"), kOutside},
        {"LinkToAFile", Svg("<use href=\"other.svg#a\"/>"), kOutside},
        {"LinkToCode", Svg("<a href=\"javascript:x()\"/>"), kOutside},
        {"EmptyLink", Svg("<a href=\"\"/>"), kOutside},
        {"Base", Svg("", "xml:base=\"https://a.example/\""), kOutside},
        {"FillOutside", Svg("<rect fill=\"url(https://a.example/a.svg#b)\"/>"), kStyleOutside},
        {"FillOutsideInCapitals", Svg("<rect fill=\"URL( 'a.svg' )\"/>"), kStyleOutside},
        {"StyleOutside", Svg("<rect style=\"fill:url(&quot;a.svg&quot;)\"/>"), kStyleOutside},
        {"StyleInDisguise", Svg("<rect style=\"fill:u\\72l(a.svg)\"/>"), kStyleOutside},
        {"Import", Svg("<style>@import 'a.css';</style>"), kStyleOutside},
        {"ImportInCapitals", Svg("<style>@IMPORT url(#a);</style>"), kStyleOutside},
        {"FontOutside", Svg("<style>@font-face{src:url(a.ttf)}</style>"), kStyleOutside},
        {"RepeatsItself", Svg("<g id=\"a\"><use href=\"#a\"/></g>"), "what it repeats repeats something itself"},
        {"RepeatsTheWhole", Svg("<use href=\"#root\"/>", "id=\"root\""), "what it repeats repeats something itself"},
        {"Laughs", Svg("<g id=\"a\"/><g id=\"b\"><use href=\"#a\"/><use href=\"#a\"/></g><use href=\"#b\"/>"),
         "what it repeats repeats something itself"},
        {"TooDeep", Svg(deep), "it has too many parts"},
        {"TooMany", Svg(many), "it has too many parts"},
        {"TooLarge", Svg("<!--" + std::string(2 << 20, 'x') + "-->"), "it is too large for a drawing"},
        {"NotClosed", "<svg xmlns=\"http://www.w3.org/2000/svg\"><g>", "it is cut or garbled"},
        {"Empty", "<", "it is cut or garbled"},
    };
}

INSTANTIATE_TEST_SUITE_P(Rows, BadSvgTest, ValuesIn(BadSvgs()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(GoodSvgTest, DrawingWithoutOutsideReferencesIsValid) {
    for (const std::string& bytes :
         {GoodSvg(), "\xEF\xBB\xBF \n" + GoodSvg(), "<?xml version=\"1.0\"?><!-- words -->" + GoodSvg(),
          Svg("<defs><linearGradient id=\"g\"/></defs><rect fill=\"url(#g)\" style=\"stroke: url( '#g' )\"/>"),
          Svg("<g id=\"a\"><rect/></g><use xlink:href=\"#a\"/><use href=\" #a\"/>"),
          Svg("<style>rect{fill:red}</style>"), Svg("<text>url(https://a.example/) @import</text>")}) {
        EXPECT_EQ(Refusal(bytes), "valid") << bytes;
    }
}

}  // namespace
