#include "workbench/server/RequestForm.h"

#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <algorithm>

#include "framework/JsonText.h"
#include "workbench/Widgets.h"

namespace {

using EnType = RequestField::EnType;
using widgets::EnOutcome;

constexpr int kJsonLines = 8;
constexpr const char* kGap = "  ";  // between a choice and its meaning
constexpr const char* kEmptyText = "\"\"";

bool IsPlace(const RequestField& field) {
    return !field.key.empty() && field.key.front() == '{';
}

bool IsList(EnType type) {
    return type == EnType::Numbers || type == EnType::Texts;
}

QString NameOf(const RequestField& field) {
    const QString key = QString::fromStdString(field.key);
    return IsPlace(field) ? key.mid(1, key.size() - 2) : key;
}

QStringList PathOf(const std::string& path) {
    return QString::fromStdString(path).split(QLatin1Char('.'), Qt::SkipEmptyParts);
}

// The user property of each editor is its text.
QString TextOf(const QWidget* widget) {
    const QString text = widget->metaObject()->userProperty().read(widget).toString();
    return (qobject_cast<const QComboBox*>(widget) ? text.section(QLatin1String(kGap), 0, 0) : text).trimmed();
}

void SetTextOf(QWidget* widget, const QString& text) {
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    const int index = combo ? combo->findText(text + QLatin1String(kGap), Qt::MatchStartsWith) : -1;
    widget->metaObject()->userProperty().write(widget, index < 0 ? text : combo->itemText(index));
}

QString Filled(QString pattern, const RequestRow::Values& places) {
    for (auto place = places.begin(); place != places.end(); ++place) {
        pattern.replace("{%1}"_q.arg(place.key()), place.value());
    }
    return pattern;
}

bool HasValues(const Json::Value& item, const QString& conditions) {
    const QStringList all = conditions.split(QLatin1Char(','));
    return std::all_of(all.begin(), all.end(), [&item](const QString& condition) {
        const std::string key = condition.section(QLatin1Char('='), 0, 0).toStdString();
        return json::Text(json::Member(item, key)) == condition.section(QLatin1Char('='), 1);
    });
}

/// Returns null if there is no value at the path.
const Json::Value* At(const Json::Value& json, const QStringList& path, const RequestRow::Values& places = {}) {
    const Json::Value* at = &json;
    for (const QString& pattern : path) {
        const QString step = Filled(pattern, places);
        const auto end = at->end();
        const auto item = !at->isArray() ? end : std::find_if(at->begin(), end, [&step](const Json::Value& one) {
            return HasValues(one, step);
        });
        at = item == end ? &json::Member(*at, step.toStdString()) : &*item;
    }
    return at == &Json::Value::nullSingleton() ? nullptr : at;
}

/// Replaces the member, or removes it without a value.
void Put(Json::Value& json, const QStringList& path, const std::optional<Json::Value>& value) {
    if (path.isEmpty()) {
        json = value.value_or(Json::Value());
        return;
    }
    const std::string name = path.front().toStdString();
    if (!value && !At(json, path)) {
        return;
    }
    json = json.isObject() ? json : Json::Value(Json::objectValue);
    if (path.size() > 1 || value) {
        Put(json[name], path.mid(1), value);
    } else {
        json.removeMember(name);
    }
}

struct FieldValue {
    std::optional<Json::Value> json;
    QString error = {};
};

/// Reads the text of a field, which is not empty.
FieldValue Read(EnType type, const QString& text) {
    if (type == EnType::Text) {
        return {Json::Value(text == QLatin1String(kEmptyText) ? std::string() : text.toStdString())};
    }
    if (IsList(type)) {
        static const QRegularExpression gap("[\\s,;]+"_q);
        Json::Value list(Json::arrayValue);
        const QStringList words = text.split(gap, Qt::SkipEmptyParts);
        for (const QString& word : words) {
            const FieldValue item = Read(type == EnType::Numbers ? EnType::Number : EnType::Text, word);
            if (!item.json) {
                return item;
            }
            list.append(*item.json);
        }
        return {list};
    }
    std::string error;
    const auto json = host::ParseJson(text.toStdString(), error);
    if (json && (type == EnType::Json || (type == EnType::Number ? json->isIntegral() : json->isBool()))) {
        return {json};
    }
    return {{},
            type == EnType::Json     ? "not JSON: "_q + QString::fromStdString(error).simplified()
            : type == EnType::Number ? "no whole number: "_q + text
                                     : "neither true nor false: "_q + text};
}

/// The text of a field that shows the value.
QString Shown(EnType type, const Json::Value& json) {
    if (type == EnType::Json) {
        return json::Indented(json);
    }
    QStringList words;
    for (const Json::Value& item : IsList(type) ? json::Items(json) : std::vector<Json::Value>()) {
        words << json::Text(item);
    }
    return json == Json::Value("")          ? QString::fromLatin1(kEmptyText)
           : IsList(type) && json.isArray() ? words.join(QLatin1Char(' '))
                                            : json::Text(json);
}

Json::Value BodyOf(const RequestRow& row) {
    std::string error;
    return host::ParseJson(row.body, error).value_or(Json::Value());
}

}  // namespace

CRequestForm::CRequestForm(const RequestRow& row, IControlClient& server, QWidget* parent)
    : QWidget(parent), m_row(row), m_server(server), m_base(BodyOf(row)) {
    setObjectName(QString::fromLatin1(row.name));
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    if (!row.steps.empty()) {
        layout->addRow(NewSteps());
    }
    for (const RequestField& field : row.fields) {
        QWidget* widget = NewEditor(field);
        const QString name = NameOf(field);
        widget->setObjectName(objectName() + QLatin1Char('.') + (name.isEmpty() ? "value"_q : name));
        widget->setAccessibleName(QString::fromLatin1(field.label));
        widget->setAccessibleDescription(QString::fromLatin1(field.hint));
        m_editors.push_back({&field, widget});
        layout->addRow(QString::fromLatin1(field.label), widget);
    }
    layout->addRow(NewButtons());
    m_pOutcome = widgets::NewOutcome(objectName() + "Outcome"_q, this);
    layout->addRow(m_pOutcome);
}

QWidget* CRequestForm::NewEditor(const RequestField& field) {
    const QString hint = *field.hint ? QString::fromLatin1(field.hint) : "left out"_q;
    const auto edited = [this, &field] { OnEdited(field); };
    if (field.type == EnType::Json) {
        auto* lines = new QPlainTextEdit(this);
        lines->setPlaceholderText(hint);
        lines->setTabChangesFocus(true);
        lines->setFixedHeight(lines->fontMetrics().lineSpacing() * kJsonLines);
        connect(lines, &QPlainTextEdit::textChanged, this, edited);
        return lines;
    }
    auto* combo = field.choices.empty() ? nullptr : new QComboBox(this);
    auto* line = new QLineEdit(combo ? static_cast<QWidget*>(combo) : this);
    QWidget* editor = line;
    if (combo) {
        combo->setLineEdit(line);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        for (const std::string& choice : field.choices) {
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

QLayout* CRequestForm::NewSteps() {
    auto* buttons = widgets::Row({});
    for (const RequestRow::Step& step : m_row.steps) {
        buttons->addWidget(
            widgets::NewButton(QString::fromLatin1(step.name), QString::fromLatin1(step.text), this, [this, step] {
                const std::string& key = m_row.fields.front().key;
                const qint64 value = json::Number(json::Member(m_base, key)).value_or(0);
                SetText(key, QString::number(step.add == 0 ? 0 : value + step.add));
                Send();
            }));
    }
    buttons->addStretch(1);
    return buttons;
}

QLayout* CRequestForm::NewButtons() {
    auto* buttons = widgets::Row(
        {widgets::NewButton(objectName() + "Send"_q, QString::fromLatin1(m_row.action), this, [this] { Send(); })});
    if (m_row.current) {
        m_pLoad = widgets::NewButton(objectName() + "Load"_q, "Load"_q, this, [this] { Load(); });
        buttons->addWidget(m_pLoad);
    }
    buttons->addStretch(1);
    buttons->addWidget(widgets::NewButton(objectName() + "Curl"_q, "Copy as curl"_q, this, [this] { CopyCurl(); }));
    return buttons;
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
        m_pLoad->setText(m_bEdited ? "Discard edits"_q : "Load"_q);
        widgets::ShowOutcome(m_pOutcome, m_bEdited ? "Edited, not saved"_q : QString(), EnOutcome::Unsaved);
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

void CRequestForm::SetText(const std::string& key, const QString& text) {
    for (const Editor& editor : m_editors) {
        if (editor.field->key == key) {
            SetTextOf(editor.widget, text);
        }
    }
}

void CRequestForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_row.current && !m_bEdited) {
        Load();
    }
}

void CRequestForm::ForgetServer() {
    if (m_row.current && isVisible() && !m_bEdited) {
        Load();
    }
}

// The fields cannot be edited before their values arrive.
void CRequestForm::SetReading(bool reading) {
    for (const Editor& editor : m_editors) {
        editor.widget->setEnabled(!reading || IsPlace(*editor.field));
    }
}

// A place may be empty before a value is read.
void CRequestForm::Load() {
    const RequestRow::Values places = Places();
    if (std::find(places.begin(), places.end(), QString()) != places.end()) {
        return;
    }
    SetEdited(false);
    SetReading(true);
    m_server.Ask("GET", QString::fromLatin1(m_row.source), QByteArray(), this,
                 [this, places, edits = m_nEdits](const ServerAnswer& answer) {
                     if (edits != m_nEdits) {
                         return;
                     }
                     SetReading(false);
                     if (answer.error.isEmpty()) {
                         const Json::Value* value = At(answer.body, PathOf(m_row.current), places);
                         Fill(value ? *value : Json::Value());
                     } else {
                         Fail(answer.Failure());
                     }
                 });
}

void CRequestForm::Fill(const Json::Value& value) {
    m_base = BodyOf(m_row);
    if (value.isObject()) {
        m_base = value;
    } else if (!value.isNull()) {
        const auto first = std::find_if_not(m_row.fields.begin(), m_row.fields.end(), IsPlace);
        Put(m_base, PathOf(first->key), value);
    }
    const QScopedValueRollback<bool> filling(m_bFilling, true);
    for (const Editor& editor : m_editors) {
        if (!IsPlace(*editor.field)) {
            const Json::Value* member = At(m_base, PathOf(editor.field->key));
            SetTextOf(editor.widget, value.isNull() ? QString::fromLatin1(editor.field->value)
                                     : member       ? Shown(editor.field->type, *member)
                                                    : QString());
        }
    }
    widgets::ShowOutcome(m_pOutcome, value.isNull() ? "The server has none yet"_q : QString());
}

RequestRow::Values CRequestForm::Places() const {
    RequestRow::Values places;
    if (!m_strUser.isEmpty()) {
        places["user"_q] = m_strUser;
    }
    for (const Editor& editor : m_editors) {
        if (IsPlace(*editor.field)) {
            places[NameOf(*editor.field)] = TextOf(editor.widget);
        }
    }
    return places;
}

// Returns nothing, with a message, if a field is not valid.
std::optional<CRequestForm::Request> CRequestForm::Build() {
    Request request{m_base, {m_row.method, Filled(QString::fromLatin1(m_row.path), Places()), QByteArray()}};
    for (const Editor& editor : m_editors) {
        const QString text = TextOf(editor.widget);
        const FieldValue value = !text.isEmpty()          ? Read(editor.field->type, text)
                                 : IsPlace(*editor.field) ? FieldValue{{}, "missing"_q}
                                                          : FieldValue();
        if (!value.error.isEmpty()) {
            Fail("%1: %2"_q.arg(QString::fromLatin1(editor.field->label), value.error));
            return std::nullopt;
        }
        if (!IsPlace(*editor.field)) {
            Put(request.body, PathOf(editor.field->key), value.json);
        }
    }
    if (request.control.path.contains(QLatin1Char('{'))) {
        Fail("No user is chosen"_q);
        return std::nullopt;
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
                 [this, body = request->body, places = Places(), edits = m_nEdits](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         Fail(answer.Failure());
                         return;
                     }
                     if (edits == m_nEdits && m_row.current) {
                         m_base = body;
                         SetEdited(false);
                     }
                     const QString done = QString::fromLatin1(m_row.done);
                     widgets::ShowOutcome(
                         m_pOutcome, m_row.count ? done.arg(json::Text(json::Member(answer.body, m_row.count))) : done);
                     Push(places);
                     Q_EMIT Accepted();
                 });
}

void CRequestForm::Push(const RequestRow::Values& places) {
    if (!m_row.push) {
        return;
    }
    const QString push = Filled(QString::fromLatin1(m_row.push), places);
    m_server.Ask("POST", "/v1/push"_q, push.toUtf8(), this, [this](const ServerAnswer& answer) {
        if (!answer.error.isEmpty()) {
            Fail(answer.Failure());
        }
    });
}

void CRequestForm::CopyCurl() {
    if (const auto request = Build()) {
        QApplication::clipboard()->setText(m_server.Curl(request->control));
        widgets::ShowOutcome(m_pOutcome, "Copied, with the server's token"_q);
    }
}

void CRequestForm::Fail(const QString& reason) {
    widgets::ShowOutcome(m_pOutcome, reason, EnOutcome::Bad);
}

CRequestForms::CRequestForms(const QString& name, const std::vector<RequestRow>& rows, IControlClient& server,
                             QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    auto* stack = new QStackedWidget(this);
    auto* choice = widgets::New<QComboBox>(name + "Choice"_q, this, "Request"_q);
    for (const RequestRow& row : rows) {
        m_forms.push_back(new CRequestForm(row, server, stack));
        stack->addWidget(m_forms.back());
        choice->addItem(QString::fromLatin1(row.title), QString::fromLatin1(row.name));
        connect(m_forms.back(), &CRequestForm::Accepted, this, &CRequestForms::Accepted);
    }
    widgets::Column({choice, stack}, this);
    connect(choice, qOverload<int>(&QComboBox::currentIndexChanged), stack, &QStackedWidget::setCurrentIndex);
}

bool CRequestForms::IsEdited() const {
    return std::any_of(m_forms.begin(), m_forms.end(), [](const CRequestForm* form) { return form->IsEdited(); });
}

void CRequestForms::SetUser(const QString& user) {
    for (CRequestForm* form : m_forms) {
        form->SetUser(user);
    }
}

void CRequestForms::ForgetServer() {
    for (CRequestForm* form : m_forms) {
        form->ForgetServer();
    }
}
