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
        options.maxBytes = 1 << 30;
        options.pause = std::chrono::milliseconds(0);
        options.quiet = std::chrono::hours(1);
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

    /// Waits for a checkpoint after each group of saves.
    void SaveUntilRestarted(CSqliteStore& file) {
        for (int n = 0; n < 20 && !HasRestarted(); ++n) {
            const size_t before = TakenCount();
            SaveMany(file, 250);
            ASSERT_TRUE(WaitUntil([before](const auto& taken) { return taken.size() > before; }));
        }
        EXPECT_TRUE(HasRestarted());
    }

    size_t TakenCount() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_taken.size();
    }

    /// The header of the log, which changes with each restart.
    QByteArray LogHead() const { return Bytes(Path() + QStringLiteral("-wal")).left(32); }

    // Each value differs from the stored one: SQLite does not write an unchanged page.
    void SaveMany(CSqliteStore& file, int count) {
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

TEST_F(CheckpointerTest, WriterTakesNoCheckpoint) {
    CSqliteStore file(Path(), Options(1 << 30, 1 << 30));
    const qint64 before = FileBytes();

    SaveMany(file, 400);  // twice the threshold of an automatic checkpoint

    EXPECT_EQ(FileBytes(), before);
    EXPECT_GT(LogBytes(), 400 * 20'000);
    EXPECT_THAT(m_taken, IsEmpty());
}

TEST_F(CheckpointerTest, CheckpointRunsOnItsThreadWhenEnoughIsWritten) {
    CSqliteStore file(Path(), Options(200'000, 1 << 30));
    const qint64 before = FileBytes();

    SaveMany(file, 20);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    EXPECT_GT(FileBytes(), before);
    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_GT(m_taken[0].logBytes, 100'000);
    EXPECT_FALSE(Restarted(m_taken));
    EXPECT_EQ(m_threads.count(std::this_thread::get_id()), 0u);
}

TEST_F(CheckpointerTest, LogRestartsPastItsLimitAndRefusesNoSave) {
    CSqliteStore file(Path(), Options(4'000'000, 2'000'000));
    SaveMany(file, 1);
    const QByteArray before = LogHead();

    SaveUntilRestarted(file);
    SaveMany(file, 20);

    EXPECT_NE(LogHead(), before);
    EXPECT_THAT(log.Lines(),
                Contains(Info(ContainsRegex("^The log of .*client\\.sqlite had [0-9]+ bytes and is restarted$"))));
    for (int n = 0; n < 20; ++n) {
        EXPECT_EQ(Read(file, "key" + std::to_string(n)).size(), 20'000u);
    }
}

TEST_F(CheckpointerTest, CheckpointWaitsForAnIdleWriterUpToTheMaximum) {
    CheckpointOptions options = Options(100'000, 1 << 30);
    options.maxBytes = 8'000'000;
    options.pause = std::chrono::hours(1);
    CSqliteStore file(Path(), options);

    SaveMany(file, 500);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_GT(m_taken[0].logBytes, 7'000'000);
}

TEST_F(CheckpointerTest, CheckpointRunsWhenTheWriterIsIdle) {
    CheckpointOptions options = Options(100'000, 1 << 30);
    options.pause = std::chrono::milliseconds(20);
    CSqliteStore file(Path(), options);

    SaveMany(file, 20);

    EXPECT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
}

TEST_F(CheckpointerTest, BusyWriterDoesNotStarveRestarts) {
    CheckpointOptions options = Options(200'000, 1'000'000);
    options.maxBytes = 200'000;
    CSqliteStore file(Path(), options);

    const auto restarts = [](const std::vector<StoreCheckpoint>& taken) {
        return std::count_if(taken.begin(), taken.end(), [](const auto& each) { return each.restarted; });
    };
    for (int saved = 0; saved < 20'000; saved += 20) {
        SaveMany(file, 20);
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

TEST_F(CheckpointerTest, RestartIsRetriedWhenAReaderBlocksIt) {
    // given a reader that keeps its transaction open
    CSqliteStore file(Path(), Options(4'000'000, 2'000'000));
    SaveMany(file, 20);
    CSqliteConnection reader;
    ASSERT_TRUE(reader.Open(Path(), EnSqliteAccess::kReadOnly) && reader.Run("BEGIN"));
    ASSERT_EQ(reader.Integer("SELECT count(*) FROM config"), 20);
    const QByteArray before = LogHead();

    // when the log grows past its limit: no save is refused, and the log continues
    SaveMany(file, 250);
    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    EXPECT_FALSE(HasRestarted());
    EXPECT_EQ(LogHead(), before);

    // then it is restarted once the reader is gone
    ASSERT_TRUE(reader.Run("COMMIT"));
    SaveUntilRestarted(file);
}

TEST_F(CheckpointerTest, LogWithinItsLimitIsNotRestarted) {
    CSqliteStore file(Path(), Options(200'000, 64 << 20));

    SaveMany(file, 100);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return !taken.empty(); }));
    const std::lock_guard<std::mutex> lock(m_mutex);
    EXPECT_FALSE(Restarted(m_taken));
}

TEST_F(CheckpointerTest, CheckpointRunsSoonAfterTheStartAndInQuietMoments) {
    // given a client that saved little and was killed
    const QString killed = folder.filePath(QStringLiteral("killed.sqlite"));
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "key", "value"));
        for (const char* ending : {"", "-wal"}) {
            ASSERT_TRUE(QFile::copy(Path() + QLatin1String(ending), killed + QLatin1String(ending)));
        }
    }
    ASSERT_FALSE(Bytes(killed).contains("value"));
    CheckpointOptions options = Options(1 << 30, 1 << 30);
    options.quiet = std::chrono::milliseconds(20);

    CSqliteStore file(killed, options);

    ASSERT_TRUE(WaitUntil([](const auto& taken) { return taken.size() == 1; }));
    EXPECT_TRUE(Bytes(killed).contains("value"));
    ASSERT_TRUE(file.SaveString(kApp, "key", "another"));
    ASSERT_TRUE(WaitUntil([](const auto& taken) { return taken.size() == 2; }));
    EXPECT_TRUE(Bytes(killed).contains("another"));
}

TEST_F(CheckpointerTest, CleanEndLeavesNoLog) {
    {
        CSqliteStore file(Path());
        SaveMany(file, 20);
        ASSERT_GT(LogBytes(), 0);
    }

    EXPECT_EQ(LogBytes(), 0);
    EXPECT_GT(FileBytes(), 20 * 20'000);
}

TEST_F(CheckpointerTest, CheckpointerTruncatesTheLogWhenItEnds) {
    // given a second connection, so that closing the store's connection does not truncate the log
    CSqliteConnection other;
    auto file = std::make_unique<CSqliteStore>(Path());
    ASSERT_TRUE(other.Open(Path(), EnSqliteAccess::kReadWrite) && other.Run("PRAGMA user_version"));
    SaveMany(*file, 20);

    file.reset();

    EXPECT_TRUE(QFile::exists(Path() + QStringLiteral("-wal")));
    EXPECT_EQ(LogBytes(), 0);
}

TEST_F(CheckpointerTest, AbandonedFileIsNotWritten) {
    CSqliteStore file(Path());
    SaveMany(file, 20);
    const qint64 before = LogBytes();
    {
        CCheckpointer second(Path(), Options(1, 1));
        second.Abandon();
    }

    EXPECT_EQ(LogBytes(), before);
}

}  // namespace
