#include "workbench/server/FaultTable.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "FakeControlClient.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class FaultTableTest : public ScriptedHostTest {
protected:
    FaultTableTest() {
        panel.resize(600, 400);
        panel.show();
        time.Settle();
    }

    /// Answers the last two requests, which read the faults of commands and of paths.
    void Answer(const QByteArray& replies, const QByteArray& responses) {
        const size_t count = server.wishes.size();
        ASSERT_GE(count, 2u);
        EXPECT_EQ(server.wishes[count - 2].path, "/v1/faults");
        EXPECT_EQ(server.wishes[count - 1].path, "/v1/httpFaults");
        const auto first = server.wishes[count - 2].answered;
        const auto second = server.wishes[count - 1].answered;
        first(ServerAnswer::Read(200, replies, QString()));
        second(ServerAnswer::Read(200, responses, QString()));
    }

    std::vector<std::string> Rows() {
        auto* table = panel.findChild<QTableWidget*>(QStringLiteral("FaultTable"));
        std::vector<std::string> rows;
        for (int row = 0; row < table->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table->columnCount(); ++column) {
                cells << table->item(row, column)->text();
            }
            rows.push_back(cells.join(QStringLiteral(" | ")).toStdString());
        }
        return rows;
    }

    void Press(const char* button) { Click(panel.findChild<QPushButton*>(QString::fromLatin1(button))); }
    std::string Outcome() { return panel.findChild<QLabel*>(QStringLiteral("FaultsOutcome"))->text().toStdString(); }

    CFakeControlClient server;
    CFaultTable panel{server};
};

}  // namespace

TEST_F(FaultTableTest, ShowsTheServersFaultsWithTheUsesLeftWhenItBecomesVisible) {
    Answer(R"({"20637":{"error":7,"times":3},"5":{"silent":true}})", R"({"/ad/search":{"status":500,"times":1}})");

    EXPECT_THAT(Rows(), ElementsAre(AllOf(StartsWith("20637  "), EndsWith(" | error 7 | 3")),
                                    "5 | silent true | for ever", "/ad/search | status 500 | 1"));
    EXPECT_EQ(Outcome(), "");

    panel.hide();
    panel.show();
    time.Settle();
    Answer("{}", "{}");
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(Outcome(), "No fault is set");
}

TEST_F(FaultTableTest, RemovesTheSelectedFaultAndReadsAgain) {
    Answer(R"({"20637":{"error":7}})", R"({"/ad/search":{"status":500}})");
    Press("FaultRemove");
    EXPECT_EQ(server.wishes.size(), 2u);

    panel.findChild<QTableWidget*>(QStringLiteral("FaultTable"))->selectRow(1);
    Press("FaultRemove");
    EXPECT_EQ(server.Last(), "DELETE /v1/httpFaults/ad/search ");
    server.Answer("{}");
    Answer(R"({"20637":{"error":7}})", "{}");
    EXPECT_THAT(Rows(), SizeIs(1));

    panel.findChild<QTableWidget*>(QStringLiteral("FaultTable"))->selectRow(0);
    Press("FaultRemove");
    EXPECT_EQ(server.Last(), "DELETE /v1/faults/20637 ");
}

TEST_F(FaultTableTest, RemovesAllFaultsOfBothKinds) {
    Answer("{}", "{}");

    Press("FaultsRemoveAll");

    ASSERT_EQ(server.wishes.size(), 4u);
    EXPECT_EQ(server.wishes[2].verb + server.wishes[2].path + server.wishes[2].json, "PUT/v1/faults{}");
    EXPECT_EQ(server.wishes[3].verb + server.wishes[3].path + server.wishes[3].json, "PUT/v1/httpFaults{}");
}

TEST_F(FaultTableTest, FailureIsShownAndNotOverwrittenByTheOtherAnswer) {
    const auto first = server.wishes[0].answered;
    const auto second = server.wishes[1].answered;
    first(ServerAnswer::Read(0, "", QStringLiteral("no route")));
    second(ServerAnswer::Read(200, "{}", QString()));

    EXPECT_EQ(Outcome(), "The server does not answer: no route");
}

TEST_F(FaultTableTest, FaultsOfAnyShapeAreShown) {
    Answer(R"({"a":1,"b":"x","c":[[1]],"d":null,"20637":{"error":{"x":[1]},"times":"3"}})", R"({"":{"times":{}}})");

    EXPECT_THAT(Rows(), SizeIs(6));
}
