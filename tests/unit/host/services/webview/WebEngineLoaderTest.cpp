#include "webview/WebEngineLoader.h"

#include <QTemporaryDir>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class WebEngineLoaderTest : public ScriptedHostTest {
protected:
    WebEngineLoaderTest() {
        for (const QString& path : {needs.library, needs.helper}) {
            QFile file(path);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
    }

    std::string Problem() const { return CWebEngineLoader::Problem(needs).toStdString(); }

    QTemporaryDir folder;
    WebEngineNeeds needs{folder.filePath(QStringLiteral("library.so")), folder.filePath(QStringLiteral("helper")),
                         QStringLiteral("xcb"), false, false};
};

TEST_F(WebEngineLoaderTest, EngineRunsWhenItHasAllThatItNeeds) {
    EXPECT_EQ(Problem(), "");
    needs.platform = QStringLiteral("wayland");
    EXPECT_EQ(Problem(), "");
}

TEST_F(WebEngineLoaderTest, EngineDoesNotRunWithoutLibraryOrHelper) {
    QFile(needs.helper).setPermissions(QFile::ReadOwner);
    EXPECT_THAT(Problem(), EndsWith("/helper is missing"));
    QFile::remove(needs.helper);
    EXPECT_THAT(Problem(), EndsWith("/helper is missing"));
    QFile::remove(needs.library);
    EXPECT_THAT(Problem(), EndsWith("/library.so is missing"));
}

TEST_F(WebEngineLoaderTest, EngineDoesNotRunOnAPlatformWithoutAScreen) {
    for (const char* platform : {"offscreen", "minimal"}) {
        needs.platform = QString::fromLatin1(platform);
        EXPECT_EQ(Problem(), std::string("the platform ") + platform + " does not display it");
    }
}

TEST_F(WebEngineLoaderTest, EngineRunsForRootOnlyWhenTheSandboxIsOff) {
    needs.isRoot = true;
    EXPECT_EQ(Problem(), "its sandbox does not run as root");
    needs.isSandboxOff = true;
    EXPECT_EQ(Problem(), "");
}

TEST_F(WebEngineLoaderTest, SandboxIsOffByEitherVariable) {
    struct Row {
        const char* disable;
        const char* flags;
        bool off;
    };
    for (const Row& row : {Row{"", "", false}, Row{"1", "", true}, Row{"0", "", false}, Row{"yes", "", false},
                           Row{"", "--no-sandbox", true}, Row{"", "--disable-gpu --no-sandbox --x", true},
                           Row{"", "--no-sandbox-and-elevated", false}, Row{"", "--disable-gpu", false}}) {
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", row.disable);
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS", row.flags);
        EXPECT_EQ(CWebEngineLoader::Needs().isSandboxOff, row.off) << row.disable << " and " << row.flags;
    }
}

TEST_F(WebEngineLoaderTest, ProblemIsLoggedOnceAndNoViewIsCreated) {
    CWebEngineLoader loader(true);
    class : public IWebViewOwner {
        bool AcceptNavigation(const QUrl&, EnWebNavigation, bool) override { return false; }
        void LoadStarted() override {}
        void LoadFinished(bool, int) override {}
        void MessageReceived(const QString&) override {}
        void RenderProcessGone() override {}
        bool AcceptPopup() override { return false; }
        void PopupAddressed(const QUrl&, const QSize&) override {}
        void ContextMenuWanted(const QPoint&, int, std::function<void(int)>) override {}
    } owner;
    EXPECT_FALSE(loader.IsAvailable());
    EXPECT_EQ(loader.NewView(owner, nullptr), nullptr);
    EXPECT_EQ(loader.NewView(owner, nullptr), nullptr);
    loader.ForgetData();
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("Web pages are not displayed, "))));
}

TEST_F(WebEngineLoaderTest, EngineThatIsSwitchedOffIsNotAvailableAndSaysNothing) {
    CWebEngineLoader loader(false);
    EXPECT_FALSE(loader.IsAvailable());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
