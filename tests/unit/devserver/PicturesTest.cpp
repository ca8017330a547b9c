#include "Pictures.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <set>

namespace {

using devserver::CPictures;
using devserver::Picture;
using testing::AnyOf;
using testing::Gt;
using testing::Not;

std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const QFileInfo& file : QDir(QStringLiteral(":/devserver/pictures")).entryInfoList()) {
        names.push_back(file.completeBaseName().toStdString());
    }
    EXPECT_THAT(names.size(), Gt(8u));
    return names;
}

QImage Decoded(const Picture& picture, const char* format) {
    return QImage::fromData(QByteArray::fromStdString(picture.bytes), format);
}

size_t Colours(const QImage& image) {
    std::set<QRgb> colours;
    for (int x = 0; x < image.width(); x += 3) {
        for (int y = 0; y < image.height(); y += 3) {
            colours.insert(image.pixel(x, y));
        }
    }
    return colours.size();
}

TEST(PicturesTest, EachIsPaintedInTheSizeOfItsKindInBothFormats) {
    CPictures pictures;
    for (const std::string& name : Names()) {
        const QSize size = name == "activation"          ? QSize(360, 424)
                           : name.rfind("card-", 0) == 0 ? QSize(720, 240)
                                                         : QSize(1920, 320);
        const auto png = pictures.Find(name + ".png");
        const auto jpeg = pictures.Find(name + ".jpg");
        ASSERT_TRUE(png && jpeg) << name;

        EXPECT_EQ(png->type, "image/png");
        EXPECT_EQ(jpeg->type, "image/jpeg");
        const QImage image = Decoded(*png, "PNG");
        EXPECT_EQ(image.size(), size) << name;
        EXPECT_EQ(Decoded(*jpeg, "JPG").size(), size) << name;
        EXPECT_THAT(Colours(image), Gt(200u)) << name;
    }
}

TEST(PicturesTest, DoubledNameHasTwiceTheSize) {
    CPictures pictures;
    EXPECT_EQ(Decoded(*pictures.Find("night-session-2x.png"), "PNG").size(), QSize(3840, 640));
    EXPECT_EQ(Decoded(*pictures.Find("night-session-2x.jpg"), "JPG").size(), QSize(3840, 640));
    EXPECT_EQ(Decoded(*pictures.Find("activation_SG_ja-2x.png"), "PNG").size(), QSize(720, 848));
}

// Painting text loads fonts, which ends a process without a window system.
TEST(PicturesTest, NoDrawingNeedsFontsOrOtherFiles) {
    for (const std::string& name : Names()) {
        QFile file(QStringLiteral(":/devserver/pictures/%1.svg").arg(QString::fromStdString(name)));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        EXPECT_THAT(file.readAll().toStdString(), Not(AnyOf(testing::HasSubstr("<text"), testing::HasSubstr("href"))))
            << name;
    }
}

TEST(PicturesTest, PaintedTwiceIsTheSame) {
    CPictures pictures;
    const std::string first = pictures.Find("card-invite.png")->bytes;

    EXPECT_EQ(pictures.Find("card-invite.png")->bytes, first);
    EXPECT_EQ(CPictures().Find("card-invite.png")->bytes, first);
}

TEST(PicturesTest, ActivationDiffersForEachMarketAndLanguage) {
    CPictures pictures;
    std::set<std::string> seen{pictures.Find("activation.png")->bytes};

    for (const std::string market : {"SG", "AU", "JP", "CA", "MY", "US"}) {
        for (const std::string language : {"zh-Hans", "zh-Hant", "ja", "fr", "en"}) {
            const auto picture = pictures.Find("activation_" + market + "_" + language + ".png");
            ASSERT_TRUE(picture) << market << language;
            EXPECT_EQ(Decoded(*picture, "PNG").size(), QSize(360, 424));
            EXPECT_TRUE(seen.insert(picture->bytes).second) << market << language;
        }
    }
}

// The shown parts are where the words are, and nowhere else.
TEST(PicturesTest, MarketAndLanguageAreBothDrawn) {
    CPictures pictures;
    const QImage plain = Decoded(*pictures.Find("activation.png"), "PNG");
    const auto differs = [&](const char* name, const QRect& area) {
        return Decoded(*pictures.Find(name), "PNG").copy(area) != plain.copy(area);
    };
    const QRect market(0, 190, 360, 90);
    const QRect language(0, 290, 360, 100);

    EXPECT_TRUE(differs("activation_SG.png", market));
    EXPECT_FALSE(differs("activation_SG.png", language));
    EXPECT_TRUE(differs("activation_ja.png", language));
    EXPECT_FALSE(differs("activation_ja.png", market));
    EXPECT_TRUE(differs("activation_SG_ja.png", market));
    EXPECT_TRUE(differs("activation_SG_ja.png", language));
}

TEST(PicturesTest, OtherNamesAreNoPictures) {
    CPictures pictures;
    for (const char* name : {"",
                             ".png",
                             "nowhere.png",
                             "night-session",
                             "night-session.gif",
                             "night-session.PNG",
                             "../scenarios/default.json",
                             "../pictures/night-session.png",
                             "a/night-session.png",
                             "night-session.svg",
                             "night-session.svg.png",
                             "-2x.png",
                             "night-session-2x-2x.png",
                             "night-session-3x.png",
                             "activation_XX.png",
                             "activation_SG_SG.png",
                             "activation_.png",
                             "activation_SG_.png",
                             "activation_ground.png",
                             "_SG.png"}) {
        EXPECT_FALSE(pictures.Find(name)) << name;
    }
}

}  // namespace
