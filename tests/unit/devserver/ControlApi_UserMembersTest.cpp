// Members of a user that the control interface changes one by one.
#include <gmock/gmock.h>

#include "DevServerTest.h"
#include "RowName.h"
#include "premium_svr.pb.h"
#include "vip_base_service.pb.h"

namespace {

struct MemberRow {
    const char* name;
    const char* key;
    const char* value;
    const char* wrong;
    const char* error;
};

class UserRightTest : public DevServerTest {
protected:
    Json::Value Premium() { return Http("GET", "/v1/scenario").body["users"][1]["premium"]; }
};

class UserMemberTest : public DevServerTest, public testing::WithParamInterface<MemberRow> {
protected:
    const std::string path = std::string("/v1/users/2/") + GetParam().key;

    Json::Value Bob() { return Http("GET", "/v1/scenario").body["users"][1]; }
};

TEST_P(UserMemberTest, IsSetAndTakenAway) {
    ASSERT_FALSE(Bob().isMember(GetParam().key));

    ASSERT_EQ(Http("PUT", path.c_str(), GetParam().value).status, 200);
    EXPECT_EQ(Bob()[GetParam().key], FromJson(GetParam().value));

    ASSERT_EQ(Http("DELETE", path.c_str()).status, 200);
    EXPECT_FALSE(Bob().isMember(GetParam().key));
}

TEST_P(UserMemberTest, StaysWhenWhatShouldReplaceItIsRefused) {
    ASSERT_EQ(Http("PUT", path.c_str(), GetParam().value).status, 200);

    const HttpAnswer answer = Http("PUT", path.c_str(), GetParam().wrong);

    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.Error(), GetParam().error);
    EXPECT_EQ(Bob()[GetParam().key], FromJson(GetParam().value));
}

TEST_P(UserMemberTest, IsOfAUserWhoIsThere) {
    const Json::Value before = Http("GET", "/v1/scenario").body;

    for (const char* user : {"77", "x", "-2"}) {
        const std::string nowhere = std::string("/v1/users/") + user + "/" + GetParam().key;
        const HttpAnswer answer = Http("PUT", nowhere.c_str(), GetParam().value);
        EXPECT_EQ(answer.status, 404);
        EXPECT_EQ(answer.Error(), std::string("path: no user has the id ") + user);
        EXPECT_EQ(Http("DELETE", nowhere.c_str()).status, 404);
    }
    EXPECT_EQ(Http("GET", "/v1/scenario").body, before);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, UserMemberTest,
    testing::Values(MemberRow{"Premium", "premium", R"({"code":3,"rights":[{"access":13,"daysLeft":5}]})",
                              R"({"rights":[{"access":13,"daysLeft":"x"}]})",
                              "premium.rights[0].daysLeft: must be a whole number from -2147483648 to 2147483647"},
                    MemberRow{"Vip", "vip", R"({"qualification":true,"basic":{"level":2}})",
                              R"({"basic":{"level":-2}})",
                              "vip.basic.level: must be a whole number from 0 to 4294967295"},
                    MemberRow{"Trade", "trade", "false", "0", "trade: must be true or false"}),
    RowName());

class UserMembersTest : public DevServerTest {};

TEST_F(UserMembersTest, ANewPremiumIsAnsweredFromTheNextRequestOn) {
    const auto client = LoggedIn(2);
    ASSERT_EQ(Http("PUT", "/v1/users/2/premium", R"({"rights":[{"access":13,"daysLeft":5}]})").status, 200);

    const auto reply = client->Request(1, 20637, "\x08\x01");

    web_premium_access::GetUiMsgAndPremiumAccessRsp answer;
    ASSERT_TRUE(reply && answer.ParseFromString(reply->body()));
    ASSERT_EQ(answer.data().ui_data_and_access_data_size(), 1);
    EXPECT_EQ(answer.data().ui_data_and_access_data(0).access_data().days_left(), 5);
}

TEST_F(UserMembersTest, ANewVipStatusIsAnsweredFromTheNextRequestOn) {
    const auto client = LoggedIn(2);
    ASSERT_EQ(Http("PUT", "/v1/users/2/vip", R"({"basic":{"level":3}})").status, 200);

    const auto reply = client->Request(1, 20831);

    vip_base_service::GetAppEntryMessageRsp answer;
    ASSERT_TRUE(reply && answer.ParseFromString(reply->body()));
    EXPECT_EQ(answer.data().vip_basic_data().vip_level(), 3u);
}

TEST_F(UserMembersTest, TheTradeModulesAnswerGoesOutWithTheNextLogin) {
    const auto client = Connected();
    for (const char* answer : {"true", "false"}) {
        ASSERT_EQ(Http("PUT", "/v1/users/2/trade", answer).status, 200);
        const auto login = client->Login(2);
        ASSERT_TRUE(login);
        EXPECT_TRUE(login->has_trade_answer());
        EXPECT_EQ(login->trade_answer(), std::string(answer) == "true");
    }
    ASSERT_EQ(Http("DELETE", "/v1/users/2/trade").status, 200);

    const auto login = client->Login(2);

    ASSERT_TRUE(login);
    EXPECT_FALSE(login->has_trade_answer());
}

TEST_F(UserMembersTest, RequestsOfNobodyAreRefused) {
    const auto client = Connected();
    for (const uint32_t command : {20637u, 20831u}) {
        const auto reply = client->Request(1, command);
        ASSERT_TRUE(reply);
        EXPECT_EQ(reply->error(), 1);
        EXPECT_EQ(reply->body(), "");
    }
}

TEST_F(UserMembersTest, AConfigurationOfHalfACharacterIsRefused) {
    const HttpAnswer answer = Http("PUT", "/v1/config/a", R"({"b":"\udc00"})");

    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.Error(), "not JSON: escapes half a character");
}

TEST_F(UserRightTest, IsReplacedAtItsPlaceAddedAtTheEndAndRemoved) {
    ASSERT_EQ(Http("PUT", "/v1/users/2/premium",
                   R"({"message":"m","rights":[{"access":5,"daysLeft":1},{"access":7},{"access":5}]})")
                  .status,
              200);

    ASSERT_EQ(Http("PUT", "/v1/users/2/rights/5", R"({"daysLeft":9})").status, 200);
    EXPECT_EQ(Premium(), FromJson(R"({"message":"m","rights":[{"access":5,"daysLeft":9},{"access":7}]})"));
    ASSERT_EQ(Http("PUT", "/v1/users/2/rights/8", R"({"access":3,"hasPermission":true})").status, 200);
    EXPECT_EQ(
        Premium(),
        FromJson(
            R"({"message":"m","rights":[{"access":5,"daysLeft":9},{"access":7},{"access":8,"hasPermission":true}]})"));
    ASSERT_EQ(Http("DELETE", "/v1/users/2/rights/7").status, 200);
    ASSERT_EQ(Http("DELETE", "/v1/users/2/rights/7").status, 200);
    EXPECT_EQ(Premium()["rights"].size(), 2u);
}

TEST_F(UserRightTest, BeginsTheAnswerOfAUserWithoutRights) {
    ASSERT_EQ(Http("DELETE", "/v1/users/2/rights/8").status, 200);
    EXPECT_EQ(Premium(), Json::Value());

    ASSERT_EQ(Http("PUT", "/v1/users/2/rights/8", "{}").status, 200);

    EXPECT_EQ(Premium(), FromJson(R"({"rights":[{"access":8}]})"));
}

TEST_F(UserRightTest, IsRefusedWithoutAChangeIfUserNumberOrRightIsWrong) {
    const Json::Value before = Http("GET", "/v1/scenario").body;

    EXPECT_EQ(Http("PUT", "/v1/users/77/rights/8", "{}").Error(), "path: no user has the id 77");
    EXPECT_EQ(Http("DELETE", "/v1/users/2/rights/x").Error(), "path: no right has the number x");
    EXPECT_EQ(Http("PUT", "/v1/users/2/rights/2147483648", "{}").status, 404);
    EXPECT_EQ(Http("PUT", "/v1/users/2/rights/8", "[]").Error(), "must be an object");
    EXPECT_EQ(Http("PUT", "/v1/users/2/rights/8", R"({"days":1})").Error(), "premium.rights[0].days: unknown key");
    EXPECT_EQ(Http("GET", "/v1/scenario").body, before);
}

}  // namespace
