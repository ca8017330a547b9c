#include "workbench/server/RequestForm.h"

#include <QApplication>
#include <QClipboard>
#include <QFormLayout>
#include <QLineEdit>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QStackedWidget>
#include <algorithm>

#include "framework/JsonText.h"

namespace {

using EnType = RequestField::EnType;
using widgets::EnOutcome;

constexpr int kJsonLines = 8;
constexpr const char* kGap = "  ";  // between a choice and its meaning
constexpr const char* kEmptyText = "\"\"";

bool IsPlace(const RequestField& field) {
    return !field.key.empty() && field.key.front() == '{';
}

QStringList PathOf(const std::string& path) {
    return QString::fromStdString(path).split(QLatin1Char('.'), Qt::SkipEmptyParts);
}

// The user property of each editor is its text.
QString TextOf(const QWidget* widget) {
    const QString text = widget->metaObject()->userProperty().read(widget).toString();
    return (qobject_cast<const QComboBox*>(widget) ? text.section(QLatin1String(kGap), 0, 0) : text).trimmed();
}

// An unchanged text stays scrolled as it is.
void SetTextOf(QWidget* widget, const QString& text) {
    if (TextOf(widget) == text) {
        return;
    }
    const auto* combo = qobject_cast<const QComboBox*>(widget);
    const int index = combo ? combo->findText(text + QLatin1String(kGap), Qt::MatchStartsWith) : -1;
    widget->metaObject()->userProperty().write(widget, index < 0 ? text : combo->itemText(index));
}

bool HasValues(const Json::Value& item, const QString& conditions) {
    const QStringList all = conditions.split(QLatin1Char(','));
    return std::all_of(all.begin(), all.end(), [&item](const QString& condition) {
        const std::string key = condition.section(QLatin1Char('='), 0, 0).toStdString();
        return json::Text(json::Member(item, key)) == condition.section(QLatin1Char('='), 1);
    });
}

/// Returns null if there is no value at the path.
const Json::Value* At(const Json::Value& json, const QStringList& path) {
    const Json::Value* at = &json;
    for (const QString& step : path) {
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

/// Reads the text of a field, which is not empty. Returns nothing, with the reason, for a text of another type.
std::optional<Json::Value> Read(EnType type, const QString& text, QString& reason) {
    if (type == EnType::Text) {
        return Json::Value(text == QLatin1String(kEmptyText) ? std::string() : text.toStdString());
    }
    if (type == EnType::Numbers || type == EnType::Texts) {
        static const QRegularExpression gap("[\\s,;]+"_q);
        Json::Value list(Json::arrayValue);
        const QStringList words = text.split(gap, Qt::SkipEmptyParts);
        for (const QString& word : words) {
            const auto item = Read(type == EnType::Numbers ? EnType::Number : EnType::Text, word, reason);
            if (!item) {
                return item;
            }
            list.append(*item);
        }
        return list;
    }
    std::string error;
    const auto json = host::ParseJson(text.toStdString(), error);
    if (json && (type == EnType::Json || (type == EnType::Number ? json->isIntegral() : json->isBool()))) {
        return json;
    }
    reason = type == EnType::Json     ? "not JSON: "_q + QString::fromStdString(error).simplified()
             : type == EnType::Number ? "no whole number: "_q + text
                                      : "neither true nor false: "_q + text;
    return std::nullopt;
}

/// The text of a field that shows the value.
QString Shown(EnType type, const Json::Value& json) {
    return type == EnType::Json      ? json::Indented(json)
           : json == Json::Value("") ? QString::fromLatin1(kEmptyText)
                                     : json::Text(json);
}

Json::Value BodyOf(const RequestRow& row) {
    std::string error;
    return host::ParseJson(row.body, error).value_or(Json::Value());
}

}  // namespace

CRequestForm::CRequestForm(const RequestRow& row, IControlClient& server, const QString& user, QWidget* parent)
    : QWidget(parent), m_server(server), m_row(row), m_strUser(user), m_base(BodyOf(row)) {
    setObjectName(QString::fromLatin1(row.name));
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    if (!row.steps.empty()) {
        layout->addRow(NewSteps());
    }
    for (const RequestField& field : row.fields) {
        QWidget* widget = NewEditor(field);
        widget->setObjectName(
            "%1.%2"_q.arg(objectName(), field.key.empty() ? "value"_q : QString::fromStdString(field.key)));
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
        lines->setLineWrapMode(QPlainTextEdit::NoWrap);
        lines->setTabChangesFocus(true);
        lines->setFixedHeight(lines->fontMetrics().lineSpacing() * kJsonLines);
        connect(lines, &QPlainTextEdit::textChanged, this, edited);
        return lines;
    }
    // A line that moves into its box later keeps the look of one without a box.
    auto* combo = field.choices.isEmpty() ? nullptr : new QComboBox(this);
    auto* line = new QLineEdit(combo ? static_cast<QWidget*>(combo) : this);
    QWidget* editor = combo ? static_cast<QWidget*>(combo) : line;
    if (combo) {
        combo->setLineEdit(line);
        combo->setInsertPolicy(QComboBox::NoInsert);
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->addItems(field.choices);
    }
    line->setPlaceholderText(hint);
    SetTextOf(editor, QString::fromLatin1(field.value));
    connect(line, &QLineEdit::textChanged, this, edited);
    connect(line, &QLineEdit::returnPressed, this, &CRequestForm::Send);
    return editor;
}

QLayout* CRequestForm::NewSteps() {
    auto* buttons = widgets::Row({});
    for (const auto& [name, add] : m_row.steps) {
        const QString text = QString::fromLatin1(name);
        buttons->addWidget(widgets::NewButton(objectName() + text, text, this, [this, add = add] {
            const auto& [field, widget] = m_editors.front();
            const qint64 value = json::Number(json::Member(m_base, field->key)).value_or(0);
            SetTextOf(widget, QString::number(add == 0 ? 0 : value + add));
            Send();
        }));
    }
    buttons->addStretch(1);
    return buttons;
}

QLayout* CRequestForm::NewButtons() {
    const auto add = [this](const QString& name, const QString& text, void (CRequestForm::*action)()) {
        return widgets::NewButton(objectName() + name, text, this, [this, action] { (this->*action)(); });
    };
    auto* send = add("Send"_q, QString::fromLatin1(m_row.action), &CRequestForm::Send);
    m_pLoad = add("Load"_q, "Load"_q, &CRequestForm::Load);
    m_pLoad->setVisible(m_row.current);
    return widgets::Row({send, m_pLoad, nullptr, add("Curl"_q, "Copy as curl"_q, &CRequestForm::CopyCurl)});
}

void CRequestForm::OnEdited(const RequestField& field) {
    ++m_nEdits;
    if (IsPlace(field)) {
        m_base = BodyOf(m_row);  // its hidden members belong to the former place
    } else {
        SetEdited(true);
    }
}

// A form that changes no value of the server has nothing to lose.
void CRequestForm::SetEdited(bool edited) {
    if (m_row.current) {
        m_bEdited = edited;
        m_pLoad->setText(edited ? "Discard edits"_q : "Load"_q);
        ShowOutcome(edited ? "Edited, not saved"_q : QString(), EnOutcome::Unsaved);
    }
}

void CRequestForm::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ForgetServer();
}

void CRequestForm::ForgetServer() {
    if (m_row.current && isVisible() && !m_bEdited) {
        Load();
    }
}

void CRequestForm::SetReading(bool reading) {
    for (const Editor& editor : m_editors) {
        editor.widget->setEnabled(!reading || IsPlace(*editor.field));
    }
}

// A place may be empty before a value is read.
void CRequestForm::Load() {
    if (std::any_of(m_editors.begin(), m_editors.end(),
                    [](const Editor& editor) { return IsPlace(*editor.field) && TextOf(editor.widget).isEmpty(); })) {
        return;
    }
    QStringList path = PathOf(m_row.current);
    for (QString& step : path) {
        step = Filled(step);
    }
    SetReading(true);
    Ask({"GET", QString::fromLatin1(m_row.source), {}}, [this, path, edits = m_nEdits](const Json::Value& answer) {
        SetReading(false);
        const Json::Value* value = At(answer, path);
        if (edits == m_nEdits) {
            Fill(value ? *value : Json::Value());
        }
    });
}

void CRequestForm::Fill(const Json::Value& value) {
    m_base = value.isObject() ? value : BodyOf(m_row);
    if (!value.isObject() && !value.isNull()) {
        const auto first = std::find_if_not(m_row.fields.begin(), m_row.fields.end(), IsPlace);
        Put(m_base, PathOf(first->key), value);
    }
    for (const Editor& editor : m_editors) {
        if (!IsPlace(*editor.field)) {
            const Json::Value* member = At(m_base, PathOf(editor.field->key));
            SetTextOf(editor.widget, value.isNull() ? QString::fromLatin1(editor.field->value)
                                     : member       ? Shown(editor.field->type, *member)
                                                    : QString());
        }
    }
    SetEdited(false);
    ShowOutcome(value.isNull() ? "The server has none yet"_q : QString());
}

QString CRequestForm::Filled(QString pattern) const {
    pattern.replace("{user}"_q, m_strUser);
    for (const Editor& editor : m_editors) {
        if (IsPlace(*editor.field)) {
            pattern.replace(QString::fromStdString(editor.field->key), TextOf(editor.widget));
        }
    }
    return pattern;
}

// Returns nothing, with a message, if a field is not valid.
std::optional<Json::Value> CRequestForm::Body() {
    Json::Value body = m_base;
    for (const Editor& editor : m_editors) {
        const QString text = TextOf(editor.widget);
        QString reason = text.isEmpty() && IsPlace(*editor.field) ? "missing"_q : QString();
        const auto value = text.isEmpty() ? std::nullopt : Read(editor.field->type, text, reason);
        if (!reason.isEmpty()) {
            Fail("%1: %2"_q.arg(QString::fromLatin1(editor.field->label), reason));
            return std::nullopt;
        }
        if (!IsPlace(*editor.field)) {
            Put(body, PathOf(editor.field->key), value);
        }
    }
    return body;
}

ControlRequest CRequestForm::RequestWith(const Json::Value& body) const {
    const bool isRemoval = qstrcmp(m_row.method, "DELETE") == 0;
    return {m_row.method, Filled(QString::fromLatin1(m_row.path)),
            isRemoval ? QByteArray() : QByteArray::fromStdString(host::OneLine(body))};
}

void CRequestForm::Send() {
    const auto body = Body();
    if (!body) {
        return;
    }
    const QString push = Filled(QString::fromUtf8(m_row.push));
    Ask(RequestWith(*body), [this, body, push, edits = m_nEdits](const Json::Value& answer) {
        if (edits == m_nEdits && m_row.current) {
            m_base = *body;
            SetEdited(false);
        }
        const QString done = QString::fromLatin1(m_row.done);
        ShowOutcome(m_row.count ? done.arg(json::Text(json::Member(answer, m_row.count))) : done);
        if (!push.isEmpty()) {
            Ask({"POST", "/v1/push"_q, push.toUtf8()}, [](const Json::Value& /*answer*/) {});
        }
        Q_EMIT Accepted();
    });
}

void CRequestForm::Ask(const ControlRequest& request, const std::function<void(const Json::Value& answer)>& accepted) {
    m_server.Ask(request.method, request.path, request.json, this, [this, accepted](const ServerAnswer& answer) {
        if (answer.error.isEmpty()) {
            accepted(answer.body);
        } else {
            Fail(answer.Failure());
        }
    });
}

void CRequestForm::CopyCurl() {
    if (const auto body = Body()) {
        QApplication::clipboard()->setText(m_server.Curl(RequestWith(*body)));
        ShowOutcome("Copied, with the server's token"_q);
    }
}

void CRequestForm::ShowOutcome(const QString& text, EnOutcome outcome) {
    widgets::ShowOutcome(m_pOutcome, text, outcome);
}

void CRequestForm::Fail(const QString& reason) {
    SetReading(false);
    ShowOutcome(reason, EnOutcome::Bad);
}

CRequestForms::CRequestForms(const QString& name, const std::vector<RequestRow>& rows, IControlClient& server,
                             QWidget* parent)
    : QWidget(parent),
      m_rows(rows),
      m_server(server),
      m_pChoice(widgets::New<QComboBox>(name + "Choice"_q, this, "Request"_q)),
      m_pStack(new QStackedWidget(this)) {
    setObjectName(name);
    for (const RequestRow& row : rows) {
        m_pChoice->addItem(QString::fromLatin1(row.title), QString::fromLatin1(row.name));
    }
    widgets::Column({m_pChoice, m_pStack}, this);
    connect(m_pChoice, qOverload<int>(&QComboBox::currentIndexChanged), this, &CRequestForms::ShowForm);
    ShowForm();
}

void CRequestForms::SetUser(const QString& user) {
    m_strUser = user;
    ShowForm();
}

bool CRequestForms::IsEdited() const {
    return std::any_of(m_forms.begin(), m_forms.end(),
                       [this](const auto& form) { return form.first.first == m_strUser && form.second->IsEdited(); });
}

// A form is made when it is needed first.
void CRequestForms::ShowForm() {
    const RequestRow& row = m_rows[size_t(m_pChoice->currentIndex())];
    if (m_strUser.isEmpty() && QString::fromLatin1(row.path).contains("{user}"_q)) {
        return;
    }
    CRequestForm*& form = m_forms[{m_strUser, m_pChoice->currentIndex()}];
    if (!form) {
        form = new CRequestForm(row, m_server, m_strUser, m_pStack);
        m_pStack->addWidget(form);
        connect(form, &CRequestForm::Accepted, this, &CRequestForms::Accepted);
    }
    m_pStack->setCurrentWidget(form);
}
