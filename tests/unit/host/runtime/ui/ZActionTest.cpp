#include "ui/ZAction.h"

#include "KitTest.h"
#include "ui/Drawings.h"
#include "ui/ZResource.h"

using namespace ::testing;
using zr_ui_theme::Manager;

namespace {

class ZActionTest : public KitTest {
protected:
    QImage Icon(QIcon::Mode mode = QIcon::Normal, int side = 16) {
        return action.icon().pixmap(QSize(side, side), mode, QIcon::Off).toImage();
    }
    static QImage Drawn(const char* color, int side = 16) {
        return host::drawings::Render(ZResource::icon_base_person_vip_16, QSize(side, side), 1.0, Color(color))
            .toImage();
    }

    ZAction action;
};

TEST_F(ZActionTest, IconHasTheColourOfItsStyle) {
    const std::pair<ZIconColorStyle::type, const char*> rows[] = {{ZIconColorStyle::normal, "muted"},
                                                                  {ZIconColorStyle::accent, "accent"}};
    for (const auto& [style, color] : rows) {
        action.setSvgIcon(ZResource::icon_base_person_vip_16, style);
        EXPECT_EQ(Icon(), Drawn(color)) << color;
    }
    EXPECT_EQ(Icon(QIcon::Disabled), Drawn("disabled"));
}

TEST_F(ZActionTest, IconFollowsTheThemeAndReportsTheChange) {
    action.setSvgIcon(ZResource::icon_base_person_vip_16, ZIconColorStyle::normal);
    const QImage light = Icon();
    int changes = 0;
    QObject::connect(&action, &QAction::changed, &action, [&changes] { ++changes; });

    SetTheme(Manager::kThemeDarkBlue);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Icon(), Drawn("muted"));
    EXPECT_NE(Icon(), light);
}

TEST_F(ZActionTest, IconIsDrawnInThePixelsThatAreAskedFor) {
    action.setSvgIcon(ZResource::icon_base_person_vip_16, ZIconColorStyle::normal);
    EXPECT_EQ(Icon(QIcon::Normal, 32), Drawn("muted", 32));
}

TEST_F(ZActionTest, EmptyNameRemovesTheIcon) {
    action.setSvgIcon(ZResource::icon_base_person_vip_16, ZIconColorStyle::normal);
    action.setSvgIcon(QString(), ZIconColorStyle::normal);
    EXPECT_TRUE(action.icon().isNull());
}

TEST_F(ZActionTest, UnknownNameShowsNothingAndIsLogged) {
    action.setSvgIcon(QStringLiteral("nothing"), ZIconColorStyle::normal);
    EXPECT_TRUE(action.icon().isNull());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("ZAction: there is no drawing \"nothing\"")));
}

}  // namespace
