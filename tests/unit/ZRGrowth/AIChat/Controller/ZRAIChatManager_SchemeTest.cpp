// URLs of the client's own scheme that open the chat.
#include "AIChatPageTest.h"
#include "core/scheme.h"
#include "core/urlhandler.h"

using namespace ::testing;

namespace {

class AIChatSchemeTest : public AIChatPageTest {
protected:
    void Dispatch(const char* url) {
        core::urlhandler::DispatchUrl(QString::fromUtf8(url), core::urlhandler::kBusinessDefault, nullptr, QVariant(),
                                      core::urlhandler::kFallbackWeb);
        time.Settle();
        urls.Forget();
    }

    std::string Line(const std::string& scheme, const std::string& page, const std::string& host) {
        return "[AIChat] Handle scheme, scheme = " + scheme + "; webPageUrl = " + page + ", host = " + host;
    }
};

TEST_F(AIChatSchemeTest, TargetIsOpenedInSceneOneWithAReportWhenTheSchemeMatches) {
    Open({4});
    PageLoads();
    Forget();

    Dispatch("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2Fsources%3Fa%3D%2525");

    EXPECT_THAT(
        Texts(),
        ElementsAre(Line("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2Fsources%3Fa%3D%2525", kPage,
                         "chat.zrgrowth.example"),
                    "[AIChat] Load AI chat page start, pageScene = 1, isPreload = false, hiddenButNotClosed = false, "
                    "url = https://chat.zrgrowth.example/sources?a=%25?needChangeSessionId=1&scene=1"));
    EXPECT_THAT(web.Loads(), SizeIs(1));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(20302, 4, 1)));
    ASSERT_THAT(reports.Events(), SizeIs(1));
    EXPECT_EQ(reports.Events()[0].params, R"({"entrance_source":"3"})");
}

TEST_F(AIChatSchemeTest, WindowIsShownWhenTheSchemeMatches) {
    Dispatch("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2F");

    ASSERT_TRUE(Dialog());
    EXPECT_FALSE(Dialog()->isHidden());
    EXPECT_EQ(Dialog()->exactWindowOpacity(), 1);
    Forget();
}

TEST_F(AIChatSchemeTest, SchemeIsStillServedWhenTheManagerHasEnded) {
    manager.UnInit();

    Dispatch("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2F");

    EXPECT_TRUE(Dialog());
    Forget();
}

TEST_F(AIChatSchemeTest, LaterHookIsAskedOnlyWhenTheSchemeIsDeclined) {
    std::vector<std::string> asked;
    core::scheme::RegisterPreCallback(
        QStringLiteral("url"),
        [&asked](QObject* /*from*/, const core::scheme::SchemeInfo& scheme, const QVariant& /*extra*/) {
            asked.push_back(scheme.text.toStdString());
            return true;
        },
        &asked, core::scheme::kFirstWordEquals);

    Dispatch("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2F");
    EXPECT_THAT(asked, IsEmpty());
    Dispatch("zrclient://url/https%3A%2F%2Fother.example%2F");

    EXPECT_THAT(asked, ElementsAre("zrclient://url/https%3A%2F%2Fother.example%2F"));
    Forget();
}

TEST_F(AIChatSchemeTest, OtherFirstWordIsDeclinedInSilence) {
    for (const char* url :
         {"zrclient://page/https%3A%2F%2Fchat.zrgrowth.example%2F", "zrclient://page/url/chat.zrgrowth.example"}) {
        Dispatch(url);
    }
    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_FALSE(Dialog());
}

class COpenManager : public CZRAIChatManager {
public:
    using CZRAIChatManager::OnHandleScheme;
};

struct Row {
    const char* name;
    QString text;
    QStringList words;
    QMap<QString, QString> keys;
    bool handled;
    bool logged;
};

class AIChatSchemeTableTest : public AIChatPageTest, public WithParamInterface<Row> {};

TEST_P(AIChatSchemeTableTest, SchemeIsHandledByTheTable) {
    const Row& row = GetParam();
    COpenManager other;
    other.Init();
    Forget();

    const bool handled = other.OnHandleScheme(nullptr, {row.text, row.words, row.keys}, QVariant());

    EXPECT_EQ(handled, row.handled);
    EXPECT_THAT(Texts(), row.logged ? ElementsAre("[AIChat] Handle scheme, scheme = " + row.text.toStdString() +
                                                  "; webPageUrl = https://chat.zrgrowth.example/, host = "
                                                  "chat.zrgrowth.example")
                                    : Matcher<std::vector<std::string>>(IsEmpty()));
    EXPECT_THAT(reports.Events(), SizeIs(row.handled ? 1 : 0));
}

const QString kUrl = QStringLiteral("url");
const QString kTarget = QStringLiteral("https%3A%2F%2Fchat.zrgrowth.example%2F");

INSTANTIATE_TEST_SUITE_P(
    Schemes, AIChatSchemeTableTest,
    Values(Row{"TwoWords", kTarget, {kUrl, kTarget}, {}, true, true},
           Row{"OtherKeys", kTarget, {kUrl, kTarget}, {{QStringLiteral("URL"), kTarget}}, true, true},
           // The host may be anywhere in the text.
           Row{"HostElsewhere", kTarget, {kUrl, QStringLiteral("x")}, {}, true, true},
           Row{"KeyUrl", kTarget, {kUrl, kTarget}, {{kUrl, kTarget}}, false, true},
           Row{"EmptyKeyUrl", kTarget, {kUrl, kTarget}, {{kUrl, QString()}}, false, true},
           Row{"OneWord", kTarget, {kUrl}, {}, false, true},
           Row{"ThreeWords", kTarget, {kUrl, kTarget, QStringLiteral("x")}, {}, false, true},
           Row{"EmptyTarget", kTarget, {kUrl, QString()}, {}, false, true},
           Row{"OtherHost", QStringLiteral("zrclient://url/x"), {kUrl, kTarget}, {}, false, true},
           Row{"OtherCase", kTarget.toUpper(), {kUrl, kTarget}, {}, false, true},
           Row{"OtherWord", kTarget, {QStringLiteral("Url"), kTarget}, {}, false, false},
           Row{"EmptyWord", kTarget, {QString(), kTarget}, {}, false, false},
           Row{"NoWord", kTarget, {}, {}, false, false}),
    [](const auto& row) { return row.param.name; });

TEST_F(AIChatSchemeTest, SchemeIsDeclinedWhenTheConfiguredAddressHasNoHost) {
    Json::Value value;
    value["url_string"] = "nonsense";
    config.Set("ai_chat", value);
    bus.HostSend(10250);
    Forget();

    Dispatch("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2F");

    EXPECT_THAT(Texts(), ElementsAre(Line("zrclient://url/https%3A%2F%2Fchat.zrgrowth.example%2F", "nonsense", "")));
    EXPECT_FALSE(Dialog());
}

}  // namespace
