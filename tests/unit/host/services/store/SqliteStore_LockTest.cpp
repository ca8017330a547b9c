// Another program locks the store, as a backup or a shell does.
#include <QCoreApplication>
#include <QElapsedTimer>

#include "StoreFolderTest.h"
#include "support/RealTime.h"

using namespace ::testing;

namespace {

constexpr int kMaxWaitMs = 50;

class StoreLockTest : public StoreFolderTest {
protected:
    ~StoreLockTest() override { log.Forget(); }

    /// Locks the file against writers until Unlock.
    void Lock() {
        m_pOther = std::make_unique<SQLite::Database>(Path().toStdString(), SQLite::OPEN_READWRITE);
        m_pOther->exec("BEGIN IMMEDIATE");
    }
    void Unlock() { m_pOther.reset(); }

    std::unique_ptr<SQLite::Database> m_pOther;
};

TEST_F(StoreLockTest, SavesOfOneSliceWaitFiftyMillisecondsTogether) {
    CSqliteStore file(Path());
    Lock();
    QElapsedTimer waited;
    waited.start();

    for (int n = 0; n < 20; ++n) {
        EXPECT_FALSE(file.SaveString(kApp, "key" + std::to_string(n), "value"));
    }

    EXPECT_LE(waited.elapsed(), kMaxWaitMs);
    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kLocked);
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("client.sqlite is locked by another program"))));
}

TEST_F(StoreLockTest, ValuesThatWaitAreReadAndWrittenWithTheNextSave) {
    CSqliteStore file(Path());
    ASSERT_TRUE(file.SaveString(kApp, "text", "old"));
    Lock();
    EXPECT_FALSE(file.SaveString(kApp, "text", "first"));
    EXPECT_FALSE(file.SaveString(kApp, "text", "second"));
    EXPECT_FALSE(file.SaveInt64("number", 7));
    int64_t number = 0;
    EXPECT_EQ(Read(file, "text"), "second");
    EXPECT_TRUE(file.ReadInt64("number", number));
    EXPECT_EQ(number, 7);
    log.Forget();

    Unlock();
    EXPECT_TRUE(file.SaveString(kApp, "other", "value"));

    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
    EXPECT_THAT(log.Lines(), ElementsAre(Info(EndsWith("takes saves again"))));
    EXPECT_EQ(Sql("SELECT value FROM config WHERE key = 'text'"), "second");
    EXPECT_EQ(Sql("SELECT value FROM config WHERE key = 'number'"), "7");
    EXPECT_EQ(Sql("SELECT value FROM config WHERE key = 'other'"), "value");
}

TEST_F(StoreLockTest, ValuesThatWaitAreWrittenWithoutAnotherSave) {
    CSqliteStore file(Path());
    Lock();
    EXPECT_FALSE(file.SaveString(kApp, "key", "value"));

    Unlock();

    EXPECT_TRUE(WaitInRealTime([&] { return file.Trouble() == EnStoreTrouble::kNone; }));
    EXPECT_EQ(Sql("SELECT value FROM config WHERE key = 'key'"), "value");
}

TEST_F(StoreLockTest, ValuesThatWaitAreWrittenAtTheEnd) {
    {
        CSqliteStore file(Path());
        Lock();
        EXPECT_FALSE(file.SaveString(kApp, "key", "value"));
        Unlock();
    }

    CSqliteStore file(Path());
    EXPECT_EQ(Read(file, "key"), "value");
}

TEST_F(StoreLockTest, ValuesThatAreLostAtTheEndAreLogged) {
    {
        CSqliteStore file(Path());
        Lock();
        EXPECT_FALSE(file.SaveString(kApp, "key", "value"));
    }

    EXPECT_THAT(log.Lines(), Contains(Error(StartsWith("1 values that waited for the store "))));
    Unlock();
}

TEST_F(StoreLockTest, MemoryOfTheValuesThatWaitIsBounded) {
    CSqliteStore file(Path());
    Lock();
    const std::string large(600'000, 'x');

    EXPECT_FALSE(file.SaveString(kApp, "first", large));
    EXPECT_FALSE(file.SaveString(kApp, "first", large));
    EXPECT_FALSE(file.SaveString(kApp, "second", large));

    EXPECT_EQ(Read(file, "first"), large);
    EXPECT_EQ(Read(file, "second"), "absent");
    EXPECT_THAT(log.Lines(), Contains(Error("Saving second failed: too much waits for the locked store")));
}

TEST_F(StoreLockTest, StoreIsOpenedReadAndWrittenLaterWhileItIsLocked) {
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "old", "value"));
    }
    Lock();
    QElapsedTimer waited;
    waited.start();

    CSqliteStore file(Path());

    EXPECT_EQ(file.Trouble(), EnStoreTrouble::kLocked);
    EXPECT_EQ(Read(file, "old"), "value");
    EXPECT_FALSE(file.SaveString(kApp, "new", "value"));
    EXPECT_LE(waited.elapsed(), 2 * kMaxWaitMs) << "two connections";
    Unlock();
    EXPECT_TRUE(file.SaveString(kApp, "other", "value"));
    EXPECT_EQ(Sql("SELECT value FROM config WHERE key = 'new'"), "value");
    EXPECT_THAT(Quarantined(), IsEmpty());
}

}  // namespace
