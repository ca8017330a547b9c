#include "webview/WebHost.h"

#include <QMenu>

#include "WebTest.h"
#include "framework/Ports.h"
#include "webview/ZRWebDialog.h"

using namespace ::testing;
using namespace std::chrono_literals;
using core::webview::ZRWebDialog;
using core::webview::ZRWebWidget;
using host::web::CWebHost;

namespace {

class WebHostTest : public WebTest {
protected:
    CWebHost& webHost = CWebHost::Instance();
};

TEST_F(WebHostTest, EngineIsLoadedASecondAfterTheFirstFrame) {
    webHost.End();
    widget.LoadUrl(QStringLiteral("https://ours.test/"));
    time.Advance(1h);
    webHost.FirstFramePainted();
    time.Advance(999ms);
    EXPECT_EQ(web.MadeCount(), 0);
    time.Advance(1ms);
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 1);
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/"));
}

TEST_F(WebHostTest, EngineIsAllowedOnce) {
    QSignalSpy begun(&webHost, &CWebHost::Begun);
    webHost.FirstFramePainted();
    webHost.Begin();
    time.Advance(1h);
    EXPECT_EQ(begun.count(), 1);
    webHost.FirstFramePainted();
    time.Advance(1h);
    EXPECT_EQ(begun.count(), 2);
}

TEST_F(WebHostTest, EndWithinTheFirstSecondKeepsTheEngineAway) {
    QSignalSpy begun(&webHost, &CWebHost::Begun);
    webHost.FirstFramePainted();
    webHost.End();
    time.Advance(1h);
    EXPECT_EQ(begun.count(), 0);
    EXPECT_TRUE(webHost.HasEnded());
}

TEST_F(WebHostTest, PagesOpenAgainWhenTheEngineIsAllowedAfterTheEnd) {
    webHost.End();
    webHost.Begin();
    LoadWell();
    EXPECT_EQ(web.MadeCount(), 1);
}

TEST_F(WebHostTest, ProcessesOfPagesAreListedOnceEach) {
    ZRWebWidget others[3];
    const qint64 processes[] = {7, 1, 7};
    for (int i = 0; i < 3; ++i) {
        others[i].LoadUrl(QStringLiteral("https://ours.test/"));
        time.Settle();
        web.View().processId = processes[i];
    }
    LoadWell();
    EXPECT_EQ(webHost.PageProcesses(), QList<qint64>({7, 1}));
    web.Forget();
}

TEST_F(WebHostTest, PageOfADeletedWidgetIsCountedNoMore) {
    auto other = std::make_unique<ZRWebWidget>();
    other->LoadUrl(QStringLiteral("https://ours.test/"));
    time.Settle();
    EXPECT_EQ(webHost.ViewCount(), 1);
    other.reset();
    EXPECT_EQ(webHost.ViewCount(), 0);
    web.Forget();
}

TEST_F(WebHostTest, FirstPageWithoutAUserForgetsNothing) {
    account.Set(0);
    LoadWell();
    EXPECT_EQ(web.ForgetCount(), 0);
}

TEST_F(WebHostTest, PageThatTheNextUserAlreadyOpenedStays) {
    Show();
    account.Set(502);
    widget.LoadUrl(QStringLiteral("https://ours.test/"));
    EXPECT_EQ(web.MadeCount(), 1);
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 1);
    EXPECT_THAT(web.Loads(), SizeIs(1));
}

TEST_F(WebHostTest, HiddenPagesOfTheFormerUserAreNeitherFrozenNorWoken) {
    LoadWell();
    account.Set(502);
    webHost.CheckUser();
    time.Advance(1h);
    Show();
    LoadWell();
    widget.hide();
    time.Advance(1s);
    EXPECT_TRUE(web.View().IsFrozen());
    account.Set(503);
    webHost.CheckUser();
    time.Settle();
    Show();
    EXPECT_THAT(web.Views(), IsEmpty());
    web.Forget();
}

TEST_F(WebHostTest, MenuOfTheFormerUserIsClosed) {
    Show();
    LoadWell();
    widget.SetContextMenuFlags(core::webview::kMenuCopy);
    web.View().WantMenu(core::webview::kMenuCopy);
    account.Set(502);
    webHost.CheckUser();
    time.Settle();
    EXPECT_FALSE(widget.findChild<QMenu*>());
}

TEST_F(WebHostTest, NothingIsLoadedWhenNoPageIsWanted) {
    webHost.FirstFramePainted();
    time.Advance(1h);
    EXPECT_EQ(web.MadeCount(), 0);
}

TEST_F(WebHostTest, DataOfTheFormerUserIsForgottenBeforeTheNextLoad) {
    LoadWell("https://ours.test/1");
    const int forgotten = web.ForgetCount();
    account.Set(502);
    Load("https://ours.test/2");
    EXPECT_EQ(web.ForgetCount(), forgotten + 1);
    EXPECT_EQ(web.MadeCount(), 2);
    EXPECT_THAT(web.Views(), SizeIs(1));
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/1", "https://ours.test/2"));
    web.View().Succeed();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("good 200 https://ours.test/1", "good 200 https://ours.test/2"));
}

TEST_F(WebHostTest, SameUserKeepsData) {
    account.Set(501);
    LoadWell("https://ours.test/1");
    const int forgotten = web.ForgetCount();
    webHost.CheckUser();
    LoadWell("https://ours.test/2");
    EXPECT_EQ(web.ForgetCount(), forgotten);
    EXPECT_EQ(web.MadeCount(), 1);
}

TEST_F(WebHostTest, PagesOfTheFormerUserAreClosedLater) {
    LoadWell();
    account.Set(502);
    webHost.CheckUser();
    EXPECT_THAT(web.Views(), SizeIs(1));
    time.Settle();
    EXPECT_THAT(web.Views(), IsEmpty());
    EXPECT_FALSE(widget.IsLoading());
}

TEST_F(WebHostTest, WindowsOfTheFormerUserAreClosedAndThatOfTheNewOneStays) {
    const QPointer<ZRWebDialog> former = new ZRWebDialog({});
    former->Open();
    account.Set(502);
    const QPointer<ZRWebDialog> next = new ZRWebDialog({});
    next->Open();
    time.Settle();
    EXPECT_TRUE(former.isNull());
    ASSERT_FALSE(next.isNull());
    delete next;
}

TEST_F(WebHostTest, HandlerOfAPageMayLoadForAnotherUser) {
    widget.EnableJSBridge(true);
    widget.RegisterJSAPIV2(
        QStringLiteral("switch"),
        [this](const Json::Value&, int) {
            account.Set(502);
            widget.LoadUrl(QStringLiteral("https://ours.test/2"));
            return std::make_shared<Json::Value>(1);
        },
        nullptr);
    LoadWell();
    web.View().Call("switch");
    EXPECT_EQ(web.MadeCount(), 1);
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 2);
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/", "https://ours.test/2"));
}

TEST_F(WebHostTest, EndClosesAllPagesAndNoneOpensAfterwards) {
    ZRWebWidget other;
    LoadWell();
    other.LoadUrl(QStringLiteral("https://ours.test/2"));
    time.Settle();
    EXPECT_THAT(web.Views(), SizeIs(2));
    webHost.End();
    EXPECT_THAT(web.Views(), IsEmpty());
    other.show();
    other.LoadUrl(QStringLiteral("https://ours.test/3"));
    time.Settle();
    EXPECT_THAT(web.Views(), IsEmpty());
}

TEST_F(WebHostTest, RunningLoadEndsAsFailedWhenAllPagesAreClosed) {
    Load("https://ours.test/");
    webHost.End();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/"));
}

TEST_F(WebHostTest, LoadOfTheFormerUserBeginsAnewForTheNext) {
    Load("https://ours.test/");
    account.Set(502);
    webHost.CheckUser();
    time.Settle();
    EXPECT_EQ(web.MadeCount(), 2);
    EXPECT_THAT(web.Loads(), ElementsAre("https://ours.test/", "https://ours.test/"));
    EXPECT_THAT(ends, IsEmpty());
    web.View().Succeed();
    time.Settle();
    EXPECT_THAT(ends, ElementsAre("good 200 https://ours.test/"));
}

TEST_F(WebHostTest, MessageOfTheFormerUserDisappears) {
    widget.show();
    Load("https://ours.test/");
    web.View().Fail();
    time.Settle();
    ASSERT_NE(Cover(), "");
    account.Set(502);
    webHost.CheckUser();
    time.Settle();
    EXPECT_EQ(Cover(), "");
}

TEST_F(WebHostTest, ViewsAreCountedWhileTheyExist) {
    LoadWell();
    EXPECT_EQ(webHost.ViewCount(), 1);
    account.Set(502);
    webHost.CheckUser();
    time.Settle();
    EXPECT_EQ(webHost.ViewCount(), 0);
}

TEST_F(WebHostTest, StateOfAPageIsTraced) {
    std::vector<std::string> traced;
    QObject::connect(&webHost, &CWebHost::Traced, &widget, [&traced](const WebTrace& trace) {
        EXPECT_EQ(trace.kind, WebTrace::EnKind::Page);
        EXPECT_EQ(trace.call, 0);
        traced.push_back(trace.text + (trace.isBad ? " bad " : " ") + trace.name.toStdString());
    });
    LoadWell("https://ours.test/a");
    Load("https://ours.test/b");
    web.View().Fail();
    web.View().Kill();
    time.Settle();
    EXPECT_THAT(traced,
                ElementsAre("loads https://ours.test/a", "loaded https://ours.test/a", "loads https://ours.test/b",
                            "failed bad https://ours.test/a", "its process ended bad https://ours.test/b"));
    traced.clear();
    web.SetMissing(true);
    Load("https://ours.test/c");
    EXPECT_THAT(traced, ElementsAre("not displayed: there is no web engine bad https://ours.test/c"));
    log.Forget();
    web.Forget();
}

TEST_F(WebHostTest, WidgetWithoutServicesEndsItsLoadAsFailed) {
    widget.show();
    host::Uninstall();
    Load("https://ours.test/");
    EXPECT_THAT(ends, ElementsAre("failed 0 https://ours.test/"));
}

}  // namespace
