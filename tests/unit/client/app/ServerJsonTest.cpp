#include "ServerControl.h"
#include "ServerProcess.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

struct Row {
    const char* name;
    const char* json;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.json;
}

std::string RowName(const TestParamInfo<Row>& info) {
    return info.param.name;
}

class BadEndpointTest : public ScriptedHostTest, public WithParamInterface<Row> {};
class BadStateTest : public ScriptedHostTest, public WithParamInterface<Row> {};
class ServerWordsTest : public ScriptedHostTest {};

}  // namespace

TEST_F(ServerWordsTest, TheFirstLineSaysWhereTheServerListens) {
    ServerEndpoint endpoint;

    ASSERT_TRUE(CServerProcess::ReadEndpoint("{\"channel\":1,\"control\":65535,\"token\":\"ab01\"}\n", endpoint));

    EXPECT_EQ(endpoint.channelPort, 1);
    EXPECT_EQ(endpoint.controlPort, 65535);
    EXPECT_EQ(endpoint.token, QByteArray("ab01"));
}

TEST_P(BadEndpointTest, IsRefusedAndChangesNothing) {
    ServerEndpoint endpoint{7, 8, "kept"};

    EXPECT_FALSE(CServerProcess::ReadEndpoint(GetParam().json, endpoint));

    EXPECT_EQ(endpoint.channelPort, 7);
    EXPECT_EQ(endpoint.controlPort, 8);
    EXPECT_EQ(endpoint.token, QByteArray("kept"));
}

INSTANTIATE_TEST_SUITE_P(Lines, BadEndpointTest,
                         Values(Row{"Empty", ""}, Row{"NoJson", "listening on 4711"}, Row{"List", "[1,2]"},
                                Row{"PortZero", R"({"channel":0,"control":2,"token":"t"})"},
                                Row{"PortTooHigh", R"({"channel":65536,"control":2,"token":"t"})"},
                                Row{"NegativePort", R"({"channel":-1,"control":2,"token":"t"})"},
                                Row{"PortAsText", R"({"channel":"1","control":2,"token":"t"})"},
                                Row{"NoControl", R"({"channel":1,"token":"t"})"},
                                Row{"NoToken", R"({"channel":1,"control":2})"},
                                Row{"TokenAsNumber", R"({"channel":1,"control":2,"token":3})"},
                                Row{"TrailingText", R"({"channel":1,"control":2,"token":"t"} x)"},
                                Row{"KeyTwice", R"({"channel":1,"channel":1,"control":2,"token":"t"})"}),
                         RowName);

TEST_F(ServerWordsTest, TheStateNamesTheChannelAndTheUsers) {
    ServerState state;

    ASSERT_TRUE(CServerControl::ReadState(
        R"({"channel":4711,"users":[{"id":18446744073709551615,"name":"Ada"},{"id":2,"name":""}],"more":true})",
        state));

    EXPECT_EQ(state.channelPort, 4711);
    EXPECT_EQ(state.httpPort, 0);
    ASSERT_THAT(state.users, SizeIs(2));
    EXPECT_EQ(state.users[0].id, 18446744073709551615ull);
    EXPECT_EQ(state.users[0].name, QStringLiteral("Ada"));
}

TEST_F(ServerWordsTest, TheStateNamesThePortOfAdsWhereThereIsOne) {
    ServerState state;

    ASSERT_TRUE(CServerControl::ReadState(R"({"channel":4711,"http":4712,"users":[]})", state));

    EXPECT_EQ(state.httpPort, 4712);
}

TEST_P(BadStateTest, IsRefusedAndChangesNothing) {
    ServerState state{7, 8, {{1, QStringLiteral("kept")}}};

    EXPECT_FALSE(CServerControl::ReadState(GetParam().json, state));

    EXPECT_EQ(state.channelPort, 7);
    EXPECT_EQ(state.httpPort, 8);
    EXPECT_THAT(state.users, SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(
    Answers, BadStateTest,
    Values(Row{"Empty", ""}, Row{"Html", "<html></html>"}, Row{"Text", "\"state\""},
           Row{"NoChannel", R"({"users":[]})"}, Row{"ChannelAsText", R"({"channel":"1","users":[]})"},
           Row{"ChannelZero", R"({"channel":0,"users":[]})"}, Row{"ChannelTooHigh", R"({"channel":65536,"users":[]})"},
           Row{"HttpZero", R"({"channel":1,"http":0,"users":[]})"},
           Row{"HttpTooHigh", R"({"channel":1,"http":65536,"users":[]})"},
           Row{"HttpAsText", R"({"channel":1,"http":"1","users":[]})"}, Row{"NoUsers", R"({"channel":1})"},
           Row{"UsersAsObject", R"({"channel":1,"users":{}})"}, Row{"UserAsNumber", R"({"channel":1,"users":[5]})"},
           Row{"UserWithoutName", R"({"channel":1,"users":[{"id":1}]})"},
           Row{"NegativeId", R"({"channel":1,"users":[{"id":-1,"name":"x"}]})"},
           Row{"IdAsText", R"({"channel":1,"users":[{"id":"1","name":"x"}]})"}),
    RowName);
