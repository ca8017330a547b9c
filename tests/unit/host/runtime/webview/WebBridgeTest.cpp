#include "webview/WebBridge.h"

#include "WebTest.h"
#include "webview/WebHost.h"
#include "webview/ZRWebDialog.h"

using namespace ::testing;

namespace {

Json::Value Object(const char* key, const Json::Value& value) {
    Json::Value object;
    object[key] = value;
    return object;
}

class WebBridgeTest : public WebTest {
protected:
    WebBridgeTest() {
        widget.EnableJSBridge(true);
        widget.RegisterJSAPIV2(
            QStringLiteral("later"),
            [this](const Json::Value&, int call) {
                calls.push_back(call);
                return nullptr;
            },
            nullptr);
        widget.RegisterJSAPIV2(
            QStringLiteral("echo"),
            [](const Json::Value& params, int) { return std::make_shared<Json::Value>(params); }, nullptr);
    }

    CScriptedWebView& Page() { return web.View(); }

    std::vector<int> calls;
};

TEST_F(WebBridgeTest, AnswerOfAHandlerReachesTheCall) {
    LoadWell();
    Page().Call("echo", Object("a", 1));
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":{"a":1},"call":1})"));
}

TEST_F(WebBridgeTest, AnswerOfATextHandlerIsAText) {
    widget.RegisterJSAPI(
        QStringLiteral("text"), [](const Json::Value&, int) { return std::make_shared<std::string>(R"({"a":1})"); },
        nullptr);
    LoadWell();
    Page().Call("text");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":"{\"a\":1}","call":1})"));
}

TEST_F(WebBridgeTest, CallStaysOpenWhenTheHandlerReturnsNullAndTheOldestIsAnsweredFirst) {
    LoadWell();
    Page().Call("later");
    Page().Call("later");
    EXPECT_THAT(Page().Received(), IsEmpty());

    widget.OnResponseToJS(QStringLiteral("later"), "first");
    widget.OnResponseToJS(QStringLiteral("later"), "second");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":"first","call":1})", R"({"answer":"second","call":2})"));

    widget.OnResponseToJS(QStringLiteral("later"), "third");
    EXPECT_THAT(Page().Received(), SizeIs(2));
    EXPECT_THAT(log.Lines(), Contains(Error("Dropped an answer without an open call: later")));
}

TEST_F(WebBridgeTest, HandlerAnswersItsOwnCallByOnResponseToJS) {
    widget.RegisterJSAPIV2(
        QStringLiteral("now"),
        [this](const Json::Value&, int) {
            widget.OnResponseToJS(QStringLiteral("now"), 5);
            return nullptr;
        },
        nullptr);
    LoadWell();
    Page().Call("now");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":5,"call":1})"));
}

TEST_F(WebBridgeTest, CallsAreNumberedFromOneWithinALoad) {
    LoadWell();
    Page().Call("later");
    Page().Notify("later");
    Page().Call("echo");
    Page().Call("later");
    LoadWell("https://ours.test/2");
    Page().Call("later");
    EXPECT_THAT(calls, ElementsAre(1, 2, 4, 1));
}

TEST_F(WebBridgeTest, NoticeIsNeverAnswered) {
    LoadWell();
    Page().Notify("echo");
    Page().Notify("later");
    Page().Notify("unknown");
    widget.OnResponseToJS(QStringLiteral("later"), 1);
    EXPECT_THAT(Page().Received(), IsEmpty());
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a call of an unknown name: unknown")));
}

TEST_F(WebBridgeTest, UnknownNameEndsInAnError) {
    LoadWell();
    Page().Call("nothing");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"call":1,"error":{"code":"unknown-name","name":"nothing"}})"));
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a call of an unknown name: nothing")));
}

TEST_F(WebBridgeTest, HandlerIsUnknownAfterTheEndOfItsContext) {
    auto context = std::make_unique<QObject>();
    widget.RegisterJSAPIV2(
        QStringLiteral("guarded"), [](const Json::Value&, int) { return std::make_shared<Json::Value>(1); },
        context.get());
    LoadWell();
    Page().Call("guarded");
    context.reset();
    Page().Call("guarded");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":1,"call":1})",
                                               R"({"call":2,"error":{"code":"unknown-name","name":"guarded"}})"));
    log.Forget();
}

TEST_F(WebBridgeTest, SecondRegistrationReplacesTheFirst) {
    LoadWell();
    widget.RegisterJSAPIV2(
        QStringLiteral("echo"), [](const Json::Value&, int) { return std::make_shared<Json::Value>("new"); }, nullptr);
    Page().Call("echo");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":"new","call":1})"));
}

TEST_F(WebBridgeTest, ExceptionOfAHandlerEndsInAnError) {
    widget.RegisterJSAPIV2(
        QStringLiteral("throws"),
        [](const Json::Value&, int) -> std::shared_ptr<Json::Value> { throw std::runtime_error("no"); }, nullptr);
    LoadWell();
    Page().Call("throws");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"call":1,"error":{"code":"failed","name":"throws"}})"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("A handler of the bridge "))));
}

TEST_F(WebBridgeTest, NameWithoutAHandlerIsUnknown) {
    widget.RegisterJSAPIV2(QStringLiteral("empty"), nullptr, nullptr);
    LoadWell();
    Page().Call("empty");
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"call":1,"error":{"code":"unknown-name","name":"empty"}})"));
    log.Forget();
}

TEST_F(WebBridgeTest, LongNamesAreCutInLinesAndErrors) {
    LoadWell();
    Page().Call(std::string(201, 'n').c_str());
    const std::string cut(200, 'n');
    EXPECT_THAT(Page().Received(),
                ElementsAre(R"({"call":1,"error":{"code":"unknown-name","name":")" + cut + R"("}})"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Refused a call of an unknown name: " + cut)));
}

TEST_F(WebBridgeTest, DocumentMayNameItselfByUpTo64Bytes) {
    LoadWell();
    Page().Post(
        QString::fromStdString(R"({"page":")" + std::string(64, 'x') + R"(","call":1,"name":"later","params":{}})"));
    EXPECT_THAT(calls, ElementsAre(1));
}

TEST_F(WebBridgeTest, CallIsAnsweredOnceWhenItsHandlerAnswersTwice) {
    widget.RegisterJSAPIV2(
        QStringLiteral("twice"),
        [this](const Json::Value&, int) {
            widget.OnResponseToJS(QStringLiteral("twice"), 1);
            return std::make_shared<Json::Value>(2);
        },
        nullptr);
    LoadWell();
    Page().Call("twice");
    Page().Call("echo");
    widget.OnResponseToJS(QStringLiteral("echo"), 3);
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"answer":1,"call":1})", R"({"answer":{},"call":2})"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Dropped an answer without an open call: echo")));
}

TEST_F(WebBridgeTest, AnswerDoesNotReachTheSameCallOfADocumentThatCameMeanwhile) {
    widget.RegisterJSAPIV2(
        QStringLiteral("slow"),
        [this](const Json::Value&, int) {
            Page().Commit(QStringLiteral("https://ours.test/2"));
            Page().Greet();
            Page().Call("later");
            return std::make_shared<Json::Value>(1);
        },
        nullptr);
    LoadWell();
    Page().Call("slow");
    EXPECT_THAT(calls, ElementsAre(1));
    EXPECT_THAT(Page().Received(), IsEmpty());
}

TEST_F(WebBridgeTest, CallOfTheWrongShapeEndsInAnErrorIfItHasANumber) {
    LoadWell();
    const std::string page = R"({"page":")" + Page().Page() + '"';
    for (const char* rest :
         {R"(,"call":1,"name":7,"params":{}})", R"(,"call":1,"name":"later","params":[]})",
          R"(,"call":1,"name":"later","params":"x"})", R"(,"call":1,"name":"later"})", R"(,"call":1,"params":{}})"}) {
        Page().Post(QString::fromStdString(page + rest));
    }
    EXPECT_THAT(Page().Received(), AllOf(SizeIs(5), Each(R"({"call":1,"error":{"code":"wrong-shape","name":""}})")));
    EXPECT_THAT(calls, IsEmpty());
    log.Forget();
}

TEST_F(WebBridgeTest, MessageThatIsNoneIsDroppedWithALine) {
    LoadWell();
    const std::string page = R"({"page":")" + Page().Page() + '"';
    for (const std::string& text :
         {std::string(), std::string("later"), std::string("[]"), std::string("7"), std::string("{}"),
          std::string(R"({"page":7,"call":1,"name":"later","params":{}})"),
          std::string(R"({"page":"","call":1,"name":"later","params":{}})"),
          R"({"page":")" + std::string(65, 'x') + R"(","call":1,"name":"later","params":{}})",
          page + R"(,"call":"1","name":"later","params":{}})", page + R"(,"call":0,"name":"later","params":{}})",
          page + R"(,"call":-1,"name":"later","params":{}})", page + R"(,"call":1.5,"name":"later","params":{}})",
          page + R"(,"call":4294967296,"name":"later","params":{}})", page + R"(,"call":1,"name":"later","params":{})",
          page + R"(,"call":1,"name":"later","params":)" + std::string(70, '[') + std::string(70, ']') + '}'}) {
        log.Forget();
        Page().Post(QString::fromStdString(text));
        EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("Refused a ")))) << text;
    }
    EXPECT_THAT(Page().Received(), IsEmpty());
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(WebBridgeTest, MessageOfMoreThanOneMebibyteIsRefused) {
    LoadWell();
    const std::string head = R"({"page":")" + Page().Page() + R"(","call":1,"name":"later","params":{"a":")";
    const auto text = [&head](size_t bytes) {
        return QString::fromStdString(head + std::string(bytes - head.size() - 3, 'x') + "\"}}");
    };
    Page().Post(text(1024 * 1024 + 1));
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a message of 1048577 bytes")));

    Page().Post(text(1024 * 1024));
    EXPECT_THAT(calls, ElementsAre(1));
}

TEST_F(WebBridgeTest, AnswerOfMoreThanOneMebibyteEndsInAnErrorAndSuchAnEventIsDropped) {
    const std::string large(1024 * 1024, 'x');
    widget.RegisterJSAPIV2(
        QStringLiteral("large"), [&](const Json::Value&, int) { return std::make_shared<Json::Value>(large); },
        nullptr);
    LoadWell();
    Page().Call("large");
    Page().Call("later");
    widget.OnResponseToJS(QStringLiteral("later"), large);
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("event"), large));
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"call":1,"error":{"code":"too-large","name":"large"}})",
                                               R"({"call":2,"error":{"code":"too-large","name":"later"}})"));
    EXPECT_THAT(log.Lines(),
                AllOf(SizeIs(3), Each(Error(MatchesRegex("Dropped a message of 10486.. bytes to a page")))));
}

TEST_F(WebBridgeTest, EventOfOneMebibyteIsDelivered) {
    LoadWell();
    const size_t rest = std::string(R"({"event":"e","page":"","params":""})").size() + Page().Page().size();
    const size_t largest = 1024 * 1024 - rest;
    EXPECT_TRUE(widget.BroadcastEvent(QStringLiteral("e"), std::string(largest, 'x')));
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("e"), std::string(largest + 1, 'x')));
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Dropped a message of 1048577 bytes to a page")));
}

TEST_F(WebBridgeTest, OldestOfMoreThan64OpenCallsOfANameEndsInAnError) {
    LoadWell();
    Page().Call("echo");
    for (int i = 0; i < 64; ++i) {
        Page().Call("later");
    }
    EXPECT_THAT(Page().Received(), SizeIs(1));
    Page().Call("later");
    EXPECT_THAT(Page().Received(), ElementsAre(_, R"({"call":2,"error":{"code":"too-many-calls","name":"later"}})"));

    widget.OnResponseToJS(QStringLiteral("later"), 0);
    EXPECT_EQ(Page().Received().back(), R"({"answer":0,"call":3})");
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Ended the oldest of too many open calls: later")));
}

TEST_F(WebBridgeTest, EventReachesThePageThatHasTheBridge) {
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
    LoadWell();
    EXPECT_TRUE(widget.BroadcastEvent(QStringLiteral("theme"), Object("dark", true)));
    EXPECT_THAT(Page().Received(), ElementsAre(R"({"event":"theme","params":{"dark":true}})"));
}

TEST_F(WebBridgeTest, MessagesAreTracedInBothDirections) {
    using Kind = WebTrace::EnKind;
    LoadWell();
    std::vector<std::tuple<Kind, std::string, std::string, int, bool>> traced;
    QObject::connect(&host::web::CWebHost::Instance(), &host::web::CWebHost::Traced, &widget,
                     [&traced](const WebTrace& trace) {
                         traced.emplace_back(trace.kind, trace.name.toStdString(), trace.text, trace.call, trace.isBad);
                     });

    Page().Call("echo", Object("a", "\u00e9"));
    Page().Call("later");
    widget.OnResponseToJS(QStringLiteral("later"), 5);
    widget.BroadcastEvent(QStringLiteral("theme"), Object("dark", true));
    Page().Call("other");
    Page().Post(QStringLiteral("{}"));
    Page().Post(QStringLiteral("["));
    Page().Post(QString(1024 * 1024 + 1, QLatin1Char(' ')));
    Page().Commit(QStringLiteral("https://other.test/"));
    Page().Post(QStringLiteral("{}"));

    EXPECT_THAT(traced, ElementsAre(FieldsAre(Kind::Call, "echo", "{\"a\":\"\u00e9\"}", 1, false),
                                    FieldsAre(Kind::Answer, "echo", "{\"a\":\"\u00e9\"}", 1, false),
                                    FieldsAre(Kind::Call, "later", "{}", 2, false),
                                    FieldsAre(Kind::Answer, "later", "5", 2, false),
                                    FieldsAre(Kind::Event, "theme", "{\"dark\":true}", 0, false),
                                    FieldsAre(Kind::Refused, "other", "unknown-name", 3, true),
                                    FieldsAre(Kind::Refused, "", "it names no document", 0, true),
                                    FieldsAre(Kind::Refused, "", StartsWith("no JSON: * "), 0, true),
                                    FieldsAre(Kind::Refused, "", "too-large", 0, true),
                                    FieldsAre(Kind::Refused, "", "the page has no bridge", 0, true)));
    log.Forget();
}

TEST_F(WebBridgeTest, TraceKeepsTheFirstBytesOfALongMessage) {
    LoadWell();
    std::vector<size_t> sizes;
    QObject::connect(&host::web::CWebHost::Instance(), &host::web::CWebHost::Traced, &widget,
                     [&sizes](const WebTrace& trace) { sizes.push_back(trace.text.size()); });
    Page().Notify("later", Object("a", std::string(HttpTrace::kBodyKept, 'x')));
    EXPECT_THAT(sizes, ElementsAre(HttpTrace::kBodyKept));
}

TEST_F(WebBridgeTest, EventDoesNotReachADocumentThatHasNotNamedItself) {
    LoadWell();
    Load("https://ours.test/2");
    Page().Commit(QStringLiteral("https://ours.test/2"));
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
    LoadWell("https://other.test/");
    Load("https://ours.test/");
    Page().Commit(QStringLiteral("https://ours.test/"));
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
    Page().Greet();
    EXPECT_TRUE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
}

TEST_F(WebBridgeTest, AnswerDoesNotReachALaterLoad) {
    LoadWell();
    Page().Call("later");
    LoadWell("https://ours.test/2");
    widget.OnResponseToJS(QStringLiteral("later"), 1);
    EXPECT_THAT(Page().Received(), IsEmpty());
    log.Forget();
}

TEST_F(WebBridgeTest, AnswerDoesNotReachALaterDocumentThatThePageLoadedItself) {
    LoadWell();
    Page().Call("later");
    Page().StartOfPage();
    Page().Commit(QStringLiteral("https://ours.test/2"));
    Page().Greet();
    widget.OnResponseToJS(QStringLiteral("later"), 1);
    Page().Call("later");
    EXPECT_THAT(Page().Received(), IsEmpty());
    EXPECT_THAT(calls, ElementsAre(1, 1));
    log.Forget();
}

TEST_F(WebBridgeTest, AnswerOfAHandlerThatLoadsAnotherPageIsDropped) {
    widget.RegisterJSAPIV2(
        QStringLiteral("leave"),
        [this](const Json::Value&, int) {
            widget.LoadUrl(QStringLiteral("https://ours.test/2"));
            return std::make_shared<Json::Value>(1);
        },
        nullptr);
    LoadWell();
    Page().Call("leave");
    EXPECT_THAT(Page().Received(), IsEmpty());
}

TEST_F(WebBridgeTest, WidgetMayEndInsideAHandler) {
    auto other = std::make_unique<core::webview::ZRWebWidget>();
    other->EnableJSBridge(true);
    other->RegisterJSAPIV2(
        QStringLiteral("end"),
        [&other](const Json::Value&, int) {
            other->deleteLater();
            other.release();
            return std::make_shared<Json::Value>(1);
        },
        nullptr);
    other->LoadUrl(QStringLiteral("https://ours.test/"));
    time.Settle();
    Page().Succeed();
    Page().Call("end");
    time.Settle();
    EXPECT_THAT(web.Views(), IsEmpty());
}

TEST_F(WebBridgeTest, PageOfTheFormerUserIsRefusedWhileTheNextLoadWaits) {
    LoadWell();
    account.Set(502);
    widget.LoadUrl(QStringLiteral("https://ours.test/2"));
    ASSERT_THAT(web.Views(), SizeIs(1));
    Page().Call("later");
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a message of a page without the bridge: https://ours.test/")));
    time.Settle();
}

TEST_F(WebBridgeTest, BridgeIsClosedUnlessItIsOpened) {
    widget.EnableJSBridge(false);
    LoadWell();
    EXPECT_EQ(Page().BridgeOrigins(), QStringList());
    Page().Greet();
    Page().Call("later");
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
    EXPECT_THAT(Page().Received(), IsEmpty());
    EXPECT_THAT(log.Lines(), Contains(Error("Refused a message of a page without the bridge: https://ours.test/")));
}

TEST_F(WebBridgeTest, BridgeOpensAndClosesWithTheNextLoad) {
    widget.EnableJSBridge(false);
    LoadWell();
    widget.EnableJSBridge(true);
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
    LoadWell("https://ours.test/2");
    widget.EnableJSBridge(false);
    EXPECT_TRUE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
    LoadWell("https://ours.test/3");
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), Json::Value()));
}

TEST_F(WebBridgeTest, OriginsOfTheLoadAreTheAllowList) {
    LoadWell();
    EXPECT_EQ(Page().BridgeOrigins(), QStringList({QStringLiteral("https://ours.test:443")}));
}

// The committed address decides at each call, answer and event; what else is loading or was loaded does not.
TEST_F(WebBridgeTest, NothingIsDeliveredEitherWayWhenTheDocumentIsElsewhere) {
    for (const char* elsewhere :
         {"https://evil.test/", "https://ours.test.evil.test/", "https://ours.test:444/", "http://ours.test/",
          "https://user@ours.test/", "about:blank", "data:text/html,x", "blob:https://ours.test/1", ""}) {
        LoadWell();
        Page().Call("later");
        calls.clear();
        const size_t received = Page().Received().size();
        Page().Commit(QString::fromUtf8(elsewhere));
        Page().Greet();
        Page().Call("later");
        Page().Call("echo");
        widget.OnResponseToJS(QStringLiteral("later"), 1);
        EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), 1)) << elsewhere;
        EXPECT_THAT(calls, IsEmpty()) << elsewhere;
        EXPECT_THAT(Page().Received(), SizeIs(received)) << elsewhere;
    }
    log.Forget();
}

TEST_F(WebBridgeTest, ForeignPageGetsNothingWhileOursIsLoading) {
    LoadWell("https://evil.test/");
    Load("https://ours.test/");
    Page().Greet();
    Page().Call("echo");
    EXPECT_THAT(Page().Received(), IsEmpty());
    log.Forget();
}

TEST_F(WebBridgeTest, PageLosesTheBridgeWhenItsOriginLeavesTheAllowList) {
    LoadWell();
    Page().Call("later");
    config.Set("web_bridge", Json::Value());
    Page().Call("echo");
    widget.OnResponseToJS(QStringLiteral("later"), 1);
    EXPECT_FALSE(widget.BroadcastEvent(QStringLiteral("theme"), 1));
    EXPECT_THAT(Page().Received(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Refused a message of a page without the bridge: https://ours.test/"),
                                         Error("Dropped an answer without an open call: later")));
}

TEST_F(WebBridgeTest, HandlerThatTakesTheOriginFromTheListIsNotAnswered) {
    widget.RegisterJSAPIV2(
        QStringLiteral("revoke"),
        [this](const Json::Value&, int) {
            config.Set("web_bridge", Json::Value());
            return std::make_shared<Json::Value>(1);
        },
        nullptr);
    LoadWell();
    Page().Call("revoke");
    EXPECT_THAT(Page().Received(), IsEmpty());
    // The answer, and the error in its place.
    EXPECT_THAT(log.Lines(), AllOf(SizeIs(2), Each(Error("Dropped a message to a page without the bridge"))));
}

TEST_F(WebBridgeTest, DialogHasNoBridge) {
    auto* dialog = new core::webview::ZRWebDialog({});
    dialog->LoadUrl(QStringLiteral("https://ours.test/"));
    time.Settle();
    EXPECT_EQ(Page().BridgeOrigins(), QStringList());
    delete dialog;
}

}  // namespace
