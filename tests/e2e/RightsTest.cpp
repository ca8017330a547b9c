// Rights and VIP status, from the server's scenario over the channel to the module's service and the workbench.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <csignal>

#include "ClientFixture.h"
#include "StatusLine.h"
#include "core/IZRChannelProxy.h"
#include "core/url_linkid.h"
#include "core/urlhandler.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"
#include "webview/ZRWebWindowInfo.h"

using namespace ::testing;

namespace {

constexpr const char* kScenario = R"({"schema":1,"rights":[
    {"access":1,"uiType":"A","otherInfo":{"group":"market"},"links":{"mainBtn":11,"detailBtn":12,"detailSubBtn":13},
     "texts":{"en":{"mainTitle":"First","mainBtn":"Open","detailTitle":"All of it","detailSubTitle":"Today",
                    "detailBtn":"More","detailSubBtn":"Less"},"fr":{"mainTitle":"Premier"}}},
    {"access":5,"uiType":"D","texts":{"en":{"mainTitle":"Fifth"},"fr":{"mainTitle":"Cinquième"}}},
    {"access":1000,"texts":{"en":{"mainTitle":"Page"},"fr":{"mainTitle":"Page premium"}}}],
  "users":[
    {"id":501,"name":"One Member","trade":false,"premium":{"rights":[
        {"access":1,"hasPermission":true,"activationType":3,"daysLeft":30,"activationSource":2},
        {"access":5,"hasPermission":false,"activationType":5},
        {"access":1000,"hasPermission":true,"display":false}]},
     "vip":{"qualification":true,"basic":{"state":1,"level":2,"version":1,"newState":1,"newSubState":103,
            "autoRenewal":1}}},
    {"id":502,"name":"Two Refused","trade":false,"premium":{"rights":[{"access":5,"hasPermission":true}]}},
    {"id":503,"name":"Three Trading","trade":true},
    {"id":504,"name":"Four Plain"},
    {"id":505,"name":"Five Ready","premium":{"rights":[{"access":1,"activationType":6},{"access":5,"activationType":6}]},
     "activation":{"daysLeft":4}}],
  "commonConfig":{}})";

class RightsTest : public ClientTest {
protected:
    struct Received {
        unsigned int message;
        uint64_t outcome;
        std::vector<int> rights;  // in the table at the notification
    };

    void SetUp() override {
        options.scenario = WriteFile("rights.json", kScenario);
        Start();
        for (const unsigned int message : {80050u, 80051u, 80052u}) {
            Bind(message, [this](unsigned int id, unsigned long, const std::shared_ptr<core::CMessageBody>& body) {
                told.push_back({id, body ? body->p2() : 0, Rights()});
            });
        }
        QObject::connect(client, &CComposition::UserChanged, &watcher, [this] { atUserChange.push_back(Rights()); });
        AwaitLogin(501);
    }

    // The end logs out, which calls members of this class.
    ~RightsTest() override { End(); }

    /// Waits for the login of `user` and for both answers.
    void AwaitLogin(uint64_t user) {
        ASSERT_TRUE(
            WaitInRealTime([&] { return client->UserId() == user && ReceivedOf(80051) > 0 && ReceivedOf(80052) > 0; }));
    }

    void LogIn(uint64_t user) {
        told.clear();
        atUserChange.clear();
        client->Login(user);
        AwaitLogin(user);
    }

    static std::shared_ptr<IZRGrowthModuleInterface> Service() {
        return IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
    }

    static CPremiumUIAccessData Right(int right) { return Service()->GetUIAccessData(EnPremiumAccess(right)); }

    static std::vector<int> Rights() {
        std::vector<int> rights;
        for (const EnPremiumAccess right : Service()->GetUIAccessData().keys()) {
            rights.push_back(right);
        }
        return rights;
    }

    int ReceivedOf(unsigned int message) const {
        return int(
            std::count_if(told.begin(), told.end(), [=](const Received& one) { return one.message == message; }));
    }

    std::string LastRequest() { return server->Requests(20637).back()["bodyHex"].asString(); }

    template <class Widget>
    Widget* Child(const char* name) {
        return window->findChild<Widget*>(QString::fromLatin1(name));
    }

    bool Says(const char* label, const char* words) {
        return Child<QLabel>(label)->text().contains(QString::fromUtf8(words));
    }

    void Press(const char* button) { Child<QPushButton>(button)->click(); }

    std::vector<Received> told;
    std::vector<std::vector<int>> atUserChange;
};

TEST_F(RightsTest, TheServiceHoldsTheScenariosRights) {
    EXPECT_THAT(Rights(), ElementsAre(1, 5, 1000));
    const CPremiumUIAccessData first = Right(1);
    EXPECT_EQ(first.enAccess, 1);
    EXPECT_EQ(first.enUIAccess, 1);
    EXPECT_TRUE(first.bHasPermission);
    EXPECT_EQ(first.nActivationType, 3);
    EXPECT_EQ(first.nDaysLeft, 30);
    EXPECT_EQ(first.nActivationSource, 2);
    EXPECT_EQ(first.strUIType, QStringLiteral("A"));
    EXPECT_EQ(first.strMainTitle, QStringLiteral("First"));
    EXPECT_EQ(first.strMainBtn, QStringLiteral("Open"));
    EXPECT_EQ(first.strDetailTitle, QStringLiteral("All of it"));
    EXPECT_EQ(first.strDetailSubTitle, QStringLiteral("Today"));
    EXPECT_EQ(first.strDetailBtn, QStringLiteral("More"));
    EXPECT_EQ(first.strDetailSubBtn, QStringLiteral("Less"));
    EXPECT_EQ(first.nMainBtnUrlID, 11);
    EXPECT_EQ(first.nDetailBtnUrlID, 12);
    EXPECT_EQ(first.nDetailSubBtnUrlID, 13);
    EXPECT_THAT(first.strOtherInfo.toStdString(), HasSubstr("market"));
    // the server does not send this half
    EXPECT_EQ(Right(1000).enUIAccess, 0);
    EXPECT_TRUE(Right(1000).bHasPermission);

    EXPECT_TRUE(Service()->HasVipQualification());
    EXPECT_EQ(Service()->GetVipGrade(), 2);
    EXPECT_EQ(Service()->GetVipState(), 1);
    EXPECT_EQ(Service()->GetNewVipState(), 1);
    EXPECT_EQ(Service()->GetVipEngineStatus(), kVipEngineMember);
    EXPECT_FALSE(Service()->IsNewVipSystem());
    Child<QComboBox>("WorkbenchEdition")->setCurrentIndex(1);
    EXPECT_TRUE(Service()->IsNewVipSystem());
    EXPECT_TRUE(Says("UserFact_vipNewerSystem", "yes"));
}

TEST_F(RightsTest, ActivatedRightIsLimitedInTheModuleAfterThePush) {
    LogIn(505);
    ASSERT_EQ(Right(1).nActivationType, 6);
    told.clear();
    // operation 2 (ready to limited) of right 1
    const CSProtoData data{20981, "\x08\x02\x10\x01"};
    std::vector<std::string> replies;
    const auto activate = [&] {
        IZRChannelProxy::SendCommand(
            kCSChannelMain, data, nullptr,
            [&](unsigned long, CSProtoError, const CSProtoData& reply, const CSResponseExt*) {
                replies.push_back(reply.m_strData);
            },
            &watcher);
    };

    activate();

    ASSERT_TRUE(WaitInRealTime([&] { return Right(1).nActivationType == 1; }));
    EXPECT_THAT(replies, ElementsAre(std::string("\x08\x00", 2)));
    EXPECT_EQ(Right(1).nDaysLeft, 4);
    EXPECT_TRUE(Right(1).bHasPermission);
    EXPECT_EQ(Right(5).nActivationType, 6);
    EXPECT_EQ(ReceivedOf(80050), 1);

    activate();

    ASSERT_TRUE(WaitInRealTime([&] { return replies.size() == 2; }));
    EXPECT_EQ(replies[1], "\x08\xe9\x07");  // 1001
}

TEST_F(RightsTest, LinkOfARightOpensWithTheWishedWindow) {
    std::vector<std::pair<QUrl, QSize>> opened;
    QObject::connect(client, &CComposition::WebOpened, &watcher,
                     [&](const QUrl& url, const QSize& size) { opened.emplace_back(url, size); });
    ASSERT_TRUE(WaitInRealTime([] { return !core::url_linkid::GetLinkUrlWithTargetLinkId(12, 0).empty(); }));
    const QString url = QString::fromStdString(core::url_linkid::GetLinkUrlWithTargetLinkId(12, 0));
    EXPECT_THAT(url.toStdString(), MatchesRegex("http://127.0.0.1:[0-9]+/link/12"));
    EXPECT_EQ(core::url_linkid::GetLinkUrlWithTargetLinkId(14, 0), "");
    core::webview::ZRWebWindowInfo info;
    info.size = QSize(390, 848);

    EXPECT_TRUE(core::urlhandler::DispatchUrl(url, core::urlhandler::kBusinessDefault, nullptr,
                                              QVariant::fromValue(info), core::urlhandler::kFallbackWeb));

    EXPECT_THAT(opened, ElementsAre(Pair(QUrl(url), QSize(390, 848))));
}

TEST_F(RightsTest, TheTableOfTheNextUserHasNothingOfTheFormer) {
    LogIn(502);

    // the table is empty first and contains the new user's rights later, never those of the former user
    EXPECT_THAT(atUserChange, Each(IsEmpty()));
    for (const Received& one : told) {
        EXPECT_THAT(one.rights, Each(5)) << one.message;
    }
    EXPECT_THAT(Rights(), ElementsAre(5));
    EXPECT_TRUE(Right(5).bHasPermission);
    EXPECT_FALSE(Service()->HasVipQualification());
    EXPECT_EQ(Service()->GetVipGrade(), 0);
    EXPECT_TRUE(WaitInRealTime([this] { return ListedRights() == 1; }));
}

TEST_F(RightsTest, ALogoutEmptiesTableAndPageWithoutAMessage) {
    told.clear();

    client->Logout();

    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(Rights(), IsEmpty());
    EXPECT_TRUE(WaitInRealTime([this] { return ListedRights() == 0; }));
    EXPECT_TRUE(Says("UserFact_vipOlderSystem", "no: state 0, not 1; not qualified"));
}

TEST_F(RightsTest, TheTradeModuleDecidesOnWhoIsNoMember) {
    LogIn(502);
    EXPECT_EQ(Service()->GetVipEngineStatus(), kVipEngineNonMember);
    EXPECT_TRUE(Says("UserFact_vipNewerSystem", "no member"));

    LogIn(503);
    EXPECT_EQ(Service()->GetVipEngineStatus(), kVipEngineUndetermined);

    LogIn(504);
    EXPECT_EQ(Service()->GetVipEngineStatus(), kVipEngineUndetermined);
}

TEST_F(RightsTest, APushForAListRefreshesJustThese) {
    server->Put("/v1/users/501/premium",
                R"({"rights":[{"access":1,"hasPermission":false,"daysLeft":0},{"access":5,"hasPermission":true}]})");
    told.clear();

    server->Post("/v1/push", R"({"premiumChange":{"delaySeconds":0,"needAll":false,"access":[5]}})");

    ASSERT_TRUE(WaitInRealTime([this] { return ReceivedOf(80050) == 1; }));
    EXPECT_EQ(LastRequest(), "08001005");
    EXPECT_THAT(Rights(), ElementsAre(1, 5, 1000));
    EXPECT_TRUE(Right(5).bHasPermission);
    EXPECT_TRUE(Right(1).bHasPermission);
    EXPECT_EQ(Right(1).nDaysLeft, 30);
    EXPECT_EQ(ReceivedOf(80051), 0);
}

TEST_F(RightsTest, APushOfTheVipStatusRefreshesIt) {
    server->Put("/v1/users/501/vip", R"({"qualification":true,"basic":{"level":3,"newState":2}})");
    told.clear();

    server->Post("/v1/push", R"({"vipChange":{"windowSeconds":0}})");

    ASSERT_TRUE(WaitInRealTime([this] { return ReceivedOf(80052) == 1; }));
    EXPECT_EQ(Service()->GetVipGrade(), 3);
    EXPECT_EQ(Service()->GetVipEngineStatus(), kVipEngineExpired);
    EXPECT_TRUE(Says("UserFact_vipNewerSystem", "expired"));
}

TEST_F(RightsTest, ALanguageBringsItsTexts) {
    told.clear();

    client->SetLanguage(7);

    ASSERT_TRUE(WaitInRealTime([this] { return ReceivedOf(80050) == 1; }));
    EXPECT_EQ(Right(1).strMainTitle, QStringLiteral("Premier"));
    EXPECT_EQ(Right(5).strMainTitle, QString::fromUtf8("Cinquième"));
    // the server receives the language before the request
    const Json::Value received = server->Get("/v1/received")["received"];
    EXPECT_EQ(received[received.size() - 2]["kind"], "LANGUAGE");
    EXPECT_EQ(received[received.size() - 1]["kind"], "REQUEST");
}

TEST_F(RightsTest, AServerThatIsGoneAndBackLeavesTheTable) {
    told.clear();
    ASSERT_EQ(kill(pid_t(client->Server().ProcessId()), SIGKILL), 0);
    ASSERT_TRUE(WaitInRealTime([this] { return !window->StatusLine().IsGood(); }));
    EXPECT_THAT(Rights(), ElementsAre(1, 5, 1000));

    ASSERT_TRUE(WaitInRealTime([this] { return CountOf(10650) == 2; }));

    EXPECT_THAT(Rights(), ElementsAre(1, 5, 1000));
    EXPECT_EQ(Service()->GetVipGrade(), 2);
    EXPECT_THAT(told, IsEmpty());
    // and the next request is answered
    Service()->GetUiMsgAndPremiumAccessReq(true);
    EXPECT_TRUE(WaitInRealTime([this] { return ReceivedOf(80050) == 1; }));
}

struct BadAnswer {
    const char* name;
    const char* fault;
    const char* outcome;
};

class BadAnswerTest : public RightsTest, public WithParamInterface<BadAnswer> {};

TEST_P(BadAnswerTest, LeavesTheTableAsItWasAndIsTold) {
    server->Put("/v1/users/501/premium", R"({"rights":[]})");
    server->Put("/v1/faults", std::string(R"({"20637":)") + GetParam().fault + "}");
    told.clear();

    Service()->GetUiMsgAndPremiumAccessReq(true);

    ASSERT_TRUE(WaitInRealTime([this] { return told.size() == 1; }));
    EXPECT_EQ(told[0].message, 80051u);
    EXPECT_EQ(told[0].outcome, 2u);
    EXPECT_THAT(Rights(), ElementsAre(1, 5, 1000));
    EXPECT_TRUE(Right(1).bHasPermission);
    EXPECT_TRUE(WaitForWhy("Rights", GetParam().outcome));
}

INSTANTIATE_TEST_SUITE_P(Answers, BadAnswerTest,
                         Values(BadAnswer{"Error", R"({"error":7,"times":1})", "channel error 7"},
                                BadAnswer{"Garbage", R"({"bodyHex":"ff","times":1})", "bad bytes"},
                                BadAnswer{"NoCode", R"({"bodyHex":"12026e6f","times":1})", "no code"},
                                BadAnswer{"OtherCode", R"({"bodyHex":"0805","times":1})", "code 5"},
                                BadAnswer{"Cut", R"({"drop":true,"times":1})", "channel error"}),
                         [](const auto& row) { return row.param.name; });

class BadVipAnswerTest : public RightsTest, public WithParamInterface<BadAnswer> {};

TEST_P(BadVipAnswerTest, LeavesTheStatusAsItWasAndIsNotTold) {
    server->Put("/v1/users/501/vip", R"({"basic":{"level":3}})");
    server->Put("/v1/faults", std::string(R"({"20831":)") + GetParam().fault + "}");
    told.clear();

    server->Post("/v1/push", R"({"vipChange":{}})");

    ASSERT_TRUE(WaitForWhy("VIP status", GetParam().outcome));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(Service()->GetVipGrade(), 2);
    EXPECT_TRUE(Service()->HasVipQualification());
}

INSTANTIATE_TEST_SUITE_P(Answers, BadVipAnswerTest,
                         Values(BadAnswer{"Error", R"({"error":7,"times":1})", "push \u00B7 channel error 7"},
                                BadAnswer{"OtherCommand", R"({"replyCommand":20832,"times":1})",
                                          "push \u00B7 wrong command 20832"},
                                BadAnswer{"Garbage", R"({"bodyHex":"ff","times":1})", "push \u00B7 bad bytes"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(RightsTest, TheWorkbenchBreaksAnAnswerAndPushes) {
    // the next answer has its own code, once
    Child<QComboBox>("ReplyFault.{command}")->setEditText(QStringLiteral("20637"));
    Child<QLineEdit>("ReplyFault.error")->clear();
    Child<QComboBox>("ReplyFault.bodyHex")->setEditText(QStringLiteral("0805  code 5"));
    Press("ReplyFaultSend");
    ASSERT_TRUE(WaitInRealTime([this] { return Says("ReplyFaultOutcome", "Done"); }));
    Service()->GetUiMsgAndPremiumAccessReq(false);
    ASSERT_TRUE(WaitForWhy("Rights", "code 5"));
    Service()->GetUiMsgAndPremiumAccessReq(false);
    ASSERT_TRUE(WaitForWhy("Rights", "good"));
    EXPECT_EQ(LastRequest(), "0801");

    // and both pushes
    Child<QLineEdit>("PushRights.premiumChange.delaySeconds")->setText(QStringLiteral("0"));
    Child<QLineEdit>("PushRights.premiumChange.access")->setText(QStringLiteral("1"));
    Child<QComboBox>("PushRights.premiumChange.needAll")->setCurrentIndex(0);
    Press("PushRightsSend");
    ASSERT_TRUE(WaitForWhy("Rights", "push \u00B7 good"));
    EXPECT_EQ(LastRequest(), "08001001");
    OpenServer("PushPageScroll", "PushesChoice", "PushVip");
    Child<QLineEdit>("PushVip.vipChange.windowSeconds")->setText(QString());
    Press("PushVipSend");
    EXPECT_TRUE(WaitForWhy("VIP status", "push \u00B7 good"));
}

}  // namespace
