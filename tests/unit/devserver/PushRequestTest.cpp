#include "PushRequest.h"

#include <gmock/gmock.h>

#include "DevServerTest.h"
#include "RowName.h"

namespace {

using channel::Frame;
using devserver::Errors;
using devserver::ReadPush;
using testing::ElementsAre;

struct PushRow {
    const char* name;
    const char* text;
    uint32_t command;
    std::string body;
};

class PushFormTest : public testing::TestWithParam<PushRow> {};

TEST_P(PushFormTest, BecomesCommandAndBytes) {
    Errors errors;

    const auto push = ReadPush(GetParam().text, errors);

    ASSERT_TRUE(push) << testing::PrintToString(errors);
    EXPECT_FALSE(push->user);
    EXPECT_EQ(push->command, GetParam().command);
    EXPECT_EQ(push->body, GetParam().body);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, PushFormTest,
    testing::Values(
        PushRow{"Bytes", R"({"command":7,"bodyHex":"00fF"})", 7, {"\x00\xff", 2}},
        PushRow{"PremiumOfNothing", R"({"premiumChange":{}})", 20837, ""},
        PushRow{"PremiumAll", R"({"premiumChange":{"delaySeconds":0,"needAll":true}})", 20837, {"\x08\x00\x10\x01", 4}},
        PushRow{"PremiumList",
                R"({"premiumChange":{"delaySeconds":4294967295,"needAll":false,"access":[13,-1]}})",
                20837,
                {"\x08\xff\xff\xff\xff\x0f\x10\x00\x18\x0d\x18\xff\xff\xff\xff\xff\xff\xff\xff\xff\x01", 21}},
        PushRow{"PremiumWithoutDelay", R"({"premiumChange":{"access":[1]}})", 20837, "\x18\x01"},
        PushRow{"VipOfNothing", R"({"vipChange":{}})", 20832, ""},
        PushRow{"VipWindow", R"({"vipChange":{"windowSeconds":30}})", 20832, "\x08\x1e"},
        PushRow{"AdChangeOfNothing", R"({"adChange":{}})", 20145, ""},
        PushRow{"AdChange",
                R"({"adChange":{"adType":2,"adPosition":42,"delay":0,"offlineAdIds":["18088",""]}})",
                20145,
                {"\x08\x02\x10\x2a\x18\x00\x22\x05\x31\x38\x30\x38\x38\x22\x00", 15}},
        PushRow{"AdChangeOffline", R"({"adChange":{"offlineAdIds":["a"]}})", 20145, "\x22\x01\x61"},
        PushRow{"AdCheckOfNothing", R"({"adCheck":{}})", 20170, ""},
        PushRow{"AdCheck", R"({"adCheck":{"adType":3,"adPosition":7,"delay":4294967295,"adIds":["a","b"]}})", 20170,
                "\x08\x03\x10\x07\x18\xff\xff\xff\xff\x0f\x22\x01\x61\x22\x01\x62"},
        PushRow{"AdNewOfNothing", R"({"adNew":{}})", 20171, ""},
        PushRow{"AdNew", R"({"adNew":{"adType":4294967295,"adPosition":9,"delay":5}})", 20171,
                "\x08\xff\xff\xff\xff\x0f\x10\x09\x18\x05"}),
    RowName());

struct BadRow {
    const char* name;
    const char* text;
    const char* error;
};

class BadPushTest : public testing::TestWithParam<BadRow> {};

TEST_P(BadPushTest, IsRefusedByKeyAndReason) {
    Errors errors;

    EXPECT_FALSE(ReadPush(GetParam().text, errors));

    EXPECT_THAT(errors, ElementsAre(GetParam().error));
}

constexpr const char* kCommand = "command: must be given with bodyHex, and only with it";
constexpr const char* kNotOne = "must hold exactly one of bodyHex, premiumChange, vipChange, adChange, adCheck, adNew";

INSTANTIATE_TEST_SUITE_P(
    Rows, BadPushTest,
    testing::Values(
        BadRow{"NoBody", R"({"command":1})", kNotOne}, BadRow{"OnlyAUser", R"({"command":1,"user":1})", kNotOne},
        BadRow{"BytesAndPremium", R"({"bodyHex":"","premiumChange":{}})", kNotOne},
        BadRow{"BytesAndVip", R"({"bodyHex":"","vipChange":{}})", kNotOne},
        BadRow{"PremiumAndVip", R"({"premiumChange":{},"vipChange":{}})", kNotOne},
        BadRow{"CommandWithPremium", R"({"command":20837,"premiumChange":{}})", kCommand},
        BadRow{"CommandWithVip", R"({"command":20832,"vipChange":{}})", kCommand},
        BadRow{"BytesWithoutCommand", R"({"bodyHex":""})", kCommand},
        BadRow{"CommandZero", R"({"command":0,"bodyHex":""})", "command: must be a whole number from 1 to 4294967295"},
        BadRow{"UserZero", R"({"vipChange":{},"user":0})",
               "user: must be a whole number from 1 to 18446744073709551615"},
        BadRow{"PremiumNull", R"({"premiumChange":null})", kNotOne},
        BadRow{"PremiumUnknownKey", R"({"premiumChange":{"delay":1}})", "premiumChange.delay: unknown key"},
        BadRow{"DelayNegative", R"({"premiumChange":{"delaySeconds":-1}})",
               "premiumChange.delaySeconds: must be a whole number from 0 to 4294967295"},
        BadRow{"NeedAllNumber", R"({"premiumChange":{"needAll":1}})", "premiumChange.needAll: must be true or false"},
        BadRow{"AccessPastTheRange", R"({"premiumChange":{"access":[1,2147483648]}})",
               "premiumChange.access[1]: must be a whole number from -2147483648 to 2147483647"},
        BadRow{"VipNoObject", R"({"vipChange":[]})", "vipChange: must not be a list"},
        BadRow{"VipUnknownKey", R"({"vipChange":{"window":1}})", "vipChange.window: unknown key"},
        BadRow{"AdChangeAndNew", R"({"adChange":{},"adNew":{}})", kNotOne},
        BadRow{"BytesAndCheck", R"({"bodyHex":"","adCheck":{}})", kNotOne},
        BadRow{"AdNewWithIds", R"({"adNew":{"adIds":[]}})", "adNew.adIds: unknown key"},
        BadRow{"AdChangeWithCommand", R"({"adChange":{},"command":20145})", kCommand},
        BadRow{"AdIdNumber", R"({"adCheck":{"adIds":["a",18088]}})", "adCheck.adIds[1]: must be a text"},
        BadRow{"AdTypeNegative", R"({"adNew":{"adType":-1}})",
               "adNew.adType: must be a whole number from 0 to 4294967295"},
        BadRow{"WindowPastTheRange", R"({"vipChange":{"windowSeconds":4294967296}})",
               "vipChange.windowSeconds: must be a whole number from 0 to 4294967295"}),
    RowName());

class PushByFieldsTest : public DevServerTest {};

TEST_F(PushByFieldsTest, ReachesTheNamedUserAlone) {
    const auto ann = LoggedIn(1);
    const auto bob = LoggedIn(2);

    EXPECT_EQ(Http("POST", "/v1/push", R"({"user":1,"premiumChange":{"delaySeconds":2}})").body["sent"].asInt(), 1);
    EXPECT_EQ(Http("POST", "/v1/push", R"({"vipChange":{"windowSeconds":3}})").body["sent"].asInt(), 2);

    const auto premium = ann->Take(Frame::PUSH);
    const auto vip = ann->Take(Frame::PUSH);
    const auto vipOfBob = bob->Take(Frame::PUSH);
    ASSERT_TRUE(premium && vip && vipOfBob);
    EXPECT_EQ(premium->command(), 20837u);
    EXPECT_EQ(premium->body(), "\x08\x02");
    EXPECT_EQ(vip->command(), 20832u);
    EXPECT_EQ(vip->body(), "\x08\x03");
    EXPECT_EQ(vipOfBob->command(), 20832u);
}

TEST_F(PushByFieldsTest, RefusedPushReachesNobody) {
    const auto ann = LoggedIn(1);

    const HttpAnswer answer = Http("POST", "/v1/push", R"({"user":1,"premiumChange":{},"vipChange":{}})");

    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.Error(), kNotOne);
    ASSERT_TRUE(ann->Request(1, kCmdChatEntry));
    EXPECT_FALSE(ann->Has(Frame::PUSH));
}

}  // namespace
