#include "core/CommonConfig.h"

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr const char* kKept = "Host_CommonConfig";

class CommonConfigTest : public ScriptedHostTest {
protected:
    CommonConfigTest() {
        QObject::connect(&common, &CCommonConfig::Changed, [this] {
            ++changes;
            valueWhenTold = common.ConfigByName("a");
        });
    }

    CCommonConfig common{store};
    int changes = 0;
    Json::Value valueWhenTold;
};

TEST_F(CommonConfigTest, ValuesAreKeptByNameAndOfAnyType) {
    common.Receive(R"({"a":{"x":1},"b":"text","c":null})");

    EXPECT_EQ(common.ConfigByName("a")["x"].asInt(), 1);
    EXPECT_EQ(common.ConfigByName("b"), Json::Value("text"));
    EXPECT_TRUE(common.ConfigByName("c").isNull());
    EXPECT_TRUE(common.ConfigByName("unknown").isNull());
    store.Forget();
}

TEST_F(CommonConfigTest, AChangeIsToldAfterItHappenedAndTheSameAgainIsNone) {
    common.Receive(R"({"a":1})");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(valueWhenTold, Json::Value(1));

    common.Receive(R"({ "a" : 1 })");
    EXPECT_EQ(changes, 1);

    common.Receive("{}");
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(common.ConfigByName("a").isNull());
    store.Forget();
}

TEST_F(CommonConfigTest, WhatTheServerToldLastIsThereAtTheNextStart) {
    common.Receive(R"({"a":5})");
    EXPECT_EQ(store.AppString(kKept), R"({"a":5})");

    const CCommonConfig next(store);
    EXPECT_EQ(next.ConfigByName("a"), Json::Value(5));
}

TEST_F(CommonConfigTest, WhatIsNoObjectIsRefusedInWordsAndChangesNothing) {
    common.Receive(R"({"a":5})");
    store.Forget();

    common.Receive("[1]");
    common.Receive("{\"a\":");
    common.Receive(std::string(5000, '['));

    EXPECT_EQ(common.ConfigByName("a"), Json::Value(5));
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(store.Saves(), IsEmpty());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("Common configuration refused: must be an object with one member per name"),
                            Error(StartsWith("Common configuration refused: ")),
                            Error(StartsWith("Common configuration refused: "))));
}

TEST_F(CommonConfigTest, AKeptConfigurationThatIsNoneIsLoggedAndTheClientStarts) {
    store.SetAppString(kKept, "rubbish");

    const CCommonConfig next(store);

    EXPECT_TRUE(next.ConfigByName("a").isNull());
    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("The kept common configuration is of no use: "))));
}

TEST_F(CommonConfigTest, ARefusedSaveIsLoggedAndTheValuesCount) {
    store.RefuseSaves(Failing::Always());

    common.Receive(R"({"a":5})");

    EXPECT_EQ(common.ConfigByName("a"), Json::Value(5));
    EXPECT_EQ(changes, 1);
    EXPECT_THAT(log.Lines(), ElementsAre(Error("Common configuration could not be kept")));
    store.Forget();
}

}  // namespace
