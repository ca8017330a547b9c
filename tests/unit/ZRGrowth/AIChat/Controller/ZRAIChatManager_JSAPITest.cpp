// Handlers of other modules, events and answers to the page.
#include "AIChatPageTest.h"
#include "framework/assertion.h"

using namespace ::testing;

namespace {

class AIChatJSAPITest : public AIChatPageTest {
protected:
    using Handler = CZRAIChatManager::JSAPIHandler;

    static Handler Answering(const char* text) {
        return [text](const Json::Value&, int) { return std::make_shared<Json::Value>(text); };
    }

    bool Register(const char* name, Handler handler) {
        return manager.RegisterNativeJSAPI(QString::fromUtf8(name), std::move(handler));
    }

    void OpenWell() {
        Open({});
        PageLoads();
        Forget();
    }

    /// Calls a handler as the page and returns what the page got.
    std::string Answer(const char* name) {
        const size_t before = web.View().Received().size();
        web.View().Call(name);
        const auto received = web.View().Received();
        log.Forget();
        return received.size() == before ? std::string() : received.back();
    }
};

TEST_F(AIChatJSAPITest, RegistrationIsRefusedWhenNameOrHandlerIsEmpty) {
    EXPECT_FALSE(Register("", Answering("x")));
    EXPECT_FALSE(Register("name", nullptr));
    EXPECT_FALSE(Register("closeWindow", nullptr));

    EXPECT_THAT(Texts(), ElementsAre("[AIChat] Register AI chat JSAPI failed, handlerName = ",
                                     "[AIChat] Register AI chat JSAPI failed, handlerName = name",
                                     "[AIChat] Register AI chat JSAPI failed, handlerName = closeWindow"));
}

TEST_F(AIChatJSAPITest, RegistrationIsRefusedWithAnAssertionWhenTheNameIsReserved) {
    for (const char* name : {"SetNewSessionEnable", "updateAIChatNetworkStatus", "closeWindow"}) {
        log.Forget();
        EXPECT_FALSE(Register(name, Answering("x")));
        EXPECT_THAT(Texts(),
                    ElementsAre(std::string("[AIChat] AI chat JSAPI name is reserved, handlerName = ") + name));
        EXPECT_THAT(log.Assertions(),
                    ElementsAre(FieldsAre(FrameWork::kAssetDefensive, "", "ZRGrowth", _, _, "false")));
    }
}

TEST_F(AIChatJSAPITest, SecondRegistrationIsRefusedWhenTheNameIsKnown) {
    EXPECT_TRUE(Register("name", Answering("first")));
    EXPECT_FALSE(Register("name", Answering("second")));

    EXPECT_THAT(Texts(), ElementsAre("[AIChat] Register AI chat extend JSAPI success, handlerName = name",
                                     "[AIChat] Register AI chat JSAPI duplicated, handlerName = name"));
    OpenWell();
    EXPECT_EQ(Answer("name"), R"({"answer":"first","call":1})");
}

TEST_F(AIChatJSAPITest, NameIsCaseSensitiveWhenItIsCompared) {
    EXPECT_TRUE(Register("name", Answering("x")));
    EXPECT_TRUE(Register("Name", Answering("x")));
    EXPECT_TRUE(Register("closewindow", Answering("x")));
}

TEST_F(AIChatJSAPITest, EveryHandlerReachesTheWindowWhenItIsCreated) {
    Register("one", Answering("1"));
    Register("two", Answering("2"));
    OpenWell();

    EXPECT_EQ(Answer("one"), R"({"answer":"1","call":1})");
    EXPECT_EQ(Answer("two"), R"({"answer":"2","call":2})");
}

TEST_F(AIChatJSAPITest, HandlerReachesOnlyTheNextWindowWhenOneIsOpen) {
    OpenWell();
    Register("late", Answering("x"));
    EXPECT_THAT(Answer("late"), HasSubstr("error"));
    Open({4});
    PageLoads();
    EXPECT_THAT(Answer("late"), HasSubstr("error"));

    ClosePage();
    OpenWell();
    EXPECT_EQ(Answer("late"), R"({"answer":"x","call":1})");
}

TEST_F(AIChatJSAPITest, HandlerStaysInTheWindowWhenItIsRemoved) {
    Register("name", Answering("x"));
    OpenWell();
    manager.UnregisterNativeJSAPI(QStringLiteral("name"));
    EXPECT_EQ(Answer("name"), R"({"answer":"x","call":1})");

    ClosePage();
    OpenWell();
    EXPECT_THAT(Answer("name"), HasSubstr("error"));
}

TEST_F(AIChatJSAPITest, NameCanBeRegisteredAgainWhenItWasRemoved) {
    Register("name", Answering("x"));
    manager.UnregisterNativeJSAPI(QStringLiteral("name"));
    EXPECT_TRUE(Register("name", Answering("x")));
}

TEST_F(AIChatJSAPITest, RemovalDoesNothingWhenTheNameIsEmptyOrUnknown) {
    Register("name", Answering("x"));
    Forget();

    manager.UnregisterNativeJSAPI(QString());
    manager.UnregisterNativeJSAPI(QStringLiteral("other"));

    EXPECT_THAT(Texts(), IsEmpty());
    EXPECT_FALSE(Register("name", Answering("x")));
}

TEST_F(AIChatJSAPITest, HandlerGetsParametersAndNumberWhenThePageCalls) {
    std::vector<std::string> calls;
    Register("name", [&calls](const Json::Value& params, int call) {
        calls.push_back(params["a"].asString() + ' ' + std::to_string(call));
        return std::shared_ptr<Json::Value>();
    });
    OpenWell();
    Json::Value params;
    params["a"] = "b";

    web.View().Call("name", params);
    web.View().Call("name", params);

    EXPECT_THAT(calls, ElementsAre("b 1", "b 2"));
}

TEST_F(AIChatJSAPITest, OpenCallIsAnsweredWhenTheModuleResponds) {
    Register("name", [](const Json::Value&, int) { return std::shared_ptr<Json::Value>(); });
    OpenWell();
    web.View().Call("name");

    manager.RespondToNativeJSAPI(QStringLiteral("name"), Json::Value(7));

    EXPECT_THAT(web.View().Received(), ElementsAre(R"({"answer":7,"call":1})"));
}

TEST_F(AIChatJSAPITest, ResponseDoesNothingWhenThereIsNoWindow) {
    manager.RespondToNativeJSAPI(QStringLiteral("name"), Json::Value(7));

    EXPECT_THAT(Texts(), IsEmpty());
}

TEST_F(AIChatJSAPITest, EventReachesThePageOnlyWhenItCanReceiveIt) {
    Json::Value params;
    params["a"] = 1;
    EXPECT_FALSE(manager.InvokeWebJSAPI(QStringLiteral("event"), params));
    Open({});
    EXPECT_FALSE(manager.InvokeWebJSAPI(QStringLiteral("event"), params));
    PageLoads();

    EXPECT_TRUE(manager.InvokeWebJSAPI(QStringLiteral("event"), params));

    EXPECT_THAT(web.View().Received(), ElementsAre(R"({"event":"event","params":{"a":1}})"));
    ClosePage();
    EXPECT_FALSE(manager.InvokeWebJSAPI(QStringLiteral("event"), params));
    Forget();
}

}  // namespace
