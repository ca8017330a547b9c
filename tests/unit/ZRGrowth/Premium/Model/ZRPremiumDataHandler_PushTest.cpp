// A push reports changed rights: the handler sends a request after the delay that the push names.
#include "Premium/PremiumTest.h"
#include "WireBytes.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const std::string kAllRights = Bytes({0x08, 0x01});

class PremiumPushTest : public PremiumTest {
protected:
    void Push(uint32_t delaySeconds, std::optional<bool> needAll, const std::vector<int>& list = {}) {
        web_premium_access::PremiumChangePush push;
        push.set_delay_seconds(delaySeconds);
        if (needAll) {
            push.set_need_all_access(*needAll);
        }
        for (const int right : list) {
            push.add_access_list(right);
        }
        channel.Push(kPush, push);
    }

    std::vector<std::string> SentBodies() {
        std::vector<std::string> bodies;
        for (const SentCommand& command : channel.Sent()) {
            EXPECT_EQ(command.cmd, kRequest);
            bodies.push_back(command.body);
        }
        return bodies;
    }
};

// Refusals

struct BadPush {
    const char* name;
    CSProtoError error;
    std::string bytes;
    const char* line;
};

class BadPremiumPushTest : public PremiumPushTest, public WithParamInterface<BadPush> {};

TEST_P(BadPremiumPushTest, IsLoggedAndSchedulesNothing) {
    TableHolds({13});

    channel.PushWith(GetParam().error, CSProtoData{kPush, GetParam().bytes});
    time.Advance(30min);

    EXPECT_THAT(log.Lines(), ElementsAre(Error(std::string("[Premium] ") + GetParam().line)));
    EXPECT_THAT(poster.Delays(), IsEmpty());
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

INSTANTIATE_TEST_SUITE_P(
    Pushes, BadPremiumPushTest,
    Values(BadPush{"ChannelErrorWithAGoodBody", CSProtoError(-3), Bytes({0x08, 0x00, 0x10, 0x01}),
                   "Premium Change Push Failed, Error = -3, Data Empty = false"},
           BadPush{"ChannelErrorWithoutABody", CSProtoError(9), "",
                   "Premium Change Push Failed, Error = 9, Data Empty = true"},
           BadPush{"AllFieldsAbsent", kCSProtoOk, web_premium_access::PremiumChangePush().SerializeAsString(),
                   "Premium Change Push Failed, Error = 0, Data Empty = true"},
           BadPush{"Truncated", kCSProtoOk, Bytes({0x08}), "Parse Push Failed, Invalid Protobuf Data"},
           BadPush{"GarbageBehindAGoodPush", kCSProtoOk, Bytes({0x08, 0x00, 0x10, 0x01, 0x07}),
                   "Parse Push Failed, Invalid Protobuf Data"},
           BadPush{"NoDelay", kCSProtoOk, Bytes({0x10, 0x01}),
                   "Premium Change Push Received But No Delay Field, Ignored"},
           BadPush{"DelayOfAForeignWireType", kCSProtoOk, Bytes({0x0D, 1, 0, 0, 0, 0x10, 0x01}),
                   "Premium Change Push Received But No Delay Field, Ignored"}),
    [](const auto& row) { return row.param.name; });

// The request

TEST_F(PremiumPushTest, APushForAllRightsAsksForAllAndIgnoresItsList) {
    Push(0, true, {13, 14});
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(kAllRights));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Premium Change Push Received, Need All Access = true, "
                                              "Custom Access Count = 2, Will Refresh After 0 Ms"),
                                         Info("[Premium] Send Request For All Premium Access, Session = " +
                                              std::to_string(channel.LastSession()) + ", Server Push = true")));
}

TEST_F(PremiumPushTest, APushForAListAsksForTheListInItsOrder) {
    Push(0, false, {14, 13, 14, -1});
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(Bytes({0x08, 0x00, 0x10, 0x0E, 0x10, 0x0D, 0x10, 0x0E, 0x10, 0xFF, 0xFF, 0xFF,
                                                 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01})));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Premium] Premium Change Push Received, Need All Access = false, "
                                 "Custom Access Count = 4, Will Refresh After 0 Ms"),
                            Info("[Premium] Send Request For Custom Premium Access, Count = 4, Session = " +
                                 std::to_string(channel.LastSession()) + ", Server Push = true")));
}

TEST_F(PremiumPushTest, APushThatDoesNotSayWhetherAllAreNeededIsForItsList) {
    Push(0, std::nullopt, {13});
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(Bytes({0x08, 0x00, 0x10, 0x0D})));
    EXPECT_THAT(log.Lines()[0], Info("[Premium] Premium Change Push Received, Need All Access = false, "
                                     "Custom Access Count = 1, Will Refresh After 0 Ms"));
}

TEST_F(PremiumPushTest, APushForNoRightsAtAllAsksForAnEmptyList) {
    Push(0, false);
    Push(0, std::nullopt);
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(Bytes({0x08, 0x00}), Bytes({0x08, 0x00})));
}

TEST_F(PremiumPushTest, APackedListIsReadAsWell) {
    channel.Push(kPush, Bytes({0x08, 0x00, 0x1A, 0x03, 0x0D, 0xE8, 0x07}));
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(Bytes({0x08, 0x00, 0x10, 0x0D, 0x10, 0xE8, 0x07})));
}

TEST_F(PremiumPushTest, TheCommandOfAPushIsNotLookedAt) {
    channel.PushWith(kPush, kCSProtoOk, CSProtoData{1, Bytes({0x08, 0x00, 0x10, 0x01})});
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(kAllRights));
}

TEST_F(PremiumPushTest, TheAnswerToAPushedRequestIsToldAsAChange) {
    for (const bool needAll : {true, false}) {
        Push(0, needAll, {13});
        time.Settle();

        channel.Reply(channel.LastSession(), kRequest, Answer({13}));
    }

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged), ::Message(kChanged)));
    store.Forget();
}

TEST_F(PremiumPushTest, APushItselfTellsNobodyAndChangesNothing) {
    TableHolds({13});

    Push(60, true);

    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
}

// When

TEST_F(PremiumPushTest, WithoutADelayTheRequestGoesOutLaterAndNotWithinThePush) {
    Push(0, true);

    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(poster.Delays(), ElementsAre(0));

    time.Settle();
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(PremiumPushTest, TheRequestGoesOutWhenTheDelayIsOver) {
    Push(90, true);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Premium Change Push Received, Need All Access = true, "
                                              "Custom Access Count = 0, Will Refresh After 90000 Ms")));

    time.Advance(89'999ms);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Advance(1ms);
    EXPECT_THAT(SentBodies(), ElementsAre(kAllRights));
    time.Advance(30min);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(PremiumPushTest, ADelayWrapsAroundIn32BitsOfMilliseconds) {
    Push(4294968, true);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Premium Change Push Received, Need All Access = true, "
                                              "Custom Access Count = 0, Will Refresh After 704 Ms")));
    EXPECT_THAT(poster.Delays(), ElementsAre(704));
    time.Advance(703ms);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Advance(1ms);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(PremiumPushTest, TheLongestDelayOfAllIsWaitedFor) {
    Push(2147483, false, {13});

    EXPECT_THAT(log.Lines(), Contains(Info(EndsWith("Will Refresh After 2147483000 Ms"))));
    EXPECT_THAT(poster.Delays(), ElementsAre(2147483000));
    const auto isPushed = [](const SentCommand& command) { return command.body == Bytes({0x08, 0x00, 0x10, 0x0D}); };
    time.Advance(2'147'482'999ms);
    EXPECT_THAT(channel.Sent(), Each(Not(Truly(isPushed))));  // the hourly ones
    time.Advance(1ms);
    EXPECT_TRUE(isPushed(channel.Sent().back()));
}

struct WrappedDelay {
    uint32_t seconds;
    const char* logged;
};

class NegativePremiumPushDelayTest : public PremiumPushTest, public WithParamInterface<WrappedDelay> {};

TEST_P(NegativePremiumPushDelayTest, IsLoggedUnsignedAndRunsAtOnceButLater) {
    Push(GetParam().seconds, true);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info(EndsWith(std::string("Will Refresh After ") + GetParam().logged + " Ms"))));
    EXPECT_THAT(poster.Delays(), ElementsAre(0));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Settle();
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Seconds, NegativePremiumPushDelayTest,
                         Values(WrappedDelay{2147484, "2147484000"}, WrappedDelay{4294967, "4294967000"},
                                WrappedDelay{4294967295u, "4294966296"}),
                         [](const auto& row) { return "Of" + std::to_string(row.param.seconds); });

TEST_F(PremiumPushTest, EachPushSchedulesARequestOfItsOwn) {
    Push(10, true);
    Push(10, false, {13});
    Push(5, false, {14});
    Push(10, true);

    time.Advance(5s);
    EXPECT_THAT(SentBodies(), ElementsAre(Bytes({0x08, 0x00, 0x10, 0x0E})));
    time.Advance(5s);
    EXPECT_THAT(SentBodies(),
                ElementsAre(Bytes({0x08, 0x00, 0x10, 0x0E}), kAllRights, Bytes({0x08, 0x00, 0x10, 0x0D}), kAllRights));
}

TEST_F(PremiumPushTest, AScheduledRequestGoesOutAfterALogoutToo) {
    Push(10, true);
    manager->OnLogout();
    account.Set(0);

    time.Advance(10s);
    EXPECT_THAT(SentBodies(), ElementsAre(kAllRights));

    channel.Reply(channel.LastSession(), kRequest, Answer({13}));
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{0u, kSavedKey, SavedBytes(Table({13}))}));
}

TEST_F(PremiumPushTest, APushIsHandledWithNobodyLoggedIn) {
    manager->OnLogout();
    account.Set(0);

    Push(0, true);
    time.Settle();

    EXPECT_THAT(SentBodies(), ElementsAre(kAllRights));
}

}  // namespace
