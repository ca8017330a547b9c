#include "OutboxKillChild.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <atomic>

#include "core/IClientState.h"
#include "core/MainThreadPoster.h"
#include "core/TimeAndRandom.h"
#include "framework/Ports.h"
#include "http/HttpService.h"
#include "report/ReportService.h"

namespace outbox_kill {
namespace {

/// An internal build with a report server on this machine.
class CState : public IClientState {
public:
    explicit CState(quint16 sinkPort) : m_sink("http://127.0.0.1:" + std::to_string(sinkPort)) {}
    bool IsReleaseAppVersion() const override { return false; }
    std::string DomainUrl(const std::string&, core::url_data::DomainBizType) const override { return m_sink; }

private:
    const std::string m_sink;
};

// Small limits, so that kills hit checkpoints, uploads, failures and answers as often as plain writes.
ReportOptions SmallLimits() {
    ReportOptions options;
    options.outbox.checkpoints.afterBytes = 100'000;
    options.outbox.checkpoints.pause = std::chrono::milliseconds(1);
    options.outbox.checkpoints.restartBytes = 500'000;
    options.sender.maxEvents = 20;
    options.sender.firstRetry = std::chrono::milliseconds(2);
    options.sender.lastRetry = std::chrono::milliseconds(8);
    options.gather = std::chrono::milliseconds(0);
    return options;
}

class CClient {
public:
    CClient(const QString& path, quint16 sinkPort)
        : m_state(sinkPort),
          m_http(m_poster, m_state),
          m_reports(path, {m_http, m_state, m_timeAndRandom, m_poster, "crash-test"}, SmallLimits()) {
        m_reports.SendNow();
    }

    CReportService& Reports() { return m_reports; }

private:
    CMainThreadPoster m_poster;
    CState m_state;
    CTimeAndRandom m_timeAndRandom;
    CHttpService m_http;
    CReportService m_reports;
};

/// Reports the next number; every second one with a duration.
bool ReportOne(CReportService& reports, std::atomic<uint64_t>& next, int pipe) {
    const uint64_t number = next++;
    Json::Value params;
    params["number"] = Json::UInt64(number);
    params["filling"] = std::string(size_t(number % 700), 'x');
    const bool taken = number % 2 == 0 ? reports.Report({"CrashTest", 1, params, 0})
                                       : reports.TimerEnd({*reports.TimerStart("CrashTest"), 1, params, 0});
    return taken && write(pipe, &number, sizeof(number)) == sizeof(number);
}

}  // namespace

int RunChild(const QString& path, quint16 sinkPort, uint64_t firstNumber, int pipe) {
    CClient client(path, sinkPort);
    std::atomic<uint64_t> next{firstNumber};
    const auto reportSome = [&] {
        for (int i = 0; i < 2; ++i) {
            if (!ReportOne(client.Reports(), next, pipe)) {
                _exit(1);
            }
        }
    };
    QThread thread;
    QObject inThread;
    inThread.moveToThread(&thread);
    thread.start();
    QTimer pace;
    QObject::connect(&pace, &QTimer::timeout, &pace, reportSome);
    QObject::connect(&pace, &QTimer::timeout, &inThread, reportSome);
    pace.start(1);
    return QCoreApplication::exec();
}

int Drain(const QString& path, quint16 sinkPort) {
    CClient client(path, sinkPort);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&client] {
        if (client.Reports().Outbox().IsEmpty()) {
            QCoreApplication::quit();
        }
    });
    poll.start(5);
    return QCoreApplication::exec();
}

}  // namespace outbox_kill
