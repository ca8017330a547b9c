// The store's file exists, but this client cannot write it.
#include <QLabel>
#include <QProcess>

#include "ClientFixture.h"
#include "StatusLine.h"
#include "core/config_local.h"
#include "core/lang.h"
#include "store/StoreSchema.h"

using namespace ::testing;

namespace {

constexpr char kCache[] = "ZRBaseAIChatEnableCacheDataKey_501";
constexpr char kCached[] = "[\n\t1,\n\t4\n]\n";

class StoreTroubleTest : public ClientTest {
protected:
    ~StoreTroubleTest() override { EndOther(); }

    /// Starts another client process on the same folder, with its own server.
    void StartOther() {
        other.start(QString::fromUtf8(build::kClient),
                    {QStringLiteral("--data-dir"), options.dataDir, QStringLiteral("--scenario"), options.scenario,
                     QStringLiteral("--modules"), options.manifest, QStringLiteral("--server-binary"),
                     options.serverBinary, QStringLiteral("--no-web"), QStringLiteral("--no-web-engine")});
        ASSERT_TRUE(WaitInRealTime([this] { return StoredValue(kCache) == kCached; }))
            << other.readAllStandardError().toStdString();
    }

    void EndOther() {
        if (other.state() != QProcess::NotRunning) {
            other.kill();
            EXPECT_TRUE(WaitInRealTime([this] { return other.state() == QProcess::NotRunning; }));
        }
    }

    std::string StatusText() const { return window->StatusLine().Text().toStdString(); }

    /// The user is logged in and served with the given status. Old values are read and new ones are not saved.
    void ExpectReadOnlyLife(const std::string& said) {
        EXPECT_TRUE(WaitInRealTime([&] { return StatusText() == said; })) << StatusText();
        EXPECT_FALSE(window->StatusLine().IsGood());
        EXPECT_TRUE(Child<QLabel>("StatusText")->isVisible());
        std::string value;
        EXPECT_TRUE(core::config_local::AppCfgReadString(kCache, value));
        EXPECT_EQ(value, kCached);
        EXPECT_FALSE(core::config_local::AppCfgSaveString(kCache, "another"));
        EXPECT_EQ(StoredValue(kCache), kCached);
    }

    /// Writes a file in the format of a later version.
    void WriteNewerFile() const {
        ASSERT_TRUE(QDir().mkpath(options.dataDir));
        SQLite::Database file(options.dataDir.toStdString() + "/client.sqlite",
                              SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        file.exec(
            "CREATE TABLE config (owner TEXT NOT NULL, key TEXT NOT NULL, value,"
            " PRIMARY KEY (owner, key)) WITHOUT ROWID");
        SQLite::Statement insert(file, "INSERT INTO config VALUES ('app', ?, ?)");
        insert.bind(1, kCache);
        insert.bind(2, kCached, int(std::string(kCached).size()));
        insert.exec();
        file.exec("PRAGMA user_version=1000");
        file.exec("PRAGMA application_id=" + std::to_string(store_schema::MarkOf(1000)));
    }

    QProcess other;
};

TEST_F(StoreTroubleTest, TheSecondClientOfAFolderSaysSoAndReadsTheOldValues) {
    StartOther();

    StartAndLogIn();

    ExpectReadOnlyLife("Settings are not saved: another client uses this folder \u00B7 Connected");
    client->SetLanguage(core::lang::kLanguageFrench);
    ExpectReadOnlyLife("Réglages non enregistrés : un autre client utilise ce dossier \u00B7 Connecté");
}

TEST_F(StoreTroubleTest, TheSecondClientSavesOnceTheFirstHasEnded) {
    StartOther();
    StartAndLogIn();
    ASSERT_FALSE(window->StatusLine().IsGood());

    EndOther();
    EXPECT_TRUE(core::config_local::AppCfgSaveString("After_The_First", "mine"));

    EXPECT_EQ(StatusText(), "Connected");
    EXPECT_TRUE(window->StatusLine().IsGood());
    EXPECT_EQ(StoredValue("After_The_First"), "mine");
    EXPECT_EQ(StoredValue(kCache), kCached);
}

TEST_F(StoreTroubleTest, AFileOfANewerVersionIsReadAndLeftAsItIs) {
    WriteNewerFile();

    StartAndLogIn();

    ExpectReadOnlyLife("Settings are not saved: a newer version wrote their file \u00B7 Connected");
}

}  // namespace
