// The VIP status and its number: what answers and pushes make of them.
#include "Vip/Model/ZRVipDataHandler.h"

#include <optional>

#include "Vip/VipStatusTest.h"
#include "WireBytes.h"
#include "core/message_dispatch.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

constexpr uint32_t kRequest = 20831;
constexpr uint32_t kPush = 20832;
constexpr unsigned int kChanged = 80052;

class VipDataHandlerTest : public ScriptedHostTest {
protected:
    VipDataHandlerTest() { log.Forget(); }

    void ServerAnswers(const vip_base_service::GetAppEntryMessageRsp& answer) {
        handler.RequestVipStatus();
        channel.Reply(channel.LastSession(), kRequest, answer);
    }

    void ServerAnswersInFull() {
        ServerAnswers(FullAnswer());
        bus.Forget();
        log.Forget();
        channel.Forget();
    }

    void ServerPushes(uint32_t windowSeconds) {
        vip_base_service::UserVipStateChangePush push;
        push.set_refresh_window_seconds(windowSeconds);
        channel.Push(kPush, push);
    }

    void ExpectFullStatusAndSilence() {
        EXPECT_TRUE(handler.HasVipQualification());
        EXPECT_EQ(handler.GetVipGrade(), 3);
        EXPECT_EQ(handler.GetVipState(), 1);
        EXPECT_EQ(handler.GetNewVipState(), 1);
        EXPECT_TRUE(handler.IsNewVipSystem());
        EXPECT_EQ(handler.GetVipEngineStatus(), 1);
        EXPECT_THAT(bus.Sent(), IsEmpty());
    }

    void ExpectDefaults() {
        EXPECT_FALSE(handler.HasVipQualification());
        EXPECT_EQ(handler.GetVipGrade(), 0);
        EXPECT_EQ(handler.GetVipState(), 0);
        EXPECT_EQ(handler.GetNewVipState(), 0);
        EXPECT_FALSE(handler.IsNewVipSystem());
        EXPECT_EQ(handler.GetVipEngineStatus(), -1);
    }

    CZRVipDataHandler handler{nullptr};
};

// Construction

TEST_F(ScriptedHostTest, AVipHandlerBindsItsPushAndStartsWithTheDefaultsWithoutClearing) {
    const CZRVipDataHandler handler(nullptr);

    EXPECT_THAT(channel.BoundCommands(), ElementsAre(kPush));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_EQ(bus.SubscriptionCount(), 0);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Data Handler Module Init Begin"),
                                         Info("[Vip] Vip Data Handler Module Init End, Push Callback Ready")));
    EXPECT_FALSE(handler.HasVipQualification());
    EXPECT_EQ(handler.GetVipGrade(), 0);
    EXPECT_EQ(handler.GetVipState(), 0);
    EXPECT_EQ(handler.GetNewVipState(), 0);
    EXPECT_FALSE(handler.IsNewVipSystem());
}

// Asking

TEST_F(VipDataHandlerTest, RequestIsAnEmptyMessageUnderCommand20831OwnedByTheHandler) {
    handler.RequestVipStatus();

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].cmd, kRequest);
    EXPECT_EQ(channel.Sent()[0].body, "");
    EXPECT_EQ(channel.Sent()[0].context, &handler);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Send Request For Vip Status From Server")));
}

TEST_F(VipDataHandlerTest, AFailedRequestIsNotTriedAgain) {
    handler.RequestVipStatus();
    channel.Fail(channel.LastSession(), kCSProtoTimedOut);

    time.Advance(25h);

    EXPECT_THAT(channel.Sent(), SizeIs(1));
    log.Forget();
}

TEST_F(VipDataHandlerTest, OfTwoOverlappingRequestsTheAnswerThatComesLastStands) {
    handler.RequestVipStatus();
    const unsigned long first = channel.LastSession();
    handler.RequestVipStatus();
    const unsigned long second = channel.LastSession();
    auto older = FullAnswer();
    older.mutable_data()->mutable_vip_basic_data()->set_vip_level(2);

    channel.Reply(second, kRequest, FullAnswer());
    channel.Reply(first, kRequest, older);

    EXPECT_EQ(handler.GetVipGrade(), 2);
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged), ::Message(kChanged)));
}

TEST_F(ScriptedHostTest, AVipAnswerAfterTheHandlersEndReachesNobody) {
    auto handler = std::make_unique<CZRVipDataHandler>(nullptr);
    handler->RequestVipStatus();
    handler.reset();

    channel.Reply(channel.LastSession(), kRequest, FullAnswer());

    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
}

// The answer

TEST_F(VipDataHandlerTest, AnAnswerIsTakenWholeLoggedAndTold) {
    ServerAnswers(FullAnswer());

    EXPECT_TRUE(handler.HasVipQualification());
    EXPECT_EQ(handler.GetVipGrade(), 3);
    EXPECT_EQ(handler.GetVipState(), 1);
    EXPECT_EQ(handler.GetNewVipState(), 1);
    EXPECT_TRUE(handler.IsNewVipSystem());
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Send Request For Vip Status From Server"),
                            Info("[Vip] Vip Status Updated, Level = 3, Vip State = 1, Version = 1, New Vip State = 1, "
                                 "Sub State = 103, Auto Renewal = true")));
}

TEST_F(VipDataHandlerTest, ListenersReadTheNewStatus) {
    std::optional<int> grade;
    QObject listener;
    core::__CMessageDispatch("test").Bind(
        kChanged, [&](auto, auto, auto) { grade = handler.GetVipGrade(); }, &listener);

    ServerAnswers(FullAnswer());

    EXPECT_EQ(grade, 3);
}

TEST_F(VipDataHandlerTest, ListenersReadTheClearedStatusToo) {
    ServerAnswersInFull();
    std::optional<int> grade;
    QObject listener;
    core::__CMessageDispatch("test").Bind(
        kChanged, [&](auto, auto, auto) { grade = handler.GetVipGrade(); }, &listener);

    ServerAnswers({});

    EXPECT_EQ(grade, 0);
}

TEST_F(VipDataHandlerTest, AbsentStatusFieldsBecomeDefaultsAndTheQualificationStays) {
    ServerAnswersInFull();
    vip_base_service::GetAppEntryMessageRsp answer;
    answer.mutable_data()->mutable_vip_basic_data();

    ServerAnswers(answer);

    EXPECT_TRUE(handler.HasVipQualification());
    EXPECT_EQ(handler.GetVipGrade(), 0);
    EXPECT_EQ(handler.GetVipState(), 0);
    EXPECT_EQ(handler.GetNewVipState(), 0);
    EXPECT_FALSE(handler.IsNewVipSystem());
    EXPECT_THAT(log.Lines(),
                Contains(Info("[Vip] Vip Status Updated, Level = 0, Vip State = 0, Version = 0, New Vip State = 0, "
                              "Sub State = 0, Auto Renewal = false")));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
}

TEST_F(VipDataHandlerTest, AQualificationThatIsTakenAwayIsStored) {
    ServerAnswersInFull();
    auto answer = FullAnswer();
    answer.mutable_data()->set_has_vip_qualification(false);

    ServerAnswers(answer);

    EXPECT_FALSE(handler.HasVipQualification());
    EXPECT_EQ(handler.GetVipGrade(), 3);
}

TEST_F(VipDataHandlerTest, QualificationIsWipedWhenTheAnswerHasNoBasicData) {
    ServerAnswersInFull();
    vip_base_service::GetAppEntryMessageRsp answer;
    answer.mutable_data()->set_has_vip_qualification(true);

    ServerAnswers(answer);

    ExpectDefaults();
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Send Request For Vip Status From Server"),
                                         Info("[Vip] Clear Vip Status, Reset To Default")));
}

TEST_F(VipDataHandlerTest, AnErrorCodeWithoutDataClearsAndTellsLikeAnyAnswer) {
    ServerAnswersInFull();
    vip_base_service::GetAppEntryMessageRsp answer;
    answer.set_code(vip_base_service::VIP_USER_FOUND_ERR);

    ServerAnswers(answer);

    ExpectDefaults();
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
}

TEST_F(VipDataHandlerTest, AnAnswerWithoutBytesClearsAndTells) {
    ServerAnswersInFull();
    handler.RequestVipStatus();

    channel.Reply(channel.LastSession(), kRequest, std::string());

    ExpectDefaults();
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
}

TEST_F(VipDataHandlerTest, AnErrorCodeWithDataIsAppliedLikeASuccess) {
    auto answer = FullAnswer();
    answer.set_code(vip_base_service::PARAM_ERR);
    answer.set_message("no");

    ServerAnswers(answer);

    EXPECT_EQ(handler.GetVipGrade(), 3);
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
}

TEST_F(VipDataHandlerTest, NumbersThatNoNameStandsForAreKeptAsTheyAre) {
    auto answer = FullAnswer();
    auto* basic = answer.mutable_data()->mutable_vip_basic_data();
    basic->set_vip_level(0xFFFFFFFF);
    basic->set_vip_state(-5);
    basic->set_vip_version(2);
    basic->set_new_vip_state(7);
    basic->set_new_vip_sub_state(50);
    basic->set_auto_renewal(2);

    ServerAnswers(answer);

    EXPECT_EQ(handler.GetVipGrade(), -1);
    EXPECT_EQ(handler.GetVipState(), -5);
    EXPECT_FALSE(handler.IsNewVipSystem());
    EXPECT_EQ(handler.GetNewVipState(), 7);
    EXPECT_THAT(log.Lines(),
                Contains(Info("[Vip] Vip Status Updated, Level = -1, Vip State = -5, Version = 2, New Vip State = 7, "
                              "Sub State = 50, Auto Renewal = false")));
}

// Answers that are none

TEST_F(VipDataHandlerTest, AChannelErrorIsLoggedWithErrorAndCommandAndChangesNothing) {
    ServerAnswersInFull();
    handler.RequestVipStatus();
    log.Forget();

    channel.ReplyWith(channel.LastSession(), CSProtoError(-7), CSProtoData{kRequest, FullAnswer().SerializeAsString()});

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Vip Status Response Failed, Error = -7, Cmd = 20831")));
    ExpectFullStatusAndSilence();
}

TEST_F(VipDataHandlerTest, AnAnswerUnderAForeignCommandIsLoggedAndChangesNothing) {
    ServerAnswersInFull();
    handler.RequestVipStatus();
    log.Forget();

    channel.Reply(channel.LastSession(), kPush, vip_base_service::GetAppEntryMessageRsp());

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Vip Status Response Failed, Error = 0, Cmd = 20832")));
    ExpectFullStatusAndSilence();
}

TEST_F(VipDataHandlerTest, AnAnswerThatIsNoMessageIsLoggedAndChangesNothing) {
    ServerAnswersInFull();
    handler.RequestVipStatus();
    log.Forget();

    channel.Reply(channel.LastSession(), kRequest, Bytes({0x1A, 0x7F}));

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data")));
    ExpectFullStatusAndSilence();
}

TEST_F(VipDataHandlerTest, LineNamesTheModuleItsSourceAndItsFunction) {
    handler.ClearVipStatus();

    ASSERT_THAT(log.Lines(), SizeIs(1));
    EXPECT_EQ(log.Lines()[0].module, "ZRGrowth");
    EXPECT_EQ(log.Lines()[0].file, "ZRGrowth/Vip/Model/ZRVipDataHandler");
    EXPECT_EQ(log.Lines()[0].function, "ClearVipStatus");
    EXPECT_GT(log.Lines()[0].line, 0);
}

// Clearing

TEST_F(VipDataHandlerTest, ClearingIsLoggedAndToldToNobody) {
    ServerAnswersInFull();

    handler.ClearVipStatus();

    ExpectDefaults();
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Clear Vip Status, Reset To Default")));
    EXPECT_THAT(bus.Sent(), IsEmpty());
}

TEST_F(VipDataHandlerTest, ALateAnswerFillsTheStatusAgainAfterAClear) {
    handler.RequestVipStatus();
    handler.ClearVipStatus();

    channel.Reply(channel.LastSession(), kRequest, FullAnswer());

    EXPECT_EQ(handler.GetVipGrade(), 3);
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
}

// The push

TEST_F(VipDataHandlerTest, APushRefreshesAfterTheHighHalfOfWindowTimesChance) {
    random.WillReturn({0x80000000});

    ServerPushes(30);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Status Change Push Received, Will Refresh After 15000 Ms")));
    time.Advance(14999ms);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Advance(1ms);
    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].cmd, kRequest);
}

TEST_F(VipDataHandlerTest, TheDelayIsFromZeroUpToTheWindowWhichIsLeftOut) {
    random.WillReturn({0, 0xFFFFFFFF});

    ServerPushes(30);
    ServerPushes(30);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Status Change Push Received, Will Refresh After 0 Ms"),
                                         Info("[Vip] Vip Status Change Push Received, Will Refresh After 29999 Ms")));
    time.Advance(30s);
    EXPECT_THAT(channel.Sent(), SizeIs(2));
}

TEST_F(VipDataHandlerTest, APushWithoutAWindowRefreshesLaterAndDrawsAllTheSame) {
    random.WillReturn({0xFFFFFFFF, 0x80000000});

    channel.Push(kPush, std::string());
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Settle();
    EXPECT_THAT(channel.Sent(), SizeIs(1));
    ServerPushes(2);

    EXPECT_THAT(log.Lines(), IsSupersetOf({Info("[Vip] Vip Status Change Push Received, Will Refresh After 0 Ms"),
                                           Info("[Vip] Vip Status Change Push Received, Will Refresh After 1000 Ms")}));
}

TEST_F(VipDataHandlerTest, AWindowBeyond32BitsOfMillisecondsWrapsAround) {
    random.WillReturn({0xFFFFFFFF});

    ServerPushes(4294968);  // 704 ms over the range

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Status Change Push Received, Will Refresh After 703 Ms")));
    time.Advance(703ms);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(VipDataHandlerTest, ADelayBeyondTheSignedRangeRunsAtOnceAndLater) {
    random.WillReturn({0xFFFFFFFF});

    ServerPushes(4294967);  // nearly the whole range of 32 bits

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Vip] Vip Status Change Push Received, Will Refresh After 4294966999 Ms")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Settle();
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(VipDataHandlerTest, APushAfterAClearStillLeadsToARequest) {
    handler.ClearVipStatus();

    ServerPushes(0);
    time.Settle();

    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

TEST_F(VipDataHandlerTest, APushChangesNoStatusByItself) {
    ServerAnswersInFull();

    ServerPushes(0);
    time.Settle();

    EXPECT_THAT(channel.Sent(), SizeIs(1));
    log.Forget();
    ExpectFullStatusAndSilence();
}

TEST_F(VipDataHandlerTest, AChannelErrorOnAPushIsLoggedAndAsksForNothing) {
    channel.PushWith(kPush, CSProtoError(5), CSProtoData{kPush, ""});
    time.Advance(1h);

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Vip Status Push Failed, Error = 5, Cmd = 20832")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
}

TEST_F(VipDataHandlerTest, APushUnderAForeignCommandIsLoggedAndAsksForNothing) {
    channel.PushWith(kPush, kCSProtoOk, CSProtoData{kRequest, ""});
    time.Advance(1h);

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Vip Status Push Failed, Error = 0, Cmd = 20831")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
}

TEST_F(VipDataHandlerTest, APushThatIsNoMessageIsLoggedAndAsksForNothing) {
    channel.Push(kPush, Bytes({0x08}));
    time.Advance(1h);

    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Vip] Vip Status Push Parse Failed, Invalid Protobuf Data")));
    EXPECT_THAT(channel.Sent(), IsEmpty());
}

TEST_F(ScriptedHostTest, AVipRefreshThatWaitsDoesNotRunAfterTheHandlersEnd) {
    auto handler = std::make_unique<CZRVipDataHandler>(nullptr);
    random.WillReturn({0x80000000});
    channel.Push(kPush, Bytes({0x08, 0x1E}));
    handler.reset();

    time.Advance(1h);

    EXPECT_THAT(channel.Sent(), IsEmpty());
}

}  // namespace
