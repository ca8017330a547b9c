// Pictures that the disk has spoilt, and what is asked of the service beyond all measure.
#include <QDirIterator>
#include <QFile>

#include "RealPictureTest.h"

using namespace ::testing;
using namespace picture_bytes;

namespace {

class PictureDamageTest : public RealPictureTest {
protected:
    /// Overwrites the middle of what is kept, in its place; whether there was one.
    bool SpoilWhatIsKept(const std::string& bytes) {
        const QByteArray kept = QByteArray::fromStdString(bytes);
        for (QDirIterator files(folder.path(), QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
            QFile file(files.next());
            EXPECT_TRUE(file.open(QIODevice::ReadWrite));
            const int at = file.readAll().indexOf(kept);
            if (at >= 0) {
                const QByteArray middle(kept.size() / 2, 'x');
                return file.seek(at + kept.size() / 4) && file.write(middle) == middle.size();
            }
        }
        return false;
    }

    /// Answers the one request that comes, and gives it back.
    RawHttpRequest LoadWithOneRequest(const std::string& answer, const QByteArray& headers) {
        Result result;
        Load(Url("/a"), result, &guard);
        const RawHttpRequest request = Arrived();
        Answer(request.connection, answer, headers);
        EXPECT_TRUE(WaitFor(result));
        EXPECT_EQ(result.calls, 1);
        EXPECT_TRUE(result.picture);
        EXPECT_THAT(server.Requests(), SizeIs(taken));
        return request;
    }

    bool LoadWithoutRequest() {
        Result result;
        Load(Url("/a"), result, &guard);
        EXPECT_TRUE(WaitFor(result));
        EXPECT_THAT(server.Requests(), SizeIs(taken));
        return result.picture != nullptr;
    }

    const std::string png = Png(QSize(60, 30));
    const QByteArray fresh = "Cache-Control: max-age=60\r\nETag: \"one\"\r\n";
};

TEST_F(PictureDamageTest, AFreshOneIsFetchedAnewAndKept) {
    ASSERT_TRUE(Exchange(png, fresh));
    ASSERT_TRUE(SpoilWhatIsKept(png));
    Restart();

    EXPECT_EQ(LoadWithOneRequest(png, fresh).Header("if-none-match"), "");

    EXPECT_TRUE(LoadWithoutRequest());
}

TEST_F(PictureDamageTest, OneThatTheServerConfirmsIsFetchedAnewOnce) {
    const QByteArray tagged = "ETag: \"one\"\r\n";
    ASSERT_TRUE(Exchange(png, tagged));
    ASSERT_TRUE(SpoilWhatIsKept(png));
    Result result;
    Load(Url("/a"), result, &guard);
    const RawHttpRequest asked = Arrived();
    EXPECT_EQ(asked.Header("if-none-match"), "\"one\"");
    Answer(asked.connection, "", tagged, 304);
    const RawHttpRequest anew = Arrived();
    EXPECT_EQ(anew.Header("if-none-match"), "");
    Answer(anew.connection, png, fresh);

    ASSERT_TRUE(WaitFor(result));
    EXPECT_EQ(result.calls, 1);
    EXPECT_TRUE(result.picture);
    EXPECT_TRUE(LoadWithoutRequest());
}

TEST_F(PictureDamageTest, WhatComesInItsPlaceIsNoPictureEitherAndIsNotAskedForAThirdTime) {
    ASSERT_TRUE(Exchange(png, fresh));
    ASSERT_TRUE(SpoilWhatIsKept(png));

    EXPECT_FALSE(Exchange("no picture", fresh));

    EXPECT_THAT(server.Requests(), SizeIs(2));
    EXPECT_FALSE(QDirIterator(folder.path(), QDir::Files, QDirIterator::Subdirectories).hasNext());
    EXPECT_EQ(LoadWithOneRequest(png, fresh).Header("if-none-match"), "");
}

TEST_F(PictureDamageTest, AServerThatThenSaysNothingNewGivesNoPicture) {
    ASSERT_TRUE(Exchange(png, fresh));
    ASSERT_TRUE(SpoilWhatIsKept(png));

    EXPECT_FALSE(Exchange("", fresh, 304));
    EXPECT_THAT(server.Requests(), SizeIs(2));
}

TEST_F(PictureDamageTest, AGuardThatGoesMeanwhileHearsNothing) {
    ASSERT_TRUE(Exchange(png, fresh));
    ASSERT_TRUE(SpoilWhatIsKept(png));
    auto other = std::make_unique<QObject>();
    Result result;
    Load(Url("/a"), result, other.get());
    const int line = Arrived().connection;

    other.reset();

    EXPECT_TRUE(WaitInRealTime([&] { return !server.IsOpen(line); }));
    EXPECT_EQ(pictures->RunningCount(), 0);
    EXPECT_EQ(result.calls, 0);
}

// Halved until it is bearable.
TEST_F(PictureDamageTest, NoPictureIsMadeOfMoreThanSixteenMegapixels) {
    server.SetHandler([this](const RawHttpRequest& request) { Answer(request.connection, png); });
    struct Row {
        QSize asked;
        QSize given;
    };
    for (const auto& [asked, given] :
         {Row{{4000, 4000}, {4000, 4000}}, Row{{4002, 4000}, {2001, 2000}}, Row{{100'000, 2000}, {25'000, 500}}}) {
        Result result;
        Load(Url("/a"), result, &guard, asked);
        ASSERT_TRUE(WaitFor(result));
        ASSERT_TRUE(result.picture);
        EXPECT_EQ(result.picture->frames[0].image.size(), given);
    }
}

}  // namespace
