#include <sys/stat.h>

#include "StoreFolderTest.h"
#include "store/StoreSchema.h"

using namespace ::testing;

namespace {

class StoreTroubleTest : public StoreFolderTest {
protected:
    void FillFile() const {
        CSqliteStore file(Path());
        for (int n = 0; n < 3; ++n) {
            ASSERT_TRUE(file.SaveString(kApp, "old" + std::to_string(n), Value(n)));
        }
    }

    static std::string Value(int n) { return std::to_string(n) + std::string(10'000, char('a' + n % 26)); }

    static void ExpectOldValues(CSqliteStore& file) {
        for (int n = 0; n < 3; ++n) {
            EXPECT_EQ(Read(file, "old" + std::to_string(n)), Value(n));
        }
    }

    void RecordTroubles(CSqliteStore& file) {
        QObject::connect(&file, &CSqliteStore::TroubleChanged, &file,
                         [this](EnStoreTrouble trouble) { m_troubles.push_back(trouble); });
    }

    std::vector<EnStoreTrouble> m_troubles;
};

TEST_F(StoreTroubleTest, SecondClientReadsAndCantSave) {
    FillFile();
    CSqliteStore first(Path());

    CSqliteStore second(Path());

    EXPECT_EQ(second.Trouble(), EnStoreTrouble::kSecondClient);
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error(EndsWith("client.sqlite is in use by another client, nothing is saved"))));
    ExpectOldValues(second);
    EXPECT_TRUE(first.SaveString(kApp, "key", "of the first"));
    EXPECT_FALSE(second.SaveString(kApp, "key", "of the second"));
    EXPECT_EQ(Read(second, "key"), "of the first");
    EXPECT_EQ(first.Trouble(), EnStoreTrouble::kNone);
}

TEST_F(StoreTroubleTest, SecondClientTakesOverWhenTheFirstHasEnded) {
    auto first = std::make_unique<CSqliteStore>(Path());
    CSqliteStore second(Path());
    RecordTroubles(second);
    ASSERT_TRUE(first->SaveString(kApp, "key", "of the first"));
    ASSERT_FALSE(second.SaveString(kApp, "key", "of the second"));
    log.Forget();

    first.reset();

    EXPECT_EQ(Read(second, "key"), "of the first");
    EXPECT_TRUE(second.SaveString(kApp, "key", "of the second"));
    EXPECT_EQ(Read(second, "key"), "of the second");
    EXPECT_THAT(m_troubles, ElementsAre(EnStoreTrouble::kNone));
}

TEST_F(StoreTroubleTest, ReadOnlyFileIsRead) {
    FillFile();
    ASSERT_EQ(chmod(QFile::encodeName(Path()).constData(), 0444), 0);
    ASSERT_EQ(chmod(QFile::encodeName(folder.path()).constData(), 0777), 0);
    ASSERT_EQ(chmod(QFile::encodeName(Path() + QStringLiteral(".lock")).constData(), 0666), 0);
    const CWithoutRoot nobody;

    CSqliteStore file(Path());

    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kReadOnly);
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("client.sqlite is read-only, nothing is saved"))));
    ExpectOldValues(file);
    EXPECT_FALSE(file.SaveString(kApp, "old0", "new"));
    ExpectOldValues(file);
}

TEST_F(StoreTroubleTest, FileIsWrittenAgainWhenItsFolderBecomesWritable) {
    FillFile();
    const QByteArray path = QFile::encodeName(folder.path());
    for (const QFileInfo& file : QDir(folder.path()).entryInfoList(QDir::Files)) {
        ASSERT_EQ(chmod(QFile::encodeName(file.filePath()).constData(), 0444), 0);
    }
    ASSERT_EQ(chmod(path.constData(), 0555), 0);
    auto nobody = std::make_unique<CWithoutRoot>();

    CSqliteStore file(Path());

    RecordTroubles(file);
    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kReadOnly);
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("client.sqlite is read-only, nothing is saved"))));
    ExpectOldValues(file);
    EXPECT_FALSE(file.SaveString(kApp, "old0", "new"));
    ExpectOldValues(file);

    nobody.reset();
    for (const QFileInfo& each : QDir(folder.path()).entryInfoList(QDir::Files)) {
        ASSERT_EQ(chmod(QFile::encodeName(each.filePath()).constData(), 0644), 0);
    }
    ASSERT_EQ(chmod(path.constData(), 0755), 0);
    EXPECT_TRUE(file.SaveString(kApp, "key", "new"));
    ExpectOldValues(file);
    EXPECT_THAT(m_troubles, ElementsAre(EnStoreTrouble::kNone));
}

TEST_F(StoreTroubleTest, FullDiskRefusesSavesUntilThereIsSpace) {
    FillFile();
    CSqliteStore file(Path());
    RecordTroubles(file);
    int refused = -1;
    {
        const CFileSizeLimit full(200'000);
        for (int n = 0; n < 40 && refused < 0; ++n) {
            refused = file.SaveString(kApp, "new" + std::to_string(n), Value(n)) ? -1 : n;
        }

        ASSERT_GT(refused, 0);
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kDiskFull);
        EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("client.sqlite can't be written, the disk is full"))));
        EXPECT_FALSE(file.SaveString(kApp, "old0", Value(9)));
        EXPECT_FALSE(file.SaveString(kApp, "old1", Value(9)));
        log.Forget();
        ExpectOldValues(file);
    }

    EXPECT_TRUE(file.SaveString(kApp, "new" + std::to_string(refused), Value(refused)));

    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
    EXPECT_THAT(m_troubles, ElementsAre(EnStoreTrouble::kDiskFull, EnStoreTrouble::kNone));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(EndsWith("client.sqlite takes saves again"))));
    for (int n = 0; n <= refused; ++n) {
        EXPECT_EQ(Read(file, "new" + std::to_string(n)), Value(n));
    }
}

TEST_F(StoreTroubleTest, StoreOpenedOnAFullDiskReadsAndSavesOnceThereIsSpace) {
    FillFile();
    auto full = std::make_unique<CFileSizeLimit>(0);
    CSqliteStore file(Path());
    RecordTroubles(file);

    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kDiskFull);
    ExpectOldValues(file);
    EXPECT_FALSE(file.SaveString(kApp, "key", "new"));
    ExpectOldValues(file);
    log.Forget();

    full.reset();
    EXPECT_TRUE(file.SaveString(kApp, "key", "new"));
    ExpectOldValues(file);
    EXPECT_THAT(m_troubles, ElementsAre(EnStoreTrouble::kNone));
}

// A save writes several times; each limit makes another one of these writes fail.
TEST_F(StoreTroubleTest, AcknowledgedSavesSurviveAnyFailedWrite) {
    FillFile();
    const QByteArray filled = Bytes(Path());
    int both = 0;
    for (rlim_t limit = 0; limit <= 256 * 1024; limit += 4096) {
        SCOPED_TRACE(limit);
        QTemporaryDir place;
        const QString path = place.filePath(QStringLiteral("client.sqlite"));
        ASSERT_TRUE(QFile::copy(Path(), path));
        std::vector<bool> acknowledged;
        {
            const CFileSizeLimit full(limit);
            CSqliteStore file(path);
            for (int n = 0; n < 24; ++n) {
                acknowledged.push_back(file.SaveString(kApp, "new" + std::to_string(n), Value(n)));
            }
            ExpectOldValues(file);
        }
        log.Forget();

        CSqliteStore file(path);
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
        ExpectOldValues(file);
        for (int n = 0; n < 24; ++n) {
            EXPECT_EQ(Read(file, "new" + std::to_string(n)), acknowledged[size_t(n)] ? Value(n) : "absent");
        }
        const auto taken = std::count(acknowledged.begin(), acknowledged.end(), true);
        both += taken > 0 && taken < 24 ? 1 : 0;
        if (limit == 0) {
            EXPECT_EQ(taken, 0);
        }
        EXPECT_EQ(QDir(place.path()).entryList({QStringLiteral("*corrupt*")}).size(), 0);
    }
    EXPECT_GT(both, 30);
    EXPECT_EQ(Bytes(Path()), filled);
}

// The same while the file is created.
TEST_F(StoreTroubleTest, NewFileIsIntactAtTheNextStartAfterAnyFailedWrite) {
    for (rlim_t limit = 0; limit <= 80 * 1024; limit += 4096) {
        SCOPED_TRACE(limit);
        QTemporaryDir place;
        const QString path = place.filePath(QStringLiteral("client.sqlite"));
        bool acknowledged = false;
        {
            const CFileSizeLimit full(limit);
            CSqliteStore file(path);
            acknowledged = file.SaveString(kApp, "key", Value(1));
        }
        log.Forget();

        CSqliteStore file(path);
        EXPECT_EQ(Read(file, "key"), acknowledged ? Value(1) : "absent");
        EXPECT_TRUE(file.SaveString(kApp, "key", Value(2)));
        EXPECT_EQ(acknowledged, limit >= 32 * 1024) << "the log's index has this size, the database and the log less";
        EXPECT_EQ(QDir(place.path()).entryList({QStringLiteral("*corrupt*")}).size(), 0);
    }
}

}  // namespace
