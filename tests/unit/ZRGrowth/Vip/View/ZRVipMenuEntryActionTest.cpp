#include "Vip/View/ZRVipMenuEntryAction.h"

#include <QMetaMethod>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionMenuItem>

#include "Vip/VipWidgetTest.h"
#include "ui/ThemePalette.h"
#include "ui/ZCustomColorSvg.h"
#include "ui/ZMenu.h"
#include "ui/zr_ui_font.h"

using namespace ::testing;

namespace {

constexpr const char* kCentre = "https://www.test/centre";

/// A painted part, with the state of the painter.
struct Painted {
    enum Kind { kPicture, kFill, kShape, kText };
    Kind kind;
    QRectF rect;  // of a text: the point at its baseline, with its width
    QColor color;
    QString text;
    QFont font;
    QRectF clip;  // null without a clip
    bool smooth = false;
};

class CRecordingEngine : public QPaintEngine {
public:
    CRecordingEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    Type type() const override { return User; }

    void drawPixmap(const QRectF& rect, const QPixmap& pixmap, const QRectF& /*source*/) override {
        Add(Painted::kPicture, rect).text =
            QString::number(pixmap.width()) + QLatin1Char('x') + QString::number(pixmap.height());
    }
    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) {
            Add(Painted::kFill, rects[i]).color = painter()->brush().color();
        }
    }
    void drawPath(const QPainterPath& path) override {
        Painted& shape = Add(Painted::kShape, path.boundingRect());
        shape.color = painter()->brush().color();
        shape.text = painter()->pen().style() == Qt::NoPen ? QStringLiteral("no pen") : QStringLiteral("pen");
        QPainterPath rounded;
        rounded.addRoundedRect(path.boundingRect(), 4, 4);
        shape.text += path == rounded ? QStringLiteral(", radius 4") : QString();
    }
    void drawTextItem(const QPointF& point, const QTextItem& item) override {
        Painted& text = Add(Painted::kText, QRectF(point, QSizeF(item.width(), 0)));
        text.text = item.text();
        text.color = painter()->pen().color();
        text.font = painter()->font();
    }

    std::vector<Painted> painted;

private:
    Painted& Add(Painted::Kind kind, const QRectF& rect) {
        Painted added;
        added.kind = kind;
        added.rect = rect;
        added.smooth = painter()->testRenderHint(QPainter::Antialiasing);
        if (painter()->hasClipping()) {
            added.clip = painter()->clipPath().boundingRect();
        }
        painted.push_back(added);
        return painted.back();
    }
};

class CRecordingDevice : public QPaintDevice {
public:
    QPaintEngine* paintEngine() const override { return &engine; }

    mutable CRecordingEngine engine;

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmWidth:
            case PdmHeight:
                return 1000;
            case PdmDpiX:
            case PdmDpiY:
            case PdmPhysicalDpiX:
            case PdmPhysicalDpiY:
                return 96;
            case PdmDevicePixelRatio:
                return 1;
            case PdmDevicePixelRatioScaled:
                return int(devicePixelRatioFScale());
            default:
                return 0;
        }
    }
};

class CUpdatedMenu : public ZMenu {
public:
    int updates = 0;

    bool event(QEvent* event) override {
        updates += event->type() == QEvent::UpdateRequest || event->type() == QEvent::UpdateLater ? 1 : 0;
        return ZMenu::event(event);
    }
};

class VipMenuEntryActionTest : public VipWidgetTest {
protected:
    VipMenuEntryActionTest() {
        links.Set(202011732, kCentre);
        painterFont.setPixelSize(27);
        painterFont.setItalic(true);
        painterFont.setWeight(QFont::Black);
    }

    static QStyleOptionMenuItem OptionAt(const QRect& rect, bool selected = false) {
        QStyleOptionMenuItem option;
        option.rect = rect;
        option.state = QStyle::State_Enabled | (selected ? QStyle::State_Selected : QStyle::State_None);
        return option;
    }

    QFont PillFont() const {
        QFont font = zr_ui_font::WithToken(painterFont, 0);
        font.setWeight(63);
        return font;
    }
    QFont TextFont() const {
        QFont font = zr_ui_font::WithToken(painterFont, 3);
        font.setWeight(50);
        return font;
    }

    /// Returns the parts that the entry paints into a row at `rect`.
    std::vector<Painted> PaintedBy(const CZRVipMenuEntryAction& entry, const QRect& rect, bool selected = false) {
        CRecordingDevice device;
        QPainter painter(&device);
        painter.setFont(painterFont);
        painter.setPen(Qt::green);
        EXPECT_TRUE(entry.paint(&painter, OptionAt(rect, selected), &menu));
        EXPECT_EQ(painter.font(), painterFont);
        EXPECT_EQ(painter.pen().color(), QColor(Qt::green));
        EXPECT_FALSE(painter.hasClipping());
        EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing));
        return device.engine.painted;
    }

    static QColor Named(const char* name) {
        return host::CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme()).Color(name);
    }

    /// The entry on a grey picture of a row at (10, 20).
    QImage Look(const CZRVipMenuEntryAction& entry, bool selected = false, int ratio = 1) {
        QImage image(QSize(320, 80) * ratio, QImage::Format_RGB32);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::gray);
        QPainter painter(&image);
        EXPECT_TRUE(entry.paint(&painter, OptionAt(QRect(10, 20, 300, 40), selected), &menu));
        return image;
    }

    /// A text that is exactly this wide in that font.
    static QString TextOfWidth(int width, const QFont& font) {
        const QFontMetrics metrics(font);
        for (int wide = 0; wide < 20; ++wide) {
            for (int thin = 0; thin < 60; ++thin) {
                const QString text = QString(wide, QLatin1Char('W')) + QString(thin, QLatin1Char('i'));
                if (metrics.horizontalAdvance(text) == width) {
                    return text;
                }
            }
        }
        ADD_FAILURE() << "No text is " << width << " wide";
        return QString();
    }

    CUpdatedMenu menu;
    QFont painterFont;
};

TEST_F(VipMenuEntryActionTest, EntryHasOnePrivateSlot) {
    const QMetaObject& object = CZRVipMenuEntryAction::staticMetaObject;
    EXPECT_EQ(object.superClass(), &ZAction::staticMetaObject);
    EXPECT_THAT(MethodsOf(object), ElementsAre("slot OnEntryClicked()"));
    EXPECT_EQ(object.method(object.methodOffset()).access(), QMetaMethod::Private);
}

TEST_F(VipMenuEntryActionTest, EntryOfTheOlderSystemHasThePersonAndItsText) {
    language.SetText(310783, QStringLiteral("Members"));
    log.Forget();

    const CZRVipMenuEntryAction entry(&menu);

    EXPECT_EQ(entry.parent(), &menu);
    EXPECT_EQ(entry.text().toStdString(), "Members");
    EXPECT_TRUE(entry.isVisible());
    ZAction expected;
    expected.setSvgIcon(ZResource::icon_base_person_vip_16, ZIconColorStyle::normal);
    EXPECT_EQ(entry.icon().pixmap(16, 16).toImage(), expected.icon().pixmap(16, 16).toImage());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Menu Entry Refreshed, New Vip = false, Is Member = false")));
}

TEST_F(VipMenuEntryActionTest, EntryOfTheNewerSystemHasNoIconAndItsText) {
    UserIs(NewUser());
    language.SetText(362209, QStringLiteral("Motor"));
    log.Forget();

    const CZRVipMenuEntryAction entry(&menu);

    EXPECT_EQ(entry.text().toStdString(), "Motor");
    EXPECT_TRUE(entry.icon().isNull());
    EXPECT_TRUE(entry.isVisible());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Menu Entry Refreshed, New Vip = true, Is Member = false")));
}

TEST_F(VipMenuEntryActionTest, TextsHaveFallbacks) {
    EXPECT_EQ(CZRVipMenuEntryAction(&menu).text(), QString::fromUtf8("\u4f1a\u5458\u4e2d\u5fc3"));
    UserIs(NewMember());
    EXPECT_EQ(CZRVipMenuEntryAction(&menu).text().toStdString(), "Engine");
}

TEST_F(VipMenuEntryActionTest, EntryFollowsTheStatus) {
    const CZRVipMenuEntryAction entry(&menu);
    log.Forget();

    UserIs(NewMember());
    EXPECT_EQ(entry.text().toStdString(), "Engine");
    EXPECT_TRUE(entry.icon().isNull());
    EXPECT_THAT(log.Lines(),
                Contains(Info("[Vip] Vip Menu Entry Refreshed, New Vip = true, Is Member = true")).Times(1));

    log.Forget();
    UserIs(LegacyMember());
    EXPECT_EQ(entry.text(), QString::fromUtf8("\u4f1a\u5458\u4e2d\u5fc3"));
    EXPECT_FALSE(entry.icon().isNull());
    EXPECT_THAT(log.Lines(),
                Contains(Info("[Vip] Vip Menu Entry Refreshed, New Vip = false, Is Member = true")).Times(1));
}

TEST_F(VipMenuEntryActionTest, EntryBecomesVisibleWhenTheStatusChanges) {
    CZRVipMenuEntryAction entry(&menu);
    entry.setVisible(false);

    bus.HostSend(80052);

    EXPECT_TRUE(entry.isVisible());
}

TEST_F(VipMenuEntryActionTest, OtherMessagesAndTheLogoutChangeNothing) {
    const CZRVipMenuEntryAction entry(&menu);
    UserIs(NewMember());
    EXPECT_EQ(entry.text().toStdString(), "Engine");
    log.Forget();

    CZRVipManager::Singleton()->OnLogout();
    bus.HostSend(80050);
    bus.HostSend(80051);
    bus.HostSend(20100);
    channel.Forget();  // the texts of the rights

    EXPECT_EQ(entry.text().toStdString(), "Engine");
    EXPECT_THAT(log.Lines(), Not(Contains(Info(HasSubstr("Menu Entry")))));
}

TEST_F(VipMenuEntryActionTest, StatusUpdatesTheMenuWhenItIsOpen) {
    const CZRVipMenuEntryAction entry(&menu);
    menu.addAction(QStringLiteral("Other"));
    menu.popup(QPoint(0, 0));
    time.Settle();
    menu.updates = 0;

    bus.HostSend(80050);
    time.Settle();
    EXPECT_EQ(menu.updates, 0);
    bus.HostSend(80052);
    time.Settle();

    EXPECT_GT(menu.updates, 0);
    menu.close();
}

TEST_F(VipMenuEntryActionTest, EntryFollowsTheStatusWhenItsMenuIsGone) {
    auto* gone = new ZMenu;
    const auto entry = std::make_unique<CZRVipMenuEntryAction>(gone);
    entry->setParent(nullptr);
    delete gone;

    UserIs(NewMember());

    EXPECT_EQ(entry->text().toStdString(), "Engine");
}

TEST_F(VipMenuEntryActionTest, EntryNeedsNoMenu) {
    const CZRVipMenuEntryAction entry(nullptr);
    EXPECT_EQ(entry.parent(), nullptr);

    UserIs(NewMember());

    EXPECT_EQ(entry.text().toStdString(), "Engine");
}

TEST_F(VipMenuEntryActionTest, EntryLeavesTheBusWhenItIsDeleted) {
    const int before = bus.SubscriptionCount();
    auto* owner = new ZMenu;
    const QPointer<CZRVipMenuEntryAction> entry = new CZRVipMenuEntryAction(owner);
    EXPECT_EQ(bus.SubscriptionCount(), before + 1);

    delete owner;

    EXPECT_FALSE(entry);
    EXPECT_EQ(bus.SubscriptionCount(), before);
}

TEST_F(VipMenuEntryActionTest, ClickLogsAndOpensTheMembershipCentre) {
    CZRVipMenuEntryAction entry(&menu);
    log.Forget();

    entry.trigger();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Menu Entry Clicked, Jump To Membership Center, Url = "
                                              "https://www.test/centre")));
    EXPECT_THAT(links.Asked(), ElementsAre(202011732ul));
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedAsMembershipPage(kCentre)));
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipMenuEntryActionTest, ClickOpensNothingWhenTheLinkIsUnknown) {
    links.Set(202011732, "");
    CZRVipMenuEntryAction entry(&menu);
    log.Forget();

    entry.trigger();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Menu Entry Clicked, Jump To Membership Center, Url = "),
                                         Error("[Vip] Open Vip Web Page failed, strUrl is empty")));
}

TEST_F(VipMenuEntryActionTest, ClickInTheMenuOpensTheMembershipCentre) {
    for (const VipUser& user : {LegacyMember(), NewMember()}) {
        UserIs(user);
        CZRVipMenuEntryAction entry(&menu);
        menu.addAction(&entry);
        menu.popup(QPoint(0, 0));
        time.Settle();
        const QPoint middle = menu.actionGeometry(&entry).center();

        QTest::mouseMove(menu.windowHandle(), middle);
        QTest::mousePress(menu.windowHandle(), Qt::LeftButton, {}, middle);
        QTest::mouseRelease(menu.windowHandle(), Qt::LeftButton, {}, middle);
        time.Settle();

        EXPECT_THAT(urls.Opened(), SizeIs(1));
        urls.Forget();
        menu.close();
    }
}

TEST_F(VipMenuEntryActionTest, EntryOfTheOlderSystemIsPaintedByTheMenu) {
    UserIs(LegacyMember());
    const CZRVipMenuEntryAction entry(&menu);
    log.Forget();
    CRecordingDevice device;
    QPainter painter(&device);

    EXPECT_FALSE(entry.paint(&painter, OptionAt(QRect(0, 0, 300, 40)), &menu));
    EXPECT_FALSE(entry.paint(nullptr, OptionAt(QRect(0, 0, 300, 40)), &menu));

    EXPECT_THAT(device.engine.painted, IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipMenuEntryActionTest, NullPainterIsAFatalLineInTheNewerSystem) {
    UserIs(NewUser());
    const CZRVipMenuEntryAction entry(&menu);
    log.Forget();

    EXPECT_FALSE(entry.paint(nullptr, OptionAt(QRect(0, 0, 300, 40)), &menu));

    EXPECT_THAT(log.Lines(), ElementsAre(Fatal("[Vip] Vip Menu Entry Paint Failed, Painter Is Null")));
}

TEST_F(VipMenuEntryActionTest, PaintNeedsNoMenu) {
    UserIs(NewMember());
    const CZRVipMenuEntryAction entry(nullptr);
    QImage image(320, 80, QImage::Format_RGB32);
    QPainter painter(&image);

    EXPECT_TRUE(entry.paint(&painter, OptionAt(QRect(0, 0, 300, 40)), nullptr));
}

TEST_F(VipMenuEntryActionTest, PlacesAreInWholePixelsForAPillTextOfSixty) {
    UserIs(NewMember());
    language.SetText(361769, TextOfWidth(60, PillFont()));
    const CZRVipMenuEntryAction entry(&menu);

    const std::vector<Painted> painted = PaintedBy(entry, QRect(0, 100, 300, 40));

    ASSERT_THAT(painted, SizeIs(5));
    EXPECT_EQ(painted[0].kind, Painted::kPicture);
    EXPECT_EQ(painted[0].rect, QRectF(0, 108, 300, 32));
    EXPECT_EQ(painted[0].text.toStdString(), "230x32");
    EXPECT_EQ(painted[0].clip, QRectF(0, 108, 300, 32));
    EXPECT_TRUE(painted[0].smooth);

    EXPECT_EQ(painted[1].kind, Painted::kPicture);
    EXPECT_EQ(painted[1].rect, QRectF(8, 116, 16, 16));
    EXPECT_EQ(painted[1].text.toStdString(), "16x16");
    EXPECT_TRUE(painted[1].clip.isNull());

    EXPECT_EQ(painted[2].kind, Painted::kShape);
    EXPECT_EQ(painted[2].rect, QRectF(215, 115, 76, 18));
    EXPECT_EQ(painted[2].text.toStdString(), "no pen, radius 4");
    EXPECT_TRUE(painted[2].smooth);

    EXPECT_EQ(painted[3].kind, Painted::kText);
    EXPECT_NEAR(painted[3].rect.left(), 223, 0.5);
    EXPECT_NEAR(painted[3].rect.width(), 60, 0.5);
    EXPECT_EQ(painted[3].font, PillFont());

    EXPECT_EQ(painted[4].kind, Painted::kText);
    EXPECT_EQ(painted[4].rect.left(), 32);
    EXPECT_EQ(painted[4].text.toStdString(), "Engine");
    EXPECT_EQ(painted[4].font, TextFont());
    const QFontMetrics metrics(TextFont());
    EXPECT_NEAR(painted[4].rect.top(), 108 + 16 - metrics.height() / 2.0 + metrics.ascent(), 1.0);
    const QFontMetrics pill(PillFont());
    EXPECT_NEAR(painted[3].rect.top(), 115 + 9 - pill.height() / 2.0 + pill.ascent(), 1.0);
}

TEST_F(VipMenuEntryActionTest, PlacesFollowTheRow) {
    UserIs(NewMember());
    language.SetText(361769, TextOfWidth(45, PillFont()));
    const CZRVipMenuEntryAction entry(&menu);

    const std::vector<Painted> painted = PaintedBy(entry, QRect(7, 3, 231, 55));

    ASSERT_THAT(painted, SizeIs(5));
    EXPECT_EQ(painted[0].rect, QRectF(7, 11, 231, 32));
    EXPECT_EQ(painted[1].rect, QRectF(15, 19, 16, 16));
    EXPECT_EQ(painted[2].rect, QRectF(237 - 45 - 24, 18, 61, 18));
    EXPECT_EQ(painted[4].rect.left(), 39);
}

TEST_F(VipMenuEntryActionTest, TextEndsInDotsAt206ForAPillTextOfSixty) {
    UserIs(NewMember());
    language.SetText(361769, TextOfWidth(60, PillFont()));
    for (const int width : {175, 176}) {
        const QString text = TextOfWidth(width, TextFont());
        language.SetText(362209, text);
        const CZRVipMenuEntryAction entry(&menu);

        const std::vector<Painted> painted = PaintedBy(entry, QRect(0, 0, 300, 40));

        ASSERT_THAT(painted, SizeIs(5));
        EXPECT_EQ(painted[4].text, QFontMetrics(TextFont()).elidedText(text, Qt::ElideRight, 175));
        EXPECT_EQ(painted[4].text == text, width == 175);
        EXPECT_LE(painted[4].rect.right(), 207);
        EXPECT_TRUE(painted[4].clip.isNull() || painted[4].clip.right() == 207);
    }
}

TEST_F(VipMenuEntryActionTest, RightToLeftTextEndsAt206ForAPillTextOfSixty) {
    UserIs(NewMember());
    language.SetText(361769, TextOfWidth(60, PillFont()));
    language.SetText(362209, QString::fromUtf8("\u0645\u0631\u062d\u0628\u0627"));
    const CZRVipMenuEntryAction entry(&menu);

    const std::vector<Painted> painted = PaintedBy(entry, QRect(0, 0, 300, 40));

    ASSERT_THAT(painted, SizeIs(Ge(5u)));
    for (size_t i = 4; i < painted.size(); ++i) {
        EXPECT_GE(painted[i].rect.left(), 32);
        EXPECT_LE(painted[i].rect.right(), 207);
    }
}

TEST_F(VipMenuEntryActionTest, TextIsSkippedWhenThePillLeavesNoRoom) {
    UserIs(NewMember());
    const CZRVipMenuEntryAction entry(&menu);
    // The pill's left edge is 41 for one pixel of room, and 40 for none.
    for (const int left : {41, 40, 39}) {
        language.SetText(361769, TextOfWidth(299 - 24 - left, PillFont()));

        const std::vector<Painted> painted = PaintedBy(entry, QRect(0, 0, 300, 40));

        ASSERT_THAT(painted, SizeIs(Ge(4u))) << left;
        EXPECT_EQ(painted[2].rect.left(), left);
        EXPECT_EQ(painted[3].kind, Painted::kText);
        EXPECT_EQ(
            painted.size(),
            left == 41 && !QFontMetrics(TextFont()).elidedText(QStringLiteral("Engine"), Qt::ElideRight, 1).isEmpty()
                ? 5u
                : 4u);
    }
}

TEST_F(VipMenuEntryActionTest, HardTextsStayWithinTheBanner) {
    UserIs(NewMember());
    const CZRVipMenuEntryAction plain(&menu);
    const QImage without = Look(plain);
    for (const HardText& hard : HardTexts()) {
        for (const unsigned int id : {361769u, 362209u}) {
            language = CScriptedLanguage();
            language.SetText(id, hard.text);
            const CZRVipMenuEntryAction entry(&menu);

            const QImage look = Look(entry);

            const QRect banner(10, 28, 300, 32);
            int outside = 0;
            for (int y = 0; y < look.height(); ++y) {
                for (int x = 0; x < look.width(); ++x) {
                    const bool isText = id == 361769 || banner.contains(x, y);
                    outside += !isText && look.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
                }
            }
            EXPECT_EQ(outside, 0) << hard.name;
        }
    }
}

struct ColorCase {
    const char* name;
    bool isMember;
    bool selected;
    const char* main;
    const char* pill;
    const char* pillText;
    const char* text;
    const char* picture;
};

std::string ColorCaseName(const TestParamInfo<ColorCase>& info) {
    return info.param.name;
}

class VipMenuEntryActionColorTest : public VipMenuEntryActionTest, public WithParamInterface<ColorCase> {};

TEST_P(VipMenuEntryActionColorTest, ColoursTextsAndPictureDependOnTheMembership) {
    UserIs(GetParam().isMember ? NewMember() : NewUser());
    const CZRVipMenuEntryAction entry(&menu);
    for (const auto theme : host::CThemeControl::kThemes) {
        SetTheme(theme);

        const std::vector<Painted> painted = PaintedBy(entry, QRect(0, 0, 300, 40), GetParam().selected);

        const size_t hover = GetParam().selected ? 1 : 0;
        ASSERT_THAT(painted, SizeIs(5 + hover));
        if (GetParam().selected) {
            EXPECT_EQ(painted[1].kind, Painted::kFill);
            EXPECT_EQ(painted[1].rect, QRectF(0, 8, 300, 32));
            EXPECT_EQ(painted[1].color, Named("ct_bg_hover"));
            EXPECT_EQ(painted[1].clip, QRectF(0, 8, 300, 32));
        }
        EXPECT_EQ(painted[2 + hover].color, Named(GetParam().pill));
        EXPECT_EQ(painted[3 + hover].text.toStdString(), GetParam().text);
        EXPECT_EQ(painted[3 + hover].color, Named(GetParam().pillText));
        EXPECT_EQ(painted[4 + hover].color, Named(GetParam().main));
    }
}

TEST_P(VipMenuEntryActionColorTest, PixelsShowPictureIconAndPill) {
    UserIs(GetParam().isMember ? NewMember() : NewUser());
    const CZRVipMenuEntryAction entry(&menu);

    const QImage look = Look(entry, GetParam().selected);

    // the picture, with the hover over it, between text and pill
    QImage expected(300, 32, QImage::Format_RGB32);
    expected.fill(Qt::gray);
    {
        QPainter painter(&expected);
        painter.drawPixmap(QRect(0, 0, 300, 32),
                           zr_ui_res::TResource<QPixmap>(QString::fromLatin1(GetParam().picture)).value(1.0));
        if (GetParam().selected) {
            painter.fillRect(0, 0, 300, 32, Named("ct_bg_hover"));
        }
    }
    for (const QPoint& point : {QPoint(2, 16), QPoint(150, 2), QPoint(150, 29), QPoint(297, 16)}) {
        EXPECT_EQ(look.pixelColor(QPoint(10, 28) + point), expected.pixelColor(point));
    }
    // the corners are rounded, and nothing is painted around the banner
    EXPECT_NE(look.pixelColor(10, 28), expected.pixelColor(0, 0));
    QImage rounded(320, 80, QImage::Format_RGB32);
    rounded.fill(Qt::gray);
    {
        QPainter painter(&rounded);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath path;
        path.addRoundedRect(QRect(10, 28, 300, 32), 2, 2);
        painter.setClipPath(path);
        painter.drawPixmap(QRect(10, 28, 300, 32),
                           zr_ui_res::TResource<QPixmap>(QString::fromLatin1(GetParam().picture)).value(1.0));
        if (GetParam().selected) {
            painter.fillRect(10, 28, 300, 32, Named("ct_bg_hover"));
        }
    }
    for (const QPoint& corner : {QPoint(10, 28), QPoint(304, 28), QPoint(10, 54), QPoint(304, 54)}) {
        EXPECT_EQ(look.copy(QRect(corner, QSize(6, 6))), rounded.copy(QRect(corner, QSize(6, 6))));
    }
    EXPECT_EQ(look.pixelColor(150, 27), QColor(Qt::gray));
    EXPECT_EQ(look.pixelColor(150, 60), QColor(Qt::gray));
    EXPECT_EQ(look.pixelColor(9, 44), QColor(Qt::gray));
    EXPECT_EQ(look.pixelColor(310, 44), QColor(Qt::gray));
    // the pill, in its padding
    EXPECT_EQ(look.pixelColor(310 - 9 - 4, 44), Named(GetParam().pill));
    // the icon
    {
        ZCustomColorSvg icon;
        icon.setFile(ZResource::icon_engine_16);
        icon.setColor(Named(GetParam().main));
        QPainter painter(&expected);
        icon.renderer()->render(ZWidgetState::normal, &painter, QRectF(8, 8, 16, 16));
    }
    EXPECT_EQ(look.copy(18, 36, 16, 16), expected.copy(8, 8, 16, 16));
}

INSTANTIATE_TEST_SUITE_P(All, VipMenuEntryActionColorTest,
                         Values(ColorCase{"Member", true, false, "ck_orange850", "ck_gray750", "ck_champagne300",
                                          "Explore", "img_bg_engine_banner_230x32_normal"},
                                ColorCase{"MemberSelected", true, true, "ck_orange850", "ck_gray750", "ck_champagne300",
                                          "Explore", "img_bg_engine_banner_230x32_normal"},
                                ColorCase{"NonMember", false, false, "ct_text_white", "ck_gray100", "ck_gray950",
                                          "Unlock", "img_bg_noengine_banner_230x32_normal"},
                                ColorCase{"NonMemberSelected", false, true, "ct_text_white", "ck_gray100", "ck_gray950",
                                          "Unlock", "img_bg_noengine_banner_230x32_normal"}),
                         ColorCaseName);

TEST_F(VipMenuEntryActionTest, PillTextsComeFromTheLanguage) {
    language.SetText(361769, QStringLiteral("Look"));
    language.SetText(361768, QStringLiteral("Open"));
    UserIs(NewMember());
    const CZRVipMenuEntryAction entry(&menu);
    EXPECT_EQ(PaintedBy(entry, QRect(0, 0, 300, 40))[3].text.toStdString(), "Look");

    UserIs(NewUser());
    EXPECT_EQ(PaintedBy(entry, QRect(0, 0, 300, 40))[3].text.toStdString(), "Open");
}

TEST_F(VipMenuEntryActionTest, PicturesHaveThePixelsOfTheDevice) {
    UserIs(NewMember());
    const CZRVipMenuEntryAction entry(&menu);

    const QImage look = Look(entry, false, 2);

    QImage expected(600, 64, QImage::Format_RGB32);
    expected.setDevicePixelRatio(2);
    expected.fill(Qt::gray);
    {
        QPainter painter(&expected);
        painter.drawPixmap(QRect(0, 0, 300, 32),
                           zr_ui_res::TResource<QPixmap>(ZResource::img_bg_engine_banner_230x32_normal).value(2.0));
        ZCustomColorSvg icon;
        icon.setFile(ZResource::icon_engine_16);
        icon.setColor(Named("ck_orange850"));
        icon.renderer()->render(ZWidgetState::normal, &painter, QRectF(8, 8, 16, 16));
    }
    EXPECT_EQ(look.copy(20 + 16, 56 + 4, 32, 56), expected.copy(16, 4, 32, 56));
}

TEST_F(VipMenuEntryActionTest, EntryIsSeenInAMenuAsItPaintsItself) {
    UserIs(NewMember());
    CZRVipMenuEntryAction entry(&menu);
    menu.addAction(&entry);
    menu.popup(QPoint(0, 0));
    time.Settle();

    const QRect row = menu.actionGeometry(&entry);
    EXPECT_EQ(row.height(), 40);
    EXPECT_GE(row.width(), 230);
    const QImage look = menu.grab().toImage();
    EXPECT_EQ(look.pixelColor(row.right() - 9 - 4, row.top() + 8 + 16), Named("ck_gray750"));
    menu.close();
}

}  // namespace
