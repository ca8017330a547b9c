#include <sys/stat.h>

#include <QElapsedTimer>

#include "StoreFolderTest.h"
#include "store/StoreFiles.h"

using namespace ::testing;

namespace {

class StoreDamageTest : public StoreFolderTest {
protected:
    static constexpr int kKeys = 200;
    // A file with this number of values is verified before the first read.
    static constexpr int kKeysOfASmallFile = 60;

    static std::string Key(int n) { return "key" + std::to_string(n); }

    /// Larger than the page cache of a connection, so that most reads access the file.
    void FillFile(int keys = kKeys) const {
        CSqliteStore file(Path());
        for (int n = 0; n < keys; ++n) {
            ASSERT_TRUE(file.SaveString(kApp, Key(n), std::string(20'000, char('a' + n % 26))));
        }
    }

    void DamageAllButTheFirstPage() const { Overwrite(Path(), 4096, QFile(Path()).size() - 4096); }

    void ExpectOneQuarantinedFileThatIsLogged() {
        const QStringList moved = Quarantined();
        ASSERT_EQ(moved.size(), 1);
        EXPECT_THAT(moved[0].toStdString(), ContainsRegex("^client\\.sqlite\\.corrupt-[0-9]{8}T[0-9]{6}$"));
        EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("client.sqlite is damaged and was moved to " +
                                                          folder.filePath(moved[0]).toStdString() + ": "))));
    }

    void ExpectWorkingStore(CSqliteStore& file) const {
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
        EXPECT_TRUE(file.SaveString(kApp, "after", "value"));
        EXPECT_EQ(Read(file, "after"), "value");
    }
};

TEST_F(StoreDamageTest, FileThatIsNotADatabaseIsQuarantinedUnchanged) {
    const QByteArray words = QByteArray("These are words and no pages. ").repeated(500);
    QFile garbage(Path());
    ASSERT_TRUE(garbage.open(QIODevice::WriteOnly) && garbage.write(words) == words.size());
    garbage.close();

    {
        CSqliteStore file(Path());
        ExpectOneQuarantinedFileThatIsLogged();
        ExpectWorkingStore(file);
    }

    EXPECT_EQ(Bytes(folder.filePath(Quarantined().value(0))), words);
    CSqliteStore file(Path());
    EXPECT_EQ(Read(file, "after"), "value");
    EXPECT_EQ(Quarantined().size(), 1);
}

TEST_F(StoreDamageTest, DamagedPagesAreFoundWhenOpening) {
    FillFile(kKeysOfASmallFile);
    Overwrite(Path(), QFile(Path()).size() / 2, 4096 * 4);

    CSqliteStore file(Path());

    ExpectOneQuarantinedFileThatIsLogged();
    ExpectWorkingStore(file);
    EXPECT_EQ(Read(file, Key(0)), "absent");
}

TEST_F(StoreDamageTest, DamagedPagesOfALargeFileAreFoundWithoutReadingThem) {
    FillFile();
    Overwrite(Path(), QFile(Path()).size() - 4096 * 4, 4096 * 4);  // in the last value

    CSqliteStore file(Path());
    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
    QElapsedTimer waited;
    waited.start();
    while (Quarantined().isEmpty() && waited.elapsed() < 20'000) {
        Read(file, Key(0));
    }

    ExpectOneQuarantinedFileThatIsLogged();
    ExpectWorkingStore(file);
}

TEST_F(StoreDamageTest, IntactLargeFileIsKept) {
    FillFile();
    {
        CSqliteStore file(Path());
        EXPECT_EQ(Read(file, Key(0)), std::string(20'000, 'a'));
        EXPECT_TRUE(file.SaveString(kApp, "after", "value"));
    }

    CSqliteStore file(Path());
    EXPECT_EQ(Read(file, "after"), "value");
    EXPECT_THAT(Quarantined(), IsEmpty());
}

TEST_F(StoreDamageTest, FileThatCantBeQuarantinedRefusesSaves) {
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
    EXPECT_TRUE(Quarantined().isEmpty());
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
}

TEST_F(StoreDamageTest, TruncatedFileIsFoundWhenOpening) {
    FillFile();
    ASSERT_TRUE(QFile::resize(Path(), QFile(Path()).size() / 2));

    CSqliteStore file(Path());

    ExpectOneQuarantinedFileThatIsLogged();
    ExpectWorkingStore(file);
}

TEST_F(StoreDamageTest, FileIsQuarantinedWhenALaterReadFindsDamage) {
    FillFile();
    CSqliteStore file(Path());
    DamageAllButTheFirstPage();

    int absent = 0;
    for (int n = 0; n < kKeys; ++n) {
        absent += Read(file, Key(n)) == "absent" ? 1 : 0;
    }

    ExpectOneQuarantinedFileThatIsLogged();
    EXPECT_GT(absent, 0);
    ExpectWorkingStore(file);
}

TEST_F(StoreDamageTest, SaveIsRepeatedInANewFileWhenItFindsDamage) {
    FillFile();
    CSqliteStore file(Path());
    DamageAllButTheFirstPage();

    std::string last;
    for (int n = 0; n < kKeys && Quarantined().isEmpty(); ++n) {
        last = Key(n);
        EXPECT_TRUE(file.SaveString(kApp, last, "saved"));
    }

    ExpectOneQuarantinedFileThatIsLogged();
    EXPECT_EQ(Read(file, last), "saved");
    ExpectWorkingStore(file);
}

TEST_F(StoreDamageTest, LogAndIndexAreQuarantinedToo) {
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
    Overwrite(Path() + QStringLiteral("-wal"), 0, 32);  // an intact log would replace the page

    // when
    CSqliteStore file(Path());

    // then
    ExpectOneQuarantinedFileThatIsLogged();
    const QString moved = folder.filePath(Quarantined().value(0));
    EXPECT_EQ(Bytes(moved + QStringLiteral("-wal")).size(), logBytes.size());
    EXPECT_TRUE(QFile::exists(moved + QStringLiteral("-shm")));
    ExpectWorkingStore(file);
}

TEST_F(StoreDamageTest, TruncatedLogLosesItsLastSaveOnly) {
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

TEST_F(StoreDamageTest, TwoQuarantinesInOneSecondGetDifferentNames) {
    const QDateTime now(QDate(2026, 3, 4), QTime(5, 6, 7), Qt::UTC);
    for (const char* text : {"first", "second"}) {
        QFile file(Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) > 0);
        file.close();
        EXPECT_FALSE(store_files::Quarantine(Path(), now).isEmpty());
    }

    EXPECT_EQ(Bytes(Path() + QStringLiteral(".corrupt-20260304T050607")), "first");
    EXPECT_EQ(Bytes(Path() + QStringLiteral(".corrupt-20260304T050607-2")), "second");
    EXPECT_TRUE(store_files::Quarantine(Path(), now).isEmpty());
}

}  // namespace
