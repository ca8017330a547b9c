#include "ui/ZMenu.h"

#include <QPainter>
#include <QSignalSpy>
#include <QStyleOptionMenuItem>

#include "KitTest.h"
#include "ui/ZAction.h"
#include "ui/ZResource.h"

using namespace ::testing;

namespace {

constexpr QRgb kBanner = 0xff20c040;
constexpr QRgb kSelected = 0xffc04020;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

/// Fills its row below the top 8 pixels.
class CBannerAction : public ZAction {
public:
    using ZAction::ZAction;

    bool paint(QPainter* painter, const QStyleOptionMenuItem& option, const ZMenu* menu) const override {
        menus.push_back(menu);
        if (!painter || !paints) {
            return false;
        }
        fonts.push_back(painter->font());
        painter->fillRect(option.rect.adjusted(0, 8, 0, 0),
                          QColor(option.state.testFlag(QStyle::State_Selected) ? kSelected : kBanner));
        return true;
    }

    bool paints = true;
    mutable std::vector<const ZMenu*> menus;
    mutable std::vector<QFont> fonts;
};

struct Sheet {
    const char* name;
    const char* sheet;
    int row = 40;
};

constexpr Sheet kSheets[] = {
    {"None", ""},
    {"OfTheClient",
     "QMenu { menu-scrollable: 1; background: #ffffff; border: 1px solid #c3ccda; padding: 5px; }"
     "QMenu::item { padding: 6px 22px 6px 26px; border-radius: 4px; }"},
    {"WithoutPadding", "QMenu { background: #ffffff; } QMenu::item { padding: 0; }", 41},
    {"WithAFontOfItsOwn", "QMenu { font-size: 17px; } QMenu::item { padding: 3px 30px; }"},
    {"WithMargins", "QMenu { padding: 9px 20px; margin: 3px; } QMenu::item { padding: 4px; margin: 2px; }"},
};

std::string SheetName(const TestParamInfo<Sheet>& info) {
    return info.param.name;
}

class ZMenuTest : public KitTest {
protected:
    ~ZMenuTest() override { qApp->setStyleSheet(QString()); }

    QImage Grab() { return menu.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    ZMenu menu;
    CBannerAction banner;
    QAction plain{S("Settings")};
};

class ZMenuSheetTest : public ZMenuTest, public WithParamInterface<Sheet> {
protected:
    ZMenuSheetTest() {
        qApp->setStyleSheet(S(GetParam().sheet));
        QMenu usual;
        usual.addAction(&plain);
        height = usual.actionGeometry(&plain).height();
    }

    int height = 0;
};

TEST_P(ZMenuSheetTest, EntryThatPaintsItselfHasARowOfFortyByAtLeast230AndOthersTheirUsualRow) {
    banner.setText(S("Engine"));
    menu.addAction(&plain);
    menu.addAction(&banner);

    EXPECT_EQ(menu.actionGeometry(&banner).height(), GetParam().row);
    EXPECT_GE(menu.actionGeometry(&banner).width(), 230);
    EXPECT_EQ(menu.actionGeometry(&plain).height(), height);

    banner.paints = false;
    banner.setText(S("Membership"));
    EXPECT_EQ(menu.actionGeometry(&banner).height(), height);
    EXPECT_LT(menu.actionGeometry(&banner).width(), 230);
    EXPECT_EQ(menu.minimumWidth(), 0);
}

TEST_P(ZMenuSheetTest, TextOfAPaintedEntryDoesNotWidenTheMenu) {
    banner.setText(S("Engine"));
    menu.addAction(&banner);
    const int width = menu.sizeHint().width();

    banner.setText(QString(100, QLatin1Char('w')));

    EXPECT_EQ(menu.sizeHint().width(), width);
}

INSTANTIATE_TEST_SUITE_P(All, ZMenuSheetTest, ValuesIn(kSheets), SheetName);

TEST_F(ZMenuTest, RowFollowsALaterStyleSheet) {
    banner.setText(S("Engine"));
    menu.addAction(&banner);
    menu.addAction(&plain);
    menu.ensurePolished();

    qApp->setStyleSheet(S("QMenu::item { padding: 9px 22px 8px 26px; }"));

    EXPECT_EQ(menu.actionGeometry(&banner).height(), 40);
    EXPECT_GE(menu.actionGeometry(&banner).width(), 230);
}

TEST_F(ZMenuTest, EntryIsAskedAgainWhenItChangesAndWhenTheMenuIsShown) {
    banner.paints = false;
    menu.addAction(&banner);
    ASSERT_LT(menu.actionGeometry(&banner).height(), 40);

    banner.paints = true;
    banner.setText(S("Engine"));
    EXPECT_EQ(menu.actionGeometry(&banner).height(), 40);

    banner.paints = false;
    menu.popup(QPoint(0, 0));
    EXPECT_LT(menu.actionGeometry(&banner).height(), 40);
    EXPECT_THAT(banner.menus, Each(&menu));
}

TEST_F(ZMenuTest, EntryThatPaintsItselfCoversItsUsualTextAndIcon) {
    banner.setText(S("Engine"));
    banner.setSvgIcon(ZResource::icon_blackvip_16_normal, ZIconColorStyle::warning);
    qApp->setStyleSheet(S("QMenu { background: #ffffff; } QMenu::item { color: #000000; padding: 6px 26px; }"));
    menu.addAction(&banner);
    menu.addAction(&plain);
    menu.popup(QPoint(0, 0));
    const QRect row = menu.actionGeometry(&banner);

    const QImage look = Grab().copy(row);

    EXPECT_EQ(Count(look.copy(0, 0, row.width(), 8), Qt::white), row.width() * 8);
    EXPECT_EQ(Count(look.copy(0, 8, row.width(), 32), QColor(kBanner)), row.width() * 32);
}

TEST_F(ZMenuTest, CurrentEntryIsPaintedAsSelected) {
    menu.addAction(&banner);
    menu.addAction(&plain);
    menu.popup(QPoint(0, 0));
    const QPoint inside = menu.actionGeometry(&banner).center();
    EXPECT_EQ(Grab().pixel(inside), kBanner);

    menu.setActiveAction(&banner);
    EXPECT_EQ(Grab().pixel(inside), kSelected);
    menu.setActiveAction(&plain);
    EXPECT_EQ(Grab().pixel(inside), kBanner);
}

TEST_F(ZMenuTest, EntryThatDoesNotPaintAnyMoreHasItsUsualLook) {
    banner.setText(S("Engine"));
    menu.addAction(&banner);
    menu.popup(QPoint(0, 0));
    const QRect row = menu.actionGeometry(&banner);

    banner.paints = false;  // without a change that the menu could see

    const QImage look = Grab().copy(row);
    EXPECT_EQ(Count(look, QColor(kBanner)), 0);
    EXPECT_GT(look.width() * look.height() - Count(look, look.pixelColor(0, 0)), 30);
}

TEST_F(ZMenuTest, PaintsWithTheFontOfTheMenuAndGivesTheEntryItsOwnBack) {
    QFont own;
    own.setItalic(true);
    banner.setFont(own);
    menu.addAction(&banner);
    menu.popup(QPoint(0, 0));
    Grab();

    for (const QFont& font : banner.fonts) {
        EXPECT_EQ(font.letterSpacing(), menu.font().letterSpacing());
        EXPECT_EQ(QFontInfo(font).pixelSize(), QFontInfo(menu.font()).pixelSize());
        EXPECT_TRUE(font.italic());
    }
    menu.removeAction(&banner);
    EXPECT_EQ(banner.font(), own);
}

TEST_F(ZMenuTest, RowIsClickedLikeAnyOther) {
    menu.addAction(&plain);
    menu.addAction(&banner);
    QSignalSpy triggered(&banner, &QAction::triggered);
    menu.popup(QPoint(0, 0));
    time.Settle();

    const QPoint center = menu.actionGeometry(&banner).center();
    QTest::mouseMove(&menu, center);
    QTest::mouseClick(menu.windowHandle(), Qt::LeftButton, {}, center);

    EXPECT_EQ(triggered.count(), 1);
}

TEST_F(ZMenuTest, EntryThatIsDeletedLeavesTheMenu) {
    auto* other = new CBannerAction;
    menu.addAction(other);
    menu.addAction(&plain);
    menu.popup(QPoint(0, 0));

    delete other;

    EXPECT_EQ(menu.actions().size(), 1);
    Grab();
}

}  // namespace
