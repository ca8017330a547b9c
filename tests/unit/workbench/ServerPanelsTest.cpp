#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include "FakeControlClient.h"
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
    std::string ParsedLine(const char* label) { return Child<QLabel>(label)->text().toStdString(); }

    CFakeControlClient server;
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

using EnFault = CFaultPanel::EnFault;

struct FaultRow {
    const char* name;
    CFaultPanel::EnFault fault;
    const char* value;  // null: the panel's default
    const char* asked;  // the request, or the reason why none is sent
};

void PrintTo(const FaultRow& row, std::ostream* stream) {
    *stream << (row.value ? row.value : "as proposed");
}

class FaultAskedTest : public FaultPanelTest, public WithParamInterface<FaultRow> {
protected:
    void Ask() {
        auto* kind = Child<QComboBox>("FaultKind");
        kind->setCurrentIndex(kind->findData(int(GetParam().fault)));
        if (GetParam().value) {
            Child<QLineEdit>("FaultValue")->setText(QString::fromLatin1(GetParam().value));
        }
        Press("FaultSet");
    }
};

class FaultNotAskedTest : public FaultAskedTest {};

std::string FaultName(const TestParamInfo<FaultRow>& info) {
    return info.param.name;
}

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
    EXPECT_EQ(ParsedLine("SceneMessage"), "Saved; it counts from the next login on");
}

TEST_F(ScenePanelTest, ARefusalIsSaidInTheServersWords) {
    ShowUser();
    Press("SceneAdd");
    Press("SceneSave");
    server.Refuse(R"({"error":"entries[2].scene: must be a whole number"})");

    EXPECT_EQ(ParsedLine("SceneMessage"), "The server refuses: entries[2].scene: must be a whole number");
}

TEST_F(ScenePanelTest, ASceneThatIsNoNumberIsNotSent) {
    ShowUser();
    Child<QTableWidget>("SceneTable")->item(1, 0)->setText(QStringLiteral("two"));
    const size_t before = server.wishes.size();

    Press("SceneSave");

    EXPECT_EQ(server.wishes.size(), before);
    EXPECT_EQ(ParsedLine("SceneMessage"), "Row 2: the scene must be a whole number");
}

TEST_F(ScenePanelTest, AnAnswerForTheFormerUserIsDropped) {
    panel.ShowUser(7);
    panel.ShowUser(9);
    server.wishes.front().answered(ServerAnswer::Read(
        200, R"({"users":[{"id":7,"aiChat":{"entries":[{"scene":2,"allOpen":false}]}}]})", QString()));

    EXPECT_EQ(Child<QTableWidget>("SceneTable")->rowCount(), 0);
}

TEST_F(ScenePanelTest, ARowThatIsRemovedIsNotSaved) {
    ShowUser();
    Child<QTableWidget>("SceneTable")->setCurrentCell(0, 0);
    Press("SceneRemove");
    Press("SceneSave");

    EXPECT_EQ(server.wishes.back().json, R"({"entries":[{"allOpen":true,"scene":4}],"resultCode":3})");
}

TEST_F(ScenePanelTest, ReloadShowsWhatTheServerHasAgain) {
    ShowUser();
    Child<QTableWidget>("SceneTable")->item(0, 0)->setText(QStringLiteral("99"));
    Press("SceneReload");
    EXPECT_EQ(server.wishes.back().path, "/v1/scenario");
    server.Answer(R"({"users":[{"id":7,"aiChat":{"entries":[{"scene":6,"allOpen":true}]}}]})");

    ASSERT_EQ(Child<QTableWidget>("SceneTable")->rowCount(), 1);
    EXPECT_EQ(Child<QTableWidget>("SceneTable")->item(0, 0)->text(), QStringLiteral("6"));
    EXPECT_EQ(Child<QTableWidget>("SceneTable")->item(0, 1)->checkState(), Qt::Checked);
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
    EXPECT_THAT(ParsedLine("FaultsInForce"), HasSubstr("bodyHex"));

    Press("FaultsClear");
    EXPECT_EQ(server.wishes.back().json, "{}");
    server.Answer("{}");
    EXPECT_EQ(ParsedLine("FaultsInForce"), "No fault is set");
}

TEST_P(FaultAskedTest, BecomesAMemberOfItsOwn) {
    Ask();

    ASSERT_THAT(server.wishes, SizeIs(1));
    EXPECT_EQ(server.wishes[0].verb, "PUT");
    EXPECT_EQ(server.wishes[0].path, "/v1/faults");
    EXPECT_EQ(server.wishes[0].json, std::string(R"({"20982":{)") + GetParam().asked + R"(,"times":1}})");
}

INSTANTIATE_TEST_SUITE_P(Faults, FaultAskedTest,
                         Values(FaultRow{"Error", EnFault::Error, nullptr, R"("error":7)"},
                                FaultRow{"NegativeError", EnFault::Error, " -2 ", R"("error":-2)"},
                                FaultRow{"Delay", EnFault::Delay, nullptr, R"("delayMs":3000)"},
                                FaultRow{"Body", EnFault::Garbage, nullptr, R"("bodyHex":"ff00ff")"},
                                FaultRow{"NoBody", EnFault::Garbage, "", R"("bodyHex":"")"},
                                FaultRow{"OtherCommand", EnFault::WrongCommand, nullptr, R"("replyCommand":1)"},
                                FaultRow{"Frame", EnFault::Frame, nullptr, R"("frameHex":"ffff")"},
                                FaultRow{"FrameInCapitals", EnFault::Frame, " 0AFF ", R"("frameHex":"0aff")"},
                                FaultRow{"Copies", EnFault::Copies, nullptr, R"("copies":3)"},
                                FaultRow{"Silence", EnFault::Silent, nullptr, R"("silent":true)"},
                                FaultRow{"Cut", EnFault::Drop, nullptr, R"("drop":true)"}),
                         FaultName);

TEST_P(FaultNotAskedTest, IsSaidWithItsReason) {
    Ask();

    EXPECT_THAT(server.wishes, IsEmpty());
    EXPECT_EQ(ParsedLine("FaultMessage"), GetParam().asked);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FaultNotAskedTest,
    Values(FaultRow{"ErrorAsWord", EnFault::Error, "much", "The value must be a whole number"},
           FaultRow{"NoError", EnFault::Error, "", "The value must be a whole number"},
           FaultRow{"HalfABodyByte", EnFault::Garbage, "abc", "The bytes must be pairs of hex digits"},
           FaultRow{"FrameAsWord", EnFault::Frame, "zz", "The bytes must be pairs of hex digits"},
           FaultRow{"CopiesWithPoint", EnFault::Copies, "1.5", "The value must be a whole number"}),
    FaultName);

TEST_F(FaultPanelTest, AFaultWithoutAValueAsksForNone) {
    auto* kind = Child<QComboBox>("FaultKind");
    kind->setCurrentIndex(kind->findData(int(EnFault::Drop)));
    EXPECT_FALSE(Child<QLineEdit>("FaultValue")->isEnabled());

    kind->setCurrentIndex(kind->findData(int(EnFault::Copies)));
    EXPECT_TRUE(Child<QLineEdit>("FaultValue")->isEnabled());
    EXPECT_EQ(Child<QLineEdit>("FaultValue")->text(), QStringLiteral("3"));
}

TEST_F(FaultPanelTest, ACommandThatIsNoNumberIsNotAsked) {
    Child<QComboBox>("FaultCommand")->setEditText(QStringLiteral("none"));
    Press("FaultSet");

    EXPECT_THAT(server.wishes, IsEmpty());
    EXPECT_EQ(ParsedLine("FaultMessage"), "The command must be a number above 0");
}

TEST_F(FaultPanelTest, AFaultThatTheServerRefusesIsNotInForce) {
    Press("FaultSet");
    server.Refuse(R"({"error":"20982.copies: must be a whole number from 1 to 1000"})");

    EXPECT_EQ(ParsedLine("FaultMessage"), "The server refuses: 20982.copies: must be a whole number from 1 to 1000");
    EXPECT_EQ(ParsedLine("FaultsInForce"), "No fault is set");
}

TEST_F(FaultPanelTest, ANewServerHasNoFaults) {
    Press("FaultSet");
    server.Answer("{}");
    panel.ForgetFaults();
    EXPECT_EQ(ParsedLine("FaultsInForce"), "No fault is set");

    Child<QComboBox>("FaultCommand")->setEditText(QStringLiteral("5"));
    Press("FaultSet");
    EXPECT_EQ(server.wishes.back().json, R"({"5":{"error":7,"times":1}})");
}

TEST_F(FaultPanelTest, DroppedConnectionsAreCounted) {
    Press("FaultDrop");
    EXPECT_EQ(server.wishes.back().path, "/v1/drop");
    server.Answer(R"({"dropped":2})");

    EXPECT_EQ(ParsedLine("FaultMessage"), "Connections dropped: 2");
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
    EXPECT_EQ(ParsedLine("ClockTime"), "Server time: 2023-11-14 22:13:20 UTC");
    time.Advance(std::chrono::seconds(2));
    EXPECT_EQ(ParsedLine("ClockTime"), "Server time: 2023-11-14 22:13:22 UTC");
}

TEST_F(ClockPanelTest, AnOffsetThatIsTypedIsSet) {
    Child<QLineEdit>("ClockOffset")->setText(QStringLiteral(" -1500 "));
    Press("ClockSet");

    EXPECT_EQ(server.wishes.back().path, "/v1/clock");
    EXPECT_EQ(server.wishes.back().json, R"({"offsetMs":-1500})");
}

TEST_F(ClockPanelTest, AnOffsetThatIsNoNumberIsNotAsked) {
    Child<QLineEdit>("ClockOffset")->setText(QStringLiteral("soon"));
    Press("ClockSet");

    EXPECT_THAT(server.wishes, IsEmpty());
    EXPECT_EQ(ParsedLine("ClockMessage"), "The value must be a whole number");
}

TEST_F(ClockPanelTest, ARefusedOffsetIsSaidAndNotCounted) {
    Press("ClockPlusHour");
    server.Refuse(R"({"error":"offsetMs: too much"})");

    EXPECT_EQ(ParsedLine("ClockMessage"), "The server refuses: offsetMs: too much");
    EXPECT_EQ(panel.Offset(), 0);
}

TEST_F(ClockPanelTest, ANewServerHasNoOffset) {
    Press("ClockPlusMinute");
    server.Answer("{}");
    EXPECT_EQ(Child<QLineEdit>("ClockOffset")->text(), QStringLiteral("60000"));

    panel.ForgetOffset();

    EXPECT_EQ(panel.Offset(), 0);
    EXPECT_EQ(Child<QLineEdit>("ClockOffset")->text(), QStringLiteral("0"));
}
