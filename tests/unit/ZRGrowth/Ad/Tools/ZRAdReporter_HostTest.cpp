// The reports of an ad beside what the host does: it refuses, names its measurements, and is asked in an order.
#include <gmock/gmock.h>

#include "Ad/Tools/ZRAdReporter.h"
#include "core/IClientState.h"
#include "framework/Ports.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const QString kRequest = QStringLiteral("r-1");
const QString kAd = QStringLiteral("18088");

class AdReporterHostTest : public ScriptedHostTest {
protected:
    AdReporterHostTest() { environment.SetDeviceId("dev"); }

    void Forget() {
        reports.Forget();
        log.Forget();
    }

    CZRAdReporter reporter{nullptr};
};

// Refusals

TEST_F(AdReporterHostTest, AFilterThatIsRefusedSaysFailed) {
    reports.Refuse(Failing::Always());

    reporter.ReportAdDisplayFilter(kRequest, {kAd}, {QStringLiteral("a")});

    EXPECT_THAT(reports.Names(), ElementsAre("FilterAdDisplay"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report AdDisplayFilter failed, requestId = r-1, adIds = 18088,")));
}

TEST_F(AdReporterHostTest, AnExposureWhoseStartIsRefusedIsOpenAllTheSame) {
    reports.Refuse(Failing::Nth(1));
    reporter.ReportExposeAdStart(kRequest, kAd);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd start, exposeAdEvent = ExposeAd, adId = 18088,"),
                                         Info("[Ad] Report StartExposeAd failed, exposeId = dev170000000018088, "
                                              "requestId = r-1, adId = 18088,")));
    time.Advance(1500ms);
    EXPECT_EQ(reporter.GetExposeId(kAd), QStringLiteral("dev170000000018088"));
    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 1500);
    Forget();

    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Report ExposeAd end success, exposeId = dev170000000018088, "
                                              "requestId = r-1, adId = 18088,")));
}

TEST_F(AdReporterHostTest, AnActionThatIsRefusedSaysFailedAndTheExposureStaysOpen) {
    reporter.ReportExposeAdStart(kRequest, kAd);
    Forget();
    reports.Refuse(Failing::Always());

    reporter.ReportClickAd(kRequest, ZRAdActionTypeClick, kAd, false);

    EXPECT_THAT(reports.Names(), ElementsAre("ClickAd"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ClickAd failed, actionId = dev170000000018088, requestId = r-1, "
                                 "actionType = 0, exposeId = dev170000000018088, adId = 18088, jumpResult = false")));
    EXPECT_EQ(reporter.GetExposeId(kAd), QStringLiteral("dev170000000018088"));
}

// Measurements

TEST_F(AdReporterHostTest, AnExposureEndsItsOwnMeasurementByTheHostsNameForIt) {
    int started = 0;
    reports.NameTimers([&started](const std::string& event) { return event + "#" + std::to_string(++started); });
    const QString other = QStringLiteral("2");
    reporter.ReportExposeAdStart(kRequest, kAd);
    reporter.ReportExposeAdStart(kRequest, other);
    EXPECT_THAT(reports.Started(), ElementsAre("ExposeAd", "ExposeAd"));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Report ExposeAd start, exposeAdEvent = ExposeAd#1, adId = 18088,"), _,
                            Info("[Ad] Report ExposeAd start, exposeAdEvent = ExposeAd#2, adId = 2,"), _));
    EXPECT_THAT(reports.Names(), ElementsAre("StartExposeAd", "StartExposeAd"));
    Forget();

    reporter.ReportExposeAdEnd(kRequest, other);
    reporter.ReportExposeAdEnd(kRequest, kAd);

    EXPECT_THAT(reports.Names(), ElementsAre("ExposeAd#2", "ExposeAd#1"));
    EXPECT_THAT(log.Lines(), Each(Info(StartsWith("[Ad] Report ExposeAd end success, "))));
}

// Texts

TEST_F(AdReporterHostTest, AnAdNamedInAnyScriptIsReportedAndLoggedAsItIs) {
    const QString ad = QStringLiteral("广告一");
    reporter.ReportSendAdRequest(kRequest, 42, {ad, ad});
    reporter.ReportAdDisplayFilter(kRequest, {ad}, {QStringLiteral("区域不符")});
    reporter.ReportExposeAdStart(kRequest, ad);
    reporter.ReportClickAd(kRequest, ZRAdActionTypeClose, ad, false);
    reporter.ReportExposeAdEnd(kRequest, ad);

    const auto event = [](const char* name, int code, const char* params, bool timed = false) {
        return ReportedEvent{name, code, params, 0, timed};
    };
    EXPECT_THAT(
        reports.Events(),
        ElementsAre(
            event("SendAdRequest", 3,
                  R"({"advertisement_ids":["广告一","广告一"],"advertisement_position":"42","request_id":"r-1"})"),
            event("FilterAdDisplay", 1,
                  R"({"advertisement_filter":["区域不符"],"advertisement_ids":["广告一"],"request_id":"r-1"})"),
            event("StartExposeAd", 1,
                  R"({"advertisement_id":"广告一","exposure_id":"dev1700000000广告一","request_id":"r-1"})"),
            event("ClickAd", 4,
                  R"({"action_id":"dev1700000000广告一","action_type":"2","advertisement_id":"广告一",)"
                  R"("exposure_id":"dev1700000000广告一","request_id":"r-1"})"),
            event("ExposeAd", 1,
                  R"({"advertisement_id":"广告一","exposure_id":"dev1700000000广告一","request_id":"r-1"})", true)));
    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Ad] Report SendAdRequest success, requestId = r-1, adPosition = 42, adIds = 广告一,广告一"),
                    Info("[Ad] Report AdDisplayFilter success, requestId = r-1, adIds = 广告一,"),
                    Info("[Ad] Report ExposeAd start, exposeAdEvent = ExposeAd, adId = 广告一,"),
                    Info("[Ad] Report StartExposeAd success, exposeId = dev1700000000广告一, requestId = r-1, "
                         "adId = 广告一,"),
                    Info("[Ad] Report ClickAd success, actionId = dev1700000000广告一, requestId = r-1, "
                         "actionType = 2, exposeId = dev1700000000广告一, adId = 广告一, jumpResult = false"),
                    Info("[Ad] Report ExposeAd end success, exposeId = dev1700000000广告一, requestId = r-1, "
                         "adId = 广告一,")));
}

// The order of a start

/// A host that writes down what it is asked, beside the lines of the log. Its clock moves a second at each look.
class CAskedHost : public ILog, public ITimeAndRandom, public IClientState, public IReports {
public:
    CAskedHost() {
        host::Ports ports;
        ports.log = this;
        ports.state = this;
        ports.timeAndRandom = this;
        ports.reports = this;
        host::Install(ports);
    }
    ~CAskedHost() override { host::Uninstall(); }
    CAskedHost(const CAskedHost&) = delete;
    CAskedHost& operator=(const CAskedHost&) = delete;

    int64_t ServerTimeMs() const override {
        asked.emplace_back("clock");
        return 1000 * ++m_nSeconds;
    }
    std::string DeviceId() const override {
        asked.emplace_back("device");
        return "dev";
    }
    std::shared_ptr<std::string> TimerStart(const std::string& event) override {
        asked.push_back("timer " + event);
        return std::make_shared<std::string>(event);
    }
    bool Report(const ReportEvent& event) override {
        asked.push_back("report " + event.name);
        return true;
    }
    bool TimerEnd(const ReportEvent& event) override { return Report(event); }
    void Write(const LogRecord& record) override { asked.push_back(record.text.toStdString()); }
    void AssertionFailed(const AssertionRecord& record) override { asked.push_back(record.expression); }

    mutable std::vector<std::string> asked;

private:
    mutable int64_t m_nSeconds = 0;
};

TEST(AdReporterOrderTest, AStartTakesTheTimeThenMakesTheIdThenStartsTheTimerAndReportsLast) {
    CAskedHost host;
    CZRAdReporter reporter(nullptr);

    reporter.ReportExposeAdStart(kRequest, kAd);

    // The order of the queries for an id's parts is open.
    ASSERT_THAT(host.asked, SizeIs(7));
    EXPECT_EQ(host.asked[0], "clock");
    EXPECT_THAT(std::vector<std::string>(host.asked.begin() + 1, host.asked.begin() + 3),
                UnorderedElementsAre("clock", "device"));
    EXPECT_THAT(std::vector<std::string>(host.asked.begin() + 3, host.asked.end()),
                ElementsAre("timer ExposeAd", HasSubstr("Report ExposeAd start, "), "report StartExposeAd",
                            HasSubstr("Report StartExposeAd success, ")));
    // The first look at the clock is the start, the second the id's.
    EXPECT_EQ(reporter.GetExposeId(kAd), QStringLiteral("dev218088"));
    EXPECT_EQ(reporter.GetAdExposeDuration(kAd), 2000);
}

}  // namespace
