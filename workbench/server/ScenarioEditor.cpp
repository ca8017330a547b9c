#include "workbench/server/ScenarioEditor.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QSignalBlocker>

#include "workbench/server/JsonPlace.h"
#include "workbench/server/RequestForm.h"

namespace {

constexpr int kErrorLines = 4;
const QString kOfServer = QStringLiteral("Running on the server");
const QString kBuiltIn = QStringLiteral("Built in");

}  // namespace

CScenarioEditor::CScenarioEditor(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pSource(new QComboBox(this)),
      m_pText(new QPlainTextEdit(this)),
      m_pErrors(new QListWidget(this)),
      m_pOutcome(NewOutcomeLine(QStringLiteral("ScenarioOutcome"), this)) {
    setObjectName(QStringLiteral("ScenarioEditor"));
    m_pSource->setObjectName(QStringLiteral("ScenarioSource"));
    m_pSource->setAccessibleName(QStringLiteral("Scenario or file"));
    m_pSource->setEditable(true);
    m_pSource->setInsertPolicy(QComboBox::NoInsert);
    m_pSource->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pSource->addItems({kOfServer, kBuiltIn});
    m_pText->setObjectName(QStringLiteral("ScenarioText"));
    m_pText->setAccessibleName(QStringLiteral("Scenario"));
    m_pText->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_pText->setTabChangesFocus(true);
    m_pErrors->setObjectName(QStringLiteral("ScenarioErrors"));
    m_pErrors->setAccessibleName(QStringLiteral("Errors of the scenario"));
    m_pErrors->setFixedHeight(m_pErrors->fontMetrics().lineSpacing() * kErrorLines);
    m_pErrors->hide();
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* name, const QString& text, const auto& action) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QString::fromLatin1(name));
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
    };
    add("ScenarioChoose", QStringLiteral("Choose file"), &CScenarioEditor::ChooseFile);
    add("ScenarioOpen", QStringLiteral("Open"), &CScenarioEditor::Open);
    add("ScenarioSave", QStringLiteral("Save to file"), &CScenarioEditor::Save);
    add("ScenarioApply", QStringLiteral("Apply to server"), &CScenarioEditor::Apply);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pSource);
    layout->addLayout(buttons);
    layout->addWidget(m_pText, 1);
    layout->addWidget(m_pErrors);
    layout->addWidget(m_pOutcome);
    connect(m_pErrors, &QListWidget::currentRowChanged, this, &CScenarioEditor::Select);
}

bool CScenarioEditor::IsEdited() const {
    return m_pText->document()->isModified();
}

void CScenarioEditor::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_strName.isEmpty() && !IsEdited()) {
        OpenNow();
    }
}

void CScenarioEditor::ForgetServer() {
    if (m_strName == kOfServer && !IsEdited()) {
        m_strName.clear();
        m_pSource->setEditText(kOfServer);
        if (isVisible()) {
            Read();
        }
    }
}

QString CScenarioEditor::Source() const {
    return m_pSource->currentText().trimmed();
}

// Lists the scenarios that are in the same folder.
void CScenarioEditor::ListFiles(const QString& file) {
    const QDir folder = QFileInfo(file).absoluteDir();
    m_pSource->clear();
    m_pSource->addItems({kOfServer, kBuiltIn});
    const QStringList names = folder.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        m_pSource->addItem(folder.filePath(name));
    }
    m_pSource->setEditText(file);
}

void CScenarioEditor::ChooseFile() {
    auto* dialog = new QFileDialog(this, QStringLiteral("Choose a scenario"), QString(), QStringLiteral("*.json"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, &CScenarioEditor::ListFiles);
    dialog->open();
}

// Asks about unsaved edits. Nothing is opened if the user cancels, or if saving fails.
void CScenarioEditor::Open() {
    if (!IsEdited()) {
        OpenNow();
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, QStringLiteral("Unsaved edits"),
                                     QStringLiteral("The scenario has unsaved edits."),
                                     QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    question->setObjectName(QStringLiteral("ScenarioQuestion"));
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QMessageBox::finished, this, [this](int answer) {
        const QString wanted = Source();
        if (answer == QMessageBox::Save) {
            m_pSource->setEditText(m_strName);
        }
        if (answer == QMessageBox::Discard || (answer == QMessageBox::Save && Save())) {
            m_pSource->setEditText(wanted);
            OpenNow();
        }
    });
    question->open();
}

void CScenarioEditor::OpenNow() {
    const QString source = Source();
    if (source == kOfServer || source == kBuiltIn) {
        Read();
        return;
    }
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly)) {
        ShowOutcome(m_pOutcome, QStringLiteral("Can't be read: %1").arg(file.errorString()), false);
        return;
    }
    ListFiles(source);
    SetText(source, QString::fromUtf8(file.readAll()));
}

void CScenarioEditor::Read() {
    const QString source = Source();
    const char* path = source == kBuiltIn ? "/v1/scenario/builtIn" : "/v1/scenario";
    m_server.Ask("GET", QString::fromLatin1(path), QByteArray(), this,
                 [this, source, revision = m_pText->document()->revision()](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         ShowOutcome(m_pOutcome, answer.Failure(), false);
                     } else if (revision == m_pText->document()->revision()) {
                         SetText(source, json::Indented(answer.body));
                     }
                 });
}

void CScenarioEditor::SetText(const QString& name, const QString& text) {
    m_strName = name;
    m_pText->setPlainText(text);
    m_pErrors->hide();
    ShowOutcome(m_pOutcome, QStringLiteral("Opened: %1").arg(name), true);
}

bool CScenarioEditor::Save() {
    const QString path = Source();
    if (path.isEmpty() || path == kOfServer || path == kBuiltIn) {
        ShowOutcome(m_pOutcome, QStringLiteral("Type or choose the name of a file"), false);
        return false;
    }
    QSaveFile file(path);
    const QByteArray text = m_pText->toPlainText().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        ShowOutcome(m_pOutcome, QStringLiteral("Can't be written: %1").arg(file.errorString()), false);
        return false;
    }
    m_strName = path;
    m_pText->document()->setModified(false);
    ListFiles(path);
    ShowOutcome(m_pOutcome, QStringLiteral("Saved: %1").arg(path), true);
    return true;
}

void CScenarioEditor::Apply() {
    m_server.Ask("PUT", QStringLiteral("/v1/scenario"), m_pText->toPlainText().toUtf8(), this,
                 [this, revision = m_pText->document()->revision()](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         ShowErrors(answer.error);
                         ShowOutcome(m_pOutcome, answer.Failure().section(QLatin1Char(':'), 0, 0), false);
                         return;
                     }
                     m_pErrors->hide();
                     ShowOutcome(m_pOutcome, QStringLiteral("The server runs this scenario; logins stay"), true);
                     if (m_strName == kOfServer && revision == m_pText->document()->revision()) {
                         m_pText->document()->setModified(false);
                     }
                     m_server.Refresh();
                     Q_EMIT Applied();
                 });
}

void CScenarioEditor::ShowErrors(const QString& answer) {
    const QSignalBlocker blocker(m_pErrors);
    m_pErrors->clear();
    m_pErrors->addItems(answer.split(QStringLiteral("; ")));
    m_pErrors->show();
    m_pErrors->setCurrentRow(0);
    Select(0);
}

void CScenarioEditor::Select(int error) {
    const auto* item = m_pErrors->item(error);
    const auto place = item ? json_place::OfError(m_pText->toPlainText(), item->text()) : std::nullopt;
    if (place) {
        QTextCursor cursor = m_pText->textCursor();
        cursor.setPosition(place->start);
        cursor.setPosition(place->start + place->length, QTextCursor::KeepAnchor);
        m_pText->setTextCursor(cursor);
        m_pText->centerCursor();
    }
}
