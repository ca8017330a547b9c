// In which order a slot and its client turn to the host and to what a subclass makes of them.
#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QPointer>

#include "Ad/AdSlotTest.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "Ad/Tools/ZRAdQualityMonitoringReporter.h"
#include "Ad/Tools/ZRAdReporter.h"
#include "core/IClientState.h"
#include "core/IHttp.h"
#include "core/IReports.h"
#include "core/ITimeAndRandom.h"
#include "framework/ILog.h"
#include "framework/Ports.h"

using namespace ::testing;

namespace {

const QString kAd = QStringLiteral("18088");

/// A host that writes down what is asked of it, in one list.
class CAdCalls : public IClientState, public IHttp, public ILog, public IReports, public ITimeAndRandom {
public:
    CAdCalls() {
        host::Ports ports;
        ports.http = this;
        ports.log = this;
        ports.reports = this;
        ports.state = this;
        ports.timeAndRandom = this;
        host::Install(ports);
    }
    ~CAdCalls() override { host::Uninstall(); }
    CAdCalls(const CAdCalls&) = delete;
    CAdCalls& operator=(const CAdCalls&) = delete;

    uint64_t UserId() const override { return 1; }
    uint64_t SessionId() const override { return Note("session"), 9; }
    std::string DomainUrl(const std::string&, core::url_data::DomainBizType) const override {
        return Note("domain"), "https://ads.test";
    }
    std::string DeviceId() const override { return Note("device"), "dev"; }
    unsigned long Start(const HttpReqInfo&, core::network::http::Callback, QObject*, HttpWorkPool,
                        core::network::http::Progress, core::network::http::Progress) override {
        Note("start");
        onStart();
        return 1;
    }
    void Write(const LogRecord& record) override {
        const std::string text = record.text.toStdString();
        Note("line " + text.substr(0, text.find_first_of(",.")));
    }
    void AssertionFailed(const AssertionRecord& record) override {
        Note("assertion " + std::string(record.expression));
    }
    uint32_t RandomNumber() override { return Note("random"), 7; }
    bool Report(const ReportEvent& event) override { return Note("report " + event.name), true; }
    std::shared_ptr<std::string> TimerStart(const std::string& event) override {
        Note("timer " + event);
        return std::make_shared<std::string>(event);
    }
    bool TimerEnd(const ReportEvent& event) override { return Note("end " + event.name), true; }
    int64_t ServerTimeMs() const override { return Note("clock"), serverMillis; }

    std::vector<std::string> Take() { return std::exchange(m_calls, {}); }

    std::function<void()> onStart = [] {};
    int64_t serverMillis = 200'000;

private:
    void Note(const std::string& call) const { m_calls.push_back(call); }

    mutable std::vector<std::string> m_calls;
};

/// Some of the calls; what an id is made of is asked for in no order that matters.
std::vector<std::string> Part(const std::vector<std::string>& calls, size_t from, size_t count) {
    return {calls.begin() + int(from), calls.begin() + int(from + count)};
}

TEST(AdOrderTest, ARequestKnowsItsPlaceAndSessionBeforeItHasAnIdAndItsStartComesLast) {
    CAdCalls host;
    CZRAdApiClient client(nullptr);

    client.RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});

    const auto calls = host.Take();
    ASSERT_THAT(calls, SizeIs(8));
    EXPECT_THAT(Part(calls, 0, 2), ElementsAre("domain", "session"));
    EXPECT_THAT(Part(calls, 2, 3), UnorderedElementsAre("device", "clock", "random"));
    EXPECT_THAT(Part(calls, 5, 3), ElementsAre("clock", "line [Ad] Request ad start", "start"));
}

TEST(AdOrderTest, ARequestsIdIsKnownWhenItStarts) {
    CAdCalls host;
    CZRAdApiClient client(nullptr);
    QString known;
    host.onStart = [&] { known = client.GetAdRequestId(); };

    client.RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});

    EXPECT_EQ(known, QStringLiteral("dev2007"));
}

TEST(AdOrderTest, TheMomentOfARequestIsKeptOnceItHasStarted) {
    CAdCalls host;
    CAdSlot slot(ZRAdTypePopup, 42);
    qint64 during = -1;
    host.onStart = [&] {
        during = slot.m_lastRequestTimeStamp;
        host.serverMillis += 3'000;  // the moment is that of the call
    };

    slot.RequestAd(ZRAdApiTypeSearch, 42, {});

    EXPECT_EQ(during, 0);
    EXPECT_EQ(slot.m_lastRequestTimeStamp, 200);
}

TEST(AdOrderTest, AnExposureBeginsWithItsMomentAndIdThenItsTimerThenItsEvent) {
    CAdCalls host;
    CZRAdReporter reporter(nullptr);

    reporter.ReportExposeAdStart(QStringLiteral("r"), kAd);

    const auto calls = host.Take();
    ASSERT_THAT(calls, SizeIs(7));
    EXPECT_EQ(calls[0], "clock");
    EXPECT_THAT(Part(calls, 1, 2), UnorderedElementsAre("device", "clock"));
    EXPECT_THAT(Part(calls, 3, 4), ElementsAre("timer ExposeAd", "line [Ad] Report ExposeAd start",
                                               "report StartExposeAd", "line [Ad] Report StartExposeAd success"));
}

TEST(AdOrderTest, AnUnknownCloseTypeIsAssertedAheadOfItsReport) {
    CAdCalls host;
    CAdSlot slot(ZRAdTypePopup, 42);
    slot.m_adId = kAd;

    slot.CloseAd(ZRAdCloseType(8), kAd, QString());

    const auto calls = host.Take();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "assertion 0");
    EXPECT_EQ(calls.back(), "line [Ad] Clear ad data");
}

TEST(AdOrderTest, TheNumbersOfTheHostAreThoseThatTheServersKnow) {
    EXPECT_EQ(int(kHttpPost), 1);
    EXPECT_EQ(int(kHttpWorkPoolDefault), 0);
    EXPECT_EQ(int(core::url_data::kDomainBizDefault), 0);
}

/// A slot that has a word in everything.
class COwnSlot : public CZRAdController {
public:
    COwnSlot() : CZRAdController(nullptr) {
        m_adType = ZRAdTypePopup;
        m_adPosition = kAdPositionBottomPopup;
    }

    using CZRAdController::m_adApiClient;

    void ClearAd() override { calls.emplace_back("clear"); }
    void ShowAd(CZRAdModelList*) override { calls.emplace_back("show"); }
    void OnRequestAdSucceeded(CZRAdModelList* list, long long time) override {
        calls.emplace_back("succeeded");
        CZRAdController::OnRequestAdSucceeded(list, time);
    }
    void OnRequestAdFailed(QString const&, QString const&, long long) override { calls.emplace_back("failed"); }
    void OnExposeAdSuccess(QList<QString> const&) override { calls.emplace_back("exposed"); }
    void OnExposeAdFailed(QString const&, QString const&, QList<QString> const&) override {
        calls.emplace_back("not exposed");
    }
    bool CheckAdIsValid(CZRAdModelList*) override { return calls.emplace_back("valid"), true; }
    bool CheckCanShowAd(CZRAdModelList*) override { return calls.emplace_back("can show"), true; }
    void ReportSendAdRequest(int, QList<QString> const&, unsigned long) override { calls.emplace_back("report"); }
    void ReportExposeAdEnd(QString const&, QString const&) override { calls.emplace_back("end"); }

    std::vector<std::string> calls;
};

class AdOwnSlotTest : public ScriptedHostTest {
protected:
    AdOwnSlotTest() { time.SetServerTime(200'000); }
    ~AdOwnSlotTest() override {
        http.Forget();
        log.Forget();
    }

    unsigned long Search() {
        slot.m_adApiClient->RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});
        return http.LastTask();
    }
    unsigned long Expose() {
        slot.m_adApiClient->ExposeAd(ZRAdTypePopup, 42, {kAd}, QString(), 0, {});
        return http.LastTask();
    }

    COwnSlot slot;
};

TEST_F(AdOwnSlotTest, AnAnswerIsReportedThenJudgedThenShownByTheSubclass) {
    http.Answer(Search(), PopupAnswer().toStyledString());
    time.Settle();

    EXPECT_THAT(slot.calls, ElementsAre("succeeded", "report", "valid", "can show", "show"));
}

TEST_F(AdOwnSlotTest, FailuresAndExposuresReachTheSubclass) {
    http.Fail(Search(), kHttpCut);
    http.Answer(Expose(), "{}");
    http.Fail(Expose(), kHttpCut);
    time.Settle();

    EXPECT_THAT(slot.calls, ElementsAre("failed", "exposed", "not exposed"));
}

TEST_F(AdOwnSlotTest, ACloseIsReportedAndClearedByTheSubclass) {
    static_cast<CZRAdController&>(slot).CloseAd(ZRAdCloseTypeTimeout, kAd, QString());

    EXPECT_THAT(slot.calls, ElementsAre("end", "clear"));
}

/// Everything that a slot does, with a part of it taken away.
class AdSlotWithoutPartTest : public AdSlotTest {
protected:
    ~AdSlotWithoutPartTest() override { Forget(); }

    void DoEverything() {
        Search();
        slot->OnRequestAdSucceeded(Popups({"18088"}), 3);
        slot->OnRequestAdFailed(QStringLiteral("1005"), QString(), 1);
        slot->ReportExposeAdStart(kAd);
        slot->OnAdClicked(true, kAd);
        slot->OnCloseButtonClicked(kAd);
        slot->OnImageLoadSucceeded(QStringLiteral("u"), 1, 1, kAd);
        slot->OnImageLoadFailed(QStringLiteral("u"), QString(), 1, 1, kAd);
        slot->OnExposeAdSuccess({kAd});
        slot->OnExposeAdFailed(QStringLiteral("1005"), QString(), {kAd});
        slot->CloseAd(ZRAdCloseTypeTimeout, kAd, QString());
    }
};

TEST_F(AdSlotWithoutPartTest, WithoutAClientNothingIsAskedForAndTheMomentCounts) {
    slot->m_adApiClient = nullptr;

    DoEverything();

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_EQ(slot->GetAdRequestId(), QString());
    EXPECT_EQ(slot->m_lastRequestTimeStamp, kNow);
    EXPECT_THAT(reports.Names(), Contains("ExposeAd"));
}

TEST_F(AdSlotWithoutPartTest, WithoutAReporterTheExposureIsToldWithoutIdAndLength) {
    slot->m_adReporter = nullptr;

    DoEverything();

    const auto started = http.Started();
    ASSERT_THAT(started, SizeIs(2));
    EXPECT_THAT(started[1].request.m_strBody, HasSubstr("\"expose_id\" : \"\""));
    EXPECT_THAT(started[1].request.m_strBody, HasSubstr("\"expose_duration\" : 0"));
    EXPECT_THAT(reports.Names(), Not(Contains("ExposeAd")));
}

TEST_F(AdSlotWithoutPartTest, WithoutAQualityReporterTheRestIsReported) {
    slot->m_adQualityMonitoringReporter = nullptr;

    DoEverything();

    EXPECT_THAT(reports.Names(), ElementsAre("SendAdRequest", "StartExposeAd", "ClickAd", "ClickAd", "ExposeAd"));
}

}  // namespace
