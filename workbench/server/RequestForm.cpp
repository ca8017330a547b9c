#include "workbench/server/RequestForm.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopedValueRollback>

#include "Theme.h"
#include "framework/JsonText.h"

namespace {

using EnType = RequestField::EnType;

constexpr int kJsonLines = 8;
const QString kGap = QStringLiteral("  ");
const QString kLeftOut = QStringLiteral("left out");
const QString kEmptyText = QStringLiteral("\"\"");

bool IsPlace(const RequestField& field) {
    return !field.key.empty() && field.key.front() == '{';
}

QString NameOf(const RequestField& field) {
    const QString key = QString::fromStdString(field.key);
    return IsPlace(field) ? key.mid(1, key.size() - 2) : key;
}

QStringList StepsOf(const RequestField& field) {
    return QString::fromStdString(field.key).split(QLatin1Char('.'), Qt::SkipEmptyParts);
}

QString TextOf(const QWidget* widget) {
    if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
        return combo->currentText().section(kGap, 0, 0).trimmed();
    }
    const auto* lines = qobject_cast<const QPlainTextEdit*>(widget);
    return (lines ? lines->toPlainText() : static_cast<const QLineEdit*>(widget)->text()).trimmed();
}

void SetTextOf(QWidget* widget, const QString& text) {
    if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        const int index = combo->findText(text + kGap, Qt::MatchStartsWith);
        combo->setEditText(index < 0 ? text : combo->itemText(index));
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(widget)) {
        lines->setPlainText(text);
    } else {
        static_cast<QLineEdit*>(widget)->setText(text);
    }
}

/// Returns null if the value has no such member.
const Json::Value* At(const Json::Value& json, const QStringList& steps) {
    const Json::Value* at = &json;
    for (const QString& step : steps) {
        at = &json::Member(*at, step.toStdString());
    }
    return at == &Json::Value::nullSingleton() ? nullptr : at;
}

/// Replaces the member, or removes it without a value.
void Put(Json::Value& json, const QStringList& steps, const std::optional<Json::Value>& value) {
    if (steps.isEmpty()) {
        json = value.value_or(Json::Value());
        return;
    }
    const std::string name = steps.front().toStdString();
    if (!value && !At(json, steps)) {
        return;
    }
    json = json.isObject() ? json : Json::Value(Json::objectValue);
    if (steps.size() > 1 || value) {
        Put(json[name], steps.mid(1), value);
    } else {
        json.removeMember(name);
    }
}

struct FieldValue {
    std::optional<Json::Value> json;
    QString error;
};

/// Reads the text of a field, which is not empty.
FieldValue Read(EnType type, const QString& text) {
    if (type == EnType::Text) {
        return {Json::Value(text == kEmptyText ? std::string() : text.toStdString()), {}};
    }
    if (type == EnType::Numbers || type == EnType::Texts) {
        static const QRegularExpression gap(QStringLiteral("[\\s,;]+"));
        Json::Value list(Json::arrayValue);
        const QStringList words = text.split(gap, Qt::SkipEmptyParts);
        for (const QString& word : words) {
            const FieldValue item = Read(type == EnType::Numbers ? EnType::Number : EnType::Text, word);
            if (!item.json) {
                return item;
            }
            list.append(*item.json);
        }
        return {list, {}};
    }
    std::string error;
    const auto json = host::ParseJson(text.toStdString(), error);
    if (json && (type == EnType::Json || (type == EnType::Number ? json->isIntegral() : json->isBool()))) {
        return {json, {}};
    }
    if (type == EnType::Json) {
        return {{}, QStringLiteral("not JSON: %1").arg(QString::fromStdString(error).simplified())};
    }
    const bool isNumber = type == EnType::Number;
    return {
        {},
        (isNumber ? QStringLiteral("no whole number: %1") : QStringLiteral("neither true nor false: %1")).arg(text)};
}

/// The text of a field that shows the value.
QString Shown(EnType type, const Json::Value& json) {
    if (type == EnType::Json) {
        return json::Indented(json);
    }
    if ((type == EnType::Numbers || type == EnType::Texts) && json.isArray()) {
        QStringList words;
        for (const Json::Value& item : json) {
            words << json::Text(item);
        }
        return words.join(QLatin1Char(' '));
    }
    return json == Json::Value("") ? kEmptyText : json::Text(json);
}

QString Filled(const char* pattern, const RequestRow::Values& places) {
    QString text = QString::fromLatin1(pattern);
    for (auto place = places.begin(); place != places.end(); ++place) {
        text.replace(QLatin1Char('{') + place.key() + QLatin1Char('}'), place.value());
    }
    return text;
}

Json::Value BodyOf(const RequestRow& row) {
    std::string error;
    return host::ParseJson(row.body, error).value_or(Json::Value());
}

}  // namespace

void ShowOutcome(QLabel* line, const QString& text, bool good) {
    line->setText(text);
    line->setProperty("good", good);
    theme::Repolish(line);
}

QLabel* NewOutcomeLine(const QString& name, QWidget* parent) {
    auto* line = new QLabel(parent);
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    line->setWordWrap(true);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return line;
}

CRequestForm::CRequestForm(const RequestRow& row, IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_row(row),
      m_server(server),
      m_base(BodyOf(row)),
      m_pOutcome(NewOutcomeLine(QString::fromLatin1(row.name) + QStringLiteral("Outcome"), this)) {
    setObjectName(QString::fromLatin1(row.name));
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const RequestField& field : row.fields) {
        QWidget* widget = NewEditor(field);
        const QString name = NameOf(field);
        widget->setObjectName(objectName() + QLatin1Char('.') + (name.isEmpty() ? QStringLiteral("value") : name));
        widget->setAccessibleName(QString::fromLatin1(field.label));
        widget->setAccessibleDescription(QString::fromLatin1(field.hint));
        m_editors.push_back({&field, widget});
        layout->addRow(QString::fromLatin1(field.label), widget);
    }
    AddButtons(layout);
    layout->addRow(m_pOutcome);
}

QWidget* CRequestForm::NewEditor(const RequestField& field) {
    const QString hint = *field.hint ? QString::fromLatin1(field.hint) : kLeftOut;
    const auto edited = [this, &field] { OnEdited(field); };
    if (field.type == EnType::Json) {
        auto* lines = new QPlainTextEdit(this);
        lines->setPlaceholderText(hint);
        lines->setTabChangesFocus(true);
        lines->setFixedHeight(lines->fontMetrics().lineSpacing() * kJsonLines);
        connect(lines, &QPlainTextEdit::textChanged, this, edited);
        return lines;
    }
    const std::vector<std::string> flags{"", "true", "false"};
    const auto& choices = field.type == EnType::Flag ? flags : field.choices;
    auto* combo = choices.empty() ? nullptr : new QComboBox(this);
    auto* line = new QLineEdit(combo ? static_cast<QWidget*>(combo) : this);
    QWidget* editor = line;
    if (combo) {
        combo->setLineEdit(line);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        for (const std::string& choice : choices) {
            combo->addItem(QString::fromStdString(choice));
        }
        editor = combo;
    }
    line->setPlaceholderText(hint);
    SetTextOf(editor, QString::fromLatin1(field.value));
    connect(line, &QLineEdit::textChanged, this, edited);
    connect(line, &QLineEdit::returnPressed, this, &CRequestForm::Send);
    return editor;
}

void CRequestForm::AddButtons(QFormLayout* layout) {
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const char* part, const QString& text, void (CRequestForm::*action)()) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(objectName() + QString::fromLatin1(part));
        connect(button, &QPushButton::clicked, this, action);
        buttons->addWidget(button);
        return button;
    };
    add("Send", QString::fromLatin1(m_row.action), &CRequestForm::Send);
    m_pLoad = m_row.current ? add("Load", QStringLiteral("Load"), &CRequestForm::Load) : nullptr;
    buttons->addStretch(1);
    add("Curl", QStringLiteral("Copy as curl"), &CRequestForm::CopyCurl);
    layout->addRow(buttons);
}

void CRequestForm::OnEdited(const RequestField& field) {
    if (IsPlace(field)) {
        m_base = BodyOf(m_row);  // its hidden members belong to the former place
    } else if (!m_bFilling) {
        ++m_nEdits;
        SetEdited(true);
    }
}

// A form that changes no value of the server has nothing to lose.
void CRequestForm::SetEdited(bool edited) {
    m_bEdited = edited && m_row.current;
    if (m_pLoad) {
        m_pLoad->setText(m_bEdited ? QStringLiteral("Discard edits") : QStringLiteral("Load"));
        ShowOutcome(m_pOutcome, m_bEdited ? QStringLiteral("Edited, not saved") : QString(), true);
    }
}

void CRequestForm::SetUser(const QString& user) {
    if (user == m_strUser) {
        return;
    }
    m_drafts.remove(m_strUser);
    if (m_bEdited) {
        Draft& draft = m_drafts[m_strUser];
        draft.base = m_base;
        for (const Editor& editor : m_editors) {
            draft.texts << TextOf(editor.widget);
        }
    }
    m_strUser = user;
    ++m_nEdits;
    const auto draft = m_drafts.constFind(user);
    SetEdited(draft != m_drafts.constEnd());
    if (!m_bEdited) {
        ForgetServer();
        return;
    }
    SetReading(false);
    const QScopedValueRollback<bool> filling(m_bFilling, true);
    for (size_t place = 0; place < m_editors.size(); ++place) {
        SetTextOf(m_editors[place].widget, draft->texts[int(place)]);
    }
    m_base = draft->base;
}

void CRequestForm::SetText(const char* key, const QString& text) {
    for (const Editor& editor : m_editors) {
        if (editor.field->key == key) {
            SetTextOf(editor.widget, text);
        }
    }
}

void CRequestForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_row.current && !m_bLoaded && !m_bEdited) {
        Load();
    }
}

void CRequestForm::ForgetServer() {
    m_bLoaded = false;
    if (m_row.current && isVisible() && !m_bEdited) {
        Load();
    }
}

// The fields cannot be edited before their values arrive.
void CRequestForm::SetReading(bool reading) {
    m_bLoaded = true;
    for (const Editor& editor : m_editors) {
        editor.widget->setEnabled(!reading || IsPlace(*editor.field));
    }
}

void CRequestForm::Load() {
    const bool hasEmptyPlace = std::any_of(m_editors.begin(), m_editors.end(), [](const Editor& editor) {
        return IsPlace(*editor.field) && TextOf(editor.widget).isEmpty();
    });
    if (hasEmptyPlace) {
        return;
    }
    SetEdited(false);
    SetReading(true);
    m_server.Ask("GET", QString::fromLatin1(m_row.source), QByteArray(), this,
                 [this, edits = m_nEdits](const ServerAnswer& answer) {
                     if (edits == m_nEdits) {
                         SetReading(false);
                         Take(answer);
                     }
                 });
}

void CRequestForm::Take(const ServerAnswer& answer) {
    if (!answer.error.isEmpty()) {
        m_bLoaded = false;
        Fail(answer.Failure());
        return;
    }
    const auto places = Places();
    if (!places) {
        return;
    }
    const Json::Value value = m_row.current(answer.body, *places);
    m_base = value.isNull() ? BodyOf(m_row) : value;
    const QScopedValueRollback<bool> filling(m_bFilling, true);
    for (const Editor& editor : m_editors) {
        if (!IsPlace(*editor.field)) {
            const Json::Value* member = At(value, StepsOf(*editor.field));
            const QString text = member ? Shown(editor.field->type, *member) : QString();
            SetTextOf(editor.widget, value.isNull() ? QString::fromLatin1(editor.field->value) : text);
        }
    }
    ShowOutcome(m_pOutcome, value.isNull() ? QStringLiteral("The server has none yet") : QString(), true);
    Q_EMIT Loaded();
}

// Returns nothing, with a message, if a place is empty or no number.
std::optional<RequestRow::Values> CRequestForm::Places() {
    RequestRow::Values places;
    if (!m_strUser.isEmpty()) {
        places[QStringLiteral("user")] = m_strUser;
    }
    for (const Editor& editor : m_editors) {
        const QString text = TextOf(editor.widget);
        if (IsPlace(*editor.field)) {
            const QString error = text.isEmpty() ? QStringLiteral("missing") : Read(editor.field->type, text).error;
            if (!error.isEmpty()) {
                Fail(QString::fromLatin1(editor.field->label) + QStringLiteral(": ") + error);
                return std::nullopt;
            }
            places[NameOf(*editor.field)] = text;
        }
    }
    return places;
}

std::optional<CRequestForm::Request> CRequestForm::Build() {
    const auto places = Places();
    if (!places) {
        return std::nullopt;
    }
    Request request{*places, m_base, {m_row.method, Filled(m_row.path, *places), QByteArray()}};
    if (request.control.path.contains(QLatin1Char('{'))) {
        Fail(QStringLiteral("No user is chosen"));
        return std::nullopt;
    }
    for (const Editor& editor : m_editors) {
        const QString text = TextOf(editor.widget);
        const FieldValue value = text.isEmpty() ? FieldValue() : Read(editor.field->type, text);
        if (!value.error.isEmpty()) {
            Fail(QString::fromLatin1(editor.field->label) + QStringLiteral(": ") + value.error);
            return std::nullopt;
        }
        if (!IsPlace(*editor.field)) {
            Put(request.body, StepsOf(*editor.field), value.json);
        }
    }
    request.control.json = m_row.body.empty() ? QByteArray() : QByteArray::fromStdString(host::OneLine(request.body));
    return request;
}

void CRequestForm::Send() {
    const auto request = Build();
    if (!request) {
        return;
    }
    m_server.Ask(m_row.method, request->control.path, request->control.json, this,
                 [this, request = *request, edits = m_nEdits](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         Fail(answer.Failure());
                         return;
                     }
                     if (edits == m_nEdits && m_row.current) {
                         m_base = request.body;
                         SetEdited(false);
                     }
                     OnAccepted(answer, request.places);
                 });
}

void CRequestForm::OnAccepted(const ServerAnswer& answer, const RequestRow::Values& places) {
    const QString done = QString::fromLatin1(m_row.done);
    ShowOutcome(m_pOutcome, m_row.count ? done.arg(json::Text(json::Member(answer.body, m_row.count))) : done, true);
    if (m_row.push) {
        m_server.Ask("POST", QStringLiteral("/v1/push"), Filled(m_row.push, places).toUtf8(), this,
                     [this](const ServerAnswer& pushed) {
                         if (!pushed.error.isEmpty()) {
                             Fail(pushed.Failure());
                         }
                     });
    }
    Q_EMIT Accepted();
}

void CRequestForm::CopyCurl() {
    if (const auto request = Build()) {
        QApplication::clipboard()->setText(m_server.Curl(request->control));
        ShowOutcome(m_pOutcome, QStringLiteral("Copied, with the server's token"), true);
    }
}

void CRequestForm::Fail(const QString& reason) {
    ShowOutcome(m_pOutcome, reason, false);
}
