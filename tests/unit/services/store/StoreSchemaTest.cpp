#include "store/StoreSchema.h"

#include "StoreFolderTest.h"

using namespace ::testing;

namespace {

class StoreSchemaTest : public StoreFolderTest {
protected:
    int Version() const { return Sql(QStringLiteral("PRAGMA user_version")).toInt(); }

    bool Migrate(const std::vector<store_schema::Step>& steps) const {
        CSqliteConnection connection;
        return connection.Open(Path(), EnSqliteAccess::kReadWrite) && store_schema::Migrate(connection, steps);
    }
};

TEST_F(StoreSchemaTest, AFileWithoutANumberIsMigratedAndKeepsItsValues) {
    // given a file as it was made before versions were written
    Sql(QStringLiteral("PRAGMA journal_mode=WAL"));
    Sql(
        QStringLiteral("CREATE TABLE config (owner TEXT NOT NULL, key TEXT NOT NULL, value,"
                       " PRIMARY KEY (owner, key)) WITHOUT ROWID"));
    Sql(QStringLiteral("INSERT INTO config VALUES ('app', 'text', x'6F6C64'), ('app', 'number', 42)"));
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
    EXPECT_THAT(MovedAside(), IsEmpty());
}

TEST_F(StoreSchemaTest, ANewFileIsOfTheLatestVersion) {
    { const CSqliteStore file(Path()); }

    EXPECT_EQ(Version(), store_schema::Latest());
}

TEST_F(StoreSchemaTest, TheVersionsOfTheStepsAscendFromOne) {
    int before = 0;
    for (const store_schema::Step& step : store_schema::Steps()) {
        EXPECT_EQ(step.version, ++before);
        EXPECT_FALSE(step.statements.empty()) << step.version;
    }
    EXPECT_EQ(store_schema::Latest(), before);
}

TEST_F(StoreSchemaTest, OnlyTheStepsThatAFileLacksAreTakenAndOnce) {
    const std::vector<store_schema::Step> steps = {
        {1, {QStringLiteral("CREATE TABLE t (n)")}},
        {2, {QStringLiteral("INSERT INTO t VALUES (2)")}},
        {3, {QStringLiteral("INSERT INTO t VALUES (3)"), QStringLiteral("UPDATE t SET n = n * 10")}},
    };
    ASSERT_TRUE(Migrate({steps[0]}));

    EXPECT_TRUE(Migrate(steps));
    EXPECT_TRUE(Migrate(steps));

    EXPECT_EQ(Version(), 3);
    EXPECT_EQ(Sql(QStringLiteral("SELECT group_concat(n) FROM t")).toString().toStdString(), "20,30");
}

TEST_F(StoreSchemaTest, AStepThatFailsLeavesTheFileAsItWas) {
    ASSERT_TRUE(Migrate({{1, {QStringLiteral("CREATE TABLE t (n)")}}}));

    EXPECT_FALSE(Migrate({
        {1, {QStringLiteral("CREATE TABLE t (n)")}},
        {2, {QStringLiteral("INSERT INTO t VALUES (2)")}},
        {3, {QStringLiteral("INSERT INTO t VALUES (3)"), QStringLiteral("INSERT INTO absent VALUES (3)")}},
    }));

    EXPECT_EQ(Version(), 1);
    EXPECT_EQ(Sql(QStringLiteral("SELECT count(*) FROM t")).toInt(), 0);
}

TEST_F(StoreSchemaTest, AFileOfANewerVersionIsReadAndNeverWritten) {
    // given
    {
        CSqliteStore file(Path());
        ASSERT_TRUE(file.SaveString(kApp, "key", "value"));
    }
    Sql(QStringLiteral("PRAGMA user_version=%1").arg(store_schema::Latest() + 1));
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
    EXPECT_THAT(MovedAside(), IsEmpty());
}

}  // namespace
