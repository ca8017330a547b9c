#include "workbench/server/ScenarioEditor.h"

#include <QFile>
#include <QFormLayout>
#include <QJsonDocument>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QSignalBlocker>
#include <algorithm>

#include "framework/JsonText.h"

namespace {

using widgets::EnOutcome;

constexpr int kErrorLines = 4;
constexpr int kTopMargin = 8;

/// Returns the value at a key path such as users[2].id, or the innermost value that contains it.
const Json::Value& ValueAt(const Json::Value& json, std::string path) {
    const Json::Value* value = nullptr;
    while ((value = &Json::Path(path).resolve(json)) == &Json::Value::nullSingleton()) {
        const size_t end = path.find_last_of(".[");
        path.erase(end == std::string::npos ? 0 : end);
    }
    return *value;
}

}  // namespace

CScenarioEditor::CScenarioEditor(IControlClient& server, QWidget* parent)
    : CRequestForm(requests::Scenario(), server, {}, parent),
      m_pText(findChild<QPlainTextEdit*>()),
      m_pPath(widgets::New<QLineEdit>("ScenarioPath"_q, this, "File with a scenario"_q)),
      m_pErrors(widgets::New<QListWidget>("ScenarioErrors"_q, this, "Errors of the scenario"_q)) {
    m_pPath->setPlaceholderText(m_pPath->accessibleName());
    m_pErrors->setFixedHeight(m_pErrors->fontMetrics().lineSpacing() * kErrorLines);
    m_pErrors->hide();
    auto* open = widgets::NewButton("ScenarioOpen"_q, "Open file"_q, this, [this] { OpenFile(); });
    auto* save = widgets::NewButton("ScenarioSave"_q, "Save to file"_q, this, [this] { Save(m_pPath->text()); });
    auto* builtIn = widgets::NewButton("ScenarioBuiltIn"_q, "Open built-in"_q, this, [this] { OpenBuiltIn(); });
    m_pText->setMaximumHeight(QWIDGETSIZE_MAX);
    auto* rows = static_cast<QFormLayout*>(layout());
    rows->setContentsMargins(0, kTopMargin, 0, 0);
    rows->insertRow(0, widgets::Row({{m_pPath, 1}, widgets::NewFileButton("ScenarioChoose"_q, m_pPath)}));
    rows->insertRow(1, widgets::Row({open, save, nullptr, builtIn}));
    rows->insertRow(rows->rowCount() - 1, m_pErrors);
    connect(m_pErrors, &QListWidget::currentRowChanged, this, &CScenarioEditor::Select);
    connect(this, &CRequestForm::Accepted, this, [this] { m_server.Refresh(); });
    connect(findChild<QPushButton*>("ScenarioLoad"_q), &QPushButton::clicked, this, [this] { m_strFile.clear(); });
}

// An open file is kept, also after it was applied.
void CScenarioEditor::ForgetServer() {
    if (m_strFile.isEmpty()) {
        CRequestForm::ForgetServer();
    }
}

void CScenarioEditor::OpenFile() {
    QFile file(m_pPath->text());
    if (!MayOpen()) {
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        ShowOutcome("Can't be read: %1"_q.arg(file.errorString()), EnOutcome::Bad);
        return;
    }
    m_strFile = file.fileName();
    Open(m_strFile, QString::fromUtf8(file.readAll()));
}

void CScenarioEditor::OpenBuiltIn() {
    if (MayOpen()) {
        SetReading(true);
        Ask({"GET", "/v1/scenario/builtIn"_q, {}}, [this](const Json::Value& scenario) {
            SetReading(false);
            m_strFile.clear();
            Open("the built-in scenario"_q, json::Indented(scenario));
        });
    }
}

void CScenarioEditor::Open(const QString& name, const QString& text) {
    m_strKept = text;
    m_pText->setPlainText(text);
    ShowOutcome("Opened: %1"_q.arg(name), EnOutcome::Good);
}

// Asks about unsaved edits. Returns false if the user cancels, or if saving fails.
bool CScenarioEditor::MayOpen() {
    if (m_pText->toPlainText() == m_strKept || (m_strFile.isEmpty() && !IsEdited())) {
        return true;
    }
    const auto answer = QMessageBox::question(this, "Unsaved edits"_q, "The scenario has unsaved edits."_q,
                                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && Save(m_strFile));
}

bool CScenarioEditor::Save(const QString& path) {
    QSaveFile file(path);
    const QByteArray text = m_pText->toPlainText().toUtf8();
    if (path.isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        const QString failure = "Can't be written: %1"_q.arg(file.errorString());
        ShowOutcome(path.isEmpty() ? "Type or choose the name of a file"_q : failure, EnOutcome::Bad);
        return false;
    }
    m_strFile = path;
    m_strKept = m_pText->toPlainText();
    ShowOutcome("Saved: %1"_q.arg(path), EnOutcome::Good);
    return true;
}

// The errors stay in sight while they are corrected.
void CScenarioEditor::ShowOutcome(const QString& text, EnOutcome outcome) {
    CRequestForm::ShowOutcome(text, outcome);
    m_pErrors->setVisible(outcome == EnOutcome::Unsaved && m_pErrors->isVisible());
}

void CScenarioEditor::Fail(const QString& reason) {
    CRequestForm::Fail(reason.section(": "_q, 0, 0));
    const QSignalBlocker blocker(m_pErrors);
    m_pErrors->clear();
    m_pErrors->addItems(reason.section(": "_q, 1).split("; "_q));
    m_pErrors->show();
    m_pErrors->setCurrentRow(0);
    Select(0);
}

// Selects the value at the error's key, or the place of a syntax error.
void CScenarioEditor::Select(int error) {
    const QByteArray text = m_pText->toPlainText().toUtf8();
    const auto characters = [&text](ptrdiff_t bytes) { return QString::fromUtf8(text.left(int(bytes))).size(); };
    QTextCursor cursor = m_pText->textCursor();
    std::string reason;
    if (const auto json = host::ParseJson(text.toStdString(), reason)) {
        const auto& value = ValueAt(*json, m_pErrors->item(error)->text().section(": "_q, 0, 0).toStdString());
        cursor.setPosition(characters(value.getOffsetStart()));
        cursor.setPosition(characters(value.getOffsetLimit()), QTextCursor::KeepAnchor);
    } else {
        QJsonParseError syntax{};
        QJsonDocument::fromJson(text, &syntax);
        cursor.setPosition(characters(syntax.offset));
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    }
    m_pText->setTextCursor(cursor);
    m_pText->centerCursor();
}
