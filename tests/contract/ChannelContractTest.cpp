#include <gmock/gmock.h>

#include <QThread>
#include <algorithm>
#include <stdexcept>

#include "HostSet.h"
#include "core/IZRChannelProxy.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr unsigned short kSentinel = 60000;

class ChannelContractTest : public HostContractTest {
protected:
    ChannelContractTest() {
        IZRChannelProxy::BindCallback(
            kCSChannelMain, kSentinel, [this](auto, auto, const auto&, auto) { ++m_nSentinels; }, &m_sentinel);
    }

    CSCallback Note(const std::string& name) {
        return [this, name](auto, auto, const auto&, auto) { notes.push_back(name); };
    }

    unsigned long Send(uint32_t cmd, const std::string& body, CSCallback callback, QObject* owner) {
        return IZRChannelProxy::SendCommand(kCSChannelMain, CSProtoData{cmd, body}, nullptr, std::move(callback),
                                            owner);
    }

    void Bind(unsigned short cmd, CSCallback callback, QObject* owner) {
        IZRChannelProxy::BindCallback(kCSChannelMain, cmd, std::move(callback), owner);
    }

    /// Until all that the server sent before has arrived.
    void Drain() {
        const int before = m_nSentinels;
        m_set->Push(kSentinel, std::string());
        ASSERT_TRUE(WaitUntil([&] { return m_nSentinels > before; }));
    }

    QObject context;
    std::vector<std::string> notes;

private:
    QObject m_sentinel;
    int m_nSentinels = 0;
};

}  // namespace

TEST_F(ChannelContractTest, ARequestArrivesAsItWasSentAndItsAnswerComesBack) {
    const std::string bytes("\0zero\xff", 6);
    unsigned long answeredSession = 0;
    CSProtoError error = kCSProtoTimedOut;
    CSProtoData answer;
    const unsigned long session = Send(
        20831, bytes,
        [&](unsigned long id, CSProtoError code, const CSProtoData& data, const CSResponseExt*) {
            answeredSession = id;
            error = code;
            answer = data;
        },
        &context);

    const auto request = m_set->WaitForRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->session, session);
    EXPECT_EQ(request->cmd, 20831u);
    EXPECT_EQ(request->body, bytes);

    m_set->Reply(session, 20831, bytes + bytes);
    ASSERT_TRUE(WaitUntil([&] { return answeredSession != 0; }));
    EXPECT_EQ(answeredSession, session);
    EXPECT_EQ(error, kCSProtoOk);
    EXPECT_EQ(answer.m_nCmd, 20831u);
    EXPECT_EQ(answer.m_strData, bytes + bytes);
}

TEST_F(ChannelContractTest, SessionsCountFromOne) {
    EXPECT_EQ(Send(1, "", nullptr, &context), 1u);
    EXPECT_EQ(Send(1, "", nullptr, &context), 2u);
    EXPECT_EQ(Send(2, "", nullptr, nullptr), 3u);
}

TEST_F(ChannelContractTest, TheServersErrorAndCommandArriveAsTheyAre) {
    CSProtoError error = kCSProtoOk;
    uint32_t command = 0;
    const unsigned long session = Send(
        10, "",
        [&](auto, CSProtoError code, const CSProtoData& data, auto) {
            error = code;
            command = data.m_nCmd;
        },
        &context);
    ASSERT_TRUE(m_set->WaitForRequest());

    m_set->Reply(session, 11, "", 1234);

    ASSERT_TRUE(WaitUntil([&] { return command != 0; }));
    EXPECT_EQ(int(error), 1234);
    EXPECT_EQ(command, 11u);
}

TEST_F(ChannelContractTest, ASecondAnswerIsNotDelivered) {
    const unsigned long session = Send(10, "", Note("answer"), &context);
    ASSERT_TRUE(m_set->WaitForRequest());

    m_set->Reply(session, 10, "");
    m_set->Reply(session, 10, "");
    Drain();

    EXPECT_THAT(notes, ElementsAre("answer"));
}

TEST_F(ChannelContractTest, AThousandRequestsInFlightAreAnsweredOutOfOrder) {
    std::vector<unsigned long> answered;
    for (int i = 0; i < 1000; ++i) {
        Send(
            10, "",
            [&](unsigned long session, auto, const CSProtoData& data, auto) {
                EXPECT_EQ(data.m_strData, std::to_string(session));
                answered.push_back(session);
            },
            &context);
    }
    std::vector<unsigned long> sessions;
    for (int i = 0; i < 1000; ++i) {
        const auto request = m_set->WaitForRequest();
        ASSERT_TRUE(request);
        sessions.push_back(request->session);
    }
    EXPECT_TRUE(std::is_sorted(sessions.begin(), sessions.end()));

    std::reverse(sessions.begin(), sessions.end());
    std::rotate(sessions.begin(), sessions.begin() + 333, sessions.end());
    for (const unsigned long session : sessions) {
        m_set->Reply(session, 10, std::to_string(session));
    }

    ASSERT_TRUE(WaitUntil([&] { return answered.size() == 1000; }));
    EXPECT_EQ(answered, sessions);
}

TEST_F(ChannelContractTest, AnAnswerAfterTheContextsEndGoesNowhere) {
    auto dying = std::make_unique<QObject>();
    const unsigned long session = Send(10, "", Note("answer"), dying.get());
    ASSERT_TRUE(m_set->WaitForRequest());

    dying.reset();
    m_set->Reply(session, 10, "");
    Drain();

    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ChannelContractTest, ARequestWithoutAContextIsSentAndNeverAnswered) {
    const unsigned long session = Send(10, "body", Note("answer"), nullptr);
    const auto request = m_set->WaitForRequest();
    ASSERT_TRUE(request);
    EXPECT_EQ(request->body, "body");

    m_set->Reply(session, 10, "");
    Drain();

    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ChannelContractTest, AnEmptyCallbackIsNotCalled) {
    const unsigned long session = Send(10, "", nullptr, &context);
    ASSERT_TRUE(m_set->WaitForRequest());

    m_set->Reply(session, 10, "");

    Drain();
}

TEST_F(ChannelContractTest, UnbindingDropsSubscriptionsAndOutstandingCallbacksOfTheContextAlone) {
    QObject other;
    Bind(10, Note("push"), &context);
    Bind(10, Note("push of another"), &other);
    const unsigned long first = Send(20, "", Note("answer"), &context);
    const unsigned long second = Send(20, "", Note("answer of another"), &other);
    ASSERT_TRUE(m_set->WaitForRequest());
    ASSERT_TRUE(m_set->WaitForRequest());

    IZRChannelProxy::UnbindCallback(&context);
    m_set->Push(10, "");
    m_set->Reply(first, 20, "");
    m_set->Reply(second, 20, "");
    Drain();

    EXPECT_THAT(notes, ElementsAre("push of another", "answer of another"));
}

TEST_F(ChannelContractTest, WhatADroppedCallbackHeldMayUnbindAtItsEnd) {
    QObject other;
    auto unbindsAtItsEnd = std::shared_ptr<int>(new int(0), [&](const int* value) {
        IZRChannelProxy::UnbindCallback(&other);
        delete value;
    });
    Send(
        10, "", [held = unbindsAtItsEnd](auto, auto, const auto&, auto) {}, &context);
    const unsigned long session = Send(11, "", Note("answer of another"), &other);
    Send(12, "", Note("answer"), &context);
    unbindsAtItsEnd.reset();

    IZRChannelProxy::UnbindCallback(&context);
    m_set->Reply(session, 11, "");
    Drain();

    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ChannelContractTest, ACallbackMayEndItsOwnContextAndSendFromAnother) {
    auto dying = std::make_unique<QObject>();
    const auto kept = std::make_shared<int>(7);
    int seen = 0;
    const unsigned long session = Send(
        10, "",
        [&, kept](auto, auto, const auto&, auto) {
            IZRChannelProxy::UnbindCallback(dying.get());
            dying.reset();
            Send(11, "", Note("second answer"), &context);
            seen = *kept;
        },
        dying.get());
    ASSERT_TRUE(m_set->WaitForRequest());

    m_set->Reply(session, 10, "");
    ASSERT_TRUE(WaitUntil([&] { return seen != 0; }));
    const auto second = m_set->WaitForRequest();
    ASSERT_TRUE(second);
    m_set->Reply(second->session, 11, "");
    Drain();

    EXPECT_EQ(seen, 7);
    EXPECT_EQ(kept.use_count(), 1) << "the callback must be gone now";
    EXPECT_THAT(notes, ElementsAre("second answer"));
}

TEST_F(ChannelContractTest, ACallbackThatThrowsStopsNoOther) {
    Bind(
        10, [](auto, auto, const auto&, auto) { throw std::runtime_error("broken"); }, &context);
    Bind(10, Note("push"), &context);
    const unsigned long session = Send(
        20, "", [](auto, auto, const auto&, auto) { throw std::runtime_error("broken"); }, &context);
    ASSERT_TRUE(m_set->WaitForRequest());

    m_set->Reply(session, 20, "");
    m_set->Push(10, "");
    Drain();

    EXPECT_THAT(notes, ElementsAre("push"));
}

TEST_F(ChannelContractTest, APushGoesToItsSubscribersInOrderOfBindingOnTheMainThread) {
    QObject other;
    unsigned long session = 99;
    CSProtoData data;
    bool onMainThread = false;
    Bind(
        10,
        [&](unsigned long id, auto, const CSProtoData& pushed, auto) {
            session = id;
            data = pushed;
            onMainThread = QThread::currentThread() == context.thread();
            notes.emplace_back("first");
        },
        &context);
    Bind(10, Note("second"), &other);
    Bind(11, Note("of another command"), &context);
    Bind(10, Note("third"), &context);

    m_set->Push(10, "bytes");
    Drain();

    EXPECT_THAT(notes, ElementsAre("first", "second", "third"));
    EXPECT_EQ(session, 0u);
    EXPECT_EQ(data.m_nCmd, 10u);
    EXPECT_EQ(data.m_strData, "bytes");
    EXPECT_TRUE(onMainThread);
}

TEST_F(ChannelContractTest, OneBoundInsideAPushGetsTheNextPush) {
    bool bound = false;
    Bind(
        10,
        [&](auto, auto, const auto&, auto) {
            if (!std::exchange(bound, true)) {
                Bind(10, Note("late"), &context);
            }
        },
        &context);

    m_set->Push(10, "");
    Drain();
    EXPECT_THAT(notes, IsEmpty());

    m_set->Push(10, "");
    Drain();
    EXPECT_THAT(notes, ElementsAre("late"));
}

TEST_F(ChannelContractTest, OneUnboundOrDeadInsideAPushGetsNothingMore) {
    QObject unbound;
    auto dead = std::make_unique<QObject>();
    Bind(
        10,
        [&](auto, auto, const auto&, auto) {
            IZRChannelProxy::UnbindCallback(&unbound);
            dead.reset();
        },
        &context);
    Bind(10, Note("unbound"), &unbound);
    Bind(10, Note("dead"), dead.get());
    Bind(10, Note("after them"), &context);

    m_set->Push(10, "");
    Drain();

    EXPECT_THAT(notes, ElementsAre("after them"));
}

TEST_F(ChannelContractTest, ASubscriberWithoutContextOrCallbackIsNone) {
    Bind(10, Note("without context"), nullptr);
    Bind(10, nullptr, &context);
    IZRChannelProxy::UnbindCallback(nullptr);

    m_set->Push(10, "");
    Drain();

    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(ChannelContractTest, WhatIsOutstandingFailsWhenTheConnectionIsLost) {
    std::vector<std::pair<unsigned long, int>> failed;
    const auto callback = [&](unsigned long session, CSProtoError error, const CSProtoData& data,
                              const CSResponseExt*) {
        EXPECT_EQ(data.m_nCmd, 10u);
        failed.emplace_back(session, int(error));
    };
    const unsigned long first = Send(10, "", callback, &context);
    const unsigned long second = Send(10, "", callback, &context);
    ASSERT_TRUE(m_set->WaitForRequest());
    ASSERT_TRUE(m_set->WaitForRequest());

    m_set->DropConnection();

    ASSERT_TRUE(WaitUntil([&] { return failed.size() == 2; }));
    EXPECT_THAT(failed, ElementsAre(std::make_pair(first, int(kCSProtoDisconnected)),
                                    std::make_pair(second, int(kCSProtoDisconnected))));
}

TEST_F(ChannelContractTest, WithoutAConnectionARequestFailsLater) {
    m_set->DropConnection();
    int error = 0;

    const unsigned long session = Send(
        10, "", [&](auto, CSProtoError code, const auto&, auto) { error = int(code); }, &context);

    EXPECT_GT(session, 0u);
    EXPECT_EQ(error, 0);
    ASSERT_TRUE(WaitUntil([&] { return error != 0; }));
    EXPECT_EQ(error, int(kCSProtoDisconnected));
}

TEST_F(ChannelContractTest, ARequestSentFromAFailureFailsOnItsOwn) {
    m_set->DropConnection();
    Send(
        10, "",
        [&](auto, auto, const auto&, auto) {
            notes.emplace_back("first begins");
            Send(11, "", Note("second"), &context);
            notes.emplace_back("first ends");
        },
        &context);

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 3; }));
    EXPECT_THAT(notes, ElementsAre("first begins", "first ends", "second"));
}

TEST_F(ChannelContractTest, AfterAReconnectSubscriptionsAndRequestsWorkAsBefore) {
    Bind(10, Note("push"), &context);
    m_set->DropConnection();

    m_set->Connect();
    const unsigned long session = Send(20, "", Note("answer"), &context);
    ASSERT_TRUE(m_set->WaitForRequest());
    m_set->Push(10, "");
    m_set->Reply(session, 20, "");
    Drain();

    EXPECT_THAT(notes, ElementsAre("push", "answer"));
}
