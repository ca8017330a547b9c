#include "store/SqliteStore.h"

#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>
#include <limits>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr auto kApp = std::nullopt;

class SqliteStoreTest : public ScriptedHostTest {
protected:
    QString Path() const { return folder.filePath(QStringLiteral("client.sqlite")); }

    QTemporaryDir folder;
};

TEST_F(SqliteStoreTest, TextIsReadByteForByteAlsoAfterReopening) {
    const std::string bytes(
        "\x00\xFF\x1A"
        "end",
        6);
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.IsOpen());
        EXPECT_TRUE(file.SaveString(kApp, "key", "first"));
        EXPECT_TRUE(file.SaveString(kApp, "key", bytes));
    }
    CSqliteStore file(Path());
    std::string value;

    ASSERT_TRUE(file.ReadString(kApp, "key", value));
    EXPECT_EQ(value, bytes);
}

TEST_F(SqliteStoreTest, FilesHaveTheNamesThatTheToolkitGivesThemInAnyLocale) {
    QTextCodec* before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    const QString path = folder.filePath(QStringLiteral("\u00E4.sqlite"));

    EXPECT_TRUE(CSqliteStore(path).SaveString(kApp, "key", "value"));

    EXPECT_GT(QFile(path).size(), 0);
    EXPECT_TRUE(QFile::exists(path + QStringLiteral(".lock")));
    QTextCodec::setCodecForLocale(before);
}

TEST_F(SqliteStoreTest, LockIsTheUsersAloneWhateverTheMask) {
    const mode_t before = umask(0);
    CSqliteStore file(Path());
    umask(before);

    EXPECT_EQ(QFile::permissions(Path() + QStringLiteral(".lock")) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(SqliteStoreTest, EmptyTextIsAValue) {
    CSqliteStore file(Path());
    std::string value = "before";

    EXPECT_TRUE(file.SaveString(7, "key", ""));
    ASSERT_TRUE(file.ReadString(7, "key", value));
    EXPECT_EQ(value, "");
}

TEST_F(SqliteStoreTest, InstallationAndUsersHaveSeparateValues) {
    CSqliteStore file(Path());
    std::string value;
    file.SaveString(kApp, "key", "app");
    file.SaveString(0, "key", "nobody");
    file.SaveString(18446744073709551615u, "key", "last");

    EXPECT_TRUE(file.ReadString(kApp, "key", value) && value == "app");
    EXPECT_TRUE(file.ReadString(0, "key", value) && value == "nobody");
    EXPECT_TRUE(file.ReadString(18446744073709551615u, "key", value) && value == "last");
    EXPECT_FALSE(file.ReadString(1, "key", value));
}

TEST_F(SqliteStoreTest, ReadLeavesTheValueUnchangedWhenTheKeyIsAbsent) {
    CSqliteStore file(Path());
    std::string text = "before";
    int64_t number = 7;

    EXPECT_FALSE(file.ReadString(kApp, "absent", text));
    EXPECT_FALSE(file.ReadInt64("absent", number));
    EXPECT_EQ(text, "before");
    EXPECT_EQ(number, 7);
}

TEST_F(SqliteStoreTest, ValueOfTheOtherTypeIsAbsent) {
    CSqliteStore file(Path());
    std::string text = "before";
    int64_t number = 7;
    file.SaveInt64("number", 1);
    file.SaveString(kApp, "text", "1");

    EXPECT_FALSE(file.ReadString(kApp, "number", text));
    EXPECT_FALSE(file.ReadInt64("text", number));
}

TEST_F(SqliteStoreTest, NumberKeepsSixtyFourBits) {
    CSqliteStore file(Path());
    int64_t number = 0;

    for (const int64_t value : {std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max(), int64_t(0)}) {
        ASSERT_TRUE(file.SaveInt64("key", value));
        ASSERT_TRUE(file.ReadInt64("key", number));
        EXPECT_EQ(number, value);
    }
}

TEST_F(SqliteStoreTest, KeyIsTextAndNotPartOfAStatement) {
    CSqliteStore file(Path());
    std::string value;

    EXPECT_TRUE(file.SaveString(kApp, "'; DROP TABLE config; --\xE6\x97\xA5", "kept"));
    EXPECT_TRUE(file.ReadString(kApp, "'; DROP TABLE config; --\xE6\x97\xA5", value));
    EXPECT_EQ(value, "kept");
}

TEST_F(SqliteStoreTest, EveryCallReturnsFalseWhenTheFileCantBeOpened) {
    CSqliteStore file(folder.filePath(QStringLiteral("no/such/folder/client.sqlite")));
    std::string value;
    int64_t number = 0;

    EXPECT_FALSE(file.IsOpen());
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("client.sqlite is not available: "))));
    EXPECT_FALSE(file.SaveString(kApp, "key", "value"));
    EXPECT_FALSE(file.ReadString(kApp, "key", value));
    EXPECT_FALSE(file.SaveInt64("key", 1));
    EXPECT_FALSE(file.ReadInt64("key", number));
}

}  // namespace
