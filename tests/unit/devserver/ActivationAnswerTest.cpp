#include "ActivationAnswer.h"

#include <gmock/gmock.h>

#include "ChannelServer.h"
#include "DevServerTest.h"
#include "RowName.h"
#include "premium_svr.pb.h"

namespace {

using namespace web_premium_access;
using devserver::CommandAnswer;
using devserver::CScenario;
using devserver::Errors;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr uint32_t kCommand = 20981;
constexpr uint32_t kPush = 20837;
// Rights 4 and 15 are ready, 4 twice.
constexpr const char* kRights = R"({"message":"kept","rights":[
    {"access":4,"activationType":6,"activationSource":2},
    {"access":13,"hasPermission":false,"activationType":2,"daysLeft":3},
    {"access":15,"hasPermission":false,"activationType":6,"display":false},
    {"access":4,"activationType":6}]})";

std::string Request(const std::vector<int32_t>& rights, int32_t operation = READY_TO_LIMITED) {
    ActivePermissionStateReq request;
    request.set_operate(operation);
    request.mutable_access_list()->Add(rights.begin(), rights.end());
    return request.SerializeAsString();
}

std::string Response(int32_t code, const std::string& message = {}) {
    ActivePermissionStateRsp response;
    response.set_code(code);
    if (!message.empty()) {
        response.set_message(message);
    }
    return response.SerializeAsString();
}

CommandAnswer AnswerTo(const std::string& request, const std::string& activation = "{}") {
    Errors errors;
    const auto scenario =
        CScenario::FromText(std::string(R"({"schema":1,"commonConfig":{},"users":[{"id":1,"name":"Ann","premium":)") +
                                kRights + R"(,"activation":)" + activation + "}]}",
                            errors);
    EXPECT_TRUE(scenario) << testing::PrintToString(errors);
    return devserver::AnswerCommand(kCommand, {*scenario, scenario->Users()[0], devserver::Language::English}, request);
}

TEST(ActivationAnswerTest, SuccessMakesTheReadyRightLimited) {
    const CommandAnswer answer = AnswerTo(Request({15, 13, 99}), R"({"daysLeft":9,"message":"welcome"})");

    EXPECT_EQ(answer.error, 0);
    EXPECT_EQ(answer.body, Response(0, "welcome"));
    EXPECT_FALSE(answer.silent);
    ASSERT_TRUE(answer.effect);
    EXPECT_EQ(answer.effect->premium, FromJson(R"({"message":"kept","rights":[
        {"access":4,"activationType":6,"activationSource":2},
        {"access":13,"hasPermission":false,"activationType":2,"daysLeft":3},
        {"access":15,"hasPermission":true,"activationType":1,"daysLeft":9,"display":false},
        {"access":4,"activationType":6}]})"));
}

TEST(ActivationAnswerTest, PushNamesTheChangedRightsAndNoWait) {
    const CommandAnswer answer = AnswerTo(Request({15, 13, 4, 99}));

    ASSERT_TRUE(answer.effect);
    EXPECT_EQ(answer.effect->pushCommand, kPush);
    PremiumChangePush push;
    ASSERT_TRUE(push.ParseFromString(answer.effect->pushBody));
    EXPECT_TRUE(push.has_delay_seconds());
    EXPECT_EQ(push.delay_seconds(), 0u);
    EXPECT_FALSE(push.need_all_access());
    EXPECT_THAT(push.access_list(), ElementsAre(4, 15));
}

TEST(ActivationAnswerTest, RightThatTheUserHasTwiceChangesTwice) {
    const CommandAnswer answer = AnswerTo(Request({4}));

    ASSERT_TRUE(answer.effect);
    for (const int i : {0, 3}) {
        EXPECT_EQ(answer.effect->premium["rights"][i]["activationType"], 1) << i;
        EXPECT_EQ(answer.effect->premium["rights"][i]["daysLeft"], 7) << i;
    }
}

TEST(ActivationAnswerTest, FullActivationHasNoDays) {
    const CommandAnswer answer = AnswerTo(Request({15}, READY_TO_FULL));

    ASSERT_TRUE(answer.effect);
    EXPECT_EQ(answer.effect->premium["rights"][2],
              FromJson(R"({"access":15,"hasPermission":true,"activationType":3,"display":false})"));
}

struct OutcomeRow {
    const char* name;
    const char* activation;
    std::vector<int32_t> rights;
    int32_t error;
    std::string body;
    bool silent;
    bool hasEffect;
};

class ActivationOutcomeTest : public testing::TestWithParam<OutcomeRow> {};

TEST_P(ActivationOutcomeTest, IsThatOfTheScenario) {
    const OutcomeRow& row = GetParam();

    const CommandAnswer answer = AnswerTo(Request(row.rights), row.activation);

    EXPECT_EQ(answer.error, row.error);
    EXPECT_EQ(answer.body, row.body);
    EXPECT_EQ(answer.silent, row.silent);
    EXPECT_EQ(answer.effect.has_value(), row.hasEffect);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ActivationOutcomeTest,
    testing::Values(OutcomeRow{"Success", "{}", {15}, 0, Response(0), false, true},
                    OutcomeRow{"RepeatWhenNotReady", "{}", {13}, 0, Response(1001), false, false},
                    OutcomeRow{"RepeatWhenUnknown", "{}", {99}, 0, Response(1001), false, false},
                    OutcomeRow{"RepeatWithoutRights", "{}", {}, 0, Response(1001), false, false},
                    OutcomeRow{"RepeatOfAReadyRight", R"({"code":1001})", {15}, 0, Response(1001), false, false},
                    OutcomeRow{"SuccessWhenNotReady", R"({"code":0})", {13}, 0, Response(0), false, false},
                    OutcomeRow{"ForcedSuccess", R"({"code":0})", {15}, 0, Response(0), false, true},
                    OutcomeRow{"Refusal", R"({"code":-7,"message":"no"})", {15}, 0, Response(-7, "no"), false, false},
                    OutcomeRow{"Error", R"({"error":-5,"message":"no"})", {15}, -5, "", false, false},
                    OutcomeRow{"NoAnswer", R"({"silent":true})", {15}, 0, Response(0), true, true},
                    OutcomeRow{"EmptyBody", R"({"code":null})", {15}, 0, "", false, false}),
    RowName());

TEST(ActivationAnswerTest, RequestThatIsNoneIsAnError) {
    for (const std::string& request : {std::string(), Request({15}, 0), Request({15}, 3), std::string("\x08")}) {
        const CommandAnswer answer = AnswerTo(request);

        EXPECT_EQ(answer.error, devserver::kErrorBadBody);
        EXPECT_FALSE(answer.effect);
    }
}

TEST(ActivationAnswerTest, ScenarioWithAnInvalidOutcomeIsRefused) {
    Errors errors;

    EXPECT_FALSE(CScenario::FromText(
        R"({"schema":1,"commonConfig":{},"users":[{"id":1,"name":"A","activation":{"code":"no"}}]})", errors));

    EXPECT_THAT(errors, ElementsAre("users[0].activation.code: must be null or a whole number from -2147483648 to "
                                    "2147483647"));
}

/// Ann has a ready right, and two connections.
class ActivationServerTest : public DevServerTest {
protected:
    ActivationServerTest() {
        EXPECT_EQ(Http("PUT", "/v1/users/1/premium", R"({"rights":[{"access":15,"activationType":6}]})").status, 200);
    }

    std::optional<std::string> Activate() {
        const auto reply = first->Request(++session, kCommand, Request({15}));
        return reply && reply->error() == 0 ? std::make_optional(reply->body()) : std::nullopt;
    }

    int ActivationType() {
        return Http("GET", "/v1/scenario").body["users"][0]["premium"]["rights"][0]["activationType"].asInt();
    }

    /// Pushes that were sent before an answer have arrived with it.
    bool HasPush(ChannelClient& client) {
        EXPECT_TRUE(client.Request(++session, kCmdChatEntry));
        return client.Has(channel::Frame::PUSH);
    }

    uint64_t session = 0;
    std::unique_ptr<ChannelClient> first = LoggedIn(1);
    std::unique_ptr<ChannelClient> second = LoggedIn(1);
    std::unique_ptr<ChannelClient> other = LoggedIn(2);
};

TEST_F(ActivationServerTest, SuccessIsPushedToAllConnectionsOfTheUserAlone) {
    EXPECT_EQ(Activate(), Response(0));

    for (ChannelClient* client : {first.get(), second.get()}) {
        const auto push = client->Take(channel::Frame::PUSH);
        ASSERT_TRUE(push);
        EXPECT_EQ(push->command(), kPush);
        EXPECT_EQ(push->body(), std::string("\x08\x00\x10\x00\x18\x0f", 6));
    }
    EXPECT_FALSE(HasPush(*other));
    EXPECT_EQ(ActivationType(), 1);
}

TEST_F(ActivationServerTest, RightIsLimitedInTheNextAnswer) {
    EXPECT_EQ(Activate(), Response(0));

    const auto reply = second->Request(9, 20637, std::string("\x08\x01", 2));

    ASSERT_TRUE(reply);
    GetUiMsgAndPremiumAccessRsp answer;
    ASSERT_TRUE(answer.ParseFromString(reply->body()));
    const AccessData& state = answer.data().ui_data_and_access_data(0).access_data();
    EXPECT_TRUE(state.has_permission());
    EXPECT_EQ(state.activation_type(), LIMITED_TIME_ACTIVATION);
    EXPECT_EQ(state.days_left(), 7);
}

TEST_F(ActivationServerTest, SecondActivationIsARepeatWithoutAPush) {
    EXPECT_EQ(Activate(), Response(0));
    ASSERT_TRUE(first->Take(channel::Frame::PUSH));

    EXPECT_EQ(Activate(), Response(1001));

    EXPECT_FALSE(HasPush(*first));
    EXPECT_EQ(ActivationType(), 1);
}

TEST_F(ActivationServerTest, SecondActivationIsARepeatWhileTheFirstReplyIsDelayed) {
    ASSERT_EQ(Http("PUT", "/v1/faults/20981", R"({"delayMs":200,"times":1})").status, 200);
    first->SendRequest(101, kCommand, Request({15}));

    const auto quick = first->Request(102, kCommand, Request({15}));

    ASSERT_TRUE(quick);
    EXPECT_EQ(quick->body(), Response(1001));
    EXPECT_FALSE(first->Has(channel::Frame::PUSH));
    const auto late = first->Take(channel::Frame::REPLY);
    ASSERT_TRUE(late);
    EXPECT_EQ(late->body(), Response(0));
    EXPECT_TRUE(first->Take(channel::Frame::PUSH));
}

TEST_F(ActivationServerTest, FaultThatChangesTheReplyPreventsTheChange) {
    for (const char* fault : {R"({"error":7})", R"({"bodyHex":""})", R"({"replyCommand":20980})",
                              R"({"frameHex":"00"})", R"({"silent":true})"}) {
        ASSERT_EQ(Http("PUT", "/v1/faults/20981", fault).status, 200);
        first->SendRequest(++session, kCommand, Request({15}));

        EXPECT_FALSE(HasPush(*first)) << fault;
        EXPECT_EQ(ActivationType(), 6) << fault;
    }
    ASSERT_EQ(Http("PUT", "/v1/faults/20981", R"({"drop":true})").status, 200);
    first->SendRequest(++session, kCommand, Request({15}));
    EXPECT_TRUE(first->WaitUntilClosed());
    EXPECT_FALSE(HasPush(*second));
    EXPECT_EQ(ActivationType(), 6);
}

TEST_F(ActivationServerTest, OutcomeIsThatOfTheControlInterface) {
    ASSERT_EQ(Http("PUT", "/v1/users/1/activation", R"({"silent":true})").status, 200);
    first->SendRequest(101, kCommand, Request({15}));
    EXPECT_FALSE(HasPush(*first));
    EXPECT_FALSE(first->Has(channel::Frame::REPLY));
    EXPECT_EQ(ActivationType(), 6);

    ASSERT_EQ(Http("PUT", "/v1/users/1/activation", R"({"error":7})").status, 200);
    EXPECT_EQ(Activate(), std::nullopt);
    EXPECT_EQ(ActivationType(), 6);

    ASSERT_EQ(Http("DELETE", "/v1/users/1/activation").status, 200);
    EXPECT_EQ(Activate(), Response(0));
}

}  // namespace
