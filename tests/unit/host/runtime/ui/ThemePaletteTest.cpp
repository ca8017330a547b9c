#include "ui/ThemePalette.h"

#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"

using namespace ::testing;
using host::CThemePalette;

namespace {

struct BadPalette {
    const char* name;
    const char* json;
    const char* error;
};

class ThemePaletteTest : public ScriptedHostTest {};
std::string BadPaletteName(const TestParamInfo<BadPalette>& info) {
    return info.param.name;
}

class BadPaletteTest : public ScriptedHostTest, public WithParamInterface<BadPalette> {};

}  // namespace

TEST_F(ThemePaletteTest, GivesColoursByName) {
    std::string error;
    const auto palette = CThemePalette::Read(R"({"text": "#102030", "line": "#ffffff"})", error);

    ASSERT_TRUE(palette) << error;
    EXPECT_EQ(palette->Color("text"), QColor(0x10, 0x20, 0x30));
    EXPECT_FALSE(palette->Color("tex").isValid());
    EXPECT_EQ(palette->Names(), QStringList({QStringLiteral("line"), QStringLiteral("text")}));
}

TEST_F(ThemePaletteTest, FillsWholeNamesAndTellsThoseItLacks) {
    std::string error;
    const auto palette = CThemePalette::Read(R"({"line": "#000000", "lineOff": "#ffffff"})", error);
    ASSERT_TRUE(palette) << error;
    QStringList unknown;

    const QString filled = palette->Fill(QStringLiteral("a: @lineOff; b: @line; c: @lin; d: 5px @line"), unknown);

    EXPECT_EQ(filled, QStringLiteral("a: #ffffff; b: #000000; c: @lin; d: 5px #000000"));
    EXPECT_EQ(unknown, QStringList(QStringLiteral("lin")));
}

TEST_F(ThemePaletteTest, ColourKeepsItsAlphaWhenItIsWrittenWithEightDigits) {
    std::string error;
    const auto palette = CThemePalette::Read(R"({"ck_gray/100": "#80102030"})", error);

    ASSERT_TRUE(palette) << error;
    EXPECT_EQ(palette->Color("ck_gray/100"), QColor(0x10, 0x20, 0x30, 0x80));
}

TEST_F(ThemePaletteTest, MarkIsOfLettersDigitsAndUnderscores) {
    std::string error;
    const auto palette =
        CThemePalette::Read(R"({"ck": "#000000", "ck_red400": "#aa0000", "ct_bg_hover": "#14ffffff"})", error);
    ASSERT_TRUE(palette) << error;
    QStringList unknown;

    const QString filled = palette->Fill(QStringLiteral("a: @ck_red400; b: @ct_bg_hover; c: @ck-x; d: @ck_9"), unknown);

    EXPECT_EQ(filled, QStringLiteral("a: #aa0000; b: rgba(255, 255, 255, 20); c: #000000-x; d: @ck_9"));
    EXPECT_EQ(unknown, QStringList(QStringLiteral("ck_9")));
}

TEST_F(ThemePaletteTest, EachThemeHasAPaletteOfItsOwnWithTheSameNames) {
    const CThemePalette& light = CThemePalette::Of(zr_ui_theme::Manager::kThemeLight);
    EXPECT_GT(light.Names().size(), 20);
    for (const auto theme : host::CThemeControl::kThemes) {
        EXPECT_EQ(CThemePalette::Of(theme).Names(), light.Names()) << theme;
    }
    EXPECT_GT(light.Color("window").lightness(), 200);
    EXPECT_EQ(CThemePalette::Of(zr_ui_theme::Manager::kThemeBlack).Color("window"), QColor(Qt::black));
}

TEST_F(ThemePaletteTest, AThemeThatIsNotThereHasNoColours) {
    EXPECT_THAT(CThemePalette::Of(zr_ui_theme::Manager::Theme(9)).Names(), IsEmpty());

    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("Palette :/themes/9.json: "))));
}

TEST_P(BadPaletteTest, IsRefusedWithTheReason) {
    std::string error;

    EXPECT_FALSE(CThemePalette::Read(GetParam().json, error));

    EXPECT_THAT(error, HasSubstr(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    All, BadPaletteTest,
    Values(BadPalette{"NoJson", "{", ""}, BadPalette{"List", "[]", "must be an object of names and colours"},
           BadPalette{"Number", R"({"text": 1})", "text: must be a colour as #rrggbb"},
           BadPalette{"ColourByWord", R"({"text": "red"})", "text: must be a colour as #rrggbb"},
           BadPalette{"Short", R"({"text": "#fff"})", "text: must be a colour as #rrggbb"},
           BadPalette{"SevenDigits", R"({"text": "#1234567"})", "text: must be a colour as #rrggbb or #aarrggbb"},
           BadPalette{"NineDigits", R"({"text": "#123456789"})", "text: must be a colour as #rrggbb or #aarrggbb"},
           BadPalette{"WithMoreBehind", R"({"text": "#ffffff; x"})", "text: must be a colour as #rrggbb"},
           BadPalette{"Twice", R"({"text": "#ffffff", "text": "#000000"})", "uplicate"}),
    BadPaletteName);
