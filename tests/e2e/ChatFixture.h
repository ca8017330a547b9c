#pragma once

#include <QApplication>
#include <QPointer>
#include <QTest>

#include "AdClientFixture.h"
#include "GrowthService.h"
#include "StatusLine.h"
#include "support/EngineProcesses.h"
#include "ui/ZLabel.h"
#include "ui/ZText.h"
#include "webview/ZRWebDialog.h"
#include "webview/ZRWebWidget.h"

/// A client with the real engine and the chat of the development server. The module is mapped and not linked, so the
/// chat's window is a ZRWebWidget with its parent here.
class ChatTest : public AdClientTest {
protected:
    using Texts = std::vector<std::string>;

    ChatTest() {
        options.webEngine = true;
        options.scenario = WriteFile("chat.json", R"({"schema":1,"users":[
            {"id":501,"name":"One","aiChat":{"entries":[{"scene":1,"allOpen":true},{"scene":2,"allOpen":true},
                {"scene":3,"allOpen":true},{"scene":4,"allOpen":true},{"scene":5,"allOpen":true}]}},
            {"id":502,"name":"Two","aiChat":{"entries":[{"scene":1,"allOpen":true}]}}],
            "commonConfig":{"ai_chat":{
                "url_string":"{server}/chat","preload_url_string":"{server}/chat/preload"}}})");
    }

    ~ChatTest() override { End(); }

    /// Starts the client and waits for the entries of the first user. The page can call the handlers "probe", which
    /// the test reads, and "later", which the test answers.
    void StartChat() {
        Make();
        QObject::connect(client, &CComposition::ModulesReady, &watcher, [this] {
            Offer("probe", [this](const Json::Value& params) { probes.push_back(params); });
            Offer("later", [this](const Json::Value&) { ++laterCalls; });
        });
        for (const unsigned int message : {20301u, 20302u}) {
            Bind(message, [this](unsigned int id, auto, auto) { messages.push_back(id); });
        }
        Show();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() != 0 && !OpenEntries().empty(); }));
    }

    void StartAndPreload() {
        StartChat();
        ASSERT_TRUE(WaitForLine("Hide web page, clear web data"));
        ASSERT_TRUE(WaitForHide());
    }

    /// The preload ends in a hide that comes later and would hide a page that is opened before.
    static bool WaitForHide() {
        return WaitInRealTime([] { return Dialog() && Dialog()->testAttribute(Qt::WA_WState_ExplicitShowHide); });
    }

    void Offer(const char* name, std::function<void(const Json::Value&)> handle) {
        EXPECT_TRUE(GrowthService()->RegisterAIChatNativeJSAPI(
            QString::fromLatin1(name),
            [handle = std::move(handle)](const Json::Value& params, int) -> std::shared_ptr<Json::Value> {
                handle(params);
                return nullptr;
            }));
    }

    /// The chat's windows; one or none, unless something is wrong.
    static std::vector<QWidget*> Dialogs() {
        std::vector<QWidget*> dialogs;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->inherits("CZRAIChatWebDialog")) {
                dialogs.push_back(top);
            }
        }
        return dialogs;
    }

    static QWidget* Dialog() { return Dialogs().empty() ? nullptr : Dialogs().back(); }
    static core::webview::ZRWebWidget* Web() { return Dialog()->findChild<core::webview::ZRWebWidget*>(); }

    /// The engine's views in all windows.
    static size_t Views() {
        const QWidgetList all = QApplication::allWidgets();
        return size_t(
            std::count_if(all.begin(), all.end(), [](QWidget* widget) { return widget->inherits("QWebEngineView"); }));
    }

    static core::webview::ZRWebDialog* Popup() {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (auto* popup = qobject_cast<core::webview::ZRWebDialog*>(top)) {
                return popup;
            }
        }
        return nullptr;
    }

    /// Opens the chat for a page through its entry.
    void OpenFrom(const char* page) {
        Choose(page);
        const auto* found = std::find_if(kEntryPages.begin(), kEntryPages.end(),
                                         [page](const EntryPage& entry) { return qstrcmp(entry.name, page) == 0; });
        Click(Child<QAbstractButton>(("AIChatEntry" + std::to_string(found->scene)).c_str()));
    }

    static bool IsSeen() { return Dialog() && Dialog()->isVisible() && Dialog()->windowOpacity() == 1; }

    void OpenAndWait(const char* page = "watchlist") {
        OpenFrom(page);
        ASSERT_TRUE(WaitInRealTime(IsSeen));
        ASSERT_TRUE(PageHas("document.getElementById('form') && document.getElementById('send').textContent"));
    }

    /// Runs an expression in the displayed page. A null value without an answer in time.
    Json::Value Ask(const std::string& expression) {
        probes.clear();
        Web()->ExecuteJS(
            QString::fromStdString("window.zrclient && zrclient.notify('probe', {value: (" + expression + ")})"));
        WaitInRealTime([this] { return !probes.empty(); }, std::chrono::milliseconds(300));
        return probes.empty() ? Json::Value() : probes.front()["value"];
    }

    /// Waits until the expression is true for the page.
    bool PageHas(const std::string& expression) {
        return WaitInRealTime([&] { return Ask("!!(" + expression + ")") == true; });
    }
    bool PageShows(const std::string& text) { return PageHas("document.body.innerText.includes('" + text + "')"); }

    /// Types a question into the page and sends it.
    void Type(const char* question) {
        ASSERT_TRUE(PageHas("document.activeElement.id === 'question' && document.hasFocus()"));
        for (const char* letter = question; *letter != 0; ++letter) {
            QTest::keyClick(Dialog()->windowHandle(), *letter);
        }
        Press(Qt::Key_Return);
    }
    void Press(Qt::Key key) { QTest::keyClick(Dialog()->windowHandle(), key); }

    /// The engine drops clicks on a place that it has not painted yet.
    void ClickInPage(const std::string& id) {
        Ask("requestAnimationFrame(() => requestAnimationFrame(() => { window.isPainted = true; }))");
        ASSERT_TRUE(PageHas("window.isPainted === true"));
        const Json::Value place = Ask("(() => { const place = document.getElementById('" + id +
                                      "').getBoundingClientRect(); return [place.x + place.width / 2, place.y + "
                                      "place.height / 2]; })()");
        ASSERT_TRUE(place.isArray());
        const QPoint inPage(int(place[0].asDouble()), int(place[1].asDouble()));
        QTest::mouseClick(Dialog()->windowHandle(), Qt::LeftButton, {}, Web()->mapTo(Dialog(), inPage));
    }

    /// The loads of the chat's page so far, as "preload 1 scene=1": the session flag, then the rest of the address.
    Texts Loads() const {
        Texts loads;
        for (const LogEntry& line : client->Log().Kept()) {
            const QString text = line.record.text;
            if (text.contains(QLatin1String("Load AI chat page start"))) {
                loads.push_back((text.contains(QLatin1String("isPreload = true")) ? "preload " : "page ") +
                                text.section(QLatin1String("needChangeSessionId="), 1)
                                    .replace(QLatin1Char('&'), QLatin1Char(' '))
                                    .toStdString());
            }
        }
        return loads;
    }

    /// The text that covers the page; empty if nothing does.
    static std::string Cover() {
        const auto* overlay = Dialog()->findChild<QWidget*>(QStringLiteral("WebOverlay"));
        return overlay->isHidden() ? ""
                                   : overlay->findChild<ZText*>(QStringLiteral("WebOverlayText"))->text().toStdString();
    }

    static QWidget* CloseButton() {
        for (auto* button : Dialog()->findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == QLatin1String("Close")) {
                return button;
            }
        }
        return nullptr;
    }
    QWidget* CoverButton(const char* name) const { return Dialog()->findChild<QWidget*>(QString::fromLatin1(name)); }

    /// The status in the title bar; empty while the title is displayed.
    static std::string Status() {
        const auto* label = Dialog()->findChild<ZLabel*>();
        return label->isVisible() ? label->text().toStdString() : "";
    }

    std::vector<Json::Value> probes;
    int laterCalls = 0;
};
