// The AI chat with the real engine and the pages of the development server.
#include <unistd.h>

#include <QTimer>
#include <csignal>

#include "ChatFixture.h"
#include "core/url_data.h"
#include "core/urlhandler.h"
#include "ui/zr_ui_theme.h"

using namespace ::testing;

namespace {

TEST_F(ChatTest, LoginPreloadsThePageUnseen) {
    StartAndPreload();

    EXPECT_THAT(Loads(), ElementsAre("preload 1 scene=1"));
    EXPECT_EQ(ParsedLine("Load AI chat page end"), 2);
    ASSERT_THAT(Dialogs(), SizeIs(1));
    EXPECT_TRUE(Dialog()->isHidden());
    EXPECT_TRUE(PageHas("location.pathname === '/chat/preload'"));
    EXPECT_TRUE(PageHas("performance.getEntriesByName(location.origin + '/chat/chat.js').length"));
    EXPECT_EQ(CountOf(20301), 0);
}

TEST_F(ChatTest, EntryOpensTheChatForItsPage) {
    StartAndPreload();
    for (const auto& [page, title] :
         {std::pair("watchlist", "Watchlist"), std::pair("quotes", "Quotes"), std::pair("research", "Research"),
          std::pair("news", "News"), std::pair("portfolio", "Portfolio")}) {
        OpenFrom(page);
        ASSERT_TRUE(WaitInRealTime(IsSeen));
        EXPECT_TRUE(PageHas(std::string("document.getElementById('scene').textContent === '") + title + "'"));
        Dialog()->hide();  // so that the main window can be clicked
    }
    EXPECT_THAT(Loads(), ElementsAre("preload 1 scene=1", "page 0 scene=1", "page 0 scene=12", "page 0 scene=42",
                                     "page 0 scene=4", "page 0 scene=5"));
    EXPECT_EQ(CountOf(20302), 4);
    ASSERT_TRUE(WaitInRealTime([this] { return server->ReportsOf("ClickAIChatEntrance").size() == 5; }));
    EXPECT_EQ(server->ReportsOf("ClickAIChatEntrance")[1]["entrance_source"], "12");
}

TEST_F(ChatTest, QuestionIsTypedAndItsAnswerArrives) {
    StartAndPreload();
    OpenAndWait();

    Type("<b>Why</b>");

    EXPECT_TRUE(PageShows("You asked: \"<b>Why</b>\""));
    EXPECT_TRUE(PageHas("!document.getElementById('send').disabled && !document.querySelector('b')"));
    EXPECT_EQ(Status(), "");
}

class ChatDismissalTest : public ChatTest, public WithParamInterface<const char*> {
protected:
    void Dismiss() {
        const std::string way = GetParam();
        if (way == "bar") {
            Click(CloseButton());
        } else if (way == "window") {
            Dialog()->close();
        } else {
            Press(Qt::Key_Escape);
        }
    }
};

TEST_P(ChatDismissalTest, HidesTheWindowAndTheNextOpenLoadsAgainWithTheHistory) {
    StartAndPreload();
    OpenAndWait();
    Type("First");
    ASSERT_TRUE(PageHas("document.querySelectorAll('.message').length === 2 && !running"));
    const QPointer<QWidget> dialog = Dialog();

    Dismiss();

    ASSERT_TRUE(WaitInRealTime([&] { return dialog && dialog->isHidden(); }));
    EXPECT_EQ(CountOf(20301), 1);
    OpenAndWait();
    EXPECT_EQ(Dialog(), dialog);
    EXPECT_TRUE(PageShows("First"));
    EXPECT_THAT(Loads(), ElementsAre("preload 1 scene=1", "page 0 scene=1", "page 0 scene=1"));
}

INSTANTIATE_TEST_SUITE_P(Ways, ChatDismissalTest, Values("bar", "window", "page"),
                         [](const auto& way) { return std::string(way.param); });

TEST_F(ChatTest, OpenPageOfTheSameSceneIsOnlyShownAgain) {
    StartAndPreload();
    OpenAndWait();
    Ask("window.mark = 1");
    OpenFrom("watchlist");
    OpenFrom("watchlist");
    EXPECT_TRUE(PageHas("window.mark === 1"));
    EXPECT_THAT(Loads(), SizeIs(2));
}

TEST_F(ChatTest, NextUserGetsANewSessionAndNothingOfTheFormer) {
    StartAndPreload();
    OpenAndWait();
    Type("Secret");
    ASSERT_TRUE(PageHas("document.querySelectorAll('.message').length === 2 && !running"));
    Ask("document.cookie = 'secret=1'");
    const QPointer<QWidget> former = Dialog();

    client->Login(502);

    EXPECT_TRUE(WaitInRealTime([&] { return !former && client->UserId() == 502 && OpenEntries().size() == 1; }));
    ASSERT_TRUE(WaitForHide());
    OpenAndWait();
    EXPECT_TRUE(PageHas("document.cookie === '' && sessionStorage.getItem('history') === null"));
    EXPECT_THAT(Dialogs(), SizeIs(1));
    EXPECT_EQ(Views(), 1u);
    EXPECT_THAT(Loads(), ElementsAre("preload 1 scene=1", "page 0 scene=1", "preload 1 scene=1", "page 0 scene=1"));
}

TEST_F(ChatTest, DisplayedPageFollowsTheThemeAndAHiddenOneIsMadeAgain) {
    StartAndPreload();
    OpenAndWait();
    ASSERT_TRUE(PageHas("document.documentElement.dataset.theme === '2'"));
    Ask("window.mark = 1");

    client->SetTheme(zr_ui_theme::Manager::kThemeBlack);

    EXPECT_TRUE(PageHas("document.documentElement.dataset.theme === '3' && window.mark === 1"));
    const QPointer<QWidget> former = Dialog();
    former->close();
    ASSERT_TRUE(WaitInRealTime([&] { return former->isHidden(); }));
    client->SetTheme(zr_ui_theme::Manager::kThemeLight);
    EXPECT_TRUE(WaitInRealTime([&] { return !former; }));
    EXPECT_THAT(Dialogs(), IsEmpty());
    OpenAndWait();
    EXPECT_TRUE(PageHas("document.documentElement.dataset.theme === '1'"));
}

TEST_F(ChatTest, WindowClosesWhenTheLanguageChangesAndTheNextSpeaksIt) {
    StartAndPreload();
    OpenAndWait();
    const QPointer<QWidget> former = Dialog();

    client->SetLanguage(7);

    EXPECT_TRUE(WaitInRealTime([&] { return !former; }));
    OpenAndWait();
    EXPECT_TRUE(PageShows("Liste de suivi"));
}

TEST_F(ChatTest, LostServerIsShownInTheTitleBarAndTheQuestionCanBeAskedAgain) {
    StartAndPreload();
    OpenAndWait();
    kill(pid_t(client->Server().ProcessId()), SIGSTOP);
    Type("Why");
    EXPECT_TRUE(WaitInRealTime([] { return Status() == "  Connecting"; }));
    kill(pid_t(client->Server().ProcessId()), SIGKILL);
    EXPECT_TRUE(WaitInRealTime([] { return Status() == "  No connection"; }));
    EXPECT_TRUE(PageShows("The answer is incomplete"));
    EXPECT_TRUE(PageHas("document.querySelector('.retry').textContent === 'Retry'"));

    Click(CloseButton());
    EXPECT_EQ(Status(), "");
}

TEST_F(ChatTest, TabReachesEachButtonOfTheChatWindowAndSpacePressesIt) {
    StartAndPreload();
    OpenAndWait();
    std::set<QWidget*> missing;
    for (auto* button : Dialog()->findChildren<QAbstractButton*>()) {
        if (button->isVisible() && button->isEnabled()) {
            missing.insert(button);
        }
    }
    ASSERT_THAT(missing, Contains(CloseButton()));
    ASSERT_TRUE(PageHas("document.hasFocus()"));

    while (!missing.empty()) {
        QWidget* focus = nullptr;
        ASSERT_TRUE(WaitInRealTime([&] {
            Press(Qt::Key_Tab);
            focus = QApplication::focusWidget();
            return missing.erase(focus) == 1;
        })) << missing.size()
            << " buttons are not reached";
        SCOPED_TRACE(focus->accessibleName().toStdString());
        EXPECT_FALSE(focus->accessibleName().isEmpty());
        const QImage focused = focus->grab().toImage();
        bool isPressed = false;
        QObject::connect(static_cast<QAbstractButton*>(focus), &QAbstractButton::pressed, &watcher,
                         [&isPressed] { isPressed = true; });
        QTest::keyPress(Dialog()->windowHandle(), Qt::Key_Space);
        EXPECT_TRUE(isPressed);
        // A release without the press clicks nothing.
        static_cast<QAbstractButton*>(focus)->setDown(false);
        QTest::keyRelease(Dialog()->windowHandle(), Qt::Key_Space);
        focus->clearFocus();
        EXPECT_FALSE(focus->grab().toImage() == focused) << "the focus is not visible";
        focus->setFocus(Qt::TabFocusReason);
    }
}

TEST_F(ChatTest, LinkOfThePageOpensAWindowOverTheChat) {
    StartAndPreload();
    OpenAndWait();

    ClickInPage("sources");

    ASSERT_TRUE(WaitInRealTime([] { return Popup() && Popup()->isVisible(); }));
    bool ended = false;
    QObject::connect(Popup(), &core::webview::ZRWebDialog::LoadEnd, &watcher,
                     [&ended](bool success) { ended = success; });
    EXPECT_TRUE(WaitInRealTime([&] { return ended; }));
    // The popup has a frame, and the chat has none.
    EXPECT_LT((Popup()->frameGeometry().center() - Dialog()->frameGeometry().center()).manhattanLength(), 40);
    EXPECT_TRUE(IsSeen());
    Popup()->close();
    EXPECT_TRUE(WaitInRealTime([] { return !Popup(); }));
}

TEST_F(ChatTest, CallsAnswersAndEventsCrossBothWays) {
    StartAndPreload();
    OpenAndWait();
    const auto service = GrowthService();
    Ask("(() => { window.got = []; for (const name of ['later', 'later', 'unknown']) {"
        "zrclient.call(name).then((value) => got.push(value), (error) => got.push(error.code)); }"
        "zrclient.on('told', (params) => got.push(params.text)); })()");
    ASSERT_TRUE(WaitInRealTime([this] { return laterCalls == 2; }));

    Json::Value params;
    params["text"] = "event";
    EXPECT_TRUE(service->InvokeAIChatWebJSAPI(QStringLiteral("told"), params));
    for (const char* answer : {"first", "second", "too many"}) {
        service->RespondToNativeJSAPI(QStringLiteral("later"), answer);
    }

    EXPECT_TRUE(PageHas("got.join() === 'unknown-name,event,first,second'"));
    EXPECT_TRUE(WaitForLine("Dropped an answer without an open call: later"));

    Ask("(() => { zrclient.call('later').then((value) => document.title = value); })()");
    ASSERT_TRUE(WaitInRealTime([this] { return laterCalls == 3; }));
    Dialog()->close();
    ASSERT_TRUE(WaitInRealTime([] { return Dialog()->isHidden(); }));
    OpenAndWait();
    service->RespondToNativeJSAPI(QStringLiteral("later"), "of another load");
    EXPECT_TRUE(WaitForLine("Dropped an answer without an open call: later", 2));
    EXPECT_TRUE(PageHas("document.title === 'AI chat'"));
}

TEST_F(ChatTest, SchemeOpensItsAddressInTheChat) {
    StartAndPreload();
    const QString target = QString::fromStdString(
        core::url_data::GetDomainUrl("api", core::url_data::kDomainBizDefault) + "/chat/sources");

    EXPECT_TRUE(core::urlhandler::DispatchUrl(
        QStringLiteral("zrclient://url/") + QString::fromLatin1(QUrl::toPercentEncoding(target)),
        core::urlhandler::kBusinessDefault, nullptr, QVariant(), core::urlhandler::kFallbackWeb));

    ASSERT_TRUE(WaitInRealTime(IsSeen));
    EXPECT_TRUE(PageHas("location.pathname === '/chat/sources'"));
    EXPECT_THAT(Loads(), ElementsAre("preload 1 scene=1", "page 0 scene=1"));
}

TEST_F(ChatTest, KilledPageComesBackThreeTimesAndThenTheBrowserIsOffered) {
    Texts inBrowser;
    StartAndPreload();
    OpenAndWait();
    QObject::connect(client, &CComposition::WebOpened, &watcher,
                     [&](const QUrl& url) { inBrowser.push_back(url.path().toStdString()); });
    for (int round = 0; round < 4; ++round) {
        ASSERT_TRUE(PageHas("document.getElementById('form')"));
        for (const pid_t process : PageProcesses()) {
            kill(process, SIGKILL);
        }
        ASSERT_TRUE(WaitForLine("The process of a page ended", round + 1));
    }
    ASSERT_TRUE(WaitInRealTime([] { return Cover() == "This page ended unexpectedly."; }));

    Click(CoverButton("WebOverlayBrowser"));
    EXPECT_THAT(inBrowser, ElementsAre("/chat"));
    EXPECT_EQ(Popup(), nullptr);
    Click(CoverButton("WebOverlayRetry"));
    EXPECT_TRUE(PageHas("document.getElementById('form')"));
    EXPECT_EQ(Cover(), "");
}

struct Lack {
    const char* name;
    const char* variable;
    const char* value;
    const char* line;
};

void PrintTo(const Lack& lack, std::ostream* stream) {
    *stream << lack.name;
}

class ChatWithoutEngineTest : public ChatTest, public WithParamInterface<Lack> {};

TEST_P(ChatWithoutEngineTest, WindowOffersTheBrowserAndNothingElseSuffers) {
    qputenv(GetParam().variable, GetParam().value);
    Texts inBrowser;
    StartChat();
    ASSERT_TRUE(WaitForHide());
    OpenFrom("quotes");
    ASSERT_TRUE(WaitInRealTime(IsSeen));
    QObject::connect(client, &CComposition::WebOpened, &watcher,
                     [&](const QUrl& url) { inBrowser.push_back(url.path().toStdString()); });

    EXPECT_TRUE(WaitInRealTime(
        [] { return Cover() == "Web pages cannot be displayed here. You can open this page in your browser."; }));
    Click(CoverButton("WebOverlayBrowser"));
    EXPECT_THAT(inBrowser, ElementsAre("/chat"));
    EXPECT_TRUE(WaitForLine(GetParam().line));
    EXPECT_FALSE(IsMapped(QStringLiteral("libzrhost_webengine")));
    EXPECT_TRUE(window->StatusLine().IsGood());
}

// As another user the sandbox is no reason, so that the case has a second one.
INSTANTIATE_TEST_SUITE_P(Lacks, ChatWithoutEngineTest,
                         Values(Lack{"helper", "QTWEBENGINEPROCESS_PATH", "/nowhere/QtWebEngineProcess",
                                     "the program /nowhere/QtWebEngineProcess is missing"},
                                geteuid() == 0 ? Lack{"sandbox", "QTWEBENGINE_CHROMIUM_FLAGS", "",
                                                      "its sandbox does not run as root"}
                                               : Lack{"platform", "QTWEBENGINEPROCESS_PATH", "/dev/null",
                                                      "the program /dev/null is missing"}),
                         [](const auto& lack) { return lack.param.name; });

TEST_F(ChatTest, ClosingTheMainWindowEndsTheClientAndTheEngine) {
    StartAndPreload();
    OpenAndWait();
    ASSERT_THAT(PageProcesses(), Not(IsEmpty()));

    QTimer::singleShot(0, window, &QWidget::close);

    EXPECT_EQ(QApplication::exec(), 0);
    End();
    EXPECT_TRUE(WaitInRealTime([] { return PageProcesses().empty(); }));
    EXPECT_EQ(Views(), 0u);
}

TEST_F(ChatTest, EscapeStopsTheAnswerBeforeItClosesTheWindow) {
    StartAndPreload();
    OpenAndWait();
    Type("Why");
    ASSERT_TRUE(PageHas("running"));

    Press(Qt::Key_Escape);

    EXPECT_TRUE(PageShows("The answer is incomplete"));
    EXPECT_TRUE(IsSeen());
    EXPECT_EQ(CountOf(20301), 0);
}

struct ChatLook {
    const char* name;
    zr_ui_theme::Manager::Theme theme;
};

void PrintTo(const ChatLook& look, std::ostream* stream) {
    *stream << look.name;
}

/// Part of the guided tour.
class TourChatTest : public ChatTest, public WithParamInterface<ChatLook> {
protected:
    void ChatPicture(const char* state) {
        Picture((std::string("chat-") + GetParam().name + '-' + state).c_str(), Dialog());
    }
};

TEST_P(TourChatTest, ShowsTheChatWhileItLoadsAnswersAndFails) {
    StartAndPreload();
    client->SetTheme(GetParam().theme);
    const auto process = pid_t(client->Server().ProcessId());

    kill(process, SIGSTOP);
    OpenFrom("watchlist");
    ASSERT_TRUE(WaitInRealTime([] { return IsSeen() && Cover() == "Loading\u2026"; }));
    ChatPicture("loading");
    kill(process, SIGCONT);
    ASSERT_TRUE(PageHas("document.documentElement.dataset.theme === '" + std::to_string(int(GetParam().theme)) + "'"));
    EXPECT_EQ(Cover(), "");

    Type("Which of my instruments moved most?");
    ASSERT_TRUE(PageShows("market data."));
    ASSERT_TRUE(PageHas("!running"));
    ChatPicture("answer");

    kill(process, SIGSTOP);
    Type("And why?");
    ASSERT_TRUE(WaitInRealTime([] { return Status() == "  Connecting"; }));
    ChatPicture("connecting");
    kill(process, SIGKILL);
    ASSERT_TRUE(WaitInRealTime([] { return Status() == "  No connection"; }));
    ASSERT_TRUE(PageShows("The answer is incomplete"));
    ChatPicture("no-connection");

    EXPECT_TRUE(core::urlhandler::DispatchUrl(QStringLiteral("zrclient://url/http%3A%2F%2F127.0.0.1%3A1%2F"),
                                              core::urlhandler::kBusinessDefault, nullptr, QVariant(),
                                              core::urlhandler::kFallbackWeb));
    ASSERT_TRUE(WaitInRealTime([] { return Cover() == "This page could not be loaded."; }));
    EXPECT_EQ(Dialog()->focusWidget(), CoverButton("WebOverlayRetry"));
    ChatPicture("failed");
}

INSTANTIATE_TEST_SUITE_P(Looks, TourChatTest,
                         Values(ChatLook{"light", zr_ui_theme::Manager::kThemeLight},
                                ChatLook{"dark_blue", zr_ui_theme::Manager::kThemeDarkBlue},
                                ChatLook{"black", zr_ui_theme::Manager::kThemeBlack}),
                         [](const auto& look) { return look.param.name; });

TEST_F(ChatTest, HundredLoginsNeverHaveMoreThanOneDialogAndOnePage) {
    StartAndPreload();
    for (int round = 0; round < 100; ++round) {
        client->Login(501 + round % 2);
        ASSERT_TRUE(WaitInRealTime([&] { return client->UserId() == 501u + round % 2; }));
        GrowthService()->OpenAIChatPage(ZRAIChatPageWatchlist, {}, false, true);
        ASSERT_TRUE(WaitInRealTime([] { return IsSeen() && Views() == 1; }));
        EXPECT_EQ(Dialogs().size(), 1u);
        Dialog()->close();
        client->Logout();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 0; }));
        EXPECT_LE(Dialogs().size(), 1u);
        EXPECT_LE(Views(), 1u);
    }
    EXPECT_TRUE(WaitInRealTime([] { return Dialogs().empty() && Views() == 0; }));
    EXPECT_TRUE(WaitInRealTime([] { return PageProcesses().empty(); }));
}

}  // namespace
