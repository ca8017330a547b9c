// Malformed pictures from the real server: a popup is not shown, a banner shows one empty slide.
#include "AdRefusalFixture.h"
#include "support/Cost.h"
#include "unit/host/services/picture/PictureBytes.h"

using namespace ::testing;

namespace {

/// The header of a picture of 60000 by 60000 pixels, with the minimum that makes it complete.
constexpr char kBomb[] = R"({"bodyHex":"89504e470d0a1a0a0000000d494844520000ea600000ea60080600000080d27542)"
                         R"(0000000949444154789c630000000100015eff7df90000000049454e44ae426082"})";

/// Drawing it would take the toolkit minutes.
constexpr char kDrawing[] =
    R"({"body":"<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink'><g id='#b'>)"
    R"(<use xlink:href=' #a'/><use xlink:href=' #a'/></g><g xml:id='a'><use xlink:href='#b'/></g></svg>"})";

struct BadPicture {
    const char* name;
    const char* ad;
    const char* path;
    const char* fault;   // of the path, if any
    const char* reason;  // in the log
};

class AdBadPictureTest : public AdRefusalTest, public WithParamInterface<BadPicture> {};

TEST_P(AdBadPictureTest, IsTriedThreeTimesAndToldAndKeepsThePopupAway) {
    const BadPicture& row = GetParam();
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    if (*row.fault) {
        server->Put("/v1/httpFaults", "{\"" + std::string(row.path) + "\":" + row.fault + "}");
    }
    PassAMinute();

    PushCheck(row.ad);

    EXPECT_TRUE(WaitForLine("OnImageLoadFailed, adType = 2"));
    ExpectRefused("\u00B7 picture loaded", (std::string("refused-picture-") + row.name).c_str());
    EXPECT_EQ(ParsedLine(row.reason), 3);
    EXPECT_EQ(server->HttpTo(row.path).size(), 3u);
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("AdvertisementImageResourceDownloadResult") == 1; }));
    const Json::Value told = server->ReportsOf("AdvertisementImageResourceDownloadResult")[0];
    EXPECT_EQ(told["result_code"], "-1");
    EXPECT_EQ(told["advertisement_id"], row.ad);
    EXPECT_EQ(told["action_times"], 3);
    EXPECT_EQ(Reported("StartExposeAd"), 0);
    PassAMinute();
    PushNew();
    Override("AdTab", kMarket);
    ExpectShown((std::string("shown-after-picture-") + row.name).c_str());
}

INSTANTIATE_TEST_SUITE_P(
    Pictures, AdBadPictureTest,
    Values(BadPicture{"Missing", "702", "/pictures/no-such-picture.png", "", "No picture, result 0, status 404"},
           BadPicture{"Cut", "707", "/pictures/card-invite.png", R"({"cutBytes":1000})", "No picture, result"},
           BadPicture{"NoPicture", "707", "/pictures/card-invite.png", R"({"body":"a page, and no picture"})",
                      "No picture, it is no picture"},
           BadPicture{"Drawing", "707", "/pictures/card-invite.png", kDrawing, "No picture, it is an SVG"},
           BadPicture{"Bomb", "707", "/pictures/card-invite.png", kBomb, "No picture, it has too many pixels"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(AdRefusalTest, PackedTextsOfAPictureTakeNoMemory) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    const std::string text = picture_bytes::PackedText(7'900'000);
    std::string texts;
    for (int i = 0; i < 60; ++i) {
        texts += text;
    }
    const QByteArray png = QByteArray::fromStdString(picture_bytes::WithChunks(picture_bytes::Png(), texts));
    server->Put("/v1/httpFaults",
                R"({"/pictures/card-invite.png":{"bodyHex":")" + png.toHex().toStdString() + R"("}})");
    PassAMinute();
    const CCost cost;

    PushCheck("707");
    Override("AdTab", kMarket);

    EXPECT_TRUE(WaitInRealTime([this] { return IsCardSeen(); }));
    cost.CheckMemory(150 << 20);
}

TEST_F(AdRefusalTest, ABannerWithOneBadPictureGoesOnWithTheOthers) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    server->Put("/v1/httpFaults", R"({"/pictures/night-session.png":{"cutBytes":1000}})");

    Override("AdTab", kMarket);

    ASSERT_TRUE(WaitForBanner(7));
    const auto pictureOf = [this](const char* ad) { return ReportsOn(ad, "AdvertisementImageResourceDownloadResult"); };
    for (const auto& [ad, result] : std::map<const char*, std::string>{{"801", "0"}, {"802", "-1"}, {"803", "0"}}) {
        ASSERT_TRUE(WaitInRealTime([&, ad = ad] { return pictureOf(ad).size() == 1; })) << ad;
        EXPECT_EQ(pictureOf(ad)[0]["result_code"], result) << ad;
    }
    EXPECT_EQ(server->HttpTo("/pictures/night-session.png").size(), 3u);
    ASSERT_NE(Slide(2), nullptr);
    auto* dots = Banner(7)->findChild<QWidget*>(QStringLiteral("ZSlideshowDots"));
    const auto waitForSlide = [this](int index) { return WaitInRealTime([=] { return Slide(index)->isVisible(); }); };
    // the slide shows its background only, and has its turn
    ASSERT_TRUE(waitForSlide(1));
    EXPECT_FALSE(dots->isVisible());
    Picture("banner-bad-slide");
    ASSERT_TRUE(waitForSlide(2));
    EXPECT_TRUE(WaitInRealTime([this] { return ColoursAt(*Banner(7)) > 200; }));
    EXPECT_TRUE(dots->isVisible());
    EXPECT_EQ(CountOfDots(*dots), 3);
    Picture("banner-after-bad-slide");
}

}  // namespace
