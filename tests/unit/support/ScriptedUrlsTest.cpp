#include "support/ScriptedUrls.h"

#include "core/urlhandler.h"
#include "support/ScriptedHostTest.h"

using namespace core::urlhandler;
using ::testing::SizeIs;

namespace {

class ScriptedUrlsTest : public ScriptedHostTest {
protected:
    static bool Open(const char* url) {
        return DispatchUrl(QString::fromLatin1(url), kBusinessDefault, nullptr, QVariant(), kFallbackWeb);
    }
};

}  // namespace

TEST_F(ScriptedUrlsTest, KeepsAllThatWasSaid) {
    QObject context;

    EXPECT_TRUE(DispatchUrl(QStringLiteral("https://a.example/"), kBusinessAdClick, &context,
                            QVariant(QStringLiteral("more")), kFallbackMenu));

    ASSERT_THAT(urls.Opened(), SizeIs(1));
    const OpenedUrl& opened = urls.Opened().front();
    EXPECT_EQ(opened.url, "https://a.example/");
    EXPECT_EQ(opened.businessType, 8);
    EXPECT_EQ(opened.fallbackMode, 4);
    EXPECT_EQ(opened.context, &context);
    EXPECT_EQ(opened.extra, QVariant(QStringLiteral("more")));
}

TEST_F(ScriptedUrlsTest, TheNthOpenIsRefusedWithALineAndKept) {
    urls.RefuseOpens(Failing::Nth(2));

    EXPECT_TRUE(Open("https://a.example/1"));
    EXPECT_FALSE(Open("https://a.example/2"));
    EXPECT_TRUE(Open("https://a.example/3"));

    EXPECT_THAT(urls.Opened(), SizeIs(3));
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

TEST_F(ScriptedUrlsTest, SomethingMayHappenInsideEachOpen) {
    size_t seen = 0;
    urls.WhenOpening([&] { seen += urls.Opened().size(); });

    EXPECT_TRUE(Open("https://a.example/1"));
    EXPECT_TRUE(Open("https://a.example/2"));

    EXPECT_EQ(seen, 1u + 2u);
}

TEST_F(ScriptedUrlsTest, ForgettingLeavesAnEmptyRecord) {
    Open("https://a.example/");

    urls.Forget();

    EXPECT_THAT(urls.Opened(), SizeIs(0));
}
