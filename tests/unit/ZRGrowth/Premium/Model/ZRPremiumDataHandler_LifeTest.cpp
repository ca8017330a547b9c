// The handler's start and end, and what makes it ask: a login, the hour, the language.
#include <QMetaMethod>
#include <QTimer>

#include "CallList.h"
#include "Premium/PremiumTest.h"
#include "WireBytes.h"
#include "core/message_dispatch.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

const std::string kAllRights = Bytes({0x08, 0x01});

using PremiumHandlerLifeTest = PremiumTest;

/// The call list with the timer's state at each change of the subscriptions.
class CTimerCallList : public CCallList {
public:
    void BindCallback(unsigned short commandId, CSCallback callback, QObject* context) override {
        CCallList::BindCallback(commandId, std::move(callback), context);
        calls.back() += TimerOf(context);
    }
    void UnbindCallback(QObject* context) override {
        CCallList::UnbindCallback(context);
        calls.back() += TimerOf(context);
    }

private:
    static std::string TimerOf(const QObject* context) {
        const auto* timer = context->findChild<QTimer*>();
        return timer && timer->isActive() ? ", timer runs" : ", no timer runs";
    }
};

TEST(PremiumHandlerCallsTest, PushIsLoggedAndThenPosted) {
    CCallList host;
    host.Install();
    auto* handler = new CZRPremiumDataHandler(nullptr);
    host.calls.clear();

    host.push(0, kCSProtoOk, CSProtoData{20837, Bytes({0x08, 0x05, 0x10, 0x01})}, nullptr);

    EXPECT_THAT(host.calls, ElementsAre("[Premium] Premium Change Push Received, Need All Access = true, "
                                        "Custom Access Count = 0, Will Refresh After 5000 Ms",
                                        "post after 5000"));
    delete handler;
    host::Uninstall();
}

TEST(PremiumHandlerCallsTest, StartAndEndGoThroughTimerPushAndBusInTheirOrder) {
    CTimerCallList host;
    host.Install();

    auto* handler = new CZRPremiumDataHandler(nullptr);
    EXPECT_THAT(host.calls, ElementsAre("[Premium] Premium Data Handler Module Init Begin",  //
                                        "bind push 20837, timer runs", "bind message 20100",
                                        "[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready"));

    host.calls.clear();
    handler->OnLogin();
    EXPECT_THAT(host.calls,
                ElementsAre("[Premium] User Login Received, Request All Premium Data From Server", "send 20637",
                            "[Premium] Send Request For All Premium Access, Session = 1, Server Push = false"));

    host.calls.clear();
    delete handler;
    EXPECT_THAT(host.calls,
                ElementsAre("[Premium] Premium Data Handler Module Uninit Begin", "unbind pushes, no timer runs",
                            "unbind messages", "[Premium] Premium Data Handler Module Uninit End"));
    host::Uninstall();
}

TEST_F(ScriptedHostTest, APremiumHandlerBindsOnePushAndOneMessageAndAsksNothing) {
    CZRPremiumDataHandler handler(nullptr);

    EXPECT_THAT(channel.BoundCommands(), ElementsAre(kPush));
    EXPECT_EQ(bus.SubscriptionCount(), 1);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(poster.Delays(), IsEmpty());
    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Premium] Premium Data Handler Module Init Begin"),
                            Info("[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready")));
    EXPECT_THAT(log.Assertions(), IsEmpty());
}

TEST_F(PremiumHandlerLifeTest, TheTimerIsAChildOfTheHandlerAndRunsByTheHour) {
    const auto timers = handler->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);

    ASSERT_EQ(timers.size(), 1);
    EXPECT_TRUE(timers[0]->isActive());
    EXPECT_FALSE(timers[0]->isSingleShot());
    EXPECT_EQ(timers[0]->interval(), 3600000);
}

TEST_F(PremiumHandlerLifeTest, TheHandlerHasOnePrivateSlotAndNothingElseInItsMetaObject) {
    const QMetaObject& meta = CZRPremiumDataHandler::staticMetaObject;

    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod slot = meta.method(meta.methodOffset());
    EXPECT_EQ(slot.methodSignature().toStdString(), "OnTimerSlot()");
    EXPECT_EQ(slot.methodType(), QMetaMethod::Slot);
    EXPECT_EQ(slot.access(), QMetaMethod::Private);
}

TEST_F(ScriptedHostTest, APremiumHandlerThatIsGoneHearsNothingMore) {
    auto* handler = new CZRPremiumDataHandler(nullptr);
    const unsigned long session = handler->GetUiMsgAndPremiumAccessReq(false);
    channel.Push(kPush, Bytes({0x08, 0x0A, 0x10, 0x01}));
    channel.Forget();
    log.Forget();

    delete handler;

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Premium Data Handler Module Uninit Begin"),
                                         Info("[Premium] Premium Data Handler Module Uninit End")));
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    EXPECT_EQ(bus.SubscriptionCount(), 0);
    log.Forget();
    channel.Reply(session, kRequest, Answer({13}));
    bus.HostSend(kLanguageChanged);
    time.Advance(2h);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(ScriptedHostTest, AfterItsEndAPremiumHandlerIsStillButForWhatWasScheduled) {
    CZRPremiumDataHandler handler(nullptr);
    handler.GetUiMsgAndPremiumAccessReq(false);
    const unsigned long session = channel.LastSession();
    channel.Push(kPush, Bytes({0x08, 0x0A, 0x10, 0x01}));
    channel.Forget();

    handler.UnInit();
    log.Forget();

    channel.Reply(session, kRequest, Answer({13}));
    channel.Push(kPush, Bytes({0x08, 0x00, 0x10, 0x01}));
    bus.HostSend(kLanguageChanged);
    time.Advance(2h);
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(channel.Sent(), SizeIs(1));  // of the push before
    EXPECT_THAT(log.Lines(), SizeIs(1));
}

// Login and logout

TEST_F(PremiumHandlerLifeTest, ALoginAsksForAllRightsAndItsAnswerIsToldWithTheSession) {
    handler->OnLogin();

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].body, kAllRights);
    const unsigned long session = channel.LastSession();
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] User Login Received, Request All Premium Data From Server"),
                                         Info("[Premium] Send Request For All Premium Access, Session = " +
                                              std::to_string(session) + ", Server Push = false")));

    channel.Reply(session, kRequest, Answer({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 0)));
    store.Forget();
}

TEST_F(PremiumHandlerLifeTest, AFailedLoginRequestIsToldAndTheTableStaysEmptyUntilTheHour) {
    handler->OnLogin();
    const unsigned long session = channel.LastSession();
    channel.Fail(session, kCSProtoTimedOut);

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 2)));
    EXPECT_TRUE(manager->GetUIAccessData().isEmpty());
    time.Advance(3'599'999ms);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
    time.Advance(1ms);
    EXPECT_THAT(channel.Sent(), SizeIs(2));
    channel.Reply(channel.LastSession(), kRequest, Answer({13}));
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    store.Forget();
    log.Forget();
}

TEST_F(PremiumHandlerLifeTest, ToldOfALogoutTheHandlerWritesALineAndGoesOn) {
    TableHolds({13});

    handler->OnLogout();

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] User Logout Received")));
    EXPECT_EQ(manager->GetUIAccessData(), Table({13}));
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(kPush));
    EXPECT_EQ(bus.SubscriptionCount(), 1);
    EXPECT_TRUE(handler->findChild<QTimer*>()->isActive());
}

// The hour

TEST_F(PremiumHandlerLifeTest, EachHourAllRightsAreAskedForAndTheAnswerIsToldAsAChange) {
    time.Advance(1h);

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].body, kAllRights);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Hourly Timer Fired, Refresh All Premium Data"),
                                         Info("[Premium] Send Request For All Premium Access, Session = " +
                                              std::to_string(channel.LastSession()) + ", Server Push = true")));

    channel.Reply(channel.LastSession(), kRequest, Answer({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
    store.Forget();
}

TEST_F(PremiumHandlerLifeTest, AFailedHourlyRequestIsToldAlthoughNobodyWaits) {
    time.Advance(1h);
    const unsigned long session = channel.LastSession();

    channel.Fail(session, kCSProtoDisconnected);

    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kAnswered, session, 2)));
    log.Forget();
}

TEST_F(PremiumHandlerLifeTest, TwentyFiveHoursAreTwentyFiveRefreshesOnTheHourLoggedInOrNot) {
    channel.AnswerAlways(kRequest, Answer({13, 1000}).SerializeAsString());
    std::vector<int64_t> toldAt;
    QObject receiver;
    core::__CMessageDispatch("[Test]").Bind(
        kChanged,
        [&](unsigned int, unsigned long, const std::shared_ptr<core::CMessageBody>&) { toldAt.push_back(time.Now()); },
        &receiver);
    const int64_t start = time.Now();

    time.Advance(12h);
    manager->OnLogout();
    account.Set(0);
    time.Advance(13h);

    std::vector<int64_t> hours;
    for (int hour = 1; hour <= 25; ++hour) {
        hours.push_back(start + hour * 3'600'000LL);
    }
    EXPECT_EQ(toldAt, hours);
    EXPECT_THAT(channel.Sent(), AllOf(SizeIs(25), Each(Field(&SentCommand::body, kAllRights))));
    EXPECT_THAT(bus.Sent(), AllOf(SizeIs(25), Each(::Message(kChanged))));
    EXPECT_THAT(store.Saves(), AllOf(SizeIs(25), Each(Field(&StoreSave::value, SavedBytes(Table({13, 1000}))))));
    EXPECT_EQ(store.Saves()[11].owner, kUser);
    EXPECT_EQ(store.Saves()[12].owner, 0u);
    EXPECT_THAT(log.Lines(), SizeIs(75));
}

TEST_F(PremiumHandlerLifeTest, TheHourRunsFromTheStartWhateverIsAskedForMeanwhile) {
    time.Advance(50min);
    handler->OnLogin();
    bus.HostSend(kLanguageChanged);
    channel.Forget();

    time.Advance(599'999ms);
    EXPECT_THAT(channel.Sent(), IsEmpty());
    time.Advance(1ms);
    EXPECT_THAT(channel.Sent(), SizeIs(1));
}

// The language

TEST_F(PremiumHandlerLifeTest, AChangeOfTheLanguageAsksForAllRightsAndItsAnswerIsToldAsAChange) {
    bus.HostSend(kLanguageChanged, 7, std::make_shared<core::CMessageBody>());

    ASSERT_THAT(channel.Sent(), SizeIs(1));
    EXPECT_EQ(channel.Sent()[0].body, kAllRights);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Premium] Language Changed, Refresh All Premium Data"),
                                         Info("[Premium] Send Request For All Premium Access, Session = " +
                                              std::to_string(channel.LastSession()) + ", Server Push = true")));

    channel.Reply(channel.LastSession(), kRequest, Answer({13}));
    EXPECT_THAT(bus.Sent(), ElementsAre(::Message(kChanged)));
    store.Forget();
}

TEST_F(PremiumHandlerLifeTest, AnotherMessageIsNoChangeOfTheLanguage) {
    for (const unsigned int message : {0u, 20099u, 20101u, kChanged}) {
        handler->OnMessageDispath(message, 0, nullptr);
    }

    EXPECT_THAT(channel.Sent(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

}  // namespace
