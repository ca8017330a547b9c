// One raw response for each rule about what is accepted.
#include "RealHttpTest.h"

using namespace ::testing;

namespace {

constexpr int kMaxBodyBytes = 10;
constexpr int kNone = 0;

struct Row {
    const char* name;
    std::string bytes;
    HttpResult result;
    int status;
    std::string body;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

class HttpResponseTest : public RealHttpTest, public WithParamInterface<Row> {
protected:
    HttpResponseTest() {
        HttpOptions options;
        options.maxBodyBytes = kMaxBodyBytes;
        http = std::make_unique<CHttpService>(poster, environment, options);
    }
};

TEST_P(HttpResponseTest, ResponseGivesItsResultWhenTheServerClosesAfterIt) {
    const int connection = Exchange(Post("/")).connection;
    server.Write(connection, QByteArray::fromStdString(GetParam().bytes));
    server.HangUp(connection);

    ExpectEnd(GetParam().result, GetParam().status, GetParam().body);
    EXPECT_EQ(calls, 1);
}

std::string Lines(int count, const std::string& line) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
        lines += line;
    }
    return lines;
}

std::string Chunks(const std::string& chunks) {
    return "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks;
}

// Each value is allowed, so the result depends on the sum.
const std::string kHeaderLine = "x: " + std::string(10'000, 'x') + "\r\n";

INSTANTIATE_TEST_SUITE_P(
    Whole, HttpResponseTest,
    Values(Row{"Counted", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc", kHttpOk, 200, "abc"},
           Row{"LinesWithoutReturn", "HTTP/1.0 200 OK\ncontent-length:3\n\nabc", kHttpOk, 200, "abc"},
           Row{"NoReason", "HTTP/1.1 200\r\nContent-Length: 0\r\n\r\n", kHttpOk, 200, ""},
           Row{"ToTheEnd", "HTTP/1.1 200 OK\r\n\r\nabc", kHttpOk, 200, "abc"},
           Row{"NoContent", "HTTP/1.1 204 No\r\n\r\n", kHttpOk, 204, ""},
           Row{"NotModified", "HTTP/1.1 304 No\r\nContent-Length: 5\r\n\r\n", kHttpOk, 304, ""},
           Row{"AfterContinue", "HTTP/1.1 100 Go on\r\nx: y\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\na",
               kHttpOk, 200, "a"},
           Row{"Chunks", Chunks("2\r\nab\r\n01\r\nc\r\n0\r\n\r\n"), kHttpOk, 200, "abc"},
           Row{"Trailers", Chunks("1;a=b\r\na\r\n0\r\nx: y\r\n\r\n"), kHttpOk, 200, "a"},
           Row{"LargestBody", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n0123456789", kHttpOk, 200, "0123456789"},
           Row{"LargeHead", "HTTP/1.1 200 OK\r\n" + Lines(20, kHeaderLine) + "Content-Length: 1\r\n\r\na", kHttpOk, 200,
               "a"},
           Row{"BytesBehindTheLength", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabcd", kHttpOk, 200, "abc"},
           Row{"BytesBehindTheChunks", Chunks("1\r\na\r\n0\r\n\r\nb"), kHttpOk, 200, "a"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    TooLarge, HttpResponseTest,
    Values(Row{"Length", "HTTP/1.1 200 OK\r\nContent-Length: 11\r\n\r\n", kHttpTooLarge, 200, ""},
           Row{"LengthBeyond64Bits", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\n", kHttpTooLarge,
               200, ""},
           Row{"BodyToTheEnd", "HTTP/1.1 200 OK\r\n\r\n01234567890", kHttpTooLarge, 200, ""},
           Row{"Chunk", Chunks("b\r\n01234567890\r\n0\r\n\r\n"), kHttpTooLarge, 200, ""},
           Row{"SumOfChunks", Chunks("6\r\nabcdef\r\n6\r\nabcdef\r\n0\r\n\r\n"), kHttpTooLarge, 200, ""},
           Row{"HeaderLine", "HTTP/1.1 200 OK\r\nx: " + std::string(300'000, 'x') + "\r\n\r\n", kHttpTooLarge, 200, ""},
           Row{"Head", "HTTP/1.1 200 OK\r\n" + Lines(30, kHeaderLine) + "\r\n", kHttpTooLarge, 200, ""},
           Row{"Trailers", Chunks("0\r\n" + Lines(90, "x: " + std::string(3'000, 'x') + "\r\n") + "\r\n"),
               kHttpTooLarge, 200, ""}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(Cut, HttpResponseTest,
                         Values(Row{"Nothing", "", kHttpCut, kNone, ""},
                                Row{"Length", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nab", kHttpCut, 200, ""},
                                Row{"Chunk", Chunks("3\r\nab"), kHttpCut, 200, ""},
                                Row{"LastChunk", Chunks("1\r\na\r\n0\r\n"), kHttpCut, 200, ""},
                                Row{"Header", "HTTP/1.1 200 OK\r\nContent-Le", kHttpCut, 200, ""},
                                Row{"HeadAfterALine", "HTTP/1.1 200 OK\r\nx: y\r\n", kHttpCut, 200, ""},
                                Row{"HeadAfterContinue", "HTTP/1.1 100 Go on\r\n\r\nHTTP/1.1 200 OK\r\nx: y\r\n",
                                    kHttpCut, 200, ""},
                                Row{"ContinueAlone", "HTTP/1.1 100 Go on\r\n\r\n", kHttpCut, kNone, ""}),
                         [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Malformed, HttpResponseTest,
    Values(Row{"Garbage", "garbage\r\n\r\n", kHttpCut, kNone, ""},
           Row{"GarbageWithoutLine", "\x16\x03\x01 and so on", kHttpCut, kNone, ""},
           Row{"GarbageWithoutEnd", std::string(40'000, 'x') + "\r\n", kHttpCut, kNone, ""},
           Row{"OtherProtocol", "ICY 200 OK\r\n\r\n", kHttpCut, kNone, ""},
           Row{"StatusNotANumber", "HTTP/1.1 abc OK\r\n\r\n", kHttpCut, kNone, ""},
           Row{"StatusTooLong", "HTTP/1.1 2000 OK\r\n\r\n", kHttpCut, kNone, ""},
           Row{"StatusTooLow", "HTTP/1.1 099 OK\r\n\r\n", kHttpCut, kNone, ""},
           Row{"SwitchingProtocols", "HTTP/1.1 101 Switch\r\n\r\n", kHttpCut, kNone, ""},
           Row{"HeaderWithoutColon", "HTTP/1.1 200 OK\r\nheader\r\n\r\n", kHttpCut, 200, ""},
           Row{"NegativeLength", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n", kHttpCut, 200, ""},
           Row{"OtherEncoding", "HTTP/1.1 200 OK\r\nTransfer-Encoding: other, chunked\r\n\r\n", kHttpCut, 200, ""},
           Row{"ChunkWithoutSize", Chunks("\r\n"), kHttpCut, 200, ""},
           Row{"ChunkSizeNegative", Chunks("-1\r\n"), kHttpCut, 200, ""},
           Row{"ChunkSizeBeyond64Bits", Chunks("fffffffffffffffff\r\n"), kHttpCut, 200, ""},
           Row{"ChunkLongerThanItsSize", Chunks("1\r\nab\r\n0\r\n\r\n"), kHttpCut, 200, ""}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
