#include "Vip/View/ZRVipBaseWidget.h"

#include <QTest>
#include <type_traits>

#include "Vip/VipWidgetTest.h"

using namespace ::testing;

namespace {

class CProbe : public CZRVipBaseWidget {
public:
    CProbe(EnPremiumAccess access, const QString& pageId, QWidget* parent = nullptr)
        : CZRVipBaseWidget(access, pageId, parent) {}

    void UpdateUIData(EnPremiumAccess /*access*/, ZRVipUIDataType /*dataType*/) override {}

    static std::vector<std::ptrdiff_t> Places() {
        return {PlaceOf(&IGrowthVipBaseWidget::UpdateUIData), PlaceOf(&CProbe::ReportExposeStart),
                PlaceOf(&CProbe::ReportExposeEnd), PlaceOf(&CProbe::RefreshUI)};
    }

    using CZRVipBaseWidget::m_enAccess;

    int refreshed = 0;

protected:
    void RefreshUI() override {
        CZRVipBaseWidget::RefreshUI();
        ++refreshed;
    }
};

class VipBaseWidgetTest : public VipWidgetTest {
protected:
    CProbe* Add(EnPremiumAccess access, const QString& pageId = QString()) {
        return new CProbe(access, pageId, &window);
    }

    /// Returns the reports of a show and a hide of a widget of that right.
    std::vector<ReportedEvent> ReportsOf(EnPremiumAccess access, const QString& pageId = QString()) {
        CProbe* widget = Add(access, pageId);
        Show();
        widget->hide();
        return reports.Events();
    }
};

TEST_F(VipBaseWidgetTest, BaseStaysAbstractBelowTheContractsWidget) {
    static_assert(std::is_base_of<IGrowthVipBaseWidget, CZRVipBaseWidget>::value, "");
    static_assert(std::is_abstract<CZRVipBaseWidget>::value, "");
    EXPECT_EQ(CZRVipBaseWidget::staticMetaObject.superClass(), &IGrowthVipBaseWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(CZRVipBaseWidget::staticMetaObject), IsEmpty());
}

TEST_F(VipBaseWidgetTest, VirtualOperationsFollowTheUpdateInTheirOrder) {
    const std::ptrdiff_t update = CProbe::Places()[0];
    EXPECT_THAT(CProbe::Places(), ElementsAre(update, update + 1, update + 2, update + 3));
}

TEST_F(VipBaseWidgetTest, WidgetRefreshesAtOnceWhenTheThemeChanges) {
    CProbe* widget = Add(kMarketRight);
    EXPECT_EQ(widget->refreshed, 0);

    SetTheme(zr_ui_theme::Manager::kThemeBlack);
    EXPECT_EQ(widget->refreshed, 1);
    SetTheme(zr_ui_theme::Manager::kThemeLight);
    EXPECT_EQ(widget->refreshed, 2);
}

TEST_F(VipBaseWidgetTest, WidgetLeavesTheThemeWhenItIsDeleted) {
    int refreshed = 0;
    CProbe* widget = Add(kMarketRight);
    CProbe* other = Add(kMarketRight);
    QObject::connect(widget, &QObject::destroyed, [&refreshed] { refreshed = -1; });

    delete widget;
    SetTheme(zr_ui_theme::Manager::kThemeBlack);

    EXPECT_EQ(refreshed, -1);
    EXPECT_EQ(other->refreshed, 1);
}

TEST_F(VipBaseWidgetTest, ExposureReportsTheRightThePageAndTheStatusWhenTheWidgetHides) {
    SetRecord(kMarketRight, RecordOf(2));

    const std::vector<ReportedEvent> events = ReportsOf(kMarketRight, QStringLiteral("page \u20ac"));

    EXPECT_THAT(reports.Started(), ElementsAre("ViewPremiumMarketEntrance"));
    EXPECT_THAT(events, ElementsAre(ReportedEvent{"ViewPremiumMarketEntrance", 4,
                                                  "{\"engine_status\":3,\"page_id\":\"page \u20ac\",\"page_status\":2,"
                                                  "\"permission_type\":\"98\"}",
                                                  0, true}));
}

TEST_F(VipBaseWidgetTest, ExposureHasNoPageWhenTheCallerNamedNone) {
    SetRecord(kFunctionRight, RecordOf(6));

    EXPECT_THAT(ReportsOf(kFunctionRight),
                ElementsAre(ReportedEvent{"ViewPremiumFunctionEntrance", 4,
                                          R"({"engine_status":3,"page_status":6,"permission_type":"99"})", 0, true}));
}

TEST_F(VipBaseWidgetTest, ExposureReadsRecordAndStatusWhenTheWidgetHides) {
    SetRecord(kMarketRight, RecordOf(0));
    CProbe* widget = Add(kMarketRight);
    Show();

    SetRecord(kMarketRight, RecordOf(5));
    UserIs(NewMember());
    widget->hide();

    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{"ViewPremiumMarketEntrance", 4,
                                          R"({"engine_status":2,"page_status":5,"permission_type":"98"})", 0, true}));
}

TEST_F(VipBaseWidgetTest, ExposureBelongsToTheRightOfTheHideUnderTheEventOfTheShow) {
    SetRecord(kFunctionRight, RecordOf(3));
    CProbe* widget = Add(kMarketRight);
    Show();

    widget->m_enAccess = kFunctionRight;
    widget->hide();

    EXPECT_THAT(reports.Events(),
                ElementsAre(ReportedEvent{"ViewPremiumMarketEntrance", 4,
                                          R"({"engine_status":3,"page_status":3,"permission_type":"99"})", 0, true}));
}

struct DayCase {
    int type;
    int days;
    const char* day;
};

void PrintTo(const DayCase& row, std::ostream* stream) {
    *stream << "type " << row.type << ", days " << row.days;
}

class VipBaseWidgetDaysTest : public VipBaseWidgetTest, public WithParamInterface<DayCase> {};

TEST_P(VipBaseWidgetDaysTest, DaysGoOutForALimitedTimeOnly) {
    SetRecord(kMarketRight, RecordOf(GetParam().type, GetParam().days));

    const std::vector<ReportedEvent> events = ReportsOf(kMarketRight);

    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].params, std::string("{") + GetParam().day + R"("engine_status":3,"page_status":)" +
                                    std::to_string(GetParam().type) + R"(,"permission_type":"98"})");
}

INSTANTIATE_TEST_SUITE_P(All, VipBaseWidgetDaysTest,
                         Values(DayCase{1, 5, R"("day_number":5,)"}, DayCase{1, 1, R"("day_number":1,)"},
                                DayCase{1, 0, R"("day_number":0,)"}, DayCase{1, -1, ""}, DayCase{2, 5, ""},
                                DayCase{3, 5, ""}, DayCase{4, 0, ""}, DayCase{5, 5, ""}, DayCase{6, 5, ""},
                                DayCase{7, 5, ""}, DayCase{-1, 5, ""}));

struct EventCase {
    int right;
    const char* event;
};

void PrintTo(const EventCase& row, std::ostream* stream) {
    *stream << "right " << row.right;
}

class VipBaseWidgetEventTest : public VipBaseWidgetTest, public WithParamInterface<EventCase> {};

TEST_P(VipBaseWidgetEventTest, EventDependsOnTheNumberOfTheRight) {
    SetRecord(EnPremiumAccess(GetParam().right), RecordOf(2));

    const std::vector<ReportedEvent> events = ReportsOf(EnPremiumAccess(GetParam().right));

    EXPECT_THAT(reports.Started(), ElementsAre(GetParam().event));
    ASSERT_THAT(events, SizeIs(1));
    EXPECT_EQ(events[0].name, GetParam().event);
    EXPECT_EQ(events[0].code, 4);
    EXPECT_THAT(events[0].params, HasSubstr("\"permission_type\":\"" + std::to_string(GetParam().right) + "\""));
}

INSTANTIATE_TEST_SUITE_P(All, VipBaseWidgetEventTest,
                         Values(EventCase{-7, "ViewPremiumMarketEntrance"}, EventCase{1, "ViewPremiumMarketEntrance"},
                                EventCase{98, "ViewPremiumMarketEntrance"},
                                EventCase{99, "ViewPremiumFunctionEntrance"},
                                EventCase{100, "ViewPremiumFunctionEntrance"},
                                EventCase{1000, "ViewPremiumFunctionEntrance"}));

TEST_F(VipBaseWidgetTest, NothingIsMeasuredWhenThereIsNoRight) {
    SetRecord(EnPremiumAccess(0), RecordOf(2));

    EXPECT_THAT(ReportsOf(EnPremiumAccess(0)), IsEmpty());
    EXPECT_THAT(reports.Started(), IsEmpty());
}

TEST_F(VipBaseWidgetTest, ExposureStaysUnreportedWhenTheRightIsLostMeanwhile) {
    SetRecord(EnPremiumAccess(0), RecordOf(2));
    CProbe* widget = Add(kMarketRight);
    Show();

    widget->m_enAccess = EnPremiumAccess(0);
    widget->hide();

    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipBaseWidgetTest, HideReportsNothingWhenTheWidgetWasNeverShown) {
    SetRecord(kMarketRight, RecordOf(2));
    CProbe* widget = Add(kMarketRight);

    QHideEvent hide;
    QCoreApplication::sendEvent(widget, &hide);

    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipBaseWidgetTest, HideReportsNothingWhenNoTimerCouldStart) {
    SetRecord(kMarketRight, RecordOf(2));
    reports.GiveNoTimers();

    EXPECT_THAT(ReportsOf(kMarketRight), IsEmpty());
}

TEST_F(VipBaseWidgetTest, ExposureEndsWhenTheWindowSystemHidesTheWindow) {
    SetRecord(kMarketRight, RecordOf(2));
    CProbe* widget = Add(kMarketRight);
    Show();

    // As after minimising.
    QHideEvent hide;
    QSpontaneKeyEvent::setSpontaneous(&hide);
    qApp->notify(widget, &hide);
    EXPECT_THAT(reports.Names(), ElementsAre("ViewPremiumMarketEntrance"));

    QShowEvent show;
    QSpontaneKeyEvent::setSpontaneous(&show);
    qApp->notify(widget, &show);
    EXPECT_THAT(reports.Started(), SizeIs(2));
}

TEST_F(VipBaseWidgetTest, HideReportsAgainWhenNoShowCameBetween) {
    SetRecord(kMarketRight, RecordOf(2));
    CProbe* widget = Add(kMarketRight);
    Show();

    widget->hide();
    QHideEvent hide;
    QCoreApplication::sendEvent(widget, &hide);

    EXPECT_THAT(reports.Names(), ElementsAre("ViewPremiumMarketEntrance", "ViewPremiumMarketEntrance"));
    EXPECT_THAT(reports.Started(), SizeIs(1));
}

TEST_F(VipBaseWidgetTest, ExposureContinuesWhenTheTypeIsUnknownAtTheHide) {
    SetRecord(kMarketRight, RecordOf(0));
    CProbe* widget = Add(kMarketRight);
    Show();
    widget->hide();
    EXPECT_THAT(reports.Events(), IsEmpty());

    SetRecord(kMarketRight, RecordOf(4));
    QHideEvent hide;
    QCoreApplication::sendEvent(widget, &hide);

    EXPECT_THAT(reports.Names(), ElementsAre("ViewPremiumMarketEntrance"));
}

TEST_F(VipBaseWidgetTest, HideReportsNothingWhenTheRightHasNoRecord) {
    EXPECT_THAT(ReportsOf(kMarketRight), IsEmpty());
}

TEST_F(VipBaseWidgetTest, ShowReplacesTheTimerWithoutEndingIt) {
    SetRecord(kMarketRight, RecordOf(2));
    int timers = 0;
    reports.NameTimers([&timers](const std::string& event) { return event + std::to_string(++timers); });
    CProbe* widget = Add(kMarketRight);
    Show();

    QShowEvent show;
    QCoreApplication::sendEvent(widget, &show);
    EXPECT_THAT(reports.Events(), IsEmpty());
    widget->hide();

    EXPECT_THAT(reports.Names(), ElementsAre("ViewPremiumMarketEntrance2"));
}

TEST_F(VipBaseWidgetTest, DeletionReportsNothingWhenTheWidgetIsVisible) {
    SetRecord(kMarketRight, RecordOf(2));
    CProbe* widget = Add(kMarketRight);
    Show();

    delete widget;

    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(VipBaseWidgetTest, DeletionOfTheVisibleWindowEndsTheExposure) {
    SetRecord(kMarketRight, RecordOf(2));
    auto* top = new QWidget;
    new CProbe(kMarketRight, QString(), top);
    top->show();
    time.Settle();

    delete top;

    EXPECT_THAT(reports.Names(), ElementsAre("ViewPremiumMarketEntrance"));
}

/// Without the fixture's window, so that nobody asked for the theme.
class VipBaseWidgetAloneTest : public ScriptedHostTest {};

TEST_F(VipBaseWidgetAloneTest, WidgetFollowsNoThemeWhenNobodyAskedForItBefore) {
    ASSERT_EQ(zr_ui_theme::Manager::instancePtr(), nullptr);
    CProbe widget(kMarketRight, QString());
    EXPECT_EQ(zr_ui_theme::Manager::instancePtr(), nullptr);

    host::CThemeControl::Set(zr_ui_theme::Manager::kThemeBlack);

    EXPECT_EQ(widget.refreshed, 0);
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

}  // namespace
