#include "workbench/rights/AnswerPanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QVariant>

#include "PremiumNumbers.h"
#include "Theme.h"
#include "workbench/PanelWidgets.h"
#include "workbench/ServerText.h"
#include "workbench/WireCommands.h"

namespace {

using EnAnswer = CAnswerPanel::EnAnswer;

/// A body with field 2, a text, and without field 1, the code. Both replies use these numbers.
constexpr const char* kWithoutCode = "12076e6f20636f6465";
constexpr unsigned char kCodeTag = 0x08;

struct Choice {
    EnAnswer answer;
    const char* name;
    const char* value;  // initial value; null if the answer takes none
};

constexpr Choice kChoices[] = {
    {EnAnswer::Good, "as it should", nullptr},      {EnAnswer::Error, "Error number", "7"},
    {EnAnswer::OtherCommand, "Wrong command", "1"}, {EnAnswer::Garbage, "Other bytes (hex)", "ff00ff"},
    {EnAnswer::NoCode, "without a code", nullptr},  {EnAnswer::OtherCode, "another code than 0", "5"},
};

constexpr uint32_t kCommands[] = {kCommandPremiumAccess, kCommandVipStatus};

enum EnTimes { kTimesOnce, kTimesForEver };

/// The bytes of a reply with this code and nothing else. The code is a varint; a negative number has ten bytes.
std::string AnswerWithCode(int code) {
    QByteArray bytes(1, char(kCodeTag));
    auto rest = uint64_t(int64_t(code));
    for (; rest >= 0x80; rest >>= 7) {
        bytes.append(char(rest | 0x80));
    }
    bytes.append(char(rest));
    return bytes.toHex().toStdString();
}

}  // namespace

CAnswerPanel::CAnswerPanel(SetFault setFault, QWidget* parent)
    : QWidget(parent),
      m_fnSetFault(std::move(setFault)),
      m_pCommand(panel::New<QComboBox>("AnswerCommand", this)),
      m_pAnswer(panel::New<QComboBox>("AnswerKind", this)),
      m_pValue(panel::New<QLineEdit>("AnswerValue", this)),
      m_pTimes(panel::New<QComboBox>("AnswerTimes", this)),
      m_pMessage(panel::New<QLabel>("AnswerMessage", this)) {
    auto* grid = panel::NewGrid("AnswerPanel", this, 8);
    AddRows(grid);
    ShowTexts();
}

void CAnswerPanel::AddRows(QGridLayout* grid) {
    for (const uint32_t command : kCommands) {
        m_pCommand->addItem(QStringLiteral("%1  %2").arg(command).arg(wire::CommandName(command)), command);
    }
    for (const Choice& choice : kChoices) {
        m_pAnswer->addItem(QString(), int(choice.answer));
    }
    m_pTimes->addItem(QString());
    m_pTimes->addItem(QString());
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    auto* set = panel::New<QPushButton>("AnswerSet", this);
    set->setText(QStringLiteral("Set"));
    int row = 0;
    const auto add = [&](const QString& title, QWidget* widget) {
        auto* label = new QLabel(this);
        label->setProperty("role", QStringLiteral("muted"));
        label->setText(title);
        grid->addWidget(label, row, 0);
        grid->addWidget(widget, row++, 1, 1, 2);
    };
    add(QStringLiteral("Command"), m_pCommand);
    add(QStringLiteral("Answer"), m_pAnswer);
    add(QStringLiteral("Value"), m_pValue);
    add(QStringLiteral("Times"), m_pTimes);
    grid->addWidget(m_pMessage, row, 0, 1, 2);
    grid->addWidget(set, row, 2, Qt::AlignTop);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(row + 1, 1);
    const auto showValue = [this] {
        const Choice& choice = kChoices[m_pAnswer->currentIndex()];
        m_pValue->setEnabled(choice.value != nullptr);
        m_pValue->setText(choice.value ? QString::fromLatin1(choice.value) : QString());
        m_pTimes->setEnabled(choice.answer != EnAnswer::Good);
    };
    connect(m_pAnswer, qOverload<int>(&QComboBox::currentIndexChanged), this, showValue);
    connect(set, &QPushButton::clicked, this, &CAnswerPanel::Set);
    showValue();
}

void CAnswerPanel::ShowTexts() {
    for (int index = 0; index < m_pAnswer->count(); ++index) {
        m_pAnswer->setItemText(index, QString::fromUtf8(kChoices[index].name));
    }
    m_pTimes->setItemText(kTimesOnce, QStringLiteral("once"));
    m_pTimes->setItemText(kTimesForEver, QStringLiteral("For ever"));
}

// Returns nothing and shows a message if the value is malformed.
std::optional<Json::Value> CAnswerPanel::FaultAsked() {
    static const QRegularExpression hexPairs(QStringLiteral("^([0-9a-fA-F]{2})*$"));
    const QString text = m_pValue->text().trimmed();
    const EnAnswer answer = kChoices[m_pAnswer->currentIndex()].answer;
    bool isNumber = false;
    // A command is an unsigned number of 32 bits.
    const auto number = answer == EnAnswer::OtherCommand ? int(text.toUInt(&isNumber)) : text.toInt(&isNumber);
    const bool takesNumber =
        answer == EnAnswer::Error || answer == EnAnswer::OtherCommand || answer == EnAnswer::OtherCode;
    if (takesNumber && !isNumber) {
        Say(QStringLiteral("The value must be a whole number"), false);
        return std::nullopt;
    }
    if (answer == EnAnswer::Garbage && !hexPairs.match(text).hasMatch()) {
        Say(QStringLiteral("The bytes must be pairs of hex digits"), false);
        return std::nullopt;
    }
    Json::Value fault(Json::objectValue);
    switch (answer) {
        case EnAnswer::Error:
            fault["error"] = number;
            break;
        case EnAnswer::OtherCommand:
            fault["replyCommand"] = unsigned(number);
            break;
        case EnAnswer::Garbage:
            fault["bodyHex"] = text.toLower().toStdString();
            break;
        case EnAnswer::NoCode:
            fault["bodyHex"] = kWithoutCode;
            break;
        case EnAnswer::OtherCode:
            fault["bodyHex"] = AnswerWithCode(number);
            break;
        case EnAnswer::Good:
            break;
    }
    if (m_pTimes->currentIndex() == kTimesOnce) {
        fault["times"] = 1;
    }
    return fault;
}

void CAnswerPanel::Set() {
    const uint32_t command = m_pCommand->currentData().toUInt();
    std::optional<Json::Value> fault;
    if (kChoices[m_pAnswer->currentIndex()].answer != EnAnswer::Good) {
        fault = FaultAsked();
        if (!fault) {
            return;
        }
    }
    const QString words = QStringLiteral("%1 \u00B7 %2").arg(command).arg(m_pAnswer->currentText());
    m_fnSetFault(command, fault, [self = QPointer<CAnswerPanel>(this), words](const ServerAnswer& answer) {
        if (self) {
            self->Say(answer.error.isEmpty() ? QStringLiteral("The next answer: %1").arg(words) : ErrorText(answer),
                      answer.error.isEmpty());
        }
    });
}

void CAnswerPanel::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
