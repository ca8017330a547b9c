#include "report/Outbox.h"
#include "store/StoreSchema.h"

#include <QDir>
#include <thread>

#include "../store/StoreFolderTest.h"

using namespace ::testing;

namespace {

class OutboxTest : public StoreFolderTest {
protected:
    ~OutboxTest() override { log.Forget(); }

    static std::string IdOf(int n) { return "id" + std::to_string(n); }

    static std::string JsonOf(int n, size_t filling = 0) {
        return R"({"id":")" + IdOf(n) + R"(","f":")" + std::string(filling, 'x') + "\"}";
    }

    static void Fill(COutbox& outbox, int first, int last, size_t filling = 0) {
        for (int n = first; n <= last; ++n) {
            ASSERT_TRUE(outbox.Add(IdOf(n), JsonOf(n, filling)));
        }
    }

    static std::vector<std::string> Ids(const std::vector<OutboxEvent>& events) {
        std::vector<std::string> ids;
        for (const OutboxEvent& event : events) {
            ids.push_back(event.id);
        }
        return ids;
    }

    static std::vector<std::string> All(COutbox& outbox) { return Ids(outbox.Read(0, 100'000, 1 << 30)); }

    static OutboxOptions Small(int64_t events, int64_t bytes) {
        OutboxOptions options;
        options.maxEvents = events;
        options.maxBytes = bytes;
        return options;
    }

    int LinesWith(const std::string& text) {
        const auto lines = log.Lines();
        return int(std::count_if(lines.begin(), lines.end(),
                                 [&](const LogLine& line) { return line.text.find(text) != std::string::npos; }));
    }
};

TEST_F(OutboxTest, FileIsNotOpenedBeforeTheFirstCall) {
    COutbox outbox(Path());
    EXPECT_THAT(QDir(folder.path()).entryList(QDir::Files), IsEmpty());
    EXPECT_TRUE(outbox.IsEmpty());
}

TEST_F(OutboxTest, EventsAreReadInTheOrderOfReporting) {
    COutbox outbox(Path());
    Fill(outbox, 1, 3);

    const auto events = outbox.Read(0, 10, 1 << 20);

    EXPECT_THAT(Ids(events), ElementsAre("id1", "id2", "id3"));
    EXPECT_EQ(events[1].json, JsonOf(2));
    EXPECT_FALSE(outbox.IsEmpty());
}

TEST_F(OutboxTest, BatchIsBoundedByCountAndBytesAndHasAtLeastOneEvent) {
    COutbox outbox(Path());
    Fill(outbox, 1, 5, 100);
    const size_t one = JsonOf(1, 100).size();

    EXPECT_THAT(outbox.Read(0, 2, 1 << 20), SizeIs(2));
    EXPECT_THAT(outbox.Read(0, 5, 3 * one), SizeIs(3));
    EXPECT_THAT(outbox.Read(0, 5, 3 * one - 1), SizeIs(2));
    EXPECT_THAT(outbox.Read(0, 5, 1), SizeIs(1));
    EXPECT_THAT(Ids(outbox.Read(outbox.Read(0, 2, 1 << 20).back().number, 1, 1 << 20)), ElementsAre("id3"));
}

TEST_F(OutboxTest, RemovedEventsStayRemoved) {
    {
        COutbox outbox(Path());
        Fill(outbox, 1, 4);
        const auto events = outbox.Read(0, 4, 1 << 20);
        EXPECT_TRUE(outbox.Remove({events[0], events[2]}));
        EXPECT_THAT(All(outbox), ElementsAre("id2", "id4"));
    }
    COutbox outbox(Path());
    EXPECT_THAT(All(outbox), ElementsAre("id2", "id4"));
    EXPECT_TRUE(outbox.Remove(outbox.Read(0, 4, 1 << 20)));
    EXPECT_TRUE(outbox.IsEmpty());
}

TEST_F(OutboxTest, EventIsKeptWhenTheIdDiffers) {
    COutbox outbox(Path());
    Fill(outbox, 1, 1);
    auto events = outbox.Read(0, 1, 1 << 20);
    events[0].id = "of another file";

    EXPECT_TRUE(outbox.Remove(events));

    EXPECT_THAT(All(outbox), ElementsAre("id1"));
}

TEST_F(OutboxTest, EventsSurviveAReopening) {
    {
        COutbox outbox(Path());
        Fill(outbox, 1, 1000);
    }
    COutbox outbox(Path());
    EXPECT_THAT(All(outbox), SizeIs(1000));
    Fill(outbox, 1001, 1001);
    EXPECT_EQ(All(outbox).back(), "id1001");
}

TEST_F(OutboxTest, OldestEventsAreDroppedAndCountedBeyondTheMaximumCount) {
    COutbox outbox(Path(), Small(10, 1 << 20));
    Fill(outbox, 1, 25);

    EXPECT_THAT(All(outbox),
                ElementsAre("id16", "id17", "id18", "id19", "id20", "id21", "id22", "id23", "id24", "id25"));
    EXPECT_EQ(outbox.Dropped(), 15);
}

TEST_F(OutboxTest, OldestEventsAreDroppedAndCountedBeyondTheMaximumBytes) {
    const auto one = int64_t(JsonOf(10, 100).size());
    COutbox outbox(Path(), Small(1000, 3 * one));
    Fill(outbox, 10, 14, 100);

    EXPECT_THAT(All(outbox), ElementsAre("id12", "id13", "id14"));
    EXPECT_EQ(outbox.Dropped(), 2);
}

TEST_F(OutboxTest, BoundsAndDroppedCountSurviveAReopening) {
    {
        COutbox outbox(Path(), Small(10, 1 << 20));
        Fill(outbox, 1, 12);
    }
    COutbox outbox(Path(), Small(10, 1 << 20));
    EXPECT_EQ(outbox.Dropped(), 2);
    Fill(outbox, 13, 13);
    EXPECT_THAT(All(outbox), SizeIs(10));
    EXPECT_EQ(All(outbox).front(), "id4");
    EXPECT_EQ(outbox.Dropped(), 3);
}

TEST_F(OutboxTest, EachBurstOfDroppedEventsIsLoggedOnce) {
    COutbox outbox(Path(), Small(10, 1 << 20));
    Fill(outbox, 1, 30);
    EXPECT_EQ(LinesWith("is full: its oldest events are dropped"), 1);

    EXPECT_TRUE(outbox.Remove(outbox.Read(0, 5, 1 << 20)));
    Fill(outbox, 31, 60);

    EXPECT_EQ(LinesWith("is full: its oldest events are dropped"), 2);
    EXPECT_EQ(LinesWith("dropped, 21 so far"), 1);
    EXPECT_EQ(LinesWith("dropped, 1 so far"), 1);
}

TEST_F(OutboxTest, DefaultBoundsAreFiftyThousandEventsAnd32MiB) {
    EXPECT_EQ(OutboxOptions().maxEvents, 50'000);
    EXPECT_EQ(OutboxOptions().maxBytes, 32 << 20);
}

TEST_F(OutboxTest, SpoiltEventsAreDroppedAndOthersReturned) {
    {
        COutbox outbox(Path());
        Fill(outbox, 1, 7);
    }
    Sql("UPDATE event SET json = '{\"id\":\"id1\"' WHERE id = 'id1'");
    Sql("UPDATE event SET json = x'00ff' WHERE id = 'id2'");
    Sql("UPDATE event SET json = '[]' WHERE id = 'id3'");
    Sql("UPDATE event SET id = 'other' WHERE id = 'id4'");
    Sql("UPDATE event SET id = x'6964' WHERE id = 'id5'");
    COutbox outbox(Path());

    EXPECT_THAT(Ids(outbox.Read(0, 2, 1 << 20)), ElementsAre("id6"));
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("can't be read and are dropped"))));
    EXPECT_THAT(All(outbox), ElementsAre("id6", "id7"));
    EXPECT_EQ(Sql("SELECT count(*) FROM event"), "2");
}

TEST_F(OutboxTest, CorruptFileIsQuarantinedWhenOpening) {
    QFile file(Path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(10'000, 'x'));
    file.close();

    COutbox outbox(Path());
    Fill(outbox, 1, 2);

    EXPECT_THAT(All(outbox), ElementsAre("id1", "id2"));
    EXPECT_THAT(Quarantined(), SizeIs(1));
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("is damaged and was moved to"))));
}

TEST_F(OutboxTest, OpenFileIsReplacedWhenAReadFindsDamage) {
    {
        COutbox outbox(Path());
        Fill(outbox, 1, 500, 200);
    }
    // not in the tables nor in the first and last events, which are read when it is opened
    const qint64 pages = QFileInfo(Path()).size() / 4096;
    Overwrite(Path(), pages / 2 * 4096, 4 * 4096);
    COutbox outbox(Path());
    EXPECT_THAT(outbox.Read(0, 1, 1 << 20), SizeIs(1));
    EXPECT_THAT(Quarantined(), IsEmpty());

    EXPECT_THAT(outbox.Read(0, 1000, 1 << 20), IsEmpty());
    EXPECT_THAT(Quarantined(), SizeIs(1));
    Fill(outbox, 1, 2);

    EXPECT_THAT(All(outbox), ElementsAre("id1", "id2"));
    EXPECT_THAT(Quarantined(), SizeIs(1));
}

TEST_F(OutboxTest, FullDiskRefusesAnEventAndTakesTheNextOneThatFits) {
    COutbox outbox(Path());
    Fill(outbox, 1, 1);
    {
        const CFileSizeLimit limit(rlim_t(QFileInfo(Path() + QStringLiteral("-wal")).size()));
        EXPECT_FALSE(outbox.Add(IdOf(2), JsonOf(2)));
        EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("Writing to the outbox"))));
    }
    EXPECT_TRUE(outbox.Add(IdOf(3), JsonOf(3)));
    EXPECT_THAT(All(outbox), ElementsAre("id1", "id3"));
}

TEST_F(OutboxTest, EachEventIsRefusedAndLoggedWhenTheFolderIsMissing) {
    COutbox outbox(folder.filePath(QStringLiteral("none/reports.sqlite")));

    EXPECT_FALSE(outbox.Add(IdOf(1), JsonOf(1)));
    EXPECT_FALSE(outbox.Add(IdOf(2), JsonOf(2)));

    EXPECT_EQ(LinesWith("Opening the outbox"), 2);
    EXPECT_TRUE(outbox.IsEmpty());
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20), IsEmpty());
    EXPECT_EQ(outbox.Dropped(), 0);
}

TEST_F(OutboxTest, SecondClientIsRefusedUntilTheFirstHasEnded) {
    auto first = std::make_unique<COutbox>(Path());
    Fill(*first, 1, 1);
    COutbox second(Path());

    EXPECT_FALSE(second.Add(IdOf(2), JsonOf(2)));
    EXPECT_THAT(second.Read(0, 10, 1 << 20), IsEmpty());
    first.reset();

    EXPECT_TRUE(second.Add(IdOf(3), JsonOf(3)));
    EXPECT_THAT(All(second), ElementsAre("id1", "id3"));
}

TEST_F(OutboxTest, FileOfANewerVersionIsNotWritten) {
    {
        COutbox outbox(Path());
        Fill(outbox, 1, 1);
    }
    Sql("PRAGMA user_version=2");
    Sql("PRAGMA application_id=" + std::to_string(store_schema::MarkOf(2)));
    COutbox outbox(Path());

    EXPECT_FALSE(outbox.Add(IdOf(2), JsonOf(2)));

    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("is of a newer version"))));
    EXPECT_THAT(Quarantined(), IsEmpty());
    EXPECT_EQ(Sql("SELECT count(*) FROM event"), "1");
}

TEST_F(OutboxTest, ThreadsAddEventsConcurrently) {
    COutbox outbox(Path());
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] { Fill(outbox, thread * 100, thread * 100 + 99); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    const auto ids = All(outbox);
    EXPECT_THAT(std::set<std::string>(ids.begin(), ids.end()), SizeIs(400));
    EXPECT_THAT(ids, SizeIs(400));
}

TEST_F(OutboxTest, LogIsTruncatedAtTheEnd) {
    {
        COutbox outbox(Path());
        Fill(outbox, 1, 100);
        EXPECT_GT(QFileInfo(Path() + QStringLiteral("-wal")).size(), 0);
    }
    EXPECT_EQ(QFileInfo(Path() + QStringLiteral("-wal")).size(), 0);
    EXPECT_EQ(Sql("SELECT count(*) FROM event"), "100");
}

}  // namespace
