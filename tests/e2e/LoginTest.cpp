#include <QTcpServer>
#include <csignal>

#include "ClientFixture.h"
#include "StatusLine.h"
#include "core/attr_market.h"
#include "core/config_common.h"
#include "core/login_status_data.h"

using namespace ::testing;

namespace {

using LoginTest = ClientTest;

TEST_F(LoginTest, TheExchangeRunsFromTheServerToTheEntriesAndTheFile) {
    StartAndLogIn();

    // the module sent one empty request for the logged-in user
    const auto requests = server->Requests(20982);
    ASSERT_THAT(requests, SizeIs(1));
    EXPECT_EQ(requests[0]["user"].asUInt64(), 501u);
    EXPECT_EQ(requests[0]["bodyHex"].asString(), "");
    // the client was notified, and the answer is stored
    EXPECT_EQ(CountOf(20300), 1);
    EXPECT_EQ(StoredValue("ZRBaseAIChatEnableCacheDataKey_501"), "[\n\t1,\n\t4\n]\n");
    // the host has the values of the login answer
    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 501u);
    EXPECT_NE(core::login_status_data::GetSessionId(), 0u);
    EXPECT_THAT(core::attr_market::GetCurrentUserAttrMarket(), ElementsAre(3, 1));
    EXPECT_EQ(core::config_common::GetJsonConfigByName("ai_chat")["url_string"].asString(), "https://chat.example/");
}

TEST_F(LoginTest, TheLoginChannelIsToldOnceAtTheLogin) {
    StartAndLogIn();

    EXPECT_EQ(CountOf(10650), 1);
}

TEST_F(LoginTest, AnotherUserBringsOtherScenes) {
    StartAndLogIn();

    client->Login(502);

    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({2}); }));
    EXPECT_EQ(client->UserId(), 502u);
    EXPECT_THAT(server->Requests(20982), SizeIs(2));
    EXPECT_EQ(CountOf(10650), 2);
}

TEST_F(LoginTest, TheSameUserAgainIsAskedForAgain) {
    StartAndLogIn();

    client->Logout();
    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 0u);
    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return CountOf(20300) == 2; }));
    EXPECT_EQ(OpenEntries(), std::set<int>({1, 4}));
    EXPECT_THAT(server->Requests(20982), SizeIs(2));
}

TEST_F(LoginTest, ARefusedLoginIsSaidInTheStatusLineAndLeavesNobodyLoggedIn) {
    StartAndLogIn();

    client->Login(503);

    EXPECT_TRUE(WaitInRealTime([this] { return StatusSaid("the account is closed"); }));
    EXPECT_EQ(client->UserId(), 0u);
}

TEST_F(LoginTest, TheServersNextAnswerCountsAtTheNextLogin) {
    StartAndLogIn();
    server->Put("/v1/users/501/aiChat", R"({"entries":[{"scene":3,"allOpen":true}]})");

    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({3}); }));
}

TEST_F(LoginTest, AGarbledReplyLeavesTheEntriesClosedAndTheClientRunning) {
    StartAndLogIn();
    server->Put("/v1/faults", R"({"20982":{"bodyHex":"ff","times":1}})");

    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return server->Requests(20982).size() == 2 && OpenEntries().empty(); }));
    EXPECT_EQ(CountOf(20300), 1);
}

TEST_F(LoginTest, AChangedConfigurationIsToldWhenItIsThere) {
    StartAndLogIn();
    const int before = CountOf(10250);

    server->Put("/v1/config/ai_chat", R"({"url_string":"https://other.example/"})");

    EXPECT_TRUE(WaitInRealTime([&] { return CountOf(10250) == before + 1; }));
    EXPECT_EQ(core::config_common::GetJsonConfigByName("ai_chat")["url_string"].asString(), "https://other.example/");
}

TEST_F(LoginTest, ALanguageSwitchIsToldAndKeepsTheEntries) {
    StartAndLogIn();

    client->SetLanguage(0);

    EXPECT_EQ(CountOf(20100), 1);
    EXPECT_EQ(client->LanguageId(), 0);
    EXPECT_EQ(OpenEntries(), std::set<int>({1, 4}));
}

TEST_F(LoginTest, AServerThatDiesIsSaidAndTheClientIsBackWithoutASecondLogin) {
    StartAndLogIn();
    const qint64 process = client->Server().ProcessId();

    ASSERT_EQ(kill(pid_t(process), SIGKILL), 0);

    EXPECT_TRUE(WaitInRealTime([this] { return !window->StatusLine().IsGood(); }));
    EXPECT_EQ(OpenEntries(), std::set<int>({1, 4}));
    // the channel reconnects, but the modules are not logged in a second time
    EXPECT_TRUE(WaitInRealTime([this] { return CountOf(10650) == 2; }));
    EXPECT_NE(client->Server().ProcessId(), process);
    EXPECT_EQ(client->UserId(), 501u);
    EXPECT_THAT(server->Requests(20982), IsEmpty());
}

TEST_F(LoginTest, ADroppedConnectionComesBack) {
    StartAndLogIn();

    server->Post("/v1/drop", "{}");

    EXPECT_TRUE(WaitInRealTime([this] { return CountOf(10650) == 2; }));
    EXPECT_EQ(client->UserId(), 501u);
}

TEST_F(LoginTest, AModuleThatIsNotThereIsSaidInTheWindowAndTheClientGoesOn) {
    options.manifest =
        WriteFile("modules.json", R"({"modules":[{"name":"CZRGrowthModule","library":"libabsent.so"}]})");

    Start();

    EXPECT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
    ASSERT_THAT(client->ModuleFailures(), SizeIs(1));
    EXPECT_THAT(client->ModuleFailures()[0].toStdString(), HasSubstr("libabsent.so"));
    const auto* banner = window->findChild<QWidget*>(QStringLiteral("ModuleBanner"));
    ASSERT_TRUE(banner);
    EXPECT_TRUE(banner->isVisible());
    EXPECT_THAT(OpenEntries(), IsEmpty());
}

TEST_F(LoginTest, AServerThatIsAwayIsSaidAndTheWindowStands) {
    options.server = QUrl(QStringLiteral("http://127.0.0.1:9"));

    Start();

    EXPECT_TRUE(WaitInRealTime([this] { return StatusSaid("does not answer"); }));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(LoginTest, TheEndTakesTheServerWithIt) {
    StartAndLogIn();
    const auto process = pid_t(client->Server().ProcessId());

    End();

    EXPECT_NE(kill(process, 0), 0);
    EXPECT_EQ(core::login_status_data::Login_GetUserID(), 0u);
}

}  // namespace
