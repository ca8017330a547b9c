#include "workbench/server/ScenarioEditor.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QSignalBlocker>
#include <QTextDocument>

#include "workbench/server/JsonPlace.h"
#include "workbench/server/RequestForm.h"

namespace {

constexpr int kErrorLines = 4;
constexpr qint64 kMaxFileBytes = 32 * 1024 * 1024;  // the server's limit
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
    m_pText->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_pText->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_pText->setTabChangesFocus(true);
    m_pErrors->setObjectName(QStringLiteral("ScenarioErrors"));
    m_pErrors->setAccessibleName(QStringLiteral("Errors of the scenario"));
    m_pErrors->setFixedHeight(m_pErrors->fontMetrics().lineSpacing() * kErrorLines);
    m_pErrors->hide();
    auto* line = new QHBoxLayout;
    line->addWidget(m_pSource, 1);
    AddButtons(line);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(line);
    layout->addWidget(m_pText, 1);
    layout->addWidget(m_pErrors);
    layout->addWidget(m_pOutcome);
    connect(m_pErrors, &QListWidget::currentRowChanged, this, &CScenarioEditor::Select);
    connect(m_pText->document(), &QTextDocument::modificationChanged, this, &CScenarioEditor::EditedChanged);
}

void CScenarioEditor::AddButtons(QBoxLayout* layout) {
    const auto add = [&](const char* name, const QString& text, const auto& action) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(QString::fromLatin1(name));
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
    };
    add("ScenarioChoose", QStringLiteral("Choose file"), [this] { ChooseFile(); });
    add("ScenarioOpen", QStringLiteral("Open"), [this] { Open(); });
    add("ScenarioSave", QStringLiteral("Save to file"), [this] { Save(); });
    add("ScenarioApply", QStringLiteral("Apply to server"), [this] { Apply(); });
}

bool CScenarioEditor::IsEdited() const {
    return m_pText->document()->isModified();
}

void CScenarioEditor::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!m_bRead && !IsEdited()) {
        OpenNow();
    }
}

void CScenarioEditor::ForgetServer() {
    if (m_strName == kOfServer) {
        m_bRead = false;
        if (isVisible() && !IsEdited()) {
            Read(QStringLiteral("/v1/scenario"));
        }
    }
}

QString CScenarioEditor::Source() const {
    return m_pSource->currentText().trimmed();
}

// Lists the scenarios that are in the same folder.
void CScenarioEditor::ListFiles(const QString& file) {
    const QDir folder = QFileInfo(file).absoluteDir();
    const QSignalBlocker blocker(m_pSource);
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

void CScenarioEditor::Open() {
    SaveFirst([this] { OpenNow(); });
}

// Asks about unsaved edits. Nothing follows if the user cancels, or if saving fails.
void CScenarioEditor::SaveFirst(const std::function<void()>& then) {
    if (!IsEdited()) {
        then();
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, QStringLiteral("Unsaved edits"),
                                     QStringLiteral("The scenario has unsaved edits."),
                                     QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    question->setObjectName(QStringLiteral("ScenarioQuestion"));
    question->setTextFormat(Qt::PlainText);
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QMessageBox::finished, this, [this, then](int answer) {
        if (answer == QMessageBox::Discard) {
            then();
        } else if (answer == QMessageBox::Save) {
            const QString wanted = Source();
            m_pSource->setEditText(m_strName);
            if (Save()) {
                m_pSource->setEditText(wanted);
                then();
            }
        }
    });
    question->open();
}

void CScenarioEditor::OpenNow() {
    const QString source = Source();
    if (source == kOfServer || source == kBuiltIn) {
        Read(source == kOfServer ? QStringLiteral("/v1/scenario") : QStringLiteral("/v1/scenario/builtIn"));
        return;
    }
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly)) {
        ShowOutcome(m_pOutcome, QStringLiteral("Can't be read: %1").arg(file.errorString()), false);
        return;
    }
    if (file.size() > kMaxFileBytes) {
        ShowOutcome(m_pOutcome, QStringLiteral("Can't be read: larger than 32 MiB"), false);
        return;
    }
    ListFiles(source);
    SetText(source, QString::fromUtf8(file.readAll()));
}

void CScenarioEditor::Read(const QString& path) {
    m_bRead = true;
    m_server.Ask("GET", path, QByteArray(), this,
                 [this, name = Source(), revision = m_pText->document()->revision()](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         m_bRead = false;
                         ShowOutcome(m_pOutcome, answer.Failure(), false);
                     } else if (revision == m_pText->document()->revision()) {
                         SetText(name, json::Indented(answer.body));
                     }
                 });
}

void CScenarioEditor::SetText(const QString& name, const QString& text) {
    m_strName = name;
    m_bRead = true;
    m_pText->setPlainText(text);
    m_pText->document()->setModified(false);
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
    m_pErrors->addItems(json_place::Errors(answer));
    m_pErrors->show();
    m_pErrors->setCurrentRow(0);
    Select(0);
}

void CScenarioEditor::Select(int error) {
    const auto* item = m_pErrors->item(error);
    const auto place = item ? json_place::OfError(m_pText->toPlainText(), item->text()) : std::nullopt;
    if (!place) {
        return;
    }
    QTextCursor cursor = m_pText->textCursor();
    cursor.setPosition(place->start);
    cursor.setPosition(place->start + place->length, QTextCursor::KeepAnchor);
    m_pText->setTextCursor(cursor);
    m_pText->centerCursor();
}
