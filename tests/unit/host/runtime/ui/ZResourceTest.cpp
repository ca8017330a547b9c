#include <dlfcn.h>

#include <QRegularExpression>

#include "KitTest.h"
#include "core/lang.h"
#include "ui/Drawings.h"
#include "ui/ZResource.h"
#include "ui/zr_ui_res.h"

using namespace ::testing;
using zr_ui_res::Provider;
using zr_ui_res::TResource;
using zr_ui_theme::Manager;

namespace {

const ZResource::Name* const kNames[] = {
    &ZResource::icon_premium_crown_16,
    &ZResource::icon_premium_tag_normal,
    &ZResource::icon_close_16,
    &ZResource::icon_close_32_normal,
    &ZResource::btn_flyouts_pin_12,
    &ZResource::icon_pushpin_f_12,
    &ZResource::icon_base_person_vip_16,
    &ZResource::icon_blackvip_16_normal,
    &ZResource::icon_vip_16_normal,
    &ZResource::icon_viptab_normal,
    &ZResource::icon_engine_16,
    &ZResource::icon_engine_36x16_normal,
    &ZResource::img_vip_16_normal,
    &ZResource::img_engine_m_56x16_normal,
    &ZResource::img_engine_nbg_54x16_normal,
    &ZResource::img_bg_engine_banner_230x32_normal,
    &ZResource::img_bg_noengine_banner_230x32_normal,
    &ZResource::img_viptab1_26x16_normal,
    &ZResource::img_viptab2_26x16_normal,
    &ZResource::img_viptab3_26x16_normal,
    &ZResource::img_viptabcn_45x16_normal,
    &ZResource::img_viptaben_76x16_normal,
    &ZResource::img_viptabhk_45x16_normal,
    &ZResource::img_viptabjp_71x16_normal,
};

/// The size in a name, as in "..._26x16_..." or "..._16".
QSize SizeIn(const QString& name) {
    static const QRegularExpression both(QStringLiteral("_(\\d+)x(\\d+)"));
    static const QRegularExpression one(QStringLiteral("_(\\d+)(_|$)"));
    const auto sizes = both.match(name);
    if (sizes.hasMatch()) {
        return {sizes.captured(1).toInt(), sizes.captured(2).toInt()};
    }
    const auto size = one.match(name);
    return size.hasMatch() ? QSize(size.captured(1).toInt(), size.captured(1).toInt()) : QSize();
}

int OpaquePixels(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixelColor(x, y).alpha() > 100 ? 1 : 0;
        }
    }
    return count;
}

class ResourceTest : public KitTest {
protected:
    static QImage ImageOf(const QString& name) {
        std::shared_ptr<const QPixmap> pixmap;
        Provider::instance()->get(pixmap, name, 1.0);
        return pixmap ? pixmap->toImage() : QImage();
    }
};

class EachResourceTest : public ResourceTest, public WithParamInterface<const ZResource::Name*> {};

TEST_P(EachResourceTest, IsADrawingOfItsSizeOnScreensOfOneAndOfTwo) {
    const QString name = *GetParam();
    for (const auto theme : host::CThemeControl::kThemes) {
        SetTheme(theme);
        for (const double ratio : {1.0, 2.0}) {
            std::shared_ptr<const QPixmap> pixmap;
            Provider::instance()->get(pixmap, name, ratio);

            ASSERT_TRUE(pixmap) << theme;
            EXPECT_EQ(pixmap->devicePixelRatio(), ratio);
            const QSize size = pixmap->size() / ratio;
            if (!SizeIn(name).isEmpty()) {
                EXPECT_EQ(size, SizeIn(name));
            }
            EXPECT_GT(OpaquePixels(*pixmap), pixmap->width() * pixmap->height() / 20) << theme << " " << ratio;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Names, EachResourceTest, ValuesIn(kNames),
                         [](const auto& row) { return std::string(static_cast<const char*>(*row.param)); });

TEST_F(ResourceTest, NamesAreTextOfBothKinds) {
    EXPECT_STREQ(ZResource::icon_close_16, "icon_close_16");
    const QString text = ZResource::img_viptab1_26x16_normal;
    EXPECT_EQ(text, QStringLiteral("img_viptab1_26x16_normal"));
}

TEST_F(ResourceTest, TheNamesAreInTheHostLibraryAlone) {
    Dl_info info{};
    ASSERT_NE(dladdr(&ZResource::icon_close_16, &info), 0);

    EXPECT_THAT(std::string(info.dli_fname), EndsWith("/libzrhost.so"));
}

TEST_F(ResourceTest, WhereALightThemeNeedsAnotherFormItHasOne) {
    for (const char* name : {"img_bg_engine_banner_230x32_normal", "img_bg_noengine_banner_230x32_normal",
                             "img_engine_nbg_54x16_normal"}) {
        SetTheme(Manager::kThemeLight);
        const QImage light = ImageOf(QString::fromLatin1(name));
        SetTheme(Manager::kThemeDarkBlue);
        const QImage dark = ImageOf(QString::fromLatin1(name));
        SetTheme(Manager::kThemeBlack);

        EXPECT_NE(light, dark) << name;
        EXPECT_EQ(ImageOf(QString::fromLatin1(name)), dark) << name;
    }
}

TEST_F(ResourceTest, MembershipIconHasAWideFormForLanguagesOtherThanChinese) {
    const std::pair<int, QSize> rows[] = {{core::lang::kLanguageSimplifiedChinese, {42, 16}},
                                          {core::lang::kLanguageTraditionalChinese, {42, 16}},
                                          {core::lang::kLanguageEnglish, {70, 16}},
                                          {core::lang::kLanguageJapanese, {70, 16}}};
    for (const auto& [id, size] : rows) {
        language.Set(id);
        EXPECT_EQ(host::drawings::SizeOf(ZResource::icon_viptab_normal), size) << id;
        EXPECT_EQ(ImageOf(ZResource::icon_viptab_normal).size(), size) << id;
        EXPECT_EQ(ImageOf(ZResource::icon_engine_16).size(), QSize(16, 16)) << id;
    }
}

TEST_F(ResourceTest, AnIconComesInTheThemesColourOfText) {
    SetTheme(Manager::kThemeBlack);
    const QImage icon = ImageOf(ZResource::icon_blackvip_16_normal);

    EXPECT_EQ(icon.pixelColor(8, 8), QColor(Qt::white));
}

TEST_F(ResourceTest, AColourIsThatOfTheThemeOfTheMoment) {
    std::shared_ptr<const QColor> color;
    for (const auto theme : host::CThemeControl::kThemes) {
        SetTheme(theme);
        Provider::instance()->get(color, QStringLiteral("accent"));

        ASSERT_TRUE(color);
        EXPECT_EQ(*color, host::CThemePalette::Of(theme).Color("accent"));
    }
}

TEST_F(ResourceTest, ANameThatIsNotKnownGivesNullAndALine) {
    auto color = std::make_shared<const QColor>(Qt::red);
    auto pixmap = std::make_shared<const QPixmap>(1, 1);

    Provider::instance()->get(color, QStringLiteral("no such"));
    Provider::instance()->get(pixmap, QStringLiteral("../themes/1/check"), 1.0);

    EXPECT_EQ(color, nullptr);
    EXPECT_EQ(pixmap, nullptr);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("There is no colour \"no such\""),
                                         Error("There is no drawing \"../themes/1/check\"")));
}

TEST_F(ResourceTest, AResourceIsLookedUpAtEachUse) {
    const TResource<QColor> color(QStringLiteral("window"));
    const TResource<QPixmap> tag(ZResource::img_engine_nbg_54x16_normal);
    const QColor light = color.value();
    const QImage lightTag = tag.value(2.0).toImage();

    SetTheme(Manager::kThemeBlack);

    EXPECT_EQ(light, host::CThemePalette::Of(Manager::kThemeLight).Color("window"));
    EXPECT_EQ(color.value(), QColor(Qt::black));
    EXPECT_EQ(lightTag.size(), QSize(108, 32));
    EXPECT_NE(tag.value(2.0).toImage(), lightTag);
}

TEST_F(ResourceTest, AResourceWithoutANameIsEmptyWithoutALine) {
    EXPECT_FALSE(TResource<QColor>().value().isValid());
    EXPECT_TRUE(TResource<QPixmap>().value().isNull());
}

TEST_F(ResourceTest, ADrawingKeepsItsProportionsInTheMiddleOfItsRoom) {
    const QPixmap icon =
        host::drawings::Render(ZResource::icon_blackvip_16_normal, QSize(48, 16), 1.0, QColor(Qt::red));

    EXPECT_EQ(icon.size(), QSize(48, 16));
    EXPECT_EQ(icon.toImage().pixelColor(24, 8), QColor(Qt::red));
    EXPECT_EQ(icon.toImage().pixelColor(8, 8).alpha(), 0);
}

TEST_F(ResourceTest, ADrawingIsAsClearAsItsColour) {
    const QColor clear(255, 0, 0, 110);
    const auto middle = [](const QColor& color) {
        return host::drawings::Render(ZResource::icon_blackvip_16_normal, QSize(16, 16), 1.0, color)
            .toImage()
            .pixelColor(8, 8);
    };

    EXPECT_EQ(middle(Qt::red).alpha(), 255);
    EXPECT_EQ(middle(clear).alpha(), 110);
}

TEST_F(ResourceTest, ADrawingHasAtMostEightThousandPointsAlongASide) {
    const auto render = [](const QSize& size, double ratio) {
        return host::drawings::Render(ZResource::icon_blackvip_16_normal, size, ratio, Qt::red).size();
    };

    EXPECT_EQ(render({4096, 1}, 2.0), QSize(8192, 2));
    EXPECT_EQ(render({4097, 1}, 2.0), QSize(0, 0));
    EXPECT_EQ(render({1, 1025}, 100.0), QSize(0, 0));
}

}  // namespace
