#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include "FakeServerAsk.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"
#include "workbench/ClockPanel.h"
#include "workbench/FaultPanel.h"
#include "workbench/ScenePanel.h"

using namespace ::testing;

namespace {

template <class Panel>
class PanelTest : public ScriptedHostTest {
protected:
    PanelTest() {
        panel.resize(500, 500);
        panel.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return panel.template findChild<Widget*>(QString::fromLatin1(name));
    }

    void Press(const char* button) { Click(Child<QPushButton>(button)); }
    std::string Said(const char* label) { return Child<QLabel>(label)->text().toStdString(); }

    CFakeServerAsk server;
    Panel panel{server};
};

class ScenePanelTest : public PanelTest<CScenePanel> {
protected:
    void ShowUser() {
        panel.ShowUser(7);
        server.Answer(R"({"users":[{"id":8,"aiChat":{"entries":[{"scene":9,"allOpen":true}]}},
            {"id":7,"aiChat":{"resultCode":3,"entries":[{"scene":2,"allOpen":false,"stockDetails":[{"type":1,
             "open":true}]},{"scene":4,"allOpen":true}]}}]})");
    }
};

class FaultPanelTest : public PanelTest<CFaultPanel> {};
class ClockPanelTest : public PanelTest<CClockPanel> {};

}  // namespace

TEST_F(ScenePanelTest, SavesWhatWasEditedAndKeepsWhatIsNotShown) {
    ShowUser();
    auto* table = Child<QTableWidget>("SceneTable");
    ASSERT_EQ(table->rowCount(), 2);
    table->item(0, 1)->setCheckState(Qt::Checked);
    table->item(1, 0)->setText(QStringLiteral("5"));

    Press("SceneSave");

    EXPECT_EQ(server.wishes.back().verb, "PUT");
    EXPECT_EQ(server.wishes.back().path, "/v1/users/7/aiChat");
    EXPECT_EQ(server.wishes.back().json,
              R"({"entries":[{"allOpen":true,"scene":2,"stockDetails":[{"open":true,"type":1}]},)"
              R"({"allOpen":true,"scene":5}],"resultCode":3})");
    server.Answer("{}");
    EXPECT_EQ(Said("SceneMessage"), "Saved; it counts from the next login on");
}

TEST_F(ScenePanelTest, ARefusalIsSaidInTheServersWords) {
    ShowUser();
    Press("SceneAdd");
    Press("SceneSave");
    server.Refuse(R"({"error":"entries[2].scene: must be a whole number"})");

    EXPECT_EQ(Said("SceneMessage"), "The server refuses: entries[2].scene: must be a whole number");
}

TEST_F(ScenePanelTest, ASceneThatIsNoNumberIsNotSent) {
    ShowUser();
    Child<QTableWidget>("SceneTable")->item(1, 0)->setText(QStringLiteral("two"));
    const size_t before = server.wishes.size();

    Press("SceneSave");

    EXPECT_EQ(server.wishes.size(), before);
    EXPECT_EQ(Said("SceneMessage"), "Row 2: the scene must be a whole number");
}

TEST_F(ScenePanelTest, AnAnswerForTheFormerUserIsDropped) {
    panel.ShowUser(7);
    panel.ShowUser(9);
    server.wishes.front().answered(CServerControl::ReadAnswer(
        200, R"({"users":[{"id":7,"aiChat":{"entries":[{"scene":2,"allOpen":false}]}}]})", QString()));

    EXPECT_EQ(Child<QTableWidget>("SceneTable")->rowCount(), 0);
}

TEST_F(FaultPanelTest, FaultsAddUpUntilTheyAreCleared) {
    Press("FaultSet");
    EXPECT_EQ(server.wishes.back().json, R"({"20982":{"error":7,"times":1}})");
    server.Answer("{}");

    Child<QComboBox>("FaultCommand")->setEditText(QStringLiteral("5"));
    Child<QComboBox>("FaultKind")->setCurrentIndex(2);
    Child<QSpinBox>("FaultTimes")->setValue(0);
    Press("FaultSet");
    EXPECT_EQ(server.wishes.back().json, R"({"20982":{"error":7,"times":1},"5":{"bodyHex":"ff00ff"}})");
    server.Answer("{}");
    EXPECT_THAT(Said("FaultsInForce"), HasSubstr("bodyHex"));

    Press("FaultsClear");
    EXPECT_EQ(server.wishes.back().json, "{}");
    server.Answer("{}");
    EXPECT_EQ(Said("FaultsInForce"), "No fault is set");
}

TEST_F(FaultPanelTest, EachFaultBecomesItsOwnMember) {
    const char* expected[] = {R"({"20982":{"error":7,"times":1}})", R"({"20982":{"delayMs":3000,"times":1}})",
                              R"({"20982":{"bodyHex":"ff00ff","times":1}})",
                              R"({"20982":{"replyCommand":1,"times":1}})", R"({"20982":{"silent":true,"times":1}})"};
    for (int kind = 0; kind < 5; ++kind) {
        Child<QComboBox>("FaultKind")->setCurrentIndex(kind);
        Press("FaultSet");
        EXPECT_EQ(server.wishes.back().json, expected[kind]);
    }
}

TEST_F(FaultPanelTest, AWrongValueIsNotSent) {
    Child<QLineEdit>("FaultValue")->setText(QStringLiteral("much"));
    Press("FaultSet");
    EXPECT_EQ(Said("FaultMessage"), "The value must be a whole number");
    Child<QComboBox>("FaultKind")->setCurrentIndex(2);
    Child<QLineEdit>("FaultValue")->setText(QStringLiteral("abc"));
    Press("FaultSet");
    EXPECT_EQ(Said("FaultMessage"), "The bytes must be pairs of hex digits");
    Child<QComboBox>("FaultCommand")->setEditText(QStringLiteral("none"));
    Press("FaultSet");
    EXPECT_EQ(Said("FaultMessage"), "The command must be a number above 0");

    EXPECT_THAT(server.wishes, IsEmpty());
}

TEST_F(FaultPanelTest, DroppedConnectionsAreCounted) {
    Press("FaultDrop");
    EXPECT_EQ(server.wishes.back().path, "/v1/drop");
    server.Answer(R"({"dropped":2})");

    EXPECT_EQ(Said("FaultMessage"), "Connections dropped: 2");
}

TEST_F(ClockPanelTest, StepsAddUpAndResetTakesThemBack) {
    Press("ClockPlusHour");
    server.Answer("{}");
    Press("ClockPlusDay");
    EXPECT_EQ(server.wishes.back().json, R"({"offsetMs":90000000})");
    server.Answer("{}");
    EXPECT_EQ(panel.Offset(), 90'000'000);

    Press("ClockReset");
    EXPECT_EQ(server.wishes.back().json, R"({"offsetMs":0})");
}

TEST_F(ClockPanelTest, ShowsTheServersTimeAsItRuns) {
    EXPECT_EQ(Said("ClockTime"), "Server time: 2023-11-14 22:13:20 UTC");
    time.Advance(std::chrono::seconds(2));
    EXPECT_EQ(Said("ClockTime"), "Server time: 2023-11-14 22:13:22 UTC");
}
