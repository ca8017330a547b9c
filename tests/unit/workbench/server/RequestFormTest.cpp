#include "workbench/server/RequestForm.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>

#include "FakeControlClient.h"
#include "Fields.h"
#include "Theme.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

using EnType = RequestField::EnType;

const std::vector<RequestRow> kRows{
    {"Thing",
     "Thing of a user",
     "PUT",
     "/v1/users/{user}/thing",
     {{EnType::Number, "number", "Number", "1", "", {QStringLiteral("1  one"), QStringLiteral("2  two")}},
      {EnType::Text, "text", "Text"},
      {EnType::Flag, "flag", "Flag"},
      {EnType::Numbers, "list", "List"},
      {EnType::Json, "json", "Json"}},
     "Save",
     "Saved",
     "users.{user}",
     R"({"user":{user},"vipChange":{}})"}};

class RequestFormTest : public ScriptedHostTest {
protected:
    RequestFormTest() {
        forms.resize(500, 500);
        forms.show();
        time.Settle();
    }

    CRequestForm& Form() { return *static_cast<CRequestForm*>(forms.findChild<QStackedWidget*>()->currentWidget()); }
    void Show(const char* user) { forms.SetUser(QString::fromLatin1(user)); }
    void ShowAndLoad(const char* user, const QByteArray& value) {
        Show(user);
        server.Answer(R"({"users":{")" + QByteArray(user) + R"(":)" + value + "}}");
    }
    void Type(const char* key, const char* text) { Write(Form(), key, text); }
    std::string Text(const char* field) {
        return Form().findChild<QLineEdit*>(QString::fromLatin1(field))->text().toStdString();
    }
    QPushButton* Button(const char* name) { return Form().findChild<QPushButton*>(QString::fromLatin1(name)); }
    QLabel* Outcome() { return Form().findChild<QLabel*>(QStringLiteral("ThingOutcome")); }
    std::string Shown() { return Outcome()->text().toStdString(); }

    CFakeControlClient server;
    CRequestForms forms{QStringLiteral("Forms"), kRows, server};
};

}  // namespace

TEST_F(RequestFormTest, ReadsTheValueWhenItIsShownAndWhenThePlaceChanges) {
    const size_t before = server.wishes.size();
    ShowAndLoad("7", R"({"number":2,"text":"a"})");

    EXPECT_EQ(server.wishes.size(), before + 1);
    EXPECT_EQ(Form().findChild<QComboBox*>(QStringLiteral("Thing.number"))->currentText(), QStringLiteral("2  two"));
    EXPECT_EQ(Text("Thing.text"), "a");
    EXPECT_FALSE(Form().IsEdited());
}

TEST_F(RequestFormTest, FieldsAreDisabledUntilTheirValuesArrive) {
    Show("7");
    EXPECT_FALSE(Form().findChild<QLineEdit*>(QStringLiteral("Thing.text"))->isEnabled());

    server.Refuse(R"({"error":"no"})");

    EXPECT_TRUE(Form().findChild<QLineEdit*>(QStringLiteral("Thing.text"))->isEnabled());
    EXPECT_EQ(Shown(), "The server refuses: no");
    EXPECT_FALSE(Outcome()->property("good").toBool());
}

TEST_F(RequestFormTest, LateAnswerForAnotherPlaceIsDropped) {
    CRequestForm right(requests::OfUser().front(), server, QStringLiteral("7"));
    Write(right, "{access}", "5");
    right.Load();

    Write(right, "{access}", "6");
    server.Answer(R"({"users":[{"id":7,"premium":{"rights":[{"access":5,"daysLeft":9}]}}]})");

    const auto* days = right.findChild<QLineEdit*>(QStringLiteral("GrantRight.daysLeft"));
    EXPECT_EQ(days->text(), QString());
    EXPECT_TRUE(days->isEnabled());
}

TEST_F(RequestFormTest, UnsavedEditsOfEachPlaceAreKeptWithTheirHiddenMembers) {
    ShowAndLoad("7", R"({"text":"a","hidden":1})");
    Type("text", "edited");
    EXPECT_TRUE(Form().IsEdited());
    EXPECT_EQ(Shown(), "Edited, not saved");

    ShowAndLoad("8", R"({"text":"eight"})");
    EXPECT_FALSE(Form().IsEdited());
    Show("7");

    EXPECT_EQ(Text("Thing.text"), "edited");
    EXPECT_TRUE(Form().IsEdited());
    Click(Button("ThingSend"));
    EXPECT_EQ(server.Last(), R"(PUT /v1/users/7/thing {"hidden":1,"text":"edited"})");
}

TEST_F(RequestFormTest, EditsHaveAColourOfTheirOwn) {
    ShowAndLoad("7", "{}");
    Outcome()->window()->setStyleSheet(theme::StyleSheet());
    const auto colour = [this] { return Outcome()->palette().color(QPalette::WindowText); };

    Type("text", "edited");
    EXPECT_EQ(colour(), QColor(theme::kWarning));
    Click(Button("ThingSend"));
    server.Refuse(R"({"error":"no"})");
    EXPECT_EQ(colour(), QColor(theme::kDown));
    Type("text", "edited again");

    EXPECT_EQ(colour(), QColor(theme::kWarning));
}

TEST_F(RequestFormTest, EditsAreDiscardedByTheButtonThatSaysSo) {
    ShowAndLoad("7", R"({"text":"a"})");
    EXPECT_EQ(Button("ThingLoad")->text(), QStringLiteral("Load"));
    Type("text", "edited");
    EXPECT_EQ(Button("ThingLoad")->text(), QStringLiteral("Discard edits"));

    Click(Button("ThingLoad"));
    server.Answer(R"({"users":{"7":{"text":"b"}}})");

    EXPECT_EQ(Text("Thing.text"), "b");
    EXPECT_FALSE(Form().IsEdited());
}

TEST_F(RequestFormTest, EditsEndWhenTheServerTakesThemAndOnlyThen) {
    ShowAndLoad("7", "{}");
    Type("text", "edited");
    Click(Button("ThingSend"));
    server.Refuse(R"({"error":"thing.text: too long"})");
    EXPECT_TRUE(Form().IsEdited());
    EXPECT_EQ(Shown(), "The server refuses: thing.text: too long");

    Click(Button("ThingSend"));
    const auto answered = server.wishes.back().answered;
    Type("text", "edited again");
    answered(ServerAnswer::Read(200, "{}", QString()));

    EXPECT_TRUE(Form().IsEdited());
    Click(Button("ThingSend"));
    server.Answer("{}");
    EXPECT_FALSE(Form().IsEdited());
}

TEST_F(RequestFormTest, PushFollowsASavedValue) {
    QSignalSpy accepted(&forms, &CRequestForms::Accepted);
    ShowAndLoad("7", "{}");

    Click(Button("ThingSend"));
    server.Answer("{}");

    EXPECT_EQ(server.Last(), R"(POST /v1/push {"user":7,"vipChange":{}})");
    EXPECT_EQ(Shown(), "Saved");
    EXPECT_TRUE(Outcome()->property("good").toBool());
    EXPECT_EQ(accepted.count(), 1);
    server.Refuse(R"({"error":"no push"})");
    EXPECT_EQ(Shown(), "The server refuses: no push");
}

TEST_F(RequestFormTest, NewServerIsReadAgainUnlessThereAreEdits) {
    ShowAndLoad("7", R"({"text":"a"})");
    Form().ForgetServer();
    EXPECT_EQ(server.Last(), "GET /v1/scenario ");
    server.Answer(R"({"users":{"7":{"text":"b"}}})");
    EXPECT_EQ(Text("Thing.text"), "b");
    Type("text", "edited");
    const size_t before = server.wishes.size();

    Form().ForgetServer();

    EXPECT_EQ(server.wishes.size(), before);
    EXPECT_EQ(Text("Thing.text"), "edited");
}

TEST_F(RequestFormTest, TextOfAnotherTypeIsNamedAndNotSent) {
    ShowAndLoad("7", "{}");
    const size_t before = server.wishes.size();
    struct Wrong {
        const char* key;
        const char* text;
        const char* shown;
    };
    for (const Wrong& wrong :
         {Wrong{"number", "1.5", "Number: no whole number: 1.5"},
          Wrong{"number", "18446744073709551616", "Number: no whole number: 18446744073709551616"},
          Wrong{"list", "1 x", "List: no whole number: x"}, Wrong{"flag", "7", "Flag: neither true nor false"},
          Wrong{"flag", "yes", "Flag: neither true nor false: yes"}, Wrong{"json", "{", "Json: not JSON: "}}) {
        Type(wrong.key, wrong.text);
        Click(Button("ThingSend"));
        EXPECT_THAT(Shown(), StartsWith(wrong.shown));
        EXPECT_FALSE(Outcome()->property("good").toBool());
        Type(wrong.key, "");
    }
    EXPECT_EQ(server.wishes.size(), before);
}

TEST_F(RequestFormTest, NothingIsSentWithoutAPlace) {
    CRequestForm right(requests::OfUser().front(), server, QStringLiteral("7"));

    right.Load();
    right.Send();

    EXPECT_TRUE(server.wishes.empty());
    EXPECT_EQ(right.findChild<QLabel*>(QStringLiteral("GrantRightOutcome"))->text(), QStringLiteral("Right: missing"));
}

TEST_F(RequestFormTest, CopiesTheRequestAsCurl) {
    ShowAndLoad("7", "{}");
    Type("text", "it's");

    Click(Button("ThingCurl"));

    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              R"(curl -X PUT -H 'Authorization: Bearer secret' --data-raw '{"text":"it'\''s"}' )"
              R"('http://server/v1/users/7/thing')");
}

TEST_F(RequestFormTest, ServersTextIsNotReadAsRichText) {
    ShowAndLoad("7", "{}");
    Click(Button("ThingSend"));

    server.Refuse(R"({"error":"<img src='/etc/passwd'>"})");

    EXPECT_EQ(Outcome()->textFormat(), Qt::PlainText);
    EXPECT_THAT(Shown(), HasSubstr("<img"));
}
