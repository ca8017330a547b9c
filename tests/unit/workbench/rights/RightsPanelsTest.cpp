#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "FakeControlClient.h"
#include "FakeGrowthService.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "workbench/FaultPanel.h"
#include "workbench/diagnosis/Tracker.h"
#include "workbench/rights/AnswerPanel.h"
#include "workbench/rights/AskPanel.h"
#include "workbench/rights/NumberList.h"
#include "workbench/rights/PushPanel.h"

using namespace ::testing;

namespace {

class RightsPanelTest : public ScriptedHostTest {
protected:
    void Show(QWidget& panel) {
        shown = &panel;
        panel.resize(560, 300);
        panel.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return shown->findChild<Widget*>(QString::fromLatin1(name));
    }

    void Type(const char* field, const char* text) { Child<QLineEdit>(field)->setText(QString::fromUtf8(text)); }
    void Press(const char* button) { Click(Child<QPushButton>(button)); }
    std::string ParsedLine(const char* label) { return Child<QLabel>(label)->text().toStdString(); }

    QWidget* shown = nullptr;
    CFakeControlClient server;
};

class AskPanelTest : public RightsPanelTest {
protected:
    AskPanelTest() { Show(panel); }

    void Answer(unsigned long session, const char* outcome) {
        TraceEvent seen;
        seen.what = CommandTrace{CommandTrace::EnKind::Replied, 20637, session, 0, 1, "", 20637};
        tracker.Take(seen);
        LogEntry line;
        line.time = QDateTime::fromMSecsSinceEpoch(0);
        line.record.module = "ZRGrowth";
        line.record.text = QString::fromUtf8(outcome);
        tracker.TakeLine(line);
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CTracker tracker{[](qint64 localMs) { return localMs; }};
    CAskPanel panel{tracker};
};

class PushPanelTest : public RightsPanelTest {
protected:
    PushPanelTest() { Show(panel); }

    CPushPanel panel{server};
};

class AnswerPanelTest : public RightsPanelTest {
protected:
    AnswerPanelTest() { Show(panel); }

    std::string InForce() { return faults.findChild<QLabel*>(QStringLiteral("FaultsInForce"))->text().toStdString(); }

    void Choose(const char* combo, int index) { Child<QComboBox>(combo)->setCurrentIndex(index); }

    CFaultPanel faults{server};
    CAnswerPanel panel{[this](uint32_t command, const auto& fault, IControlClient::Answered answered) {
        faults.SetFault(command, fault, std::move(answered));
    }};
};

}  // namespace

TEST_F(AskPanelTest, AllIsAskedForAndTheOutcomeFollows) {
    service->session = 12;

    Press("AskAll");
    EXPECT_THAT(service->asked, ElementsAre("all wait"));
    EXPECT_EQ(ParsedLine("AskOutcome"), "session 12 \u00B7 in flight");
    Answer(12, "[Premium] Parse Response Success, Premium Data Updated And Saved");
    EXPECT_EQ(ParsedLine("AskOutcome"), "session 12 \u00B7 good");
    EXPECT_EQ(Child<QLabel>("AskOutcome")->property("good").toBool(), true);

    service->session = 13;
    Child<QCheckBox>("AskServerPush")->setChecked(true);
    Press("AskAll");
    Answer(13, "[Premium] Server Returned Error Code = 5");
    EXPECT_THAT(service->asked, ElementsAre("all wait", "all push"));
    EXPECT_EQ(ParsedLine("AskOutcome"), "session 13 \u00B7 code 5");
    EXPECT_EQ(Child<QLabel>("AskOutcome")->property("good").toBool(), false);
}

TEST_F(AskPanelTest, AListIsAskedForAsItIsTypedAlsoAnEmptyOne) {
    service->session = 1;
    Press("AskList");
    Type("AskRights", "1000, 5 5 -3");
    Child<QCheckBox>("AskServerPush")->setChecked(true);
    Press("AskList");

    EXPECT_THAT(service->asked, ElementsAre("wait", "1000 5 5 -3 push"));
}

TEST_F(AskPanelTest, AWordThatIsNoNumberIsNamedAndNobodyAsked) {
    Type("AskRights", "5 five 6");
    Press("AskList");

    EXPECT_THAT(service->asked, IsEmpty());
    EXPECT_EQ(ParsedLine("AskOutcome"), "No number of a right: five");
}

TEST_F(AskPanelTest, WithoutTheModuleItSaysThatNobodyWasAsked) {
    service.reset();

    Press("AskAll");

    EXPECT_EQ(ParsedLine("AskOutcome"), "Nobody was asked: the module is not there or has not started");
}

TEST_F(RightsPanelTest, NumbersArePartedByBlanksAndCommas) {
    EXPECT_THAT(NumberList::Read(QStringLiteral(" 1,2;3\t4 ")).numbers, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(NumberList::Read(QString()).numbers, IsEmpty());
    EXPECT_EQ(NumberList::Read(QStringLiteral("1 2147483648")).wrongWord, QStringLiteral("2147483648"));
    EXPECT_EQ(NumberList::Read(QStringLiteral("-2147483648")).wrongWord, QString());
}

TEST_F(PushPanelTest, APushHasTheFieldsThatAreFilled) {
    Type("PushDelay", "4294967295");
    Child<QComboBox>("PushNeedAll")->setCurrentIndex(2);
    Type("PushRights", "5 1000");
    Press("PushPremium");

    ASSERT_THAT(server.wishes, SizeIs(1));
    EXPECT_EQ(server.wishes[0].verb, "POST");
    EXPECT_EQ(server.wishes[0].path, "/v1/push");
    EXPECT_EQ(server.wishes[0].json,
              R"({"premiumChange":{"access":[5,1000],"delaySeconds":4294967295,"needAll":false}})");
    server.Answer(R"({"sent":2})");
    EXPECT_EQ(ParsedLine("PushMessage"), "Sent to connections: 2");
}

TEST_F(PushPanelTest, EachFieldCanBeLeftOut) {
    Type("PushDelay", "");
    Press("PushPremium");
    EXPECT_EQ(server.wishes.back().json, R"({"premiumChange":{"needAll":true}})");
    Child<QComboBox>("PushNeedAll")->setCurrentIndex(0);
    Press("PushPremium");
    EXPECT_EQ(server.wishes.back().json, R"({"premiumChange":{}})");
    Press("PushVip");
    EXPECT_EQ(server.wishes.back().json, R"({"vipChange":{"windowSeconds":5}})");
    Type("PushWindow", "");
    Press("PushVip");
    EXPECT_EQ(server.wishes.back().json, R"({"vipChange":{}})");
}

TEST_F(PushPanelTest, TextThatIsNoNumberIsNotSent) {
    Type("PushDelay", "4294967296");
    Press("PushPremium");
    EXPECT_EQ(ParsedLine("PushMessage"), "No whole number from 0 to 4294967295: 4294967296");
    Type("PushDelay", "0");
    Type("PushRights", "1 x");
    Press("PushPremium");
    EXPECT_EQ(ParsedLine("PushMessage"), "No number of a right: x");
    Type("PushWindow", "-1");
    Press("PushVip");
    EXPECT_EQ(ParsedLine("PushMessage"), "No whole number from 0 to 4294967295: -1");

    EXPECT_THAT(server.wishes, IsEmpty());
}

TEST_F(PushPanelTest, ARefusalIsSaid) {
    Press("PushVip");
    server.Refuse(R"({"error":"no such user"})");

    EXPECT_EQ(ParsedLine("PushMessage"), "The server refuses: no such user");
}

TEST_F(AnswerPanelTest, EachBadAnswerBecomesAFaultOfItsCommand) {
    const char* expected[] = {R"({"error":7,"times":1})", R"({"replyCommand":1,"times":1})",
                              R"({"bodyHex":"ff00ff","times":1})", R"({"bodyHex":"12076e6f20636f6465","times":1})",
                              R"({"bodyHex":"0805","times":1})"};
    for (int kind = 1; kind <= 5; ++kind) {
        Choose("AnswerKind", kind);
        Press("AnswerSet");
        EXPECT_EQ(server.wishes.back().verb, "PUT");
        EXPECT_EQ(server.wishes.back().path, "/v1/faults/20637");
        EXPECT_EQ(server.wishes.back().json, expected[kind - 1]);
    }
}

TEST_F(AnswerPanelTest, ACodeIsWrittenAsTheWireHasIt) {
    Choose("AnswerKind", 5);
    Type("AnswerValue", "-1");
    Press("AnswerSet");
    EXPECT_EQ(server.wishes.back().json, R"({"bodyHex":"08ffffffffffffffffff01","times":1})");
    Type("AnswerValue", "1001");
    Choose("AnswerTimes", 1);
    Press("AnswerSet");
    EXPECT_EQ(server.wishes.back().json, R"({"bodyHex":"08e907"})");
}

TEST_F(AnswerPanelTest, FaultsOfOtherCommandsStayAsTheyAre) {
    faults.SetFault(20982, Json::Value(Json::objectValue), [](const ServerAnswer&) {});
    server.Answer("{}");
    Choose("AnswerCommand", 1);
    Choose("AnswerKind", 1);
    Choose("AnswerTimes", 1);
    Press("AnswerSet");
    EXPECT_EQ(server.wishes.back().path, "/v1/faults/20831");
    EXPECT_EQ(server.wishes.back().json, R"({"error":7})");
    server.Answer("{}");
    EXPECT_EQ(ParsedLine("AnswerMessage"), "The next answer: 20831 \u00B7 Error number");
    // the panel of all faults shows it too
    EXPECT_EQ(InForce(), R"(Set: {"20831":{"error":7},"20982":{}})");

    Choose("AnswerKind", 0);
    Press("AnswerSet");

    EXPECT_EQ(server.wishes.back().verb, "DELETE");
    EXPECT_EQ(server.wishes.back().path, "/v1/faults/20831");
    EXPECT_EQ(server.wishes.back().json, "");
    server.Answer("{}");
    EXPECT_EQ(ParsedLine("AnswerMessage"), "The next answer: 20831 \u00B7 as it should");
    EXPECT_EQ(InForce(), R"(Set: {"20982":{}})");
    EXPECT_FALSE(Child<QLineEdit>("AnswerValue")->isEnabled());
}

TEST_F(AnswerPanelTest, AWrongValueIsNotSent) {
    Choose("AnswerKind", 1);
    Type("AnswerValue", "much");
    Press("AnswerSet");
    EXPECT_EQ(ParsedLine("AnswerMessage"), "The value must be a whole number");
    Choose("AnswerKind", 3);
    Type("AnswerValue", "abc");
    Press("AnswerSet");
    EXPECT_EQ(ParsedLine("AnswerMessage"), "The bytes must be pairs of hex digits");

    EXPECT_THAT(server.wishes, IsEmpty());
}

TEST_F(AnswerPanelTest, ARefusalIsSaid) {
    Choose("AnswerKind", 1);
    Press("AnswerSet");
    server.Refuse(R"({"error":"20637.error: too large"})");

    EXPECT_EQ(ParsedLine("AnswerMessage"), "The server refuses: 20637.error: too large");
    EXPECT_EQ(InForce(), "No fault is set");
}
