#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QTest>
#include <csignal>
#include <map>
#include <memory>

#include "core/MainThreadPoster.h"
#include "framework/Ports.h"
#include "support/Click.h"
#include "support/EngineProcesses.h"
#include "support/RawHttpServer.h"
#include "support/RealTime.h"
#include "support/ScriptedLog.h"
#include "support/ScriptedState.h"
#include "support/ScriptedUrls.h"
#include "ui/ZText.h"
#include "webview/WebEngineLoader.h"
#include "webview/WebHost.h"
#include "webview/ZRWebDialog.h"
#include "webview/ZRWebWidget.h"

using namespace ::testing;
using core::webview::ZRWebDialog;
using core::webview::ZRWebWidget;
using host::web::CWebHost;

namespace {

class WebEngineTest : public ::testing::Test {
protected:
    WebEngineTest() {
        host::Ports ports;
        ports.log = &log;
        ports.poster = &poster;
        ports.state = &state;
        ports.urls = &urls;
        ports.web = &engine;
        host::Install(ports);
        state.environment.SetRelease(false);
        EXPECT_TRUE(server.Listen());
        state.domains.Set("pages", server.Url());
        server.SetHandler([this](const RawHttpRequest& request) { Serve(request); });
        CWebHost::Instance().Begin();
        widget = std::make_unique<ZRWebWidget>();
        widget->resize(480, 400);
        widget->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
        widget->EnableJSBridge(true);
        widget->SetPopupEnabled(true);
        widget->SetSameUrlPolicy(core::webview::kSameUrlReloads);
        widget->RegisterJSAPIV2(
            QStringLiteral("report"),
            [this](const Json::Value& params, int) {
                reports.push_back(params["text"].asString());
                return std::make_shared<Json::Value>("thanks");
            },
            nullptr);
        widget->RegisterJSAPIV2(
            QStringLiteral("later"),
            [this](const Json::Value&, int) -> std::shared_ptr<Json::Value> {
                ++laterCalls;
                return nullptr;
            },
            nullptr);
        QObject::connect(widget.get(), &ZRWebWidget::LoadEnd, [this](bool success, int, const QString& url) {
            ends.push_back((success ? "good " : "failed ") +
                           QUrl(url).toString(QUrl::RemoveScheme | QUrl::RemoveAuthority).toStdString());
        });
    }

    ~WebEngineTest() override {
        CWebHost::Instance().End();
        widget.reset();
        log.Forget();
        urls.Forget();
        host::Uninstall();
    }

    void Serve(const RawHttpRequest& request) {
        const auto page = pages.find(request.target);
        if (request.target.rfind("/to?", 0) == 0) {
            server.Answer(request.connection, 302, "",
                          "Location: " + QByteArray::fromStdString(request.target.substr(4)) + "\r\n");
        } else if (request.target == "/file") {
            server.Answer(request.connection, 200, "bytes", "Content-Type: application/octet-stream\r\n");
        } else if (page == pages.end()) {
            server.Answer(request.connection, 404, "none");
        } else {
            server.Answer(request.connection, 200, QByteArray::fromStdString(page->second),
                          "Content-Type: text/html\r\n");
        }
    }

    /// A page whose script runs when the document is there.
    void Page(const char* path, const std::string& script, const std::string& body = {}) {
        pages[path] = "<!doctype html><body>" + body + "<script>" + script + "</script></body>";
    }

    QString Url(const char* path) const { return QString::fromStdString(server.Url() + path); }

    void Load(const char* path) { widget->LoadUrl(Url(path)); }

    bool Ended(size_t count) {
        return WaitInRealTime([this, count] { return ends.size() >= count; });
    }

    std::string Cover() const {
        const auto* overlay = widget->findChild<QWidget*>(QStringLiteral("WebOverlay"));
        return overlay->isHidden() ? ""
                                   : overlay->findChild<ZText*>(QStringLiteral("WebOverlayText"))->text().toStdString();
    }

    CScriptedLog log;
    CScriptedState state;
    CScriptedUrls urls;
    CMainThreadPoster poster;
    CWebEngineLoader engine{true};
    CRawHttpServer server;
    std::map<std::string, std::string> pages;
    std::vector<std::string> reports;
    std::vector<std::string> ends;
    int laterCalls = 0;
    std::unique_ptr<ZRWebWidget> widget;
};

TEST_F(WebEngineTest, EngineIsMappedForTheFirstPageAndNotBefore) {
    widget->hide();
    Page("/", "");
    EXPECT_TRUE(engine.IsAvailable());
    EXPECT_FALSE(IsMapped(QStringLiteral("libzrhost_webengine")));
    EXPECT_FALSE(IsMapped(QStringLiteral("WebEngineCore")));
    Load("/");
    EXPECT_FALSE(IsMapped(QStringLiteral("libzrhost_webengine")));
    ASSERT_TRUE(Ended(1));
    EXPECT_TRUE(IsMapped(QStringLiteral("libzrhost_webengine")));
    EXPECT_TRUE(IsMapped(QStringLiteral("WebEngineCore")));
    EXPECT_THAT(ends, ElementsAre("good /"));
}

TEST_F(WebEngineTest, CallsAnswersAndEventsCrossTheBridge) {
    Page("/", R"(
        zrclient.on('theme', (params) => zrclient.notify('report', {text: 'event ' + params.name}));
        zrclient.call('report', {text: 'call'}).then((answer) => {
            zrclient.call('report', {text: answer});
            return zrclient.call('none');
        }).catch((error) => zrclient.call('report', {text: error.code}));
        zrclient.call('later').then((answer) => zrclient.call('report', {text: 'late ' + answer}));)");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() >= 3 && laterCalls == 1; }));
    EXPECT_THAT(reports, ElementsAre("call", "thanks", "unknown-name"));
    reports.clear();
    Json::Value params;
    params["name"] = "dark \u2028";
    EXPECT_TRUE(widget->BroadcastEvent(QStringLiteral("theme"), params));
    widget->OnResponseToJS(QStringLiteral("later"), 7);
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() >= 2; }));
    EXPECT_THAT(reports, UnorderedElementsAre("event dark \u2028", "late 7"));
}

TEST_F(WebEngineTest, PageCanReadThatAMessageIsTooLarge) {
    Page("/", R"(
        zrclient.call('report', {text: 'x'.repeat(1024 * 1024)})
            .catch((error) => zrclient.call('report', {text: error.code}));)");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    EXPECT_THAT(reports, ElementsAre("too-large"));
}

TEST_F(WebEngineTest, ForeignPageAndFramesHaveNoBridgeObject) {
    CRawHttpServer foreign;
    ASSERT_TRUE(foreign.Listen());
    std::vector<std::string> seen;
    const QByteArray script =
        "<script>fetch('/seen?' + (window.zrclient || window.qt ? 'bridge' : 'none') + ',' + "
        "location.pathname)</script>";
    foreign.SetHandler([&](const RawHttpRequest& request) {
        if (request.target.rfind("/seen?", 0) == 0) {
            seen.push_back(request.target.substr(6));
        }
        foreign.Answer(request.connection, 200, script, "Content-Type: text/html\r\n");
    });
    widget->LoadUrl(QString::fromStdString(foreign.Url() + "/foreign"));
    ASSERT_TRUE(WaitInRealTime([&] { return seen.size() == 1; }));
    EXPECT_FALSE(widget->BroadcastEvent(QStringLiteral("theme"), 1));

    Page("/", "zrclient.call('report', {text: 'main'})",
         "<iframe src='/frame'></iframe><iframe src='" + foreign.Url() + "/frame'></iframe>");
    pages["/frame"] = "<script>fetch('/seen-' + (window.zrclient || window.qt ? 'bridge' : 'none'))</script>";
    Load("/");
    const auto asked = [this] {
        return std::any_of(server.Requests().begin(), server.Requests().end(),
                           [](const RawHttpRequest& request) { return request.target == "/seen-none"; });
    };
    ASSERT_TRUE(WaitInRealTime([&] { return seen.size() == 2 && asked() && reports.size() == 1; }));
    EXPECT_THAT(seen, ElementsAre("none,/foreign", "none,/frame"));
}

TEST_F(WebEngineTest, EachLoadIsANewDocumentAndEndsOnce) {
    Page("/", "zrclient.call('report', {text: location.hash})");
    const std::vector<const char*> paths = {"/", "/#a", "/#b", "/#b", "/", "/"};
    for (size_t i = 0; i < paths.size(); ++i) {
        Load(paths[i]);
        ASSERT_TRUE(Ended(i + 1)) << i;
        ASSERT_TRUE(WaitInRealTime([&] { return reports.size() == i + 1; })) << i;
    }
    EXPECT_THAT(reports, ElementsAre("", "#a", "#b", "#b", "", ""));
    EXPECT_THAT(ends, ElementsAre("good /", "good /#a", "good /#b", "good /#b", "good /", "good /"));
}

TEST_F(WebEngineTest, EachOfManyQuickLoadsEndsOnceAndTheLastWins) {
    Page("/", "");
    Page("/last", "zrclient.call('report', {text: 'last'})");
    for (int round = 1; round <= 5; ++round) {
        Load("/");
        QCoreApplication::processEvents();
        Load("/none");
        QCoreApplication::processEvents();
        Load("/last");
        ASSERT_TRUE(WaitInRealTime([&] { return int(reports.size()) == round && !widget->IsLoading(); })) << round;
        ASSERT_TRUE(Ended(size_t(round) * 3));
    }
    EXPECT_THAT(ends, SizeIs(15));
    EXPECT_EQ(std::count(ends.begin(), ends.end(), "good /last"), 5);
}

TEST_F(WebEngineTest, LoadThatFailsEndsAsFailedAndTheButtonTriesAgain) {
    Load("/none");
    ASSERT_TRUE(Ended(1));
    server.Close();
    Load("/");
    ASSERT_TRUE(Ended(2));
    EXPECT_THAT(ends, ElementsAre("failed /none", "failed /"));
    EXPECT_EQ(Cover(), "This page could not be loaded.");

    Page("/", "");
    ASSERT_TRUE(server.Listen());
    Click(widget->findChild<QAbstractButton*>(QStringLiteral("WebOverlayRetry")));
    ASSERT_TRUE(Ended(3));
    EXPECT_EQ(ends[2], "good /");
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebEngineTest, RedirectToARefusedAddressEndsAsFailedOnce) {
    Page("/", "");
    for (const char* to : {"/to?file:///etc/passwd", "/to?data:text/html,x", "/to?http://192.0.2.1/"}) {
        ends.clear();
        Load(to);
        ASSERT_TRUE(Ended(1)) << to;
        EXPECT_THAT(ends, ElementsAre(std::string("failed ") + to));
    }
    Load("/");
    ASSERT_TRUE(Ended(2));
    EXPECT_EQ(ends[1], "good /");
}

TEST_F(WebEngineTest, ScriptThatWantsARefusedAddressStaysWhereItIs) {
    Page("/",
         "location = 'view-source:' + location; location = 'chrome://gpu'; location = 'file:///etc/passwd';"
         "setTimeout(() => zrclient.call('report', {text: location.pathname}), 300)");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    EXPECT_THAT(reports, ElementsAre("/"));
}

TEST_F(WebEngineTest, LinkToAnotherOriginIsDispatchedAndOneToTheOwnOriginStays) {
    Page("/", "document.getElementById('a').click()", "<a id=a href='https://other.test/x'>x</a>");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return !urls.Opened().empty(); }));
    EXPECT_EQ(urls.Opened()[0].url, "https://other.test/x");

    Page("/2", "document.getElementById('a').click()", "<a id=a href='/3'>x</a>");
    Page("/3", "zrclient.call('report', {text: 'three'})");
    Load("/2");
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(WebEngineTest, PopupIsOfferedWithAddressAndSizeAfterAClick) {
    std::vector<std::string> popups;
    QSize wanted;
    QObject::connect(widget.get(), &ZRWebWidget::BeforePopup,
                     [&](const QString& url, bool* handled, const QSize& size) {
                         popups.push_back(url.toStdString());
                         wanted = size;
                         *handled = true;
                     });
    Page("/",
         "window.open('/early'); document.onclick = () => window.open('/popup', '', 'width=350,height=250');"
         "zrclient.call('report', {text: 'ready'})");
    Load("/");
    ASSERT_TRUE(Ended(1));
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    const bool clicked = WaitInRealTime([&] {
        QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {}, QPoint(200, 200));
        return !popups.empty();
    });
    ASSERT_TRUE(clicked);
    EXPECT_EQ(popups.front(), server.Url() + "/popup");
    EXPECT_EQ(wanted, QSize(350, 250));
}

TEST_F(WebEngineTest, ScriptBoxesDoNotBlockAndTellNothing) {
    Page("/", "alert(1); zrclient.call('report', {text: String(confirm('x')) + prompt('y', 'z')})");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    EXPECT_THAT(reports, ElementsAre("falsenull"));
}

TEST_F(WebEngineTest, PageCannotRefuseToBeLeft) {
    Page("/",
         "window.onbeforeunload = (event) => { event.preventDefault(); return event.returnValue = 'stay'; };"
         "zrclient.call('report', {text: 'ready'})");
    Page("/2", "");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    QTest::mouseClick(widget->window()->windowHandle(), Qt::LeftButton, {}, QPoint(200, 200));
    Load("/2");
    ASSERT_TRUE(Ended(2));
    EXPECT_EQ(ends[1], "good /2");
}

TEST_F(WebEngineTest, DownloadIsRefusedWithALine) {
    Load("/file");
    ASSERT_TRUE(Ended(1));
    EXPECT_THAT(ends, ElementsAre("failed /file"));
    EXPECT_TRUE(WaitInRealTime([this] { return !log.Lines().empty(); }));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("Refused a download")));
}

TEST_F(WebEngineTest, EntriesOfTheContextMenuEditThePage) {
    using core::webview::kMenuCopy;
    using core::webview::kMenuCut;
    using core::webview::kMenuPaste;
    widget->SetContextMenuFlags(kMenuCopy | kMenuCut | kMenuPaste);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    Page("/",
         "const f = document.getElementById('f'); f.focus(); f.select();"
         "zrclient.on('tell', () => zrclient.notify('report', {text: f.value + '|' + getSelection()}));"
         "zrclient.call('report', {text: 'ready'})",
         "<textarea id=f style='position:fixed;left:0;top:0;width:100%;height:100%;font-size:90px'>word</textarea>");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return ends.size() == 1 && reports.size() == 1; }));

    const auto entries = [this] {
        const auto* menu = widget->findChild<QMenu*>();
        return menu && menu->isVisible() ? menu->actions() : QList<QAction*>();
    };
    // Runs an entry and returns the entries that were enabled.
    const auto run = [&](const char* wanted) {
        std::vector<std::string> enabled;
        QTest::mouseClick(widget->window()->windowHandle(), Qt::RightButton, {}, QPoint(60, 60));
        EXPECT_TRUE(WaitInRealTime([&] { return !entries().isEmpty(); })) << wanted;
        for (QAction* action : entries()) {
            if (action->isEnabled()) {
                enabled.push_back(action->text().toStdString());
            }
            if (action->text() == QString::fromUtf8(wanted)) {
                action->trigger();
            }
        }
        widget->CloseContextMenu();
        EXPECT_TRUE(WaitInRealTime([&] { return !widget->findChild<QMenu*>(); }));
        return enabled;
    };
    const auto isTold = [this](const char* text) {
        return WaitInRealTime([&] {
            widget->BroadcastEvent(QStringLiteral("tell"), 0);
            return reports.back() == text;
        });
    };
    const auto isCopied = [](const char* text) {
        return WaitInRealTime([&] { return QGuiApplication::clipboard()->text() == QString::fromUtf8(text); });
    };

    EXPECT_THAT(run("Copy"), ElementsAre("Copy", "Cut", "Paste", "Select all"));
    EXPECT_TRUE(isCopied("word"));
    EXPECT_TRUE(isTold("word|word"));
    QGuiApplication::clipboard()->setText(QStringLiteral("other"));
    run("Cut");
    EXPECT_TRUE(isCopied("word"));
    EXPECT_TRUE(isTold("|"));
    QGuiApplication::clipboard()->setText(QStringLiteral("paste"));
    EXPECT_THAT(run("Paste"), Not(Contains(AnyOf("Copy", "Cut"))));
    EXPECT_TRUE(isTold("paste|"));
    run("Select all");
    EXPECT_TRUE(isTold("paste|paste"));
}

TEST_F(WebEngineTest, PermissionsAreDenied) {
    Page("/", "Notification.requestPermission().then((answer) => zrclient.call('report', {text: answer}))");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return !reports.empty(); }));
    EXPECT_THAT(reports, ElementsAre("denied"));
}

TEST_F(WebEngineTest, KilledVisiblePageComesBack) {
    Page("/", "zrclient.call('report', {text: 'loaded'})");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() == 1; }));
    for (const pid_t process : PageProcesses()) {
        kill(process, SIGKILL);
    }
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() == 2 && !widget->IsLoading(); }));
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebEngineTest, KilledHiddenPageComesBackWhenItIsShown) {
    widget->hide();
    Page("/", "zrclient.call('report', {text: 'loaded'})");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() == 1; }));
    for (const pid_t process : PageProcesses()) {
        kill(process, SIGKILL);
    }
    ASSERT_TRUE(WaitInRealTime([this] {
        const auto lines = log.Lines();
        return std::any_of(lines.begin(), lines.end(),
                           [](const LogLine& line) { return line.text.find("The process of a page ended") == 0; });
    }));
    EXPECT_THAT(reports, SizeIs(1));
    widget->show();
    EXPECT_TRUE(WaitInRealTime([this] { return reports.size() == 2; }));
}

TEST_F(WebEngineTest, HiddenPageRunsNothingAfterASecondAndGoesOnWhenItIsShown) {
    widget->hide();
    Page("/", "let n = 0; setInterval(() => zrclient.notify('report', {text: String(++n)}), 20)");
    Load("/");
    ASSERT_TRUE(Ended(1));
    // A frozen page reports nothing for a while that is longer than any pause of a running one.
    size_t before = 0;
    ASSERT_TRUE(WaitInRealTime([&] {
        before = reports.size();
        return !WaitInRealTime([&] { return reports.size() > before; }, std::chrono::milliseconds(2500));
    }));
    widget->show();
    EXPECT_TRUE(WaitInRealTime([&] { return reports.size() > before; }));
}

// The option is in tests/support/on_screen.
TEST_F(WebEngineTest, NoHostIsResolvedInTests) {
    Page("/", "");
    widget->LoadUrl(QStringLiteral("http://localhost:%1/").arg(server.Port()));
    ASSERT_TRUE(Ended(1));
    EXPECT_THAT(ends, ElementsAre("failed /"));
    EXPECT_THAT(server.Requests(), SizeIs(0));
}

TEST_F(WebEngineTest, NextUserFindsNothingOfTheFormer) {
    Page("/",
         "zrclient.call('report', {text: document.cookie + localStorage.getItem('a')});"
         "document.cookie = 'a=1'; localStorage.setItem('a', '1')");
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() == 1; }));
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() == 2; }));
    state.account.Set(502);
    Load("/");
    ASSERT_TRUE(WaitInRealTime([this] { return reports.size() == 3; }));
    EXPECT_THAT(reports, ElementsAre("null", "a=11", "null"));
}

TEST_F(WebEngineTest, EndOfTheHostEndsThePages) {
    Page("/", "");
    Load("/");
    ASSERT_TRUE(Ended(1));
    EXPECT_THAT(PageProcesses(), Not(IsEmpty()));
    CWebHost::Instance().End();
    EXPECT_TRUE(WaitInRealTime([] { return PageProcesses().empty(); }));
}

TEST_F(WebEngineTest, RootWithTheSandboxGetsTheMessageAndTheProcessLives) {
    qunsetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
    const bool isRoot = geteuid() == 0;
    Load("/");
    ASSERT_TRUE(Ended(1));
    EXPECT_EQ(engine.IsAvailable(), !isRoot);
    EXPECT_EQ(IsMapped(QStringLiteral("libzrhost_webengine")), !isRoot);
    if (!isRoot) {
        return;
    }
    EXPECT_EQ(Cover(), "Web pages cannot be displayed here. You can open this page in your browser.");
    EXPECT_THAT(log.Lines(), Contains(Error("Web pages are not displayed, its sandbox does not run as root")));
}

TEST_F(WebEngineTest, MissingHelperProgramGetsTheMessageAndTheProcessLives) {
    qputenv("QTWEBENGINEPROCESS_PATH", "/nowhere/QtWebEngineProcess");
    Load("/");
    ASSERT_TRUE(Ended(1));
    EXPECT_EQ(Cover(), "Web pages cannot be displayed here. You can open this page in your browser.");
    EXPECT_FALSE(IsMapped(QStringLiteral("libzrhost_webengine")));
}

}  // namespace
