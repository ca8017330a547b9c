#pragma once

#include <sstream>

#include "Ad/Controller/ZRAdController.h"
#include "LinesRead.h"
#include "LogTee.h"
#include "support/ScriptedHostTest.h"
#include "tracing/BusRecorder.h"
#include "tracing/ChannelRecorder.h"
#include "tracing/HttpRecorder.h"
#include "tracing/ReportsRecorder.h"
#include "tracing/StoreRecorder.h"
#include "tracing/TraceLog.h"
#include "workbench/diagnosis/Explanation.h"

/// The tracker with the module itself: it receives the module's traffic, reports and log lines. The test controls both
/// clocks. They start at 200 seconds.
class DiagnosisModuleTest : public ScriptedHostTest {
protected:
    DiagnosisModuleTest() {
        time.SetServerTime(200'000);
        QObject::connect(&traceLog, &CTraceLog::Recorded, &tracker, [this](TraceEvent seen) {
            seen.timeMs = time.ServerTime();
            tracker.Take(seen);
        });
        host::Ports ports = ScriptedPorts();
        ports.log = &tee;
        ports.http = &httpRecorder;
        ports.reports = &reportsRecorder;
        ports.bus = &busRecorder;
        ports.channel = &channelRecorder;
        ports.store = &storeRecorder;
        host::Install(ports);
    }

    ~DiagnosisModuleTest() override {
        log.Forget();
        http.Forget();
        reports.Forget();
        store.Forget();
        channel.Forget();
        host::Install(ScriptedPorts());
    }

    void LogIn(quint64 user) {
        account.Set(user);
        TakeLine("Host.Login", QStringLiteral("User %1 logged in").arg(user));
    }

    /// The step that is stopped; empty if none is. Checks that at most one is.
    static std::string StoppedOf(const Explanation& explained) {
        std::string stopped;
        for (const QString& step : explained.steps.filter(QStringLiteral("\u2717 "))) {
            EXPECT_EQ(stopped, "");
            stopped = step.mid(2).toStdString();
        }
        return stopped;
    }

    /// The value of the first line of the name; "missing" if there is none.
    static std::string DetailOf(const QStringList& details, const char* name) {
        const QRegularExpression line(QStringLiteral("^\\s*([\u2713\u2717] )?%1: (.*)$")
                                          .arg(QRegularExpression::escape(QString::fromUtf8(name))));
        const int found = details.indexOf(line);
        return found < 0 ? "missing" : line.match(details[found]).captured(2).toStdString();
    }

    void TakeLine(const std::string& module, const QString& text) {
        LogEntry entry;
        entry.time = QDateTime::fromMSecsSinceEpoch(time.ServerTime());
        entry.record.module = module;
        entry.record.text = text;
        tracker.TakeLine(entry);
    }

    CTracker tracker{[](qint64 localMs) { return localMs; }};

private:
    CLogTee tee{log, [this](const LogRecord& record) { TakeLine(record.module, record.text); }};
    CTraceLog traceLog;
    CHttpRecorder httpRecorder{http, traceLog};
    CReportsRecorder reportsRecorder{reports, traceLog};
    CBusRecorder busRecorder{bus, traceLog, [](unsigned int) { return 0; }};
    CChannelRecorder channelRecorder{channel, traceLog};
    CStoreRecorder storeRecorder{store, traceLog};
};

/// The module's own controller of a position, with access to its internals.
class CSlotController : public CZRAdController {
public:
    CSlotController(ZRAdType type, int position) : CZRAdController(nullptr) {
        m_adType = type;
        m_adPosition = position;
    }

    using CZRAdController::ReportExposeAdStart;
};
