#include "workbench/server/ScenarioEditor.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSaveFile>
#include <QSignalBlocker>
#include <algorithm>
#include <optional>

#include "framework/JsonText.h"
#include "workbench/Widgets.h"

namespace {

using widgets::EnOutcome;

constexpr int kErrorLines = 4;
// Read only. clazy:excludeall=non-pod-global-static
const QString kOfServer = "Running on the server"_q;
const QString kBuiltIn = "Built in"_q;

/// A range of characters of a text.
struct Range {
    int start = 0;
    int length = 0;
};

/// Returns the number of characters in the first bytes of UTF-8.
int Characters(const QByteArray& bytes, ptrdiff_t count) {
    return QString::fromUtf8(bytes.left(int(count))).size();
}

/// Returns the value at a key path such as users[2].id, or the innermost value that contains it. Nothing if the text
/// is not JSON.
std::optional<Range> RangeAt(const QString& text, const QString& path) {
    static const QRegularExpression separators("[.\\[\\]]+"_q);
    const QByteArray bytes = text.toUtf8();
    std::string error;
    const auto json = host::ParseJson(bytes.toStdString(), error);
    if (!json) {
        return std::nullopt;
    }
    const Json::Value* at = &*json;
    const QStringList names = path.split(separators, Qt::SkipEmptyParts);
    for (const QString& name : names) {
        bool isIndex = false;
        const uint index = name.toUInt(&isIndex);
        const bool isItem = at->isArray() && isIndex && index < at->size();
        const Json::Value& child = isItem ? (*at)[index] : json::Member(*at, name.toStdString());
        if (&child == &Json::Value::nullSingleton()) {
            break;
        }
        at = &child;
    }
    const int start = Characters(bytes, at->getOffsetStart());
    return Range{start, Characters(bytes, at->getOffsetLimit()) - start};
}

/// Returns the place that an error of the server names: by its key path, or by the line and column of a syntax error.
std::optional<Range> RangeOfError(const QString& text, const QString& error) {
    static const QRegularExpression syntax("^not JSON.*Line (\\d+), Column (\\d+)"_q);
    const auto match = syntax.match(error);
    if (!match.hasMatch()) {
        return RangeAt(text, error.section(": "_q, 0, 0));
    }
    const QStringList lines = text.split(QLatin1Char('\n'));
    const int line = std::min(match.captured(1).toInt() - 1, lines.size() - 1);
    const int before = lines.mid(0, line).join(QLatin1Char('\n')).size() + (line > 0 ? 1 : 0);
    const int column = Characters(lines[line].toUtf8(), match.captured(2).toInt() - 1);
    return Range{before + column, std::min(1, lines[line].size() - column)};
}

}  // namespace

CScenarioEditor::CScenarioEditor(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pSource(widgets::New<QComboBox>("ScenarioSource"_q, this, "Scenario or file"_q)),
      m_pText(widgets::New<QPlainTextEdit>("ScenarioText"_q, this, "Scenario"_q)),
      m_pErrors(widgets::New<QListWidget>("ScenarioErrors"_q, this, "Errors of the scenario"_q)),
      m_pOutcome(widgets::NewOutcome("ScenarioOutcome"_q, this)) {
    setObjectName("ScenarioEditor"_q);
    m_pSource->setEditable(true);
    m_pSource->setInsertPolicy(QComboBox::NoInsert);
    m_pSource->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pSource->addItems({kOfServer, kBuiltIn});
    m_pText->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_pText->setTabChangesFocus(true);
    m_pErrors->setFixedHeight(m_pErrors->fontMetrics().lineSpacing() * kErrorLines);
    m_pErrors->hide();
    auto* choose = widgets::NewButton("ScenarioChoose"_q, "Choose file"_q, this, [this] { ChooseFile(); });
    auto* open = widgets::NewButton("ScenarioOpen"_q, "Open"_q, this, [this] { AskToOpen(); });
    auto* save = widgets::NewButton("ScenarioSave"_q, "Save to file"_q, this, [this] { Save(); });
    auto* apply = widgets::NewButton("ScenarioApply"_q, "Apply to server"_q, this, [this] { Apply(); });
    widgets::Column({m_pSource, widgets::Row({choose, open, save, apply}), {m_pText, 1}, m_pErrors, m_pOutcome}, this);
    connect(m_pErrors, &QListWidget::currentRowChanged, this, &CScenarioEditor::Select);
}

bool CScenarioEditor::IsEdited() const {
    return m_pText->document()->isModified();
}

void CScenarioEditor::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_strName.isEmpty() && !IsEdited()) {
        Open();
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
    const QStringList names = folder.entryList({"*.json"_q}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        m_pSource->addItem(folder.filePath(name));
    }
    m_pSource->setEditText(file);
}

void CScenarioEditor::ChooseFile() {
    auto* dialog = new QFileDialog(this, "Choose a scenario"_q, QString(), "*.json"_q);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::fileSelected, this, &CScenarioEditor::ListFiles);
    dialog->open();
}

// Asks about unsaved edits. Nothing is opened if the user cancels, or if saving fails.
void CScenarioEditor::AskToOpen() {
    if (!IsEdited()) {
        Open();
        return;
    }
    auto* question = new QMessageBox(QMessageBox::Question, "Unsaved edits"_q, "The scenario has unsaved edits."_q,
                                     QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    question->setObjectName("ScenarioQuestion"_q);
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QMessageBox::finished, this, [this](int answer) {
        const QString wanted = Source();
        if (answer == QMessageBox::Save) {
            m_pSource->setEditText(m_strName);
        }
        if (answer == QMessageBox::Discard || (answer == QMessageBox::Save && Save())) {
            m_pSource->setEditText(wanted);
            Open();
        }
    });
    question->open();
}

void CScenarioEditor::Open() {
    const QString source = Source();
    if (source == kOfServer || source == kBuiltIn) {
        Read();
        return;
    }
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly)) {
        widgets::ShowOutcome(m_pOutcome, "Can't be read: %1"_q.arg(file.errorString()), EnOutcome::Bad);
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
                         widgets::ShowOutcome(m_pOutcome, answer.Failure(), EnOutcome::Bad);
                     } else if (revision == m_pText->document()->revision()) {
                         SetText(source, json::Indented(answer.body));
                     }
                 });
}

void CScenarioEditor::SetText(const QString& name, const QString& text) {
    m_strName = name;
    m_pText->setPlainText(text);
    m_pErrors->hide();
    widgets::ShowOutcome(m_pOutcome, "Opened: %1"_q.arg(name));
}

bool CScenarioEditor::Save() {
    const QString path = Source();
    if (path.isEmpty() || path == kOfServer || path == kBuiltIn) {
        widgets::ShowOutcome(m_pOutcome, "Type or choose the name of a file"_q, EnOutcome::Bad);
        return false;
    }
    QSaveFile file(path);
    const QByteArray text = m_pText->toPlainText().toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        widgets::ShowOutcome(m_pOutcome, "Can't be written: %1"_q.arg(file.errorString()), EnOutcome::Bad);
        return false;
    }
    m_strName = path;
    m_pText->document()->setModified(false);
    ListFiles(path);
    widgets::ShowOutcome(m_pOutcome, "Saved: %1"_q.arg(path));
    return true;
}

void CScenarioEditor::Apply() {
    m_server.Ask("PUT", "/v1/scenario"_q, m_pText->toPlainText().toUtf8(), this,
                 [this, revision = m_pText->document()->revision()](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         ShowErrors(answer.error);
                         widgets::ShowOutcome(m_pOutcome, answer.Failure().section(QLatin1Char(':'), 0, 0),
                                              EnOutcome::Bad);
                         return;
                     }
                     m_pErrors->hide();
                     widgets::ShowOutcome(m_pOutcome, "The server runs this scenario; logins stay"_q);
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
    m_pErrors->addItems(answer.split("; "_q));
    m_pErrors->show();
    m_pErrors->setCurrentRow(0);
    Select(0);
}

void CScenarioEditor::Select(int error) {
    const auto* item = m_pErrors->item(error);
    const auto place = item ? RangeOfError(m_pText->toPlainText(), item->text()) : std::nullopt;
    if (place) {
        QTextCursor cursor = m_pText->textCursor();
        cursor.setPosition(place->start);
        cursor.setPosition(place->start + place->length, QTextCursor::KeepAnchor);
        m_pText->setTextCursor(cursor);
        m_pText->centerCursor();
    }
}
