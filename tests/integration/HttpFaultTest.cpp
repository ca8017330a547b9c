// Faulty servers: the request fails, the main thread stays free, and the next request is answered.
#include "RealHttpTest.h"
#include "support/SliceMeter.h"

using namespace ::testing;
using namespace std::string_literals;

namespace {

constexpr qint64 kMiB = 1 << 20;

class HttpFaultTest : public RealHttpTest {
protected:
    ~HttpFaultTest() override { slices.Check(); }

    CSliceMeter slices;
};

TEST_F(HttpFaultTest, AServerThatIsNotThereIsNoConnection) {
    server.Close();
    Start(Post("/"));
    ExpectEnd(kHttpNoConnection, 0);

    ASSERT_TRUE(server.Listen());
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, AServerThatNeverAnswersIsGivenUpAtTheTimeLimit) {
    HttpReqInfo request = Post("/");
    request.m_nTimeoutSeconds = 1;
    const int line = Exchange(request).connection;

    ExpectEnd(kHttpTimedOut, 0);
    EXPECT_TRUE(WaitUntil([&] { return !server.IsOpen(line); }));
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, AnAnswerThatTricklesIsGivenUpAtTheTimeLimitOfTheWhole) {
    HttpReqInfo request = Post("/");
    request.m_nTimeoutSeconds = 1;
    const int line = Exchange(request).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n");
    QTimer drops;
    QObject::connect(&drops, &QTimer::timeout, &guard, [&] { server.Write(line, "x"); });
    drops.start(20);

    ExpectEnd(kHttpTimedOut, 0);
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, RequestTimesOutWhenItsRedirectsTogetherTakeTooLong) {
    // Six requests at 300 ms exceed the timeout, though each of them does not.
    constexpr int kDelayMs = 300;
    HttpReqInfo request = Post("/");
    request.m_nTimeoutSeconds = 1;
    server.SetHandler([this](const RawHttpRequest& arrived) {
        QTimer::singleShot(kDelayMs, &guard, [this, connection = arrived.connection] {
            server.Answer(connection, 307, "", "Location: /again\r\n");
        });
    });

    Start(request);

    ExpectEnd(kHttpTimedOut, 0);
    EXPECT_GT(server.Requests().size(), 1u);
}

TEST_F(HttpFaultTest, RedirectsThatNeverEndCountAgainstTheSameTimeLimitAndTheirNumber) {
    server.SetHandler(
        [this](const RawHttpRequest& request) { server.Answer(request.connection, 307, "", "Location: /again\r\n"); });
    Start(Post("/"));

    ExpectEnd(kHttpRedirected, 307);
    EXPECT_THAT(server.Requests(), SizeIs(6));  // the first and five redirects
}

TEST_F(HttpFaultTest, ALengthThatIsTooLargeIsCutBeforeItsBody) {
    const int line = Exchange(Post("/")).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(kMiB + 1) + "\r\n\r\n");

    ExpectEnd(kHttpTooLarge, 200);
    EXPECT_TRUE(WaitUntil([&] { return !server.IsOpen(line); }));
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, AHundredMiBWithoutALengthAreCutAsSoonAsThereIsTooMuch) {
    const int line = Exchange(Post("/")).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\n\r\n");
    server.Flood(line, 100 * kMiB, QByteArray(16 << 10, 'x'));

    ExpectEnd(kHttpTooLarge, 200);
    EXPECT_TRUE(WaitUntil([&] { return !server.IsOpen(line); }));
    // The buffers of the connection add to the maximum.
    EXPECT_LT(server.Flooded(), 17 * kMiB);
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, AHundredMiBInChunksAreCutAsSoonAsThereIsTooMuch) {
    const int line = Exchange(Post("/")).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    server.Flood(line, 100 * kMiB, "4000\r\n" + QByteArray(0x4000, 'x') + "\r\n");

    ExpectEnd(kHttpTooLarge, 200);
    EXPECT_LT(server.Flooded(), 17 * kMiB);
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, JustWhatIsAllowedComesWhole) {
    size_t bytes = 0;
    http->Start(
        Post("/"), [&](unsigned long, const HttpRspInfo& response) { bytes = response.m_strBody.size(); }, &guard,
        kHttpWorkPoolDefault, nullptr, nullptr);
    const int line = Arrived().connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(kMiB) + "\r\n\r\n");
    server.Flood(line, kMiB, QByteArray(16 << 10, 'x'));

    EXPECT_TRUE(WaitUntil([&] { return bytes != 0; }));
    EXPECT_EQ(bytes, size_t(kMiB));
}

TEST_F(HttpFaultTest, OneByteMoreThanIsAllowedIsRefusedWithALogLine) {
    const int line = Exchange(Post("/")).connection;
    server.Answer(line, 200, QByteArray(int(kMiB) + 1, 'x'));

    ExpectEnd(kHttpTooLarge, 200);
    EXPECT_THAT(
        log.Lines(),
        Contains(Info(StartsWith("A request to 127.0.0.1 failed with result " + std::to_string(kHttpTooLarge)))));
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, AnAnswerThatIsCutAtAnyByteFails) {
    const QByteArray whole = "HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n{\"a\": 1}";
    for (int cut = 0; cut < whole.size(); ++cut) {
        SCOPED_TRACE("cut after " + std::to_string(cut) + " bytes");
        const int before = calls;
        const RawHttpRequest arrived = Exchange(Post("/"));
        server.Write(arrived.connection, whole.left(cut));
        server.HangUp(arrived.connection);

        ASSERT_TRUE(WaitUntil([this] { return answer.has_value(); }));
        EXPECT_EQ(answer->m_nResult, kHttpCut);
        EXPECT_EQ(answer->m_strBody, "");
        EXPECT_EQ(calls, before + 1);
    }
    // No request was sent again.
    EXPECT_THAT(server.Requests(), SizeIs(size_t(whole.size())));
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, ChunksThatAreCutAtAnyByteFail) {
    const QByteArray head = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    const QByteArray chunks = "5\r\nabcde\r\n3;x=y\r\nfgh\r\n0\r\nx-after: 1\r\n\r\n";
    // libcurl does not require the empty line behind a trailer. All chunks are complete.
    const int complete = chunks.size() - int(sizeof("\r\n") - 1);
    for (int cut = 0; cut < complete; ++cut) {
        SCOPED_TRACE("cut after " + std::to_string(cut) + " bytes");
        const int line = Exchange(Post("/")).connection;
        server.Write(line, head + chunks.left(cut));
        server.HangUp(line);
        ExpectEnd(kHttpCut, 200);
    }
    server.Write(Exchange(Post("/")).connection, head + chunks);
    ExpectEnd(kHttpOk, 200, "abcdefgh");
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, AHeadThatHasNoEndIsCutAsSoonAsThereIsTooMuch) {
    const int line = Exchange(Post("/")).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\n");
    server.Flood(line, 100 * kMiB, "x-header: " + QByteArray(1000, 'x') + "\r\n");

    ExpectEnd(kHttpTooLarge, 200);
    EXPECT_LT(server.Flooded(), 16 * kMiB);
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, BytesBehindAResponseAreNotTakenForTheNextOne) {
    const int line = Exchange(Post("/")).connection;
    server.Write(line,
                 "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbodyHTTP/1.1 500 Oh\r\nContent-Length: 3\r\n\r\nbad");

    ExpectEnd(kHttpOk, 200, "body");
    ExpectItGoesOn();
    EXPECT_EQ(calls, 2);
}

TEST_F(HttpFaultTest, AServerThatKeepsTheConnectionOpenIsNotWaitedFor) {
    const int line = Exchange(Post("/")).connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody");

    ExpectEnd(kHttpOk, 200, "body");
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, GarbageInPlaceOfAnAnswerFails) {
    for (const QByteArray& garbage :
         {QByteArray("garbage\r\n\r\n"), QByteArray("\xFF\xFE\0\1\2\r\n\r\n", 9), QByteArray("SSH-2.0-server\r\n"),
          QByteArray("HTTP/1.1 abc Word\r\n\r\n"), QByteArray("HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\n"),
          QByteArray("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n")}) {
        SCOPED_TRACE(garbage.toStdString());
        const int line = Exchange(Post("/")).connection;
        server.Write(line, garbage);
        // The client closes the connection.
        ASSERT_TRUE(WaitUntil([this] { return answer.has_value(); }));
        EXPECT_EQ(answer->m_nResult, kHttpCut);
        EXPECT_EQ(answer->m_strBody, "");
        EXPECT_TRUE(WaitUntil([&] { return !server.IsOpen(line); }));
    }
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, ARedirectWithinTheServerIsFollowed) {
    const RawHttpRequest first = Exchange(Post("/a/b", "ask"));
    server.Answer(first.connection, 308, "moved", "Location: ../c?d=1\r\n");
    const RawHttpRequest second = Arrived();
    server.Answer(second.connection, 200, "there");

    ExpectEnd(kHttpOk, 200, "there");
    EXPECT_EQ(second.method, "POST");
    EXPECT_EQ(second.target, "/c?d=1");
    EXPECT_EQ(second.body, "ask");
    EXPECT_EQ(second.Header("Content-Type"), "application/json");
}

TEST_F(HttpFaultTest, AfterSeeOtherTheRestIsAsked) {
    server.Answer(Exchange(Post("/", "ask")).connection, 303, "", "Location: /result\r\n");
    const RawHttpRequest second = Arrived();
    server.Answer(second.connection, 200, "there");

    ExpectEnd(kHttpOk, 200, "there");
    EXPECT_EQ(second.method, "GET");
    EXPECT_EQ(second.body, "");
    EXPECT_EQ(second.Header("Content-Type"), "");
}

TEST_F(HttpFaultTest, ARedirectToAnotherServerIsNotFollowed) {
    CRawHttpServer other;
    ASSERT_TRUE(other.Listen());
    const std::string port = std::to_string(server.Port());
    for (const std::string& place :
         {other.Url() + "/", "https://127.0.0.1:" + port + "/", "http://localhost:" + port + "/", "//a.example/"s,
          "file:///etc/hosts"s, "http://me@127.0.0.1:" + port + "/", "http://["s}) {
        SCOPED_TRACE(place);
        server.Answer(Exchange(Post("/")).connection, 302, "moved",
                      "Location: " + QByteArray::fromStdString(place) + "\r\n");
        ExpectEnd(kHttpRedirected, 302);
    }
    EXPECT_THAT(other.Requests(), IsEmpty());
    EXPECT_EQ(other.ConnectionCount(), 0);
    ExpectItGoesOn();
}

TEST_F(HttpFaultTest, ARedirectToNowhereIsAnAnswer) {
    server.Answer(Exchange(Post("/")).connection, 302, "moved");
    ExpectEnd(kHttpOk, 302, "moved");
}

TEST_F(HttpFaultTest, ALoginThatIsAskedForIsNotGiven) {
    server.Answer(Exchange(Post("/")).connection, 401, "who are you", "WWW-Authenticate: Basic realm=\"a\"\r\n");
    ExpectEnd(kHttpOk, 401, "who are you");
    EXPECT_THAT(server.Requests(), SizeIs(1));
}

}  // namespace
