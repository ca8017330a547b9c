#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTreeWidget>
#include <algorithm>
#include <stdexcept>

#include "ClientFixture.h"
#include "core/attr_market.h"
#include "core/login_status_data.h"
#include "core/urlhandler.h"
#include "support/Click.h"
#include "workbench/Workbench.h"

using namespace ::testing;

namespace {

class WorkbenchOnServerTest : public ClientTest {
protected:
    int RowWith(const char* table, int column, const QString& text) {
        const QAbstractItemModel* model = Child<QTableView>(table)->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, column).data().toString() == text) {
                return row;
            }
        }
        return -1;
    }

    int ReplyRow(const QString& command) {
        const QAbstractItemModel* model = Child<QTableView>("TrafficTable")->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 1).data() == QStringLiteral("Reply") && model->index(row, 2).data() == command) {
                return row;
            }
        }
        return -1;
    }
};

TEST_F(WorkbenchOnServerTest, TheReplyIsSeenAndDecoded) {
    StartAndLogIn();

    ASSERT_TRUE(WaitInRealTime([this] { return ReplyRow(QStringLiteral("20982")) >= 0; }));
    Child<QTableView>("TrafficTable")->selectRow(ReplyRow(QStringLiteral("20982")));

    EXPECT_EQ(Child<QPlainTextEdit>("TrafficDetail")->toPlainText().count(QStringLiteral("scene: ")), 3);
    // accesses of the store are shown too, also those before the window existed
    EXPECT_TRUE(WaitInRealTime(
        [this] { return RowWith("StoreTable", 3, QStringLiteral("ZRBaseAIChatEnableCacheDataKey_501")) >= 0; }));
    EXPECT_GE(RowWith("StoreTable", 3, QStringLiteral("Host_DeviceId")), 0);
}

TEST_F(WorkbenchOnServerTest, ScenesSavedToTheServerCountAtTheNextLogin) {
    StartAndLogIn();
    OpenLoaded("UserPageScroll", "UserRequestsChoice", "UserAIChat", "UserAIChat.entries");
    auto* entries = Child<QPlainTextEdit>("UserAIChat.entries");
    ASSERT_THAT(entries->toPlainText().toStdString(), HasSubstr("\"scene\" : 5"));

    entries->setPlainText(QStringLiteral(R"([{"scene":4,"allOpen":true},{"scene":5,"allOpen":true}])"));
    Child<QPushButton>("UserAIChatSend")->click();
    ASSERT_TRUE(WaitInRealTime(
        [this] { return Child<QLabel>("UserAIChatOutcome")->text().startsWith(QStringLiteral("Saved")); }));
    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({4, 5}); }));
}

TEST_F(WorkbenchOnServerTest, ScenarioIsEditedAndAppliedToTheRunningServer) {
    StartAndLogIn();
    OpenServer("ScenarioScroll");
    auto* text = Child<QPlainTextEdit>("Scenario.value");
    ASSERT_TRUE(WaitInRealTime([=] { return text->toPlainText().contains(QStringLiteral("Three")); }));
    auto* errors = Child<QListWidget>("ScenarioErrors");

    text->setPlainText(text->toPlainText().replace(QStringLiteral(": 502"), QStringLiteral(": -502")));
    Click(Child<QPushButton>("ScenarioSend"));
    ASSERT_TRUE(WaitInRealTime([=] { return errors->count() == 1; }));
    EXPECT_EQ(text->textCursor().selectedText(), QStringLiteral("-502"));

    text->setPlainText(text->toPlainText().replace(QStringLiteral(": -502"), QStringLiteral(": 504")));
    Click(Child<QPushButton>("ScenarioSend"));
    EXPECT_TRUE(WaitInRealTime([this] { return Child<QComboBox>("WorkbenchUser")->findData(504) >= 0; }));
}

TEST_F(WorkbenchOnServerTest, ReaderOfAnAnswerThatThrowsIsLogged) {
    StartAndLogIn();

    client->Control().Ask("GET", QStringLiteral("/v1/state"), QByteArray(), window,
                          [](const ServerAnswer&) { throw std::runtime_error("wrong shape"); });

    EXPECT_TRUE(WaitInRealTime([this] {
        const auto lines = client->Log().Kept();
        return std::any_of(lines.begin(), lines.end(), [](const LogEntry& line) {
            return line.record.text.contains(QStringLiteral("A reader of the server's answer threw: wrong shape"));
        });
    }));
}

TEST_F(WorkbenchOnServerTest, AFaultFailsTheNextRequest) {
    StartAndLogIn();

    ASSERT_NO_FATAL_FAILURE(SetFault("ReplyFault.error", "7"));
    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] { return RowWith("TrafficTable", 1, QStringLiteral("Failed")) >= 0; }));
}

struct PanelFault {
    const char* name;
    const char* field;
    const char* value;
    std::set<int> open;  // entries after the login with the fault
    int answersTold;     // notifications during the login with the fault
    int connectionsTold;
};

class PanelFaultTest : public WorkbenchOnServerTest, public WithParamInterface<PanelFault> {};

TEST_P(PanelFaultTest, TheClientGoesOnWithTheLastGoodData) {
    const char* cache = "ZRBaseAIChatEnableCacheDataKey_501";
    StartAndLogIn();
    const std::string good = StoredValue(cache);
    ASSERT_EQ(good, "[\n\t1,\n\t4\n]\n");
    ASSERT_NO_FATAL_FAILURE(SetFault(GetParam().field, GetParam().value));

    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] {
        return server->Requests(20982).size() == 2 && OpenEntries() == GetParam().open &&
               CountOf(20300) == 1 + GetParam().answersTold && CountOf(10650) == 1 + GetParam().connectionsTold;
    }));
    EXPECT_EQ(client->UserId(), 501u);
    EXPECT_EQ(StoredValue(cache), good);
    client->Login(502);
    EXPECT_TRUE(WaitInRealTime([this] { return OpenEntries() == std::set<int>({2}); }));
    EXPECT_EQ(CountOf(20300), 2 + GetParam().answersTold);
}

INSTANTIATE_TEST_SUITE_P(Faults, PanelFaultTest,
                         Values(PanelFault{"Frame", "ReplyFault.frameHex", "ffff", {}, 0, 1},
                                PanelFault{"Copies", "ReplyFault.copies", "3", {1, 4}, 1, 1},
                                PanelFault{"Cut", "ReplyFault.drop", "true", {}, 0, 2}),
                         [](const auto& row) { return row.param.name; });

TEST_F(WorkbenchOnServerTest, ASessionThatCameWithAReconnectIsKeptOutOfExportsToo) {
    StartAndLogIn();
    const uint64_t first = core::login_status_data::GetSessionId();

    OpenServer("ServerRequestsPageScroll", "ServerRequestsChoice", "DropConnections");
    Child<QPushButton>("DropConnectionsSend")->click();
    ASSERT_TRUE(WaitInRealTime([&] { return core::login_status_data::GetSessionId() != first; }));

    const CRedactor& aliases = Child<CWorkbench>("Workbench")->Aliases();
    EXPECT_EQ(aliases.Redacted(QString::number(first)), QStringLiteral("session-1"));
    EXPECT_EQ(aliases.Redacted(QString::number(core::login_status_data::GetSessionId())), QStringLiteral("session-2"));
}

TEST_F(WorkbenchOnServerTest, IdsAndNamesOfTheServersUsersAreKeptOutOfExports) {
    StartAndLogIn();

    const CRedactor& aliases = Child<CWorkbench>("Workbench")->Aliases();
    EXPECT_EQ(aliases.Redacted(QStringLiteral("Two is 502, Three is 503")),
              QStringLiteral("name-2 is user-2, name-3 is user-3"));
}

TEST_F(WorkbenchOnServerTest, MarketsAndEditionTakeEffectInTheRunningClient) {
    StartAndLogIn();

    client->OverrideMarkets({8, 9});
    EXPECT_THAT(core::attr_market::GetCurrentUserAttrMarket(), ElementsAre(8, 9));
    Child<QComboBox>("WorkbenchEdition")->setCurrentIndex(1);
    EXPECT_EQ(Child<QLabel>("ProductName")->text(), QStringLiteral("Velora"));
    client->Login(501);

    EXPECT_TRUE(WaitInRealTime([this] {
        return client->UserId() == 501 && core::attr_market::GetCurrentUserAttrMarket() == std::vector<int>({3, 1});
    }));
}

TEST_F(WorkbenchOnServerTest, OpenedAndRefusedUrlsAreListed) {
    using namespace core::urlhandler;
    StartAndLogIn();
    const auto open = [](const char* url) {
        return DispatchUrl(QString::fromLatin1(url), kBusinessDefault, nullptr, QVariant(), kFallbackWeb);
    };

    EXPECT_TRUE(open("zrclient://page/news"));
    EXPECT_FALSE(open("zrclient://page/nowhere"));
    EXPECT_FALSE(open("file:///etc/hosts"));

    EXPECT_TRUE(WaitInRealTime([this] { return Child<QTableView>("UrlTable")->model()->rowCount() == 3; }));
    EXPECT_EQ(RowWith("UrlTable", 1, QStringLiteral("Opened")), 0);
    EXPECT_EQ(RowWith("UrlTable", 3, QStringLiteral("its scheme is not allowed")), 2);
}

}  // namespace
