#include "AIChat/View/ZRAIChatWebTitleBar.h"

#include <gmock/gmock.h>

#include <QLayout>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include "framework/assertion.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ThemeControl.h"
#include "ui/ThemePalette.h"
#include "ui/ZButton.h"
#include "ui/ZIconButton.h"
#include "ui/ZLabel.h"
#include "ui/ZResource.h"
#include "ui/ZText.h"

using namespace ::testing;

namespace {

class COpenBar : public CZRAIChatWebTitleBar {
public:
    using CZRAIChatWebTitleBar::closeButton;
};

/// A title bar in a window, before initUi.
class AIChatTitleBarTest : public ScriptedHostTest {
protected:
    void Build() {
        host::CThemeControl::Set(zr_ui_theme::Manager::kThemeLight);
        bus.Forget();
        window.resize(480, 100);
        bar = new COpenBar;
        bar->setParent(&window);
        bar->initUi();
        bar->resize(480, bar->height());
        window.show();
        time.Settle();
    }

    ZIconButton* Pin() const {
        for (auto* button : bar->findChildren<ZIconButton*>()) {
            if (button->isCheckable()) {
                return button;
            }
        }
        return nullptr;
    }
    ZText* Title() const { return bar->findChild<ZText*>(QStringLiteral("CZRAIChatTitleBarTitle")); }
    ZLabel* Status() const { return bar->findChild<ZLabel*>(); }

    void Report(int status, const char* desc, const char* tips = "") {
        bar->SetDescAndTips(ZRAIChatWebNetWorkStatus(status), QString::fromUtf8(desc), QString::fromUtf8(tips));
        time.Settle();
    }

    std::string Shown() const {
        return (Title()->isHidden() ? std::string() : "title") +
               (Status()->isHidden() ? std::string() : "status " + Status()->text().toStdString());
    }

    QImage Look() { return Status()->grab().toImage().convertToFormat(QImage::Format_RGB32); }

    static QColor Color(const char* name) {
        return host::CThemePalette::Of(zr_ui_theme::Manager::instance()->getTheme()).Color(name);
    }

    QWidget window;
    COpenBar* bar = nullptr;
};

TEST_F(AIChatTitleBarTest, TitleIsThatOfTheEdition) {
    Build();
    EXPECT_EQ(Title()->text(), QStringLiteral("KestrelAI"));
    EXPECT_TRUE(Title()->testAttribute(Qt::WA_StyledBackground));
    delete bar;
    environment.SetVelora(true);
    Build();
    EXPECT_EQ(Title()->text(), QStringLiteral("velora AI"));
    delete bar;
    language.SetText(320268, QStringLiteral("V"));
    Build();
    EXPECT_EQ(Title()->text(), QStringLiteral("V"));
    delete bar;
    environment.SetVelora(false);
    language.SetText(320267, QStringLiteral("K"));
    Build();
    EXPECT_EQ(Title()->text(), QStringLiteral("K"));
}

TEST_F(AIChatTitleBarTest, BarHasPinTitleAndAHiddenStatusWhenItIsNew) {
    Build();

    EXPECT_EQ(Shown(), "title");
    EXPECT_EQ(Status()->height(), 16);
    EXPECT_EQ(Pin()->size(), QSize(16, 16));
    EXPECT_EQ(Pin()->mapTo(bar, QPoint()).x(), 12);
    EXPECT_FALSE(Pin()->isChecked());
    EXPECT_EQ(Pin()->accessibleName(), QStringLiteral("Keep on top"));
    const QLayout* row = Title()->parentWidget()->layout();
    ASSERT_EQ(row->count(), 7);
    EXPECT_EQ(row->spacing(), 0);
    EXPECT_EQ(row->contentsMargins(), QMargins());
    EXPECT_EQ(row->itemAt(0)->sizeHint().width(), 12);
    EXPECT_TRUE(row->itemAt(1)->layout());
    EXPECT_EQ(row->itemAt(2)->sizeHint().width(), 80);
    EXPECT_TRUE(row->itemAt(3)->spacerItem()->expandingDirections() & Qt::Horizontal);
    EXPECT_EQ(row->itemAt(4)->widget(), Title());
    EXPECT_EQ(row->itemAt(5)->widget(), Status());
    EXPECT_TRUE(row->itemAt(6)->spacerItem()->expandingDirections() & Qt::Horizontal);
}

TEST_F(AIChatTitleBarTest, PinIsNamedInTheLanguageOfTheClient) {
    language.SetText(900016, QStringLiteral("Pin"));
    Build();
    EXPECT_EQ(Pin()->accessibleName(), QStringLiteral("Pin"));
}

TEST_F(AIChatTitleBarTest, ReportIsShownByTheTable) {
    struct Row {
        int status;
        const char* desc;
        const char* shown;
        const char* dot;
        ZLabel::ZrStyle style;
    };
    const Row rows[] = {{2, "Offline", "status   Offline", "ck_red400", ZLabel::kFailure},
                        {3, "Slow", "status   Slow", "ck_orange500", ZLabel::kWarning},
                        {4, "Wait", "status   Wait", "ck_grayblue500", ZLabel::kNeutral},
                        {1, "Good", "title", nullptr, {}},
                        {2, "", "title", nullptr, {}},
                        {4, "", "title", nullptr, {}}};
    Build();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shown);
        Report(row.status, row.desc);
        EXPECT_EQ(Shown(), row.shown);
        if (row.dot) {
            const QImage look = Look();
            EXPECT_EQ(look.pixelColor(5, 7), Color(row.dot));
            ZLabel like(Status()->text());
            like.setZrBgStyle(ZLabel::kBgPlate);
            like.setZrStyle(row.style);
            like.setCustomMargin(4);
            like.resize(look.size());
            const QRect text(8, 0, look.width() - 8, look.height());
            EXPECT_EQ(look.copy(text), like.grab().toImage().convertToFormat(look.format()).copy(text));
        }
    }
}

TEST_F(AIChatTitleBarTest, DotIsThreeByThreePixelsWhenItIsPainted) {
    Build();
    Report(2, "Offline");
    const QImage look = Look();

    // Four pixels of an edge and the ones outside of it.
    for (const QPoint& inside : {QPoint(5, 7), QPoint(4, 7), QPoint(6, 7), QPoint(5, 6), QPoint(5, 8)}) {
        EXPECT_NE(look.pixelColor(inside), look.pixelColor(1, 1)) << inside.x() << ',' << inside.y();
    }
    for (const QPoint& outside : {QPoint(3, 7), QPoint(7, 7), QPoint(5, 5), QPoint(5, 9)}) {
        EXPECT_EQ(look.pixelColor(outside), look.pixelColor(1, 1)) << outside.x() << ',' << outside.y();
    }
    QImage expected(look.size(), look.format());
    expected.fill(look.pixelColor(1, 1));
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Color("ck_red400"));
    painter.drawEllipse(QRect(4, 6, 3, 3));
    EXPECT_EQ(look.copy(2, 4, 6, 7), expected.copy(2, 4, 6, 7));
}

TEST_F(AIChatTitleBarTest, DotKeepsItsColourUntilTheNextReportWhenTheThemeChanges) {
    Build();
    Report(2, "Offline");
    const QColor light = Color("ck_red400");
    EXPECT_EQ(Look().pixelColor(5, 7), light);

    host::CThemeControl::Set(zr_ui_theme::Manager::kThemeBlack);
    time.Settle();
    ASSERT_NE(Color("ck_red400"), light);
    EXPECT_EQ(Look().pixelColor(5, 7), light);

    Report(2, "Offline");
    EXPECT_EQ(Look().pixelColor(5, 7), Color("ck_red400"));
    bus.Forget();
}

TEST_F(AIChatTitleBarTest, UnknownStatusIsAssertedAndShownAsFailedWhenItHasADescription) {
    Build();
    Report(7, "Odd");

    EXPECT_THAT(log.Assertions(), ElementsAre(FieldsAre(FrameWork::kAssetDefensive, "", "ZRGrowth", _, _, "false")));
    EXPECT_EQ(Shown(), "status   Odd");
    EXPECT_EQ(Look().pixelColor(5, 7), Color("ck_red400"));
    EXPECT_THAT(log.Lines(), Contains(Info("[AIChat] SetDescAndTips, status = 7, desc = Odd, tips = ")));

    log.Forget();
    Report(0, "");
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(AIChatTitleBarTest, ReportIsLoggedAndElseIgnoredWhenTheBarIsNotBuilt) {
    COpenBar unbuilt;

    unbuilt.SetDescAndTips(ZRAIChatNetworkPoor, QStringLiteral("d"), QStringLiteral("t"));
    unbuilt.SetNewSessionEnable(true);
    unbuilt.Clear();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[AIChat] SetDescAndTips, status = 3, desc = d, tips = t")));
}

TEST_F(AIChatTitleBarTest, TipsAreShownUntilAReportWithoutThem) {
    Build();
    Report(2, "Offline", "Check the cable");
    EXPECT_EQ(Status()->toolTip(), QStringLiteral("Check the cable"));

    // A good status touches neither.
    Report(1, "Good", "other");
    EXPECT_EQ(Status()->toolTip(), QStringLiteral("Check the cable"));
    Report(3, "Slow", "<b>x</b>");
    EXPECT_EQ(Status()->toolTip(), QStringLiteral("<p>&lt;b&gt;x&lt;/b&gt;</p>"));

    Report(3, "Slow");
    EXPECT_EQ(Status()->toolTip(), QString());
}

TEST_F(AIChatTitleBarTest, StatusLiesOnAPlateInTheColourOfTheWindowFourPixelsFromItsText) {
    Build();
    Report(2, "x");

    EXPECT_EQ(Look().pixelColor(0, 0), Color("surface"));
    ZLabel other(Status()->text());
    other.setCustomMargin(4);
    EXPECT_EQ(Status()->sizeHint(), other.sizeHint());
}

TEST_F(AIChatTitleBarTest, TitleHasTheStyleOfAWindowTitle) {
    Build();
    ZText other(Title()->text());
    other.setZrStyle(ZText::kWindowTitle);

    const auto look = [](ZText& text) {
        text.resize(text.sizeHint());
        return text.grab().toImage();
    };
    other.setParent(&window);
    EXPECT_EQ(look(*Title()), look(other));
    other.setZrStyle(ZText::kBody);
    EXPECT_NE(look(*Title()), look(other));
}

TEST_F(AIChatTitleBarTest, PinHasItsTwoIconsWithinItsMarginsAndNoBackground) {
    Build();
    ZIconButton other(&window);
    other.setIconButtonSize(ZIconButton::kSmall);
    other.setSvgIconName(ZResource::btn_flyouts_pin_12);
    other.setCheckedSvgIconName(ZResource::icon_pushpin_f_12);
    other.setIconColorStyle(ZIconColorStyle::heading);
    other.setIconMargins(2);
    other.setHoverBackground(false);
    other.setCheckable(true);
    Pin()->clearFocus();
    for (const bool checked : {false, true}) {
        for (const bool pressed : {false, true}) {
            for (ZIconButton* button : {Pin(), &other}) {
                button->setChecked(checked);
                button->setDown(pressed);
            }
            EXPECT_EQ(Pin()->grab().toImage(), other.grab().toImage()) << checked << pressed;
        }
    }
}

TEST_F(AIChatTitleBarTest, PinIsInTheMiddleOfItsRowTwelvePixelsFromTheEdge) {
    Build();
    const QRect place(Pin()->mapTo(bar, QPoint()), Pin()->size());

    EXPECT_EQ(place.x(), 12);
    EXPECT_EQ(place.y() + place.height() / 2, bar->height() / 2);
    const QLayout* row = Pin()->parentWidget()->layout()->itemAt(1)->layout();
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(row->contentsMargins().isNull());
    EXPECT_EQ(row->spacing(), 0);
}

TEST_F(AIChatTitleBarTest, PinIsReportedWhenItIsClicked) {
    Build();
    QSignalSpy pinned(bar, &CZRAIChatWebTitleBar::PinBtnClicked);

    Click(Pin());
    Click(Pin());

    ASSERT_EQ(pinned.count(), 2);
    EXPECT_EQ(pinned[0], QVariantList{true});
    EXPECT_EQ(pinned[1], QVariantList{false});
}

TEST_F(AIChatTitleBarTest, ClearUnpinsAndShowsTheTitle) {
    Build();
    Report(2, "Offline", "tip");
    Click(Pin());
    QSignalSpy pinned(bar, &CZRAIChatWebTitleBar::PinBtnClicked);

    bar->Clear();

    ASSERT_EQ(pinned.count(), 1);
    EXPECT_EQ(pinned[0], QVariantList{false});
    EXPECT_FALSE(Pin()->isChecked());
    EXPECT_EQ(Shown(), "title");

    bar->Clear();
    EXPECT_EQ(pinned.count(), 2);
}

TEST_F(AIChatTitleBarTest, CloseIsReportedAtThePressOfAnyButtonAndTheClickNeverComes) {
    Build();
    QSignalSpy closed(bar, &CZRAIChatWebTitleBar::CloseButtonClicked);
    QSignalSpy clicked(bar->closeButton(), &ZIconButton::clicked);
    const QPoint place = bar->closeButton()->mapTo(&window, bar->closeButton()->rect().center());

    int presses = 0;
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        QTest::mousePress(window.windowHandle(), button, {}, place);
        EXPECT_EQ(closed.count(), ++presses);
        QTest::mouseRelease(window.windowHandle(), button, {}, place);
        EXPECT_EQ(closed.count(), presses);
    }
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(AIChatTitleBarTest, CloseButtonWorksByKeyboardWhenItHasTheFocus) {
    Build();
    QSignalSpy clicked(bar->closeButton(), &ZIconButton::clicked);
    bar->closeButton()->setFocus();

    QTest::keyClick(bar->closeButton(), Qt::Key_Space);

    EXPECT_EQ(clicked.count(), 1);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(AIChatTitleBarTest, PressOnAnotherWidgetIsNoCloseWhenItIsFiltered) {
    Build();
    QSignalSpy closed(bar, &CZRAIChatWebTitleBar::CloseButtonClicked);
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, {});

    EXPECT_FALSE(bar->eventFilter(Status(), &press));
    EXPECT_FALSE(bar->eventFilter(Pin(), &press));

    EXPECT_EQ(closed.count(), 0);
}

TEST_F(AIChatTitleBarTest, WindowIsDraggedOnlyOutsideOfButtonsAndLabels) {
    Build();
    ZButton button;
    ZIconButton iconButton;
    ZLabel label;
    QWidget other;

    EXPECT_FALSE(bar->isDraggable(&button));
    EXPECT_FALSE(bar->isDraggable(&iconButton));
    EXPECT_FALSE(bar->isDraggable(&label));
    EXPECT_TRUE(bar->isDraggable(&other));
    EXPECT_TRUE(bar->isDraggable(Title()));
    EXPECT_TRUE(bar->isDraggable(bar));
    EXPECT_TRUE(bar->isDraggable(nullptr));
}

TEST_F(AIChatTitleBarTest, SignalsAndSlotAreDeclaredInTheirOrder) {
    const QMetaObject& meta = CZRAIChatWebTitleBar::staticMetaObject;
    std::vector<std::string> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.push_back(meta.method(i).methodSignature().toStdString());
    }
    EXPECT_THAT(names, ElementsAre("NewSessionBtnClicked()", "PinBtnClicked(bool)", "CloseButtonClicked()",
                                   "OnPinBtnClicked()"));
}

}  // namespace
