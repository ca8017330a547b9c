// The longest slice of the main thread during ten thousand pushes in a second over a real connection. Each push causes
// a request for all rights. The reference is a delay that a user does not notice.
#include <fmt/format.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include "BenchTable.h"
#include "Premium/ZRPremiumManager.h"
#include "RightsSample.h"
#include "StormServer.h"
#include "channel/WebSocketChannel.h"
#include "core/IClientState.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "core/TimeAndRandom.h"
#include "framework/Ports.h"
#include "log/FileLog.h"
#include "store/SqliteStore.h"
#include "support/SliceMeter.h"

namespace {

constexpr int kPushes = 10'000;
constexpr int kQuickPushes = 100;
constexpr int kLimitMs = 120'000;
constexpr unsigned int kDataChanged = 80050;
constexpr double kSliceLimitNanos = 5e6;

class COneUser : public IClientState {
public:
    uint64_t UserId() const override { return 12345; }
};

/// A server on its own thread.
class CServerThread {
public:
    explicit CServerThread(const std::string& answer) : m_pServer(new CStormServer(answer)) {
        m_pServer->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_pServer, &QObject::deleteLater);
        m_thread.start();
        QMetaObject::invokeMethod(
            m_pServer, [this] { m_url = m_pServer->Listen(); }, Qt::BlockingQueuedConnection);
    }
    ~CServerThread() {
        m_thread.quit();
        m_thread.wait();
    }
    CServerThread(const CServerThread&) = delete;
    CServerThread& operator=(const CServerThread&) = delete;

    const QUrl& Url() const { return m_url; }

    void PushWithinASecond(int count) {
        QMetaObject::invokeMethod(
            m_pServer, [this, count] { m_pServer->PushWithinASecond(count); }, Qt::QueuedConnection);
    }

private:
    QThread m_thread;
    CStormServer* m_pServer;
    QUrl m_url;
};

/// Returns the longest slice in nanoseconds; 0 if a push did not cause a refresh in time.
double LongestSlice(int pushes) {
    const QTemporaryDir folder(QStringLiteral(ZR_BENCH_FOLDER "/bench-XXXXXX"));
    CFileLog log(folder.filePath(QStringLiteral("storm.log")));
    CMainThreadPoster poster;
    CMessageBus bus(poster);
    CSqliteStore store(folder.filePath(QStringLiteral("store.sqlite")));
    CTimeAndRandom random;
    CWebSocketChannel channel(poster, random);
    COneUser account;
    host::Ports ports;
    ports.log = &log;
    ports.poster = &poster;
    ports.bus = &bus;
    ports.channel = &channel;
    ports.store = &store;
    ports.state = &account;
    host::Install(ports);
    CZRPremiumManager::Singleton()->Init();

    CServerThread server(AnswerWithAllRights());
    int refreshes = 0;
    QObject context;
    bus.Bind(
        kDataChanged,
        [&](auto, auto, const auto&) {
            if (++refreshes == pushes) {
                QCoreApplication::quit();
            }
        },
        &context);
    QObject::connect(&channel, &CWebSocketChannel::Connected, &context, [&] { server.PushWithinASecond(pushes); });
    QTimer::singleShot(kLimitMs, &context, [] { QCoreApplication::exit(1); });
    channel.Open(server.Url(), QByteArray("token"));
    const CSliceMeter slices;
    const bool done = QCoreApplication::exec() == 0;
    const double longest = double(slices.Longest().count());
    host::Uninstall();
    if (!done) {
        fmt::print(stderr, "{} of {} pushes came to a refresh\n", refreshes, pushes);
    }
    return done ? longest : 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    int applicationArgc = 1;
    const QCoreApplication application(applicationArgc, argv);
    const double longest = LongestSlice(options.quick ? kQuickPushes : kPushes);
    if (longest <= 0) {
        return 1;
    }
    return bench::PrintRows(
        {{"Longest slice under 10,000 pushes in a second", longest, "What nobody notices", kSliceLimitNanos, 1}},
        options);
}
