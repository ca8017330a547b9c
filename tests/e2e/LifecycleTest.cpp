// The module life cycle, recorded by a module that does nothing else.
#include <fstream>

#include "ClientFixture.h"
#include "core/time_date.h"

using namespace ::testing;

namespace {

class LifecycleTest : public ClientTest {
protected:
    LifecycleTest() {
        options.manifest = WriteManifest({{"CRecorder", build::kRecorder}, {"CZRGrowthModule", build::kModule}});
        record = folder.filePath(QStringLiteral("record")).toStdString();
        qputenv("ZR_RECORDER_FILE", QByteArray::fromStdString(record));
    }

    std::vector<std::string> Record() const {
        std::ifstream file(record);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::string record;
};

TEST_F(LifecycleTest, AModuleSeesItsLifeInOrderAndTheStateThatItIsToldOf) {
    StartAndLogIn();
    client->SetLanguage(0);
    client->Login(502);
    ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 502; }));

    End();

    EXPECT_THAT(Record(), ElementsAre("OnInit user=0 language=2",       //
                                      "OnLogin user=501 language=2",    //
                                      "10650 user=501 language=2",      //
                                      "20100 user=501 language=0",      //
                                      "OnLogout user=0 language=0",     //
                                      "OnLogin user=502 language=0",    //
                                      "10650 user=502 language=0",      //
                                      "OnEvent 1 user=502 language=0",  //
                                      "OnLogout user=0 language=0",     //
                                      "OnUnInit user=0 language=0",     //
                                      "deleted user=0 language=0",      //
                                      "gone user=0 language=0"));
}

TEST_F(LifecycleTest, AReconnectTellsOfTheChannelAndNotOfALogin) {
    StartAndLogIn();

    server->Post("/v1/drop", "{}");

    ASSERT_TRUE(WaitInRealTime([this] { return CountOf(10650) == 2; }));
    EXPECT_THAT(Record(), ElementsAre("OnInit user=0 language=2", "OnLogin user=501 language=2",
                                      "10650 user=501 language=2", "10650 user=501 language=2"));
}

TEST_F(LifecycleTest, ServerTimeFollowsTheServersClock) {
    StartAndLogIn();
    const int64_t before = core::time_date::GetSvrTimeStamp();

    server->Put("/v1/clock", R"({"offsetMs":86400000})");

    EXPECT_TRUE(WaitInRealTime([&] { return core::time_date::GetSvrTimeStamp() >= before + 86400; }));
    // the offset is also applied at a login
    client->Login(502);
    EXPECT_TRUE(WaitInRealTime([this] { return client->UserId() == 502; }));
    EXPECT_GE(core::time_date::GetSvrTimeStamp(), before + 86400);
}

TEST_F(LifecycleTest, TheUserOfTheCommandLineIsLoggedIn) {
    options.user = 502;

    Start();

    EXPECT_TRUE(WaitInRealTime([this] { return client->UserId() == 502; }));
}

struct FailingEntry {
    const char* name;
    const char* module;
    const char* words;
};

class FailingEntryTest : public LifecycleTest, public WithParamInterface<FailingEntry> {};

TEST_P(FailingEntryTest, IsSaidInTheWindowAndTheClientGoesOnWithTheOthers) {
    options.manifest = WriteManifest({{GetParam().module, QByteArray(build::kTestModules) + '/' + GetParam().name},
                                      {"CZRGrowthModule", build::kModule}});

    StartAndLogIn();

    ASSERT_THAT(client->ModuleFailures(), SizeIs(1));
    EXPECT_THAT(client->ModuleFailures()[0].toStdString(), HasSubstr(GetParam().words));
    const auto* banner = window->findChild<QWidget*>(QStringLiteral("ModuleBanner"));
    ASSERT_TRUE(banner);
    EXPECT_TRUE(banner->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Modules, FailingEntryTest,
                         Values(FailingEntry{"libzr_test_zero.so", "CZero", "its entry refused to register it"},
                                FailingEntry{"libzr_test_throws.so", "CThrows", "its entry threw: not today"},
                                FailingEntry{"libzr_test_good.so", "CNobody", "has no entry LoadPluginModuleCNobody"}),
                         [](const auto& row) { return std::string(row.param.module); });

TEST_F(ClientTest, WarningOfTheToolkitIsInTheLog) {
    Start();
    qWarning("a drawing is damaged");
    End();

    QFile log(options.dataDir + QStringLiteral("/client.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_THAT(log.readAll().toStdString(), ContainsRegex("error [0-9]+ \\[Host.Qt\\] .*a drawing is damaged"));
}

TEST_F(ClientTest, AStoreThatCantBeOpenedIsInTheLogFromTheStart) {
    // a folder has the name of the file
    ASSERT_TRUE(QDir().mkpath(options.dataDir + QStringLiteral("/client.sqlite")));

    Start();
    ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
    End();

    QFile log(options.dataDir + QStringLiteral("/client.log"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_THAT(log.readAll().toStdString(), HasSubstr("client.sqlite is not available"));
}

}  // namespace
