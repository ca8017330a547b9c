#include "webview/WebShell.h"

#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "WebTest.h"
#include "core/urlhandler.h"
#include "ui/ZToast.h"
#include "webview/WebHost.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;
using namespace std::chrono_literals;
using core::webview::ZRWebWidget;

namespace {

class WebShellTest : public WebTest {
protected:
    CScriptedWebView& Page() { return web.View(); }

    bool HasToast() const { return widget.findChild<ZToast*>() != nullptr; }

    std::vector<std::string> MenuTexts() const {
        std::vector<std::string> texts;
        if (const auto* menu = widget.findChild<QMenu*>()) {
            for (const QAction* action : menu->actions()) {
                texts.push_back(action->text().toStdString() + (action->isEnabled() ? "" : " off"));
            }
        }
        return texts;
    }

    /// Returns the URLs that were dispatched since the last call, all for the system's browser or none.
    std::vector<std::string> Dispatched(bool inBrowser = false) {
        time.Settle();
        std::vector<std::string> opened;
        for (const OpenedUrl& url : urls.Opened()) {
            EXPECT_EQ(url.extra.value<core::webview::ZRWebWindowInfo>().inBrowser, inBrowser) << url.url;
            EXPECT_EQ(url.businessType, core::urlhandler::kBusinessDefault) << url.url;
            EXPECT_EQ(url.fallbackMode, core::urlhandler::kFallbackWeb) << url.url;
            opened.push_back(url.url);
        }
        urls.Forget();
        return opened;
    }

    std::vector<std::string> InBrowser() { return Dispatched(true); }
};

// Loads

TEST_F(WebShellTest, LoadEndsOnceWithTheAddressThatWasWanted) {
    LoadWell("https://ours.test/a?b#c");
    EXPECT_THAT(ends, ElementsAre("good 200 https://ours.test/a?b#c"));
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/a?b#c"));
}

TEST_F(WebShellTest, LoadEndHasTheNumberOfTheEngine) {
    Load("https://ours.test/");
    Page().Fail(404);
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 404 https://ours.test/"));
}

TEST_F(WebShellTest, LoadEndNeverComesInsideTheCall) {
    widget.LoadUrl(QStringLiteral("file:///x"));
    EXPECT_THAT(ends, IsEmpty());
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 file:///x"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Refused to load a page, its scheme is not allowed: file:///x")));
    EXPECT_EQ(web.MadeCount(), 0);
}

TEST_F(WebShellTest, NewerLoadEndsTheOlderAsFailed) {
    Load("https://ours.test/1");
    Load("https://ours.test/2");
    Page().Succeed();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/1", "good 200 https://ours.test/2"));
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebShellTest, EachOfManyLoadsBeforeTheEngineEndsOnce) {
    for (const char* url : {"https://ours.test/1", "https://ours.test/2", "https://ours.test/3"}) {
        widget.LoadUrl(QString::fromUtf8(url));
    }
    time.Settle();
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/3"));
    Page().Succeed();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/1", "failed 0 https://ours.test/2",
                                  "good 200 https://ours.test/3"));
}

TEST_F(WebShellTest, RefusedAddressLeavesTheRunningLoadAlone) {
    Load("https://ours.test/");
    Load("javascript:alert(1)");
    EXPECT_TRUE(widget.IsLoading());
    Page().Succeed();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 javascript:alert(1)", "good 200 https://ours.test/"));
    log.Forget();
}

TEST_F(WebShellTest, WidgetIsLoadingFromTheCallToTheEnd) {
    EXPECT_FALSE(widget.IsLoading());
    widget.LoadUrl(QStringLiteral("https://ours.test/"));
    EXPECT_TRUE(widget.IsLoading());
    time.Settle();
    EXPECT_TRUE(widget.IsLoading());
    Page().Succeed();
    EXPECT_FALSE(widget.IsLoading());
}

TEST_F(WebShellTest, StopEndsTheLoadAsFailedAndSaysNothing) {
    Show();
    widget.SetNetworkDisconnectedToastVisible(true);
    Load("https://ours.test/");
    widget.StopLoad();
    EXPECT_FALSE(widget.IsLoading());
    EXPECT_EQ(Page().StopCount(), 1);
    Page().Fail();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/"));
    EXPECT_EQ(Cover(), "");
    EXPECT_FALSE(HasToast());
}

TEST_F(WebShellTest, StopWithoutALoadDoesNothing) {
    widget.StopLoad();
    LoadWell();
    widget.StopLoad();
    time.Settle();
    EXPECT_EQ(Page().StopCount(), 0);
    EXPECT_THAT(ends, SizeIs(1));
}

TEST_F(WebShellTest, StopBeforeTheEngineIsLoadedLeavesNothingToLoad) {
    widget.LoadUrl(QStringLiteral("https://ours.test/"));
    widget.StopLoad();
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 0);
    EXPECT_THAT(ends, SizeIs(1));
}

TEST_F(WebShellTest, EqualAddressIsLeftAloneByPolicyZeroAndTheCallEndsWell) {
    LoadWell();
    Load("https://ours.test/");
    EXPECT_THAT(web.Loads(), SizeIs(1));
    EXPECT_THAT(ends, ElementsAre("good 200 https://ours.test/", "good 200 https://ours.test/"));
}

TEST_F(WebShellTest, EqualAddressThatIsStillLoadingEndsWithThatLoadByPolicyZero) {
    Load("https://ours.test/");
    Load("https://ours.test/");
    EXPECT_THAT(web.Loads(), SizeIs(1));
    Page().Fail();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/", "failed 0 https://ours.test/"));
}

TEST_F(WebShellTest, EqualAddressIsLoadedAgainByPolicyZeroAfterAFailure) {
    Load("https://ours.test/");
    Page().Fail();
    Load("https://ours.test/");
    EXPECT_THAT(web.Loads(), SizeIs(2));
}

TEST_F(WebShellTest, EqualAddressIsLoadedAgainByPolicyZeroWhenItsPageIsNotWhole) {
    LoadWell("https://ours.test/1");
    Load("https://ours.test/2");
    widget.StopLoad();
    Load("https://ours.test/2");
    EXPECT_THAT(web.Loads(), SizeIs(3));
    Page().Succeed();
    Page().StartOfPage();
    widget.StopLoad();
    Load("https://ours.test/2");
    EXPECT_THAT(web.Loads(), SizeIs(4));
    Page().Succeed();
    Page().Kill();
    Load("https://ours.test/2");
    EXPECT_THAT(web.Loads(), SizeIs(5));
    Page().Succeed();
    account.Set(502);
    Load("https://ours.test/2");
    EXPECT_THAT(web.Loads(), SizeIs(6));
    log.Forget();
}

TEST_F(WebShellTest, EachCallLoadsANewDocumentByPolicyOne) {
    widget.SetSameUrlPolicy(core::webview::kSameUrlReloads);
    for (const char* url : {"https://ours.test/#a", "https://ours.test/#a", "https://ours.test/#b"}) {
        LoadWell(url);
    }
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/#a", "https://ours.test/#a", "https://ours.test/#b"));
    EXPECT_THAT(ends, ElementsAre("good 200 https://ours.test/#a", "good 200 https://ours.test/#a",
                                  "good 200 https://ours.test/#b"));
}

TEST_F(WebShellTest, LoadOfThePageItselfEndsToo) {
    LoadWell();
    Page().StartOfPage();
    EXPECT_TRUE(widget.IsLoading());
    Page().Succeed();
    time.Settle();
    EXPECT_THAT(ends, SizeIs(2));
}

TEST_F(WebShellTest, ScriptsRunInThePageAndNowhereBeforeTheFirstLoad) {
    widget.ExecuteJS(QStringLiteral("early"));
    LoadWell();
    widget.ExecuteJS(QStringLiteral("document.body.innerHTML='';"));
    EXPECT_THAT(Page().Scripts(), ElementsAre("document.body.innerHTML='';"));
}

// When the engine is loaded

TEST_F(WebShellTest, EngineIsNotLoadedInsideTheCall) {
    widget.LoadUrl(QStringLiteral("https://ours.test/"));
    EXPECT_EQ(web.MadeCount(), 0);
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 1);
    EXPECT_THAT(web.Loads(), SizeIs(1));
}

TEST_F(WebShellTest, EngineIsLoadedAtOnceWhenTheWidgetIsVisible) {
    host::web::CWebHost::Instance().End();
    host::web::CWebHost::Instance().FirstFramePainted();
    ZRWebWidget other;
    other.show();
    other.LoadUrl(QStringLiteral("https://ours.test/"));
    EXPECT_EQ(web.MadeCount(), 1);
}

TEST_F(WebShellTest, EngineIsLoadedWhenAWaitingWidgetIsShown) {
    host::web::CWebHost::Instance().End();
    host::web::CWebHost::Instance().FirstFramePainted();
    Load("https://ours.test/");
    EXPECT_EQ(web.MadeCount(), 0);
    Show();
    EXPECT_THAT(web.Loads(), SizeIs(1));
}

TEST_F(WebShellTest, ViewIsCreatedOnceForManyLoads) {
    LoadWell("https://ours.test/1");
    LoadWell("https://ours.test/2");
    EXPECT_EQ(web.MadeCount(), 1);
}

TEST_F(WebShellTest, WidgetWithoutAnEngineOffersTheBrowserOfTheSystem) {
    web.SetMissing(true);
    Show();
    Load("https://ours.test/a");
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/a"));
    EXPECT_EQ(Cover(), "Web pages cannot be displayed here. You can open this page in your browser.");
    EXPECT_THAT(Buttons(), ElementsAre("Open in browser"));

    Click(Browser());
    EXPECT_THAT(InBrowser(), ElementsAre("https://ours.test/a"));
}

TEST_F(WebShellTest, EngineThatIsFoundLaterIsUsed) {
    web.SetMissing(true);
    Show();
    Load("https://ours.test/");
    web.SetMissing(false);
    LoadWell();
    EXPECT_EQ(Cover(), "");
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/", "good 200 https://ours.test/"));
}

// Addresses

TEST_F(WebShellTest, RedirectToARefusedAddressEndsTheLoadAsFailed) {
    Show();
    Load("https://ours.test/");
    EXPECT_FALSE(Page().Navigate("file:///etc/passwd", EnWebNavigation::kRedirect));
    Page().Fail();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/"));
    EXPECT_EQ(Cover(), "This page could not be loaded.");
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("Refused an address of a page, its scheme is not allowed: file:///etc/passwd")));
}

TEST_F(WebShellTest, LoadEndsOnceWhenItsAddressIsRefusedAndTheEngineReportsNothing) {
    for (const EnWebNavigation type : {EnWebNavigation::kLoad, EnWebNavigation::kRedirect}) {
        ends.clear();
        Load("https://ours.test/");
        EXPECT_FALSE(Page().Navigate("file:///x", type));
        time.Settle();
        EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/"));
        EXPECT_FALSE(widget.IsLoading());
        EXPECT_EQ(Cover(), "This page could not be loaded.");

        EXPECT_FALSE(Page().Navigate("file:///y", type));
        time.Settle();
        EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/", "failed 0 file:///y"));
    }
    web.Forget();
    log.Forget();
}

TEST_F(WebShellTest, LoadGoesOnWhenARedirectOfASubFrameIsRefused) {
    Load("https://ours.test/");
    EXPECT_FALSE(Page().Navigate("file:///x", EnWebNavigation::kRedirect, false));
    time.Settle();
    EXPECT_THAT(ends, IsEmpty());
    EXPECT_TRUE(widget.IsLoading());
    log.Forget();
}

TEST_F(WebShellTest, AddressThatAScriptWantsIsRefusedWithAFailedLoadEnd) {
    LoadWell();
    ends.clear();
    for (const char* url : {"file:///x", "data:text/html,x", "chrome://gpu", "view-source:https://ours.test/",
                            "about:blank", "http://plain.test/"}) {
        EXPECT_FALSE(Page().Navigate(url, EnWebNavigation::kOther)) << url;
    }
    time.Settle();
    EXPECT_THAT(ends, AllOf(SizeIs(6), Each(StartsWith("failed 0 "))));
    EXPECT_TRUE(Page().Navigate("https://other.test/", EnWebNavigation::kOther));
    log.Forget();
}

TEST_F(WebShellTest, RefusedAddressOfASubFrameEndsNoLoad) {
    Load("https://ours.test/");
    EXPECT_FALSE(Page().Navigate("file:///x", EnWebNavigation::kOther, false));
    EXPECT_FALSE(Page().Navigate("zrclient://page/x", EnWebNavigation::kLink, false));
    EXPECT_TRUE(Page().Navigate("https://frame.test/", EnWebNavigation::kLink, false));
    time.Settle();
    EXPECT_THAT(ends, IsEmpty());
    EXPECT_TRUE(widget.IsLoading());
    log.Forget();
}

TEST_F(WebShellTest, LoadGoesOnWhenAScriptWantsARefusedAddress) {
    Load("https://ours.test/");
    EXPECT_FALSE(Page().Navigate("file:///x", EnWebNavigation::kOther));
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 file:///x"));
    EXPECT_TRUE(widget.IsLoading());
    log.Forget();
}

TEST_F(WebShellTest, LogLineOfARefusedAddressIsOneShortLine) {
    const std::string url = "file:///" + std::string(192, 'x');
    Load((url + "yz").c_str());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Refused to load a page, its scheme is not allowed: " + url)));
    log.Forget();
    Load(("https://ours.test/\n" + std::string(9000, 'x')).c_str());
    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_THAT(log.Lines()[0].text, AllOf(SizeIs(Lt(300u)), Not(HasSubstr("\n"))));
}

// Links

TEST_F(WebShellTest, LinkInTheOwnAllowListedOriginStays) {
    LoadWell("https://ours.test/");
    EXPECT_TRUE(Page().Navigate("https://ours.test/next"));
    EXPECT_THAT(Dispatched(), IsEmpty());
}

TEST_F(WebShellTest, LinkToAnotherOriginOrToTheClientIsDispatched) {
    LoadWell("https://ours.test/");
    for (const char* url :
         {"https://other.test/x", "https://ours.test:444/", "https://ours.test.evil.test/", "zrclient://page/quotes"}) {
        EXPECT_FALSE(Page().Navigate(url)) << url;
        EXPECT_THAT(Dispatched(), ElementsAre(url));
    }
    EXPECT_THAT(ends, SizeIs(1));
}

TEST_F(WebShellTest, LinkToAnotherAllowListedOriginIsDispatched) {
    Json::Value bridge;
    bridge["origins"].append("https://ours.test");
    bridge["origins"].append("https://second.test");
    config.Set("web_bridge", bridge);
    LoadWell("https://ours.test/");
    EXPECT_FALSE(Page().Navigate("https://second.test/"));
    EXPECT_THAT(Dispatched(), ElementsAre("https://second.test/"));
}

TEST_F(WebShellTest, LinkOfAForeignPageIsDispatchedEvenToItself) {
    LoadWell("https://other.test/");
    EXPECT_FALSE(Page().Navigate("https://other.test/next"));
    EXPECT_THAT(Dispatched(), ElementsAre("https://other.test/next"));
}

TEST_F(WebShellTest, LoadsRedirectsAndScriptsAreNoLinks) {
    LoadWell("https://ours.test/");
    for (const EnWebNavigation type : {EnWebNavigation::kLoad, EnWebNavigation::kRedirect, EnWebNavigation::kOther}) {
        EXPECT_TRUE(Page().Navigate("https://other.test/", type));
    }
    EXPECT_THAT(Dispatched(), IsEmpty());
}

// Popups

TEST_F(WebShellTest, PopupIsRefusedUnlessPopupsAreEnabled) {
    LoadWell();
    EXPECT_FALSE(Page().OpenPopup("https://other.test/"));
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a popup, the page may open none")));
}

TEST_F(WebShellTest, PopupIsOfferedWithAddressAndSize) {
    widget.SetPopupEnabled(true);
    QObject::connect(&widget, &ZRWebWidget::BeforePopup, [](const QString& url, bool* handled, const QSize& size) {
        EXPECT_EQ(url, QStringLiteral("https://other.test/x"));
        EXPECT_EQ(size, QSize(300, 200));
        EXPECT_FALSE(*handled);
        *handled = true;
    });
    LoadWell();
    EXPECT_TRUE(Page().OpenPopup("https://other.test/x", QSize(300, 200)));
    EXPECT_THAT(log.Lines(), Not(Contains(Info(StartsWith("Dropped a popup")))));
}

TEST_F(WebShellTest, PopupThatNobodyTakesIsDroppedWithALine) {
    widget.SetPopupEnabled(true);
    LoadWell();
    EXPECT_TRUE(Page().OpenPopup("https://other.test/"));
    EXPECT_THAT(log.Lines(), Contains(Info("Dropped a popup: https://other.test/")));
}

TEST_F(WebShellTest, PopupToTheClientIsDispatchedAndARefusedAddressIsNot) {
    widget.SetPopupEnabled(true);
    QSignalSpy offered(&widget, &ZRWebWidget::BeforePopup);
    LoadWell();
    Page().OpenPopup("zrclient://page/quotes");
    Page().OpenPopup("file:///x");
    EXPECT_THAT(Dispatched(), ElementsAre("zrclient://page/quotes"));
    EXPECT_EQ(offered.count(), 0);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Refused a popup, its scheme is not allowed: file:///x")));
}

TEST_F(WebShellTest, PopupIsRefusedWhenTenAreAskedForWithinASecond) {
    widget.SetPopupEnabled(true);
    LoadWell();
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(Page().OpenPopup("https://other.test/"));
    }
    EXPECT_FALSE(Page().OpenPopup("https://other.test/"));
    time.Advance(1s);
    EXPECT_TRUE(Page().OpenPopup("https://other.test/"));
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a popup, too many are open")));
}

TEST_F(WebShellTest, PopupIsRefusedWhileTenWindowsAreOpen) {
    widget.SetPopupEnabled(true);
    LoadWell();
    host::web::CWebHost::Instance().CountWindow(10);
    EXPECT_FALSE(Page().OpenPopup("https://other.test/"));
    host::web::CWebHost::Instance().CountWindow(-1);
    EXPECT_TRUE(Page().OpenPopup("https://other.test/"));
    host::web::CWebHost::Instance().CountWindow(-9);
    log.Forget();
}

// Focus

TEST_F(WebShellTest, PageHasTheFocusWhenItsWindowOpensAndKeepsItInTheNextView) {
    QPushButton button(&widget);
    Show();
    LoadWell("https://ours.test/a");
    EXPECT_EQ(widget.window()->focusWidget(), &Page());

    Page().Kill();
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 2);
    EXPECT_EQ(widget.window()->focusWidget(), &Page());
    EXPECT_THAT(log.Lines(), Contains(Error("The process of a page ended: https://ours.test/a")));
}

TEST_F(WebShellTest, PageHasTheFocusBeforeTheFirstButtonOfItsWindow) {
    QWidget window;
    QPushButton button(&window);
    widget.setParent(&window);
    window.show();
    time.Settle();
    EXPECT_EQ(window.focusWidget(), widget.focusProxy());
    widget.setParent(nullptr);
}

TEST_F(WebShellTest, PageHasTheFocusOfAWindowThatIsNotActive) {
    Show();
    QWidget front;
    front.show();
    front.activateWindow();
    time.Settle();
    ASSERT_FALSE(widget.isActiveWindow());
    LoadWell();
    EXPECT_EQ(widget.window()->focusWidget(), &Page());
}

TEST_F(WebShellTest, IndicationLeavesTheFocusInThePage) {
    Show();
    LoadWell();
    Load("https://ours.test/2");
    ASSERT_EQ(Cover(), "Loading\u2026");
    EXPECT_EQ(widget.window()->focusWidget(), &Page());
}

TEST_F(WebShellTest, WidgetTakesTheFocusByClickAndKeyboard) {
    ASSERT_TRUE(widget.focusProxy());
    EXPECT_EQ(widget.focusProxy()->focusPolicy(), Qt::StrongFocus);
}

TEST_F(WebShellTest, PageTakesTheFocusFromNoOtherWidget) {
    QLineEdit field(&widget);
    field.setFocus();
    Show();
    LoadWell();
    EXPECT_EQ(widget.window()->focusWidget(), &field);
}

TEST_F(WebShellTest, MessageHasTheFocusOfThePageThatItCovers) {
    Show();
    Load("https://ours.test/a");
    Page().Fail();
    EXPECT_EQ(widget.window()->focusWidget(), Retry());

    QTest::keyClick(Retry(), Qt::Key_Space);
    time.Settle();
    EXPECT_THAT(web.Loads(), SizeIs(2));
    EXPECT_EQ(widget.window()->focusWidget(), &Page());
}

// Failures

TEST_F(WebShellTest, NothingCoversTheWidgetBeforeItsFirstLoad) {
    Show();
    EXPECT_TRUE(widget.findChild<QWidget*>(QStringLiteral("WebOverlay"))->isHidden());
}

TEST_F(WebShellTest, FailedPageSaysSoWithAButtonThatTriesAgain) {
    Show();
    Load("https://ours.test/a");
    Page().Fail();
    EXPECT_EQ(Cover(), "This page could not be loaded.");
    EXPECT_THAT(Buttons(), ElementsAre("Try again", "Open in browser"));

    Click(Browser());
    EXPECT_THAT(InBrowser(), ElementsAre("https://ours.test/a"));
    Click(Retry());
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/a", "https://ours.test/a"));
    Page().Succeed();
    time.Settle();
    EXPECT_EQ(Cover(), "");
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/a", "good 200 https://ours.test/a"));
}

TEST_F(WebShellTest, ToastTellsOfALostConnectionOnlyIfItIsWantedAndSeen) {
    Load("https://ours.test/");
    Page().Fail();
    EXPECT_FALSE(HasToast());
    widget.SetNetworkDisconnectedToastVisible(true);
    Load("https://ours.test/");
    Page().Fail();
    EXPECT_FALSE(HasToast());
    Show();
    Load("https://ours.test/");
    Page().Fail();
    EXPECT_TRUE(HasToast());
}

TEST_F(WebShellTest, NoToastIsShownWhenItIsNotWanted) {
    Show();
    Load("https://ours.test/");
    Page().Fail();
    EXPECT_FALSE(HasToast());
}

TEST_F(WebShellTest, ToastWarnsOfTheConnection) {
    widget.SetNetworkDisconnectedToastVisible(true);
    Show();
    Load("https://ours.test/");
    Page().Fail();

    const auto* toast = widget.findChild<ZToast*>();
    ASSERT_TRUE(toast);
    EXPECT_TRUE(toast->isVisible());
    EXPECT_EQ(toast->accessibleName(), QStringLiteral("No connection. Please check your network."));
    ZToast like(toast->parentWidget());
    ZToast::ToastInfo info;
    info.style = ZToast::kWarning;
    info.text = toast->accessibleName();
    like.showToast(info);
    EXPECT_EQ(const_cast<ZToast*>(toast)->grab().toImage(), like.grab().toImage());
}

TEST_F(WebShellTest, KilledPageComesBackThreeTimesInFiveMinutesAndThenSaysSo) {
    Show();
    LoadWell("https://ours.test/a");
    for (int i = 0; i < 3; ++i) {
        Page().Kill();
        time.Settle();
        Page().Succeed();
        time.Settle();
        EXPECT_EQ(Cover(), "");
    }
    EXPECT_THAT(web.Loads(), AllOf(SizeIs(4), Each("https://ours.test/a")));
    EXPECT_EQ(web.MadeCount(), 4);
    EXPECT_THAT(web.Views(), SizeIs(1));

    Page().Kill();
    time.Settle();
    EXPECT_THAT(web.Loads(), SizeIs(4));
    EXPECT_EQ(Cover(), "This page ended unexpectedly.");
    EXPECT_THAT(Buttons(), ElementsAre("Try again", "Open in browser"));
    Click(Browser());
    EXPECT_THAT(InBrowser(), ElementsAre("https://ours.test/a"));
    Click(Retry());
    EXPECT_THAT(web.Loads(), SizeIs(5));
    Page().Succeed();
    time.Settle();

    time.Advance(5min);
    Page().Kill();
    time.Settle();
    EXPECT_THAT(web.Loads(), SizeIs(6));
    EXPECT_THAT(log.Lines(), Contains(Error("The process of a page ended: https://ours.test/a")).Times(5));
}

TEST_F(WebShellTest, KilledPageComesBackAtTheAddressToWhichItWent) {
    Show();
    LoadWell("https://ours.test/a");
    Page().GoTo(QStringLiteral("https://ours.test/b"));
    Page().GoTo(QStringLiteral("about:blank"));
    Page().Kill();
    time.Settle();
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/a", "https://ours.test/b"));
    log.Forget();
}

TEST_F(WebShellTest, KilledPageDoesNotComeBackWhenAnotherIsWantedAtOnce) {
    Show();
    LoadWell("https://ours.test/a");
    Page().Kill();
    LoadWell("https://ours.test/b");
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/a", "https://ours.test/b"));
    log.Forget();
}

TEST_F(WebShellTest, KilledPageGetsNoEvents) {
    widget.EnableJSBridge(true);
    LoadWell();
    EXPECT_TRUE(widget.BroadcastEvent(QStringLiteral("theme"), 1));
    Page().Kill();
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), 1));
    log.Forget();
}

TEST_F(WebShellTest, KilledHiddenPageComesBackWhenItIsShown) {
    LoadWell();
    Page().Kill();
    time.Advance(1h);
    EXPECT_EQ(Page().FreezeCount(), 0);
    EXPECT_THAT(web.Loads(), SizeIs(1));
    Show();
    EXPECT_THAT(web.Loads(), SizeIs(2));
    log.Forget();
}

TEST_F(WebShellTest, KilledPageIsLoadedNoMoreWhenAnotherIsWanted) {
    LoadWell();
    Page().Kill();
    LoadWell("https://ours.test/2");
    Show();
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/", "https://ours.test/2"));
    log.Forget();
}

TEST_F(WebShellTest, LoadEndsAsFailedWhenItsPageIsKilled) {
    Load("https://ours.test/");
    Page().Kill();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/"));
    log.Forget();
}

// Indication

TEST_F(WebShellTest, EachLoadIsIndicatedWhileTheWidgetIsVisible) {
    Load("https://ours.test/");
    EXPECT_EQ(Cover(), "");
    Show();
    EXPECT_EQ(Cover(), "Loading\u2026");
    Page().Succeed();
    time.Settle();
    EXPECT_EQ(Cover(), "");
    Load("https://ours.test/2");
    EXPECT_EQ(Cover(), "Loading\u2026");
    Page().Succeed();
    Page().StartOfPage();
    EXPECT_EQ(Cover(), "Loading\u2026");
}

TEST_F(WebShellTest, IndicationFollowsItsSwitchesWhileAPageLoads) {
    Show();
    Load("https://ours.test/");
    widget.SetLoadingStatusVisible(false);
    EXPECT_EQ(Cover(), "");
    widget.ShowLoadingOnFirstLoadUrl(true);
    EXPECT_EQ(Cover(), "Loading\u2026");
}

TEST_F(WebShellTest, IndicationReplacesTheMessageOfAFailureWithItsButtons) {
    Show();
    Load("https://ours.test/");
    Page().Fail();
    ASSERT_THAT(Buttons(), SizeIs(2));
    Page().StartOfPage();
    EXPECT_EQ(Cover(), "Loading\u2026");
    EXPECT_THAT(Buttons(), IsEmpty());
}

TEST_F(WebShellTest, MessageOfAFailureStaysUntilThePageLoadedItselfWellWhenNothingIsIndicated) {
    widget.SetLoadingStatusVisible(false);
    Show();
    Load("https://ours.test/");
    Page().Fail();
    Page().StartOfPage();
    EXPECT_EQ(Cover(), "This page could not be loaded.");
    Page().GoTo(QStringLiteral("https://ours.test/2"));
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebShellTest, NoLoadIsIndicatedWhenThatIsNotWanted) {
    widget.SetLoadingStatusVisible(false);
    Show();
    Load("https://ours.test/");
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebShellTest, FirstLoadThatIsSeenIsIndicatedAloneWhenThatIsWanted) {
    widget.SetLoadingStatusVisible(false);
    widget.ShowLoadingOnFirstLoadUrl(true);
    LoadWell("https://ours.test/preload");
    Show();
    EXPECT_EQ(Cover(), "");
    Load("https://ours.test/1");
    EXPECT_EQ(Cover(), "Loading\u2026");
    Page().Succeed();
    time.Settle();
    EXPECT_EQ(Cover(), "");
    widget.hide();
    LoadWell("https://ours.test/hidden");
    Show();
    Load("https://ours.test/2");
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebShellTest, FirstIndicationIsOwedUntilItIsWanted) {
    widget.SetLoadingStatusVisible(false);
    Show();
    LoadWell();
    widget.ShowLoadingOnFirstLoadUrl(true);
    Load("https://ours.test/2");
    EXPECT_EQ(Cover(), "Loading\u2026");
}

// Freezing

TEST_F(WebShellTest, VisiblePageIsNeverFrozen) {
    Show();
    LoadWell();
    time.Advance(1h);
    EXPECT_EQ(Page().FreezeCount(), 0);
}

TEST_F(WebShellTest, HiddenPageIsFrozenOnce) {
    LoadWell();
    time.Advance(1h);
    EXPECT_EQ(Page().FreezeCount(), 1);
}

TEST_F(WebShellTest, NothingIsFrozenWithoutAWholePage) {
    Show();
    Load("https://ours.test/");
    widget.hide();
    time.Advance(1h);
    EXPECT_EQ(Page().FreezeCount(), 0);
    Page().Kill();
    time.Advance(1h);
    EXPECT_EQ(Page().FreezeCount(), 0);

    ZRWebWidget other;
    web.SetMissing(true);
    other.LoadUrl(QStringLiteral("https://ours.test/"));
    time.Advance(1h);
    log.Forget();
}

TEST_F(WebShellTest, PageIsFrozenWhenItWasHiddenForASecond) {
    LoadWell();
    time.Advance(999ms);
    EXPECT_FALSE(Page().IsFrozen());
    time.Advance(1ms);
    EXPECT_TRUE(Page().IsFrozen());
    Show();
    EXPECT_FALSE(Page().IsFrozen());
    widget.hide();
    time.Advance(999ms);
    Show();
    time.Advance(1s);
    EXPECT_FALSE(Page().IsFrozen());
    widget.hide();
    time.Advance(1s);
    EXPECT_TRUE(Page().IsFrozen());
}

TEST_F(WebShellTest, HiddenPageIsNotFrozenWhileItLoads) {
    Load("https://ours.test/");
    time.Advance(1h);
    EXPECT_FALSE(Page().IsFrozen());
    Page().Succeed();
    time.Advance(1s);
    EXPECT_TRUE(Page().IsFrozen());
    Load("https://ours.test/2");
    time.Advance(1h);
    EXPECT_FALSE(Page().IsFrozen());
    Page().Fail();
    time.Advance(1s);
    EXPECT_TRUE(Page().IsFrozen());
}

TEST_F(WebShellTest, HiddenPageIsNotFrozenWhileItLoadsAnotherItself) {
    LoadWell();
    Page().StartOfPage();
    time.Advance(1h);
    EXPECT_FALSE(Page().IsFrozen());
}

// Context menu

TEST_F(WebShellTest, MenuHasTheEntriesOfTheFlagsAndSelectAll) {
    Show();
    LoadWell();
    widget.SetContextMenuFlags(0x31);
    Page().WantMenu(core::webview::kMenuCopy);
    EXPECT_THAT(MenuTexts(), ElementsAre("Copy", "Cut off", "Paste off", "Select all"));
    widget.CloseContextMenu();
    time.Settle();
    EXPECT_THAT(MenuTexts(), IsEmpty());

    widget.SetContextMenuFlags(core::webview::kMenuPaste);
    Page().WantMenu(0x31);
    EXPECT_THAT(MenuTexts(), ElementsAre("Paste", "Select all"));
}

TEST_F(WebShellTest, ThereIsNoMenuWithoutAnEntryOfOurs) {
    Show();
    LoadWell();
    for (const int flags : {0, 0x02, 0x0e, 0x40}) {
        widget.SetContextMenuFlags(flags);
        Page().WantMenu(0x31);
        time.Settle();
        EXPECT_THAT(MenuTexts(), IsEmpty()) << flags;
    }
}

TEST_F(WebShellTest, EntryOfTheMenuEditsThePage) {
    Show();
    LoadWell();
    widget.SetContextMenuFlags(0x31);
    Page().WantMenu(0x31);
    for (QAction* action : widget.findChild<QMenu*>()->actions()) {
        action->trigger();
    }
    EXPECT_THAT(Page().Edits(), ElementsAre(0x01, 0x20, 0x10, 0));
}

TEST_F(WebShellTest, MenuOpensWhereItIsWantedAndReplacesTheOneBefore) {
    Show();
    LoadWell();
    widget.SetContextMenuFlags(0x31);
    Page().WantMenu(0x31);
    Page().WantMenu(0x31);
    time.Settle();

    const auto menus = widget.findChildren<QMenu*>();
    ASSERT_THAT(menus, SizeIs(1));
    EXPECT_TRUE(menus[0]->isVisible());
    EXPECT_EQ(menus[0]->pos(), Page().mapToGlobal(Page().rect().center()));
}

TEST_F(WebShellTest, MenuClosesWhenTheWidgetIsHidden) {
    Show();
    LoadWell();
    widget.SetContextMenuFlags(0x31);
    Page().WantMenu(0x31);
    widget.hide();
    time.Settle();
    EXPECT_THAT(MenuTexts(), IsEmpty());
}

TEST_F(WebShellTest, ViewFillsTheWidget) {
    Show();
    LoadWell();
    EXPECT_EQ(Page().size(), QSize(400, 500));
    widget.resize(600, 300);
    EXPECT_EQ(Page().size(), QSize(600, 300));
}

}  // namespace
