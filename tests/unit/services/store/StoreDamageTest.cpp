#include <sys/stat.h>

#include <QElapsedTimer>

#include "StoreFolderTest.h"
#include "store/StoreFiles.h"

using namespace ::testing;

namespace {

class StoreDamageTest : public StoreFolderTest {
protected:
    static constexpr int kKeys = 200;
    // Of so many values the file is checked before anything is read from it.
    static constexpr int kKeysOfASmallFile = 60;

    static std::string Key(int n) { return "key" + std::to_string(n); }

    /// Larger than what a connection keeps in memory, so that most reads go to the file.
    void FillFile(int keys = kKeys) const {
        CSqliteStore file(Path());
        for (int n = 0; n < keys; ++n) {
            ASSERT_TRUE(file.SaveString(kApp, Key(n), std::string(20'000, char('a' + n % 26))));
        }
    }

    void DamageAllButTheFirstPage() const { Overwrite(Path(), 4096, QFile(Path()).size() - 4096); }

    void ExpectOneFileMovedAsideAndToldInTheLog() {
        const QStringList moved = MovedAside();
        ASSERT_EQ(moved.size(), 1);
        EXPECT_THAT(moved[0].toStdString(), ContainsRegex("^client\\.sqlite\\.corrupt-[0-9]{8}T[0-9]{6}$"));
        EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("client.sqlite is damaged and was moved to " +
                                                          folder.filePath(moved[0]).toStdString() + ": "))));
    }

    void ExpectTheStoreWorksOn(CSqliteStore& file) const {
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
        EXPECT_TRUE(file.SaveString(kApp, "after", "value"));
        EXPECT_EQ(Read(file, "after"), "value");
    }
};

TEST_F(StoreDamageTest, AFileThatIsNoDatabaseIsMovedAsideAsItWas) {
    const QByteArray words = QByteArray("These are words and no pages. ").repeated(500);
    QFile garbage(Path());
    ASSERT_TRUE(garbage.open(QIODevice::WriteOnly) && garbage.write(words) == words.size());
    garbage.close();

    {
        CSqliteStore file(Path());
        ExpectOneFileMovedAsideAndToldInTheLog();
        ExpectTheStoreWorksOn(file);
    }

    EXPECT_EQ(Bytes(folder.filePath(MovedAside().value(0))), words);
    CSqliteStore file(Path());
    EXPECT_EQ(Read(file, "after"), "value");
    EXPECT_EQ(MovedAside().size(), 1);
}

TEST_F(StoreDamageTest, DamagedPagesAreFoundAtOpening) {
    FillFile(kKeysOfASmallFile);
    Overwrite(Path(), QFile(Path()).size() / 2, 4096 * 4);

    CSqliteStore file(Path());

    ExpectOneFileMovedAsideAndToldInTheLog();
    ExpectTheStoreWorksOn(file);
    EXPECT_EQ(Read(file, Key(0)), "absent");
}

TEST_F(StoreDamageTest, DamagedPagesOfALargeFileAreFoundWithoutReadingThem) {
    FillFile();
    Overwrite(Path(), QFile(Path()).size() - 4096 * 4, 4096 * 4);  // of the last value

    CSqliteStore file(Path());
    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
    QElapsedTimer waited;
    waited.start();
    while (MovedAside().isEmpty() && waited.elapsed() < 20'000) {
        Read(file, Key(0));
    }

    ExpectOneFileMovedAsideAndToldInTheLog();
    ExpectTheStoreWorksOn(file);
}

TEST_F(StoreDamageTest, ALargeFileThatIsWholeStays) {
    FillFile();
    {
        CSqliteStore file(Path());
        EXPECT_EQ(Read(file, Key(0)), std::string(20'000, 'a'));
        EXPECT_TRUE(file.SaveString(kApp, "after", "value"));
    }

    CSqliteStore file(Path());
    EXPECT_EQ(Read(file, "after"), "value");
    EXPECT_THAT(MovedAside(), IsEmpty());
}

TEST_F(StoreDamageTest, AFileThatCantBeMovedAsideTakesNoSaves) {
    FillFile();
    CSqliteStore file(Path());
    DamageAllButTheFirstPage();
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0555), 0);
    {
        const CWithoutRoot nobody;

        int refused = 0;
        for (int n = 0; n < kKeys; ++n) {
            refused += file.SaveString(kApp, Key(n), "saved") ? 0 : 1;
        }

        EXPECT_GT(refused, 0);
        EXPECT_FALSE(file.SaveString(kApp, Key(0), "saved"));
    }
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("client.sqlite is damaged and can't be moved aside: "))));
    EXPECT_TRUE(MovedAside().isEmpty());
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
}

TEST_F(StoreDamageTest, AFileThatWasCutOffIsFoundAtOpening) {
    FillFile();
    ASSERT_TRUE(QFile::resize(Path(), QFile(Path()).size() / 2));

    CSqliteStore file(Path());

    ExpectOneFileMovedAsideAndToldInTheLog();
    ExpectTheStoreWorksOn(file);
}

TEST_F(StoreDamageTest, DamageThatAReadMeetsLaterIsMovedAside) {
    FillFile();
    CSqliteStore file(Path());
    DamageAllButTheFirstPage();

    int absent = 0;
    for (int n = 0; n < kKeys; ++n) {
        absent += Read(file, Key(n)) == "absent" ? 1 : 0;
    }

    ExpectOneFileMovedAsideAndToldInTheLog();
    EXPECT_GT(absent, 0);
    ExpectTheStoreWorksOn(file);
}

TEST_F(StoreDamageTest, DamageThatASaveMeetsLaterIsMovedAsideAndTheSaveIsTaken) {
    FillFile();
    CSqliteStore file(Path());
    DamageAllButTheFirstPage();

    std::string last;
    for (int n = 0; n < kKeys && MovedAside().isEmpty(); ++n) {
        last = Key(n);
        EXPECT_TRUE(file.SaveString(kApp, last, "saved"));
    }

    ExpectOneFileMovedAsideAndToldInTheLog();
    EXPECT_EQ(Read(file, last), "saved");
    ExpectTheStoreWorksOn(file);
}

TEST_F(StoreDamageTest, TheLogAndItsIndexAreMovedAlong) {
    // given the files of a client that was killed, with a damaged database
    QTemporaryDir other;
    QByteArray logBytes;
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "key", "value"));
        for (const char* ending : {"", "-wal", "-shm"}) {
            ASSERT_TRUE(QFile::copy(Path() + QLatin1String(ending),
                                    other.filePath(QStringLiteral("client.sqlite") + QLatin1String(ending))));
        }
    }
    ASSERT_TRUE(QDir(folder.path()).removeRecursively() && QDir().rename(other.path(), folder.path()));
    logBytes = Bytes(Path() + QStringLiteral("-wal"));
    ASSERT_FALSE(logBytes.isEmpty());
    Overwrite(Path(), 0, 4096);
    Overwrite(Path() + QStringLiteral("-wal"), 0, 32);  // or the log would heal the page

    // when
    CSqliteStore file(Path());

    // then
    ExpectOneFileMovedAsideAndToldInTheLog();
    const QString moved = folder.filePath(MovedAside().value(0));
    EXPECT_EQ(Bytes(moved + QStringLiteral("-wal")).size(), logBytes.size());
    EXPECT_TRUE(QFile::exists(moved + QStringLiteral("-shm")));
    ExpectTheStoreWorksOn(file);
}

TEST_F(StoreDamageTest, ALogThatWasCutOffLosesItsLastSaveOnly) {
    // given the files of a client that was killed inside a write
    const QString copy = folder.filePath(QStringLiteral("killed.sqlite"));
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "first", "value"));
        ASSERT_TRUE(file.SaveString(kApp, "second", "value"));
        ASSERT_TRUE(QFile::copy(Path(), copy));
        ASSERT_TRUE(QFile::copy(Path() + QStringLiteral("-wal"), copy + QStringLiteral("-wal")));
    }
    const QString copiedLog = copy + QStringLiteral("-wal");
    ASSERT_TRUE(QFile::resize(copiedLog, QFile(copiedLog).size() - 1));

    CSqliteStore file(copy);

    EXPECT_EQ(Read(file, "first"), "value");
    EXPECT_EQ(Read(file, "second"), "absent");
    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
}

TEST_F(StoreDamageTest, TwoThatAreMovedInOneSecondKeepTheirOwnNames) {
    const QDateTime now(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC);
    for (const char* words : {"first", "second"}) {
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(words) > 0);
        file.close();
        EXPECT_FALSE(store_files::MoveAside(Path(), now).isEmpty());
    }

    EXPECT_EQ(Bytes(Path() + QStringLiteral(".corrupt-20260304T050607")), "first");
    EXPECT_EQ(Bytes(Path() + QStringLiteral(".corrupt-20260304T050607-2")), "second");
    EXPECT_TRUE(store_files::MoveAside(Path(), now).isEmpty());
}

}  // namespace
