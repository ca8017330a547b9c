// Invalid pictures from malicious servers: each fails once, asynchronously, with a reason in the log, and affects no
// other.
#include <QDirIterator>
#include <QElapsedTimer>
#include <future>

#include "RealPictureTest.h"
#include "support/Cost.h"

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

std::string SlowSvg() {
    std::string path = "M0 0";
    for (int i = 0; i < 300; ++i) {
        path += "L" + std::to_string(i * 7919 % 1000) + " " + std::to_string(i * 104729 % 1000);
    }
    std::string uses;
    for (int i = 0; i < 50; ++i) {
        uses += "<use href=\"#p\"/>";
    }
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1000 1000\"><path id=\"p\" fill=\"none\" "
           "stroke=\"red\" stroke-width=\"90\" stroke-dasharray=\"1\" d=\"" +
           path + "\"/>" + uses + "</svg>";
}

std::vector<BadBytes> BadOnes() {
    constexpr char kCut[] = "it is cut or garbled";
    constexpr char kNone[] = "it is no picture";
    return {
        {"Nothing", "", kNone},
        {"Words", "not found", kNone},
        {"APage", "<html><body>Sorry</body></html>", kNone},
        {"APngThatIsCut", Png().substr(0, 50), kCut},
        {"AJpegThatIsCut", Jpeg().substr(0, Jpeg().size() - 2), kCut},
        {"AGifThatIsCut", Gif(2).substr(0, 30), kCut},
        {"APngThatIsGarbled", GarbledPng(), "it can't be decoded"},
        // under a hundred bytes each that would take gigabytes
        {"APngBomb", PngOfSize(100'000, 100'000), "it has too many pixels"},
        {"APngBombOfOneLine", PngOfSize(1'000'000, 41), "it has too many pixels"},
        {"AGifBomb", GifHead(QSize(65'535, 65'535)) + GifFrame(0, 1) + ";", "it has too many pixels"},
        {"AGifOfTooManyFrames", Gif(301), "it has too many frames"},
        {"AnSvg", Svg(), "it is an SVG"},
        // 3 KB that take the toolkit a quarter of a minute to draw
        {"AnSvgThatIsSlow", SlowSvg(), "it is an SVG"},
    };
}

TEST_F(BadPictureTest, PackedTextsTakeNoMemory) {
    std::string texts;
    const std::string text = PackedText(7'900'000);
    for (int i = 0; i < 60; ++i) {
        texts += text;
    }
    const CCost cost;

    EXPECT_TRUE(Exchange(WithChunks(Png(), texts)));

    cost.CheckMemory(50 << 20);
}

/// A decoder that does not come back for pictures of 7 by 7 pixels until the test opens it.
class SlowPictureTest : public RealPictureTest {
protected:
    ~SlowPictureTest() override {
        pictures.reset();
        Open();
        // Other cases must not find its thread.
        const std::weak_ptr<std::promise<void>> waiting = open;
        open.reset();
        EXPECT_TRUE(WaitInRealTime([&] { return waiting.expired(); }));
    }

    void Open() {
        if (!std::exchange(isOpen, true)) {
            open->set_value();
        }
    }

    void RestartWithSlowDecoder(int decodeMs) {
        CPictureService::Options options;
        options.decodeMs = decodeMs;
        options.decode = [open = open, opened = opened](const std::string& bytes, const ImageInfo& info,
                                                        const QSize& size, bool moving,
                                                        const std::atomic<bool>& cancelled) {
            if (info.size == QSize(7, 7)) {
                opened.wait();
            }
            return picture_decoder::Decode(bytes, info, size, moving, cancelled);
        };
        Restart(options);
    }

    void LoadSlowOne(Result& result) {
        Load(Url("/slow"), result, &guard);
        Answer(Arrived().connection, Png(QSize(7, 7)), "Cache-Control: max-age=60\r\n");
    }

    std::shared_ptr<std::promise<void>> open = std::make_shared<std::promise<void>>();
    std::shared_future<void> opened = open->get_future().share();
    bool isOpen = false;
};

TEST_F(SlowPictureTest, TakesTwoSecondsAtMost) {
    EXPECT_EQ(CPictureService::Options().decodeMs, 2'000);
}

TEST_F(SlowPictureTest, FailsWhenItsTimeIsOverAndIsNotKept) {
    RestartWithSlowDecoder(100);
    Result result;
    LoadSlowOne(result);

    ASSERT_TRUE(WaitFor(result));

    EXPECT_FALSE(result.picture);
    EXPECT_THAT(log.Lines(), Contains(Info("No picture, it takes too long to decode: " + server.Url() + "/slow")));
    EXPECT_TRUE(Exchange(Png(), "Cache-Control: max-age=60\r\n"));
    QDirIterator kept(folder.path(), QDir::Files, QDirIterator::Subdirectories);
    EXPECT_FALSE(kept.next().isEmpty());
    EXPECT_FALSE(kept.hasNext());
}

TEST_F(SlowPictureTest, DelaysNoOther) {
    RestartWithSlowDecoder(60'000);
    Result slow;
    LoadSlowOne(slow);

    EXPECT_TRUE([this] {
        Result result;
        Load(Url("/a"), result, &guard);
        Answer(Arrived().connection, Png());
        return WaitInRealTime([&] { return result.calls > 0; }) && result.picture;
    }());
    EXPECT_EQ(slow.calls, 0);
}

TEST_F(SlowPictureTest, FourThatDoNotEndLetTheNextWait) {
    RestartWithSlowDecoder(50);
    for (int i = 0; i < 4; ++i) {
        Result result;
        LoadSlowOne(result);
        ASSERT_TRUE(WaitFor(result));
        EXPECT_FALSE(result.picture);
    }
    Result waiting;
    Load(Url("/a"), waiting, &guard);
    Answer(Arrived().connection, Png());
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    EXPECT_EQ(waiting.calls, 0);
    Open();
    EXPECT_TRUE(WaitFor(waiting));
    EXPECT_TRUE(waiting.picture);
}

TEST_F(SlowPictureTest, IsNotWaitedForAtTheEnd) {
    RestartWithSlowDecoder(60'000);
    Result result;
    LoadSlowOne(result);
    EXPECT_TRUE(WaitInRealTime([this] { return open.use_count() > 2; }));
    QElapsedTimer clock;
    clock.start();

    pictures.reset();

    EXPECT_LT(clock.elapsed(), 1'000);
    EXPECT_EQ(result.calls, 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, BadBytesTest, ValuesIn(BadOnes()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
