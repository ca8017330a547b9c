#include "Vip/View/ZRVipIconWidget.h"

#include <QLabel>

#include "Vip/VipWidgetTest.h"

using namespace ::testing;

namespace {

class VipIconWidgetTest : public VipWidgetTest {
protected:
    CZRVipIconWidget* Add(EnPremiumAccess access = kMarketRight) { return new CZRVipIconWidget(access, &window); }

    static QLabel* LabelOf(const QWidget& icon) { return icon.findChild<QLabel*>(); }

    static QImage ImageOf(const QWidget& icon) { return LabelOf(icon)->pixmap(Qt::ReturnByValue).toImage(); }

    static QImage Mark() { return Scaled(ZResource::img_vip_16_normal, QSize(16, 16)); }
};

TEST_F(VipIconWidgetTest, IconHasNoSignalsOrSlotsOfItsOwn) {
    EXPECT_EQ(CZRVipIconWidget::staticMetaObject.superClass(), &CZRVipBaseWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(CZRVipIconWidget::staticMetaObject), IsEmpty());
}

TEST_F(VipIconWidgetTest, NameIsTheImageOrTheIconInTheOlderSystem) {
    EXPECT_EQ(CZRVipIconWidget::GetIconImageName(false).toStdString(), "img_vip_16_normal");
    EXPECT_EQ(CZRVipIconWidget::GetIconImageName(true).toStdString(), "icon_vip_16_normal");
    EXPECT_EQ(CZRVipIconWidget::GetIconImageSize(), QSize(16, 16));
}

TEST_F(VipIconWidgetTest, NameAndSizeAreEmptyInTheNewerSystem) {
    UserIs(NewMember());

    EXPECT_EQ(CZRVipIconWidget::GetIconImageName(false).toStdString(), "");
    EXPECT_EQ(CZRVipIconWidget::GetIconImageName(true).toStdString(), "");
    EXPECT_EQ(CZRVipIconWidget::GetIconImageSize(), QSize(0, 0));
}

TEST_F(VipIconWidgetTest, NameIsThatOfTheOlderSystemInAnotherEdition) {
    UserIs(NewMember());
    environment.SetVelora(false);

    EXPECT_EQ(CZRVipIconWidget::GetIconImageName(false).toStdString(), "img_vip_16_normal");
    EXPECT_EQ(CZRVipIconWidget::GetIconImageSize(), QSize(16, 16));
}

TEST_F(VipIconWidgetTest, IconFillsItsLayoutWithAScalingLabel) {
    const CZRVipIconWidget* icon = Add();

    ASSERT_TRUE(qobject_cast<QHBoxLayout*>(icon->layout()));
    EXPECT_EQ(LayoutOf(*icon->layout()), "0,0,0,0 0");
    ASSERT_EQ(icon->layout()->count(), 1);
    EXPECT_EQ(icon->layout()->itemAt(0)->widget(), LabelOf(*icon));
    EXPECT_TRUE(LabelOf(*icon)->hasScaledContents());
}

TEST_F(VipIconWidgetTest, IconShowsTheImageWhenItIsNew) {
    const CZRVipIconWidget* icon = Add();

    EXPECT_EQ(icon->parentWidget(), &window);
    EXPECT_EQ(icon->minimumSize(), QSize(16, 16));
    EXPECT_EQ(icon->maximumSize(), QSize(16, 16));
    EXPECT_EQ(LabelOf(*icon)->minimumSize(), QSize(16, 16));
    EXPECT_EQ(LabelOf(*icon)->maximumSize(), QSize(16, 16));
    EXPECT_EQ(ImageOf(*icon), Mark());
    EXPECT_NE(ImageOf(*icon), Scaled(ZResource::icon_vip_16_normal, QSize(16, 16)));
}

TEST_F(VipIconWidgetTest, IconHasNoExtentAndNoImageWhenTheSystemBecomesTheNewer) {
    CZRVipIconWidget* icon = Add();
    UserIs(NewUser());
    EXPECT_EQ(icon->minimumSize(), QSize(16, 16));

    icon->UpdateUIData(kMarketRight, ZRVipUIDataMain);

    EXPECT_EQ(icon->maximumSize(), QSize(0, 0));
    EXPECT_EQ(LabelOf(*icon)->maximumSize(), QSize(0, 0));
    EXPECT_TRUE(ImageOf(*icon).isNull());
}

TEST_F(VipIconWidgetTest, IconRefreshesWhenTheThemeChanges) {
    UserIs(NewUser());
    const CZRVipIconWidget* icon = Add();
    EXPECT_EQ(icon->maximumSize(), QSize(0, 0));
    UserIs(LegacyUser());

    SetTheme(zr_ui_theme::Manager::kThemeBlack);

    EXPECT_EQ(icon->minimumSize(), QSize(16, 16));
    EXPECT_EQ(ImageOf(*icon), Mark());
}

TEST_F(VipIconWidgetTest, IconReportsNothingWhenItIsShownAndHidden) {
    SetRecord(kMarketRight, RecordOf(2));
    CZRVipIconWidget* icon = Add();
    Show();
    icon->UpdateUIData(kFunctionRight, ZRVipUIDataDetail);

    icon->hide();

    EXPECT_THAT(reports.Started(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipIconWidgetTest, PressReachesWhatTheIconIsOn) {
    CZRVipIconWidget* icon = Add();
    Show();

    Press(*icon, Qt::LeftButton);

    EXPECT_EQ(window.presses, 1);
}

struct EnabledCase {
    bool isNew;
    int source;
    int type;
    const char* refusal;
};

void PrintTo(const EnabledCase& row, std::ostream* stream) {
    *stream << (row.isNew ? "new" : "old") << ", source " << row.source << ", type " << row.type;
}

class VipIconWidgetEnabledTest : public VipIconWidgetTest, public WithParamInterface<EnabledCase> {};

TEST_P(VipIconWidgetEnabledTest, RuleLogsTheFirstReasonToRefuse) {
    UserIs(GetParam().isNew ? NewMember() : LegacyMember());
    CPremiumUIAccessData record = RecordOf(GetParam().type);
    record.nActivationSource = GetParam().source;
    SetRecord(kMarketRight, record);
    log.Forget();

    const bool isEnabled = CZRVipIconWidget::IsVipIconEnabled(kMarketRight);

    const std::string refusal = GetParam().refusal;
    EXPECT_EQ(isEnabled, refusal.empty());
    EXPECT_THAT(log.Lines(), refusal.empty() ? Matcher<std::vector<LogLine>>(IsEmpty())
                                             : ElementsAre(Info("[Vip] Vip Icon Disabled, " + refusal)));
}

constexpr const char* kNew = "New Vip System, Premium Access = 98";
constexpr const char* kUnknownType = "Unknown Activation Type, Premium Access = 98";

INSTANTIATE_TEST_SUITE_P(
    All, VipIconWidgetEnabledTest,
    Values(EnabledCase{true, 2, 3, kNew}, EnabledCase{true, 1, 0, kNew},
           EnabledCase{false, 0, 3, "Activation Source Not Vip, Premium Access = 98, Activation Source = 0"},
           EnabledCase{false, 1, 0, "Activation Source Not Vip, Premium Access = 98, Activation Source = 1"},
           EnabledCase{false, 3, 3, "Activation Source Not Vip, Premium Access = 98, Activation Source = 3"},
           EnabledCase{false, -2, 3, "Activation Source Not Vip, Premium Access = 98, Activation Source = -2"},
           EnabledCase{false, 2, 0, kUnknownType}, EnabledCase{false, 2, 1, ""}, EnabledCase{false, 2, 2, ""},
           EnabledCase{false, 2, 3, ""}, EnabledCase{false, 2, 4, ""}, EnabledCase{false, 2, 5, ""},
           EnabledCase{false, 2, 6, ""}, EnabledCase{false, 2, 7, ""}, EnabledCase{false, 2, -1, ""}));

TEST_F(VipIconWidgetTest, RuleRefusesARightWithoutARecord) {
    log.Forget();
    EXPECT_FALSE(CZRVipIconWidget::IsVipIconEnabled(EnPremiumAccess(4711)));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Icon Disabled, Activation Source Not Vip, "
                                              "Premium Access = 4711, Activation Source = 0")));
}

}  // namespace
