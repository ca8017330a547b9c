#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

#include "HostSet.h"
#include "core/message_dispatch.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const core::__CMessageDispatch kBus("test");

class BusContractTest : public HostContractTest {
protected:
    core::MessageCallback Note(const std::string& name) {
        return [this, name](auto, auto, const auto&) { notes.push_back(name); };
    }

    QObject context;
    std::vector<std::string> notes;
};

}  // namespace

TEST_F(BusContractTest, SubscribersAreCalledInOrderOfBindingBeforeTheSendReturns) {
    QObject other;
    kBus.Bind(5, Note("first"), &context);
    kBus.Bind(5, Note("second"), &other);
    kBus.Bind(6, Note("of another message"), &context);
    kBus.Bind(5, Note("third"), &context);

    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("first", "second", "third"));
}

TEST_F(BusContractTest, AMessageArrivesWithItsIdItsBodyAndNoParameter) {
    unsigned int receivedId = 0;
    unsigned long receivedParameter = 1;
    std::shared_ptr<core::CMessageBody> receivedBody;
    kBus.Bind(
        5,
        [&](unsigned int id, unsigned long wParam, std::shared_ptr<core::CMessageBody> body) {
            receivedId = id;
            receivedParameter = wParam;
            receivedBody = std::move(body);
        },
        &context);
    const auto body = std::make_shared<core::CMessageBody>();

    kBus.Send(5, body, true);

    EXPECT_EQ(receivedId, 5u);
    EXPECT_EQ(receivedParameter, 0u);
    EXPECT_EQ(receivedBody, body);
}

TEST_F(BusContractTest, AMessageWithoutABodyArrivesWithANullOne) {
    std::shared_ptr<core::CMessageBody> received = std::make_shared<core::CMessageBody>();
    kBus.Bind(
        5, [&](auto, auto, const auto& body) { received = body; }, &context);

    kBus.Send(5, nullptr, true);

    EXPECT_EQ(received, nullptr);
}

TEST_F(BusContractTest, ASendInsideADeliveryRunsAtOnceDepthFirst) {
    kBus.Bind(
        5,
        [&](auto, auto, const auto&) {
            notes.emplace_back("outer begins");
            kBus.Send(6, nullptr, true);
            notes.emplace_back("outer ends");
        },
        &context);
    kBus.Bind(5, Note("outer, second"), &context);
    kBus.Bind(6, Note("inner"), &context);

    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("outer begins", "inner", "outer ends", "outer, second"));
}

TEST_F(BusContractTest, OneBoundInsideADeliveryGetsTheNextMessage) {
    bool bound = false;
    kBus.Bind(
        5,
        [&](auto, auto, const auto&) {
            if (!std::exchange(bound, true)) {
                kBus.Bind(5, Note("late"), &context);
            }
        },
        &context);

    kBus.Send(5, nullptr, true);
    EXPECT_THAT(notes, IsEmpty());

    kBus.Send(5, nullptr, true);
    EXPECT_THAT(notes, ElementsAre("late"));
}

TEST_F(BusContractTest, OneUnboundInsideADeliveryGetsNothingMore) {
    QObject other;
    kBus.Bind(
        5, [&](auto, auto, const auto&) { kBus.UnBind(&other); }, &context);
    kBus.Bind(5, Note("unbound"), &other);
    kBus.Bind(5, Note("after it"), &context);

    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("after it"));
}

TEST_F(BusContractTest, UnbindingRemovesAllSubscriptionsOfTheContextAndNoOther) {
    QObject other;
    kBus.Bind(5, Note("five"), &context);
    kBus.Bind(6, Note("six"), &context);
    kBus.Bind(5, Note("other"), &other);

    kBus.UnBind(&context);
    kBus.Send(5, nullptr, true);
    kBus.Send(6, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("other"));
}

TEST_F(BusContractTest, OneThatDiedInsideADeliveryGetsNothingMore) {
    auto dying = std::make_unique<QObject>();
    kBus.Bind(
        5, [&](auto, auto, const auto&) { dying.reset(); }, &context);
    kBus.Bind(5, Note("dead"), dying.get());
    kBus.Bind(5, Note("alive"), &context);

    kBus.Send(5, nullptr, true);
    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("alive", "alive"));
}

TEST_F(BusContractTest, ASubscriberMayDieInsideItsOwnCallbackWhichLivesUntilItReturns) {
    auto dying = std::make_unique<QObject>();
    const auto witness = std::make_shared<int>(0);
    const std::weak_ptr<int> held = witness;
    kBus.Bind(
        5,
        [&dying, held, kept = witness, this](auto, auto, const auto&) {
            dying.reset();
            kBus.Send(5, nullptr, true);
            notes.emplace_back(kept.use_count() > 1 ? "alive" : "dead");
        },
        dying.get());

    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("alive"));
}

TEST_F(BusContractTest, ACallbackThatUnbindsItselfLivesUntilItReturns) {
    const auto witness = std::make_shared<int>(0);
    const std::weak_ptr<int> held = witness;
    bool heldAfterUnbinding = false;
    {
        auto given = witness;
        kBus.Bind(
            5,
            [&, kept = std::move(given)](auto, auto, const auto&) {
                kBus.UnBind(&context);
                heldAfterUnbinding = kept.use_count() == 2;
            },
            &context);
    }

    kBus.Send(5, nullptr, true);

    EXPECT_TRUE(heldAfterUnbinding);
    EXPECT_EQ(witness.use_count(), 1) << "the callback must be gone now";
}

TEST_F(BusContractTest, SendsOfAnotherThreadArriveOnTheMainThreadInOrder) {
    const auto mainThread = std::this_thread::get_id();
    bool allOnMainThread = true;
    std::vector<uint64_t> arrived;
    kBus.Bind(
        5,
        [&](auto, auto, const auto& body) {
            allOnMainThread = allOnMainThread && std::this_thread::get_id() == mainThread;
            arrived.push_back(body->p1());
        },
        &context);

    std::thread([] {
        for (uint64_t i = 0; i < 100; ++i) {
            const auto body = std::make_shared<core::CMessageBody>();
            body->set_p1(i);
            kBus.Send(5, body, true);
        }
    }).join();
    EXPECT_THAT(arrived, IsEmpty());

    ASSERT_TRUE(WaitUntil([&] { return arrived.size() == 100; }));
    EXPECT_TRUE(std::is_sorted(arrived.begin(), arrived.end()));
    EXPECT_TRUE(allOnMainThread);
}

TEST_F(BusContractTest, ASubscriberThatThrowsStopsNoOther) {
    kBus.Bind(
        5, [](auto, auto, const auto&) { throw std::runtime_error("broken"); }, &context);
    kBus.Bind(
        5, [](auto, auto, const auto&) { throw 1; }, &context);
    kBus.Bind(5, Note("after them"), &context);

    kBus.Send(5, nullptr, true);
    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("after them", "after them"));
}

TEST_F(BusContractTest, ANullContextOrAnEmptyCallbackBindsNothing) {
    kBus.Bind(5, Note("without context"), nullptr);
    kBus.Bind(5, nullptr, &context);
    kBus.UnBind(nullptr);

    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(BusContractTest, TheLastArgumentOfASendHasNoEffect) {
    kBus.Bind(5, Note("told"), &context);

    kBus.Send(5, nullptr, false);

    EXPECT_THAT(notes, ElementsAre("told"));
}

TEST_F(BusContractTest, UnbindingAContextWithoutSubscriptionsDoesNothing) {
    QObject other;
    kBus.Bind(5, Note("told"), &context);

    kBus.UnBind(&other);
    kBus.UnBind(nullptr);
    kBus.Send(5, nullptr, true);

    EXPECT_THAT(notes, ElementsAre("told"));
}

TEST_F(BusContractTest, ContextsThatComeAndGoLeaveRoomForTheNext) {
    auto held = std::make_shared<int>(0);
    for (int i = 0; i < 1000; ++i) {
        QObject shortLived;
        kBus.Bind(
            5, [held](auto, auto, const auto&) {}, &shortLived);
    }

    // what the dead captured is not kept for ever, also where nothing is ever sent
    EXPECT_LT(held.use_count(), 100);
}
