#include "Premium/View/ZRPremiumTimeActivationStateWidget.h"

#include <QHBoxLayout>
#include <QMetaMethod>
#include <QVBoxLayout>
#include <type_traits>

#include "Ad/AdWindow.h"
#include "Ad/MethodsOf.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemePalette.h"
#include "ui/ZButton.h"
#include "ui/ZResource.h"
#include "ui/ZSvgWidget.h"
#include "ui/ZText.h"
#include "ui/zr_ui_theme.h"

using namespace ::testing;

namespace {

using CStrip = CZRPremiumTimeActivationStateWidget;

const char* const kSheet =
    "#Premium12 { font-size: 12px; } #PremiumBold12 { font-size: 12px; font-weight: 600; }"
    "#Premium11 { font-size: 11px; } #PremiumBold11 { font-size: 11px; font-weight: 600; }"
    "#Premium10 { font-size: 10px; } #PremiumBold10 { font-size: 10px; font-weight: 600; }"
    "#Premium8 { font-size: 8px; } #PremiumBold8 { font-size: 8px; font-weight: 600; }";

/// A filter that notes the names that an object gets.
class CNames : public QObject {
public:
    explicit CNames(QObject& object) {
        connect(&object, &QObject::objectNameChanged, this,
                [this](const QString& name) { names.push_back(name.toStdString()); });
    }
    std::vector<std::string> names;
};

class PremiumStripTest : public ScriptedHostTest {
protected:
    PremiumStripTest() {
        language.SetText(277228, QStringLiteral("days"));
        language.SetText(277229, QStringLiteral("day"));
        window.resize(500, 100);
    }

    CStrip* Add(const char* title = "Title", const char* button = "Renew", const char* type = "D",
                const char* detail = "Detail", int days = 5) {
        auto* strip = new CStrip(QString::fromUtf8(title), QString::fromUtf8(button), QString::fromUtf8(type),
                                 QString::fromUtf8(detail), days, &window);
        strip->resize(400, 32);
        return strip;
    }

    CStrip* Shown(const char* title = "Title", const char* button = "Renew", const char* type = "D", int days = 5) {
        CStrip* strip = Add(title, button, type, "Detail", days);
        window.show();
        strip->show();
        time.Settle();
        return strip;
    }

    static void Update(CStrip& strip, const char* title, const char* button, const char* type, const char* detail,
                       int days) {
        strip.UpdateUiData(QString::fromUtf8(title), QString::fromUtf8(button), QString::fromUtf8(type),
                           QString::fromUtf8(detail), days);
    }

    static QWidget* Row(const CStrip& strip) { return Title(strip)->parentWidget(); }
    static ZText* Title(const CStrip& strip) { return TextAt(strip, 0); }
    static ZText* Days(const CStrip& strip) { return TextAt(strip, 1); }
    static ZText* Unit(const CStrip& strip) { return TextAt(strip, 2); }
    /// The texts of the first row, in order of their creation.
    static ZText* TextAt(const CStrip& strip, int index) {
        return strip.findChildren<ZText*>().value(index == 0 ? IndexOf(strip, 0) : IndexOf(strip, index));
    }
    static int IndexOf(const CStrip& strip, int index) {
        const QList<ZText*> all = strip.findChildren<ZText*>();
        int found = 0;
        for (int i = 0; i < all.size(); ++i) {
            if (all[i]->parentWidget() != &strip && found++ == index) {
                return i;
            }
        }
        return -1;
    }
    static ZText* Detail(const CStrip& strip) { return strip.findChild<ZText*>(QString(), Qt::FindDirectChildrenOnly); }
    static ZButton* Button(const CStrip& strip) { return strip.findChild<ZButton*>(); }
    static ZSvgWidget* Tag(const CStrip& strip) { return strip.findChild<ZSvgWidget*>(); }

    static QRect Margins(const QLayout& layout) {
        const QMargins margins = layout.contentsMargins();
        return {margins.left(), margins.top(), margins.right(), margins.bottom()};
    }

    /// The names of title, number, unit, detail and the height of each.
    static std::string LevelOf(const CStrip& strip) {
        std::string level;
        for (const ZText* text : {Title(strip), Days(strip), Unit(strip), Detail(strip)}) {
            EXPECT_EQ(text->minimumHeight(), text->maximumHeight());
            level += text->objectName().toStdString() + "/" + std::to_string(text->maximumHeight()) + " ";
        }
        return level;
    }

    CAdWindow window;
};

constexpr const char* kLevel12 = "Premium12/16 PremiumBold12/16 Premium12/16 Premium12/16 ";
constexpr const char* kLevel8 = "Premium8/14 PremiumBold8/14 Premium8/14 Premium8/14 ";

TEST_F(PremiumStripTest, StripIsAnInterfaceOfTheHostWithOnePrivateSlot) {
    static_assert(std::is_base_of<IGrowthPremiumWidget, CStrip>::value, "");
    static_assert(std::is_abstract<IGrowthPremiumWidget>::value, "");
    static_assert(sizeof(IGrowthPremiumWidget) == sizeof(QWidget), "");
    EXPECT_EQ(CStrip::staticMetaObject.superClass(), &IGrowthPremiumWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(CStrip::staticMetaObject), ElementsAre("slot OnMainButtonClicked(bool bClick)"));
    EXPECT_EQ(CStrip::staticMetaObject.method(CStrip::staticMetaObject.methodOffset()).access(), QMetaMethod::Private);
}

TEST_F(PremiumStripTest, VirtualOperationsFollowTheWidgetsInTheirOrder) {
    const std::ptrdiff_t first = PlaceOf(&IGrowthPremiumWidget::SetCallback);
    EXPECT_EQ(PlaceOf(&IGrowthPremiumWidget::SetShowCallback), first + 1);
    EXPECT_EQ(PlaceOf(&IGrowthPremiumWidget::UpdateUiData), first + 2);
}

TEST_F(PremiumStripTest, PartsAreInTheirRows) {
    const CStrip* strip = Add();

    const auto* root = qobject_cast<QHBoxLayout*>(strip->layout());
    ASSERT_TRUE(root);
    EXPECT_EQ(Margins(*root), QRect(8, 4, 4, 4));
    EXPECT_EQ(root->spacing(), 8);
    ASSERT_EQ(root->count(), 2);

    const auto* lines = qobject_cast<QVBoxLayout*>(root->itemAt(0)->layout());
    ASSERT_TRUE(lines);
    EXPECT_EQ(Margins(*lines), QRect(0, 0, 0, 0));
    EXPECT_EQ(lines->spacing(), 0);
    ASSERT_EQ(lines->count(), 2);
    EXPECT_EQ(lines->itemAt(1)->widget(), Detail(*strip));

    const auto* first = qobject_cast<QHBoxLayout*>(lines->itemAt(0)->layout());
    ASSERT_TRUE(first);
    EXPECT_EQ(Margins(*first), QRect(0, 0, 0, 0));
    EXPECT_EQ(first->spacing(), 4);
    ASSERT_EQ(first->count(), 2);
    EXPECT_EQ(first->itemAt(0)->widget(), Tag(*strip));
    EXPECT_EQ(first->itemAt(1)->widget(), Row(*strip));

    const auto* row = qobject_cast<QHBoxLayout*>(Row(*strip)->layout());
    ASSERT_TRUE(row);
    EXPECT_EQ(Margins(*row), QRect(0, 0, 0, 0));
    EXPECT_EQ(row->spacing(), 0);
    ASSERT_EQ(row->count(), 4);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(qobject_cast<ZText*>(row->itemAt(i)->widget())) << i;
        EXPECT_EQ(row->itemAt(i)->alignment(), Qt::AlignCenter) << i;
        EXPECT_EQ(row->stretch(i), 0) << i;
    }
    EXPECT_TRUE(row->itemAt(3)->spacerItem());
    EXPECT_TRUE(row->itemAt(3)->expandingDirections());

    QWidget* holder = root->itemAt(1)->widget();
    EXPECT_EQ(holder->metaObject(), &QWidget::staticMetaObject);
    const auto* held = qobject_cast<QVBoxLayout*>(holder->layout());
    ASSERT_TRUE(held);
    EXPECT_EQ(Margins(*held), QRect(8, 0, 0, 0));
    ASSERT_EQ(held->count(), 1);
    EXPECT_EQ(held->itemAt(0)->widget(), Button(*strip));
}

TEST_F(PremiumStripTest, FirstRowIsTitleNumberAndUnit) {
    const CStrip* strip = Add("Title", "Renew", "D", "Detail", 5);
    const QLayout* row = Row(*strip)->layout();
    std::vector<std::string> texts;
    for (int i = 0; i < 3; ++i) {
        texts.push_back(qobject_cast<ZText*>(row->itemAt(i)->widget())->text().toStdString());
    }
    EXPECT_THAT(texts, ElementsAre("Title", "5", "days"));
}

TEST_F(PremiumStripTest, NumberAndUnitFollowTheTitleWhenThereIsRoomToSpare) {
    const CStrip* strip = Shown();

    ASSERT_GT(Row(*strip)->width(), Unit(*strip)->geometry().right() + 50);
    EXPECT_EQ(Title(*strip)->x(), 0);
    EXPECT_EQ(Days(*strip)->x(), Title(*strip)->geometry().right() + 1);
    EXPECT_EQ(Unit(*strip)->x(), Days(*strip)->geometry().right() + 1);
}

TEST_F(PremiumStripTest, PartsHaveTheirNamesHeightsAndTag) {
    const CStrip* strip = Add();

    EXPECT_EQ(strip->objectName().toStdString(), "PremiumBackground");
    EXPECT_TRUE(strip->testAttribute(Qt::WA_StyledBackground));
    EXPECT_EQ(LevelOf(*strip), kLevel12);
    EXPECT_EQ(Tag(*strip)->svgIconName(), ZResource::icon_premium_tag_normal);
    EXPECT_EQ(Tag(*strip)->minimumSize(), QSize(54, 16));
    EXPECT_EQ(Tag(*strip)->maximumSize(), QSize(54, 16));
    EXPECT_EQ(strip->minimumWidth(), 280);
    EXPECT_EQ(strip->maximumWidth(), QWIDGETSIZE_MAX);
    EXPECT_EQ(strip->sizeHint(), QSize(0, 0));
    EXPECT_EQ(strip->minimumSizeHint(), QSize(0, 0));
    EXPECT_EQ(strip->parentWidget(), &window);
}

TEST_F(PremiumStripTest, TitleAndDetailEndInDotsButTheDaysDoNot) {
    const CStrip* strip = Add();
    const std::pair<ZText*, bool> rows[] = {
        {Title(*strip), true}, {Days(*strip), false}, {Unit(*strip), false}, {Detail(*strip), true}};
    for (const auto& [text, dottable] : rows) {
        text->setText(QStringLiteral("WWWWWWWW"));
        text->resize(20, 16);
        EXPECT_EQ(text->isDotted(), dottable) << text->objectName().toStdString();
    }
}

TEST_F(PremiumStripTest, ButtonHasTheStyleOfTheStrip) {
    const CStrip* strip = Shown();
    const auto& palette = host::CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme());
    EXPECT_EQ(Button(*strip)->height(), 24);
    EXPECT_EQ(Button(*strip)->grab().toImage().pixelColor(4, 12), palette.Color("vipFill"));
}

TEST_F(PremiumStripTest, StripIsOneLineHighAndItsDetailStaysHiddenAndEmpty) {
    CStrip* strip = Shown();
    Update(*strip, "Title", "Renew", "D", "Another detail", 5);

    EXPECT_EQ(strip->minimumHeight(), 32);
    EXPECT_EQ(strip->maximumHeight(), 32);
    EXPECT_EQ(Margins(*strip->layout()), QRect(8, 4, 4, 4));
    EXPECT_TRUE(Detail(*strip)->isHidden());
    EXPECT_EQ(Detail(*strip)->text(), QString());
}

// A text can only come from outside of the strip.
TEST_F(PremiumStripTest, StripIsTwoLinesHighWhenTheDetailHasAText) {
    CStrip* strip = Add();
    Detail(*strip)->setText(QStringLiteral("Detail"));
    Detail(*strip)->show();

    Update(*strip, "Title", "Renew", "D", "", 5);

    EXPECT_EQ(strip->minimumHeight(), 48);
    EXPECT_EQ(strip->maximumHeight(), 48);
    EXPECT_EQ(Margins(*strip->layout()), QRect(8, 6, 8, 6));
    EXPECT_TRUE(Detail(*strip)->isHidden());
    EXPECT_EQ(Detail(*strip)->text().toStdString(), "Detail");

    Detail(*strip)->setText(QString());
    Update(*strip, "Title", "Renew", "D", "", 5);
    EXPECT_EQ(strip->maximumHeight(), 32);
    EXPECT_EQ(Margins(*strip->layout()), QRect(8, 4, 4, 4));
}

struct DaysCase {
    int days;
    const char* number;
    const char* unit;
};

TEST_F(PremiumStripTest, OneDayHasTheSingularAndAllOthersThePlural) {
    CStrip* strip = Add("Title", "Renew", "D", "", 0);
    const DaysCase rows[] = {{1, "1", "day"},    {2, "2", "days"},   {-1, "-1", "days"},
                             {-3, "-3", "days"}, {31, "31", "days"}, {1000000, "1000000", "days"}};
    for (const DaysCase& row : rows) {
        Update(*strip, "Title", "Renew", "D", "", row.days);
        EXPECT_EQ(Days(*strip)->text().toStdString(), row.number);
        EXPECT_EQ(Unit(*strip)->text().toStdString(), row.unit);
        EXPECT_FALSE(Days(*strip)->isHidden());
        EXPECT_FALSE(Unit(*strip)->isHidden());
    }
}

TEST_F(PremiumStripTest, ZeroDaysHideNumberAndUnitAndKeepTheTitle) {
    CStrip* strip = Add("Title", "Renew", "D", "", 0);
    EXPECT_TRUE(Days(*strip)->isHidden());
    EXPECT_TRUE(Unit(*strip)->isHidden());
    EXPECT_FALSE(Title(*strip)->isHidden());
    EXPECT_EQ(Title(*strip)->text().toStdString(), "Title");

    Update(*strip, "Title", "Renew", "D", "", 4);
    EXPECT_FALSE(Days(*strip)->isHidden());
    Update(*strip, "Title", "Renew", "D", "", 0);
    EXPECT_TRUE(Days(*strip)->isHidden());
    EXPECT_TRUE(Unit(*strip)->isHidden());
    EXPECT_FALSE(Title(*strip)->isHidden());
}

class PremiumStripFallbackTest : public ScriptedHostTest {};

TEST_F(PremiumStripFallbackTest, UnitHasAFallback) {
    for (const int days : {1, 2}) {
        const CStrip strip(QString(), QString(), QString(), QString(), days, nullptr);
        std::vector<std::string> texts;
        for (const ZText* text : strip.findChildren<ZText*>()) {
            texts.push_back(text->text().toStdString());
        }
        EXPECT_THAT(texts, UnorderedElementsAre("", std::to_string(days), "\xE6\x97\xA5", ""));
    }
}

TEST_F(PremiumStripTest, EmptyButtonTextHidesTheButtonAndItsHolderStays) {
    CStrip* strip = Shown();
    QWidget* holder = Button(*strip)->parentWidget();
    EXPECT_FALSE(Button(*strip)->isHidden());
    EXPECT_EQ(Button(*strip)->text().toStdString(), "Renew");

    Update(*strip, "Title", "", "D", "", 5);
    EXPECT_TRUE(Button(*strip)->isHidden());
    EXPECT_TRUE(holder->isVisible());
    EXPECT_EQ(Margins(*holder->layout()), QRect(8, 0, 0, 0));

    Update(*strip, "Title", "Buy", "D", "", 5);
    EXPECT_FALSE(Button(*strip)->isHidden());
    EXPECT_EQ(Button(*strip)->text().toStdString(), "Buy");
}

TEST_F(PremiumStripTest, EmptyTitleHidesTheTitle) {
    CStrip* strip = Add("");
    EXPECT_TRUE(Title(*strip)->isHidden());

    Update(*strip, "Now", "Renew", "D", "", 5);
    EXPECT_FALSE(Title(*strip)->isHidden());
    EXPECT_EQ(Title(*strip)->text().toStdString(), "Now");

    Update(*strip, "", "Renew", "D", "", 5);
    EXPECT_TRUE(Title(*strip)->isHidden());
}

TEST_F(PremiumStripTest, TagIsHiddenForAnEmptyTypeAndACapitalAOnly) {
    CStrip* strip = Add();
    const std::pair<const char*, bool> rows[] = {{"D", true}, {"A", false}, {"a", true},  {"", false},
                                                 {"B", true}, {"A ", true}, {"AA", true}, {" ", true}};
    for (const auto& [type, shown] : rows) {
        Update(*strip, "Title", "Renew", type, "", 5);
        EXPECT_EQ(Tag(*strip)->isHidden(), !shown) << '"' << type << '"';
    }
}

TEST_F(PremiumStripTest, NoPartOpensAWindow) {
    QWidget parent;
    const CStrip strip(QStringLiteral("Title"), QStringLiteral("Renew"), QStringLiteral("D"), QString(), 5, &parent);
    const CStrip orphan(QStringLiteral("Title"), QStringLiteral("Renew"), QStringLiteral("D"), QString(), 5, nullptr);
    for (const QWidget* top : QApplication::topLevelWidgets()) {
        EXPECT_FALSE(top->isVisible()) << top->metaObject()->className();
    }
    EXPECT_EQ(orphan.parentWidget(), nullptr);
    EXPECT_TRUE(orphan.isHidden());
}

TEST_F(PremiumStripTest, EachUpdatePutsNamesAndHeightsBackToLevel12) {
    CStrip* strip = Add();
    for (ZText* text : {Title(*strip), Days(*strip), Unit(*strip), Detail(*strip)}) {
        text->setObjectName(QStringLiteral("Other"));
        text->setFixedHeight(14);
    }
    strip->setObjectName(QStringLiteral("Other"));
    strip->setAttribute(Qt::WA_StyledBackground, false);

    Update(*strip, "Title", "Renew", "D", "", 5);

    EXPECT_EQ(LevelOf(*strip), kLevel12);
    EXPECT_EQ(strip->objectName().toStdString(), "PremiumBackground");
    EXPECT_TRUE(strip->testAttribute(Qt::WA_StyledBackground));
}

TEST_F(PremiumStripTest, TextThatFitsStaysAtLevel12) {
    window.setStyleSheet(QString::fromLatin1(kSheet));
    CStrip* strip = Shown();

    strip->UpdateTextWidgetSize();

    EXPECT_EQ(LevelOf(*strip), kLevel12);
    EXPECT_EQ(Title(*strip)->font().pixelSize(), 12);
    EXPECT_EQ(Days(*strip)->font().weight(), QFont::Bold);
}

TEST_F(PremiumStripTest, CutTitleFallsThroughAllLevels) {
    window.setStyleSheet(QString::fromLatin1(kSheet));
    CStrip* strip = Shown("A title of thirty-four letters in all", "Renew", "D", 5);
    QFont font = Title(*strip)->font();
    const auto widthAt = [&](int pixels) {
        font.setPixelSize(pixels);
        return QFontMetrics(font).size(Qt::TextSingleLine, Title(*strip)->text()).width();
    };
    strip->resize(strip->width() + widthAt(12) - 1 - Title(*strip)->width(), 32);
    time.Settle();
    ASSERT_LE(widthAt(11), Title(*strip)->width());
    ASSERT_TRUE(Title(*strip)->isDotted());
    const CNames title(*Title(*strip));
    const CNames days(*Days(*strip));
    const CNames unit(*Unit(*strip));
    const CNames detail(*Detail(*strip));

    strip->UpdateTextWidgetSize();

    EXPECT_THAT(title.names, ElementsAre("Premium11", "Premium10", "Premium8"));
    EXPECT_THAT(unit.names, title.names);
    EXPECT_THAT(detail.names, title.names);
    EXPECT_THAT(days.names, ElementsAre("PremiumBold11", "PremiumBold10", "PremiumBold8"));
    EXPECT_EQ(LevelOf(*strip), kLevel8);
    for (const ZText* text : {Title(*strip), Days(*strip), Unit(*strip)}) {
        EXPECT_EQ(text->font().pixelSize(), 8);
    }
    EXPECT_EQ(Days(*strip)->font().weight(), QFont::Bold);
    EXPECT_FALSE(Title(*strip)->isDotted());
}

TEST_F(PremiumStripTest, CutDetailMakesAllTextsSmaller) {
    window.setStyleSheet(QString::fromLatin1(kSheet));
    CStrip* strip = Shown();
    Detail(*strip)->setText(QString(100, QLatin1Char('W')));
    const CNames title(*Title(*strip));

    strip->UpdateTextWidgetSize();

    EXPECT_THAT(title.names, ElementsAre("Premium11", "Premium10", "Premium8"));
    EXPECT_EQ(LevelOf(*strip), kLevel8);
    EXPECT_EQ(Detail(*strip)->font().pixelSize(), 8);
}

TEST_F(PremiumStripTest, FittingBeginsAtLevel12EachTime) {
    window.setStyleSheet(QString::fromLatin1(kSheet));
    CStrip* strip = Shown(std::string(200, 'W').c_str());
    strip->UpdateTextWidgetSize();
    ASSERT_EQ(LevelOf(*strip), kLevel8);

    Title(*strip)->setText(QStringLiteral("Short"));
    strip->UpdateTextWidgetSize();

    EXPECT_EQ(LevelOf(*strip), kLevel12);
    EXPECT_EQ(Title(*strip)->font().pixelSize(), 12);
    EXPECT_EQ(Unit(*strip)->font().pixelSize(), 12);
    EXPECT_EQ(Days(*strip)->font().pixelSize(), 12);
}

TEST_F(PremiumStripTest, UpdateAfterAFitNamesLevel12AndKeepsTheFont) {
    window.setStyleSheet(QString::fromLatin1(kSheet));
    CStrip* strip = Shown(std::string(200, 'W').c_str());
    strip->UpdateTextWidgetSize();

    Update(*strip, "Short", "Renew", "D", "", 5);

    EXPECT_EQ(LevelOf(*strip), kLevel12);
    EXPECT_EQ(Title(*strip)->font().pixelSize(), 8);
}

TEST_F(PremiumStripTest, OperationsDoNothingWhenAPartIsGone) {
    const auto remove = [](QWidget* part) { delete part; };
    for (int part = 0; part < 7; ++part) {
        CStrip* strip = Add();
        strip->setObjectName(QStringLiteral("Other"));
        QWidget* const parts[] = {Title(*strip),  Days(*strip), Unit(*strip), Detail(*strip),
                                  Button(*strip), Tag(*strip),  Row(*strip)};
        remove(parts[part]);

        Update(*strip, "New", "Buy", "A", "", 1);
        strip->UpdateTextWidgetSize();

        const bool hasAll = part == 5;
        EXPECT_EQ(strip->objectName().toStdString(), hasAll ? "PremiumBackground" : "Other") << part;
        EXPECT_EQ(strip->maximumHeight(), 32);
        delete strip;
    }
    CStrip* bare = Add();
    delete bare->layout();
    bare->setFixedHeight(20);
    Update(*bare, "New", "Buy", "A", "", 1);
    EXPECT_EQ(bare->maximumHeight(), 20);
    EXPECT_EQ(Title(*bare)->text().toStdString(), "New");
}

TEST_F(PremiumStripTest, FittingNeedsAllTextsButNoButton) {
    window.setStyleSheet(QString::fromLatin1(kSheet));
    CStrip* strip = Shown(std::string(200, 'W').c_str());
    delete Unit(*strip);
    strip->UpdateTextWidgetSize();
    EXPECT_EQ(Title(*strip)->objectName().toStdString(), "Premium12");

    CStrip* other = Shown(std::string(200, 'W').c_str());
    delete Button(*other);
    other->UpdateTextWidgetSize();
    EXPECT_EQ(LevelOf(*other), kLevel8);
}

TEST_F(PremiumStripTest, SizePolicyIsFixedOnRequestOnly) {
    CStrip* strip = Add();
    EXPECT_EQ(strip->sizePolicy(), QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred));
    strip->SetSizePolicyFixed();
    EXPECT_EQ(strip->sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
}

TEST_F(PremiumStripTest, ClickCallsTheFunctionOnce) {
    CStrip* strip = Shown();
    QObject guard;
    std::vector<bool> clicks;
    strip->SetCallback([&](bool checked) { clicks.push_back(checked); }, &guard);

    Click(Button(*strip));
    EXPECT_THAT(clicks, ElementsAre(false));

    Button(*strip)->setCheckable(true);
    Click(Button(*strip));
    EXPECT_THAT(clicks, ElementsAre(false, true));
}

TEST_F(PremiumStripTest, ClickWithoutAFunctionDoesNothing) {
    CStrip* strip = Shown();
    Click(Button(*strip));
    QObject guard;
    strip->SetCallback(nullptr, &guard);
    Click(Button(*strip));
}

TEST_F(PremiumStripTest, ShowGivesFalseAndHideTrue) {
    CStrip* strip = Add();
    QObject guard;
    std::vector<bool> hidden;
    strip->SetShowCallback([&](bool value) { hidden.push_back(value); }, &guard);
    EXPECT_THAT(hidden, IsEmpty());

    window.show();
    EXPECT_THAT(hidden, ElementsAre(false));
    strip->hide();
    EXPECT_THAT(hidden, ElementsAre(false, true));
    strip->show();
    EXPECT_THAT(hidden, ElementsAre(false, true, false));
    window.hide();
    EXPECT_THAT(hidden, ElementsAre(false, true, false, true));
}

TEST_F(PremiumStripTest, MinimisedAndRestoredWindowsCount) {
    CStrip* strip = Shown();
    QObject guard;
    std::vector<bool> hidden;
    strip->SetShowCallback([&](bool value) { hidden.push_back(value); }, &guard);

    QHideEvent hide;
    QSpontaneKeyEvent::setSpontaneous(&hide);
    qApp->notify(strip, &hide);
    QShowEvent show;
    QSpontaneKeyEvent::setSpontaneous(&show);
    qApp->notify(strip, &show);

    EXPECT_THAT(hidden, ElementsAre(true, false));
}

TEST_F(PremiumStripTest, ShowWithoutAFunctionDoesNothing) {
    CStrip* strip = Add();
    QObject guard;
    strip->SetShowCallback(nullptr, &guard);
    window.show();
    window.hide();
}

TEST_F(PremiumStripTest, LaterContextGuardsBothFunctions) {
    CStrip* strip = Shown();
    int clicks = 0;
    int shows = 0;
    QObject longLived;
    auto shortLived = std::make_unique<QObject>();
    strip->SetCallback([&](bool) { ++clicks; }, &longLived);
    strip->SetShowCallback([&](bool) { ++shows; }, shortLived.get());
    Click(Button(*strip));
    strip->hide();
    strip->show();
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(shows, 2);

    shortLived.reset();
    Click(Button(*strip));
    strip->hide();
    strip->show();
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(shows, 2);

    // Neither function is cleared.
    strip->SetShowCallback([&](bool) { shows += 10; }, &longLived);
    time.Settle();
    Click(Button(*strip));
    strip->hide();
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(shows, 12);
}

TEST_F(PremiumStripTest, LaterContextOfTheClickGuardsTheShowToo) {
    CStrip* strip = Shown();
    int shows = 0;
    QObject longLived;
    auto shortLived = std::make_unique<QObject>();
    strip->SetShowCallback([&](bool) { ++shows; }, &longLived);
    strip->SetCallback([](bool) {}, shortLived.get());
    shortLived.reset();

    strip->hide();

    EXPECT_EQ(shows, 0);
}

TEST_F(PremiumStripTest, NullContextSilencesBothFunctions) {
    CStrip* strip = Shown();
    int calls = 0;
    QObject guard;
    strip->SetCallback([&](bool) { ++calls; }, &guard);
    strip->SetShowCallback([&](bool) { ++calls; }, nullptr);

    Click(Button(*strip));
    strip->hide();

    EXPECT_EQ(calls, 0);
}

TEST_F(PremiumStripTest, ClickMayDeleteStripOrGuardOrReplaceItself) {
    QPointer<CStrip> strip = Shown();
    QObject guard;
    const auto held = std::make_shared<int>(7);
    int seen = 0;
    strip->SetCallback(
        [&, held](bool) {
            delete strip;
            seen += *held;
        },
        &guard);
    Click(Button(*strip));
    EXPECT_FALSE(strip);
    EXPECT_EQ(seen, 7);

    strip = Shown();
    auto* dying = new QObject;
    strip->SetCallback(
        [&, held, dying](bool) {
            delete dying;
            seen += *held;
        },
        dying);
    Click(Button(*strip));
    Click(Button(*strip));
    EXPECT_EQ(seen, 14);

    strip->SetCallback(
        [&, held](bool) {
            strip->SetCallback(nullptr, nullptr);
            seen += *held;
        },
        &guard);
    Click(Button(*strip));
    EXPECT_EQ(seen, 21);
}

TEST_F(PremiumStripTest, ShowMayEndStripAndGuardAndReplaceItself) {
    QPointer<CStrip> strip = Shown();
    const auto held = std::make_shared<int>(7);
    auto* dying = new QObject;
    int seen = 0;
    strip->SetShowCallback(
        [&, held, dying](bool) {
            delete dying;
            strip->SetShowCallback(nullptr, nullptr);
            strip->deleteLater();
            seen += *held;
        },
        dying);

    strip->hide();

    EXPECT_EQ(seen, 7);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(strip);
}

TEST_F(PremiumStripTest, CallbackSeesTheStripBeforeTheBaseActs) {
    CStrip* strip = Shown();
    QObject guard;
    std::vector<bool> shown;
    strip->SetShowCallback([&](bool) { shown.push_back(strip->isVisible()); }, &guard);
    strip->hide();
    strip->show();
    EXPECT_THAT(shown, ElementsAre(false, true));
}

TEST_F(PremiumStripTest, LongTextsStayWithinTheStrip) {
    const std::string texts[] = {std::string(10'000, 'W'), QStringLiteral("word ").repeated(2'000).toStdString(),
                                 QStringLiteral("line\n").repeated(2'000).toStdString(),
                                 QStringLiteral("\u0645\u0631\u062d\u0628\u0627 ").repeated(1'666).toStdString()};
    for (const std::string& text : texts) {
        QWidget page;
        auto* layout = new QVBoxLayout(&page);
        const QString whole = QString::fromStdString(text);
        auto* strip = new CStrip(whole, whole, QStringLiteral("D"), whole, 2'147'483'647, &page);
        layout->addWidget(strip);
        layout->addStretch();
        page.resize(480, 200);
        page.show();
        time.Settle();
        strip->UpdateTextWidgetSize();
        time.Settle();

        EXPECT_EQ(page.width(), 480);
        for (const QWidget* part : strip->findChildren<QWidget*>()) {
            const QRect place(part->mapTo(strip, QPoint(0, 0)), part->size());
            EXPECT_TRUE(part->isHidden() || strip->rect().contains(place)) << part->metaObject()->className();
        }
        EXPECT_EQ(Title(*strip)->text(), whole);
        EXPECT_EQ(Button(*strip)->text(), whole);
        EXPECT_FALSE(page.grab().isNull());
    }
}

}  // namespace
