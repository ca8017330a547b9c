#include "Vip/View/ZRVipBannerWidget.h"

#include <QLabel>
#include <QMetaMethod>
#include <QVBoxLayout>
#include <optional>

#include "Vip/VipWidgetTest.h"
#include "ui/ZButton.h"
#include "ui/ZMultilineTextLabel.h"

using namespace ::testing;

namespace {

constexpr auto kNoTexts = ZRVipUIDataType(0);

/// A signal as it was emitted.
struct Clicked {
    int access = 0;
    int dataType = 0;
    QWidget* window = nullptr;
    size_t reportsBefore = 0;
};

class VipBannerWidgetTest : public VipWidgetTest {
protected:
    VipBannerWidgetTest() {
        language.SetText(277228, QStringLiteral("days"));
        language.SetText(277229, QStringLiteral("day"));
    }

    CZRVipBannerWidget* Add(EnPremiumAccess access = kMarketRight, ZRVipUIDataType dataType = ZRVipUIDataMain) {
        auto* banner = new CZRVipBannerWidget(access, dataType, QStringLiteral("page"), &window);
        Record(*banner);
        return banner;
    }

    void Record(CZRVipBannerWidget& banner) {
        QObject::connect(&banner, &CZRVipBannerWidget::ActionButtonClicked,
                         [this](EnPremiumAccess access, ZRVipUIDataType dataType, const QPointer<QWidget>& parent) {
                             clicked.push_back({int(access), int(dataType), parent, reports.Names().size()});
                             if (whenClicked) {
                                 whenClicked();
                             }
                         });
    }

    /// A shown banner of a legacy user with that record.
    CZRVipBannerWidget* Shown(const CPremiumUIAccessData& record, ZRVipUIDataType dataType = ZRVipUIDataMain) {
        SetRecord(kMarketRight, record);
        CZRVipBannerWidget* banner = Add(kMarketRight, dataType);
        banner->resize(400, 40);
        Show();
        return banner;
    }

    static QLabel* MarkOf(const QWidget& banner) { return banner.findChild<QLabel*>(); }
    static ZMultilineTextLabel* TextOf(const QWidget& banner) {
        return banner.findChild<ZMultilineTextLabel*>(QStringLiteral("CZRVipTextNormal"));
    }
    static ZButton* ButtonOf(const QWidget& banner) {
        return banner.findChild<ZButton*>(QStringLiteral("CZRVipActionButton"));
    }
    static QWidget* ItemOf(const QWidget& banner, int index) { return banner.layout()->itemAt(index)->widget(); }

    std::vector<Clicked> clicked;
    std::function<void()> whenClicked;
};

TEST_F(VipBannerWidgetTest, BannerHasOneSignalAndOneProtectedSlot) {
    const QMetaObject& object = CZRVipBannerWidget::staticMetaObject;
    EXPECT_EQ(object.superClass(), &CZRVipBaseWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(object),
                ElementsAre("signal ActionButtonClicked(EnPremiumAccess access, ZRVipUIDataType dataType, "
                            "QPointer<QWidget> activeVipPopupParent)",
                            "slot OnActionButtonClicked()"));
    EXPECT_EQ(object.method(object.methodOffset() + 1).access(), QMetaMethod::Protected);
}

TEST_F(VipBannerWidgetTest, BannerIsNamedStyledAndAtLeast280Wide) {
    const CZRVipBannerWidget* banner = Add();

    EXPECT_EQ(banner->objectName().toStdString(), "CZRVipBg");
    EXPECT_TRUE(banner->testAttribute(Qt::WA_StyledBackground));
    EXPECT_EQ(banner->minimumWidth(), 280);
    EXPECT_EQ(banner->minimumHeight(), 0);
    EXPECT_EQ(banner->parentWidget(), &window);
}

TEST_F(VipBannerWidgetTest, PartsFollowEachOtherInARow) {
    const CZRVipBannerWidget* banner = Add();

    ASSERT_TRUE(qobject_cast<QHBoxLayout*>(banner->layout()));
    EXPECT_EQ(LayoutOf(*banner->layout()), "8,4,4,4 0");
    EXPECT_THAT(ItemsOf(*banner->layout()),
                ElementsAre("QLabel", "QWidget", "CZRVipBannerEngineDivider", "QWidget",
                            "(0,4,0,4 0: CZRVipTextNormal)", "space 11x0", "stretch", "CZRVipActionButton"));
    EXPECT_TRUE(qobject_cast<QHBoxLayout*>(banner->layout()->itemAt(4)->layout()));
    EXPECT_TRUE(MarkOf(*banner)->hasScaledContents());
    const auto* divider = qobject_cast<QFrame*>(ItemOf(*banner, 2));
    ASSERT_TRUE(divider);
    EXPECT_EQ(divider->minimumSize(), QSize(1, 12));
    EXPECT_EQ(divider->maximumSize(), QSize(1, 12));
}

TEST_F(VipBannerWidgetTest, MarkOfTheOlderSystemStandsFourPixelsFromTheText) {
    const CZRVipBannerWidget* banner = Add();

    EXPECT_EQ(MarkOf(*banner)->minimumSize(), QSize(16, 16));
    EXPECT_EQ(MarkOf(*banner)->maximumSize(), QSize(16, 16));
    EXPECT_EQ(MarkOf(*banner)->pixmap(Qt::ReturnByValue).toImage(),
              Scaled(ZResource::img_vip_16_normal, QSize(16, 16)));
    EXPECT_EQ(ItemOf(*banner, 1)->minimumWidth(), 4);
    EXPECT_EQ(ItemOf(*banner, 1)->maximumWidth(), 4);
    EXPECT_TRUE(ItemOf(*banner, 2)->isHidden());
    EXPECT_EQ(ItemOf(*banner, 3)->minimumWidth(), 0);
    EXPECT_EQ(ItemOf(*banner, 3)->maximumWidth(), 0);
}

TEST_F(VipBannerWidgetTest, MarkOfTheNewerSystemHasADividerBetweenTwoGaps) {
    UserIs(NewUser());
    const CZRVipBannerWidget* banner = Add();

    EXPECT_EQ(MarkOf(*banner)->minimumSize(), QSize(54, 16));
    EXPECT_EQ(MarkOf(*banner)->maximumSize(), QSize(54, 16));
    EXPECT_EQ(MarkOf(*banner)->pixmap(Qt::ReturnByValue).toImage(),
              Scaled(ZResource::img_engine_nbg_54x16_normal, QSize(54, 16)));
    EXPECT_EQ(ItemOf(*banner, 1)->minimumWidth(), 8);
    EXPECT_EQ(ItemOf(*banner, 1)->maximumWidth(), 8);
    EXPECT_FALSE(ItemOf(*banner, 2)->isHidden());
    EXPECT_EQ(ItemOf(*banner, 3)->minimumWidth(), 8);
    EXPECT_EQ(ItemOf(*banner, 3)->maximumWidth(), 8);
}

TEST_F(VipBannerWidgetTest, MarkFollowsTheSystemWhenTheThemeChanges) {
    UserIs(NewUser());
    const CZRVipBannerWidget* banner = Add();
    UserIs(LegacyUser());
    EXPECT_EQ(MarkOf(*banner)->maximumWidth(), 54);

    SetTheme(zr_ui_theme::Manager::kThemeLight);

    EXPECT_EQ(MarkOf(*banner)->maximumWidth(), 16);
    EXPECT_TRUE(ItemOf(*banner, 2)->isHidden());
    EXPECT_EQ(ItemOf(*banner, 3)->maximumWidth(), 0);
}

TEST_F(VipBannerWidgetTest, TextIsLaidOutInTwoLinesAndEndsInDots) {
    CPremiumUIAccessData record = RecordOf(2);
    for (const char* title : {"Short",
                              "Supercalifragilisticexpialidociouswithoutanyblank and then some words that "
                              "are more than two lines of this narrow banner can hold at once"}) {
        record.strMainTitle = QString::fromLatin1(title);
        const CZRVipBannerWidget* banner = Shown(record);
        ZMultilineTextLabel* text = TextOf(*banner);
        EXPECT_EQ(text->maximumHeight(), 32);

        ZMultilineTextLabel expected;
        expected.setLineHeight(16);
        expected.setAlignment(Qt::AlignLeft);
        expected.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        expected.setElidable(true);
        expected.setTextWithFormat(record.strMainTitle, Qt::AutoText);
        text->setParent(nullptr);
        for (const QSize& size : {QSize(150, 32), QSize(60, 48)}) {
            text->setMaximumHeight(size.height());
            text->resize(size);
            expected.resize(size);
            EXPECT_EQ(text->grab().toImage(), expected.grab().toImage()) << title;
        }
        delete text;
        delete banner;
    }
    reports.Forget();
}

TEST_F(VipBannerWidgetTest, ButtonIs24HighWithAPaddingOf8) {
    const CZRVipBannerWidget* banner = Shown(RecordOf(2));
    const ZButton* button = ButtonOf(*banner);

    EXPECT_EQ(button->minimumHeight(), 24);
    EXPECT_EQ(button->maximumHeight(), 24);
    ZButton expected(QStringLiteral("Main button"));
    expected.setLeftRightPadding(8);
    EXPECT_EQ(button->sizeHint().width(), expected.sizeHint().width());
    reports.Forget();
}

struct TextCase {
    int dataType;
    const char* title;
    const char* button;
    int link;
};

void PrintTo(const TextCase& row, std::ostream* stream) {
    *stream << "data type " << row.dataType;
}

class VipBannerWidgetTextsTest : public VipBannerWidgetTest, public WithParamInterface<TextCase> {};

TEST_P(VipBannerWidgetTextsTest, DataTypeSelectsTextsAndLink) {
    SetRecord(kMarketRight, RecordOf(2, 7));
    log.Forget();

    const CZRVipBannerWidget* banner = Add(kMarketRight, ZRVipUIDataType(GetParam().dataType));

    const std::string title = GetParam().title;
    const std::string button = GetParam().button;
    EXPECT_EQ(TextOf(*banner)->isHidden(), title.empty());
    EXPECT_EQ(TextOf(*banner)->text().toStdString(), title);
    EXPECT_EQ(ButtonOf(*banner)->isHidden(), button.empty());
    EXPECT_EQ(ButtonOf(*banner)->text().toStdString(), button);
    EXPECT_FALSE(MarkOf(*banner)->isHidden());
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Vip] Refresh Banner UI, Access = 98, Data Type = " + std::to_string(GetParam().dataType) +
                         ", Title Text = " + title + ", Btn Text = " + button + ", Btn URL ID = " +
                         std::to_string(GetParam().link) + ", Other Info = {other}, Days Left = 7")));
}

TEST_P(VipBannerWidgetTextsTest, UpdateShowsTheOtherTexts) {
    SetRecord(kFunctionRight, RecordOf(2));
    SetRecord(kMarketRight, CPremiumUIAccessData());
    CZRVipBannerWidget* banner = Add(kMarketRight, ZRVipUIDataMain);
    EXPECT_TRUE(TextOf(*banner)->isHidden());
    EXPECT_TRUE(ButtonOf(*banner)->isHidden());
    banner->UpdateUIData(kFunctionRight, ZRVipUIDataDetail);
    EXPECT_FALSE(TextOf(*banner)->isHidden());

    banner->UpdateUIData(kFunctionRight, ZRVipUIDataType(GetParam().dataType));

    const bool hasTexts = GetParam().link != 0;
    EXPECT_EQ(TextOf(*banner)->isHidden(), !hasTexts);
    EXPECT_EQ(ButtonOf(*banner)->isHidden(), !hasTexts);
    if (hasTexts) {
        EXPECT_EQ(TextOf(*banner)->text().toStdString(), GetParam().title);
        EXPECT_EQ(ButtonOf(*banner)->text().toStdString(), GetParam().button);
    }
}

INSTANTIATE_TEST_SUITE_P(All, VipBannerWidgetTextsTest,
                         Values(TextCase{-1, "", "", 0}, TextCase{0, "", "", 0},
                                TextCase{1, "Main title", "Main button", 301},
                                TextCase{2, "Detail title", "Detail button", 302},
                                TextCase{3, "Sub title", "Sub button", 303}, TextCase{4, "", "", 0}));

TEST_F(VipBannerWidgetTest, EmptyTitleHidesTheTextAlone) {
    CPremiumUIAccessData record = RecordOf(1, 5);
    record.strMainTitle.clear();
    const CZRVipBannerWidget* banner = Shown(record);
    EXPECT_TRUE(TextOf(*banner)->isHidden());
    EXPECT_FALSE(ButtonOf(*banner)->isHidden());
    reports.Forget();
}

TEST_F(VipBannerWidgetTest, EmptyButtonTextHidesTheButtonAlone) {
    CPremiumUIAccessData record = RecordOf(1, 5);
    record.strMainBtn.clear();
    const CZRVipBannerWidget* banner = Shown(record);
    EXPECT_FALSE(TextOf(*banner)->isHidden());
    EXPECT_TRUE(ButtonOf(*banner)->isHidden());
    reports.Forget();
}

struct TitleCase {
    const char* name;
    bool isNew;
    int type;
    int days;
    const char* title;
    const char* text;
    Qt::TextFormat format;
};

std::string TitleCaseName(const TestParamInfo<TitleCase>& info) {
    return info.param.name;
}

class VipBannerWidgetTitleTest : public VipBannerWidgetTest, public WithParamInterface<TitleCase> {};

TEST_P(VipBannerWidgetTitleTest, DaysFollowTheEscapedTitleForALimitedTimeOfTheOlderSystem) {
    UserIs(GetParam().isNew ? NewMember() : LegacyMember());
    CPremiumUIAccessData record = RecordOf(GetParam().type, GetParam().days);
    record.strMainTitle = QString::fromUtf8(GetParam().title);
    SetRecord(kMarketRight, record);

    const CZRVipBannerWidget* banner = Add();

    EXPECT_EQ(TextOf(*banner)->text().toStdString(), GetParam().text);
    EXPECT_EQ(TextOf(*banner)->textFormat(), GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(
    All, VipBannerWidgetTitleTest,
    Values(TitleCase{"Days", false, 1, 5, "Left: ", "Left: <b>5days</b>", Qt::RichText},
           TitleCase{"TwoDays", false, 1, 2, "Left: ", "Left: <b>2days</b>", Qt::RichText},
           TitleCase{"OneDay", false, 1, 1, "Left: ", "Left: <b>1day</b>", Qt::RichText},
           TitleCase{"NoDay", false, 1, 0, "Left: ", "Left: <b>0days</b>", Qt::RichText},
           TitleCase{"DaysUnknown", false, 1, -1, "Left: ", "Left: ", Qt::AutoText},
           TitleCase{"ManyDays", false, 1, 2147483647, "Left: ", "Left: <b>2147483647days</b>", Qt::RichText},
           TitleCase{"Escaped", false, 1, 5, "<i>a</i> & \"b\"", "&lt;i&gt;a&lt;/i&gt; &amp; &quot;b&quot;<b>5days</b>",
                     Qt::RichText},
           TitleCase{"PlaceMarks", false, 1, 5, "100%2 off %1 %3", "100%2 off %1 %3<b>5days</b>", Qt::RichText},
           TitleCase{"RawInOtherTypes", false, 2, 5, "<i>a</i> & %1", "<i>a</i> & %1", Qt::AutoText},
           TitleCase{"Unknown", false, 0, 5, "Left: ", "Left: ", Qt::AutoText},
           TitleCase{"Full", false, 3, 5, "Left: ", "Left: ", Qt::AutoText},
           TitleCase{"Ready", false, 6, 5, "Left: ", "Left: ", Qt::AutoText},
           TitleCase{"NewerSystem", true, 1, 5, "<i>Left</i>", "<i>Left</i>", Qt::AutoText}),
    TitleCaseName);

TEST_F(VipBannerWidgetTest, UnitOfTheDaysHasAFallback) {
    language = CScriptedLanguage();
    SetRecord(kMarketRight, RecordOf(1, 1));
    EXPECT_EQ(TextOf(*Add())->text(), QString::fromUtf8("Main title<b>1\u65e5</b>"));
    SetRecord(kMarketRight, RecordOf(1, 2));
    EXPECT_EQ(TextOf(*Add())->text(), QString::fromUtf8("Main title<b>2\u65e5</b>"));
}

TEST_F(VipBannerWidgetTest, TextBecomesPlainAgainWhenTheDaysEnd) {
    SetRecord(kMarketRight, RecordOf(1, 5));
    CZRVipBannerWidget* banner = Add();
    EXPECT_EQ(TextOf(*banner)->textFormat(), Qt::RichText);
    SetRecord(kMarketRight, RecordOf(5, 5));

    banner->UpdateUIData(kMarketRight, ZRVipUIDataMain);

    EXPECT_EQ(TextOf(*banner)->text().toStdString(), "Main title");
    EXPECT_EQ(TextOf(*banner)->textFormat(), Qt::AutoText);
}

TEST_F(VipBannerWidgetTest, ClickReportsAndThenEmitsTheSignal) {
    SetRecord(kMarketRight, RecordOf(1, 5));
    CZRVipBannerWidget* banner = Add(kMarketRight, ZRVipUIDataDetail);
    banner->resize(400, 40);
    Show();

    Click(ButtonOf(*banner));

    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{"ClickPremiumMarketEntrance", 4,
                                          R"({"button_position":"2","day_number":5,"engine_status":3,)"
                                          R"("page_status":1,"permission_type":"98"})",
                                          0, false}));
    ASSERT_THAT(clicked, SizeIs(1));
    EXPECT_EQ(clicked[0].access, 98);
    EXPECT_EQ(clicked[0].dataType, 2);
    EXPECT_EQ(clicked[0].window, &window);
    EXPECT_EQ(clicked[0].reportsBefore, 1u);
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

struct ClickCase {
    int right;
    int type;
    int days;
    const char* event;
    int code;
    const char* day;
};

void PrintTo(const ClickCase& row, std::ostream* stream) {
    *stream << "right " << row.right << ", type " << row.type << ", days " << row.days;
}

class VipBannerWidgetClickTest : public VipBannerWidgetTest, public WithParamInterface<ClickCase> {};

TEST_P(VipBannerWidgetClickTest, EventAndCodeDependOnTheRightAndDaysOnTheirNumberAlone) {
    const auto right = EnPremiumAccess(GetParam().right);
    SetRecord(right, RecordOf(GetParam().type, GetParam().days));
    CZRVipBannerWidget* banner = Add(right, ZRVipUIDataDetailSub);
    banner->resize(400, 40);
    Show();

    Click(ButtonOf(*banner));

    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{GetParam().event, GetParam().code,
                                          std::string(R"({"button_position":"3",)") + GetParam().day +
                                              R"("engine_status":3,"page_status":)" + std::to_string(GetParam().type) +
                                              R"(,"permission_type":")" + std::to_string(GetParam().right) + R"("})",
                                          0, false}));
    EXPECT_THAT(clicked, SizeIs(1));
}

constexpr const char* kMarketEvent = "ClickPremiumMarketEntrance";
constexpr const char* kFunctionEvent = "ClickPremiumFunctionEntrance";

INSTANTIATE_TEST_SUITE_P(All, VipBannerWidgetClickTest,
                         Values(ClickCase{-5, 1, 0, kMarketEvent, 4, R"("day_number":0,)"},
                                ClickCase{1, 2, 9, kMarketEvent, 4, R"("day_number":9,)"},
                                ClickCase{98, 5, -1, kMarketEvent, 4, ""},
                                ClickCase{99, 6, 3, kFunctionEvent, 3, R"("day_number":3,)"},
                                ClickCase{1000, 1, -2, kFunctionEvent, 3, ""},
                                ClickCase{100, 0, 1, kFunctionEvent, 3, R"("day_number":1,)"}));

TEST_F(VipBannerWidgetTest, ClickEmitsWithoutAReportWhenThereIsNoRight) {
    SetRecord(EnPremiumAccess(0), RecordOf(1, 5));
    CZRVipBannerWidget* banner = Add(EnPremiumAccess(0));
    banner->resize(400, 40);
    Show();

    Click(ButtonOf(*banner));

    EXPECT_THAT(reports.Events(), IsEmpty());
    ASSERT_THAT(clicked, SizeIs(1));
    EXPECT_EQ(clicked[0].access, 0);
}

TEST_F(VipBannerWidgetTest, ClickReportsTheStateOfTheLastRefresh) {
    const CZRVipBannerWidget* banner = Shown(RecordOf(1, 5));
    SetRecord(kMarketRight, RecordOf(6, 8));
    UserIs(NewMember());

    Click(ButtonOf(*banner));

    EXPECT_THAT(reports.Events(), ElementsAre(Field("params", &ReportedEvent::params,
                                                    R"({"button_position":"1","day_number":5,"engine_status":2,)"
                                                    R"("page_status":1,"permission_type":"98"})")));
}

TEST_F(VipBannerWidgetTest, ClickReportsNoDaysLeftOfARightWithoutARecord) {
    CZRVipBannerWidget* banner = Add(kMarketRight, kNoTexts);
    EXPECT_TRUE(QMetaObject::invokeMethod(banner, "OnActionButtonClicked"));

    EXPECT_THAT(reports.Events(), ElementsAre(Field("params", &ReportedEvent::params,
                                                    R"({"button_position":"0","day_number":0,"engine_status":3,)"
                                                    R"("page_status":0,"permission_type":"98"})")));
}

TEST_F(VipBannerWidgetTest, UpdateSetsTheRightAndTheTextsOfLaterClicksAndOfTheExposuresEnd) {
    SetRecord(kFunctionRight, RecordOf(6, 4));
    CZRVipBannerWidget* banner = Shown(RecordOf(2));

    banner->UpdateUIData(kFunctionRight, ZRVipUIDataDetailSub);
    Click(ButtonOf(*banner));
    banner->hide();

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(
            ReportedEvent{kFunctionEvent, 3,
                          R"({"button_position":"3","day_number":4,"engine_status":3,"page_status":6,)"
                          R"("permission_type":"99"})",
                          0, false},
            ReportedEvent{"ViewPremiumMarketEntrance", 4,
                          R"({"engine_status":3,"page_id":"page","page_status":6,"permission_type":"99"})", 0, true}));
    ASSERT_THAT(clicked, SizeIs(1));
    EXPECT_EQ(clicked[0].access, 99);
    EXPECT_EQ(clicked[0].dataType, 3);
}

TEST_F(VipBannerWidgetTest, WindowIsTheBannerItselfWhenItHasNoParent) {
    SetRecord(kMarketRight, RecordOf(2));
    {
        CZRVipBannerWidget banner(kMarketRight, ZRVipUIDataMain, QString(), nullptr);
        Record(banner);
        banner.show();
        time.Settle();

        Click(ButtonOf(banner));

        ASSERT_THAT(clicked, SizeIs(1));
        EXPECT_EQ(clicked[0].window, &banner);
    }
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipBannerWidgetTest, PressesBesideTheButtonAndWithOtherButtonsAreNoClick) {
    const CZRVipBannerWidget* banner = Shown(RecordOf(2));
    ZButton* button = ButtonOf(*banner);

    PressAt(*button, Qt::LeftButton, QPoint(-1, 12));
    PressAt(*button, Qt::LeftButton, QPoint(button->width() / 2, -1));
    PressAt(*TextOf(*banner), Qt::LeftButton, QPoint(2, 2));
    Press(*button, Qt::RightButton);
    Press(*button, Qt::MiddleButton);

    EXPECT_THAT(clicked, IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipBannerWidgetTest, ClickSurvivesThatItsReceiverDeletesTheBanner) {
    const QPointer<CZRVipBannerWidget> banner = Shown(RecordOf(2));
    whenClicked = [&banner] { delete banner; };

    Click(ButtonOf(*banner));

    EXPECT_FALSE(banner);
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipBannerWidgetTest, ClickEndsQuietlyWhenTheReportDeletesTheBanner) {
    const QPointer<CZRVipBannerWidget> banner = Shown(RecordOf(2));
    WhenReporting([&banner] { delete banner; });

    Click(ButtonOf(*banner));

    EXPECT_FALSE(banner);
    EXPECT_THAT(clicked, IsEmpty());
    EXPECT_THAT(reports.Names(), ElementsAre(kMarketEvent));
}

TEST_F(VipBannerWidgetTest, BannerDoesNotFollowTheStatus) {
    const CZRVipBannerWidget* banner = Add();
    log.Forget();

    UserIs(NewMember());

    EXPECT_THAT(log.Lines(), Not(Contains(Info(HasSubstr("Refresh Banner")))));
    EXPECT_EQ(MarkOf(*banner)->maximumWidth(), 16);
}

class VipBannerWidgetHardTextTest : public VipBannerWidgetTest, public WithParamInterface<HardText> {};

TEST_P(VipBannerWidgetHardTextTest, PageIsNoWiderAndAllPartsAreWithinTheBanner) {
    for (const int type : {1, 2}) {
        CPremiumUIAccessData record = RecordOf(type, 5);
        record.strMainTitle = GetParam().text;
        record.strMainBtn = GetParam().text;
        SetRecord(kMarketRight, record);
        QWidget page;
        auto* layout = new QVBoxLayout(&page);
        auto* banner = new CZRVipBannerWidget(kMarketRight, ZRVipUIDataMain, QString(), &page);
        layout->addWidget(banner);
        layout->addStretch();
        page.resize(440, 200);
        page.show();
        time.Settle();

        EXPECT_EQ(page.width(), 440);
        EXPECT_LE(page.minimumSizeHint().width(), 440);
        for (const QWidget* part : banner->findChildren<QWidget*>()) {
            EXPECT_TRUE(part->isHidden() || banner->rect().contains(part->geometry()))
                << part->metaObject()->className();
        }
        EXPECT_LE(TextOf(*banner)->height(), 32);
        EXPECT_GT(TextOf(*banner)->width(), 20);
        EXPECT_FALSE(page.grab().isNull());
    }
    reports.Forget();
}

INSTANTIATE_TEST_SUITE_P(All, VipBannerWidgetHardTextTest, ValuesIn(HardTexts()), HardTextName);

struct EnabledCase {
    const char* uiType;
    int type;
    int dataType;
    const char* refusal;
};

void PrintTo(const EnabledCase& row, std::ostream* stream) {
    *stream << "UI type " << row.uiType << ", type " << row.type << ", data type " << row.dataType;
}

class VipBannerWidgetEnabledTest : public VipBannerWidgetTest, public WithParamInterface<EnabledCase> {
protected:
    void Check() {
        CPremiumUIAccessData record = RecordOf(GetParam().type);
        record.strUIType = QString::fromLatin1(GetParam().uiType);
        SetRecord(kFunctionRight, record);
        log.Forget();

        const bool isEnabled =
            CZRVipBannerWidget::IsVipBannerEnabled(kFunctionRight, ZRVipUIDataType(GetParam().dataType));

        const std::string refusal = GetParam().refusal;
        EXPECT_EQ(isEnabled, refusal.empty());
        EXPECT_THAT(log.Lines(), refusal.empty() ? Matcher<std::vector<LogLine>>(IsEmpty())
                                                 : ElementsAre(Info("[Vip] Vip Banner Disabled, " + refusal)));
    }
};

TEST_P(VipBannerWidgetEnabledTest, RuleLogsTheFirstReasonToRefuse) {
    Check();
}

TEST_P(VipBannerWidgetEnabledTest, RuleIsTheSameInTheNewerSystem) {
    UserIs(NewMember());
    Check();
}

INSTANTIATE_TEST_SUITE_P(
    All, VipBannerWidgetEnabledTest,
    Values(EnabledCase{"d", 3, 0, "UI Type Mismatch, Premium Access = 99, UI Type = d"},
           EnabledCase{"", 1, 1, "UI Type Mismatch, Premium Access = 99, UI Type = "},
           EnabledCase{"DD", 1, 1, "UI Type Mismatch, Premium Access = 99, UI Type = DD"},
           EnabledCase{"D ", 1, 1, "UI Type Mismatch, Premium Access = 99, UI Type = D "},
           EnabledCase{"A", 1, 1, "UI Type Mismatch, Premium Access = 99, UI Type = A"},
           EnabledCase{"D", 0, 0, "Activation Type Mismatch, Premium Access = 99, Activation Type = 0"},
           EnabledCase{"D", 3, 1, "Activation Type Mismatch, Premium Access = 99, Activation Type = 3"},
           EnabledCase{"D", 4, 1, "Activation Type Mismatch, Premium Access = 99, Activation Type = 4"},
           EnabledCase{"D", 7, 4, "Activation Type Mismatch, Premium Access = 99, Activation Type = 7"},
           EnabledCase{"D", -1, 1, "Activation Type Mismatch, Premium Access = 99, Activation Type = -1"},
           EnabledCase{"D", 1, -1, "Empty Premium Data, Premium Access = 99, Data Type = -1"},
           EnabledCase{"D", 2, 0, "Empty Premium Data, Premium Access = 99, Data Type = 0"},
           EnabledCase{"D", 5, 4, "Empty Premium Data, Premium Access = 99, Data Type = 4"}, EnabledCase{"D", 1, 1, ""},
           EnabledCase{"D", 2, 2, ""}, EnabledCase{"D", 5, 3, ""}, EnabledCase{"D", 6, 1, ""}));

TEST_F(VipBannerWidgetTest, RuleNeedsTitleAndButtonTextOfItsTextSet) {
    using Text = QString CPremiumUIData::*;
    const std::vector<std::pair<ZRVipUIDataType, Text>> texts = {
        {ZRVipUIDataMain, &CPremiumUIData::strMainTitle},
        {ZRVipUIDataMain, &CPremiumUIData::strMainBtn},
        {ZRVipUIDataDetail, &CPremiumUIData::strDetailTitle},
        {ZRVipUIDataDetail, &CPremiumUIData::strDetailBtn},
        {ZRVipUIDataDetailSub, &CPremiumUIData::strDetailSubTitle},
        {ZRVipUIDataDetailSub, &CPremiumUIData::strDetailSubBtn}};
    for (const auto& [dataType, text] : texts) {
        CPremiumUIAccessData record = RecordOf(1);
        (record.*text).clear();
        SetRecord(kMarketRight, record);
        log.Forget();

        for (const ZRVipUIDataType asked : {ZRVipUIDataMain, ZRVipUIDataDetail, ZRVipUIDataDetailSub}) {
            EXPECT_EQ(CZRVipBannerWidget::IsVipBannerEnabled(kMarketRight, asked), asked != dataType);
        }
        EXPECT_THAT(
            log.Lines(),
            ElementsAre(Info("[Vip] Vip Banner Disabled, Empty Premium Data, Premium Access = 98, Data Type = " +
                             std::to_string(int(dataType)))));
    }
}

}  // namespace
