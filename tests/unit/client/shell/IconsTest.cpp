#include "Icons.h"

#include <QPainter>

#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"

using namespace ::testing;

namespace {

constexpr icons::Colors kColors{theme::kMuted, theme::kAccent, theme::kFaint};

class IconsTest : public ScriptedHostTest {
protected:
    static QImage Of(const QIcon& icon, int size, QIcon::Mode mode, QIcon::State state) {
        return icon.pixmap(QSize(size, size), mode, state).toImage();
    }
    static QImage Drawn(theme::ColorName color, int size) { return icons::Pixmap("quotes", color, size).toImage(); }
};

}  // namespace

TEST_F(IconsTest, EachStateHasItsColour) {
    const QIcon icon = icons::Make("quotes", kColors);

    EXPECT_EQ(Of(icon, 20, QIcon::Normal, QIcon::Off), Drawn(theme::kMuted, 20));
    EXPECT_EQ(Of(icon, 20, QIcon::Active, QIcon::Off), Drawn(theme::kMuted, 20));
    EXPECT_EQ(Of(icon, 20, QIcon::Normal, QIcon::On), Drawn(theme::kAccent, 20));
    EXPECT_EQ(Of(icon, 20, QIcon::Disabled, QIcon::Off), Drawn(theme::kFaint, 20));
    EXPECT_EQ(Of(icon, 20, QIcon::Disabled, QIcon::On), Drawn(theme::kFaint, 20));
}

TEST_F(IconsTest, EachSizeIsDrawnForItself) {
    const QIcon icon = icons::Make("quotes", kColors);

    for (const int size : {16, 20, 37}) {
        EXPECT_EQ(Of(icon, size, QIcon::Normal, QIcon::Off), Drawn(theme::kMuted, size)) << size;
    }
}

TEST_F(IconsTest, EachNameHasItsDrawing) {
    const QIcon one = icons::Make("quotes", kColors);
    const QIcon other = icons::Make("news", kColors);

    EXPECT_NE(Of(one, 20, QIcon::Normal, QIcon::Off), Of(other, 20, QIcon::Normal, QIcon::Off));
}

TEST_F(IconsTest, AnIconKeepsTheColoursOfItsTheme) {
    const QIcon icon = icons::Make("quotes", kColors);
    const QImage before = Drawn(theme::kMuted, 20);

    host::CThemeControl::Set(zr_ui_theme::Manager::kThemeLight);

    EXPECT_EQ(Of(icon, 20, QIcon::Normal, QIcon::Off), before);
    EXPECT_NE(before, Drawn(theme::kMuted, 20));
}

TEST_F(IconsTest, ItIsPaintedIntoARectangleOnADenseScreenSharply) {
    QImage screen(40, 40, QImage::Format_ARGB32_Premultiplied);
    screen.setDevicePixelRatio(2);
    screen.fill(Qt::transparent);

    QPainter painter(&screen);
    icons::Make("quotes", kColors).paint(&painter, QRect(0, 0, 20, 20));
    painter.end();

    screen.setDevicePixelRatio(1);
    EXPECT_EQ(screen, Drawn(theme::kMuted, 40));
}

TEST_F(IconsTest, ANameWithoutADrawingIsLoggedAndGivesAnEmptyIcon) {
    EXPECT_TRUE(icons::Make("absent", kColors).isNull());
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("Icon absent"))));
}
