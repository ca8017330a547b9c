#include <QWebEngineProfile>
#include <QWebEngineView>

#include "EngineTest.h"

using namespace ::testing;

extern "C" IWebEngine* ZRCreateWebEngine();

namespace {

class WebEngineUnitTest : public EngineTest {
protected:
    std::unique_ptr<IWebView> NewView() { return std::unique_ptr<IWebView>(engine->NewView(owner, nullptr)); }

    static QWebEngineProfile* ProfileOf(const std::unique_ptr<IWebView>& view) {
        return view->findChild<QWebEngineView*>()->page()->profile();
    }

    const std::unique_ptr<IWebEngine> engine{ZRCreateWebEngine()};
};

TEST_F(WebEngineUnitTest, PagesKeepNothingOnTheDisk) {
    const auto view = NewView();
    EXPECT_TRUE(ProfileOf(view)->isOffTheRecord());
    EXPECT_EQ(ProfileOf(view)->httpCacheType(), QWebEngineProfile::MemoryHttpCache);
    EXPECT_EQ(ProfileOf(view)->persistentCookiesPolicy(), QWebEngineProfile::NoPersistentCookies);
}

TEST_F(WebEngineUnitTest, PagesShareAProfileUntilItsDataIsForgotten) {
    const auto first = NewView();
    const auto second = NewView();
    engine->ForgetData();
    const auto third = NewView();
    EXPECT_EQ(ProfileOf(first), ProfileOf(second));
    EXPECT_NE(ProfileOf(first), ProfileOf(third));
}

}  // namespace
