#include "core/UrlOpener.h"

#include "support/ScriptedHostTest.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;
using EnTarget = CUrlOpener::EnTarget;

namespace {

struct Row {
    const char* name;
    const char* url;
    EnTarget internal;
    EnTarget release;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.url;
}

std::string RowName(const TestParamInfo<Row>& row) {
    return row.param.name;
}

class UrlVerdictTest : public TestWithParam<Row> {};

class UrlOpenerTest : public ScriptedHostTest {
protected:
    bool Open(const char* url) {
        return opener.Open({QString::fromUtf8(url), core::urlhandler::kBusinessAdClick, nullptr, QVariant(),
                            core::urlhandler::kFallbackWeb});
    }

    CUrlOpener opener{environment};
};

TEST_P(UrlVerdictTest, IsJudgedByItsWholeText) {
    const QString url = QString::fromUtf8(GetParam().url);
    EXPECT_EQ(host::CheckUrl(url, true).target, GetParam().internal);
    EXPECT_EQ(host::CheckUrl(url, false).target, GetParam().release);
}

constexpr EnTarget kNo = EnTarget::kRefused;

INSTANTIATE_TEST_SUITE_P(
    Urls, UrlVerdictTest,
    Values(Row{"Https", "https://a.example/x?y=1#z", EnTarget::kWeb, EnTarget::kWeb},
           Row{"HttpsWithPort", "https://a.example:8443/", EnTarget::kWeb, EnTarget::kWeb},
           Row{"SchemeInCapitals", "HTTPS://a.example/", EnTarget::kWeb, EnTarget::kWeb},
           Row{"OwnPage", "zrclient://page/quotes", EnTarget::kPage, EnTarget::kPage},
           Row{"LoopbackNumber", "http://127.0.0.1:7000/x", EnTarget::kWeb, kNo},
           Row{"LoopbackName", "http://localhost/", EnTarget::kWeb, kNo},
           Row{"LoopbackSix", "http://[::1]:80/", EnTarget::kWeb, kNo}, Row{"PlainHttp", "http://a.example/", kNo, kNo},
           Row{"LoopbackLookalike", "http://127.0.0.1.a.example/", kNo, kNo},
           Row{"LocalhostLookalike", "http://localhost.a.example/", kNo, kNo}, Row{"Empty", "", kNo, kNo},
           Row{"Relative", "/page/quotes", kNo, kNo}, Row{"NoScheme", "//a.example/", kNo, kNo},
           Row{"File", "file:///etc/passwd", kNo, kNo}, Row{"Script", "javascript:alert(1)", kNo, kNo},
           Row{"Data", "data:text/html,x", kNo, kNo}, Row{"OtherScheme", "ftp://a.example/", kNo, kNo},
           Row{"NoHost", "https:///x", kNo, kNo}, Row{"NoAuthority", "https:a.example", kNo, kNo},
           Row{"UserInfo", "https://a.example@b.example/", kNo, kNo},
           Row{"EmptyUserInfo", "https://@b.example/", kNo, kNo},
           Row{"UserAndPassword", "http://u:p@127.0.0.1/", kNo, kNo}, Row{"Blank", "https://a.example/a b", kNo, kNo},
           Row{"LeadingBlank", " https://a.example/", kNo, kNo}, Row{"LineBreak", "https://a.example/\nx", kNo, kNo},
           Row{"Tab", "https://a\t.example/", kNo, kNo}, Row{"Backslash", "https://a.example\\b", kNo, kNo},
           Row{"PictureInAPath", "https://a.example/\xF0\x9F\x98\x80", EnTarget::kWeb, EnTarget::kWeb},
           Row{"JoinedPicturesInAQuery",
               "https://a.example/?q=\xF0\x9F\x91\xA8\xE2\x80\x8D\xF0\x9F\x91\xA9\xEF\xB8\x8F", EnTarget::kWeb,
               EnTarget::kWeb},
           Row{"LetterBeyondTheFirstPlane", "https://a.example/\xF0\xA0\x80\x8B#\xF0\xA0\x80\x8B", EnTarget::kWeb,
               EnTarget::kWeb},
           Row{"SharpSInAPath",
               "https://a.example/stra\xC3\x9F"
               "e",
               EnTarget::kWeb, EnTarget::kWeb},
           Row{"UmlautInAHost", "https://m\xC3\xBCller.example/", EnTarget::kWeb, EnTarget::kWeb},
           Row{"SharpSInAHost",
               "https://stra\xC3\x9F"
               "e.example/",
               kNo, kNo},
           Row{"CapitalSharpSInAHost",
               "https://STRA\xE1\xBA\x9E"
               "E.example/",
               kNo, kNo},
           Row{"FinalSigmaInAHost", "https://\xCF\x83\xCE\xBF\xCF\x82.example", kNo, kNo},
           Row{"JoinerInAHost", "https://a\xE2\x80\x8D.example?x", kNo, kNo},
           Row{"NonJoinerInAHost", "https://a\xE2\x80\x8C.example#x", kNo, kNo},
           Row{"EscapedSharpSInAHost", "https://stra%C3%9Fe.example/", kNo, kNo},
           Row{"FormatTagBeyondTheFirstPlane", "https://a.example/\xF3\xA0\x80\x81", kNo, kNo},
           Row{"TurnedWriting", "https://a.example/\xE2\x80\xAE", kNo, kNo},
           Row{"BadPercent", "https://a.example/%zz", kNo, kNo}, Row{"BadPort", "https://a.example:99999/", kNo, kNo}),
    RowName);

QString LongUrl(int length) {
    return QStringLiteral("https://a.example/").leftJustified(length, QLatin1Char('x'));
}

TEST(UrlLengthTest, IsAtMostEightKibibytes) {
    EXPECT_EQ(host::CheckUrl(LongUrl(8192), false).target, EnTarget::kWeb);
    EXPECT_EQ(host::CheckUrl(LongUrl(8193), false).target, kNo);
    EXPECT_EQ(host::CheckUrl(LongUrl(8193), false).reason, QStringLiteral("it is too long"));
}

TEST(UrlSurrogateTest, LoneSurrogateIsRefused) {
    for (const ushort half : {0xD83D, 0xDE00}) {
        EXPECT_EQ(host::CheckUrl(QStringLiteral("https://a.example/") + QChar(half), false).target, kNo);
    }
}

TEST_F(UrlOpenerTest, HandsEachKindToItsHandler) {
    std::vector<std::string> pages;
    std::vector<std::string> webPages;
    opener.SetPageHandler([&](const QUrl& url) {
        pages.push_back(url.toString().toStdString());
        return true;
    });
    opener.SetWebHandler([&](const QUrl& url, const QVariant&) {
        webPages.push_back(url.toString().toStdString());
        return true;
    });

    EXPECT_TRUE(Open("zrclient://page/news"));
    EXPECT_TRUE(Open("https://a.example/"));

    EXPECT_THAT(pages, ElementsAre("zrclient://page/news"));
    EXPECT_THAT(webPages, ElementsAre("https://a.example/"));
}

TEST_F(UrlOpenerTest, WebHandlerGetsTheWishedWindow) {
    std::vector<QVariant> extras;
    opener.SetWebHandler([&](const QUrl&, const QVariant& extra) {
        extras.push_back(extra);
        return true;
    });
    core::webview::ZRWebWindowInfo window;
    window.size = QSize(390, 848);
    window.minimumSize = QSize(300, 400);
    UrlRequest request;
    request.url = QStringLiteral("https://a.example/");
    request.extra = QVariant::fromValue(window);

    EXPECT_TRUE(opener.Open(request));
    EXPECT_TRUE(Open("https://a.example/"));

    ASSERT_THAT(extras, SizeIs(2));
    EXPECT_EQ(extras[0].value<core::webview::ZRWebWindowInfo>().size, QSize(390, 848));
    EXPECT_EQ(extras[0].value<core::webview::ZRWebWindowInfo>().minimumSize, QSize(300, 400));
    EXPECT_FALSE(extras[1].isValid());
}

TEST_F(UrlOpenerTest, ARefusalIsLoggedOnceAndTold) {
    std::vector<std::string> told;
    QObject::connect(&opener, &CUrlOpener::Dispatched, &opener, [&](const UrlRequest& request, const QString& reason) {
        told.push_back(request.url.toStdString() + ": " + reason.toStdString());
    });

    EXPECT_FALSE(Open("ftp://a.example/\n"));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("Refused to open a URL, it holds a blank, a backslash or a control "
                                               "character: ftp://a.example/\\x0a")));
    EXPECT_THAT(told, ElementsAre("ftp://a.example/\n: it holds a blank, a backslash or a control character"));
}

TEST_F(UrlOpenerTest, ARefusalLogsTheFirstTwoHundredCharacters) {
    const std::string start = LongUrl(200).toStdString();

    EXPECT_FALSE(Open(LongUrl(200).toUtf8().constData()));
    EXPECT_FALSE(Open((LongUrl(200) + QStringLiteral("yz")).toUtf8().constData()));

    EXPECT_THAT(log.Lines(), Each(Error("Refused to open a URL, nothing in the client opens it: " + start)));
    EXPECT_THAT(log.Lines(), SizeIs(2));
}

TEST_F(UrlOpenerTest, UrlThatNoHandlerOpensIsRefused) {
    EXPECT_FALSE(Open("https://a.example/"));
    opener.SetPageHandler([](const QUrl&) { return false; });
    EXPECT_FALSE(Open("zrclient://page/nowhere"));
    opener.SetPageHandler([](const QUrl&) -> bool { throw std::runtime_error("broken"); });
    EXPECT_FALSE(Open("zrclient://page/news"));

    EXPECT_THAT(log.Lines(),
                ElementsAre(Error(HasSubstr("nothing in the client opens it")),
                            Error(HasSubstr("nothing in the client opens it")), Error("Opening a URL threw: broken"),
                            Error(HasSubstr("nothing in the client opens it"))));
}

}  // namespace
