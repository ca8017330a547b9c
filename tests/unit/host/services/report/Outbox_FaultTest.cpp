// Read errors of the disk, and a log that grows under steady writing.
#include <sqlite3.h>

#include <QFileInfo>
#include <atomic>
#include <map>
#include <mutex>

#include "../store/StoreFolderTest.h"
#include "report/Outbox.h"

using namespace ::testing;

namespace {

/// While it exists, SQLite's read number `which`, counted from 1, fails.
class CReadFault {
public:
    explicit CReadFault(int which) {
        s_left = which;
        s_pReal = sqlite3_vfs_find(nullptr);
        m_vfs = *s_pReal;
        m_vfs.zName = "read-fault";
        m_vfs.pNext = nullptr;
        m_vfs.xOpen = Open;
        sqlite3_vfs_register(&m_vfs, 1);
    }
    ~CReadFault() {
        s_left = 0;
        sqlite3_vfs_unregister(&m_vfs);
        sqlite3_vfs_register(s_pReal, 1);
    }
    CReadFault(const CReadFault&) = delete;
    CReadFault& operator=(const CReadFault&) = delete;

    /// Ends the fault. Returns whether a read has failed.
    bool End() { return s_left.exchange(0) <= 0; }

private:
    static int Open(sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* given) {
        const int result = s_pReal->xOpen(s_pReal, name, file, flags, given);
        if (result == SQLITE_OK) {
            // Logs and databases have different method tables, with the same read function.
            const std::lock_guard<std::mutex> lock(s_mutex);
            sqlite3_io_methods& methods = s_methods[file->pMethods];
            s_fnRead = file->pMethods->xRead;
            methods = *file->pMethods;
            methods.xRead = Read;
            file->pMethods = &methods;
        }
        return result;
    }

    static int Read(sqlite3_file* file, void* to, int count, sqlite3_int64 from) {
        return s_left > 0 && --s_left == 0 ? SQLITE_IOERR_READ : s_fnRead.load()(file, to, count, from);
    }

    static inline std::atomic<int> s_left{0};
    static inline sqlite3_vfs* s_pReal = nullptr;
    static inline std::mutex s_mutex;
    static inline std::map<const sqlite3_io_methods*, sqlite3_io_methods> s_methods;
    static inline std::atomic<int (*)(sqlite3_file*, void*, int, sqlite3_int64)> s_fnRead{nullptr};
    sqlite3_vfs m_vfs{};
};

class OutboxFaultTest : public StoreFolderTest {
protected:
    ~OutboxFaultTest() override { log.Forget(); }

    static std::string IdOf(int n) { return "id" + std::to_string(n); }

    static bool Add(COutbox& outbox, int n) {
        return outbox.Add(IdOf(n), R"({"id":")" + IdOf(n) + R"(","f":")" + std::string(300, 'x') + "\"}");
    }
};

TEST_F(OutboxFaultTest, EmptyOutboxAndUnreadableOutboxAreDistinguished) {
    COutbox outbox(Path());
    bool failed = true;
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20, &failed), IsEmpty());
    EXPECT_FALSE(failed);
    ASSERT_TRUE(Add(outbox, 1));
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20, &failed), SizeIs(1));
    EXPECT_FALSE(failed);

    Sql("ALTER TABLE event RENAME TO gone");
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20, &failed), IsEmpty());
    EXPECT_TRUE(failed);
    EXPECT_FALSE(outbox.IsEmpty());

    Sql("ALTER TABLE gone RENAME TO event");
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20, &failed), SizeIs(1));
    EXPECT_FALSE(failed);
}

TEST_F(OutboxFaultTest, ReadFailsWhenTheOutboxCantBeOpened) {
    COutbox outbox(folder.filePath(QStringLiteral("none/reports.sqlite")));
    bool failed = false;
    EXPECT_THAT(outbox.Read(0, 10, 1 << 20, &failed), IsEmpty());
    EXPECT_TRUE(failed);
}

// Each round lets another read fail while the outbox is opened. Stored events must remain, and new ones follow them.
TEST_F(OutboxFaultTest, OutboxIsNotTakenForEmptyWhenAReadFailsWhileOpening) {
    constexpr int kEvents = 200;
    {
        COutbox outbox(Path());
        for (int n = 1; n <= kEvents; ++n) {
            ASSERT_TRUE(Add(outbox, n));
        }
    }
    int added = kEvents;
    bool failedOnce = true;
    for (int which = 1; failedOnce; ++which) {
        ASSERT_LT(which, 200);
        SCOPED_TRACE(which);
        CReadFault fault(which);
        COutbox outbox(Path());
        // Dropped opens the outbox and reads no event.
        outbox.Dropped();
        failedOnce = fault.End();

        ASSERT_TRUE(Add(outbox, ++added) || Add(outbox, added)) << PrintToString(log.Lines());
        EXPECT_FALSE(outbox.IsEmpty());
        const auto events = outbox.Read(0, 100'000, 1 << 30);
        ASSERT_THAT(events, SizeIs(size_t(added)));
        EXPECT_EQ(events.front().id, IdOf(1));
        EXPECT_EQ(events.back().id, IdOf(added));
    }
    EXPECT_THAT(Quarantined(), IsEmpty());
}

TEST_F(OutboxFaultTest, BusyWriterDoesNotStarveRestartsOfTheLog) {
    std::mutex mutex;
    std::vector<StoreCheckpoint> taken;
    OutboxOptions options;
    options.checkpoints.afterBytes = 200'000;
    options.checkpoints.maxBytes = 200'000;
    options.checkpoints.pause = std::chrono::milliseconds(0);
    options.checkpoints.restartBytes = 1'000'000;
    options.checkpoints.fnTaken = [&](const StoreCheckpoint& checkpoint) {
        const std::lock_guard<std::mutex> lock(mutex);
        taken.push_back(checkpoint);
    };
    {
        COutbox outbox(Path(), options);
        const auto restarts = [&] {
            const std::lock_guard<std::mutex> lock(mutex);
            return std::count_if(taken.begin(), taken.end(), [](const auto& each) { return each.restarted; });
        };
        for (int n = 1; n < 50'000 && restarts() < 20; ++n) {
            ASSERT_TRUE(Add(outbox, n));
            if (n % 10 == 0) {
                ASSERT_TRUE(outbox.Remove(outbox.Read(0, 10, 1 << 20)));
            }
        }
        EXPECT_GE(restarts(), 20);
    }
    const auto isOver = [](const StoreCheckpoint& each) { return each.logBytes > 1'000'000; };
    EXPECT_THAT(taken, Each(Truly([&](const StoreCheckpoint& each) { return isOver(each) || !each.restarted; })));
    // A restart that meets a read gives up soon, and the next one tries again.
    EXPECT_LT(std::count_if(taken.begin(), taken.end(),
                            [&](const StoreCheckpoint& each) { return isOver(each) && !each.restarted; }),
              10);
}

}  // namespace
