#include "VipAnswer.h"

#include <gmock/gmock.h>

#include "RowName.h"
#include "vip_base_service.pb.h"

namespace {

using namespace vip_base_service;
using devserver::AnswerCommand;
using devserver::CommandAnswer;
using devserver::CScenario;
using devserver::Errors;
using devserver::Language;

constexpr uint32_t kCommand = 20831;

CommandAnswer Answer(const std::string& vip, const std::string& body = {}) {
    const std::string member = vip.empty() ? "" : ",\"vip\":" + vip;
    Errors errors;
    const auto scenario = CScenario::FromText(
        R"({"schema":1,"users":[{"id":1,"name":"Ann")" + member + R"(}],"commonConfig":{}})", errors);
    EXPECT_TRUE(scenario) << testing::PrintToString(errors);
    return AnswerCommand(kCommand, {*scenario, scenario->Users()[0], Language::English}, body);
}

struct VipRow {
    const char* name;
    const char* vip;
    std::string body;
};

class VipBytesTest : public testing::TestWithParam<VipRow> {};

TEST_P(VipBytesTest, AreAsTheScenarioSays) {
    const CommandAnswer answer = Answer(GetParam().vip);

    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.body, GetParam().body);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, VipBytesTest,
    testing::Values(VipRow{"NoVip", "", {"\x08\x00", 2}}, VipRow{"Empty", "{}", {"\x08\x00\x1a\x00", 4}},
                    VipRow{"NoCode", R"({"code":null})", {"\x1a\x00", 2}},
                    VipRow{"CodeAndMessage", R"({"code":26,"message":"m"})", {"\x08\x1a\x12\x01m\x1a\x00", 7}},
                    VipRow{"NotQualified", R"({"qualification":false})", {"\x08\x00\x1a\x02\x18\x00", 6}},
                    VipRow{"Qualified", R"({"qualification":true})", {"\x08\x00\x1a\x02\x18\x01", 6}},
                    VipRow{"EmptyBasic", R"({"basic":{}})", {"\x08\x00\x1a\x02\x0a\x00", 6}},
                    VipRow{"Basic",
                           R"({"basic":{"state":1,"level":2,"version":3,"newState":4,"newSubState":5,)"
                           R"("autoRenewal":6}})",
                           {"\x08\x00\x1a\x0e\x0a\x0c\x10\x01\x18\x02\x58\x03\x60\x04\x68\x05\x78\x06", 18}},
                    VipRow{"NegativeState",
                           R"({"basic":{"state":-1}})",
                           {"\x08\x00\x1a\x0d\x0a\x0b\x10\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01", 17}},
                    VipRow{"LargeLevel",
                           R"({"basic":{"level":4294967295}})",
                           {"\x08\x00\x1a\x08\x0a\x06\x18\xff\xff\xff\xff\x0f", 12}},
                    VipRow{"EmptyEntry", R"({"entry":{}})", {"\x08\x00\x1a\x02\x12\x00", 6}}),
    RowName());

TEST(VipAnswerTest, EntryTextsGoOutInAllLanguagesThatTheyHave) {
    const CommandAnswer bytes = Answer(
        R"({"entry":{"mainTitle":{"zh-Hans":"a","zh-Hant":"b","en":"c","ja":"d","fr":"e"},"btnTitle":{"fr":""}}})");

    GetAppEntryMessageRsp answer;
    ASSERT_TRUE(answer.ParseFromString(bytes.body));
    const AppEntryMessage& entry = answer.data().app_entry_message();
    EXPECT_EQ(entry.entry_main_title().simplified_chinese(), "a");
    EXPECT_EQ(entry.entry_main_title().traditional_chinese(), "b");
    EXPECT_EQ(entry.entry_main_title().english(), "c");
    EXPECT_EQ(entry.entry_main_title().japanese(), "d");
    EXPECT_EQ(entry.entry_main_title().french(), "e");
    EXPECT_TRUE(entry.entry_btn_title().has_french());
    EXPECT_FALSE(entry.entry_btn_title().has_english());
    EXPECT_FALSE(entry.entry_btn_title().has_simplified_chinese());
}

TEST(VipAnswerTest, ABodyThatIsNoRequestIsRefused) {
    EXPECT_EQ(Answer("{}", "\xff").error, devserver::kErrorBadBody);
}

}  // namespace
