#include "workbench/ads/AdPushPanel.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "FakeControlClient.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

/// The fields' texts and the expected request. A null field keeps the panel's default.
struct PushRow {
    const char* name;
    int push;
    const char* type;
    const char* position;
    const char* delay;
    const char* ids;
    const char* asked;
};

void PrintTo(const PushRow& row, std::ostream* stream) {
    *stream << row.asked;
}

class AdPushPanelTest : public ScriptedHostTest {
protected:
    AdPushPanelTest() {
        panel.resize(560, 200);
        panel.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return panel.findChild<Widget*>(QString::fromLatin1(name));
    }

    void Type(const char* field, const char* text) {
        if (text) {
            Child<QLineEdit>(field)->setText(QString::fromLatin1(text));
        }
    }
    void Choose(int push) { Child<QComboBox>("AdPush")->setCurrentIndex(push); }
    void Send() { Click(Child<QPushButton>("AdPushSend")); }
    std::string ParsedLine() { return Child<QLabel>("AdPushMessage")->text().toStdString(); }
    bool IsGood() { return Child<QLabel>("AdPushMessage")->property("good").toBool(); }

    CFakeControlClient server;
    CAdPushPanel panel{server};
};

class AdPushRowsTest : public AdPushPanelTest, public WithParamInterface<PushRow> {};

std::string PushName(const TestParamInfo<PushRow>& row) {
    return row.param.name;
}

}  // namespace

TEST_P(AdPushRowsTest, APushHasTheFieldsThatAreFilled) {
    const PushRow& row = GetParam();
    Choose(row.push);
    Type("AdPushType", row.type);
    Type("AdPushPosition", row.position);
    Type("AdPushDelay", row.delay);
    Type("AdPushIds", row.ids);

    Send();

    ASSERT_THAT(server.wishes, SizeIs(1));
    EXPECT_EQ(server.wishes[0].verb, "POST");
    EXPECT_EQ(server.wishes[0].path, "/v1/push");
    EXPECT_EQ(server.wishes[0].json, row.asked);
}

INSTANTIATE_TEST_SUITE_P(
    Pushes, AdPushRowsTest,
    Values(PushRow{"ChangeAsProposed", 0, nullptr, nullptr, nullptr, nullptr,
                   R"({"adChange":{"adPosition":42,"adType":2,"delay":0}})"},
           PushRow{
               "ChangeWithAll", 0, "3", " 7 ", "4294967295", "18088 x-1,y;z",
               R"({"adChange":{"adPosition":7,"adType":3,"delay":4294967295,"offlineAdIds":["18088","x-1","y","z"]}})"},
           PushRow{"ChangeWithNothing", 0, "", "", "", " , ", R"({"adChange":{}})"},
           PushRow{"CheckWithAll", 1, "2", "42", "5", "18091 18091",
                   R"({"adCheck":{"adIds":["18091","18091"],"adPosition":42,"adType":2,"delay":5}})"},
           PushRow{"CheckWithoutTypeAndIds", 1, "", "42", "5", "", R"({"adCheck":{"adPosition":42,"delay":5}})"},
           PushRow{"NewWithAll", 2, "1", "2", "3", nullptr, R"({"adNew":{"adPosition":2,"adType":1,"delay":3}})"},
           PushRow{"NewHasNoIds", 2, "", "", "3", "18088", R"({"adNew":{"delay":3}})"}),
    PushName);

TEST_F(AdPushPanelTest, IdsAreAskedForByTheNameTheyHaveInThePush) {
    EXPECT_EQ(Child<QLabel>("AdPushIdsTitle")->text(), QStringLiteral("Taken offline"));
    EXPECT_TRUE(Child<QLineEdit>("AdPushIds")->isEnabled());
    Choose(1);
    EXPECT_EQ(Child<QLabel>("AdPushIdsTitle")->text(), QStringLiteral("Ad ids"));
    EXPECT_TRUE(Child<QLineEdit>("AdPushIds")->isEnabled());
    Choose(2);
    EXPECT_FALSE(Child<QLineEdit>("AdPushIds")->isEnabled());
}

TEST_F(AdPushPanelTest, TextThatIsNoNumberIsNamedAndNothingIsSent) {
    for (const char* field : {"AdPushType", "AdPushPosition", "AdPushDelay"}) {
        const QString before = Child<QLineEdit>(field)->text();
        Type(field, "-1");
        Send();

        EXPECT_THAT(server.wishes, IsEmpty()) << field;
        EXPECT_EQ(ParsedLine(), "No whole number from 0 to 4294967295: -1") << field;
        EXPECT_FALSE(IsGood()) << field;
        Child<QLineEdit>(field)->setText(before);
    }
}

TEST_F(AdPushPanelTest, TheServersAnswerIsTold) {
    Send();
    server.Answer(R"({"sent":2})");
    EXPECT_EQ(ParsedLine(), "Sent to connections: 2");
    EXPECT_TRUE(IsGood());

    Send();
    server.Refuse(R"({"error":"push: no"})");
    EXPECT_THAT(ParsedLine(), HasSubstr("push: no"));
    EXPECT_FALSE(IsGood());
}
