#include "workbench/server/RequestForm.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "FakeControlClient.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class RequestFormClockTest : public ScriptedHostTest {
protected:
    RequestFormClockTest() {
        panel.resize(500, 300);
        panel.show();
        time.Settle();
    }

    void Press(const char* button) { Click(panel.findChild<QPushButton*>(QString::fromLatin1(button))); }
    QLineEdit* Offset() { return panel.findChild<QLineEdit*>(QStringLiteral("Clock.offsetMs")); }

    CFakeControlClient server;
    CRequestForm panel{requests::Clock(), server};
};

}  // namespace

TEST_F(RequestFormClockTest, ReadsTheOffsetWhenItBecomesVisible) {
    ASSERT_EQ(server.Last(), "GET /v1/state ");
    server.Answer(R"({"clockOffsetMs":5000})");

    EXPECT_EQ(Offset()->text(), QStringLiteral("5000"));
}

TEST_F(RequestFormClockTest, StepsAddUpToTheServersOffsetAndResetRemovesIt) {
    server.Answer(R"({"clockOffsetMs":0})");
    Press("Clock+1 h");
    EXPECT_EQ(server.Last(), R"(PUT /v1/clock {"offsetMs":3600000})");
    server.Answer("{}");
    Press("Clock+1 d");
    EXPECT_EQ(server.Last(), R"(PUT /v1/clock {"offsetMs":90000000})");
    server.Answer("{}");
    EXPECT_EQ(Offset()->text(), QStringLiteral("90000000"));

    Press("ClockReset");

    EXPECT_EQ(server.Last(), R"(PUT /v1/clock {"offsetMs":0})");
}

TEST_F(RequestFormClockTest, ARefusedStepIsNotCounted) {
    server.Answer(R"({"clockOffsetMs":0})");
    Press("Clock+1 h");
    server.Refuse(R"({"error":"offsetMs: too much"})");

    EXPECT_EQ(panel.findChild<QLabel*>(QStringLiteral("ClockOutcome"))->text(),
              QStringLiteral("The server refuses: offsetMs: too much"));
    Press("Clock+1 min");
    EXPECT_EQ(server.Last(), R"(PUT /v1/clock {"offsetMs":60000})");
}
