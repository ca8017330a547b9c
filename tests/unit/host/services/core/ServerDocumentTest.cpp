#include "core/ServerDocument.h"

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr const char* kKept = "Host_CommonConfig";

class ServerDocumentTest : public ScriptedHostTest {
protected:
    ServerDocumentTest() {
        QObject::connect(&common, &CCommonConfig::Changed, [this] {
            ++changes;
            valueWhenTold = common.Member("a");
        });
    }

    CCommonConfig common{store};
    int changes = 0;
    Json::Value valueWhenTold;
};

TEST_F(ServerDocumentTest, ValuesAreKeptByNameAndOfAnyType) {
    common.Receive(R"({"a":{"x":1},"b":"text","c":null})");

    EXPECT_EQ(common.Member("a")["x"].asInt(), 1);
    EXPECT_EQ(common.Member("b"), Json::Value("text"));
    EXPECT_TRUE(common.Member("c").isNull());
    EXPECT_TRUE(common.Member("unknown").isNull());
    store.Forget();
}

TEST_F(ServerDocumentTest, AChangeIsToldAfterItHappenedAndTheSameAgainIsNone) {
    common.Receive(R"({"a":1})");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(valueWhenTold, Json::Value(1));

    common.Receive(R"({ "a" : 1 })");
    EXPECT_EQ(changes, 1);

    common.Receive("{}");
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(common.Member("a").isNull());
    store.Forget();
}

TEST_F(ServerDocumentTest, WhatTheServerToldLastIsThereAtTheNextStart) {
    common.Receive(R"({"a":5})");
    EXPECT_EQ(store.AppString(kKept), R"({"a":5})");

    const CCommonConfig next(store);
    EXPECT_EQ(next.Member("a"), Json::Value(5));
}

TEST_F(ServerDocumentTest, WhatIsNoObjectIsRefusedInWordsAndChangesNothing) {
    common.Receive(R"({"a":5})");
    store.Forget();

    common.Receive("[1]");
    common.Receive("{\"a\":");
    common.Receive(std::string(5000, '['));

    EXPECT_EQ(common.Member("a"), Json::Value(5));
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(log.Lines(), ElementsAre(Error("The common configuration is refused: must be an object"),
                                         Error(StartsWith("The common configuration is refused: ")),
                                         Error(StartsWith("The common configuration is refused: "))));
}

TEST_F(ServerDocumentTest, AKeptConfigurationThatIsNoneIsLoggedAndTheClientStarts) {
    store.SetAppString(kKept, "rubbish");

    const CCommonConfig next(store);

    EXPECT_TRUE(next.Member("a").isNull());
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("The common configuration in the store is invalid: "))));
}

TEST_F(ServerDocumentTest, ARefusedSaveIsLoggedAndTheValuesCount) {
    store.RefuseSaves(Failing::Always());

    common.Receive(R"({"a":5})");

    EXPECT_EQ(common.Member("a"), Json::Value(5));
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("The common configuration could not be saved")));
    store.Forget();
}

TEST_F(ServerDocumentTest, LinkTableIsKeptApartFromTheConfiguration) {
    common.Receive(R"({"7":"https://config.example/"})");
    CLinkTable table(store);
    EXPECT_EQ(table.Url(7), "");

    table.Receive(R"({"7":"https://a.example/7"})");

    EXPECT_EQ(table.Url(7), "https://a.example/7");
    EXPECT_EQ(CLinkTable(store).Url(7), "https://a.example/7");
    EXPECT_EQ(CCommonConfig(store).Member("7"), Json::Value("https://config.example/"));
    EXPECT_THAT(store.Saves(), SizeIs(2));
    store.Forget();
}

TEST_F(ServerDocumentTest, LinkWhoseUrlIsNoTextIsUnknown) {
    CLinkTable table(store);

    table.Receive(
        R"({"1":1,"2":null,"3":["https://a.example/"],"4":{},"5":"","18446744073709551615":"https://a.example/"})");

    for (const unsigned long id : {0, 1, 2, 3, 4, 5, 6}) {
        EXPECT_EQ(table.Url(id), "") << id;
    }
    EXPECT_EQ(table.Url(std::numeric_limits<unsigned long>::max()), "https://a.example/");
    store.Forget();
}

TEST_F(ServerDocumentTest, RefusedLinkTableIsNamedInTheLog) {
    CLinkTable table(store);

    table.Receive("[]");

    EXPECT_THAT(log.Lines(), ElementsAre(Error("The link table is refused: must be an object")));
}

}  // namespace
