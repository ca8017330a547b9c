#include "http/HttpAnswerReader.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

using EnState = CHttpAnswerReader::EnState;

constexpr uint64_t kMost = 10;

struct Row {
    const char* name;
    std::string bytes;
    EnState state;
    std::string body;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

class HttpAnswerReaderTest : public TestWithParam<Row> {};

// In one piece and byte by byte: where a line is cut in two is the network's affair.
TEST_P(HttpAnswerReaderTest, IsReadAlikeHoweverItIsCutUp) {
    const Row& row = GetParam();
    for (const size_t piece : {row.bytes.size(), size_t(1), size_t(3)}) {
        SCOPED_TRACE(piece);
        CHttpAnswerReader reader(kMost);
        for (size_t at = 0; at < row.bytes.size(); at += piece) {
            reader.Take(row.bytes.data() + at, std::min(piece, row.bytes.size() - at));
        }
        EXPECT_EQ(reader.End(true), row.state);
        if (row.state == EnState::kWhole) {
            EXPECT_EQ(reader.Body(), row.body);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Answers, HttpAnswerReaderTest,
    Values(Row{"Nothing", "", EnState::kCut, ""},
           Row{"Counted", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc", EnState::kWhole, "abc"},
           Row{"LinesWithoutReturn", "HTTP/1.0 200 OK\ncontent-length:3\n\nabc", EnState::kWhole, "abc"},
           Row{"NoWord", "HTTP/1.1 200\r\nContent-Length: 0\r\n\r\n", EnState::kWhole, ""},
           Row{"MoreBehind", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabcd", EnState::kBad, ""},
           Row{"MoreBehindChunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n0\r\n\r\nb",
               EnState::kBad, ""},
           Row{"MoreBehindNothing", "HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\nb", EnState::kBad, ""},
           Row{"ToTheEnd", "HTTP/1.1 200 OK\r\n\r\nabc", EnState::kWhole, "abc"},
           Row{"NoContent", "HTTP/1.1 204 No\r\n\r\n", EnState::kWhole, ""},
           Row{"NotModified", "HTTP/1.1 304 No\r\nContent-Length: 5\r\n\r\n", EnState::kWhole, ""},
           Row{"AfterContinue", "HTTP/1.1 100 Go on\r\nx: y\r\n\r\nHTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\na",
               EnState::kWhole, "a"},
           Row{"Chunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: Chunked\r\n\r\n2\r\nab\r\n01\r\nc\r\n0\r\n\r\n",
               EnState::kWhole, "abc"},
           Row{"Trailers", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1;a=b\r\na\r\n0\r\nx: y\r\n\r\n",
               EnState::kWhole, "a"},
           Row{"JustAllowed", "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n0123456789", EnState::kWhole, "0123456789"},
           Row{"SameLengthTwice", "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 1\r\n\r\na", EnState::kWhole,
               "a"},
           Row{"LengthTooLarge", "HTTP/1.1 200 OK\r\nContent-Length: 11\r\n\r\n", EnState::kTooLarge, ""},
           Row{"LengthBeyondCounting", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\n",
               EnState::kTooLarge, ""},
           Row{"TooMuchToTheEnd", "HTTP/1.1 200 OK\r\n\r\n01234567890", EnState::kTooLarge, ""},
           Row{"ChunkTooLarge", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nb\r\n", EnState::kTooLarge, ""},
           Row{"ChunksTooLarge",
               "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n6\r\nabcdef\r\n6\r\nabcdef\r\n0\r\n\r\n",
               EnState::kTooLarge, ""},
           Row{"ChunkBeyondCounting", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nfffffffffffffffff\r\n",
               EnState::kBad, ""},
           Row{"LineWithoutEnd", "HTTP/1.1 200 " + std::string(40'000, 'x'), EnState::kTooLarge, ""},
           Row{"HeadWithoutEnd",
               [] {
                   std::string head = "HTTP/1.1 200 OK\r\n";
                   for (int i = 0; i < 30; ++i) {
                       head += "x" + std::to_string(i) + ": " + std::string(10'000, 'x') + "\r\n";
                   }
                   return head;
               }(),
               EnState::kTooLarge, ""},
           Row{"GarbageWithoutEnd", std::string(40'000, 'x') + "\r\n", EnState::kBad, ""},
           Row{"ChunkWithManyWords",
               "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1;" + std::string(5'000, 'x') + "\r\na\r\n",
               EnState::kTooLarge, ""},
           Row{"TrailersWithoutEnd",
               [] {
                   std::string text = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n";
                   for (int i = 0; i < 30; ++i) {
                       text += "x: " + std::string(10'000, 'x') + "\r\n";
                   }
                   return text;
               }(),
               EnState::kTooLarge, ""},
           Row{"LengthCut", "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nab", EnState::kCut, ""},
           Row{"ChunkCut", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nab", EnState::kCut, ""},
           Row{"LastChunkCut", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\na\r\n0\r\n", EnState::kCut,
               ""},
           Row{"HeadCut", "HTTP/1.1 200 OK\r\nContent-Le", EnState::kCut, ""},
           Row{"Garbage", "garbage\r\n\r\n", EnState::kBad, ""},
           Row{"GarbageWithoutLine", "\x16\x03\x01 and so on", EnState::kBad, ""},
           Row{"OtherProtocol", "HTTP/2 200 OK\r\n\r\n", EnState::kBad, ""},
           Row{"StatusAsWord", "HTTP/1.1 abc OK\r\n\r\n", EnState::kBad, ""},
           Row{"StatusTooLong", "HTTP/1.1 2000 OK\r\n\r\n", EnState::kBad, ""},
           Row{"StatusTooLow", "HTTP/1.1 099 OK\r\n\r\n", EnState::kBad, ""},
           Row{"Switch", "HTTP/1.1 101 Switch\r\n\r\n", EnState::kBad, ""},
           Row{"HeaderWithoutColon", "HTTP/1.1 200 OK\r\nheader\r\n\r\n", EnState::kBad, ""},
           Row{"HeaderWithoutName", "HTTP/1.1 200 OK\r\n: x\r\n\r\n", EnState::kBad, ""},
           Row{"HeaderFolded", "HTTP/1.1 200 OK\r\na: b\r\n c: d\r\n\r\n", EnState::kBad, ""},
           Row{"BlankBeforeColon", "HTTP/1.1 200 OK\r\nContent-Length : 1\r\n\r\na", EnState::kBad, ""},
           Row{"NegativeLength", "HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n", EnState::kBad, ""},
           Row{"LengthAsHex", "HTTP/1.1 200 OK\r\nContent-Length: 0x1\r\n\r\na", EnState::kBad, ""},
           Row{"TwoLengths", "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\nab", EnState::kBad, ""},
           Row{"LengthAndChunks", "HTTP/1.1 200 OK\r\nContent-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n",
               EnState::kBad, ""},
           Row{"OtherEncoding", "HTTP/1.1 200 OK\r\nTransfer-Encoding: gzip, chunked\r\n\r\n", EnState::kBad, ""},
           Row{"ChunkWithoutSize", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n\r\n", EnState::kBad, ""},
           Row{"ChunkSizeNegative", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n-1\r\n", EnState::kBad, ""},
           Row{"ChunkLongerThanSaid", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1\r\nab\r\n0\r\n\r\n",
               EnState::kBad, ""}),
    [](const auto& row) { return std::string(row.param.name); });

std::string Chunked(size_t chunks, const std::string& words) {
    std::string bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (size_t i = 0; i < chunks; ++i) {
        bytes += "1" + words + "\r\nx\r\n";
    }
    return bytes + "0\r\n\r\n";
}

TEST(HttpAnswerReaderChunkTest, ManySmallOnesCountByWhatTheyBring) {
    // more about the chunks than a head may have
    constexpr size_t kChunks = 300'000;
    const std::string bytes = Chunked(kChunks, "");
    CHttpAnswerReader reader(kChunks);

    EXPECT_EQ(reader.Take(bytes.data(), bytes.size()), EnState::kWhole);

    EXPECT_EQ(reader.Body(), std::string(kChunks, 'x'));
}

TEST(HttpAnswerReaderChunkTest, ManyWordsAboutLittleAreTooMuch) {
    const std::string bytes = Chunked(1'000, ";" + std::string(1'000, 'w'));
    CHttpAnswerReader reader(1'000);

    EXPECT_EQ(reader.Take(bytes.data(), bytes.size()), EnState::kTooLarge);
}

TEST(HttpAnswerReaderEndTest, OnlyAnOrderlyEndMakesABodyWithoutALengthWhole) {
    const std::string open = "HTTP/1.1 200 OK\r\n\r\nabc";
    CHttpAnswerReader cut(kMost);
    cut.Take(open.data(), open.size());
    EXPECT_EQ(cut.End(false), EnState::kCut);

    const std::string counted = "HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabc";
    CHttpAnswerReader whole(kMost);
    whole.Take(counted.data(), counted.size());
    EXPECT_EQ(whole.End(false), EnState::kWhole);
}

TEST(HttpAnswerReaderHeaderTest, AreFoundInWhateverCaseAndTheFirstOfANameCounts) {
    const std::string bytes = "HTTP/1.1 302 Found\r\nLOCATION:  /a b \t\r\nlocation: /c\r\nContent-Length: 0\r\n\r\n";
    CHttpAnswerReader reader(kMost);

    EXPECT_EQ(reader.Take(bytes.data(), bytes.size()), EnState::kWhole);

    EXPECT_EQ(reader.Status(), 302);
    EXPECT_EQ(reader.Header("location"), "/a b");
    EXPECT_EQ(reader.Header("other"), "");
}

}  // namespace
