#include "AIChat/View/ZRAIChatWebDialog.h"

#include <gmock/gmock.h>
#include <json/reader.h>

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMetaMethod>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include "AIChat/View/ZRAIChatWebTitleBar.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "ui/ZIconButton.h"
#include "ui/ZLabel.h"
#include "ui/ZText.h"
#include "ui/ZToast.h"
#include "webview/ZRWebDialog.h"
#include "webview/ZRWebWidget.h"

using namespace ::testing;
using namespace std::chrono_literals;
using core::webview::ZRWebDialog;

namespace {

constexpr const char* kUrl = "https://chat.zrgrowth.example/";
constexpr const char* kClear = "document.body.innerHTML='';";

/// Counts events of a type.
class CEventCounter : public QObject {
public:
    explicit CEventCounter(QEvent::Type type) : m_type(type) {}

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        count += event->type() == m_type ? 1 : 0;
        return false;
    }

    int count = 0;

private:
    const QEvent::Type m_type;
};

class AIChatWebDialogTest : public ScriptedHostTest {
protected:
    AIChatWebDialogTest() {
        Json::Value bridge;
        bridge["origins"].append("https://chat.zrgrowth.example");
        config.Set("web_bridge", bridge);
        dialog = new CZRAIChatWebDialog(nullptr);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(dialog, &CZRAIChatWebDialog::HiddenButNotClosed, [this] { ++dismissals; });
        QObject::connect(dialog, &CZRAIChatWebDialog::LoadEnd, [this] { ++ends; });
    }

    ~AIChatWebDialogTest() override {
        delete dialog;
        for (QWidget* popup : Popups()) {
            delete popup;
        }
        web.Forget();
    }

    void Load() {
        dialog->LoadUrl(QString::fromUtf8(kUrl));
        time.Settle();
        web.View().Succeed();
        time.Settle();
        log.Forget();
    }

    void Show() {
        dialog->setWindowOpacity(1);
        dialog->Show();
        time.Settle();
    }

    static std::vector<ZRWebDialog*> Popups() {
        std::vector<ZRWebDialog*> popups;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* popup = qobject_cast<ZRWebDialog*>(widget)) {
                popups.push_back(popup);
            }
        }
        return popups;
    }

    /// The parameters of a handler of the window.
    static Json::Value Data(const char* json) {
        Json::Value value;
        EXPECT_TRUE(Json::Reader().parse(json, value)) << json;
        return value;
    }

    ZIconButton* Pin() const {
        for (auto* button : dialog->findChildren<ZIconButton*>()) {
            if (button->isCheckable()) {
                return button;
            }
        }
        return nullptr;
    }

    std::string Status() const {
        const auto* label = dialog->findChild<CZRAIChatWebTitleBar*>()->findChild<ZLabel*>();
        return label->isHidden() ? std::string() : label->text().toStdString();
    }

    /// The lines without those of the title bar.
    std::vector<std::string> Texts() {
        std::vector<std::string> texts;
        for (const LogLine& line : log.Lines()) {
            texts.push_back(line.text);
        }
        return texts;
    }

    QPointer<CZRAIChatWebDialog> dialog;
    int dismissals = 0;
    int ends = 0;
};

// The window

TEST_F(AIChatWebDialogTest, WindowHasNameSizesAndTitleWhenItIsNew) {
    EXPECT_EQ(dialog->objectName(), QStringLiteral("CZRAIChatWebDialog"));
    EXPECT_TRUE(dialog->testAttribute(Qt::WA_StyledBackground));
    EXPECT_EQ(dialog->minimumSize(), QSize(320, 520));
    EXPECT_EQ(dialog->size(), QSize(480, 800));
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("KestrelAI"));
    EXPECT_TRUE(dialog->isHidden());
    EXPECT_TRUE(dialog->windowFlags() & Qt::FramelessWindowHint);
    EXPECT_THAT(log.Assertions(), IsEmpty());

    environment.SetVelora(true);
    const CZRAIChatWebDialog velora(nullptr);
    EXPECT_EQ(velora.windowTitle(), QStringLiteral("Velora AI"));
    language.SetText(299180, QStringLiteral("V"));
    EXPECT_EQ(CZRAIChatWebDialog(nullptr).windowTitle(), QStringLiteral("V"));
    environment.SetVelora(false);
    language.SetText(291435, QStringLiteral("K"));
    EXPECT_EQ(CZRAIChatWebDialog(nullptr).windowTitle(), QStringLiteral("K"));
}

TEST_F(AIChatWebDialogTest, PageFillsTheWindowBelowTheTitleBar) {
    Show();

    const auto* page = dialog->findChild<core::webview::ZRWebWidget*>();
    const auto* bar = dialog->findChild<CZRAIChatWebTitleBar*>();
    const QRect head(bar->mapTo(dialog, QPoint()), bar->size());
    const QRect place(page->mapTo(dialog, QPoint()), page->size());
    EXPECT_EQ(place.topLeft(), head.bottomLeft() + QPoint(0, 1));
    EXPECT_EQ(place.right(), head.right());
    // The window's edge has one width on all sides.
    EXPECT_EQ(place.bottom(), dialog->rect().bottom() - head.left());
}

TEST_F(AIChatWebDialogTest, ButtonsOfTheTitleBarAreAllVisibleWhenShown) {
    Show();
    std::vector<std::string> names;
    for (const auto* button : dialog->findChildren<ZIconButton*>()) {
        if (button->isVisible() && !button->isCheckable()) {
            names.push_back(button->accessibleName().toStdString());
        }
    }
    EXPECT_THAT(names, ElementsAre("Minimise", "Maximise", "Close"));
}

TEST_F(AIChatWebDialogTest, WidestStatusFitsBetweenTheButtonsWhenTheWindowHasItsInitialWidth) {
    Load();
    Show();
    web.View().Call("updateAIChatNetworkStatus",
                    Data(R"({"params":{"data":{"status":2,"desc":"wwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwwww"}}})"));
    time.Settle();

    const auto* bar = dialog->findChild<CZRAIChatWebTitleBar*>();
    const auto* label = bar->findChild<ZLabel*>();
    const int right = label->mapTo(bar, QPoint(label->width(), 0)).x();
    for (const auto* button : bar->findChildren<ZIconButton*>()) {
        if (button->isVisible() && !button->isCheckable()) {
            EXPECT_LE(right, button->x());
        }
    }
    EXPECT_EQ(dialog->width(), 480);
    log.Forget();
}

TEST_F(AIChatWebDialogTest, WindowIsCentredOverTheMainFrameOnlyWhenItWasHidden) {
    QWidget main;
    main.setGeometry(100, 20, 600, 540);
    mainFrame.Offer(&main);
    dialog->resize(320, 520);

    Show();
    EXPECT_EQ(dialog->geometry().center(), main.frameGeometry().center());
    EXPECT_EQ(dialog->size(), QSize(320, 520));

    dialog->move(7, 9);
    Show();
    EXPECT_EQ(dialog->pos(), QPoint(7, 9));
    EXPECT_TRUE(dialog->isVisible());

    dialog->hide();
    Show();
    EXPECT_EQ(dialog->geometry().center(), main.frameGeometry().center());
}

TEST_F(AIChatWebDialogTest, WindowIsCentredOnTheScreenWhenThereIsNoMainFrame) {
    dialog->resize(320, 520);
    Show();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(dialog->geometry().center(), dialog->screen()->availableGeometry().center());
}

TEST_F(AIChatWebDialogTest, MinimisedWindowIsRestoredWhenShownAgain) {
    Show();
    dialog->setWindowState(Qt::WindowMinimized);

    Show();

    EXPECT_FALSE(dialog->isMinimized());
    EXPECT_TRUE(dialog->isActiveWindow());
}

TEST_F(AIChatWebDialogTest, VisibleWindowIsActivatedWhenShownAgain) {
    Show();
    QWidget other;
    other.show();
    other.activateWindow();
    time.Settle();
    ASSERT_FALSE(dialog->isActiveWindow());
    CEventCounter raises(QEvent::ZOrderChange);
    dialog->installEventFilter(&raises);

    Show();

    EXPECT_TRUE(dialog->isActiveWindow());
    EXPECT_EQ(raises.count, 1);
}

// The page

TEST_F(AIChatWebDialogTest, LoadingIsIndicatedOnlyForTheFirstLoad) {
    const auto* overlay = dialog->findChild<QWidget*>(QStringLiteral("WebOverlay"));
    ASSERT_TRUE(overlay);
    Show();
    dialog->LoadUrl(QString::fromUtf8(kUrl));
    time.Settle();
    EXPECT_FALSE(overlay->isHidden());
    web.View().Succeed();
    time.Settle();
    EXPECT_TRUE(overlay->isHidden());

    dialog->LoadUrl(QString::fromUtf8(kUrl));
    time.Settle();
    EXPECT_TRUE(overlay->isHidden());
    log.Forget();
}

TEST_F(AIChatWebDialogTest, LostConnectionIsShownInAToast) {
    Show();
    dialog->LoadUrl(QString::fromUtf8(kUrl));
    time.Settle();
    web.View().Fail();
    EXPECT_TRUE(dialog->findChild<ZToast*>());
    time.Settle();
    log.Forget();
}

TEST_F(AIChatWebDialogTest, LoadEndIsLoggedTwiceWhetherItIsGoodOrNot) {
    dialog->LoadUrl(QString::fromUtf8(kUrl));
    time.Settle();
    web.View().Fail(404);
    time.Settle();

    EXPECT_THAT(Texts(),
                ElementsAre("[AIChat] Load AI chat page end, httpCode = 404, url = https://chat.zrgrowth.example/",
                            "[AIChat] Load AI chat page end, httpCode = 404, url = https://chat.zrgrowth.example/"));
    EXPECT_EQ(ends, 1);
    EXPECT_THAT(web.Loads(), ElementsAre(kUrl));
}

TEST_F(AIChatWebDialogTest, SameAddressIsLoadedAgain) {
    Load();
    Load();
    EXPECT_THAT(web.Loads(), ElementsAre(kUrl, kUrl));
    EXPECT_EQ(ends, 2);
}

TEST_F(AIChatWebDialogTest, BridgeIsOpenForThePage) {
    Load();
    EXPECT_THAT(web.View().BridgeOrigins(), Not(IsEmpty()));
    EXPECT_TRUE(dialog->InvokeJSAPI(QStringLiteral("event"), Json::Value(1)));
    EXPECT_THAT(web.View().Received(), ElementsAre(R"({"event":"event","params":1})"));
}

TEST_F(AIChatWebDialogTest, ContextMenuHasCopyPasteAndCut) {
    Load();
    Show();
    web.View().WantMenu(0x31);
    time.Settle();
    std::vector<std::string> texts;
    if (const auto* menu = dialog->findChild<QMenu*>()) {
        for (const QAction* action : menu->actions()) {
            texts.push_back(action->text().toStdString());
        }
    }
    EXPECT_THAT(texts, IsSupersetOf({HasSubstr("Copy"), HasSubstr("Paste"), HasSubstr("Cut")}));

    dialog->Clear();
    time.Settle();
    const auto* menu = dialog->findChild<QMenu*>();
    EXPECT_TRUE(!menu || !menu->isVisible());
}

TEST_F(AIChatWebDialogTest, ClearStopsALoadAndEmptiesThePage) {
    Load();
    dialog->Clear();
    EXPECT_EQ(web.View().StopCount(), 0);
    EXPECT_THAT(web.View().Scripts(), ElementsAre(kClear));

    dialog->LoadUrl(QStringLiteral("https://chat.zrgrowth.example/b"));
    time.Settle();
    dialog->Clear();
    EXPECT_EQ(web.View().StopCount(), 1);
    EXPECT_THAT(web.View().Scripts(), ElementsAre(kClear, kClear));
    EXPECT_EQ(dismissals, 0);
    time.Settle();
    log.Forget();
}

// Hiding and closing

TEST_F(AIChatWebDialogTest, HideClearsAtOnceAndHidesAfterAMomentInSilence) {
    Load();
    Show();
    poster.Forget();

    dialog->Hide();

    EXPECT_THAT(Texts(), ElementsAre("[AIChat] Hide web page, clear web data"));
    EXPECT_THAT(web.View().Scripts(), ElementsAre(kClear));
    EXPECT_EQ(dialog->exactWindowOpacity(), 0.001);
    EXPECT_THAT(poster.Delays(), ElementsAre(100));
    time.Advance(99ms);
    EXPECT_FALSE(dialog->isHidden());
    time.Advance(1ms);
    EXPECT_TRUE(dialog->isHidden());
    EXPECT_EQ(dismissals, 0);
}

TEST_F(AIChatWebDialogTest, NothingHappensWhenTheWindowEndsBeforeItIsHidden) {
    Show();
    dialog->Hide();
    delete dialog;

    time.Advance(200ms);
}

TEST_F(AIChatWebDialogTest, WindowIsHiddenLaterWhenANewLoadHasStartedInBetween) {
    Load();
    Show();
    dialog->Hide();
    dialog->LoadUrl(QString::fromUtf8(kUrl));
    Show();
    EXPECT_FALSE(dialog->isHidden());

    time.Advance(100ms);

    EXPECT_TRUE(dialog->isHidden());
    log.Forget();
}

/// The ways of closing.
struct Way {
    const char* name;
    void (*close)(QWidget& dialog, CScriptedWebView& page);
    bool byPage;
};

class AIChatClosingTest : public AIChatWebDialogTest, public WithParamInterface<Way> {};

TEST_P(AIChatClosingTest, WindowIsOnlyHiddenWhenItIsClosed) {
    Load();
    Show();
    bool clearedWhenTold = false;
    QObject::connect(dialog, &CZRAIChatWebDialog::HiddenButNotClosed,
                     [&] { clearedWhenTold = !web.View().Scripts().empty() && dialog->exactWindowOpacity() == 0.001; });
    log.Forget();

    GetParam().close(*dialog, web.View());

    EXPECT_TRUE(clearedWhenTold);
    EXPECT_EQ(dismissals, 1);
    std::vector<std::string> expected;
    if (GetParam().byPage) {
        expected.emplace_back("[AIChat] Receive JS closeWindow");
    }
    expected.emplace_back("[AIChat] Hide web page, clear web data");
    EXPECT_EQ(Texts(), expected);
    EXPECT_FALSE(dialog->isHidden());
    time.Advance(100ms);
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->isHidden());
    EXPECT_EQ(dismissals, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, AIChatClosingTest,
    Values(Way{"WindowManager", [](QWidget& dialog, CScriptedWebView&) { dialog.windowHandle()->close(); }, false},
           Way{"CloseEvent",
               [](QWidget& dialog, CScriptedWebView&) {
                   QCloseEvent event;
                   event.accept();
                   QCoreApplication::sendEvent(&dialog, &event);
                   EXPECT_FALSE(event.isAccepted());
               },
               false},
           Way{"Close", [](QWidget& dialog, CScriptedWebView&) { EXPECT_FALSE(dialog.close()); }, false},
           Way{"Escape", [](QWidget& dialog, CScriptedWebView&) { QTest::keyClick(&dialog, Qt::Key_Escape); }, false},
           Way{"CloseButton",
               [](QWidget& dialog, CScriptedWebView&) {
                   for (auto* button : dialog.findChildren<ZIconButton*>()) {
                       if (button->accessibleName() == QLatin1String("Close")) {
                           Click(button);
                       }
                   }
               },
               false},
           Way{"Page", [](QWidget&, CScriptedWebView& page) { page.Call("closeWindow"); }, true}),
    [](const auto& row) { return row.param.name; });

TEST_F(AIChatWebDialogTest, PinKeepsTheWindowOnTopUntilItIsHidden) {
    Show();
    Click(Pin());
    EXPECT_TRUE(dialog->isTopMost());
    EXPECT_TRUE(dialog->isVisible());

    dialog->Hide();

    EXPECT_FALSE(dialog->isTopMost());
    EXPECT_FALSE(Pin()->isChecked());
    QSignalSpy pinned(dialog, &CZRAIChatWebDialog::PinBtnClicked);
    Click(Pin());
    EXPECT_EQ(pinned.count(), 0);
}

// Handlers of the page

TEST_F(AIChatWebDialogTest, NamesOfTheWindowAreReserved) {
    for (const char* name : {"SetNewSessionEnable", "updateAIChatNetworkStatus", "closeWindow"}) {
        EXPECT_TRUE(CZRAIChatWebDialog::IsReservedJSAPIName(QString::fromUtf8(name))) << name;
    }
    for (const char* name : {"", "setNewSessionEnable", "closeWindow ", "createSession"}) {
        EXPECT_FALSE(CZRAIChatWebDialog::IsReservedJSAPIName(QString::fromUtf8(name))) << name;
    }
}

TEST_F(AIChatWebDialogTest, CallOfTheWindowsHandlersStaysWithoutAnAnswer) {
    Load();
    for (const char* name : {"SetNewSessionEnable", "updateAIChatNetworkStatus", "closeWindow"}) {
        web.View().Call(name);
    }
    EXPECT_THAT(web.View().Received(), IsEmpty());
    log.Forget();
}

TEST_F(AIChatWebDialogTest, NetworkStatusIsReadByTheTable) {
    struct Row {
        const char* json;
        const char* line;  // of the title bar; null: none
        const char* shown;
    };
    const Row rows[] = {
        {R"({"params":{"data":{"status":2,"desc":"x","tips":"t"}}})", "status = 2, desc = x, tips = t", "  x"},
        {R"({"params":{"data":{"status":3.0,"desc":"x"}}})", "status = 3, desc = x, tips = ", "  x"},
        {R"({"params":{"data":{"desc":"x"}}})", "status = 1, desc = x, tips = ", ""},
        {R"({"params":{"data":{"status":"2","desc":"x"}}})", "status = 1, desc = x, tips = ", ""},
        {R"({"params":{"data":{"status":2.5,"desc":"x"}}})", "status = 1, desc = x, tips = ", ""},
        {R"({"params":{"data":{"status":4294967298,"desc":"x"}}})", "status = 1, desc = x, tips = ", ""},
        {R"({"params":{"data":{"status":2,"desc":7,"tips":[]}}})", "status = 2, desc = , tips = ", ""},
        {R"({"params":{"data":{}}})", "status = 1, desc = , tips = ", ""},
        {R"({"params":{"data":[]}})", nullptr, ""},
        {R"({"params":{"data":null}})", nullptr, ""},
        {R"({"params":{}})", nullptr, ""},
        {R"({"params":"data"})", nullptr, ""},
        {R"({})", nullptr, ""},
    };
    Load();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json);
        log.Forget();
        web.View().Call("updateAIChatNetworkStatus", Data(row.json));
        std::vector<std::string> expected = {"[AIChat] Receive JS updateAIChatNetworkStatus, param = " +
                                             Data(row.json).toStyledString()};
        if (row.line) {
            expected.push_back(std::string("[AIChat] SetDescAndTips, ") + row.line);
        }
        EXPECT_EQ(Texts(), expected);
        EXPECT_EQ(Status(), row.shown);
        dialog->Clear();
    }
}

TEST_F(AIChatWebDialogTest, NewSessionEnableIsLoggedAndChangesNothing) {
    Load();
    for (const char* json : {R"({"params":{"data":{"enable":false}}})", R"({"params":{"data":{"enable":1}}})",
                             R"({"params":{"data":[]}})", R"({"params":7})", R"({})"}) {
        log.Forget();
        web.View().Call("SetNewSessionEnable", Data(json));
        EXPECT_THAT(Texts(),
                    ElementsAre("[AIChat] Receive JS SetNewSessionEnable ,param = " + Data(json).toStyledString()));
    }
    EXPECT_TRUE(Pin()->isEnabled());
}

TEST_F(AIChatWebDialogTest, ExtensionIsRefusedWhenNameOrHandlerIsEmpty) {
    const auto handler = [](const Json::Value&, int call) { return std::make_shared<Json::Value>(call); };
    EXPECT_FALSE(dialog->RegisterExtendJSAPI(QString(), handler));
    EXPECT_FALSE(dialog->RegisterExtendJSAPI(QStringLiteral("name"), nullptr));
    EXPECT_TRUE(dialog->RegisterExtendJSAPI(QStringLiteral("name"), handler));
    Load();

    web.View().Call("name");

    EXPECT_THAT(web.View().Received(), ElementsAre(R"({"answer":1,"call":1})"));
}

TEST_F(AIChatWebDialogTest, OpenCallIsAnsweredWhenTheHandlerLeftItOpen) {
    dialog->RegisterExtendJSAPI(QStringLiteral("name"),
                                [](const Json::Value&, int) { return std::shared_ptr<Json::Value>(); });
    Load();
    web.View().Call("name");

    dialog->RespondToExtendJSAPI(QStringLiteral("name"), Json::Value("late"));

    EXPECT_THAT(web.View().Received(), ElementsAre(R"({"answer":"late","call":1})"));
}

TEST_F(AIChatWebDialogTest, PageIsAskedForANewSessionWhenTheTitleBarSaysSo) {
    Load();
    QSignalSpy asked(dialog, &CZRAIChatWebDialog::NewSessionBtnClicked);

    Q_EMIT dialog->findChild<CZRAIChatWebTitleBar*>()->NewSessionBtnClicked();

    EXPECT_THAT(web.View().Received(), ElementsAre(R"({"event":"createSession","params":null})"));
    EXPECT_EQ(asked.count(), 0);
}

// Popups

TEST_F(AIChatWebDialogTest, PopupIsTakenBeforeTheRequestReturns) {
    auto* widget = dialog->findChild<core::webview::ZRWebWidget*>();
    bool handled = false;

    Q_EMIT widget->BeforePopup(QStringLiteral("https://other.test/"), &handled, QSize());

    EXPECT_TRUE(handled);
    EXPECT_THAT(Popups(), IsEmpty());
    time.Settle();
    EXPECT_THAT(Popups(), SizeIs(1));
    web.Forget();
}

TEST_F(AIChatWebDialogTest, PopupIsOpenedLaterWithItsSizeOverTheWindow) {
    Load();
    Show();
    web.Forget();
    poster.Forget();

    EXPECT_TRUE(web.View().OpenPopup("https://other.test/", QSize(500, 400)));
    EXPECT_THAT(Popups(), IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(0));
    time.Settle();

    ASSERT_THAT(Popups(), SizeIs(1));
    EXPECT_EQ(Popups()[0]->size(), QSize(500, 400));
    EXPECT_TRUE(Popups()[0]->isVisible());
    EXPECT_NEAR(Popups()[0]->geometry().center().x(), dialog->geometry().center().x(), 4);
    EXPECT_THAT(web.Loads(), ElementsAre("https://other.test/"));
    EXPECT_THAT(urls.Opened(), IsEmpty());
}

TEST_F(AIChatWebDialogTest, LinksOfAPopupAreDispatchedOnlyWhenItsFirstLoadHasEnded) {
    Load();
    Show();
    web.View().OpenPopup("https://other.test/");
    time.Settle();
    CScriptedWebView& popup = web.View();
    popup.Commit(QStringLiteral("https://other.test/"));
    EXPECT_TRUE(popup.Navigate("https://other.test/2"));

    popup.Succeed();
    time.Settle();
    EXPECT_FALSE(popup.Navigate("https://other.test/3"));
    time.Settle();
    EXPECT_THAT(urls.Opened(), ElementsAre(Field(&OpenedUrl::url, "https://other.test/3")));

    // Once: a later load end does not switch again.
    Popups()[0]->SetUrlDispatchSwitch(false);
    Popups()[0]->LoadUrl(QStringLiteral("https://other.test/4"));
    time.Settle();
    popup.Succeed();
    time.Settle();
    EXPECT_TRUE(popup.Navigate("https://other.test/5"));
    EXPECT_THAT(urls.Opened(), SizeIs(1));
}

TEST_F(AIChatWebDialogTest, NoPopupIsOpenedWhenTheWindowIsGone) {
    Load();
    web.View().OpenPopup("https://other.test/");
    delete dialog;
    web.Forget();

    time.Settle();

    EXPECT_THAT(Popups(), IsEmpty());
}

TEST_F(AIChatWebDialogTest, SignalsAndSlotsAreDeclaredInTheirOrder) {
    const QMetaObject& meta = CZRAIChatWebDialog::staticMetaObject;
    std::vector<std::string> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.push_back(meta.method(i).methodSignature().toStdString());
    }
    EXPECT_THAT(names, ElementsAre("HiddenButNotClosed()", "NewSessionBtnClicked()", "PinBtnClicked(bool)", "LoadEnd()",
                                   "OnPinBtnClicked(bool)", "OnNewSessionBtnClicked()", "OnCloseButtonClicked()"));
}

}  // namespace
