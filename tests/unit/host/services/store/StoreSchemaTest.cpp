#include "store/StoreSchema.h"

#include "StoreFolderTest.h"

using namespace ::testing;

namespace {

class StoreSchemaTest : public StoreFolderTest {
protected:
    int Version() const { return std::stoi(Sql("PRAGMA user_version")); }

    bool Migrate(const std::vector<store_schema::Step>& steps) const {
        CSqliteConnection connection;
        return connection.Open(Path(), EnSqliteAccess::kReadWrite) && store_schema::Migrate(connection, steps);
    }
};

TEST_F(StoreSchemaTest, FileWithoutAVersionIsMigratedAndKeepsItsValues) {
    // given a file older than version numbers
    Sql("PRAGMA journal_mode=WAL");
    Sql("CREATE TABLE config (owner TEXT NOT NULL, key TEXT NOT NULL, value,"
        " PRIMARY KEY (owner, key)) WITHOUT ROWID");
    Sql("INSERT INTO config VALUES ('app', 'text', x'6F6C64'), ('app', 'number', 42)");
    ASSERT_EQ(Version(), 0);

    // when it is opened
    int64_t number = 0;
    {
        CSqliteStore file(Path());
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNone);
        EXPECT_EQ(Read(file, "text"), "old");
        EXPECT_TRUE(file.ReadInt64("number", number));
    }

    // then
    EXPECT_EQ(number, 42);
    EXPECT_EQ(Version(), 1);
    EXPECT_THAT(Quarantined(), IsEmpty());
}

TEST_F(StoreSchemaTest, NewFileHasTheLatestVersion) {
    { const CSqliteStore file(Path()); }

    EXPECT_EQ(Version(), store_schema::Latest());
}

TEST_F(StoreSchemaTest, VersionsOfStepsAscendFromOne) {
    int before = 0;
    for (const store_schema::Step& step : store_schema::Steps()) {
        EXPECT_EQ(step.version, ++before);
        EXPECT_FALSE(step.statements.empty()) << step.version;
    }
    EXPECT_EQ(store_schema::Latest(), before);
}

TEST_F(StoreSchemaTest, OnlyMissingStepsAreAppliedAndOnce) {
    const std::vector<store_schema::Step> steps = {
        {1, {"CREATE TABLE t (n)"}},
        {2, {"INSERT INTO t VALUES (2)"}},
        {3, {"INSERT INTO t VALUES (3)", "UPDATE t SET n = n * 10"}},
    };
    ASSERT_TRUE(Migrate({steps[0]}));

    EXPECT_TRUE(Migrate(steps));
    EXPECT_TRUE(Migrate(steps));

    EXPECT_EQ(Version(), 3);
    EXPECT_EQ(Sql("SELECT group_concat(n) FROM t"), "20,30");
}

TEST_F(StoreSchemaTest, FailedStepLeavesTheFileUnchanged) {
    ASSERT_TRUE(Migrate({{1, {"CREATE TABLE t (n)"}}}));

    EXPECT_FALSE(Migrate({
        {1, {"CREATE TABLE t (n)"}},
        {2, {"INSERT INTO t VALUES (2)"}},
        {3, {"INSERT INTO t VALUES (3)", "INSERT INTO absent VALUES (3)"}},
    }));

    EXPECT_EQ(Version(), 1);
    EXPECT_EQ(Sql("SELECT count(*) FROM t"), "0");
}

TEST_F(StoreSchemaTest, FileOfANewerVersionIsReadAndNeverWritten) {
    // given
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "key", "value"));
    }
    Sql("PRAGMA user_version=" + std::to_string(store_schema::Latest() + 1));
    Sql("PRAGMA application_id=" + std::to_string(store_schema::MarkOf(store_schema::Latest() + 1)));
    const QByteArray before = Bytes(Path());

    // when
    {
        CSqliteStore file(Path());

        // then
        EXPECT_EQ(file.Trouble(), EnStoreTrouble::kNewerFile);
        EXPECT_THAT(log.Lines(), Contains(Error(EndsWith("client.sqlite is of a newer version, nothing is saved"))));
        EXPECT_EQ(Read(file, "key"), "value");
        EXPECT_FALSE(file.SaveString(kApp, "key", "other"));
        EXPECT_FALSE(file.SaveInt64("number", 1));
        EXPECT_EQ(Read(file, "key"), "value");
    }
    EXPECT_EQ(Bytes(Path()), before);
    EXPECT_THAT(Quarantined(), IsEmpty());
}

}  // namespace
