#include <gmock/gmock.h>

#include <QDateTime>
#include <set>

#include "DevServerTest.h"
#include "chat.pb.h"
#include "support/RealTime.h"

namespace {

using channel::Frame;
using testing::ElementsAre;

class ChannelServerTest : public DevServerTest {};

TEST_F(ChannelServerTest, SendsTheCommonConfigurationRightAfterAccepting) {
    ChannelClient client(server.ChannelPort(), kToken);

    const auto config = client.Take(Frame::CONFIG);

    ASSERT_TRUE(config);
    EXPECT_EQ(config->body(), R"({"ai_chat":{"url_string":"https://chat.example/"}})");
}

TEST_F(ChannelServerTest, WrongTokenIsClosedByPolicyAndGetsNothing) {
    for (const char* token : {"", "test-tokem", "test-token-and-more"}) {
        ChannelClient client(server.ChannelPort(), token);

        EXPECT_TRUE(client.WaitUntilClosed());
        EXPECT_EQ(client.CloseCode(), 1008) << token;
        EXPECT_FALSE(client.Has(Frame::CONFIG)) << token;
    }
}

TEST_F(ChannelServerTest, ForeignOriginIsRefusedBeforeTheHandshakeEnds) {
    for (const char* origin : {"https://evil.example", "http://localhost.evil.example", "http://127.0.0.1@evil.example",
                               "null", "file://localhost"}) {
        ChannelClient client(server.ChannelPort(), kToken, QString::fromLatin1(origin));

        EXPECT_TRUE(client.WaitUntilClosed()) << origin;
        EXPECT_FALSE(client.WasConnected()) << origin;
    }
}

TEST_F(ChannelServerTest, LoopbackOriginIsTakenIn) {
    for (const char* origin : {"http://127.0.0.1:8080", "https://localhost"}) {
        ChannelClient client(server.ChannelPort(), kToken, QString::fromLatin1(origin));

        EXPECT_TRUE(client.Take(Frame::CONFIG)) << origin;
    }
}

TEST_F(ChannelServerTest, LoginAnswersWithWhatTheScenarioKnowsOfTheUser) {
    const auto client = Connected();

    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const auto answer = client->Login(1);
    const qint64 after = QDateTime::currentMSecsSinceEpoch();

    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->accepted());
    EXPECT_EQ(answer->user_id(), 1u);
    EXPECT_THAT(answer->attributed_market(), ElementsAre(2, 5));
    EXPECT_GE(answer->server_time_ms(), before);
    EXPECT_LE(answer->server_time_ms(), after);
}

TEST_F(ChannelServerTest, SessionIdsDifferAndUseTheUpperHalf) {
    const auto client = Connected();
    std::set<uint64_t> ids;
    uint64_t bits = 0;

    for (int i = 0; i < 16; ++i) {
        const auto answer = client->Login(1);
        ASSERT_TRUE(answer);
        ids.insert(answer->session_id());
        bits |= answer->session_id();
    }

    EXPECT_EQ(ids.size(), 16u);
    EXPECT_EQ(ids.count(0), 0u);
    EXPECT_NE(bits >> 32, 0u);
}

TEST_F(ChannelServerTest, UnknownUserIsRefused) {
    const auto client = Connected();

    const auto answer = client->Login(77);

    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->accepted());
    EXPECT_EQ(answer->reason(), "unknown user");
    EXPECT_FALSE(answer->has_session_id());
}

TEST_F(ChannelServerTest, RefusedLoginTellsTheScenariosReasonAndLeavesNobodyLoggedIn) {
    const auto client = LoggedIn(1);

    const auto answer = client->Login(3);

    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->accepted());
    EXPECT_EQ(answer->reason(), "closed account");
    const auto reply = client->Request(5, kCmdChatEntry);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->error(), 1);
}

TEST_F(ChannelServerTest, ChatEntriesAreAnsweredFromTheScenario) {
    const auto client = LoggedIn(1);

    const auto reply = client->Request(0xFFFFFFFFFFFFFFFFu, kCmdChatEntry);

    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->session(), 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(reply->command(), kCmdChatEntry);
    EXPECT_EQ(reply->error(), 0);
    chat::GetChatEntryRsp answer;
    ASSERT_TRUE(answer.ParseFromString(reply->body()));
    EXPECT_EQ(answer.result_code(), 3);
    EXPECT_EQ(answer.result_message(), "fine");
    ASSERT_EQ(answer.data().entry_list_size(), 1);
    const chat::ChatEntry& entry = answer.data().entry_list(0);
    EXPECT_EQ(entry.scene(), 4u);
    EXPECT_TRUE(entry.is_all_open());
    ASSERT_EQ(entry.stock_open_details_size(), 1);
    EXPECT_EQ(entry.stock_open_details(0).detail_type(), 1u);
    EXPECT_TRUE(entry.stock_open_details(0).is_open());
    EXPECT_THAT(entry.stock_open_details(0).id_list(), ElementsAre(7u, 8u));
}

TEST_F(ChannelServerTest, UserWithoutAiChatGetsAnAnswerWithoutData) {
    const auto client = LoggedIn(2);

    const auto reply = client->Request(1, kCmdChatEntry);

    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->error(), 0);
    chat::GetChatEntryRsp answer;
    ASSERT_TRUE(answer.ParseFromString(reply->body()));
    EXPECT_FALSE(answer.has_data());
}

TEST_F(ChannelServerTest, RequestBeforeLoginAndAfterLogoutIsRefused) {
    const auto client = Connected();
    const auto before = client->Request(1, kCmdChatEntry);
    ASSERT_TRUE(client->Login(1));
    Frame logout;
    logout.set_kind(Frame::LOGOUT);
    client->Send(logout);
    const auto after = client->Request(2, kCmdChatEntry);

    for (const auto& reply : {before, after}) {
        ASSERT_TRUE(reply);
        EXPECT_EQ(reply->error(), 1);
        EXPECT_EQ(reply->command(), kCmdChatEntry);
        EXPECT_EQ(reply->body(), "");
    }
}

TEST_F(ChannelServerTest, UnknownCommandIsRefused) {
    const auto reply = LoggedIn(1)->Request(9, 4711);

    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->error(), 2);
    EXPECT_EQ(reply->session(), 9u);
    EXPECT_EQ(reply->command(), 4711u);
}

TEST_F(ChannelServerTest, BodyThatIsNoMessageIsRefused) {
    const auto reply = LoggedIn(1)->Request(9, kCmdChatEntry, "\xff");

    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->error(), 3);
}

TEST_F(ChannelServerTest, WhatIsNoFrameOfAClientIsDroppedAndTheConnectionKept) {
    const auto client = LoggedIn(1);
    client->SendBytes("\xff\xff\xff");
    client->SendBytes("");
    client->SendBytes("\x08\x63");  // kind 99
    client->SendText(QStringLiteral("hello"));
    for (const Frame::Kind kind : {Frame::LOGIN_ANSWER, Frame::REPLY, Frame::PUSH, Frame::CONFIG, Frame::CLOCK}) {
        Frame frame;
        frame.set_kind(kind);
        client->Send(frame);
    }

    const auto reply = client->Request(8, kCmdChatEntry);

    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->session(), 8u);
    EXPECT_EQ(reply->error(), 0);
}

TEST_F(ChannelServerTest, FrameOfTheGreatestSizeIsTaken) {
    const auto client = LoggedIn(1);
    Frame frame;
    frame.set_kind(Frame::REQUEST);
    frame.set_session(1);
    frame.set_command(4711);
    frame.set_body(std::string(devserver::CChannelServer::kMaxFrameBytes - 100, 'x'));
    client->Send(frame);

    EXPECT_TRUE(client->Take(Frame::REPLY));
}

TEST_F(ChannelServerTest, OversizeFrameEndsTheConnection) {
    const auto client = Connected();

    client->SendBytes(std::string(devserver::CChannelServer::kMaxFrameBytes + 1, 'x'));

    EXPECT_TRUE(client->WaitUntilClosed());
    EXPECT_EQ(client->CloseCode(), 1009);
}

TEST_F(ChannelServerTest, PushesReachTheLoggedInAndTheNamedUserAlone) {
    const auto ann = LoggedIn(1);
    const auto annAgain = LoggedIn(1);
    const auto bob = LoggedIn(2);
    const auto nobody = Connected();

    EXPECT_EQ(Http("POST", "/v1/push", R"({"command":20837,"bodyHex":"00fF"})").body["sent"].asInt(), 3);
    EXPECT_EQ(Http("POST", "/v1/push", R"({"user":1,"command":20145,"bodyHex":""})").body["sent"].asInt(), 2);

    for (ChannelClient* client : {ann.get(), annAgain.get()}) {
        const auto first = client->Take(Frame::PUSH);
        const auto second = client->Take(Frame::PUSH);
        ASSERT_TRUE(first && second);
        EXPECT_EQ(first->command(), 20837u);
        EXPECT_EQ(first->body(), std::string("\0\xff", 2));
        EXPECT_EQ(second->command(), 20145u);
    }
    ASSERT_TRUE(bob->Take(Frame::PUSH));
    // Earlier frames have arrived with the answer.
    ASSERT_TRUE(bob->Request(1, kCmdChatEntry));
    ASSERT_TRUE(nobody->Request(1, kCmdChatEntry));
    EXPECT_FALSE(bob->Has(Frame::PUSH));
    EXPECT_FALSE(nobody->Has(Frame::PUSH));
}

TEST_F(ChannelServerTest, MovedClockIsToldToAllAndHoldsForLogins) {
    const auto client = Connected();
    constexpr int64_t offset = -3 * 86'400'000;

    const int64_t before = QDateTime::currentMSecsSinceEpoch() + offset;
    ASSERT_EQ(Http("PUT", "/v1/clock", R"({"offsetMs":-259200000})").status, 200);
    const auto clock = client->Take(Frame::CLOCK);
    const auto login = client->Login(1);
    const int64_t after = QDateTime::currentMSecsSinceEpoch() + offset;

    ASSERT_TRUE(clock && login);
    for (const int64_t time : {int64_t(clock->server_time_ms()), int64_t(login->server_time_ms())}) {
        EXPECT_GE(time, before);
        EXPECT_LE(time, after);
    }
    EXPECT_EQ(Http("GET", "/v1/state").body["clockOffsetMs"].asInt64(), offset);
}

TEST_F(ChannelServerTest, DropCutsTheNamedUserAndThenEverybody) {
    const auto ann = LoggedIn(1);
    const auto bob = LoggedIn(2);

    EXPECT_EQ(Http("POST", "/v1/drop", R"({"user":1})").body["dropped"].asInt(), 1);
    EXPECT_TRUE(ann->WaitUntilClosed());
    ASSERT_TRUE(bob->Request(1, kCmdChatEntry));

    EXPECT_EQ(Http("POST", "/v1/drop", "{}").body["dropped"].asInt(), 1);
    EXPECT_TRUE(bob->WaitUntilClosed());
    EXPECT_EQ(Http("GET", "/v1/state").body["connections"].size(), 0u);
}

TEST_F(ChannelServerTest, UserWhoLeftTheScenarioIsAsGoodAsLoggedOut) {
    const auto client = LoggedIn(1);

    ASSERT_EQ(Http("PUT", "/v1/scenario", R"({"schema":1,"users":[],"commonConfig":{}})").status, 200);

    const auto reply = client->Request(1, kCmdChatEntry);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->error(), 1);
}

}  // namespace
