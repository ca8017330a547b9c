#pragma once

#include <json/json.h>

#include <sstream>

#include "Ad/Controller/ZRAdController.h"
#include "Ad/Tools/ZRAdApiClient.h"
#include "Ad/Tools/ZRAdReporter.h"
#include "LogTee.h"
#include "support/ScriptedHostTest.h"
#include "tracing/HttpRecorder.h"
#include "tracing/ReportsRecorder.h"
#include "tracing/TraceLog.h"
#include "workbench/ads/AdLines.h"
#include "workbench/ads/AdText.h"
#include "workbench/ads/AdTracker.h"

/// The module's own controller of a slot, with access to its internals.
class CSlotController : public CZRAdController {
public:
    CSlotController(ZRAdType type, int position) : CZRAdController(nullptr) {
        m_adType = type;
        m_adPosition = position;
    }

    using CZRAdController::ReportClickAd;
    using CZRAdController::ReportExposeAdStart;

    void Filter(const QString& ad) const {
        m_adReporter->ReportAdDisplayFilter(m_adApiClient->GetAdRequestId(), {ad}, {QStringLiteral("1")});
    }
};

/// The board with the module itself: it receives the module's traffic, reports and log lines. The test controls both
/// clocks. They start at 200 seconds, when the sample ads are due.
class AdModuleTest : public ScriptedHostTest {
protected:
    AdModuleTest() {
        time.SetServerTime(200'000);
        QObject::connect(&traceLog, &CTraceLog::Recorded, &board, [this](TraceEvent seen) {
            seen.timeMs = time.ServerTime();
            board.Take(seen);
        });
        host::Ports ports = ScriptedPorts();
        ports.log = &tee;
        ports.http = &httpRecorder;
        ports.reports = &reportsRecorder;
        host::Install(ports);
    }

    ~AdModuleTest() override {
        log.Forget();
        http.Forget();
        reports.Forget();
        host::Install(ScriptedPorts());
    }

    /// Passes the minimum time between two requests of the slot.
    void WaitForLimit() { time.Advance(std::chrono::seconds(10)); }

    void Search(CSlotController& slot) { slot.RequestAd(ZRAdApiTypeSearch, slot.GetAdPosition(), {}); }

    void Answer(const std::string& body) {
        http.Answer(http.LastTask(), body);
        time.Settle();
    }

    void AnswerJson(const Json::Value& body) { Answer(body.toStyledString()); }

    /// Parses a well-formed JSON text.
    static Json::Value Parsed(const std::string& text) {
        Json::Value value;
        std::istringstream(text) >> value;
        return value;
    }

    static Json::Value Popup(const std::string& id, int start = 100, int end = 300, int expire = 400) {
        Json::Value ad = Parsed(R"({"popup_ad": {"popup_type": 2, "show_areas": [500], "bottom_popup":
            {"img": "https://pictures.test/card.png", "schema": "https://www.test/autumn"}}})");
        ad["ad_id"] = id;
        ad["start_time"] = start;
        ad["end_time"] = end;
        ad["expire_time"] = expire;
        return ad;
    }

    /// An answer for the bottom popup.
    static Json::Value Popups(const std::vector<Json::Value>& ads) {
        Json::Value answer = Parsed(R"({"code": 0, "message": "ok", "data": {"ad_type": 2, "ad_position": 42,
            "show_duration": 15, "show_interval": 3600, "show_interval_type": 1, "enable_close": true, "ad": []}})");
        for (const Json::Value& ad : ads) {
            answer["data"]["ad"].append(ad);
        }
        return answer;
    }

    static Json::Value PopupAnswer() { return Popups({Popup("18088")}); }

    /// An answer for a banner at position 7.
    static Json::Value BannerAnswer() {
        return Parsed(R"({"code": 0, "message": "ok", "data": {"ad_type": 3, "ad_position": 7, "enable_close": false,
            "ad": [{"ad_id": "18089", "start_time": 100, "end_time": 300, "expire_time": 400, "banner_ad":
            {"img": "https://pictures.test/strip.png", "schema": "zrclient://page/news"}}]}})");
    }

    const AdSlotState& State() const {
        const AdSlotState* state = board.Find({2, 42});
        EXPECT_NE(state, nullptr);
        static const AdSlotState kNone;
        return state ? *state : kNone;
    }

    const AdRequest* LastAnswer() const { return board.Request(State().lastAnswered); }
    std::string Outcome() const { return ad_text::Outcome(LastAnswer()).toStdString(); }

    /// "id: fate" for each ad.
    static std::vector<std::string> Results(const AdRequest* request) {
        std::vector<std::string> fates;
        for (const AdFate& fate : request ? request->Results() : std::vector<AdFate>()) {
            fates.push_back((fate.ad.id + QStringLiteral(": ") + ad_text::Fate(fate)).toStdString());
        }
        return fates;
    }

    std::vector<std::string> Results() const { return Results(LastAnswer()); }
    std::string Next() const { return ad_text::Next(State(), time.ServerTime()).toStdString(); }

    CAdTracker board{[](qint64 localMs) { return localMs; }};

private:
    CLogTee tee{log, [this](const LogRecord& record) {
                    LogEntry entry;
                    entry.time = QDateTime::fromMSecsSinceEpoch(time.ServerTime());
                    entry.record = record;
                    board.TakeLine(entry);
                }};
    CTraceLog traceLog;
    CHttpRecorder httpRecorder{http, traceLog};
    CReportsRecorder reportsRecorder{reports, traceLog};
};
