// Runs the client and opens the AI chat. Prints the nanoseconds from the call that opens the chat to the first call of
// the page over the bridge. The arguments are a data folder and a preparation. "cold" is before the engine is mapped,
// "preloaded" after the preload of the login, "dismissed" after the user dismissed the page.
// With "busy" and milliseconds it prints the processor time of the processes of pages in that time. The page is
// dismissed then, and its timer computes.
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <cstdio>

#include "Client.h"
#include "GrowthService.h"
#include "support/EngineProcesses.h"
#include "support/RealTime.h"
#include "webview/ZRWebWidget.h"

namespace {

using namespace std::chrono_literals;

class CChat {
public:
    explicit CChat(const COptions& options) : m_client(options) {
        QObject::connect(&m_client.Composition(), &CComposition::UserChanged, &m_watcher, [this] { OnUser(); });
        // Replaces the client's handler, which is offered earlier in the same signal.
        QObject::connect(&m_client.Composition(), &CComposition::ModulesReady, &m_watcher, [this] {
            GrowthService()->UnregisterAIChatNativeJSAPI(QStringLiteral("getAppearance"));
            GrowthService()->RegisterAIChatNativeJSAPI(QStringLiteral("getAppearance"),
                                                       [this](const Json::Value&, int) {
                                                           m_answered = m_time.nsecsElapsed();
                                                           return std::make_shared<Json::Value>();
                                                       });
        });
    }

    /// Opens the chat and waits for the page's first call. Returns nanoseconds; 0 on failure.
    int64_t Open() {
        m_answered = 0;
        m_time.start();
        GrowthService()->OpenAIChatPage(ZRAIChatPageWatchlist, {}, false, true);
        WaitInRealTime([this] { return m_answered != 0; });
        return m_answered;
    }

    int64_t OpenAtLogin() {
        m_openAtLogin = true;
        m_client.Window().show();
        WaitInRealTime([this] { return m_answered != 0; });
        return m_answered;
    }

    /// Waits until the preloaded page is hidden and frozen.
    bool Preload() {
        m_client.Window().show();
        return WaitInRealTime([] { return Web() && !Web()->IsLoading() && !PageProcesses().empty(); }) && Pause(2s);
    }

    bool Dismiss() {
        Web()->window()->close();
        return WaitInRealTime([] { return Web()->window()->isHidden(); }) && Pause(2s);
    }

    static core::webview::ZRWebWidget* Web() {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (const QWidget* top : windows) {
            if (top->inherits("CZRAIChatWebDialog")) {
                return top->findChild<core::webview::ZRWebWidget*>();
            }
        }
        return nullptr;
    }

    static bool Pause(std::chrono::milliseconds time) {
        WaitInRealTime([] { return false; }, time);
        return true;
    }

private:
    void OnUser() {
        if (m_openAtLogin && m_client.Composition().UserId() != 0) {
            m_openAtLogin = false;
            m_time.start();
            GrowthService()->OpenAIChatPage(ZRAIChatPageWatchlist, {}, false, true);
        }
    }

    QObject m_watcher;
    QElapsedTimer m_time;
    int64_t m_answered = 0;
    bool m_openAtLogin = false;
    CClient m_client;  // ends first
};

/// The processor time of the engine's pages in nanoseconds, in units of the clock's ticks.
int64_t PagesTime() {
    int64_t ticks = 0;
    for (const pid_t process : PageProcesses()) {
        QFile stat(QStringLiteral("/proc/%1/stat").arg(process));
        if (stat.open(QIODevice::ReadOnly)) {
            const QByteArray text = stat.readAll();
            const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
            ticks += fields.value(11).toLongLong() + fields.value(12).toLongLong();
        }
    }
    return ticks * (1'000'000'000 / sysconf(_SC_CLK_TCK));
}

/// Returns -1 on failure.
int64_t Measure(CChat& chat, const QByteArray& preparation, std::chrono::milliseconds time) {
    if (preparation == "cold") {
        return chat.OpenAtLogin();
    }
    if (!chat.Preload()) {
        return -1;
    }
    const int64_t opened = chat.Open();
    if (preparation == "preloaded") {
        return opened;
    }
    if (preparation == "busy") {
        CChat::Web()->ExecuteJS(
            QStringLiteral("setInterval(() => { const end = Date.now() + 20; while (Date.now() < end) {} }, 25)"));
        const int64_t before = PagesTime();
        CChat::Pause(1s);
        // Without this much work the timer would prove nothing.
        if (PagesTime() - before < 300'000'000) {
            return -1;
        }
    }
    if (!chat.Dismiss()) {
        return -1;
    }
    if (preparation == "dismissed") {
        return chat.Open();
    }
    const int64_t began = PagesTime();
    CChat::Pause(time);
    return PagesTime() - began;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zrclient"));
    if (argc < 3) {
        return 2;
    }
    COptions options;
    const QString binaries = QCoreApplication::applicationDirPath();
    options.dataDir = QString::fromLocal8Bit(argv[1]);
    options.manifest = binaries + QStringLiteral("/modules.json");
    options.serverBinary = binaries + QStringLiteral("/zrdevserver");
    options.webEngine = true;
    int64_t nanos = 0;
    {
        CChat chat(options);
        nanos = Measure(chat, argv[2], std::chrono::milliseconds(argc > 3 ? atoi(argv[3]) : 0));
    }
    printf("%lld\n", static_cast<long long>(nanos));
    return nanos < 0 ? 1 : 0;
}
