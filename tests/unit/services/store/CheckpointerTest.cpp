#include "store/Checkpointer.h"

#include <QFileInfo>
#include <condition_variable>

#include "StoreFolderTest.h"

using namespace ::testing;

namespace {

class CheckpointerTest : public StoreFolderTest {
protected:
    CheckpointOptions Options(qint64 afterBytes, qint64 restartBytes) {
        CheckpointOptions options;
        options.afterBytes = afterBytes;
        options.atMostBytes = 1 << 30;
        options.pause = std::chrono::milliseconds(0);
        options.restartBytes = restartBytes;
        options.fnTaken = [this](const StoreCheckpoint& checkpoint) {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_taken.push_back(checkpoint);
            m_threads.insert(std::this_thread::get_id());
            m_changed.notify_all();
        };
        return options;
    }

    bool WaitUntil(const std::function<bool(const std::vector<StoreCheckpoint>&)>& condition) {
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(20), [&] { return condition(m_taken); });
    }

    static bool Restarted(const std::vector<StoreCheckpoint>& taken) {
        return std::any_of(taken.begin(), taken.end(), [](const StoreCheckpoint& each) { return each.restarted; });
    }

    bool HasRestarted() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return Restarted(m_taken);
    }

    /// Lets each checkpoint come before it goes on.
    void SaveUntilRestarted(CSqliteStore& file) {
        for (int n = 0; n < 20 && !HasRestarted(); ++n) {
            const size_t before = TakenCount();
            SaveMuch(file, 250);
            ASSERT_TRUE(WaitUntil([before](const auto& taken) { return taken.size() > before; }));
        }
        EXPECT_TRUE(HasRestarted());
    }

    size_t TakenCount() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_taken.size();
    }

    /// Each time that the log begins anew, its head is another.
    QByteArray LogHead() const { return Bytes(Path() + QStringLiteral("-wal")).left(32); }

    // Never the value that is there: SQLite writes no page that would stay the same.
    void SaveMuch(CSqliteStore& file, int count) {
        for (int n = 0; n < count; ++n, ++m_nSaved) {
            ASSERT_TRUE(file.SaveString(kApp, "key" + std::to_string(m_nSaved % 20),
                                        std::string(20'000, char('a' + (m_nSaved / 20 + m_nSaved) % 26))))
                << PrintToString(log.Lines());
        }
    }

    qint64 FileBytes() const { return QFileInfo(Path()).size(); }
    qint64 LogBytes() const { return QFileInfo(Path() + QStringLiteral("-wal")).size(); }

    int m_nSaved = 0;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<StoreCheckpoint> m_taken;
    std::set<std::thread::id> m_threads;
};

TEST_F(CheckpointerTest, TheWriterTakesNone) {
    CSqliteStore file(Path(), Options(1 << 30, 1 << 30));
    const qint64 before = FileBytes();

    SaveMuch(file, 400);  // twice what starts an automatic one

    EXPECT_EQ(FileBytes(), before);
    EXPECT_GT(LogBytes(), 400 * 20'000);
    EXPECT_THAT(m_taken, IsEmpty());
}

TEST_F(CheckpointerTest, OneIsTakenOnAThreadOfItsOwnOnceEnoughIsWritten) {
    CSqliteStore file(Path(), Options(200'000, 1 << 30));
    const qint64 before = FileBytes();

    SaveMuch(file, 20);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    EXPECT_GT(FileBytes(), before);
    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_GT(m_taken[0].logBytes, 100'000);
    EXPECT_FALSE(Restarted(m_taken));
    EXPECT_EQ(m_threads.count(std::this_thread::get_id()), 0u);
}

TEST_F(CheckpointerTest, ALogPastItsLimitBeginsAnewWithoutARefusedSave) {
    CSqliteStore file(Path(), Options(4'000'000, 2'000'000));
    SaveMuch(file, 1);
    const QByteArray before = LogHead();

    SaveUntilRestarted(file);
    SaveMuch(file, 20);

    EXPECT_NE(LogHead(), before);
    EXPECT_THAT(log.Lines(),
                Contains(Info(ContainsRegex("^The log of .*client\\.sqlite had [0-9]+ bytes and begins anew$"))));
    for (int n = 0; n < 20; ++n) {
        EXPECT_EQ(Read(file, "key" + std::to_string(n)).size(), 20'000u);
    }
}

TEST_F(CheckpointerTest, OneWaitsForTheWriterToRestButNotForEver) {
    CheckpointOptions options = Options(100'000, 1 << 30);
    options.atMostBytes = 8'000'000;
    options.pause = std::chrono::hours(1);
    CSqliteStore file(Path(), options);

    SaveMuch(file, 500);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_GT(m_taken[0].logBytes, 7'000'000);
}

TEST_F(CheckpointerTest, OneIsTakenWhenTheWriterRests) {
    CheckpointOptions options = Options(100'000, 1 << 30);
    options.pause = std::chrono::milliseconds(20);
    CSqliteStore file(Path(), options);

    SaveMuch(file, 20);

    EXPECT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
}

TEST_F(CheckpointerTest, AWriterThatNeverRestsKeepsNoRestartWaiting) {
    CheckpointOptions options = Options(200'000, 1'000'000);
    options.atMostBytes = 200'000;
    CSqliteStore file(Path(), options);

    const auto restarts = [](const std::vector<StoreCheckpoint>& taken) {
        return std::count_if(taken.begin(), taken.end(), [](const auto& each) { return each.restarted; });
    };
    for (int saved = 0; saved < 20'000; saved += 20) {
        SaveMuch(file, 20);
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (restarts(m_taken) == 40) {
            break;
        }
    }

    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_GE(restarts(m_taken), 20);
    EXPECT_THAT(m_taken,
                Each(Truly([](const StoreCheckpoint& each) { return each.restarted == (each.logBytes > 1'000'000); })));
}

TEST_F(CheckpointerTest, ALogThatSomebodyReadsIsLeftToALaterOne) {
    // given a reader who does not let go of what it sees
    CSqliteStore file(Path(), Options(4'000'000, 2'000'000));
    SaveMuch(file, 20);
    CSqliteConnection reader;
    ASSERT_TRUE(reader.Open(Path(), EnSqliteAccess::kReadOnly) && reader.Run(QStringLiteral("BEGIN")));
    ASSERT_EQ(reader.Value(QStringLiteral("SELECT count(*) FROM config")), QVariant(20));
    const QByteArray before = LogHead();

    // when the log grows past its limit: no save is refused, and the log goes on
    SaveMuch(file, 250);
    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    EXPECT_FALSE(HasRestarted());
    EXPECT_EQ(LogHead(), before);

    // then it begins anew once the reader is gone
    ASSERT_TRUE(reader.Run(QStringLiteral("COMMIT")));
    SaveUntilRestarted(file);
}

TEST_F(CheckpointerTest, ALogWithinItsLimitIsNotMadeToBeginAnew) {
    CSqliteStore file(Path(), Options(200'000, 64 << 20));

    SaveMuch(file, 100);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_FALSE(Restarted(m_taken));
}

TEST_F(CheckpointerTest, ACleanEndLeavesNoLog) {
    {
        CSqliteStore file(Path());
        SaveMuch(file, 20);
        ASSERT_GT(LogBytes(), 0);
    }

    EXPECT_EQ(LogBytes(), 0);
    EXPECT_GT(FileBytes(), 20 * 20'000);
}

TEST_F(CheckpointerTest, TheEndEmptiesTheLogOnTheCheckpointersConnection) {
    // given a connection that stays, so that no other end than the checkpointer's can empty the log
    CSqliteConnection other;
    auto file = std::make_unique<CSqliteStore>(Path());
    ASSERT_TRUE(other.Open(Path(), EnSqliteAccess::kReadWrite) && other.Run(QStringLiteral("PRAGMA user_version")));
    SaveMuch(*file, 20);

    file.reset();

    EXPECT_TRUE(QFile::exists(Path() + QStringLiteral("-wal")));
    EXPECT_EQ(LogBytes(), 0);
}

TEST_F(CheckpointerTest, AnAbandonedFileIsLeftAlone) {
    CSqliteStore file(Path());
    SaveMuch(file, 20);
    const qint64 before = LogBytes();
    {
        CCheckpointer second(Path(), Options(1, 1));
        second.Abandon();
    }

    EXPECT_EQ(LogBytes(), before);
}

}  // namespace
