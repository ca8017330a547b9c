#include "workbench/server/ServerPage.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>

#include "FakeControlClient.h"
#include "framework/JsonText.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const char* kUserJson = R"({"id":7,"premium":{"rights":[{"access":5,"daysLeft":1}],"code":0},
    "vip":{"basic":{"level":1},"entry":{"mainTitle":{"en":"a"}}},"activation":{"code":1},"trade":true,
    "aiChat":{"entries":[{"scene":1,"allOpen":true}],"resultCode":1}})";

/// All answers of the server in one object.
const std::string kAnswer = std::string(R"({"users":[)") + kUserJson +
                            R"(],"ads":[{"adType":2,"adPosition":42,"showInterval":5,"campaigns":[{"id":"1"}]}],
    "commonConfig":{"ai_chat":{"a":1}},"clockOffsetMs":5,"sent":1,"dropped":2,"20637":{"error":7,"times":2}})";

Json::Value Parsed(const std::string& text) {
    std::string error;
    return host::ParseJson(text, error).value_or(Json::Value());
}

/// The pointers to all values of the JSON, from the root on.
void CollectValues(Json::Value& json, std::vector<Json::Value*>& all) {
    all.push_back(&json);
    if (json.isObject() || json.isArray()) {
        for (Json::Value& child : json) {
            CollectValues(child, all);
        }
    }
}

/// The answer with each of its values replaced by each shape of JSON.
std::vector<Json::Value> AnswersOfWrongShapes() {
    std::vector<Json::Value> answers;
    Json::Value whole = Parsed(kAnswer);
    std::vector<Json::Value*> values;
    CollectValues(whole, values);
    // From the end: a restored value has new children.
    for (size_t place = values.size() - 1; place > 0; --place) {
        for (const char* shape : {"null", "true", "-1", "1e300", "18446744073709551615", "\"x\"", "[]", "[[1]]",
                                  "[1,\"x\"]", "{}", "{\"a\":1}", "[{\"id\":7,\"access\":5}]"}) {
            const Json::Value kept = *values[place];
            *values[place] = Parsed(shape);
            answers.push_back(whole);
            *values[place] = kept;
        }
    }
    for (const char* text : {R"({"users":[1]})", R"({"users":["x"]})", R"({"users":[[1]]})", R"({"users":{"a":1}})",
                             R"({"users":[{"id":7,"aiChat":{"entries":[5]}}]})", "{}"}) {
        answers.push_back(Parsed(text));
    }
    return answers;
}

class ServerPageTest : public ScriptedHostTest {
protected:
    ServerPageTest() {
        page.resize(700, 700);
        page.show();
        time.Settle();
    }

    /// Each user has forms of its own, of which one is visible.
    template <class Widget>
    Widget* Child(const char* name) {
        const auto all = page.findChildren<Widget*>(QString::fromLatin1(name));
        const auto visible = std::find_if(all.begin(), all.end(), [](const Widget* one) { return one->isVisible(); });
        return visible == all.end() ? all.value(0) : *visible;
    }
    void OpenTab(int index) {
        Child<QTabWidget>("ServerTabs")->setCurrentIndex(index);
        time.Settle();
    }
    void OpenUserForm(const char* name) {
        OpenTab(1);
        auto* choice = Child<QComboBox>("UserRequestsChoice");
        choice->setCurrentIndex(choice->findData(QString::fromLatin1(name)));
        time.Settle();
    }
    void OpenEachForm(const char* choiceName) {
        auto* choice = Child<QComboBox>(choiceName);
        for (int form = choice->count() - 1; form >= 0; --form) {
            choice->setCurrentIndex(form);
        }
    }
    std::string Who() { return Child<QLabel>("ServerUserWho")->text().toStdString(); }
    quint64 EditedUser() { return Child<QComboBox>("ServerUser")->currentData().toULongLong(); }

    const std::vector<ServerUser> users{{7, QStringLiteral("Ada")}, {8, QStringLiteral("Ben")}};
    CFakeControlClient server;
    CServerPage page{server};
};

}  // namespace

TEST_F(ServerPageTest, EditedUserAndUserLoggedInAreToldApart) {
    OpenTab(1);
    page.ShowUsers(users, 0);
    EXPECT_EQ(Who(), "Nobody is logged in");
    page.ShowUsers(users, 8);
    EXPECT_EQ(EditedUser(), 8u);
    EXPECT_EQ(Who(), "The edited user is logged in");

    Child<QComboBox>("ServerUser")->setCurrentIndex(0);

    EXPECT_EQ(Who(), "Another user is logged in: Ben (8)");
    page.ShowUsers(users, 8);
    EXPECT_EQ(EditedUser(), 7u);
}

TEST_F(ServerPageTest, ALoginOfAnotherUserDoesNotTakeUnsavedEditsOutOfSight) {
    page.ShowUsers(users, 7);
    OpenUserForm("UserActivation");
    server.Answer(QByteArray::fromStdString(kAnswer));
    Child<QLineEdit>("UserActivation.message")->setText(QStringLiteral("edited"));

    page.ShowUsers(users, 8);
    EXPECT_EQ(EditedUser(), 7u);
    EXPECT_EQ(Who(), "Another user is logged in: Ben (8)");

    Child<QComboBox>("ServerUser")->setCurrentIndex(1);
    server.Answer(QByteArray::fromStdString(kAnswer));
    EXPECT_EQ(Child<QLineEdit>("UserActivation.message")->text(), QString());
    Child<QComboBox>("ServerUser")->setCurrentIndex(0);
    EXPECT_EQ(Child<QLineEdit>("UserActivation.message")->text(), QStringLiteral("edited"));
}

TEST_F(ServerPageTest, FormsOfAUserAreDisabledWithoutUsers) {
    page.ShowUsers({}, 0);

    EXPECT_FALSE(Child<QWidget>("UserRequests")->isEnabled());
    page.ShowUsers(users, 0);
    EXPECT_TRUE(Child<QWidget>("UserRequests")->isEnabled());
}

TEST_F(ServerPageTest, OverridesAreNamedAboveAllTabs) {
    auto* overridden = Child<QLabel>("AdOverridden");
    EXPECT_FALSE(overridden->isVisible());

    Child<QComboBox>("AdFocus")->setCurrentIndex(2);
    EXPECT_TRUE(overridden->isVisible());
    EXPECT_EQ(overridden->text(), QStringLiteral("Overridden: focus never"));
    Child<QComboBox>("AdSlotPermission")->setCurrentIndex(1);
    EXPECT_EQ(overridden->text(), QStringLiteral("Overridden: focus never \u00B7 slot 2 refused"));
}

TEST_F(ServerPageTest, ShowsTheServersTimeAsItRuns) {
    auto* shown = Child<QLabel>("ClockTime");
    EXPECT_EQ(shown->text(), QStringLiteral("Server time: 2023-11-14 22:13:20 UTC"));
    time.Advance(std::chrono::seconds(2));
    EXPECT_EQ(shown->text(), QStringLiteral("Server time: 2023-11-14 22:13:22 UTC"));
}

TEST_F(ServerPageTest, FaultThatIsSetIsReadBackFromTheServer) {
    OpenTab(4);
    Click(Child<QPushButton>("ReplyFaultSend"));
    EXPECT_EQ(server.Last(), R"(PUT /v1/faults/20982 {"error":7,"times":1})");

    server.Answer("{}");

    EXPECT_EQ(server.Last(), "GET /v1/httpFaults ");
}

TEST_F(ServerPageTest, FaultsThatAreSetAreShownWithTheUsesLeft) {
    OpenTab(4);
    ASSERT_EQ(server.wishes.at(server.wishes.size() - 2).path, "/v1/faults");
    server.wishes.at(server.wishes.size() - 2)
        .answered(ServerAnswer::Read(200, R"({"20637":{"error":7,"times":3}})", QString()));
    server.Answer("{}");

    const auto* replies = Child<QPlainTextEdit>("ReplyFaults.value");
    EXPECT_TRUE(replies->toPlainText().contains(QStringLiteral("\"20637\"")));
    EXPECT_TRUE(replies->toPlainText().contains(QStringLiteral("\"times\" : 3")));
    EXPECT_EQ(Child<QPlainTextEdit>("ResponseFaults.value")->toPlainText(), QStringLiteral("{}"));

    const size_t before = server.wishes.size();
    OpenTab(3);
    OpenTab(4);
    EXPECT_EQ(server.wishes.size(), before + 2);
    EXPECT_EQ(server.Last(), "GET /v1/httpFaults ");
}

TEST_F(ServerPageTest, FormsAndScenarioAreReadAgainWhenTheirTabIsOpened) {
    server.Answer(QByteArray::fromStdString(kAnswer));
    page.ShowUsers(users, 7);
    for (const auto& [tab, apply] : {std::pair(1, "GrantRightSend"), std::pair(0, "ScenarioSend")}) {
        OpenTab(1);
        Child<QLineEdit>("GrantRight.{access}")->setText(QStringLiteral("5"));
        OpenTab(tab);
        EXPECT_EQ(server.Last(), "GET /v1/scenario ");
        server.Answer(QByteArray::fromStdString(kAnswer));
        Click(Child<QPushButton>(apply));
        server.Answer("{}");
        const size_t before = server.wishes.size();

        OpenTab(1 - tab);

        ASSERT_EQ(server.wishes.size(), before + 1);
        EXPECT_EQ(server.Last(), "GET /v1/scenario ");
        server.Answer(QByteArray::fromStdString(kAnswer));
    }
}

TEST_F(ServerPageTest, AnswersOfEveryShapeAreReadWithoutAnException) {
    page.ShowUsers(users, 7);
    for (int tab = 0; tab < Child<QTabWidget>("ServerTabs")->count(); ++tab) {
        OpenTab(tab);
    }
    for (const char* choice : {"UserRequestsChoice", "ServerRequestsChoice", "PushesChoice"}) {
        OpenEachForm(choice);
    }
    Child<QLineEdit>("GrantRight.{access}")->setText(QStringLiteral("5"));
    const auto ask = [this] {
        for (const char* button :
             {"GrantRightLoad", "UserPremiumLoad", "UserVipLoad", "UserActivationLoad", "UserTradeLoad",
              "UserAIChatLoad", "AdSlotLoad", "ConfigurationLoad", "ReplyFaultsLoad", "ResponseFaultsLoad",
              "ScenarioLoad", "ScenarioBuiltIn", "ScenarioSend"}) {
            Child<QPushButton>(button)->click();
        }
        for (const char* button : {"PushBytesSend", "DropConnectionsSend", "ClockLoad"}) {
            Child<QPushButton>(button)->click();
        }
    };
    const auto answers = AnswersOfWrongShapes();
    ASSERT_GT(answers.size(), 400u);
    for (const Json::Value& json : answers) {
        const std::string text = host::OneLine(json);
        server.wishes.clear();
        ask();
        // Answers cause further requests.
        for (size_t next = 0; next < server.wishes.size() && next < 60; ++next) {
            const auto answered = server.wishes[next].answered;
            ASSERT_NO_THROW(answered(ServerAnswer::Read(200, QByteArray::fromStdString(text), QString()))) << text;
        }
        // A value that was read can be sent again.
        for (const char* button : {"GrantRightSend", "UserPremiumSend", "UserVipSend", "UserTradeSend",
                                   "UserAIChatSend", "AdSlotSend", "ConfigurationSend"}) {
            ASSERT_NO_THROW(Child<QPushButton>(button)->click()) << text;
        }
    }
}
