#include "Scenario.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::CScenario;
using devserver::Errors;
using devserver::WriteJson;
using testing::ElementsAre;

std::string WithMember(const std::string& member) {
    return R"({"commonConfig":{},"schema":1,"users":[{"id":1,"markets":[],"name":"Ann",)" + member + "}]}";
}

std::string WithVip(const std::string& vip) {
    return WithMember("\"vip\":" + vip);
}

constexpr const char* kInt32 = "must be a whole number from -2147483648 to 2147483647";
constexpr const char* kUInt32 = "must be a whole number from 0 to 4294967295";

struct BadRow {
    const char* name;
    std::string text;
    std::string error;
};

class BadVipTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadVipTest, IsRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(GetParam().text, errors));

    EXPECT_THAT(errors, ElementsAre("users[0]." + GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadVipTest,
    testing::Values(
        BadRow{"UnknownKey", WithVip(R"({"data":true})"), "vip.data: unknown key"},
        BadRow{"CodeFraction", WithVip(R"({"code":0.5})"),
               "vip.code: must be null or a whole number from -2147483648 to 2147483647"},
        BadRow{"MessageNumber", WithVip(R"({"message":0})"), "vip.message: must be a text"},
        BadRow{"BasicNoObject", WithVip(R"({"basic":[]})"), "vip.basic: must not be a list"},
        BadRow{"BasicUnknownKey", WithVip(R"({"basic":{"grade":1}})"), "vip.basic.grade: unknown key"},
        BadRow{"StatePastTheRange", WithVip(R"({"basic":{"state":2147483648}})"),
               std::string("vip.basic.state: ") + kInt32},
        BadRow{"LevelNegative", WithVip(R"({"basic":{"level":-1}})"), std::string("vip.basic.level: ") + kUInt32},
        BadRow{"NewStatePastTheRange", WithVip(R"({"basic":{"newState":4294967296}})"),
               std::string("vip.basic.newState: ") + kUInt32},
        BadRow{"AutoRenewalBool", WithVip(R"({"basic":{"autoRenewal":true}})"),
               std::string("vip.basic.autoRenewal: ") + kInt32},
        BadRow{"EntryNoObject", WithVip(R"({"entry":""})"), "vip.entry: must be an object"},
        BadRow{"EntryUnknownKey", WithVip(R"({"entry":{"title":{}}})"), "vip.entry.title: unknown key"},
        BadRow{"TitleNoObject", WithVip(R"({"entry":{"mainTitle":"a"}})"), "vip.entry.mainTitle: must be an object"},
        BadRow{"TitleUnknownLanguage", WithVip(R"({"entry":{"mainTitle":{"zh":"a"}}})"),
               "vip.entry.mainTitle.zh: unknown key"},
        BadRow{"ButtonNumber", WithVip(R"({"entry":{"btnTitle":{"fr":1}}})"), "vip.entry.btnTitle.fr: must be a text"},
        BadRow{"TradeNumber", WithMember(R"("trade":1)"), "trade: must be true or false"}),
    RowName());

class SoundVipTest : public testing::TestWithParam<const char*> {};

TEST_P(SoundVipTest, IsWrittenAsItWasRead) {
    const std::string text = WithMember(GetParam());
    Errors errors;
    const auto scenario = CScenario::FromText(text, errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    EXPECT_EQ(WriteJson(scenario->ToJson()), WriteJson(devserver::ParseJson(text, errors).value()));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SoundVipTest,
    testing::Values(R"("vip":{})", R"("trade":false)", R"("trade":true)",
                    R"("vip":{"basic":{},"code":null,"entry":{},"message":"","qualification":false})",
                    R"("vip":{"basic":{"autoRenewal":2,"level":4294967295,"newState":2,"newSubState":106,"state":-1,)"
                    R"("version":1},"code":26,"entry":{"btnTitle":{},"mainTitle":{"en":"a","fr":"b","ja":"c",)"
                    R"("zh-Hans":"d","zh-Hant":""}},"message":"m","qualification":true})"));

}  // namespace
