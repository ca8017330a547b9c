// Invalid pictures from malicious servers: each fails once, asynchronously, with a reason in the log, and affects no
// other.
#include "RealPictureTest.h"

using namespace ::testing;
using namespace picture_bytes;

namespace {

constexpr qint64 kMiB = 1 << 20;

using BadPictureTest = RealPictureTest;

TEST_F(BadPictureTest, OnlyAnAnswerThatSaysAllIsWellHoldsAPicture) {
    for (const int status : {204, 206, 304, 400, 403, 404, 500, 503}) {
        EXPECT_FALSE(Exchange(status == 204 || status == 304 ? "" : Png(), {}, status)) << status;
    }
    ExpectItGoesOn();
}

TEST_F(BadPictureTest, OneThatIsMissingIsNoneAndTheLogNamesTheStatus) {
    EXPECT_FALSE(Exchange("not found", {}, 404));

    EXPECT_THAT(log.Lines(), Contains(Info("No picture, result 0, status 404: " + server.Url() + "/a")));
    ExpectItGoesOn();
}

TEST_F(BadPictureTest, AnAnswerThatIsCutFails) {
    Result result;
    Load(Url("/a"), result, &guard);
    const int line = Arrived().connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + QByteArray::fromStdString(Png()));
    server.HangUp(line);

    ASSERT_TRUE(WaitFor(result));
    EXPECT_FALSE(result.picture);
    ExpectItGoesOn();
}

TEST_F(BadPictureTest, MoreThanTwentyMebibytesAreCutAsSoonAsTheyAreAnnouncedOrCome) {
    Result announced;
    Load(Url("/a"), announced, &guard);
    int line = Arrived().connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(20 * kMiB + 1) + "\r\n\r\n");
    ASSERT_TRUE(WaitFor(announced));
    EXPECT_FALSE(announced.picture);

    Result endless;
    Load(Url("/a"), endless, &guard);
    line = Arrived().connection;
    server.Write(line, "HTTP/1.1 200 OK\r\n\r\n");
    server.Flood(line, 200 * kMiB, QByteArray(16 << 10, 'x'));
    ASSERT_TRUE(WaitFor(endless));
    EXPECT_FALSE(endless.picture);
    EXPECT_LT(server.Flooded(), 48 * kMiB);
    ExpectItGoesOn();
}

TEST_F(BadPictureTest, AServerThatTakesTooLongIsGivenUp) {
    EXPECT_EQ(CPictureService::Options().timeoutMs, 10'000);
    CPictureService::Options options;
    options.timeoutMs = 200;
    Restart(options);
    Result result;
    Load(Url("/a"), result, &guard);
    const int line = Arrived().connection;
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");

    ASSERT_TRUE(WaitFor(result));
    EXPECT_FALSE(result.picture);
    EXPECT_TRUE(WaitInRealTime([&] { return !server.IsOpen(line); }));
    ExpectItGoesOn();
}

TEST_F(BadPictureTest, OneThatIsSlowerThanItsPageIsCutAndNobodyIsTold) {
    auto page = std::make_unique<QObject>();
    Result result;
    Load(Url("/slow"), result, page.get());
    const int line = Arrived().connection;
    const std::string png = Png();
    server.Write(line, "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(qulonglong(png.size())) + "\r\n\r\n" +
                           QByteArray::fromStdString(png.substr(0, 40)));

    page.reset();

    EXPECT_TRUE(WaitInRealTime([&] { return !server.IsOpen(line); }));
    EXPECT_EQ(pictures->RunningCount(), 0);
    ExpectItGoesOn();
    EXPECT_EQ(result.calls, 0);
}

struct BadBytes {
    const char* name;
    std::string bytes;
    std::string reason;
};

void PrintTo(const BadBytes& row, std::ostream* stream) {
    *stream << row.name;
}

class BadBytesTest : public RealPictureTest, public WithParamInterface<BadBytes> {};

TEST_P(BadBytesTest, AreNoPictureAndTheLogSaysWhy) {
    // a server that lies about the type as well
    EXPECT_FALSE(Exchange(GetParam().bytes, "Content-Type: image/png\r\nCache-Control: max-age=60\r\n"));

    EXPECT_THAT(log.Lines(), Contains(Info("No picture, " + GetParam().reason + ": " + server.Url() + "/a")));
    // not kept either
    ExpectItGoesOn();
}

/// The head of a picture of 40 by 20 that is whole to the eye, with garbled pixels.
std::string GarbledPng() {
    std::string png = Png(QSize(200, 200));
    return png.replace(png.size() / 2, 20, 20, 'x');
}

std::vector<BadBytes> BadOnes() {
    constexpr char kCut[] = "it is cut or garbled";
    constexpr char kNone[] = "it is no picture";
    constexpr char kEntities[] = "it has entities";
    constexpr char kOutside[] = "it refers to something outside";
    return {
        {"Nothing", "", kNone},
        {"Words", "not found", kNone},
        {"APage", "<html><body>Sorry</body></html>", kNone},
        {"APngThatIsCut", Png().substr(0, 50), kCut},
        {"AJpegThatIsCut", Jpeg().substr(0, Jpeg().size() - 2), kCut},
        {"AGifThatIsCut", Gif(2).substr(0, 30), kCut},
        {"AnSvgThatIsCut", GoodSvg().substr(0, GoodSvg().size() - 3), kCut},
        {"APngThatIsGarbled", GarbledPng(), "it can't be decoded"},
        // under a hundred bytes each that would take gigabytes
        {"APngBomb", PngOfSize(100'000, 100'000), "it has too many pixels"},
        {"APngBombOfOneLine", PngOfSize(1'000'000, 41), "it has too many pixels"},
        {"AGifBomb", GifHead(QSize(65'535, 65'535)) + GifFrame(0, 1) + ";", "it has too many pixels"},
        {"AGifOfTooManyFrames", Gif(301), "it has too many frames"},
        {"AnSvgOfEntities", "<!DOCTYPE svg [<!ENTITY a \"x\">]>" + Svg("<text>&a;</text>"), kEntities},
        {"AnSvgOfOutsideEntities",
         "<!DOCTYPE svg [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>" + Svg("<text>&a;</text>"), kEntities},
        {"AnSvgOfLaughs", Svg("<g id=\"a\"/><g id=\"b\"><use href=\"#a\"/></g><use href=\"#b\"/>"),
         "what it repeats repeats something itself"},
        {"AnSvgOfAPicture", Svg("<image href=\"#a\"/>"), "it holds <image>"},
        {"AnSvgThatRefersOutside", Svg("<use href=\"https://a.example/b.svg#c\"/>"), kOutside},
        {"AnSvgWhoseStyleRefersOutside", Svg("<rect fill=\"url(https://a.example/b.svg#c)\"/>"),
         "its style refers to something outside"},
        {"AnSvgOfCode", Svg("<script>1</script>"), "it holds <script>"},
    };
}

INSTANTIATE_TEST_SUITE_P(Rows, BadBytesTest, ValuesIn(BadOnes()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
