#include "Vip/View/ZRVipMaskWidget.h"

#include <QLabel>
#include <QMetaMethod>
#include <QPainter>
#include <QVBoxLayout>

#include "Vip/VipWidgetTest.h"
#include "ui/ZBackgroundBlurWidget.h"
#include "ui/ZButton.h"
#include "ui/ZMultilineText.h"
#include "ui/ZText.h"

using namespace ::testing;
using zrstdui::image_blur::WidgetPainterBufferSource;

namespace {

constexpr int kCentred = Qt::AlignCenter;

/// A signal as it was emitted.
struct Clicked {
    int access = 0;
    int dataType = 0;
    QWidget* window = nullptr;
    size_t reportsBefore = 0;
};

/// A widget with hard edges, which a blur changes, in a colour of its own.
class CStripes : public QWidget {
public:
    CStripes(const QColor& color, QWidget* parent) : QWidget(parent), m_color(color) {}

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        for (int x = 0; x < width(); x += 24) {
            painter.fillRect(x, 0, 12, height(), m_color);
        }
    }

private:
    QColor m_color;
};

class VipMaskWidgetTest : public VipWidgetTest {
protected:
    VipMaskWidgetTest() {
        back.resize(500, 300);
        other.resize(500, 300);
        other.hide();
    }

    CZRVipLockedMaskWidget* AddLocked(int type = ZRVipMaskLocked, EnPremiumAccess access = kMarketRight,
                                      ZRVipUIDataType dataType = ZRVipUIDataMain) {
        auto* mask = new CZRVipLockedMaskWidget(ZRVipMaskType(type), access, dataType, QStringLiteral("page"), &window,
                                                source, radiusTheme3, radiusOther, popupStyle);
        mask->setGeometry(kPlace);
        Record(*mask);
        return mask;
    }

    CZRVipExclusiveMaskWidget* AddExclusive(EnPremiumAccess access = kMarketRight,
                                            ZRVipUIDataType dataType = ZRVipUIDataMain) {
        auto* mask = new CZRVipExclusiveMaskWidget(access, dataType, QStringLiteral("page"), &window, source,
                                                   radiusTheme3, radiusOther, popupStyle);
        mask->setGeometry(kPlace);
        return mask;
    }

    void Record(CZRVipLockedMaskWidget& mask) {
        QObject::connect(&mask, &CZRVipLockedMaskWidget::ActionButtonClicked,
                         [this](EnPremiumAccess access, ZRVipUIDataType dataType, const QPointer<QWidget>& parent) {
                             clicked.push_back({int(access), int(dataType), parent, reports.Names().size()});
                             if (whenClicked) {
                                 whenClicked();
                             }
                         });
    }

    static ZBackgroundBlurWidget* BlurOf(const QWidget& mask) { return mask.findChild<ZBackgroundBlurWidget*>(); }
    static ZMultilineText* TextOf(const QWidget& mask) {
        return mask.findChild<ZMultilineText*>(QStringLiteral("CZRVipMaskText"));
    }
    static ZButton* ButtonOf(const QWidget& mask) {
        return mask.findChild<ZButton*>(QStringLiteral("CZRVipActionButton"));
    }
    static QLabel* MarkOf(const QWidget& mask) { return mask.findChild<QLabel*>(); }
    static ZText* LineOf(const QWidget& mask) { return mask.findChild<ZText*>(QStringLiteral("CZRVipTextBold")); }

    /// The strip of the mask that has nothing but its blur.
    QImage Strip() { return window.grab(kStrip).toImage(); }

    /// The same strip under a blur widget in the mask's place with these settings.
    QImage Expected(double radius, const char* color, const WidgetPainterBufferSource& blurred) {
        QWidget holder(&window);
        holder.setGeometry(kPlace);
        ZBackgroundBlurWidget blur(&holder);
        blur.resize(kPlace.size());
        blur.setBlurRadius(radius);
        blur.setBlendColor(zr_ui_res::TResource<QColor>(QString::fromLatin1(color)));
        blur.setBlurQuality(0);
        blur.setPainterBufferSource(blurred);
        holder.show();
        time.Settle();
        return Strip();
    }

    const QRect kPlace{20, 20, 400, 160};
    const QRect kStrip{20, 20, 400, 20};
    CStripes back{Qt::red, &window};
    CStripes other{Qt::blue, &window};
    WidgetPainterBufferSource source{&back};
    double radiusTheme3 = 0;
    double radiusOther = 30;
    bool popupStyle = false;
    std::vector<Clicked> clicked;
    std::function<void()> whenClicked;
};

constexpr const char* kColor = "style_skin_premium/foreground";
constexpr const char* kPopupColor = "style_skin_premium/popwnd_foreground";
constexpr const char* kMarketEvent = "ClickPremiumMarketEntrance";
constexpr const char* kFunctionEvent = "ClickPremiumFunctionEntrance";

TEST_F(VipMaskWidgetTest, LockedMaskHasOneSignalAndOneProtectedSlot) {
    const QMetaObject& object = CZRVipLockedMaskWidget::staticMetaObject;
    EXPECT_EQ(object.superClass(), &CZRVipBaseWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(object),
                ElementsAre("signal ActionButtonClicked(EnPremiumAccess access, ZRVipUIDataType dataType, "
                            "QPointer<QWidget> activeVipPopupParent)",
                            "slot OnActionButtonClicked()"));
    EXPECT_EQ(object.method(object.methodOffset() + 1).access(), QMetaMethod::Protected);
}

TEST_F(VipMaskWidgetTest, ExclusiveMaskHasNoSignalsOrSlotsOfItsOwn) {
    EXPECT_EQ(CZRVipExclusiveMaskWidget::staticMetaObject.superClass(), &CZRVipBaseWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(CZRVipExclusiveMaskWidget::staticMetaObject), IsEmpty());
}

TEST_F(VipMaskWidgetTest, LockedMaskHasTextAndButtonInTheMiddleOfItsBlur) {
    const CZRVipLockedMaskWidget* mask = AddLocked();

    EXPECT_EQ(mask->objectName().toStdString(), "CZRVipMaskBg");
    EXPECT_TRUE(mask->testAttribute(Qt::WA_StyledBackground));
    EXPECT_EQ(mask->minimumHeight(), 100);
    EXPECT_EQ(mask->minimumWidth(), 0);
    EXPECT_EQ(mask->parentWidget(), &window);
    ASSERT_TRUE(qobject_cast<QVBoxLayout*>(mask->layout()));
    EXPECT_EQ(LayoutOf(*mask->layout()), "0,0,0,0 0");
    ASSERT_EQ(mask->layout()->count(), 1);
    EXPECT_EQ(mask->layout()->itemAt(0)->widget(), BlurOf(*mask));
    ASSERT_TRUE(qobject_cast<QVBoxLayout*>(BlurOf(*mask)->layout()));
    EXPECT_EQ(LayoutOf(*BlurOf(*mask)->layout()), "8,0,8,0 0");
    EXPECT_THAT(ItemsOf(*BlurOf(*mask)->layout()),
                ElementsAre("stretch", "CZRVipMaskText at " + std::to_string(kCentred), "space 0x16",
                            "CZRVipActionButton at " + std::to_string(kCentred), "stretch"));
    EXPECT_EQ(ButtonOf(*mask)->minimumSize(), QSize(150, 28));
    EXPECT_EQ(ButtonOf(*mask)->maximumSize(), QSize(150, 28));
    EXPECT_EQ(ButtonOf(*mask)->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
}

class VipMaskWidgetCompactTest : public VipMaskWidgetTest, public WithParamInterface<int> {};

TEST_P(VipMaskWidgetCompactTest, OtherTypesHaveTheButtonAlone) {
    SetRecord(kMarketRight, RecordOf(2));
    log.Forget();
    const CZRVipLockedMaskWidget* mask = AddLocked(GetParam());

    EXPECT_EQ(mask->minimumHeight(), 64);
    EXPECT_EQ(TextOf(*mask), nullptr);
    EXPECT_THAT(ItemsOf(*BlurOf(*mask)->layout()),
                ElementsAre("stretch", "CZRVipActionButton at " + std::to_string(kCentred), "stretch"));
    EXPECT_EQ(ButtonOf(*mask)->text().toStdString(), "Main button");
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Refresh Vip Locked Mask UI, Access = 98, Data Type = 1, "
                                              "Title Text = Main title, Btn Text = Main button, Btn URL ID = 301, "
                                              "Other Info = {other}")));
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetCompactTest, Values(-1, 1, 2, 3));

TEST_F(VipMaskWidgetTest, ExclusiveMaskHasMarkAndLineInTheMiddleOfItsBlur) {
    const CZRVipExclusiveMaskWidget* mask = AddExclusive();

    EXPECT_EQ(mask->objectName().toStdString(), "CZRVipMaskBg");
    EXPECT_TRUE(mask->testAttribute(Qt::WA_StyledBackground));
    EXPECT_EQ(mask->minimumHeight(), 64);
    EXPECT_EQ(mask->parentWidget(), &window);
    EXPECT_EQ(LayoutOf(*mask->layout()), "0,0,0,0 0");
    ASSERT_EQ(mask->layout()->count(), 1);
    EXPECT_EQ(mask->layout()->itemAt(0)->widget(), BlurOf(*mask));
    ASSERT_TRUE(qobject_cast<QVBoxLayout*>(BlurOf(*mask)->layout()));
    EXPECT_EQ(LayoutOf(*BlurOf(*mask)->layout()), "8,0,8,0 0");
    EXPECT_THAT(ItemsOf(*BlurOf(*mask)->layout()),
                ElementsAre("stretch", "QLabel at " + std::to_string(kCentred), "space 0x4",
                            "CZRVipTextBold at " + std::to_string(kCentred), "stretch"));
    EXPECT_TRUE(MarkOf(*mask)->hasScaledContents());
    EXPECT_EQ(LineOf(*mask)->minimumHeight(), 16);
    EXPECT_EQ(LineOf(*mask)->maximumHeight(), 16);
}

TEST_F(VipMaskWidgetTest, TextOfTheLockedMaskIsCentredInTwoLines) {
    CPremiumUIAccessData record = RecordOf(2);
    for (const char* title : {"Short",
                              "Many words, which take far more than the two lines that the mask has for them "
                              "in the width of its card"}) {
        record.strMainTitle = QString::fromLatin1(title);
        SetRecord(kMarketRight, record);
        const CZRVipLockedMaskWidget* mask = AddLocked();
        ZMultilineText* text = TextOf(*mask);

        ZMultilineText expected;
        expected.setLineHeight(16);
        expected.setMaximumTextLine(2);
        expected.setAlignment(Qt::AlignCenter);
        expected.setText(record.strMainTitle);
        text->setParent(nullptr);
        text->resize(150, 60);
        expected.resize(150, 60);
        EXPECT_EQ(text->grab().toImage(), expected.grab().toImage()) << title;
        EXPECT_EQ(text->sizeHint(), expected.sizeHint());
        delete text;
        delete mask;
    }
}

TEST_F(VipMaskWidgetTest, ButtonHasTheBlackMarkFourPixelsFromItsTextInTheOlderSystemAlone) {
    SetRecord(kMarketRight, RecordOf(2));
    CZRVipLockedMaskWidget* mask = AddLocked();
    Show();

    ButtonOf(*mask)->clearFocus();
    ZButton expected(QStringLiteral("Main button"), ButtonOf(*mask)->parentWidget());
    expected.setObjectName(ButtonOf(*mask)->objectName());
    expected.resize(150, 28);
    expected.setIcon(ZResource::icon_blackvip_16_normal, QSize(16, 16));
    expected.setIconTextSpacing(4);
    EXPECT_EQ(ButtonOf(*mask)->grab().toImage(), expected.grab().toImage());

    UserIs(NewUser());
    mask->UpdateUIData(kMarketRight, ZRVipUIDataMain);
    expected.setIcon(QString(), QSize(16, 16));
    EXPECT_EQ(ButtonOf(*mask)->grab().toImage(), expected.grab().toImage());

    UserIs(LegacyUser());
    SetTheme(zr_ui_theme::Manager::kThemeLight);
    expected.setIcon(ZResource::icon_blackvip_16_normal, QSize(16, 16));
    EXPECT_EQ(ButtonOf(*mask)->grab().toImage(), expected.grab().toImage());
    reports.Forget();
}

TEST_F(VipMaskWidgetTest, MarkOfTheExclusiveMaskFollowsTheSystem) {
    CZRVipExclusiveMaskWidget* mask = AddExclusive();
    EXPECT_EQ(MarkOf(*mask)->minimumSize(), QSize(16, 16));
    EXPECT_EQ(MarkOf(*mask)->maximumSize(), QSize(16, 16));
    EXPECT_EQ(MarkOf(*mask)->pixmap(Qt::ReturnByValue).toImage(), Scaled(ZResource::img_vip_16_normal, QSize(16, 16)));

    UserIs(NewUser());
    mask->UpdateUIData(kMarketRight, ZRVipUIDataMain);

    EXPECT_EQ(MarkOf(*mask)->minimumSize(), QSize(56, 16));
    EXPECT_EQ(MarkOf(*mask)->maximumSize(), QSize(56, 16));
    EXPECT_EQ(MarkOf(*mask)->pixmap(Qt::ReturnByValue).toImage(),
              Scaled(ZResource::img_engine_m_56x16_normal, QSize(56, 16)));
}

struct BlurCase {
    const char* name;
    zr_ui_theme::Manager::Theme theme;
    bool popupStyle;
    double radiusTheme3;
    double radiusOther;
    double radius;
    const char* color;
};

std::string BlurCaseName(const TestParamInfo<BlurCase>& info) {
    return info.param.name;
}

class VipMaskWidgetBlurTest : public VipMaskWidgetTest, public WithParamInterface<BlurCase> {
protected:
    void Check(QWidget* mask) {
        Show();
        const QImage strip = Strip();
        mask->hide();
        const BlurCase& row = GetParam();
        EXPECT_EQ(strip, Expected(row.radius, row.color, source));
        EXPECT_NE(strip, Expected(row.radius == 0 ? 30 : 0, row.color, source));
        EXPECT_NE(strip, Expected(row.radius, row.color == kColor ? kPopupColor : kColor, source));
        if (row.radius > 0) {
            EXPECT_NE(strip, Expected(row.radius, row.color, WidgetPainterBufferSource(&other)));
        }
        reports.Forget();
    }

    void Prepare() {
        radiusTheme3 = GetParam().radiusTheme3;
        radiusOther = GetParam().radiusOther;
        popupStyle = GetParam().popupStyle;
    }
};

TEST_P(VipMaskWidgetBlurTest, LockedMaskBlursByThemeAndStyle) {
    Prepare();
    SetTheme(GetParam().theme);
    Check(AddLocked());
}

TEST_P(VipMaskWidgetBlurTest, ExclusiveMaskBlursByThemeAndStyle) {
    Prepare();
    SetTheme(GetParam().theme);
    Check(AddExclusive());
}

TEST_P(VipMaskWidgetBlurTest, LockedMaskTakesTheOtherRadiusAtOnceWhenTheThemeChanges) {
    Prepare();
    const auto black = zr_ui_theme::Manager::kThemeBlack;
    SetTheme(GetParam().theme == black ? zr_ui_theme::Manager::kThemeLight : black);
    QWidget* mask = AddLocked();
    Show();
    SetTheme(GetParam().theme);
    Check(mask);
}

TEST_P(VipMaskWidgetBlurTest, ExclusiveMaskTakesTheOtherRadiusAtOnceWhenTheThemeChanges) {
    Prepare();
    const auto black = zr_ui_theme::Manager::kThemeBlack;
    SetTheme(GetParam().theme == black ? zr_ui_theme::Manager::kThemeLight : black);
    QWidget* mask = AddExclusive();
    Show();
    SetTheme(GetParam().theme);
    Check(mask);
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetBlurTest,
                         Values(BlurCase{"Light", zr_ui_theme::Manager::kThemeLight, false, 0, 30, 30, kColor},
                                BlurCase{"DarkBlue", zr_ui_theme::Manager::kThemeDarkBlue, true, 30, 0, 0, kPopupColor},
                                BlurCase{"Black", zr_ui_theme::Manager::kThemeBlack, false, 30, 0, 30, kColor},
                                BlurCase{"BlackPopup", zr_ui_theme::Manager::kThemeBlack, true, 0, 30, 0, kPopupColor}),
                         BlurCaseName);

struct TextCase {
    int dataType;
    const char* title;
    const char* button;
    int link;
};

void PrintTo(const TextCase& row, std::ostream* stream) {
    *stream << "data type " << row.dataType;
}

class VipMaskWidgetTextsTest : public VipMaskWidgetTest, public WithParamInterface<TextCase> {};

TEST_P(VipMaskWidgetTextsTest, DataTypeSelectsTheTextsOfTheLockedMask) {
    SetRecord(kMarketRight, RecordOf(2));
    log.Forget();

    const CZRVipLockedMaskWidget* mask = AddLocked(ZRVipMaskLocked, kMarketRight, ZRVipUIDataType(GetParam().dataType));

    const std::string title = GetParam().title;
    const std::string button = GetParam().button;
    EXPECT_EQ(TextOf(*mask)->isHidden(), title.empty());
    EXPECT_EQ(TextOf(*mask)->text().toStdString(), title);
    EXPECT_EQ(ButtonOf(*mask)->isHidden(), button.empty());
    EXPECT_EQ(ButtonOf(*mask)->text().toStdString(), button);
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Vip] Refresh Vip Locked Mask UI, Access = 98, Data Type = " +
                         std::to_string(GetParam().dataType) + ", Title Text = " + title + ", Btn Text = " + button +
                         ", Btn URL ID = " + std::to_string(GetParam().link) + ", Other Info = {other}")));
}

TEST_P(VipMaskWidgetTextsTest, DataTypeSelectsTheLineOfTheExclusiveMask) {
    SetRecord(kMarketRight, RecordOf(2));
    log.Forget();

    const CZRVipExclusiveMaskWidget* mask = AddExclusive(kMarketRight, ZRVipUIDataType(GetParam().dataType));

    const std::string button = GetParam().button;
    EXPECT_EQ(LineOf(*mask)->isHidden(), button.empty());
    EXPECT_EQ(LineOf(*mask)->text().toStdString(), button);
    EXPECT_FALSE(MarkOf(*mask)->isHidden());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Refresh Vip Exclusive Mask UI, Access = 98, Data Type = " +
                                              std::to_string(GetParam().dataType) + ", Btn Text = " + button +
                                              ", Btn URL ID = " + std::to_string(GetParam().link))));
}

TEST_P(VipMaskWidgetTextsTest, UpdateOfTheLockedMaskShowsTheOtherTexts) {
    SetRecord(kFunctionRight, RecordOf(2));
    CZRVipLockedMaskWidget* mask = AddLocked();
    EXPECT_TRUE(TextOf(*mask)->isHidden());
    EXPECT_TRUE(ButtonOf(*mask)->isHidden());
    mask->UpdateUIData(kFunctionRight, ZRVipUIDataDetail);
    EXPECT_FALSE(TextOf(*mask)->isHidden());

    mask->UpdateUIData(kFunctionRight, ZRVipUIDataType(GetParam().dataType));

    const bool hasTexts = GetParam().link != 0;
    EXPECT_EQ(TextOf(*mask)->isHidden(), !hasTexts);
    EXPECT_EQ(ButtonOf(*mask)->isHidden(), !hasTexts);
    if (hasTexts) {
        EXPECT_EQ(TextOf(*mask)->text().toStdString(), GetParam().title);
        EXPECT_EQ(ButtonOf(*mask)->text().toStdString(), GetParam().button);
    }
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetTextsTest,
                         Values(TextCase{-1, "", "", 0}, TextCase{0, "", "", 0},
                                TextCase{1, "Main title", "Main button", 301},
                                TextCase{2, "Detail title", "Detail button", 302},
                                TextCase{3, "Sub title", "Sub button", 303}, TextCase{4, "", "", 0}));

TEST_F(VipMaskWidgetTest, EmptyTextHidesItsWidgetAlone) {
    CPremiumUIAccessData record = RecordOf(2);
    record.strMainTitle.clear();
    record.strDetailBtn.clear();
    SetRecord(kMarketRight, record);

    const CZRVipLockedMaskWidget* noTitle = AddLocked(ZRVipMaskLocked, kMarketRight, ZRVipUIDataMain);
    const CZRVipLockedMaskWidget* noButton = AddLocked(ZRVipMaskLocked, kMarketRight, ZRVipUIDataDetail);

    EXPECT_TRUE(TextOf(*noTitle)->isHidden());
    EXPECT_FALSE(ButtonOf(*noTitle)->isHidden());
    EXPECT_FALSE(TextOf(*noButton)->isHidden());
    EXPECT_TRUE(ButtonOf(*noButton)->isHidden());
    EXPECT_FALSE(LineOf(*AddExclusive(kMarketRight, ZRVipUIDataMain))->isHidden());
    EXPECT_TRUE(LineOf(*AddExclusive(kMarketRight, ZRVipUIDataDetail))->isHidden());
}

TEST_F(VipMaskWidgetTest, LockedMaskReportsAndThenEmitsWhenItsButtonIsClicked) {
    SetRecord(kMarketRight, RecordOf(6, 5));
    const CZRVipLockedMaskWidget* mask = AddLocked(ZRVipMaskLocked, kMarketRight, ZRVipUIDataDetail);
    Show();

    Click(ButtonOf(*mask));

    EXPECT_THAT(reports.Events(), ElementsAre(ReportedEvent{kMarketEvent, 4,
                                                            R"({"button_position":"2","engine_status":3,)"
                                                            R"("page_status":6,"permission_type":"98"})",
                                                            0, false}));
    ASSERT_THAT(clicked, SizeIs(1));
    EXPECT_EQ(clicked[0].access, 98);
    EXPECT_EQ(clicked[0].dataType, 2);
    EXPECT_EQ(clicked[0].window, &window);
    EXPECT_EQ(clicked[0].reportsBefore, 1u);
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 0);
}

TEST_F(VipMaskWidgetTest, LockedMaskEmitsWithoutAReportWhenThereIsNoRight) {
    SetRecord(EnPremiumAccess(0), RecordOf(2));
    CZRVipLockedMaskWidget* mask = AddLocked(ZRVipMaskLockedCompact, EnPremiumAccess(0));
    Show();

    Click(ButtonOf(*mask));
    mask->ReportClick();

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(clicked, SizeIs(1));
}

TEST_F(VipMaskWidgetTest, ExclusiveMaskReportsEvenWhenThereIsNoRight) {
    SetRecord(EnPremiumAccess(0), RecordOf(2));
    links.Set(301, "https://www.test/main");
    AddExclusive(EnPremiumAccess(0));
    Show();

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_THAT(reports.Events(), ElementsAre(ReportedEvent{kMarketEvent, 4,
                                                            R"({"button_position":"1","engine_status":3,)"
                                                            R"("page_status":2,"permission_type":"0"})",
                                                            0, false}));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

struct ClickCase {
    int right;
    int type;
    int dataType;
    const char* event;
    int code;
};

void PrintTo(const ClickCase& row, std::ostream* stream) {
    *stream << "right " << row.right << ", type " << row.type << ", data type " << row.dataType;
}

class VipMaskWidgetClickTest : public VipMaskWidgetTest, public WithParamInterface<ClickCase> {
protected:
    static Matcher<std::vector<ReportedEvent>> Expected() {
        const ClickCase& row = GetParam();
        return ElementsAre(ReportedEvent{row.event, row.code,
                                         R"({"button_position":")" + std::to_string(row.dataType) +
                                             R"(","engine_status":2,"page_status":)" + std::to_string(row.type) +
                                             R"(,"permission_type":")" + std::to_string(row.right) + R"("})",
                                         0, false});
    }
};

TEST_P(VipMaskWidgetClickTest, LockedMasksEventAndCodeDependOnTheRight) {
    UserIs(NewMember());
    SetRecord(EnPremiumAccess(GetParam().right), RecordOf(GetParam().type, 5));
    CZRVipLockedMaskWidget* mask =
        AddLocked(ZRVipMaskLocked, EnPremiumAccess(GetParam().right), ZRVipUIDataType(GetParam().dataType));

    mask->ReportClick();

    EXPECT_THAT(reports.Events(), Expected());
}

TEST_P(VipMaskWidgetClickTest, ExclusiveMasksEventAndCodeDependOnTheRight) {
    UserIs(NewMember());
    SetRecord(EnPremiumAccess(GetParam().right), RecordOf(GetParam().type, 5));
    AddExclusive(EnPremiumAccess(GetParam().right), ZRVipUIDataType(GetParam().dataType))->ReportClick();

    EXPECT_THAT(reports.Events(), Expected());
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetClickTest,
                         Values(ClickCase{-5, 1, 1, kMarketEvent, 4}, ClickCase{1, 2, 2, kMarketEvent, 4},
                                ClickCase{98, 5, 3, kMarketEvent, 4}, ClickCase{99, 6, 0, kFunctionEvent, 3},
                                ClickCase{100, 0, -1, kFunctionEvent, 3}, ClickCase{1000, 3, 4, kFunctionEvent, 3}));

TEST_F(VipMaskWidgetTest, ClicksReportTheStateOfTheLastRefresh) {
    SetRecord(kMarketRight, RecordOf(5));
    CZRVipLockedMaskWidget* locked = AddLocked();
    CZRVipExclusiveMaskWidget* exclusive = AddExclusive();
    SetRecord(kMarketRight, RecordOf(6));

    locked->ReportClick();
    exclusive->ReportClick();

    EXPECT_THAT(reports.Events(), Each(Field("params", &ReportedEvent::params, HasSubstr("\"page_status\":5"))));
    EXPECT_THAT(reports.Events(), SizeIs(2));
}

TEST_F(VipMaskWidgetTest, UpdateOfTheLockedMaskSetsTheRightAndTheTextsOfLaterClicks) {
    SetRecord(kMarketRight, RecordOf(2));
    SetRecord(kFunctionRight, RecordOf(6));
    CZRVipLockedMaskWidget* mask = AddLocked();
    Show();

    mask->UpdateUIData(kFunctionRight, ZRVipUIDataDetailSub);
    Click(ButtonOf(*mask));
    mask->hide();

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(
            ReportedEvent{kFunctionEvent, 3,
                          R"({"button_position":"3","engine_status":3,"page_status":6,"permission_type":"99"})", 0,
                          false},
            ReportedEvent{"ViewPremiumMarketEntrance", 4,
                          R"({"engine_status":3,"page_id":"page","page_status":6,"permission_type":"99"})", 0, true}));
    ASSERT_THAT(clicked, SizeIs(1));
    EXPECT_EQ(clicked[0].access, 99);
    EXPECT_EQ(clicked[0].dataType, 3);
}

TEST_F(VipMaskWidgetTest, UpdateOfTheExclusiveMaskSetsTheRightAndTheTextsOfLaterClicks) {
    SetRecord(kMarketRight, RecordOf(2));
    SetRecord(kFunctionRight, RecordOf(6));
    links.Set(303, "https://www.test/sub");
    CZRVipExclusiveMaskWidget* mask = AddExclusive();
    Show();

    mask->UpdateUIData(kFunctionRight, ZRVipUIDataDetailSub);
    EXPECT_EQ(LineOf(*mask)->text().toStdString(), "Sub button");
    Click(MarkOf(*mask));
    mask->hide();

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(
            ReportedEvent{kFunctionEvent, 3,
                          R"({"button_position":"3","engine_status":3,"page_status":6,"permission_type":"99"})", 0,
                          false},
            ReportedEvent{"ViewPremiumMarketEntrance", 4,
                          R"({"engine_status":3,"page_id":"page","page_status":6,"permission_type":"99"})", 0, true}));
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedWithDefaults("https://www.test/sub")));
}

TEST_F(VipMaskWidgetTest, ExclusiveMaskReportsAndThenOpensItsLinkWithoutAWishedWindow) {
    SetRecord(kMarketRight, RecordOf(6));
    links.Set(302, "https://www.test/detail");
    AddExclusive(kMarketRight, ZRVipUIDataDetail);
    Show();
    std::vector<std::string> before;
    urls.WhenOpening([&] { before = reports.Names(); });

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_THAT(reports.Events(), ElementsAre(ReportedEvent{kMarketEvent, 4,
                                                            R"({"button_position":"2","engine_status":3,)"
                                                            R"("page_status":6,"permission_type":"98"})",
                                                            0, false}));
    EXPECT_THAT(before, ElementsAre(kMarketEvent));
    EXPECT_THAT(links.Asked(), ElementsAre(302ul));
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedWithDefaults("https://www.test/detail")));
    EXPECT_EQ(window.presses, 0);
}

TEST_F(VipMaskWidgetTest, ExclusiveMaskIsClickedAtEachOfItsPlaces) {
    SetRecord(kMarketRight, RecordOf(2));
    links.Set(301, "https://www.test/main");
    const CZRVipExclusiveMaskWidget* mask = AddExclusive();
    Show();

    Click(MarkOf(*mask));
    Click(LineOf(*mask));
    Click(BlurOf(*mask)->parentWidget());
    PressAt(window, Qt::LeftButton, kPlace.topLeft());
    PressAt(window, Qt::LeftButton, kPlace.bottomRight());

    EXPECT_THAT(urls.Opened(), SizeIs(5));
    EXPECT_THAT(reports.Names(), SizeIs(5));
    EXPECT_EQ(window.presses, 0);
}

TEST_F(VipMaskWidgetTest, ReportOfTheExclusiveMaskComesBeforeTheLinkIsLookedUp) {
    SetRecord(kMarketRight, RecordOf(2));
    links.Set(301, "https://www.test/main");
    AddExclusive();
    Show();
    size_t asked = 99;
    WhenReporting([&] { asked = links.Asked().size(); });

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_EQ(asked, 0u);
    EXPECT_THAT(links.Asked(), ElementsAre(301ul));
    reports.Forget();
    urls.Forget();
}

TEST_F(VipMaskWidgetTest, ExclusiveMaskDispatchesAnEmptyUrlWhenTheLinkIsUnknown) {
    SetRecord(kMarketRight, RecordOf(2));
    AddExclusive();
    Show();

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_THAT(links.Asked(), ElementsAre(301ul));
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedWithDefaults("")));
    EXPECT_THAT(reports.Names(), SizeIs(1));
    log.Forget();
}

class VipMaskWidgetNoLinkTest : public VipMaskWidgetTest, public WithParamInterface<int> {};

TEST_P(VipMaskWidgetNoLinkTest, ExclusiveMaskOnlyReportsWhenThereIsNoLink) {
    CPremiumUIAccessData record = RecordOf(2);
    record.nMainBtnUrlID = GetParam();
    SetRecord(kMarketRight, record);
    AddExclusive();
    Show();

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetNoLinkTest, Values(0, -1, -2147483647));

TEST_F(VipMaskWidgetTest, ExclusiveMaskOpensTheLeastLink) {
    CPremiumUIAccessData record = RecordOf(2);
    record.nMainBtnUrlID = 1;
    SetRecord(kMarketRight, record);
    links.Set(1, "https://www.test/one");
    AddExclusive();
    Show();

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedWithDefaults("https://www.test/one")));
    reports.Forget();
}

TEST_F(VipMaskWidgetTest, ExclusiveMaskKeepsItsLinkWhenTheDataTypeHasNoTexts) {
    SetRecord(kMarketRight, RecordOf(2));
    links.Set(301, "https://www.test/main");
    CZRVipExclusiveMaskWidget* mask = AddExclusive();
    Show();
    log.Forget();

    mask->UpdateUIData(kMarketRight, ZRVipUIDataType(4));
    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Refresh Vip Exclusive Mask UI, Access = 98, Data Type = 4, "
                                              "Btn Text = , Btn URL ID = 301")));
    EXPECT_TRUE(LineOf(*mask)->isHidden());
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedWithDefaults("https://www.test/main")));
    reports.Forget();
}

class VipMaskWidgetButtonTest : public VipMaskWidgetTest, public WithParamInterface<Qt::MouseButton> {};

TEST_P(VipMaskWidgetButtonTest, OtherButtonsDoNothingAndReachNothingBehindTheExclusiveMask) {
    SetRecord(kMarketRight, RecordOf(2));
    const CZRVipExclusiveMaskWidget* mask = AddExclusive();
    Show();

    PressAt(window, GetParam(), kPlace.center());
    Press(*MarkOf(*mask), GetParam());
    Press(*LineOf(*mask), GetParam());

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 0);
}

TEST_P(VipMaskWidgetButtonTest, OtherButtonsDoNotClickTheLockedMask) {
    SetRecord(kMarketRight, RecordOf(2));
    const CZRVipLockedMaskWidget* mask = AddLocked();
    Show();

    Press(*ButtonOf(*mask), GetParam());

    EXPECT_THAT(clicked, IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetButtonTest,
                         Values(Qt::RightButton, Qt::MiddleButton, Qt::BackButton, Qt::ForwardButton));

TEST_F(VipMaskWidgetTest, PressesBesideTheButtonReachTheParentOfTheLockedMask) {
    SetRecord(kMarketRight, RecordOf(2));
    const CZRVipLockedMaskWidget* mask = AddLocked();
    Show();
    ZButton* button = ButtonOf(*mask);

    PressAt(*button, Qt::LeftButton, QPoint(-1, 14));
    PressAt(*button, Qt::LeftButton, QPoint(75, -1));
    PressAt(*button, Qt::LeftButton, QPoint(75, 28));
    Press(*TextOf(*mask), Qt::LeftButton);

    EXPECT_EQ(window.presses, 4);
    EXPECT_THAT(clicked, IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipMaskWidgetTest, WindowIsTheMaskItselfWhenItHasNoParent) {
    SetRecord(kMarketRight, RecordOf(2));
    {
        CZRVipLockedMaskWidget mask(ZRVipMaskLocked, kMarketRight, ZRVipUIDataMain, QString(), nullptr, source, 1, 2,
                                    false);
        Record(mask);
        mask.show();
        time.Settle();

        Click(ButtonOf(mask));

        ASSERT_THAT(clicked, SizeIs(1));
        EXPECT_EQ(clicked[0].window, &mask);
    }
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipMaskWidgetTest, ClickSurvivesThatItsReceiverDeletesTheLockedMask) {
    SetRecord(kMarketRight, RecordOf(2));
    const QPointer<CZRVipLockedMaskWidget> mask = AddLocked();
    Show();
    whenClicked = [&mask] { delete mask; };

    Click(ButtonOf(*mask));

    EXPECT_FALSE(mask);
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipMaskWidgetTest, ClickEndsQuietlyWhenTheReportDeletesTheLockedMask) {
    SetRecord(kMarketRight, RecordOf(2));
    const QPointer<CZRVipLockedMaskWidget> mask = AddLocked();
    Show();
    WhenReporting([&mask] { delete mask; });

    Click(ButtonOf(*mask));

    EXPECT_FALSE(mask);
    EXPECT_THAT(clicked, IsEmpty());
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipMaskWidgetTest, PageOpensWhenTheReportDeletesTheExclusiveMask) {
    SetRecord(kMarketRight, RecordOf(2));
    links.Set(301, "https://www.test/main");
    const QPointer<CZRVipExclusiveMaskWidget> mask = AddExclusive();
    Show();
    WhenReporting([&mask] { delete mask; });

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_FALSE(mask);
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(VipMaskWidgetTest, ClickSurvivesThatThePageDeletesTheExclusiveMask) {
    SetRecord(kMarketRight, RecordOf(2));
    links.Set(301, "https://www.test/main");
    const QPointer<CZRVipExclusiveMaskWidget> mask = AddExclusive();
    Show();
    urls.WhenOpening([&mask] { delete mask; });

    PressAt(window, Qt::LeftButton, kPlace.center());

    EXPECT_FALSE(mask);
    EXPECT_THAT(urls.Opened(), SizeIs(1));
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipMaskWidgetTest, MasksDoNotFollowTheRights) {
    SetRecord(kMarketRight, RecordOf(2));
    const CZRVipLockedMaskWidget* locked = AddLocked();
    const CZRVipExclusiveMaskWidget* exclusive = AddExclusive();
    SetRecord(kMarketRight, CPremiumUIAccessData());
    UserIs(NewMember());
    EXPECT_EQ(ButtonOf(*locked)->text().toStdString(), "Main button");
    EXPECT_EQ(MarkOf(*exclusive)->maximumWidth(), 16);

    SetTheme(zr_ui_theme::Manager::kThemeLight);

    EXPECT_TRUE(ButtonOf(*locked)->isHidden());
    EXPECT_TRUE(LineOf(*exclusive)->isHidden());
    EXPECT_EQ(MarkOf(*exclusive)->maximumWidth(), 56);
}

class VipMaskWidgetHardTextTest : public VipMaskWidgetTest, public WithParamInterface<HardText> {
protected:
    void Check(QWidget* mask) {
        QWidget page;
        auto* layout = new QVBoxLayout(&page);
        layout->addWidget(mask);
        page.resize(300, 160);
        page.show();
        time.Settle();

        EXPECT_EQ(page.width(), 300);
        EXPECT_LE(page.minimumSizeHint().width(), 300);
        EXPECT_LE(page.minimumSizeHint().height(), 160);
        for (const QWidget* part : BlurOf(*mask)->findChildren<QWidget*>()) {
            EXPECT_TRUE(BlurOf(*mask)->rect().contains(part->geometry())) << part->metaObject()->className();
            EXPECT_GE(part->width(), 16);
        }
        EXPECT_FALSE(page.grab().isNull());
        page.hide();
        mask->setParent(&window);
        reports.Forget();
    }

    void Prepare() {
        CPremiumUIAccessData record = RecordOf(2);
        record.strMainTitle = GetParam().text;
        record.strMainBtn = GetParam().text;
        SetRecord(kMarketRight, record);
    }
};

TEST_P(VipMaskWidgetHardTextTest, PageIsNoWiderAndAllPartsAreWithinTheLockedMask) {
    Prepare();
    CZRVipLockedMaskWidget* mask = AddLocked();
    Check(mask);
    EXPECT_EQ(TextOf(*mask)->height(), 32);
}

TEST_P(VipMaskWidgetHardTextTest, PageIsNoWiderAndAllPartsAreWithinTheExclusiveMask) {
    Prepare();
    Check(AddExclusive());
}

INSTANTIATE_TEST_SUITE_P(All, VipMaskWidgetHardTextTest, ValuesIn(HardTexts()), HardTextName);

struct EnabledCase {
    const char* uiType;
    int type;
    int dataType;
    const char* refusal;
};

void PrintTo(const EnabledCase& row, std::ostream* stream) {
    *stream << "UI type " << row.uiType << ", type " << row.type << ", data type " << row.dataType;
}

class VipMaskWidgetEnabledTest : public VipMaskWidgetTest, public WithParamInterface<EnabledCase> {
protected:
    void Check(bool (*isEnabled)(EnPremiumAccess, ZRVipUIDataType), const std::string& mask) {
        CPremiumUIAccessData record = RecordOf(GetParam().type);
        record.strUIType = QString::fromLatin1(GetParam().uiType);
        SetRecord(kFunctionRight, record);
        for (const VipUser& user : {LegacyMember(), NewMember()}) {
            UserIs(user);
            log.Forget();

            const bool answer = isEnabled(kFunctionRight, ZRVipUIDataType(GetParam().dataType));

            const std::string refusal = GetParam().refusal;
            EXPECT_EQ(answer, refusal.empty());
            EXPECT_THAT(log.Lines(), refusal.empty()
                                         ? Matcher<std::vector<LogLine>>(IsEmpty())
                                         : ElementsAre(Info("[Vip] Vip " + mask + " Mask Disabled, " + refusal)));
        }
    }
};

TEST_P(VipMaskWidgetEnabledTest, RuleOfTheLockedMaskLogsTheFirstReasonToRefuse) {
    Check(&CZRVipLockedMaskWidget::IsVipMaskEnabled, "Locked");
}

TEST_P(VipMaskWidgetEnabledTest, RuleOfTheExclusiveMaskLogsTheFirstReasonToRefuse) {
    Check(&CZRVipExclusiveMaskWidget::IsVipMaskEnabled, "Exclusive");
}

INSTANTIATE_TEST_SUITE_P(
    All, VipMaskWidgetEnabledTest,
    Values(EnabledCase{"d", 3, 0, "UI Type Mismatch, Premium Access = 99, UI Type = d"},
           EnabledCase{"", 2, 1, "UI Type Mismatch, Premium Access = 99, UI Type = "},
           EnabledCase{"DD", 2, 1, "UI Type Mismatch, Premium Access = 99, UI Type = DD"},
           EnabledCase{"A", 0, 1, "UI Type Mismatch, Premium Access = 99, UI Type = A"},
           EnabledCase{"D", 0, 0, "Activation Type Mismatch, Premium Access = 99, Activation Type = 0, Data Type = 0"},
           EnabledCase{"D", 1, 2, "Activation Type Mismatch, Premium Access = 99, Activation Type = 1, Data Type = 2"},
           EnabledCase{"D", 3, 1, "Activation Type Mismatch, Premium Access = 99, Activation Type = 3, Data Type = 1"},
           EnabledCase{"D", 4, 3, "Activation Type Mismatch, Premium Access = 99, Activation Type = 4, Data Type = 3"},
           EnabledCase{"D", 7, 4, "Activation Type Mismatch, Premium Access = 99, Activation Type = 7, Data Type = 4"},
           EnabledCase{"D", -1, 1,
                       "Activation Type Mismatch, Premium Access = 99, Activation Type = -1, Data Type = 1"},
           EnabledCase{"D", 2, -1, "Empty Premium Data, Premium Access = 99, Data Type = -1"},
           EnabledCase{"D", 5, 0, "Empty Premium Data, Premium Access = 99, Data Type = 0"},
           EnabledCase{"D", 6, 4, "Empty Premium Data, Premium Access = 99, Data Type = 4"}, EnabledCase{"D", 2, 1, ""},
           EnabledCase{"D", 5, 2, ""}, EnabledCase{"D", 6, 3, ""}));

TEST_F(VipMaskWidgetTest, LockedMaskNeedsTitleAndButtonTextAndTheExclusiveOneTheButtonTextAlone) {
    using Text = QString CPremiumUIData::*;
    struct Texts {
        ZRVipUIDataType dataType;
        Text title;
        Text button;
    };
    for (const Texts& texts :
         {Texts{ZRVipUIDataMain, &CPremiumUIData::strMainTitle, &CPremiumUIData::strMainBtn},
          Texts{ZRVipUIDataDetail, &CPremiumUIData::strDetailTitle, &CPremiumUIData::strDetailBtn},
          Texts{ZRVipUIDataDetailSub, &CPremiumUIData::strDetailSubTitle, &CPremiumUIData::strDetailSubBtn}}) {
        const std::string refusal =
            "Mask Disabled, Empty Premium Data, Premium Access = 98, Data Type = " + std::to_string(texts.dataType);
        CPremiumUIAccessData noTitle = RecordOf(2);
        (noTitle.*texts.title).clear();
        SetRecord(kMarketRight, noTitle);
        log.Forget();
        EXPECT_FALSE(CZRVipLockedMaskWidget::IsVipMaskEnabled(kMarketRight, texts.dataType));
        EXPECT_TRUE(CZRVipExclusiveMaskWidget::IsVipMaskEnabled(kMarketRight, texts.dataType));
        EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Locked " + refusal)));

        CPremiumUIAccessData noButton = RecordOf(2);
        (noButton.*texts.button).clear();
        SetRecord(kMarketRight, noButton);
        log.Forget();
        EXPECT_FALSE(CZRVipLockedMaskWidget::IsVipMaskEnabled(kMarketRight, texts.dataType));
        EXPECT_FALSE(CZRVipExclusiveMaskWidget::IsVipMaskEnabled(kMarketRight, texts.dataType));
        EXPECT_THAT(log.Lines(),
                    ElementsAre(Info("[Vip] Vip Locked " + refusal), Info("[Vip] Vip Exclusive " + refusal)));
    }
}

}  // namespace
