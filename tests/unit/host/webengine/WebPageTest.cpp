#include "WebPage.h"

#include "EngineTest.h"

using namespace ::testing;

namespace {

class CPage : public CWebPage {
public:
    using CWebPage::acceptNavigationRequest;
    using CWebPage::chooseFiles;
    using CWebPage::createWindow;
    using CWebPage::CWebPage;
    using CWebPage::javaScriptAlert;
    using CWebPage::javaScriptConfirm;
    using CWebPage::javaScriptConsoleMessage;
    using CWebPage::javaScriptPrompt;
};

class CStandIn : public CPopupStandIn {
public:
    using CPopupStandIn::acceptNavigationRequest;
    using CPopupStandIn::CPopupStandIn;
};

class WebPageTest : public EngineTest {
protected:
    static bool Ask(CStandIn& standIn, const char* url, bool mainFrame = true) {
        return standIn.acceptNavigationRequest(QUrl(QString::fromLatin1(url)), QWebEnginePage::NavigationTypeOther,
                                               mainFrame);
    }

    const QUrl url{QStringLiteral("https://a.test/")};
    const QUrl blank{QStringLiteral("about:blank")};
    CPage page{*profile, owner, nullptr};
};

TEST_F(WebPageTest, OwnerIsAskedForEachAddressByItsReason) {
    const std::pair<QWebEnginePage::NavigationType, EnWebNavigation> rows[] = {
        {QWebEnginePage::NavigationTypeTyped, EnWebNavigation::kLoad},
        {QWebEnginePage::NavigationTypeLinkClicked, EnWebNavigation::kLink},
        {QWebEnginePage::NavigationTypeRedirect, EnWebNavigation::kRedirect},
        {QWebEnginePage::NavigationTypeFormSubmitted, EnWebNavigation::kOther},
        {QWebEnginePage::NavigationTypeBackForward, EnWebNavigation::kOther},
        {QWebEnginePage::NavigationTypeReload, EnWebNavigation::kOther},
        {QWebEnginePage::NavigationTypeOther, EnWebNavigation::kOther}};
    for (const auto& [type, reason] : rows) {
        for (const bool yes : {true, false}) {
            owner.accepts = yes;
            EXPECT_EQ(page.acceptNavigationRequest(url, type, yes), yes) << type;
            ASSERT_FALSE(owner.navigations.empty());
            EXPECT_EQ(owner.navigations.back().url, url);
            EXPECT_EQ(owner.navigations.back().type, reason) << type;
            EXPECT_EQ(owner.navigations.back().mainFrame, yes);
        }
    }
}

TEST_F(WebPageTest, EmptyDocumentNeedsNoConsentWhileTheClientLeavesThePage) {
    owner.accepts = false;
    const auto accepts = [this](const QUrl& to, bool mainFrame) {
        return page.acceptNavigationRequest(to, QWebEnginePage::NavigationTypeTyped, mainFrame);
    };
    EXPECT_FALSE(accepts(blank, true));
    page.SetLeaving(true);
    EXPECT_TRUE(accepts(blank, true));
    EXPECT_FALSE(accepts(blank, false));
    EXPECT_FALSE(accepts(url, true));
    page.SetLeaving(false);
    EXPECT_FALSE(accepts(blank, true));
    EXPECT_THAT(owner.navigations, SizeIs(4));
}

TEST_F(WebPageTest, QuestionBeforeAPageIsLeftIsConfirmedOnlyWhileTheClientLeavesIt) {
    const QString leave =
        QStringLiteral("Are you sure you want to leave this page? Changes that you made may not be saved.");
    EXPECT_FALSE(page.javaScriptConfirm(url, leave));
    page.SetLeaving(true);
    EXPECT_TRUE(page.javaScriptConfirm(url, leave));
    EXPECT_FALSE(page.javaScriptConfirm(url, QStringLiteral("Sure?")));
}

TEST_F(WebPageTest, BoxesAndFilesAreRefused) {
    QString result = QStringLiteral("before");
    page.javaScriptAlert(url, QStringLiteral("text"));
    EXPECT_FALSE(page.javaScriptPrompt(url, QStringLiteral("text"), QStringLiteral("standard"), &result));
    EXPECT_EQ(result, QStringLiteral("before"));
    EXPECT_EQ(page.chooseFiles(QWebEnginePage::FileSelectOpen, {QStringLiteral("old")}, {}), QStringList());
}

TEST_F(WebPageTest, ErrorsOfScriptsAreLoggedUpTo200Characters) {
    for (const auto level : {QWebEnginePage::InfoMessageLevel, QWebEnginePage::WarningMessageLevel}) {
        page.javaScriptConsoleMessage(level, QStringLiteral("text"), 7, QString());
    }
    EXPECT_THAT(log.Lines(), IsEmpty());
    page.javaScriptConsoleMessage(QWebEnginePage::ErrorMessageLevel, QString(201, QLatin1Char('x')), 7, QString());
    EXPECT_THAT(log.Lines(), ElementsAre(Info("A script failed in line 7: " + std::string(200, 'x'))));
}

TEST_F(WebPageTest, PermissionIsDeniedWithALine) {
    Q_EMIT page.featurePermissionRequested(url, QWebEnginePage::Notifications);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("Denied a permission to a page: 0")));
}

TEST_F(WebPageTest, PopupHasAStandInIfTheOwnerAcceptsIt) {
    const std::unique_ptr<QWebEnginePage> standIn(page.createWindow(QWebEnginePage::WebDialog));
    EXPECT_TRUE(dynamic_cast<CPopupStandIn*>(standIn.get()));
    owner.accepts = false;
    EXPECT_FALSE(page.createWindow(QWebEnginePage::WebDialog));
}

TEST_F(WebPageTest, StandInPassesOnItsFirstAddressAndLoadsNothing) {
    const QPointer<CStandIn> standIn = new CStandIn(*profile, owner, &page);
    Q_EMIT standIn->geometryChangeRequested(QRect(5, 6, 350, 250));
    EXPECT_FALSE(Ask(*standIn, "https://frame.test/", false));
    EXPECT_FALSE(Ask(*standIn, "about:blank"));
    EXPECT_FALSE(Ask(*standIn, "https://a.test/"));
    EXPECT_FALSE(Ask(*standIn, "https://b.test/"));
    EXPECT_THAT(owner.popups, IsEmpty());
    ASSERT_TRUE(WaitInRealTime([&] { return !standIn; }, std::chrono::milliseconds(500)));
    ASSERT_THAT(owner.popups, SizeIs(1));
    EXPECT_EQ(owner.popups[0].url, url);
    EXPECT_EQ(owner.popups[0].size, QSize(350, 250));
}

TEST_F(WebPageTest, StandInWithoutAnAddressEndsAfterASecond) {
    const QPointer<CStandIn> standIn = new CStandIn(*profile, owner, &page);
    Ask(*standIn, "about:blank");
    EXPECT_TRUE(WaitInRealTime([&] { return !standIn; }, std::chrono::seconds(3)));
    EXPECT_THAT(owner.popups, IsEmpty());
}

}  // namespace
