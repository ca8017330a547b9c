#include "Faults.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>

#include "DevServerTest.h"
#include "RowName.h"
#include "support/RealTime.h"

namespace {

using channel::Frame;

struct FaultRow {
    const char* name;
    const char* fault;
    int32_t error;
    uint32_t command;
    const char* body;  // null for the scenario's
};

class FaultTest : public DevServerTest, public testing::WithParamInterface<FaultRow> {};

TEST_P(FaultTest, ChangesTheReplyOnceAndWearsOff) {
    const FaultRow& row = GetParam();
    const auto client = LoggedIn(1);
    const auto sound = client->Request(1, kCmdChatEntry);
    ASSERT_EQ(Http("PUT", "/v1/faults", row.fault).status, 200);

    const auto faulty = client->Request(2, kCmdChatEntry);
    const auto soundAgain = client->Request(3, kCmdChatEntry);

    ASSERT_TRUE(sound && faulty && soundAgain);
    EXPECT_EQ(faulty->session(), 2u);
    EXPECT_EQ(faulty->error(), row.error);
    EXPECT_EQ(faulty->command(), row.command);
    EXPECT_EQ(faulty->body(), row.body ? row.body : sound->body());
    EXPECT_EQ(soundAgain->error(), 0);
    EXPECT_EQ(soundAgain->command(), kCmdChatEntry);
    EXPECT_EQ(soundAgain->body(), sound->body());
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FaultTest,
    testing::Values(FaultRow{"Error", R"({"20982":{"error":7,"times":1}})", 7, 20982, ""},
                    FaultRow{"NegativeError", R"({"20982":{"error":-4,"times":1}})", -4, 20982, ""},
                    FaultRow{"Body", R"({"20982":{"bodyHex":"ff41","times":1}})", 0, 20982, "\xff\x41"},
                    FaultRow{"WrongCommand", R"({"20982":{"replyCommand":1,"times":1}})", 0, 1, nullptr},
                    FaultRow{"ErrorWithBodyOfAnotherCommand",
                             R"({"20982":{"error":5,"bodyHex":"41","replyCommand":2,"times":1}})", 5, 2, "A"}),
    RowName());

class FaultsTest : public DevServerTest {};

TEST_F(FaultsTest, TheFaultOfOneCommandIsSetAndTakenAwayWithoutTheOthers) {
    const auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"error":7,"times":2},"20637":{"error":8}})").status, 200);
    ASSERT_EQ(client->Request(1, kCmdChatEntry)->error(), 7);

    ASSERT_EQ(Http("PUT", "/v1/faults/20637", R"({"error":9,"times":1})").status, 200);
    EXPECT_EQ(client->Request(2, 20637)->error(), 9);
    EXPECT_EQ(client->Request(3, 20637)->error(), 0);
    // one of the two times is left
    EXPECT_EQ(client->Request(4, kCmdChatEntry)->error(), 7);
    EXPECT_EQ(client->Request(5, kCmdChatEntry)->error(), 0);

    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"error":7},"20637":{"error":8}})").status, 200);
    ASSERT_EQ(Http("DELETE", "/v1/faults/20982", "").status, 200);
    EXPECT_EQ(client->Request(6, kCmdChatEntry)->error(), 0);
    EXPECT_EQ(client->Request(7, 20637)->error(), 8);
    EXPECT_EQ(Http("DELETE", "/v1/faults/20982", "").status, 200);
}

TEST_F(FaultsTest, ActiveFaultsAreReadWithTheUsesThatAreLeft) {
    const auto client = LoggedIn(1);
    EXPECT_EQ(Http("GET", "/v1/faults").body, FromJson("{}"));
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"error":7,"times":2},"20637":{"bodyHex":"ff"}})").status, 200);

    client->Request(1, kCmdChatEntry);
    EXPECT_EQ(Http("GET", "/v1/faults").body, FromJson(R"({"20982":{"error":7,"times":1},"20637":{"bodyHex":"ff"}})"));

    client->Request(2, kCmdChatEntry);
    EXPECT_EQ(Http("GET", "/v1/faults").body, FromJson(R"({"20637":{"bodyHex":"ff"}})"));
}

TEST_F(FaultsTest, AFaultOfNoCommandAndAWrongFaultAreRefused) {
    for (const char* path : {"/v1/faults/0", "/v1/faults/x", "/v1/faults/020637", "/v1/faults/4294967296"}) {
        EXPECT_EQ(Http("PUT", path, R"({"error":7})").status, 404) << path;
        EXPECT_EQ(Http("DELETE", path, "").status, 404) << path;
    }
    EXPECT_EQ(Http("PUT", "/v1/faults/20637", R"({"eror":7})").status, 400);
    EXPECT_EQ(Http("PUT", "/v1/faults/20637", "").status, 400);
    const auto client = LoggedIn(1);
    EXPECT_EQ(client->Request(1, 20637)->error(), 0);
}

TEST_F(FaultsTest, DelayedReplyComesAfterItsTimeAndAfterALaterOne) {
    const auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"delayMs":500,"times":1}})").status, 200);

    QElapsedTimer elapsed;
    elapsed.start();
    client->SendRequest(1, kCmdChatEntry);
    client->SendRequest(2, kCmdChatEntry);
    const auto first = client->Take(Frame::REPLY);
    const auto second = client->Take(Frame::REPLY);

    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->session(), 2u);
    EXPECT_EQ(second->session(), 1u);
    EXPECT_GE(elapsed.elapsed(), 500);
}

TEST_F(FaultsTest, SilentCommandGetsNoReply) {
    const auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"silent":true,"times":2}})").status, 200);

    client->SendRequest(1, kCmdChatEntry);
    client->SendRequest(2, kCmdChatEntry);
    const auto reply = client->Request(3, kCmdChatEntry);

    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->session(), 3u);
    EXPECT_FALSE(client->Has(Frame::REPLY));
}

TEST_F(FaultsTest, FrameTakesThePlaceOfTheWholeEnvelope) {
    const auto client = LoggedIn(1);
    Frame push;
    push.set_kind(Frame::PUSH);
    push.set_command(7);
    // the bytes of that push
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"frameHex":"08061807","times":1}})").status, 200);
    ASSERT_EQ(push.SerializeAsString(), "\x08\x06\x18\x07");

    client->SendRequest(1, kCmdChatEntry);

    const auto got = client->Take(Frame::PUSH);
    ASSERT_TRUE(got);
    EXPECT_EQ(got->command(), 7u);
    EXPECT_FALSE(client->Has(Frame::REPLY));
}

TEST_F(FaultsTest, CopiesAreTheSameReplyOverAgain) {
    const auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"copies":3,"times":1}})").status, 200);

    client->SendRequest(1, kCmdChatEntry);
    const auto after = client->Request(2, kCmdChatEntry);

    ASSERT_TRUE(after);
    EXPECT_EQ(after->session(), 1u);
    for (const uint64_t session : {1u, 1u, 2u}) {
        const auto reply = client->Take(Frame::REPLY);
        ASSERT_TRUE(reply);
        EXPECT_EQ(reply->session(), session);
        EXPECT_EQ(reply->body(), after->body());
    }
    EXPECT_FALSE(client->Has(Frame::REPLY));
}

TEST_F(FaultsTest, DropCutsTheConnectionInPlaceOfAReply) {
    const auto client = LoggedIn(1);
    const auto other = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"drop":true,"times":1}})").status, 200);

    client->SendRequest(1, kCmdChatEntry);

    EXPECT_TRUE(client->WaitUntilClosed());
    EXPECT_FALSE(client->Has(Frame::REPLY));
    EXPECT_TRUE(other->Request(1, kCmdChatEntry));
}

TEST_F(FaultsTest, DelayedDropOfAConnectionThatIsGoneDoesNothing) {
    auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"drop":true,"delayMs":30,"times":1}})").status, 200);
    client->SendRequest(1, kCmdChatEntry);
    ASSERT_TRUE(WaitInRealTime([this] { return Http("GET", "/v1/received").body["received"].size() == 2; }));
    client.reset();
    ASSERT_TRUE(WaitInRealTime([this] { return Http("GET", "/v1/state").body["connections"].empty(); }));

    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"delayMs":60,"times":1}})").status, 200);
    const auto next = LoggedIn(1);

    // when this answer arrives, the other reply's time has passed
    EXPECT_TRUE(next->Request(1, kCmdChatEntry));
}

TEST_F(FaultsTest, FaultOfOneCommandLeavesAnotherAlone) {
    const auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"4711":{"error":7}})").status, 200);

    const auto other = client->Request(1, kCmdChatEntry);
    const auto faulty = client->Request(2, 4711);

    ASSERT_TRUE(other && faulty);
    EXPECT_EQ(other->error(), 0);
    EXPECT_EQ(faulty->error(), 7);
}

TEST_F(FaultsTest, LastsForEverWithoutTimesAndIsClearedByAnEmptyObject) {
    const auto client = LoggedIn(1);
    ASSERT_EQ(Http("PUT", "/v1/faults", R"({"20982":{"error":7}})").status, 200);
    for (uint64_t session = 1; session <= 3; ++session) {
        const auto reply = client->Request(session, kCmdChatEntry);
        ASSERT_TRUE(reply);
        EXPECT_EQ(reply->error(), 7);
    }

    ASSERT_EQ(Http("PUT", "/v1/faults", "{}").status, 200);

    const auto reply = client->Request(4, kCmdChatEntry);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->error(), 0);
}

struct BadFaultRow {
    const char* name;
    const char* text;
    const char* error;
};

class BadFaultTest : public testing::TestWithParam<BadFaultRow> {};

TEST_P(BadFaultTest, IsRefusedByKeyAndReason) {
    devserver::Errors errors;

    EXPECT_FALSE(devserver::ReadReplyFaults(GetParam().text, errors));

    EXPECT_THAT(errors, testing::ElementsAre(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadFaultTest,
    testing::Values(
        BadFaultRow{"NoObject", "[]", "must be an object"},
        BadFaultRow{"KeyNoNumber", R"({"chat":{"error":1}})", "chat: the key must be a command's number"},
        BadFaultRow{"KeyWithZeros", R"({"020982":{"error":1}})", "020982: the key must be a command's number"},
        BadFaultRow{"UnknownKey", R"({"1":{"error":1,"eror":1}})", "1.eror: unknown key"},
        BadFaultRow{"NoEffect", R"({"1":{"times":3}})", "1: must hold a field other than times"},
        BadFaultRow{"DelayTooLong", R"({"1":{"delayMs":600001}})",
                    "1.delayMs: must be a whole number from 0 to 600000"},
        BadFaultRow{"OddHex", R"({"1":{"bodyHex":"abc"}})", "1.bodyHex: must be an even number of hex digits"},
        BadFaultRow{"NoHex", R"({"1":{"bodyHex":"zz"}})", "1.bodyHex: must be an even number of hex digits"},
        BadFaultRow{"SilentNoBool", R"({"1":{"silent":1}})", "1.silent: must be true or false"},
        BadFaultRow{"FrameNoHex", R"({"1":{"frameHex":"x"}})", "1.frameHex: must be an even number of hex digits"},
        BadFaultRow{"NoCopies", R"({"1":{"copies":0}})", "1.copies: must be a whole number from 1 to 1000"},
        BadFaultRow{"TooManyCopies", R"({"1":{"copies":1001}})", "1.copies: must be a whole number from 1 to 1000"},
        BadFaultRow{"TimesZero", R"({"1":{"error":1,"times":0}})",
                    "1.times: must be a whole number from 1 to 1000000"}),
    RowName());

}  // namespace
