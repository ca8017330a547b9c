#include "support/ScriptedBus.h"

#include "core/message_dispatch.h"
#include "support/ScriptedHostTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

std::shared_ptr<core::CMessageBody> Body(uint64_t p1, uint64_t p2) {
    auto body = std::make_shared<core::CMessageBody>();
    body->set_p1(p1);
    body->set_p2(p2);
    return body;
}

const core::__CMessageDispatch kBus("test");

class ScriptedBusTest : public ScriptedHostTest {};

}  // namespace

TEST_F(ScriptedBusTest, MessagesAreRecordedInOrderWithTheirParameters) {
    kBus.Send(5, nullptr, true);
    kBus.Send(6, Body(1, 2), true);

    EXPECT_THAT(bus.Sent(), ElementsAre(Message(5), Message(6, 1, 2)));
}

TEST_F(ScriptedBusTest, AMessageWithABodyIsNotTheSameAsOneWithout) {
    kBus.Send(5, Body(0, 0), true);

    EXPECT_THAT(bus.Sent(), ElementsAre(Not(Message(5))));
    EXPECT_THAT(bus.Sent(), ElementsAre(Message(5, 0, 0)));
}

TEST_F(ScriptedBusTest, AChangeOfTheBodyInsideTheDeliveryDoesNotChangeTheRecord) {
    QObject context;
    kBus.Bind(
        5, [](auto, auto, const auto& body) { body->set_p1(9); }, &context);

    kBus.Send(5, Body(1, 2), true);

    EXPECT_THAT(bus.Sent(), ElementsAre(Message(5, 1, 2)));
}

TEST_F(ScriptedBusTest, WhatTheHostSendsIsDeliveredAndRecordedApart) {
    QObject context;
    unsigned long received = 0;
    kBus.Bind(
        5, [&](auto, unsigned long wParam, const auto&) { received = wParam; }, &context);

    bus.HostSend(5, 77, Body(1, 2));

    EXPECT_EQ(received, 77u);
    EXPECT_THAT(bus.Sent(), IsEmpty());
    EXPECT_THAT(bus.HostSent(), ElementsAre(BusMessage{5, 77, true, 1, 2}));
}

TEST_F(ScriptedBusTest, SubscriptionsOfTheDeadAreNotCounted) {
    auto context = std::make_unique<QObject>();
    kBus.Bind(
        5, [](auto, auto, const auto&) {}, context.get());
    kBus.Bind(
        6, [](auto, auto, const auto&) {}, context.get());
    EXPECT_EQ(bus.SubscriptionCount(), 2);

    context.reset();
    EXPECT_EQ(bus.SubscriptionCount(), 0);
}

TEST_F(ScriptedBusTest, ForgettingEmptiesTheRecord) {
    kBus.Send(5, nullptr, true);

    bus.Forget();

    EXPECT_THAT(bus.Sent(), IsEmpty());
}
