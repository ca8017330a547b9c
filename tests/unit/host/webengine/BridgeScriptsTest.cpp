#include "BridgeScripts.h"

#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include "EngineTest.h"

using namespace ::testing;

namespace {

class BridgeScriptsTest : public EngineTest {
protected:
    QWebEnginePage page{profile.get()};
};

TEST_F(BridgeScriptsTest, ScriptsRunInTheMainFrameBeforeThePagesOwn) {
    bridge_scripts::Install(page.scripts(), {QStringLiteral("https://a.test:443"), QStringLiteral("https://b.test:1")});
    const std::pair<const char*, unsigned int> rows[] = {{"transport", QWebEngineScript::ApplicationWorld},
                                                         {"page", QWebEngineScript::MainWorld}};
    EXPECT_EQ(page.scripts().count(), 2);
    for (const auto& [name, world] : rows) {
        const QWebEngineScript script = page.scripts().findScript(QString::fromLatin1(name));
        ASSERT_FALSE(script.isNull()) << name;
        EXPECT_EQ(script.worldId(), world) << name;
        EXPECT_EQ(script.injectionPoint(), QWebEngineScript::DocumentCreation) << name;
        EXPECT_FALSE(script.runsOnSubFrames()) << name;
        EXPECT_TRUE(script.sourceCode().contains(QStringLiteral(R"(["https://a.test:443","https://b.test:1"])")))
            << name;
        EXPECT_FALSE(script.sourceCode().contains(QStringLiteral("@origins@"))) << name;
    }
}

TEST_F(BridgeScriptsTest, LaterOriginsReplaceTheFormer) {
    bridge_scripts::Install(page.scripts(), {QStringLiteral("https://a.test:443")});
    bridge_scripts::Install(page.scripts(), {QStringLiteral("https://b.test:443")});
    EXPECT_EQ(page.scripts().count(), 2);
    EXPECT_FALSE(
        page.scripts().findScript(QStringLiteral("page")).sourceCode().contains(QStringLiteral("https://a.test")));
    bridge_scripts::Install(page.scripts(), {});
    EXPECT_EQ(page.scripts().count(), 0);
}

}  // namespace
