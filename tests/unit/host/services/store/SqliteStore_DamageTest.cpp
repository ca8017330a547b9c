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

/// The files of a client that was killed after its saves.
class KilledStoreTest : public StoreDamageTest {
protected:
    static constexpr int kSaves = 8;
    static constexpr qint64 kFrameBytes = 24 + 4096;

    void SetUp() override { SaveAndKill(); }

    void SaveAndKill() {
        for (const QString& path : {Path(), Copy(), Log(), Copy() + QStringLiteral("-shm")}) {
            QFile::remove(path);
        }
        CSqliteStore file(Path());
        for (int n = 0; n < kSaves; ++n) {
            ASSERT_TRUE(file.SaveString(kApp, Key(n), "value"));
        }
        ASSERT_TRUE(QFile::copy(Path(), Copy()) && QFile::copy(Path() + QStringLiteral("-wal"), Log()));
    }

    QString Copy() const { return folder.filePath(QStringLiteral("killed.sqlite")); }
    QString Log() const { return Copy() + QStringLiteral("-wal"); }
    QStringList KeptLogs() const {
        return QDir(folder.path()).entryList({QStringLiteral("killed.sqlite-wal.corrupt-*")}, QDir::Files);
    }
    static int KeysOf(CSqliteStore& file) {
        int keys = 0;
        for (int n = 0; n < kSaves; ++n) {
            keys += Read(file, Key(n)) == "value" ? 1 : 0;
        }
        return keys;
    }
};

TEST_F(KilledStoreTest, WholeLogIsRecoveredAndNotKept) {
    CSqliteStore file(Copy());

    EXPECT_EQ(KeysOf(file), kSaves);
    EXPECT_THAT(KeptLogs(), IsEmpty());
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(KilledStoreTest, DamagedLogIsKeptAndLogged) {
    const qint64 size = QFile(Log()).size();
    // A damage in the head, in a page, in a frame's own head, and in the last page but one.
    for (const qint64 at : {qint64(0), 32 + kFrameBytes + 1000, 32 + 2 * kFrameBytes, size - kFrameBytes - 2000}) {
        SCOPED_TRACE(at);
        log.Forget();
        const int kept = KeptLogs().size();
        ASSERT_NO_FATAL_FAILURE(SaveAndKill());
        Overwrite(Log(), at, 100);
        const QByteArray damaged = Bytes(Log());

        CSqliteStore file(Copy());

        EXPECT_LT(KeysOf(file), kSaves);
        ASSERT_EQ(KeptLogs().size(), std::min(kept + 1, 3));
        EXPECT_EQ(Bytes(folder.filePath(KeptLogs().back())), damaged);
        EXPECT_THAT(log.Lines(),
                    Contains(Error(AllOf(HasSubstr("The log of the store "), HasSubstr("killed.sqlite is damaged: "),
                                         HasSubstr(KeptLogs().back().toStdString())))));
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
    }
}

TEST_F(KilledStoreTest, UnfinishedWriteIsNoDamage) {
    // A kill inside a write leaves pages without an end of their transaction, or half a page.
    const qint64 size = QFile(Log()).size();
    for (const qint64 less : {qint64(1), kFrameBytes - 1, kFrameBytes, kFrameBytes + 1}) {
        EXPECT_TRUE(QFile::resize(Log(), size - less));
        EXPECT_EQ(store_files::LostPages(Copy()), 0) << less;
    }
    EXPECT_TRUE(QFile::resize(Log(), 32));
    EXPECT_EQ(store_files::LostPages(Copy()), 0);
    EXPECT_TRUE(QFile::remove(Log()));
    EXPECT_EQ(store_files::LostPages(Copy()), 0);
}

TEST_F(KilledStoreTest, LastPageThatIsHalfWrittenOverAnOlderOneIsNoDamage) {
    Overwrite(Log(), QFile(Log()).size() - 2000, 2000);

    EXPECT_EQ(store_files::LostPages(Copy()), 0);
}

TEST_F(KilledStoreTest, RestOfALogBeforeItsRestartIsNoDamage) {
    CSqliteConnection connection;
    ASSERT_TRUE(connection.Open(Copy(), EnSqliteAccess::kReadWrite) &&
                connection.Integer("PRAGMA wal_checkpoint(RESTART)").has_value() &&
                connection.Run("UPDATE config SET value = 'new' WHERE key = 'key0'"));

    EXPECT_EQ(store_files::LostPages(Copy()), 0);
}

struct OtherFile {
    const char* name;
    const char* sql;
};

class OtherSchemaTest : public StoreDamageTest, public WithParamInterface<OtherFile> {};

TEST_P(OtherSchemaTest, IsMovedAsideUnchanged) {
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "key", "value"));
    }
    {
        SQLite::Database other(Path().toStdString(), SQLite::OPEN_READWRITE);
        other.exec(GetParam().sql);
    }

    CSqliteStore file(Path());

    ExpectOneQuarantinedFileThatIsLogged();
    ExpectWorkingStore(file);
    EXPECT_EQ(Read(file, "key"), "absent");
}

INSTANTIATE_TEST_SUITE_P(
    Files, OtherSchemaTest,
    Values(OtherFile{"OtherColumn", "ALTER TABLE config RENAME COLUMN value TO content"},
           OtherFile{"MoreColumns", "ALTER TABLE config ADD COLUMN more"},
           OtherFile{"NoKey", "DROP TABLE config; CREATE TABLE config (owner, key, value)"},
           OtherFile{"View", "DROP TABLE config; CREATE VIEW config AS SELECT 1 AS owner, 2 AS key, 3 AS value"},
           OtherFile{"FlippedVersion", "PRAGMA user_version=3"},
           OtherFile{"FlippedHighBit", "PRAGMA user_version=1073741825"},
           OtherFile{"NegativeVersion", "PRAGMA user_version=-2147483647"},
           OtherFile{"FlippedMark", "PRAGMA application_id=1515323397"}),
    [](const auto& row) { return row.param.name; });

TEST_F(StoreDamageTest, LastThreeDamagedCopiesAreKept) {
    for (int day = 1; day <= 5; ++day) {
        for (const char* ending : {"", "-wal", "-shm"}) {
            QFile file(Path() + QLatin1String(ending));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("x") > 0);
        }
        store_files::Quarantine(Path(), QDateTime(QDate(2026, 3, day), QTime(5, 6, 7), Qt::UTC));
    }

    EXPECT_THAT(Quarantined(), ElementsAre(QStringLiteral("client.sqlite.corrupt-20260303T050607"),
                                           QStringLiteral("client.sqlite.corrupt-20260304T050607"),
                                           QStringLiteral("client.sqlite.corrupt-20260305T050607")));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 9);
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
