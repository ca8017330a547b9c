#include "Theme.h"

#include <QEvent>
#include <QFile>
#include <QRegularExpression>
#include <QToolButton>
#include <cmath>

#include "Icons.h"
#include "Navigation.h"
#include "pages/PriceChart.h"
#include "pages/SampleTable.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"
#include "ui/ThemePalette.h"
#include "ui/ZResource.h"
#include "ui/ZText.h"
#include "ui/zr_ui_res.h"
#include "workbench/EventModel.h"

using namespace ::testing;
using host::CThemeControl;
using host::CThemePalette;
using zr_ui_theme::Manager;

namespace {

constexpr double kLeastContrast = 4.5;
constexpr double kLeastMarkContrast = 3.0;

/// The background colours of each text colour in the client.
const std::map<std::string, std::vector<const char*>> kGrounds = {
    {"text",
     {"window", "surface", "field", "stripe", "popup", "tooltip", "button", "buttonHover", "buttonPressed", "checked"}},
    {"heading", {"window", "surface", "field", "stripe", "popup", "checked", "selection"}},
    {"soft", {"window", "surface", "buttonPressed"}},
    {"muted", {"window", "surface", "field", "stripe", "checked"}},
    {"disabled", {"window", "surface", "field", "stripe", "popup", "buttonOff"}},
    {"noticeText", {"notice"}},
    {"warning", {"notice", "surface"}},
    {"note", {"surface"}},
    {"accent", {"window", "surface", "stripe", "checked"}},
    {"up", {"window", "surface", "field", "stripe"}},
    {"down", {"window", "surface", "field", "stripe"}},
    {"onAccent", {"accentFill", "accentHover", "accentPressed"}},
    {"vipText", {"vipBg"}},
    {"vipOnFill", {"vipFill", "vipFillHover", "vipFillPressed"}},
    {"ck_champagne300", {"ck_gray750"}},
    {"ck_gray950", {"ck_gray100"}},
};

/// Colours that painting code uses.
constexpr theme::ColorName kByHand[] = {
    theme::kWindow, theme::kText,     theme::kMuted, theme::kFaint, theme::kLine,
    theme::kAccent, theme::kOnAccent, theme::kUp,    theme::kDown,  theme::kWarning,
};

/// Colours that a module asks for by name.
constexpr const char* kByModule[] = {
    "ck_orange850",
    "ct_text_white",
    "ck_gray750",
    "ck_gray100",
    "ck_champagne300",
    "ck_gray950",
    "ct_bg_hover",
    "style_skin_premium/foreground",
    "style_skin_premium/popwnd_foreground",
    "ck_red400",
    "ck_orange500",
    "ck_grayblue500",
};

double Linear(double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& color) {
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

/// The colour that is seen when `top` is laid over `ground`.
QColor Over(const QColor& top, const QColor& ground) {
    const double alpha = top.alphaF();
    return QColor::fromRgbF(top.redF() * alpha + ground.redF() * (1 - alpha),
                            top.greenF() * alpha + ground.greenF() * (1 - alpha),
                            top.blueF() * alpha + ground.blueF() * (1 - alpha));
}

/// The drawing at a ratio of 2, where lines are not blended with their surroundings.
QImage Drawing(const char* name) {
    std::shared_ptr<const QPixmap> pixmap;
    zr_ui_res::Provider::instance()->get(pixmap, QString::fromLatin1(name), 2.0);
    return pixmap ? pixmap->toImage().convertToFormat(QImage::Format_ARGB32) : QImage();
}

/// The least contrast between the colour and the pixels of a picture without holes, with `cover` laid over the picture.
double LeastContrast(const QColor& color, const QImage& picture, const QColor& cover) {
    double least = 21;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            EXPECT_EQ(picture.pixelColor(x, y).alpha(), 255);
            least = std::min(least, Contrast(color, Over(cover, picture.pixelColor(x, y))));
        }
    }
    return least;
}

/// Number of pixels of the mark that are visible on the ground.
int VisiblePixels(const QImage& mark, const QColor& ground) {
    int count = 0;
    for (int y = 0; y < mark.height(); ++y) {
        for (int x = 0; x < mark.width(); ++x) {
            count += Contrast(Over(mark.pixelColor(x, y), ground), ground) >= kLeastMarkContrast;
        }
    }
    return count;
}

/// The colours of an attribute of a drawing: one, or those of a gradient.
std::vector<QColor> ColorsOf(const QString& drawing, const QString& fill) {
    static const QRegularExpression stop(QStringLiteral("stop-color=\"(#\\w{6})\""));
    if (!fill.startsWith(QLatin1String("url"))) {
        return {QColor(fill)};
    }
    const int begin = drawing.indexOf(QStringLiteral("id=\"%1\"").arg(fill.mid(5, fill.size() - 6)));
    const QString gradient = drawing.mid(begin, drawing.indexOf(QStringLiteral("</linearGradient>"), begin) - begin);
    std::vector<QColor> colors;
    auto stops = stop.globalMatch(gradient);
    while (stops.hasNext()) {
        colors.emplace_back(stops.next().captured(1));
    }
    return colors;
}

/// The least contrast of each path of a drawing to its plate. Letters are the paths that are moved.
struct TagContrast {
    double letters = 21;
    double marks = 21;
};

TagContrast TagContrastOf(const QString& name) {
    QFile file(QStringLiteral(":/kit/%1.svg").arg(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    const QString drawing = QString::fromUtf8(file.readAll());
    static const QRegularExpression plate(QStringLiteral("<rect[^>]* fill=\"([^\"]+)\""));
    static const QRegularExpression path(QStringLiteral("<path (transform=\"[^\"]*\" )?fill=\"([^\"]+)\""));
    const std::vector<QColor> grounds = ColorsOf(drawing, plate.match(drawing).captured(1));
    TagContrast least;
    auto paths = path.globalMatch(drawing);
    while (paths.hasNext()) {
        const auto found = paths.next();
        for (const QColor& color : ColorsOf(drawing, found.captured(2))) {
            for (const QColor& ground : grounds) {
                double& kind = found.captured(1).isEmpty() ? least.marks : least.letters;
                kind = std::min(kind, Contrast(color, ground));
            }
        }
    }
    return least;
}

QString Template() {
    QFile file(QStringLiteral(":/themes/client.qss"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// The names of text colours in the style sheet.
std::set<std::string> TextColorsOfTheTemplate() {
    static const QRegularExpression pattern(QStringLiteral("[{;]\\s*(?:selection-)?color:\\s*@(\\w+)"));
    std::set<std::string> names;
    auto matches = pattern.globalMatch(Template());
    while (matches.hasNext()) {
        names.insert(matches.next().captured(1).toStdString());
    }
    return names;
}

/// The text and background names of each rule that sets both, for the selection too.
std::vector<std::pair<std::string, std::string>> PairsOfTheTemplate() {
    static const QRegularExpression rule(QStringLiteral("\\{([^}]*)\\}"));
    static const QRegularExpression property(QStringLiteral("([a-z-]+):\\s*@(\\w+)"));
    std::vector<std::pair<std::string, std::string>> pairs;
    auto rules = rule.globalMatch(Template());
    while (rules.hasNext()) {
        std::map<QString, std::string> named;
        auto properties = property.globalMatch(rules.next().captured(1));
        while (properties.hasNext()) {
            const auto found = properties.next();
            named[found.captured(1)] = found.captured(2).toStdString();
        }
        const auto add = [&](const char* text, const char* ground) {
            const auto textName = named.find(QLatin1String(text));
            const auto groundName = named.find(QLatin1String(ground));
            if (textName != named.end() && groundName != named.end()) {
                pairs.emplace_back(textName->second, groundName->second);
            }
        };
        add("color", "background");
        add("selection-color", "selection-background-color");
    }
    return pairs;
}

QImage PictureOf(QWidget& widget) {
    return widget.grab().toImage();
}

bool HasColor(const QImage& picture, const QColor& color) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

class CPaintCount : public QObject {
public:
    explicit CPaintCount(QWidget& widget) { widget.installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

class ThemeTest : public ScriptedHostTest {};
class EachThemeTest : public ScriptedHostTest, public WithParamInterface<Manager::Theme> {
protected:
    EachThemeTest() { CThemeControl::Set(GetParam()); }
    const CThemePalette& palette = CThemePalette::Of(GetParam());
};

std::string ThemeName(const TestParamInfo<Manager::Theme>& info) {
    return "Theme" + std::to_string(info.param);
}

}  // namespace

TEST_P(EachThemeTest, EveryTextStandsOutFromWhatItStandsOn) {
    for (const auto& [text, grounds] : kGrounds) {
        for (const char* ground : grounds) {
            ASSERT_TRUE(palette.Color(text).isValid() && palette.Color(ground).isValid()) << text << " " << ground;
            EXPECT_GE(Contrast(palette.Color(text), palette.Color(ground)), kLeastContrast) << text << " on " << ground;
        }
    }
}

TEST_P(EachThemeTest, ARuleThatNamesTextAndGroundKeepsThemApart) {
    int count = 0;
    for (const auto& [text, ground] : PairsOfTheTemplate()) {
        ++count;
        EXPECT_GE(Contrast(palette.Color(text), palette.Color(ground)), kLeastContrast) << text << " on " << ground;
    }
    EXPECT_GT(count, 10);
}

TEST_P(EachThemeTest, TheStyleSheetHasAllItsColours) {
    const QString sheet = theme::StyleSheet();

    EXPECT_FALSE(sheet.contains(QLatin1Char('@')));
    EXPECT_TRUE(sheet.contains(palette.Color("window").name()));
    EXPECT_TRUE(sheet.contains(QStringLiteral(":/themes/%1/arrow.svg").arg(GetParam())));
}

TEST_P(EachThemeTest, ItsArrowIsOfTheColourOfMutedTexts) {
    QFile file(QStringLiteral(":/themes/%1/arrow.svg").arg(GetParam()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));

    EXPECT_TRUE(file.readAll().contains("stroke=\"" + palette.Color("muted").name().toLatin1() + '"'));
}

TEST_P(EachThemeTest, WhatIsPaintedByHandFindsItsColours) {
    for (const theme::ColorName name : kByHand) {
        EXPECT_TRUE(QColor(name).isValid()) << name.name;
        EXPECT_EQ(QColor(name), palette.Color(name.name)) << name.name;
    }
}

TEST_P(EachThemeTest, TextOnABannerPictureStandsOutFromEachPixelAlsoUnderThePointer) {
    const std::pair<const char*, const char*> rows[] = {
        {"ck_orange850", ZResource::img_bg_engine_banner_230x32_normal},
        {"ct_text_white", ZResource::img_bg_noengine_banner_230x32_normal}};
    for (const auto& [text, picture] : rows) {
        const QImage image = Drawing(picture);
        ASSERT_FALSE(image.isNull());
        EXPECT_GE(LeastContrast(palette.Color(text), image, Qt::transparent), kLeastContrast) << text;
        EXPECT_GE(LeastContrast(palette.Color(text), image, palette.Color("ct_bg_hover")), kLeastContrast) << text;
    }
}

TEST_P(EachThemeTest, TextOnAMaskStandsOutWhateverLiesBehind) {
    for (const char* blend : {"style_skin_premium/foreground", "style_skin_premium/popwnd_foreground"}) {
        EXPECT_LT(palette.Color(blend).alpha(), 255) << blend;
        for (const QColor& behind : {QColor(Qt::white), QColor(Qt::black)}) {
            const QColor ground = Over(palette.Color(blend), behind);
            for (const char* text : {"text", "vipText"}) {
                EXPECT_GE(Contrast(palette.Color(text), ground), kLeastContrast) << text << " on " << blend;
            }
            for (const char* mark : {"img_engine_m_56x16_normal", "img_vip_16_normal"}) {
                EXPECT_GE(VisiblePixels(Drawing(mark), ground), 100) << mark << " on " << blend;
            }
        }
    }
}

TEST_P(EachThemeTest, MarksOfABannerStandOutFromIt) {
    const QColor ground = palette.Color("vipBg");
    EXPECT_GE(Contrast(palette.Color("vipLine"), ground), kLeastMarkContrast);
    for (const char* mark : {"img_engine_nbg_54x16_normal", "img_vip_16_normal"}) {
        EXPECT_GE(VisiblePixels(Drawing(mark), ground), 100) << mark;
    }
}

TEST_P(EachThemeTest, ColourUnderThePointerLetsTheBannerThrough) {
    EXPECT_GT(palette.Color("ct_bg_hover").alpha(), 0);
    EXPECT_LT(palette.Color("ct_bg_hover").alpha(), 64);
}

INSTANTIATE_TEST_SUITE_P(All, EachThemeTest, ValuesIn(CThemeControl::kThemes), ThemeName);

TEST_F(ThemeTest, NoTextColourEscapesTheContrastTable) {
    const auto names = TextColorsOfTheTemplate();
    EXPECT_THAT(names, Contains("noticeText"));
    for (const std::string& name : names) {
        EXPECT_EQ(kGrounds.count(name), 1u) << name;
    }
}

TEST_F(ThemeTest, SheetHasARuleForEachNameOfTheMembershipWidgets) {
    const QString sheet = Template();
    for (const char* name : {"CZRVipBg", "CZRVipBannerEngineDivider", "CZRVipTextNormal", "CZRVipActionButton",
                             "CZRVipMaskBg", "CZRVipMaskText", "CZRVipTextBold", "PremiumBackground"}) {
        EXPECT_TRUE(sheet.contains(QRegularExpression(QStringLiteral("#%1 \\{").arg(QLatin1String(name))))) << name;
    }
}

TEST_F(ThemeTest, TextsOfTheStripAreSmallerAtEachLevel) {
    for (const auto number : CThemeControl::kThemes) {
        CThemeControl::Set(number);
        QWidget window;
        window.setStyleSheet(theme::StyleSheet());
        ZText text(QStringLiteral("Days left of the right"), &window);
        text.setDottable(true);
        text.resize(110, 16);
        QList<QImage> looks;
        for (const int level : {12, 11, 10, 8}) {
            for (const char* name : {"Premium%1", "PremiumBold%1"}) {
                text.setObjectName(QString::fromLatin1(name).arg(level));
                text.style()->polish(&text);
                EXPECT_EQ(text.font().pixelSize(), level);
                EXPECT_EQ(text.font().bold(), QLatin1String(name) == QLatin1String("PremiumBold%1"));
                const QImage look = PictureOf(text);
                EXPECT_FALSE(looks.contains(look)) << level << name;
                looks << look;
                EXPECT_TRUE(level == 11 || level == 10 || text.isDotted() == (level == 12)) << level << name;
            }
        }
    }
}

TEST_F(ThemeTest, BackgroundOfAMaskLetsThePageThrough) {
    QWidget page;
    page.setStyleSheet(theme::StyleSheet());
    page.resize(100, 100);
    QPalette red;
    red.setColor(QPalette::Window, Qt::red);
    page.setPalette(red);
    QWidget mask(&page);
    mask.setObjectName(QStringLiteral("CZRVipMaskBg"));
    mask.setAttribute(Qt::WA_StyledBackground);
    mask.resize(100, 100);

    const QImage picture = PictureOf(page);

    EXPECT_EQ(picture.pixelColor(50, 50), QColor(Qt::red));
}

TEST_F(ThemeTest, LettersAndMarksOfATagStandOutFromItsPlate) {
    for (const QString name : {ZResource::img_viptab1_26x16_normal, ZResource::img_viptab2_26x16_normal,
                               ZResource::img_viptab3_26x16_normal, ZResource::img_viptabcn_45x16_normal,
                               ZResource::img_viptabhk_45x16_normal, ZResource::img_viptaben_76x16_normal,
                               ZResource::img_viptabjp_71x16_normal, ZResource::img_engine_m_56x16_normal}) {
        const TagContrast contrast = TagContrastOf(name);
        EXPECT_GE(contrast.letters, kLeastContrast) << name.toStdString();
        EXPECT_GE(contrast.marks, kLeastMarkContrast) << name.toStdString();
        EXPECT_LT(std::max(contrast.letters, contrast.marks), 21) << name.toStdString();  // both were found
    }
}

TEST_F(ThemeTest, ContrastIsMeasuredAsThePublishedFormulaSays) {
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21.0, 0.001);
    EXPECT_NEAR(Contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
}

TEST_F(ThemeTest, APaletteHasNoColourThatNobodyUses) {
    const QString sheet = Template();
    for (const QString& name : CThemePalette::Of(Manager::kThemeLight).Names()) {
        const bool byHand = std::any_of(std::begin(kByHand), std::end(kByHand), [&name](theme::ColorName painted) {
            return name == QLatin1String(painted.name);
        });
        const bool byModule = std::any_of(std::begin(kByModule), std::end(kByModule),
                                          [&name](const char* asked) { return name == QLatin1String(asked); });
        EXPECT_TRUE(byHand || byModule || sheet.contains(QRegularExpression(QStringLiteral("@%1\\b").arg(name))))
            << name.toStdString();
    }
}

TEST_F(ThemeTest, WhatIsKeptIsShownNowAndAtEachChangeWhileItsContextLives) {
    std::vector<QColor> shown;
    auto context = std::make_unique<QObject>();
    theme::OnThemeChange(context.get(), [&shown] { shown.emplace_back(theme::kWindow); });

    CThemeControl::Set(Manager::kThemeBlack);
    context.reset();
    CThemeControl::Set(Manager::kThemeLight);

    EXPECT_THAT(shown, ElementsAre(QColor(0x12, 0x16, 0x1d), QColor(Qt::black)));
}

TEST_F(ThemeTest, AChartIsPaintedInTheNewTheme) {
    CPriceChart chart({1, 2, 3}, 1);
    chart.resize(300, 200);
    chart.show();
    time.Settle();
    const QImage before = PictureOf(chart);
    CPaintCount paints(chart);

    CThemeControl::Set(Manager::kThemeLight);
    time.Settle();

    EXPECT_GT(paints.count, 0);
    EXPECT_NE(PictureOf(chart), before);
}

TEST_F(ThemeTest, ATablesCellsTakeTheNewColours) {
    CSampleTable table("Table", {{"Name", false}, {"Last", true}}, 0);
    table.AddRow({{QStringLiteral("Alder")}, {QStringLiteral("1.00"), theme::kUp}});
    table.AddRow({{QStringLiteral("Birch"), theme::kMuted}, {QStringLiteral("2.00"), theme::kDown}});

    CThemeControl::Set(Manager::kThemeBlack);

    EXPECT_EQ(table.item(0, 0)->foreground().color(), QColor(theme::kText));
    EXPECT_EQ(table.item(0, 1)->foreground().color(), QColor(theme::kUp));
    EXPECT_EQ(table.item(1, 0)->foreground().color(), QColor(theme::kMuted));
    EXPECT_EQ(table.item(1, 1)->foreground().color(), QColor(theme::kDown));
}

TEST_F(ThemeTest, IconsAreDrawnAnewInTheNewColours) {
    CNavigation navigation;
    auto* tab = navigation.findChild<QToolButton*>(QStringLiteral("NavigationTab_quotes"));
    ASSERT_NE(tab, nullptr);

    CThemeControl::Set(Manager::kThemeLight);

    const QImage icon = tab->icon().pixmap(QSize(20, 20), QIcon::Normal, QIcon::Off).toImage();
    EXPECT_EQ(icon, icons::Pixmap("quotes", theme::kMuted, 20).toImage());
    EXPECT_TRUE(HasColor(icon, QColor(theme::kMuted)));
}

TEST_F(ThemeTest, TheLogIsReadAnewAsItsColoursAreNoLongerWhatTheyWere) {
    CEventModel model{NewLogFormat()};
    LogEntry entry;
    entry.record.type = kZRLogError;
    model.Add(entry);
    time.Advance(std::chrono::seconds(1));
    ASSERT_EQ(model.rowCount(), 1);
    int changes = 0;
    QObject::connect(&model, &CEventModel::dataChanged, &model, [&changes] { ++changes; });

    CThemeControl::Set(Manager::kThemeBlack);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(model.index(0, 3).data(Qt::ForegroundRole).value<QColor>(), QColor(theme::kDown));
}
