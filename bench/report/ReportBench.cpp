// The cost of a report relative to SQLite's C API with the finished text, the same table and the same settings.
#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

#include "BenchTable.h"
#include "core/IClientState.h"
#include "core/IHttp.h"
#include "core/MainThreadPoster.h"
#include "core/TimeAndRandom.h"
#include "report/ReportService.h"
#include "tracing/ReportsRecorder.h"
#include "tracing/TraceLog.h"

namespace {

/// Sends nothing, because the server is unknown.
class CNoHttp : public IHttp {
public:
    unsigned long Start(const HttpReqInfo&, core::network::http::Callback, QObject*, HttpWorkPool,
                        core::network::http::Progress, core::network::http::Progress) override {
        return 0;
    }
};

class CBareInsert {
public:
    explicit CBareInsert(const std::string& path) {
        Check(sqlite3_open(path.c_str(), &m_pDatabase) == SQLITE_OK);
        for (const char* sql :
             {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", "PRAGMA wal_autocheckpoint=0",
              "CREATE TABLE event (number INTEGER PRIMARY KEY, before INTEGER NOT NULL, id TEXT NOT NULL,"
              " json TEXT NOT NULL)"}) {
            Check(sqlite3_exec(m_pDatabase, sql, nullptr, nullptr, nullptr) == SQLITE_OK);
        }
        Check(sqlite3_prepare_v2(m_pDatabase, "INSERT INTO event (number, before, id, json) VALUES (?, ?, ?, ?)", -1,
                                 &m_pInsert, nullptr) == SQLITE_OK);
    }
    ~CBareInsert() {
        sqlite3_finalize(m_pInsert);
        sqlite3_close(m_pDatabase);
    }
    CBareInsert(const CBareInsert&) = delete;
    CBareInsert& operator=(const CBareInsert&) = delete;

    void Insert(const std::string& id, const std::string& json) {
        sqlite3_bind_int64(m_pInsert, 1, ++m_nLast);
        sqlite3_bind_int64(m_pInsert, 2, m_nBytes);
        sqlite3_bind_text(m_pInsert, 3, id.data(), int(id.size()), SQLITE_STATIC);
        sqlite3_bind_text(m_pInsert, 4, json.data(), int(json.size()), SQLITE_STATIC);
        Check(sqlite3_step(m_pInsert) == SQLITE_DONE);
        sqlite3_reset(m_pInsert);
        m_nBytes += sqlite3_int64(json.size());
    }

private:
    void Check(bool good) {
        if (!good) {
            std::fprintf(stderr, "%s\n", sqlite3_errmsg(m_pDatabase));
            std::exit(1);
        }
    }

    sqlite3* m_pDatabase = nullptr;
    sqlite3_stmt* m_pInsert = nullptr;
    sqlite3_int64 m_nLast = 0;
    sqlite3_int64 m_nBytes = 0;
};

/// The end of an exposure, the longest event of ads.
ReportEvent Exposure() {
    Json::Value params;
    params["request_id"] = "5f0d5a3c9b1e4c7d8a6b2f3e4d5c6b7a1700000000";
    params["exposure_id"] = "5f0d5a3c9b1e4c7d8a6b2f3e4d5c6b7a1700000003ad-4711";
    params["advertisement_id"] = "ad-4711";
    params["event_duration"] = Json::Int64(3'412);
    return {"ExposeAd", 1, params, 0};
}

// Without limits, since dropping events is not measured.
ReportOptions Roomy() {
    ReportOptions options;
    options.outbox.maxEvents = int64_t(1) << 40;
    options.outbox.maxBytes = int64_t(1) << 50;
    return options;
}

constexpr const char* kBare = "Bare SQLite call";
constexpr const char* kReport = "Report into the outbox";
constexpr const char* kObserved = "Report, seen by the workbench";

}  // namespace

int main(int argc, char** argv) {
    int applicationArgc = 1;
    const QCoreApplication application(applicationArgc, argv);

    const QTemporaryDir folder(QStringLiteral(ZR_BENCH_FOLDER "/bench-XXXXXX"));
    CMainThreadPoster poster;
    CTimeAndRandom timeAndRandom;
    const IClientState client;
    CNoHttp http;
    CReportService reports(folder.filePath(QStringLiteral("reports.sqlite")),
                           {http, client, timeAndRandom, poster, "5f0d5a3c9b1e4c7d8a6b2f3e4d5c6b7a"}, Roomy());
    CTraceLog traceLog;
    CReportsRecorder recorder(reports, traceLog);
    CBareInsert bare(folder.filePath(QStringLiteral("bare.sqlite")).toStdString());
    const ReportEvent event = Exposure();
    if (!reports.Report(event)) {
        std::fprintf(stderr, "A report was refused\n");
        return 1;
    }
    const OutboxEvent written = reports.Outbox().Read(0, 1, 1 << 20).front();

    benchmark::RegisterBenchmark(kBare, [&](benchmark::State& state) {
        for (auto _ : state) {
            bare.Insert(written.id, written.json);
        }
    });
    benchmark::RegisterBenchmark(kReport, [&](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(reports.Report(event));
        }
    });
    // For information: the client records reports for the workbench, which is not a cost of the outbox.
    benchmark::RegisterBenchmark(kObserved, [&](benchmark::State& state) {
        for (auto _ : state) {
            benchmark::DoNotOptimize(recorder.Report(event));
        }
    });
    return bench::RunComparisons(argc, argv, {{kReport, kBare, 1.3}, {kObserved, kBare, 0}});
}
