// The real client with the mapped module against a server with faults.
#include <csignal>

#include "ClientFixture.h"

using namespace ::testing;

namespace {

class FaultTest : public ClientTest {
protected:
    void SetUp() override { StartAndLogIn(); }

    void NextReply(const std::string& fault) { server->Put("/v1/faults", R"({"20982":)" + fault + "}"); }

    size_t Asked() { return server->Requests(20982).size(); }

    /// The login after a failure is served.
    void ExpectTheNextLoginIsServed() {
        client->Login(502);
        EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({2}); }));
    }
};

struct Refused {
    const char* name;
    const char* fault;
};

class RefusedReplyTest : public FaultTest, public WithParamInterface<Refused> {};

TEST_P(RefusedReplyTest, LeavesTheEntriesOfTheNewLoginClosedAndTellsNobody) {
    NextReply(GetParam().fault);

    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return Asked() == 2 && OpenEntries().empty(); }));
    ExpectTheNextLoginIsServed();
    // for the first answer and for the last
    EXPECT_EQ(CountOf(20300), 2);
}

INSTANTIATE_TEST_SUITE_P(Faults, RefusedReplyTest,
                         Values(Refused{"Error", R"({"error":7,"times":1})"},
                                Refused{"Garbage", R"({"bodyHex":"1a7f","times":1})"},
                                Refused{"AnotherCommand", R"({"replyCommand":20832,"times":1})"},
                                Refused{"NoEnvelope", R"({"frameHex":"ffff","times":1})"},
                                Refused{"HalfAnEnvelope", R"({"frameHex":"08051002","times":1})"},
                                Refused{"Silence", R"({"silent":true,"times":1})"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(FaultTest, ADuplicateReplyIsToldOnce) {
    NextReply(R"({"copies":3,"times":1})");

    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return CountOf(20300) == 2; }));
    ExpectTheNextLoginIsServed();
    EXPECT_EQ(CountOf(20300), 3);
}

TEST_F(FaultTest, ALateReplyOpensTheEntriesWhenItComes) {
    NextReply(R"({"delayMs":2000,"times":1})");

    client->Login(501);
    EXPECT_TRUE(WaitInRealTime([this] { return Asked() == 2; }));
    EXPECT_THAT(OpenEntries(), IsEmpty());

    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({1, 4}); }));
}

TEST_F(FaultTest, AReplyOfTheLastUserThatComesAfterTheNextUsersOneStands) {
    NextReply(R"({"delayMs":2000,"times":1})");
    client->Login(501);
    ASSERT_TRUE(WaitInRealTime([this] { return Asked() == 2; }));

    client->Login(502);

    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({2}); }));
    EXPECT_TRUE(WaitInRealTime([this] { return CountOf(20300) == 3; }));
    // The module accepts answers in their order of arrival and does not compare the user.
    EXPECT_EQ(OpenEntries(), std::set<int>({1, 4}));
}

TEST_F(FaultTest, AConnectionThatIsCutInPlaceOfAReplyComesBackAndTheUserIsStillIn) {
    NextReply(R"({"drop":true,"times":1})");
    client->Login(502);

    EXPECT_TRUE(WaitInRealTime([this] { return Asked() == 2 && CountOf(10650) == 3; }));
    EXPECT_EQ(client->UserId(), 502u);
    EXPECT_THAT(OpenEntries(), IsEmpty());
    ExpectTheNextLoginIsServed();
}

TEST_F(FaultTest, AServerThatStopsForAWhileLosesNothing) {
    const auto process = pid_t(client->Server().ProcessId());

    ASSERT_EQ(kill(process, SIGSTOP), 0);
    client->Login(502);
    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries().empty() || client->UserId() == 0; }));
    ASSERT_EQ(kill(process, SIGCONT), 0);

    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({2}); }));
}

}  // namespace
