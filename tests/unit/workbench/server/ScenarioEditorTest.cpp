#include "workbench/server/ScenarioEditor.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include "FakeControlClient.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const QByteArray kScenario = R"({"schema":1,"users":[{"id":7,"name":"日本"}]})";
const char* kShown = R"({
    "schema" : 1,
    "users" : 
    [
        {
            "id" : 7,
            "name" : "日本"
        }
    ]
})";

class ScenarioEditorTest : public ScriptedHostTest {
protected:
    ScenarioEditorTest() {
        editor.resize(900, 600);
        editor.show();
        time.Settle();
    }

    void Press(const char* button) { Click(editor.findChild<QPushButton*>(QString::fromLatin1(button))); }
    QPlainTextEdit* Text() { return editor.findChild<QPlainTextEdit*>(QStringLiteral("Scenario.value")); }
    QLineEdit* Path() { return editor.findChild<QLineEdit*>(QStringLiteral("ScenarioPath")); }
    QListWidget* Errors() { return editor.findChild<QListWidget*>(QStringLiteral("ScenarioErrors")); }
    std::string Outcome() { return editor.findChild<QLabel*>(QStringLiteral("ScenarioOutcome"))->text().toStdString(); }

    void Edit(const char* text) { Text()->setPlainText(QString::fromUtf8(text)); }
    QString PathOf(const char* name) { return folder.filePath(QString::fromLatin1(name)); }
    QString Write(const char* name, const QByteArray& text) {
        QFile file(PathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return file.fileName();
    }
    QByteArray Read(const char* name) {
        QFile file(PathOf(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    void Open(const QString& path) {
        Path()->setText(path);
        Press("ScenarioOpen");
    }
    /// Opens the built-in scenario, and presses the button of the question about unsaved edits.
    void OpenBuiltIn(QMessageBox::StandardButton answer) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                timer.stop();
                Click(question->button(answer));
            }
        });
        timer.start();
        Press("ScenarioBuiltIn");
        EXPECT_FALSE(timer.isActive()) << "no question";
    }

    QTemporaryDir folder;
    CFakeControlClient server;
    CScenarioEditor editor{server};
};

}  // namespace

TEST_F(ScenarioEditorTest, ShowsWhatTheServerRunsInItsOwnLetters) {
    EXPECT_EQ(server.Last(), "GET /v1/scenario ");
    server.Answer(kScenario);

    EXPECT_EQ(Text()->toPlainText().toStdString(), kShown);
    EXPECT_FALSE(editor.IsEdited());
}

TEST_F(ScenarioEditorTest, OpensTheBuiltInScenarioAndAFileWithoutAskingAboutThem) {
    server.Answer(kScenario);
    Press("ScenarioBuiltIn");
    EXPECT_EQ(server.Last(), "GET /v1/scenario/builtIn ");
    server.Answer(R"({"schema":1})");
    EXPECT_EQ(Outcome(), "Opened: the built-in scenario");

    Open(Write("a.json", "{ \"schema\":1 }"));

    EXPECT_EQ(Text()->toPlainText(), QStringLiteral("{ \"schema\":1 }"));
    EXPECT_TRUE(editor.IsEdited());
}

TEST_F(ScenarioEditorTest, FileThatCannotBeReadLeavesTheText) {
    server.Answer(kScenario);

    Open(PathOf("none.json"));

    EXPECT_THAT(Outcome(), StartsWith("Can't be read: "));
    EXPECT_EQ(Text()->toPlainText().toStdString(), kShown);
}

TEST_F(ScenarioEditorTest, SavesTheTextAndSaysPlainlyIfItCannot) {
    server.Answer(kScenario);
    Press("ScenarioSave");
    EXPECT_EQ(Outcome(), "Type or choose the name of a file");
    Edit("{ }");

    Path()->setText(PathOf("missing/a.json"));
    Press("ScenarioSave");
    EXPECT_THAT(Outcome(), StartsWith("Can't be written: "));
    Path()->setText(PathOf("a.json"));
    Press("ScenarioSave");

    EXPECT_EQ(Read("a.json"), "{ }");
    EXPECT_EQ(Outcome(), "Saved: " + PathOf("a.json").toStdString());
    Press("ScenarioBuiltIn");
    EXPECT_EQ(server.Last(), "GET /v1/scenario/builtIn ");
}

TEST_F(ScenarioEditorTest, AppliesTheScenarioAndRefreshesTheServersState) {
    server.Answer(kScenario);
    QSignalSpy applied(&editor, &CScenarioEditor::Accepted);
    Edit("{ \"schema\" : 1 }");

    Press("ScenarioSend");
    EXPECT_EQ(server.Last(), "PUT /v1/scenario {\"schema\":1}");
    EXPECT_EQ(server.refreshes, 0);
    server.Answer("{}");

    EXPECT_EQ(applied.count(), 1);
    EXPECT_EQ(server.refreshes, 1);
    EXPECT_FALSE(editor.IsEdited());
}

TEST_F(ScenarioEditorTest, AppliedTextOfAFileIsStillUnsavedAndKept) {
    server.Answer(kScenario);
    Open(Write("a.json", "{}"));
    Edit("{ }");
    Press("ScenarioSend");
    server.Answer("{}");
    const size_t before = server.wishes.size();

    editor.ForgetServer();
    OpenBuiltIn(QMessageBox::Cancel);

    EXPECT_EQ(server.wishes.size(), before);
    EXPECT_EQ(Text()->toPlainText(), QStringLiteral("{ }"));
}

TEST_F(ScenarioEditorTest, ErrorsOfTheServerAreListedAndSelectTheirPlaces) {
    server.Answer(kScenario);
    Edit(R"({"users":[{"id":-1,"name":""}]})");
    Press("ScenarioSend");

    server.Refuse(R"({"error":"users[0].id: must be a whole number; users[0].name: must not be empty"})");

    EXPECT_EQ(Outcome(), "The server refuses");
    EXPECT_TRUE(Errors()->isVisible());
    ASSERT_EQ(Errors()->count(), 2);
    EXPECT_EQ(Text()->textCursor().selectedText(), QStringLiteral("-1"));
    Errors()->setCurrentRow(1);
    EXPECT_EQ(Text()->textCursor().selectedText(), QStringLiteral("\"\""));
    Edit(R"({"users":[]})");
    EXPECT_TRUE(Errors()->isVisible());

    Press("ScenarioSend");
    server.Answer("{}");
    EXPECT_FALSE(Errors()->isVisible());
}

TEST_F(ScenarioEditorTest, ErrorSelectsTheValueAtItsKeyOrTheLineAndColumn) {
    const char* json = R"({"name": "é日", "users": [{"id": 1}, {"id": 22, "premium": {"rights": [3, 44]}}]})";
    const char* users = R"([{"id": 1}, {"id": 22, "premium": {"rights": [3, 44]}}])";
    struct Row {
        const char* text;
        const char* error;
        const char* selected;
    };
    for (const Row& row :
         {Row{json, "users[1].id: must be: a number", "22"}, Row{json, "users[1].premium.rights[1]: x", "44"},
          Row{json, "name: x", "\"é日\""}, Row{json, "users[0].name: x", R"({"id": 1})"},
          Row{json, "users[9].name: x", users}, Row{json, "nothing: x", json}, Row{json, "[0]: x", json},
          Row{json, "name.first[1]: x", "\"é日\""}, Row{json, "user: x", json}, Row{json, "users.x: x", users}}) {
        Edit(row.text);
        Press("ScenarioSend");
        server.Refuse(QByteArray::fromStdString(R"({"error":")" + std::string(row.error) + "\"}"));

        EXPECT_EQ(Text()->textCursor().selectedText(), QString::fromUtf8(row.selected)) << row.error;
    }
}

TEST_F(ScenarioEditorTest, SyntaxErrorIsSelectedAndNotSent) {
    server.Answer(kScenario);
    const size_t before = server.wishes.size();

    for (const auto& [text, selected] : {std::pair("{ \"é\": x}", "x"), std::pair("{", ""), std::pair("[1] 2", "2")}) {
        Edit(text);
        Press("ScenarioSend");

        EXPECT_EQ(Errors()->count(), 1);
        EXPECT_THAT(Errors()->item(0)->text().toStdString(), StartsWith("not JSON: "));
        EXPECT_EQ(Text()->textCursor().selectedText(), QString::fromUtf8(selected)) << text;
    }
    EXPECT_EQ(server.wishes.size(), before);
}

TEST_F(ScenarioEditorTest, UnsavedEditsAreAskedAboutAndKeptOnCancel) {
    server.Answer(kScenario);
    Edit("{ }");
    const size_t before = server.wishes.size();

    OpenBuiltIn(QMessageBox::Cancel);
    EXPECT_EQ(server.wishes.size(), before);
    EXPECT_EQ(Text()->toPlainText(), QStringLiteral("{ }"));

    OpenBuiltIn(QMessageBox::Discard);
    EXPECT_EQ(server.Last(), "GET /v1/scenario/builtIn ");
    server.Answer("{}");
    EXPECT_EQ(Text()->toPlainText(), QStringLiteral("{}"));
}

TEST_F(ScenarioEditorTest, UnsavedEditsAreSavedToTheirFileOnSave) {
    server.Answer(kScenario);
    Open(Write("a.json", "{}"));
    Edit("{ \"a\" : 1 }");
    Path()->setText(PathOf("b.json"));

    OpenBuiltIn(QMessageBox::Save);

    EXPECT_EQ(Read("a.json"), "{ \"a\" : 1 }");
    EXPECT_EQ(server.Last(), "GET /v1/scenario/builtIn ");
}

TEST_F(ScenarioEditorTest, NothingIsOpenedIfSavingFails) {
    server.Answer(kScenario);
    Edit("{ }");
    const size_t before = server.wishes.size();

    OpenBuiltIn(QMessageBox::Save);

    EXPECT_EQ(server.wishes.size(), before);
    EXPECT_EQ(Outcome(), "Type or choose the name of a file");
    EXPECT_TRUE(editor.IsEdited());
}

TEST_F(ScenarioEditorTest, LateAnswerDoesNotOverwriteEdits) {
    Edit("{ }");
    server.Answer(kScenario);

    EXPECT_EQ(Text()->toPlainText(), QStringLiteral("{ }"));
}

TEST_F(ScenarioEditorTest, NewServerIsReadAgainUnlessThereAreEditsOrAFile) {
    server.Answer(kScenario);
    size_t before = server.wishes.size();
    editor.ForgetServer();
    EXPECT_EQ(server.wishes.size(), before + 1);
    server.Answer(kScenario);

    Open(Write("a.json", "{ }"));
    before = server.wishes.size();
    editor.ForgetServer();
    EXPECT_EQ(server.wishes.size(), before);
}
