#include "Scenario.h"

#include <gmock/gmock.h>

#include <QFile>

#include "RowName.h"

namespace {

using devserver::CScenario;
using devserver::Errors;
using devserver::User;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Scenario(const std::string& users, const std::string& config = "{}") {
    return R"({"schema":1,"users":[)" + users + R"(],"commonConfig":)" + config + "}";
}

std::string WithChat(const std::string& aiChat) {
    return Scenario(R"({"id":1,"name":"Ann","aiChat":)" + aiChat + "}");
}

std::string Nested(int depth) {
    return std::string(size_t(depth), '[') + std::string(size_t(depth), ']');
}

struct BadRow {
    const char* name;
    std::string text;
    std::string error;  // part of the only error
};

class BadScenarioTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadScenarioTest, IsRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(GetParam().text, errors));

    ASSERT_EQ(errors.size(), 1u) << testing::PrintToString(errors);
    EXPECT_THAT(errors[0], HasSubstr(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadScenarioTest,
    testing::Values(BadRow{"Empty", "", "not JSON: "}, BadRow{"NoJson", "schema: 1", "not JSON: "},
                    BadRow{"CutOff", R"({"schema":1,"users":[)", "not JSON: "},
                    BadRow{"TrailingGarbage", Scenario("") + "x", "not JSON: "},
                    BadRow{"TwoValues", Scenario("") + Scenario(""), "not JSON: "},
                    BadRow{"GarbageAfterAZeroByte", Scenario("") + std::string("\0x", 2), "holds a zero byte"},
                    BadRow{"Comment", "// users\n" + Scenario(""), "not JSON: "},
                    BadRow{"TrailingComma", R"({"schema":1,"users":[],"commonConfig":{},})", "not JSON: "},
                    BadRow{"DuplicateKey", R"({"schema":1,"schema":1,"users":[],"commonConfig":{}})",
                           "Duplicate key: 'schema'"},
                    BadRow{"DuplicateKeyInConfig", Scenario("", R"({"a":1,"a":2})"), "Duplicate key: 'a'"},
                    BadRow{"NotUtf8", Scenario("{\"id\":1,\"name\":\"\xff\"}"), "not JSON: not UTF-8"},
                    BadRow{"NotANumber", R"({"schema":NaN,"users":[],"commonConfig":{}})", "not JSON: "},
                    BadRow{"NestedTooDeep", Scenario("", R"({"a":)" + Nested(63) + "}"), "nested more than 64 deep"},
                    BadRow{"NestedFarTooDeep", Nested(100'000), "nested more than 64 deep"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Keys, BadScenarioTest,
    testing::Values(
        BadRow{"SchemaMissing", R"({"users":[],"commonConfig":{}})", "schema: missing"},
        BadRow{"SchemaOfTomorrow", R"({"schema":2,"users":[],"commonConfig":{}})",
               "schema: must be a whole number from 1 to 1"},
        BadRow{"UsersNoList", R"({"schema":1,"users":{},"commonConfig":{}})", "users: must be a list of objects"},
        BadRow{"ConfigMissing", R"({"schema":1,"users":[]})", "commonConfig: missing"},
        BadRow{"ConfigNoObject", Scenario("", "5"), "commonConfig: must be an object"},
        BadRow{"UnknownKey", R"({"schema":1,"users":[],"commonConfig":{},"user":[]})", "user: unknown key"},
        BadRow{"UserNoObject", Scenario("1"), "users: must be a list of objects"},
        BadRow{"UserUnknownKey", Scenario(R"({"id":1,"name":"A","market":[1]})"), "users[0].market: unknown key"},
        BadRow{"IdMissing", Scenario(R"({"name":"A"})"), "users[0].id: missing"},
        BadRow{"IdZero", Scenario(R"({"id":1,"name":"A"},{"id":2,"name":"B"},{"id":0,"name":"C"})"),
               "users[2].id: must be a whole number from 1 to 18446744073709551615"},
        BadRow{"IdNegative", Scenario(R"({"id":-1,"name":"A"})"), "users[0].id: must be a whole number"},
        BadRow{"IdFraction", Scenario(R"({"id":1.5,"name":"A"})"), "users[0].id: must be a whole number"},
        BadRow{"IdPastTheRange", Scenario(R"({"id":18446744073709551616,"name":"A"})"),
               "users[0].id: must be a whole number"},
        BadRow{"IdTwice", Scenario(R"({"id":7,"name":"A"},{"id":7,"name":"B"})"),
               "users[1].id: another user has this id"},
        BadRow{"NameMissing", Scenario(R"({"id":1})"), "users[0].name: missing"},
        BadRow{"NameEmpty", Scenario(R"({"id":1,"name":""})"), "users[0].name: must not be empty"},
        BadRow{"NameNumber", Scenario(R"({"id":1,"name":5})"), "users[0].name: must be a text"},
        BadRow{"NameHalfACharacter", Scenario(R"({"id":1,"name":"\udc00"})"), "not JSON: escapes half a character"},
        BadRow{"MarketPastTheRange", Scenario(R"({"id":1,"name":"A","markets":[1,2147483648]})"),
               "users[0].markets[1]: must be a whole number from -2147483648 to 2147483647"},
        BadRow{"MarketNegative", Scenario(R"({"id":1,"name":"A","markets":[1,-1]})"),
               "users[0].markets[1]: must be a whole number from 0 to 2147483647"},
        BadRow{"RefuseLoginEmpty", Scenario(R"({"id":1,"name":"A","refuseLogin":""})"),
               "users[0].refuseLogin: must not be empty"},
        BadRow{"RefuseLoginBool", Scenario(R"({"id":1,"name":"A","refuseLogin":true})"),
               "users[0].refuseLogin: must be a text"},
        BadRow{"AiChatUnknownKey", WithChat(R"({"entry":[]})"), "users[0].aiChat.entry: unknown key"},
        BadRow{"ResultCodePastTheRange", WithChat(R"({"resultCode":2147483648})"),
               "users[0].aiChat.resultCode: must be a whole number from -2147483648 to 2147483647"},
        BadRow{"ResultMessageNumber", WithChat(R"({"resultMessage":1})"),
               "users[0].aiChat.resultMessage: must be a text"},
        BadRow{"EntriesNoList", WithChat(R"({"entries":5})"), "users[0].aiChat.entries: must be an object"},
        BadRow{"SceneMissing", WithChat(R"({"entries":[{"allOpen":true}]})"),
               "users[0].aiChat.entries[0].scene: missing"},
        BadRow{"ScenePastTheRange", WithChat(R"({"entries":[{"scene":4294967296,"allOpen":true}]})"),
               "users[0].aiChat.entries[0].scene: must be a whole number from 0 to 4294967295"},
        BadRow{"AllOpenNumber", WithChat(R"({"entries":[{"scene":1,"allOpen":1}]})"),
               "users[0].aiChat.entries[0].allOpen: must be true or false"},
        BadRow{"StockTypeMissing",
               WithChat(R"({"entries":[{"scene":1,"allOpen":true,"stockDetails":[{"open":true}]}]})"),
               "users[0].aiChat.entries[0].stockDetails[0].type: missing"}),
    RowName());

TEST(ScenarioTest, EveryBrokenRuleIsReportedAtOnce) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(Scenario(R"({"id":0,"name":""},{"id":1,"name":"A","markets":[-1]})"), errors));

    EXPECT_THAT(errors, ElementsAre("users[0].id: must be a whole number from 1 to 18446744073709551615",
                                    "users[0].name: must not be empty",
                                    "users[1].markets[0]: must be a whole number from 0 to 2147483647"));
}

TEST(ScenarioTest, ParserTakesNumbersAsTextAndNullAsAbsent) {
    Errors errors;

    const auto scenario = CScenario::FromText(
        Scenario(R"({"id":"18446744073709551615","name":"Ann","aiChat":null,"markets":[1.0]})"), errors);

    ASSERT_TRUE(scenario) << testing::PrintToString(errors);
    EXPECT_TRUE(scenario->FindUser(18446744073709551615u));
    EXPECT_FALSE(scenario->Users()[0].has_aichat());
    EXPECT_THAT(scenario->Users()[0].markets(), ElementsAre(1));
}

TEST(ScenarioTest, KeyWithSpecialCharactersIsNamedWhole) {
    for (const std::string key : {"a b", "a: b", "a (b)", "missing field", ""}) {
        Errors errors;

        EXPECT_FALSE(CScenario::FromText(R"({"schema":1,"users":[],"commonConfig":{},")" + key + R"(":1})", errors));

        ASSERT_EQ(errors.size(), 1u);
        EXPECT_THAT(errors[0], HasSubstr(key));
    }
}

TEST(ScenarioTest, WrongValueDoesNotChangeTheReason) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(Scenario(R"({"id":"(a): 1 for type TYPE_BOOL","name":"A"})"), errors));

    EXPECT_THAT(errors, ElementsAre("users[0].id: must be a whole number from 0 to 18446744073709551615"));
}

TEST(ScenarioTest, LongKeysAndValuesAreRefusedLikeAnyOther) {
    const std::string text(2'000'000, 'x');
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(Scenario("{\"id\":1,\"name\":\"A\",\"" + text + "\":1}"), errors));
    EXPECT_FALSE(CScenario::FromText(Scenario("{\"id\":\"" + text + "\",\"name\":\"A\"}"), errors));

    ASSERT_EQ(errors.size(), 2u);
    EXPECT_EQ(errors[1], "users[0].id: must be a whole number from 0 to 18446744073709551615");
}

TEST(ScenarioTest, KeepsTheJsonThatItRead) {
    const std::string text = Scenario(
        R"({"aiChat":{"entries":[{"allOpen":false,"scene":4294967295,"stockDetails":[{"ids":[0,4294967295],)"
        R"("open":true,"type":3}]}],"resultCode":-2147483648,"resultMessage":"Grüße"},"id":18446744073709551615,)"
        R"("markets":[0,2147483647],"name":"Ann","refuseLogin":"no"})",
        R"({"a":[1,null,{"b":"c"}],"n":7})");
    Errors errors;
    const auto scenario = CScenario::FromText(text, errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    const std::string written = devserver::WriteJson(scenario->ToJson());

    EXPECT_EQ(written, devserver::WriteJson(devserver::ParseJson(text, errors).value()));
    const auto again = CScenario::FromText(written, errors);
    ASSERT_TRUE(again) << testing::PrintToString(errors);
    EXPECT_EQ(again->ToJson(), scenario->ToJson());
}

TEST(ScenarioTest, NestsAsDeepAsItsBound) {
    Errors errors;

    EXPECT_TRUE(CScenario::FromText(Scenario("", R"({"a":)" + Nested(62) + "}"), errors))
        << testing::PrintToString(errors);
}

std::vector<uint32_t> OpenScenes(const User& user) {
    std::vector<uint32_t> scenes;
    for (const devserver::ChatEntry& entry : user.aichat().entries()) {
        if (entry.allopen()) {
            scenes.push_back(entry.scene());
        }
    }
    return scenes;
}

TEST(ScenarioTest, BuiltInScenarioHasAUserForEachShapeOfAnswer) {
    QFile file(QStringLiteral(":/devserver/scenarios/default.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    Errors errors;
    const auto scenario = CScenario::FromText(file.readAll().toStdString(), errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    EXPECT_THAT(OpenScenes(*scenario->FindUser(10001)), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(OpenScenes(*scenario->FindUser(10002)), ElementsAre());
    EXPECT_THAT(OpenScenes(*scenario->FindUser(10003)), ElementsAre(3, 3));
    EXPECT_THAT(OpenScenes(*scenario->FindUser(10004)), ElementsAre());
    EXPECT_TRUE(scenario->FindUser(10004)->aichat().entries(0).stockdetails(0).open());
    EXPECT_FALSE(scenario->FindUser(10005)->has_aichat());
    EXPECT_TRUE(scenario->FindUser(10006)->has_refuselogin());
    EXPECT_THAT(OpenScenes(*scenario->FindUser(10007)), ElementsAre(2, 5));
    EXPECT_EQ(scenario->FindUser(1), nullptr);
    EXPECT_TRUE(scenario->CommonConfig()["ai_chat"]["url_string"].isString());
}

}  // namespace
