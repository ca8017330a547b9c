#include "Vip/View/ZRVipTagWidget.h"

#include <QLabel>

#include "Vip/VipWidgetTest.h"
#include "framework/assertion.h"

using namespace ::testing;

namespace {

constexpr const char* kCentre = "https://www.test/centre";

class VipTagWidgetTest : public VipWidgetTest {
protected:
    VipTagWidgetTest() { links.Set(202011732, kCentre); }

    CZRVipTagWidget* Add(EnPremiumAccess access = kMarketRight, ZRVipTagType type = ZRVipTagName) {
        return new CZRVipTagWidget(access, type, QStringLiteral("page"), &window);
    }

    static QLabel* LabelOf(const QWidget& tag) { return tag.findChild<QLabel*>(); }

    static QImage ImageOf(const QWidget& tag) { return LabelOf(tag)->pixmap(Qt::ReturnByValue).toImage(); }
};

TEST_F(VipTagWidgetTest, TagHasNoSignalsOrSlotsOfItsOwn) {
    EXPECT_EQ(CZRVipTagWidget::staticMetaObject.superClass(), &CZRVipBaseWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(CZRVipTagWidget::staticMetaObject), IsEmpty());
}

struct ImageCase {
    int type;
    int grade;
    int language;
    const char* name;
    int width;
};

void PrintTo(const ImageCase& row, std::ostream* stream) {
    *stream << "type " << row.type << ", grade " << row.grade << ", language " << row.language;
}

class VipTagWidgetImageTest : public VipTagWidgetTest, public WithParamInterface<ImageCase> {};

TEST_P(VipTagWidgetImageTest, ImageIsChosenByTypeGradeAndLanguageInTheOlderSystem) {
    const auto type = ZRVipTagType(GetParam().type);
    language.Set(GetParam().language);

    EXPECT_EQ(CZRVipTagWidget::GetTagImageName(type, ZRVipGrade(GetParam().grade)).toStdString(), GetParam().name);
    EXPECT_EQ(CZRVipTagWidget::GetTagImageSize(type), QSize(GetParam().width, 16));
}

TEST_P(VipTagWidgetImageTest, ImageIsTheSameForAllInTheNewerSystem) {
    UserIs(NewUser());
    const auto type = ZRVipTagType(GetParam().type);
    language.Set(GetParam().language);

    EXPECT_EQ(CZRVipTagWidget::GetTagImageName(type, ZRVipGrade(GetParam().grade)).toStdString(),
              "img_engine_m_56x16_normal");
    EXPECT_EQ(CZRVipTagWidget::GetTagImageSize(type), QSize(56, 16));
}

TEST_P(VipTagWidgetImageTest, TagShowsTheImageInItsSize) {
    language.Set(GetParam().language);
    UserIs(LegacyUser(unsigned(GetParam().grade)));

    const CZRVipTagWidget* tag = Add(kMarketRight, ZRVipTagType(GetParam().type));

    const QSize size(GetParam().width, 16);
    EXPECT_EQ(tag->minimumSize(), size);
    EXPECT_EQ(tag->maximumSize(), size);
    const QString name = QString::fromLatin1(GetParam().name);
    EXPECT_EQ(ImageOf(*tag), name.isEmpty() ? QImage() : Scaled(name, size));
}

INSTANTIATE_TEST_SUITE_P(
    All, VipTagWidgetImageTest,
    Values(ImageCase{0, 0, 2, "", 26}, ImageCase{0, 1, 0, "img_viptab1_26x16_normal", 26},
           ImageCase{0, 2, 1, "img_viptab2_26x16_normal", 26}, ImageCase{0, 3, 5, "img_viptab3_26x16_normal", 26},
           ImageCase{1, 0, -1, "img_viptaben_76x16_normal", 76}, ImageCase{1, 0, 0, "img_viptabcn_45x16_normal", 45},
           ImageCase{1, 1, 1, "img_viptabhk_45x16_normal", 45}, ImageCase{1, 2, 2, "img_viptaben_76x16_normal", 76},
           ImageCase{1, 3, 3, "img_viptaben_76x16_normal", 76}, ImageCase{1, 4, 4, "img_viptaben_76x16_normal", 76},
           ImageCase{1, 9, 5, "img_viptabjp_71x16_normal", 71}, ImageCase{1, 0, 6, "img_viptaben_76x16_normal", 76},
           ImageCase{1, 0, 7, "img_viptaben_76x16_normal", 76}, ImageCase{1, 0, 8, "img_viptaben_76x16_normal", 76},
           ImageCase{2, 1, 1, "img_viptabhk_45x16_normal", 45}, ImageCase{-1, 1, 5, "img_viptabjp_71x16_normal", 71}));

class VipTagWidgetGradeTest : public VipTagWidgetTest, public WithParamInterface<int> {};

TEST_P(VipTagWidgetGradeTest, GradeWithoutAnImageRaisesTheAssertionBeforeItsLogLine) {
    log.Forget();

    EXPECT_EQ(CZRVipTagWidget::GetTagImageName(ZRVipTagGrade, ZRVipGrade(GetParam())).toStdString(), "");

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Unexpected Vip Grade, Grade = " + std::to_string(GetParam()))));
    EXPECT_THAT(log.Assertions(),
                ElementsAre(FieldsAre(FrameWork::kAssetDefensive, "", "ZRGrowth", _, _, "Unexpected Vip Grade")));
}

TEST_P(VipTagWidgetGradeTest, GradeWithoutAnImageIsSilentInTheNewerSystem) {
    UserIs(NewMember());
    log.Forget();

    EXPECT_EQ(CZRVipTagWidget::GetTagImageName(ZRVipTagGrade, ZRVipGrade(GetParam())).toStdString(),
              "img_engine_m_56x16_normal");

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(All, VipTagWidgetGradeTest, Values(-1, 4, 5, 1000));

TEST_F(VipTagWidgetTest, UnexpectedGradeIsReportedAtEachRefreshAndLeavesTheImage) {
    UserIs(LegacyUser(2));
    CZRVipTagWidget* tag = Add(kMarketRight, ZRVipTagGrade);
    const QImage before = ImageOf(*tag);
    EXPECT_FALSE(before.isNull());
    UserIs(LegacyUser(4));
    log.Forget();

    tag->UpdateUIData(kMarketRight, ZRVipUIDataMain);
    tag->UpdateUIData(kMarketRight, ZRVipUIDataMain);

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Unexpected Vip Grade, Grade = 4"),
                                         Error("[Vip] Unexpected Vip Grade, Grade = 4")));
    EXPECT_THAT(log.Assertions(), SizeIs(2));
    EXPECT_EQ(ImageOf(*tag), before);
}

TEST_F(VipTagWidgetTest, ImageStaysWhenTheGradeEnds) {
    UserIs(LegacyUser(3));
    CZRVipTagWidget* tag = Add(kMarketRight, ZRVipTagGrade);
    UserIs(LegacyUser(0));
    log.Forget();

    tag->UpdateUIData(kMarketRight, ZRVipUIDataMain);

    EXPECT_EQ(ImageOf(*tag), Scaled(ZResource::img_viptab3_26x16_normal, QSize(26, 16)));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(VipTagWidgetTest, TagTakesTheNewImageAndSizeWhenTheThemeChanges) {
    const CZRVipTagWidget* tag = Add();
    EXPECT_EQ(tag->minimumSize(), QSize(76, 16));
    UserIs(NewUser());
    EXPECT_EQ(tag->minimumSize(), QSize(76, 16));

    SetTheme(zr_ui_theme::Manager::kThemeBlack);

    EXPECT_EQ(tag->maximumSize(), QSize(56, 16));
    EXPECT_EQ(ImageOf(*tag), Scaled(ZResource::img_engine_m_56x16_normal, QSize(56, 16)));
}

TEST_F(VipTagWidgetTest, TagFillsItsLayoutWithAScalingLabel) {
    const CZRVipTagWidget* tag = Add();

    ASSERT_TRUE(qobject_cast<QHBoxLayout*>(tag->layout()));
    EXPECT_EQ(LayoutOf(*tag->layout()), "0,0,0,0 0");
    ASSERT_EQ(tag->layout()->count(), 1);
    EXPECT_EQ(tag->layout()->itemAt(0)->widget(), LabelOf(*tag));
    EXPECT_TRUE(LabelOf(*tag)->hasScaledContents());
    EXPECT_EQ(tag->parentWidget(), &window);
}

TEST_F(VipTagWidgetTest, ExposureIsReportedWithoutPageAndStateWhateverTheRecord) {
    CZRVipTagWidget* tag = Add(kFunctionRight);
    Show();
    UserIs(NewMember());

    tag->hide();

    EXPECT_THAT(reports.Started(), ElementsAre("ExposeMemberIcon"));
    EXPECT_THAT(reports.Events(), ElementsAre(ReportedEvent{"ExposeMemberIcon", 3,
                                                            R"({"engine_status":2,"permission_type":"99"})", 0, true}));
}

TEST_F(VipTagWidgetTest, ExposureIsReportedWhenTheRightIsTheFirst) {
    CZRVipTagWidget* tag = Add(EnPremiumAccess(1));
    Show();

    tag->hide();

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeMemberIcon"));
}

TEST_F(VipTagWidgetTest, ExposureIsReportedAgainWhenASecondHideComes) {
    CZRVipTagWidget* tag = Add();
    Show();

    tag->hide();
    QHideEvent hide;
    QCoreApplication::sendEvent(tag, &hide);

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeMemberIcon", "ExposeMemberIcon"));
}

TEST_F(VipTagWidgetTest, ShowReplacesTheTimerWithoutEndingIt) {
    int timers = 0;
    reports.NameTimers([&timers](const std::string& event) { return event + std::to_string(++timers); });
    CZRVipTagWidget* tag = Add();
    Show();

    QShowEvent show;
    QCoreApplication::sendEvent(tag, &show);
    tag->hide();

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeMemberIcon2"));
}

TEST_F(VipTagWidgetTest, ExposureIsNotReportedWhenThereIsNoRightOrNoTimer) {
    CZRVipTagWidget* tag = Add(EnPremiumAccess(0));
    Show();
    tag->hide();
    EXPECT_THAT(reports.Started(), IsEmpty());
    QHideEvent hide;
    QCoreApplication::sendEvent(Add(), &hide);

    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipTagWidgetTest, UpdateKeepsTheFirstRight) {
    SetRecord(kFunctionRight, RecordOf(3));
    CZRVipTagWidget* tag = Add(kMarketRight);
    Show();

    tag->UpdateUIData(kFunctionRight, ZRVipUIDataDetail);
    Press(*tag, Qt::LeftButton);
    tag->hide();

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(ReportedEvent{"ClickMemberIcon", 3, R"({"engine_status":3,"permission_type":"98"})", 0, false},
                    ReportedEvent{"ExposeMemberIcon", 3, R"({"engine_status":3,"permission_type":"98"})", 0, true}));
    urls.Forget();
}

TEST_F(VipTagWidgetTest, LeftClickReportsAndThenOpensTheMembershipCentre) {
    CZRVipTagWidget* tag = Add();
    Show();
    std::vector<std::string> before;
    urls.WhenOpening([&] { before = reports.Names(); });

    Click(tag);

    EXPECT_THAT(
        reports.Events(),
        ElementsAre(ReportedEvent{"ClickMemberIcon", 3, R"({"engine_status":3,"permission_type":"98"})", 0, false}));
    EXPECT_THAT(before, ElementsAre("ClickMemberIcon"));
    EXPECT_THAT(links.Asked(), ElementsAre(202011732ul));
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedAsMembershipPage(kCentre)));
    EXPECT_EQ(window.presses, 0);
}

TEST_F(VipTagWidgetTest, ReportComesBeforeTheLinkIsLookedUp) {
    CZRVipTagWidget* tag = Add();
    Show();
    size_t asked = 99;
    WhenReporting([&] { asked = links.Asked().size(); });

    Click(tag);

    EXPECT_EQ(asked, 0u);
    EXPECT_THAT(reports.Names(), SizeIs(1));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(VipTagWidgetTest, ClickOpensTheCentreWithoutAReportWhenThereIsNoRight) {
    CZRVipTagWidget* tag = Add(EnPremiumAccess(0));
    Show();

    Click(tag);

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(urls.Opened(), ElementsAre(OpenedAsMembershipPage(kCentre)));
}

TEST_F(VipTagWidgetTest, ClickOnlyReportsWhenTheLinkIsUnknown) {
    links.Set(202011732, "");
    CZRVipTagWidget* tag = Add();
    Show();
    log.Forget();

    Click(tag);

    EXPECT_THAT(reports.Names(), ElementsAre("ClickMemberIcon"));
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Open Vip Web Page failed, strUrl is empty")));
}

class VipTagWidgetButtonTest : public VipTagWidgetTest, public WithParamInterface<Qt::MouseButton> {};

TEST_P(VipTagWidgetButtonTest, OtherButtonsDoNothingAndReachNothingBehindTheTag) {
    CZRVipTagWidget* tag = Add();
    Show();

    Press(*tag, GetParam());

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(links.Asked(), IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
    EXPECT_EQ(window.presses, 0);
}

INSTANTIATE_TEST_SUITE_P(All, VipTagWidgetButtonTest,
                         Values(Qt::RightButton, Qt::MiddleButton, Qt::BackButton, Qt::ForwardButton));

TEST_F(VipTagWidgetTest, PressBesideTheTagIsNone) {
    CZRVipTagWidget* tag = Add();
    tag->move(20, 20);
    Show();

    PressAt(*tag, Qt::LeftButton, QPoint(-1, 8));
    PressAt(*tag, Qt::LeftButton, QPoint(tag->width(), 8));

    EXPECT_EQ(window.presses, 2);
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipTagWidgetTest, ReleaseIsNoClick) {
    CZRVipTagWidget* tag = Add();
    tag->move(20, 20);
    Show();

    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, QPoint(2, 2));
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, tag->mapTo(&window, tag->rect().center()));

    EXPECT_THAT(reports.Events(), IsEmpty());
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

TEST_F(VipTagWidgetTest, ClickSurvivesThatThePageDeletesTheTag) {
    const QPointer<CZRVipTagWidget> tag = Add();
    Show();
    urls.WhenOpening([&tag] { delete tag; });

    Click(tag);

    EXPECT_FALSE(tag);
    EXPECT_THAT(reports.Names(), ElementsAre("ClickMemberIcon"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(VipTagWidgetTest, PageOpensWhenTheReportDeletesTheTag) {
    const QPointer<CZRVipTagWidget> tag = Add();
    Show();
    WhenReporting([&tag] { delete tag; });

    Click(tag);

    EXPECT_FALSE(tag);
    EXPECT_THAT(reports.Names(), ElementsAre("ClickMemberIcon"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

struct EnabledCase {
    int source;
    int type;
    const char* refusal;
};

void PrintTo(const EnabledCase& row, std::ostream* stream) {
    *stream << "source " << row.source << ", type " << row.type;
}

class VipTagWidgetEnabledTest : public VipTagWidgetTest, public WithParamInterface<EnabledCase> {
protected:
    void Check() {
        CPremiumUIAccessData record = RecordOf(GetParam().type);
        record.nActivationSource = GetParam().source;
        SetRecord(kMarketRight, record);
        log.Forget();

        const bool isEnabled = CZRVipTagWidget::IsVipTagEnabled(kMarketRight);

        const std::string refusal = GetParam().refusal;
        EXPECT_EQ(isEnabled, refusal.empty());
        EXPECT_THAT(log.Lines(), refusal.empty() ? Matcher<std::vector<LogLine>>(IsEmpty())
                                                 : ElementsAre(Info("[Vip] Vip Tag Disabled, " + refusal)));
    }
};

TEST_P(VipTagWidgetEnabledTest, RuleLogsTheFirstReasonToRefuse) {
    Check();
}

TEST_P(VipTagWidgetEnabledTest, RuleIsTheSameInTheNewerSystem) {
    UserIs(NewMember());
    Check();
}

constexpr const char* kNotFull = "Activation Type Not Full, Premium Access = 98";

INSTANTIATE_TEST_SUITE_P(
    All, VipTagWidgetEnabledTest,
    Values(EnabledCase{0, 3, "Activation Source Not Vip, Premium Access = 98, Activation Source = 0"},
           EnabledCase{1, 0, "Activation Source Not Vip, Premium Access = 98, Activation Source = 1"},
           EnabledCase{3, 3, "Activation Source Not Vip, Premium Access = 98, Activation Source = 3"},
           EnabledCase{2, 0, kNotFull}, EnabledCase{2, 1, kNotFull}, EnabledCase{2, 2, kNotFull}, EnabledCase{2, 3, ""},
           EnabledCase{2, 4, kNotFull}, EnabledCase{2, 5, kNotFull}, EnabledCase{2, 6, kNotFull},
           EnabledCase{2, 7, kNotFull}, EnabledCase{2, -1, kNotFull}));

}  // namespace
