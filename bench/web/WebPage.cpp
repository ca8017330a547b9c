// Loads a page in a visible widget and prints the nanoseconds from the call to the page's first call over the bridge.
// The first argument is the preparation: "cold" none, "warm" another page in the same widget.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>

#include "core/IClientState.h"
#include "core/MainThreadPoster.h"
#include "framework/Ports.h"
#include "support/RawHttpServer.h"
#include "webview/WebEngineLoader.h"
#include "webview/WebHost.h"
#include "webview/ZRWebWidget.h"

namespace {

/// An internal build whose own server is the one of this process.
class CState : public IClientState {
public:
    explicit CState(std::string server) : m_server(std::move(server)) {}

    bool IsReleaseAppVersion() const override { return false; }
    std::string DomainUrl(const std::string& /*key*/, core::url_data::DomainBizType /*biz*/) const override {
        return m_server;
    }

private:
    const std::string m_server;
};

int Measure(bool warm, CRawHttpServer& server) {
    core::webview::ZRWebWidget widget;
    const QString url = QString::fromStdString(server.Url());
    widget.resize(480, 800);
    widget.EnableJSBridge(true);
    widget.show();
    int toMeasure = warm ? 2 : 1;
    QElapsedTimer time;
    const auto load = [&] {
        time.start();
        widget.LoadUrl(url + QStringLiteral("/page?%1").arg(toMeasure));
    };
    widget.RegisterJSAPIV2(
        QStringLiteral("ready"),
        [&](const Json::Value&, int) -> std::shared_ptr<Json::Value> {
            if (--toMeasure == 0) {
                printf("%lld\n", static_cast<long long>(time.nsecsElapsed()));
                fflush(stdout);
                QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            } else {
                QTimer::singleShot(0, &widget, load);
            }
            return nullptr;
        },
        nullptr);
    QTimer::singleShot(0, &widget, load);
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    CRawHttpServer server;
    if (argc != 2 || !server.Listen()) {
        return 2;
    }
    server.SetHandler([&server](const RawHttpRequest& request) {
        server.Answer(request.connection, 200, "<!doctype html><script>zrclient.call('ready')</script>",
                      "Content-Type: text/html\r\n");
    });
    CMainThreadPoster poster;
    CState state(server.Url());
    CWebEngineLoader engine(true);
    host::Ports ports;
    ports.poster = &poster;
    ports.state = &state;
    ports.web = &engine;
    host::Install(ports);
    host::web::CWebHost::Instance().Begin();
    const int result = Measure(qstrcmp(argv[1], "warm") == 0, server);
    host::web::CWebHost::Instance().End();
    host::Uninstall();
    return result;
}
