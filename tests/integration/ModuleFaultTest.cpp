// Faults of a server, with the client's real channel and the module: the module keeps its state.
#include <functional>

#include "AIChat/Controller/ZRAIChatManager.h"
#include "RealLineTest.h"
#include "chat.pb.h"
#include "core/IClientState.h"
#include "core/MessageBus.h"
#include "support/RawWebSocketServer.h"
#include "support/RealTime.h"
#include "support/ScriptedStore.h"
#include "support/SliceMeter.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

constexpr uint32_t kCommand = 20982;

class CLoggedInUser : public IClientState {
public:
    uint64_t UserId() const override { return 501; }
};

QByteArray Bytes(const channel::Frame& frame) {
    return QByteArray::fromStdString(frame.SerializeAsString());
}

std::string Answer(std::initializer_list<uint32_t> openScenes) {
    chat::GetChatEntryRsp answer;
    for (const uint32_t scene : openScenes) {
        auto* entry = answer.mutable_data()->add_entry_list();
        entry->set_scene(scene);
        entry->set_is_all_open(true);
    }
    return answer.SerializeAsString();
}

/// A user whose scenes 1 and 4 are open, over a line on which nothing has gone wrong yet.
class ModuleFaultTest : public Test {
protected:
    explicit ModuleFaultTest(const ChannelOptions& options = Quick()) : bus(poster), client(poster, random, options) {
        host::Ports ports;
        ports.log = &log;
        ports.poster = &poster;
        ports.bus = &bus;
        ports.channel = &client;
        ports.store = &store;
        ports.state = &account;
        host::Install(ports);
        bus.Bind(
            20300, [this](auto, auto, auto) { ++changes; }, &context);
        QObject::connect(&client, &CWebSocketChannel::Disconnected, &context,
                         [this](const QString& reason) { losses.push_back(reason.toStdString()); });
        EXPECT_TRUE(server.Listen());
        client.Open(server.Url(), QByteArray("token"));
        EXPECT_TRUE(WaitUntil([this] { return client.IsConnected(); }));
        Ask();
        server.Write(CRawWebSocketServer::Framed(Bytes(Reply({1, 4}))));
        EXPECT_TRUE(WaitUntil([this] { return changes == 1; }));
        ExpectTheScenesStand();
        log.Forget();
    }

    ~ModuleFaultTest() override {
        slices.Check();
        client.Close();
        store.Forget();
        log.Forget();
        host::Uninstall();
    }

    static ChannelOptions Quick() {
        ChannelOptions options;
        options.firstRetry = 4ms;
        options.lastRetry = 8ms;
        return options;
    }

    static bool WaitUntil(const std::function<bool()>& condition) { return WaitInRealTime(condition); }

    /// The module asks, and the question arrives.
    void Ask() {
        const size_t before = server.Messages().size();
        manager.RequestAIChatEnableStatus();
        ASSERT_TRUE(WaitUntil([&] { return server.Messages().size() > before; }));
        channel::Frame request;
        const QByteArray& bytes = server.Messages().back();
        ASSERT_TRUE(request.ParseFromArray(bytes.constData(), bytes.size()));
        ASSERT_EQ(request.command(), kCommand);
        session = request.session();
    }

    /// To the last question.
    channel::Frame Reply(std::initializer_list<uint32_t> openScenes) const {
        channel::Frame reply;
        reply.set_kind(channel::Frame::REPLY);
        reply.set_session(session);
        reply.set_command(kCommand);
        reply.set_error(0);
        reply.set_body(Answer(openScenes));
        return reply;
    }

    void SendReply(const channel::Frame& reply) { server.Write(CRawWebSocketServer::Framed(Bytes(reply))); }

    std::set<int> OpenScenes() {
        std::set<int> open;
        for (int scene = 0; scene <= 6; ++scene) {
            if (manager.IsAIChatEnable(ZRAIChatEntryScene(scene))) {
                open.insert(scene);
            }
        }
        return open;
    }

    void ExpectTheScenesStand() {
        EXPECT_EQ(OpenScenes(), std::set<int>({1, 4}));
        EXPECT_EQ(changes, 1);
        EXPECT_THAT(store.Saves(), SizeIs(1));
    }

    bool Logged(const std::string& words) {
        const auto lines = log.Lines();
        return std::any_of(lines.begin(), lines.end(),
                           [&words](const LogLine& line) { return line.text.find(words) != std::string::npos; });
    }

    /// Returns whether the module's log reports the failure.
    bool HeardOf(CSProtoError error) {
        return Logged("receive cmd error, error = " + std::to_string(int(error)) + ", cmd = 20982");
    }

    /// Questions are answered again as if nothing had been.
    void ExpectTheLineWorks() {
        ASSERT_TRUE(WaitUntil([this] { return client.IsConnected(); }));
        const int before = changes;
        Ask();
        SendReply(Reply({2}));
        EXPECT_TRUE(WaitUntil([&] { return changes == before + 1; }));
        EXPECT_EQ(OpenScenes(), std::set<int>({2}));
    }

    CSliceMeter slices;
    CScriptedLog log;
    CMainThreadPoster poster;
    CTimeAndRandom random;
    CMessageBus bus;
    CScriptedStore store;
    CLoggedInUser account;
    CRawWebSocketServer server;
    CWebSocketChannel client;
    QObject context;
    CZRAIChatManager manager;
    std::vector<std::string> losses;
    uint64_t session = 0;
    int changes = 0;
};

TEST_F(ModuleFaultTest, AnAnswerThatIsCutAtAnyByteFailsTheRequestAndTheClientIsBack) {
    const int size = CRawWebSocketServer::Framed(Bytes(Reply({2, 3}))).size();
    for (int cut = 0; cut < size; ++cut) {
        SCOPED_TRACE("cut after " + std::to_string(cut) + " bytes");
        Ask();
        const int shaken = server.HandshakeCount();

        server.Write(CRawWebSocketServer::Framed(Bytes(Reply({2, 3}))).left(cut));
        server.HangUp();

        ASSERT_TRUE(WaitUntil([this] { return HeardOf(kCSProtoDisconnected); }));
        ExpectTheScenesStand();
        ASSERT_TRUE(WaitUntil([&] { return server.HandshakeCount() == shaken + 1 && client.IsConnected(); }));
        log.Forget();
    }
    EXPECT_THAT(losses, SizeIs(size_t(size)));
    ExpectTheLineWorks();
}

TEST_F(ModuleFaultTest, AnAnswerThatComesByteByByteIsTakenWhole) {
    Ask();
    const QByteArray frame = CRawWebSocketServer::Framed(Bytes(Reply({2, 3})));
    int sent = 0;
    QTimer second;
    QObject::connect(&second, &QTimer::timeout, &context, [&] {
        EXPECT_EQ(changes, 1);
        server.Write(frame.mid(sent, 1));
        if (++sent == frame.size()) {
            second.stop();
        }
    });

    second.start(1);

    EXPECT_TRUE(WaitUntil([this] { return changes == 2; }));
    EXPECT_EQ(sent, frame.size());
    EXPECT_EQ(OpenScenes(), std::set<int>({2, 3}));
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(ModuleFaultTest, GarbageBetweenFramesIsDroppedAndTheLineKept) {
    Ask();
    for (const char* garbage : {"", "\xFF", "\xFF\xFF\xFF\xFF", "not an envelope", "\x08\x05", "\x08\x63"}) {
        server.Write(CRawWebSocketServer::Framed(QByteArray(garbage)));
    }

    EXPECT_TRUE(WaitUntil([this] { return Logged("Frame dropped: an unknown kind, 2 bytes"); }));
    ExpectTheScenesStand();
    SendReply(Reply({2}));
    EXPECT_TRUE(WaitUntil([this] { return changes == 2; }));
    EXPECT_THAT(losses, IsEmpty());
}

TEST_F(ModuleFaultTest, BytesThatAreNoWebSocketFrameEndTheConnectionAndTheClientIsBack) {
    const char* const garbages[] = {"\xFF\xFF\xFF\xFF\xFF\xFF", "HTTP/1.1 500 Oh\r\n\r\n",
                                    "\x82\xFF\177aaaaaaaaaaaaaaaa"};
    for (const char* garbage : garbages) {
        SCOPED_TRACE(PrintToString(garbage));
        Ask();
        const int shaken = server.HandshakeCount();

        server.Write(QByteArray(garbage));

        ASSERT_TRUE(WaitUntil([this] { return HeardOf(kCSProtoDisconnected); }));
        ExpectTheScenesStand();
        ASSERT_TRUE(WaitUntil([&] { return server.HandshakeCount() == shaken + 1 && client.IsConnected(); }));
        log.Forget();
    }
    ExpectTheLineWorks();
}

TEST_F(ModuleFaultTest, AnAnswerUnderAWrongCommandIsRefusedByTheModule) {
    Ask();
    channel::Frame reply = Reply({2});
    reply.set_command(20832);

    SendReply(reply);

    EXPECT_TRUE(WaitUntil([this] { return Logged("receive cmd error, error = 0, cmd = 20832"); }));
    ExpectTheScenesStand();
    ExpectTheLineWorks();
}

TEST_F(ModuleFaultTest, AnAnswerWhoseBodyIsGarbageIsRefusedByTheModule) {
    Ask();
    channel::Frame reply = Reply({2});
    reply.set_body("\x1A\x7F");

    SendReply(reply);

    EXPECT_TRUE(WaitUntil([this] { return Logged("receive cmd 20832, data parse failed"); }));
    ExpectTheScenesStand();
    ExpectTheLineWorks();
}

TEST_F(ModuleFaultTest, ADuplicateAnswerCountsOnce) {
    Ask();
    SendReply(Reply({2}));
    SendReply(Reply({3}));

    EXPECT_TRUE(WaitUntil([this] { return Logged("which waits for none"); }));
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(OpenScenes(), std::set<int>({2}));
}

TEST_F(ModuleFaultTest, AnswersInReverseOrderEachReachTheirQuestionAndTheLastToComeStands) {
    Ask();
    const channel::Frame first = Reply({2});
    Ask();
    const channel::Frame second = Reply({3});

    SendReply(second);
    EXPECT_TRUE(WaitUntil([this] { return changes == 2; }));
    EXPECT_EQ(OpenScenes(), std::set<int>({3}));
    SendReply(first);

    EXPECT_TRUE(WaitUntil([this] { return changes == 3; }));
    EXPECT_EQ(OpenScenes(), std::set<int>({2}));
}

TEST_F(ModuleFaultTest, AServerThatIsCutOffAndBackIsAskedAgain) {
    Ask();

    server.Close();

    EXPECT_TRUE(WaitUntil([this] { return HeardOf(kCSProtoDisconnected); }));
    EXPECT_FALSE(client.IsConnected());
    // connections are refused now, and a question fails at once
    EXPECT_TRUE(WaitUntil([this] { return losses.size() >= 3; }));
    log.Forget();
    manager.RequestAIChatEnableStatus();
    EXPECT_TRUE(WaitUntil([this] { return HeardOf(kCSProtoDisconnected); }));
    ExpectTheScenesStand();

    ASSERT_TRUE(server.Listen());
    ExpectTheLineWorks();
}

/// Half a minute is one second here, which a busy machine still keeps to where nothing is wrong.
class ModulePatienceTest : public ModuleFaultTest {
protected:
    ModulePatienceTest() : ModuleFaultTest(Impatient()) {}

    static ChannelOptions Impatient() {
        ChannelOptions options = Quick();
        options.requestLimit = 1s;
        options.pingEvery = 100ms;
        options.silenceLimit = 2s;
        return options;
    }
};

TEST_F(ModulePatienceTest, AnAnswerAfterItsTimeLimitIsDroppedAndTheNextQuestionAnswered) {
    Ask();

    EXPECT_TRUE(WaitUntil([this] { return HeardOf(kCSProtoTimedOut); }));
    SendReply(Reply({2, 3}));

    EXPECT_TRUE(WaitUntil([this] { return Logged("which waits for none"); }));
    ExpectTheScenesStand();
    EXPECT_THAT(losses, IsEmpty());
    ExpectTheLineWorks();
}

TEST_F(ModulePatienceTest, SilenceFailsTheQuestionThenEndsTheConnectionAndTheClientIsBack) {
    server.AnswerPings(false);
    Ask();
    const int shaken = server.HandshakeCount();

    EXPECT_TRUE(WaitUntil([this] { return HeardOf(kCSProtoTimedOut); }));
    EXPECT_TRUE(WaitUntil([this] { return !losses.empty(); }));

    EXPECT_THAT(losses, ElementsAre("the server has gone silent"));
    ExpectTheScenesStand();
    server.AnswerPings(true);
    EXPECT_TRUE(WaitUntil([&] { return server.HandshakeCount() == shaken + 1 && client.IsConnected(); }));
    ExpectTheLineWorks();
}

}  // namespace
