#include "Scenario.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::CScenario;
using devserver::Errors;
using devserver::Premium;
using devserver::WriteJson;
using testing::ElementsAre;

std::string WithRights(const std::string& rights) {
    return R"({"schema":1,"rights":)" + rights + R"(,"users":[],"commonConfig":{}})";
}

std::string WithPremium(const std::string& premium) {
    return R"({"schema":1,"users":[{"id":1,"name":"Ann","premium":)" + premium + R"(}],"commonConfig":{}})";
}

constexpr const char* kCode = "users[0].premium.code: must be null or a whole number from -2147483648 to 2147483647";
constexpr const char* kInt32 = "must be a whole number from -2147483648 to 2147483647";

struct BadRow {
    const char* name;
    std::string text;
    std::string error;
};

class BadPremiumTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadPremiumTest, IsRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(GetParam().text, errors));

    EXPECT_THAT(errors, ElementsAre(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Catalogue, BadPremiumTest,
    testing::Values(
        BadRow{"NoList", WithRights("{}"), "rights: must be a list of objects"},
        BadRow{"NoObject", WithRights("[7]"), "rights: must be a list of objects"},
        BadRow{"UnknownKey", WithRights(R"([{"access":1,"type":"A"}])"), "rights[0].type: unknown key"},
        BadRow{"AccessMissing", WithRights(R"([{"access":0},{}])"), "rights[1].access: missing"},
        BadRow{"AccessText", WithRights(R"([{"access":0},{"access":"x"}])"),
               std::string("rights[1].access: ") + kInt32},
        BadRow{"AccessPastTheRange", WithRights(R"([{"access":2147483648}])"),
               std::string("rights[0].access: ") + kInt32},
        BadRow{"AccessTwice", WithRights(R"([{"access":-7},{"access":1},{"access":-7}])"),
               "rights[2].access: another right has this number"},
        BadRow{"AccessZeroTwice", WithRights(R"([{"access":0},{"access":0}])"),
               "rights[1].access: another right has this number"},
        BadRow{"UiTypeNumber", WithRights(R"([{"access":1,"uiType":1}])"), "rights[0].uiType: must be a text"},
        BadRow{"OtherInfoHalfACharacter", WithRights(R"([{"access":1,"otherInfo":"\udc00"}])"),
               "not JSON: escapes half a character"},
        BadRow{"OtherInfoHalfACharacterInside", WithRights(R"([{"access":1,"otherInfo":{"\udc00":1}}])"),
               "not JSON: escapes half a character"},
        BadRow{"LinksNoObject", WithRights(R"([{"access":1,"links":[]}])"), "rights[0].links: must not be a list"},
        BadRow{"LinksUnknownKey", WithRights(R"([{"access":1,"links":{"mainbtn":1}}])"),
               "rights[0].links.mainbtn: unknown key"},
        BadRow{"DetailLinkFraction", WithRights(R"([{"access":1,"links":{"detailBtn":1.5}}])"),
               std::string("rights[0].links.detailBtn: ") + kInt32},
        BadRow{"TextsNoObject", WithRights(R"([{"access":1,"texts":"a"}])"), "rights[0].texts: must be an object"},
        BadRow{"EnglishMissing", WithRights(R"([{"access":1,"texts":{"ja":{}}}])"), "rights[0].texts.en: missing"},
        BadRow{"UnknownLanguage", WithRights(R"([{"access":1,"texts":{"en":{},"de":{}}}])"),
               "rights[0].texts.de: unknown key"},
        BadRow{"LanguageNoObject", WithRights(R"([{"access":1,"texts":{"en":{},"fr":"a"}}])"),
               "rights[0].texts.fr: must be an object"},
        BadRow{"TextsUnknownKey", WithRights(R"([{"access":1,"texts":{"en":{"title":"a"}}}])"),
               "rights[0].texts.en.title: unknown key"},
        BadRow{"TextNumber", WithRights(R"([{"access":1,"texts":{"en":{},"zh-Hans":{"mainTitle":1}}}])"),
               "rights[0].texts.zhHans.mainTitle: must be a text"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    User, BadPremiumTest,
    testing::Values(
        BadRow{"UnknownKey", WithPremium(R"({"right":[]})"), "users[0].premium.right: unknown key"},
        BadRow{"CodeText", WithPremium(R"({"code":"0"})"), kCode},
        BadRow{"CodePastTheRange", WithPremium(R"({"code":-2147483649})"), kCode},
        BadRow{"RightsNoList", WithPremium(R"({"rights":{}})"), "users[0].premium.rights[0].access: missing"},
        BadRow{"RightNoObject", WithPremium(R"({"rights":[{"access":1},1]})"),
               "users[0].premium.rights[1]: must be an object"},
        BadRow{"RightUnknownKey", WithPremium(R"({"rights":[{"access":1,"days":1}]})"),
               "users[0].premium.rights[0].days: unknown key"},
        BadRow{"AccessMissing", WithPremium(R"({"rights":[{}]})"), "users[0].premium.rights[0].access: missing"},
        BadRow{"PermissionNumber", WithPremium(R"({"rights":[{"access":1,"hasPermission":1}]})"),
               "users[0].premium.rights[0].hasPermission: must be true or false"},
        BadRow{"DaysPastTheRange", WithPremium(R"({"rights":[{"access":1,"daysLeft":2147483648}]})"),
               std::string("users[0].premium.rights[0].daysLeft: ") + kInt32},
        BadRow{"StateNumber", WithPremium(R"({"rights":[{"access":1,"state":0}]})"),
               "users[0].premium.rights[0].state: must be true or false"}),
    RowName());

TEST(ScenarioPremiumTest, WritesWhatItReads) {
    const std::string text =
        R"({"commonConfig":{},"rights":[)"
        R"({"access":-2147483648},{"access":1,"links":{},"otherInfo":null,"texts":{"en":{}}},)"
        R"({"access":1000,"links":{"detailBtn":0,"detailSubBtn":-1,"mainBtn":2147483647},"otherInfo":{"a":[1,"é"]},)"
        R"("texts":{"en":{"detailBtn":"d","detailSubBtn":"e","detailSubTitle":"c","detailTitle":"b","mainBtn":"f",)"
        R"("mainTitle":"a"},"fr":{},"ja":{"mainBtn":""},"zh-Hans":{},"zh-Hant":{}},"uiType":"D"}],"schema":1,)"
        R"("users":[{"id":1,"markets":[],"name":"A","premium":{"code":null,"data":false,"message":"","rights":[)"
        R"({"access":7},{"access":7,"display":false},{"access":7,"state":false},{"access":7,"activationSource":3,"activationType":6,"daysLeft":-1,"display":false,)"
        R"("hasPermission":true,"state":false}]}},{"id":2,"markets":[],"name":"B","premium":{"code":-5,"rights":[]}}]})";
    Errors errors;
    const auto scenario = CScenario::FromText(text, errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    EXPECT_EQ(WriteJson(scenario->ToJson()), text);
}

TEST(ScenarioPremiumTest, OptionalFieldsHaveTheirDefaultsWhenAbsent) {
    Errors errors;
    const auto scenario = CScenario::FromText(WithPremium(R"({"rights":[{"access":1}]})"), errors);
    ASSERT_TRUE(scenario) << testing::PrintToString(errors);

    const Premium& premium = scenario->Users()[0].premium();
    EXPECT_EQ(devserver::AnswerCode(premium.code()), 0);
    EXPECT_FALSE(premium.has_message());
    EXPECT_TRUE(premium.data());
    EXPECT_TRUE(premium.rights(0).display());
    EXPECT_TRUE(premium.rights(0).state());
}

}  // namespace
