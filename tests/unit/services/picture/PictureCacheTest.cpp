#include "picture/PictureCache.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

using namespace ::testing;

namespace {

class PictureCacheTest : public Test {
protected:
    QTemporaryDir folder;
    const QUrl url{QStringLiteral("https://pictures.test/a.png")};
    std::unique_ptr<CPictureCache> cache = std::make_unique<CPictureCache>(folder.path());
};

TEST_F(PictureCacheTest, GivesBackWhatIsFreshAlsoToTheNextClient) {
    const std::string bytes("zero \0 bytes too", 16);
    EXPECT_FALSE(cache->Find(url));

    cache->Keep(url, bytes, {60, "\"tag\""});
    cache = std::make_unique<CPictureCache>(folder.path());

    const auto entry = cache->Find(url);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->bytes, bytes);
    EXPECT_EQ(entry->tag, "\"tag\"");
    EXPECT_TRUE(entry->fresh);
    EXPECT_FALSE(cache->Find(QUrl(QStringLiteral("https://pictures.test/b.png"))));
}

TEST_F(PictureCacheTest, WhatIsOldIsNotFresh) {
    cache->Keep(url, "bytes", {0, "\"tag\""});

    ASSERT_TRUE(cache->Find(url));
    EXPECT_FALSE(cache->Find(url)->fresh);
}

TEST_F(PictureCacheTest, TheLastOneHolds) {
    cache->Keep(url, "old", {60, ""});
    cache->Keep(url, "new", {60, ""});

    EXPECT_EQ(cache->Find(url)->bytes, "new");
}

TEST_F(PictureCacheTest, WhatIsRemovedIsNotFound) {
    cache->Keep(url, "bytes", {60, "\"tag\""});

    cache->Remove(url);

    EXPECT_FALSE(cache->Find(url));
}

TEST_F(PictureCacheTest, HoldsAHundredMebibytesAndThenTheOldestGo) {
    EXPECT_EQ(CPictureCache::kMaxBytes, 100 * 1024 * 1024);
    const std::string large(21 << 20, 'x');
    const auto urlOf = [](int number) { return QUrl(QStringLiteral("https://pictures.test/%1").arg(number)); };

    for (int i = 0; i < 4; ++i) {
        cache->Keep(urlOf(i), large, {60, ""});
    }
    EXPECT_TRUE(cache->Find(urlOf(0)));
    for (int i = 4; i < 8; ++i) {
        cache->Keep(urlOf(i), large, {60, ""});
    }

    qint64 bytes = 0;
    for (QDirIterator files(folder.path(), QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        files.next();
        bytes += files.fileInfo().size();
    }
    EXPECT_LE(bytes, CPictureCache::kMaxBytes);
    EXPECT_GE(bytes, 60 << 20);
    EXPECT_FALSE(cache->Find(urlOf(0)));
    EXPECT_TRUE(cache->Find(urlOf(7)));
}

TEST_F(PictureCacheTest, AFolderThatCannotBeWrittenKeepsNothing) {
    QFile file(folder.filePath(QStringLiteral("taken")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    CPictureCache other(folder.filePath(QStringLiteral("taken/folder")));

    other.Keep(url, "bytes", {60, ""});

    EXPECT_FALSE(other.Find(url));
}

struct Words {
    const char* name;
    const char* cacheControl;
    const char* tag;
    int seconds;  // -1: not kept
};

void PrintTo(const Words& row, std::ostream* stream) {
    *stream << row.name;
}

class KeepingTest : public TestWithParam<Words> {};

TEST_P(KeepingTest, IsWhatTheServerSays) {
    const auto keeping = CPictureCache::KeepingOf(GetParam().cacheControl, GetParam().tag);
    EXPECT_EQ(keeping ? keeping->seconds : -1, GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, KeepingTest,
    Values(Words{"Nothing", "", "", -1}, Words{"Age", "max-age=60", "", 60},
           Words{"AgeAmongOthers", "public, MAX-AGE=60, immutable", "", 60}, Words{"TagAlone", "", "\"a\"", 0},
           Words{"NoStore", "max-age=60, no-store", "\"a\"", -1}, Words{"NoCache", "no-cache, max-age=60", "\"a\"", 0},
           Words{"NoCacheWithoutTag", "no-cache", "", -1}, Words{"NoNumber", "max-age=soon", "", -1},
           Words{"Negative", "max-age=-5", "", -1}, Words{"ForEver", "max-age=99999999999", "", 30 * 24 * 3600},
           Words{"TagOfControls", "", "a\tb", -1}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
