// Another program locks the outbox, as a backup or a shell does.
#include <QElapsedTimer>

#include "../store/StoreFolderTest.h"
#include "report/Outbox.h"

using namespace ::testing;

namespace {

class OutboxLockTest : public StoreFolderTest {
protected:
    ~OutboxLockTest() override { log.Forget(); }

    void Lock() {
        m_pOther = std::make_unique<SQLite::Database>(Path().toStdString(), SQLite::OPEN_READWRITE);
        m_pOther->exec("BEGIN IMMEDIATE");
    }
    void Unlock() { m_pOther.reset(); }

    static std::string IdOf(int n) { return "id" + std::to_string(n); }

    static bool Add(COutbox& outbox, int n, size_t filling = 0) {
        return outbox.Add(IdOf(n), R"({"id":")" + IdOf(n) + R"(","f":")" + std::string(filling, 'x') + "\"}");
    }

    static std::vector<std::string> Ids(COutbox& outbox) {
        std::vector<std::string> ids;
        for (const OutboxEvent& event : outbox.Read(0, 100'000, 1 << 30)) {
            ids.push_back(event.id);
        }
        return ids;
    }

    std::unique_ptr<SQLite::Database> m_pOther;
};

TEST_F(OutboxLockTest, EventsOfOneSliceWaitFiftyMillisecondsTogether) {
    COutbox outbox(Path());
    ASSERT_TRUE(Add(outbox, 1));
    Lock();
    QElapsedTimer waited;
    waited.start();

    for (int n = 2; n < 20; ++n) {
        EXPECT_FALSE(Add(outbox, n));
    }

    EXPECT_LE(waited.elapsed(), 50);
    EXPECT_THAT(log.Lines(), ElementsAre(Error(HasSubstr("is locked by another program, events wait in memory"))));
}

TEST_F(OutboxLockTest, EventsThatWaitAreWrittenInOrderWithTheNext) {
    COutbox outbox(Path());
    ASSERT_TRUE(Add(outbox, 1));
    Lock();
    EXPECT_FALSE(Add(outbox, 2));
    EXPECT_FALSE(Add(outbox, 3));
    Unlock();

    EXPECT_TRUE(Add(outbox, 4));

    EXPECT_THAT(Ids(outbox), ElementsAre("id1", "id2", "id3", "id4"));
}

TEST_F(OutboxLockTest, ReadFailsForASenderThatRetriesAndWritesTheEventsOnceTheLockIsGone) {
    COutbox outbox(Path());
    EXPECT_TRUE(outbox.IsEmpty());
    Lock();
    EXPECT_FALSE(Add(outbox, 1));
    bool failed = false;
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20, &failed), IsEmpty());
    EXPECT_TRUE(failed);
    EXPECT_FALSE(outbox.IsEmpty());

    Unlock();

    EXPECT_THAT(Ids(outbox), ElementsAre("id1"));
}

TEST_F(OutboxLockTest, EventsThatWaitAreWrittenAtTheEnd) {
    {
        COutbox outbox(Path());
        EXPECT_TRUE(outbox.IsEmpty());
        Lock();
        EXPECT_FALSE(Add(outbox, 1));
        Unlock();
    }

    COutbox outbox(Path());
    EXPECT_THAT(Ids(outbox), ElementsAre("id1"));
}

TEST_F(OutboxLockTest, EventsThatCameBeforeTheOutboxCouldBeOpenedAreWritten) {
    { EXPECT_TRUE(COutbox(Path()).IsEmpty()); }
    Lock();
    COutbox outbox(Path());
    EXPECT_FALSE(Add(outbox, 1));
    Unlock();

    EXPECT_THAT(Ids(outbox), ElementsAre("id1"));
}

TEST_F(OutboxLockTest, MemoryOfTheEventsThatWaitIsBounded) {
    COutbox outbox(Path());
    ASSERT_TRUE(outbox.IsEmpty());
    Lock();
    EXPECT_FALSE(Add(outbox, 1, 3 << 20));
    EXPECT_FALSE(Add(outbox, 2, 3 << 20));
    Unlock();

    EXPECT_THAT(Ids(outbox), ElementsAre("id1"));
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("Writing to the outbox "))));
}

TEST_F(OutboxLockTest, OutboxWithOtherColumnsOrAFlippedVersionIsMovedAside) {
    for (const char* damage : {"ALTER TABLE event RENAME COLUMN json TO text", "PRAGMA user_version=5"}) {
        SCOPED_TRACE(damage);
        const auto before = Quarantined().size();
        { EXPECT_EQ(COutbox(Path()).Dropped(), 0); }
        Sql(damage);

        COutbox outbox(Path());

        EXPECT_TRUE(Add(outbox, 1));
        EXPECT_EQ(Quarantined().size(), before + 1);
    }
}

}  // namespace
