#include "WebView.h"

#include <QLayout>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include "EngineTest.h"

using namespace ::testing;

namespace {

class WebViewTest : public EngineTest {
protected:
    std::unique_ptr<CWebView> view = std::make_unique<CWebView>(owner, profile, nullptr);
    QWebEngineView* inner = view->findChild<QWebEngineView*>();
    QWebEnginePage* page = inner->page();
};

TEST_F(WebViewTest, PageMayDoNothingThatTheClientDoesNotNeed) {
    using S = QWebEngineSettings;
    for (const S::WebAttribute attribute :
         {S::ErrorPageEnabled, S::JavascriptCanOpenWindows, S::JavascriptCanAccessClipboard,
          S::LocalContentCanAccessFileUrls, S::LocalContentCanAccessRemoteUrls, S::HyperlinkAuditingEnabled,
          S::PluginsEnabled, S::ScreenCaptureEnabled, S::FullScreenSupportEnabled, S::DnsPrefetchEnabled,
          S::FocusOnNavigationEnabled}) {
        EXPECT_FALSE(page->settings()->testAttribute(attribute)) << attribute;
    }
    EXPECT_TRUE(page->settings()->testAttribute(S::WebRTCPublicInterfacesOnly));
    EXPECT_TRUE(page->settings()->testAttribute(S::JavascriptEnabled));
    EXPECT_TRUE(page->settings()->testAttribute(S::AutoLoadImages));
}

TEST_F(WebViewTest, PageFillsTheViewAndHasItsFocus) {
    view->resize(300, 200);
    view->layout()->activate();
    EXPECT_EQ(inner->geometry(), QRect(0, 0, 300, 200));
    EXPECT_EQ(view->focusProxy(), inner);
}

TEST_F(WebViewTest, MessagesPassThePortBothWays) {
    auto* port = view->findChild<CBridgePort*>();
    std::vector<QString> sent;
    QObject::connect(port, &CBridgePort::message, [&sent](const QString& text) { sent.push_back(text); });
    view->Send(QStringLiteral("to the page"));
    port->post(QStringLiteral("from the page"));
    EXPECT_THAT(sent, ElementsAre(QStringLiteral("to the page")));
    EXPECT_THAT(owner.messages, ElementsAre("from the page"));
}

TEST_F(WebViewTest, EndOfTheProcessIsReported) {
    Q_EMIT page->renderProcessTerminated(QWebEnginePage::CrashedTerminationStatus, 1);
    EXPECT_EQ(owner.goneCount, 1);
}

TEST_F(WebViewTest, LoadOfThePageItselfIsReportedFromStartToEnd) {
    Q_EMIT page->loadFinished(true);
    EXPECT_THAT(owner.loads, IsEmpty());
    Q_EMIT page->loadStarted();
    Q_EMIT page->loadFinished(true);
    Q_EMIT page->loadFinished(true);
    Q_EMIT page->loadStarted();
    Q_EMIT page->loadFinished(false);
    EXPECT_THAT(owner.loads, ElementsAre("started", "good 200", "started", "failed 0"));
}

TEST_F(WebViewTest, ReportsOfAnInterruptedLoadAreDropped) {
    owner.accepts = false;
    Q_EMIT page->loadStarted();
    owner.loads.clear();
    view->Load({QUrl(QStringLiteral("https://a.test/")), {}});
    Q_EMIT page->loadStarted();
    Q_EMIT page->loadFinished(false);
    EXPECT_THAT(owner.loads, IsEmpty());
    EXPECT_THAT(owner.navigations, IsEmpty());
}

TEST_F(WebViewTest, ReportsAfterTheEndOfTheViewReachNobody) {
    view.reset();
    EXPECT_THAT(owner.loads, IsEmpty());
    EXPECT_EQ(owner.goneCount, 0);
}

}  // namespace
