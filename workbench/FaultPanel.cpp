#include "workbench/FaultPanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QVariant>

#include "Theme.h"
#include "framework/JsonText.h"
#include "workbench/PanelWidgets.h"
#include "workbench/ServerText.h"
#include "workbench/WireCommands.h"

namespace {

constexpr int kMaxTimes = 1'000'000;

enum class EnValue { Number, Hex, None };

struct FaultChoice {
    CFaultPanel::EnFault fault;
    const char* name;
    const char* member;  // of the server's fault
    EnValue takes;
    const char* value;  // initial value
};

constexpr FaultChoice kFaultChoices[] = {
    {CFaultPanel::EnFault::Error, "Error number", "error", EnValue::Number, "7"},
    {CFaultPanel::EnFault::Delay, "Delay in ms", "delayMs", EnValue::Number, "3000"},
    {CFaultPanel::EnFault::Garbage, "Other bytes (hex)", "bodyHex", EnValue::Hex, "ff00ff"},
    {CFaultPanel::EnFault::WrongCommand, "Wrong command", "replyCommand", EnValue::Number, "1"},
    {CFaultPanel::EnFault::Frame, "A frame of other bytes (hex)", "frameHex", EnValue::Hex, "ffff"},
    {CFaultPanel::EnFault::Copies, "Copies", "copies", EnValue::Number, "3"},
    {CFaultPanel::EnFault::Silent, "No reply", "silent", EnValue::None, ""},
    {CFaultPanel::EnFault::Drop, "Connection is cut", "drop", EnValue::None, ""},
};

QString Written(const Json::Value& value) {
    return QString::fromStdString(host::OneLine(value));
}

}  // namespace

CFaultPanel::CFaultPanel(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pCommand(panel::New<QComboBox>("FaultCommand", this)),
      m_pFault(panel::New<QComboBox>("FaultKind", this)),
      m_pValue(panel::New<QLineEdit>("FaultValue", this)),
      m_pTimes(panel::New<QSpinBox>("FaultTimes", this)),
      m_pInForce(panel::New<QLabel>("FaultsInForce", this)),
      m_pMessage(panel::New<QLabel>("FaultMessage", this)) {
    auto* grid = panel::NewGrid("FaultPanel", this, 8);
    grid->setColumnStretch(1, 1);
    AddRows(grid);
    ShowTexts();
}

void CFaultPanel::AddRows(QGridLayout* grid) {
    m_pCommand->setEditable(true);
    m_pCommand->setInsertPolicy(QComboBox::NoInsert);
    for (const wire::Command& command : wire::Commands()) {
        if (command.reply) {
            m_pCommand->addItem(QStringLiteral("%1  %2").arg(command.number).arg(QString::fromLatin1(command.name)));
        }
    }
    for (const FaultChoice& choice : kFaultChoices) {
        m_pFault->addItem(QString(), int(choice.fault));
    }
    m_pTimes->setRange(0, kMaxTimes);
    m_pTimes->setValue(1);
    m_pInForce->setTextFormat(Qt::PlainText);
    m_pInForce->setWordWrap(true);
    m_pInForce->setProperty("role", QStringLiteral("muted"));
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    int row = 0;
    const auto add = [&](const QString& title, QWidget* widget) {
        grid->addWidget(panel::NewTitle(title, this), row, 0);
        grid->addWidget(widget, row++, 1);
    };
    add(QStringLiteral("Command"), m_pCommand);
    add(QStringLiteral("Fault"), m_pFault);
    add(QStringLiteral("Value"), m_pValue);
    add(QStringLiteral("Times"), m_pTimes);
    AddButtons(grid, row++);
    grid->addWidget(m_pInForce, row++, 0, 1, 2);
    grid->addWidget(m_pMessage, row, 0, 1, 2);
    const auto showValue = [this] {
        const FaultChoice& choice = kFaultChoices[m_pFault->currentIndex()];
        m_pValue->setEnabled(choice.takes != EnValue::None);
        m_pValue->setText(QString::fromLatin1(choice.value));
    };
    connect(m_pFault, qOverload<int>(&QComboBox::currentIndexChanged), this, showValue);
    showValue();
}

void CFaultPanel::AddButtons(QGridLayout* grid, int row) {
    auto* set = panel::New<QPushButton>("FaultSet", this);
    auto* clear = panel::New<QPushButton>("FaultsClear", this);
    auto* drop = panel::New<QPushButton>("FaultDrop", this);
    set->setText(QStringLiteral("Set"));
    clear->setText(QStringLiteral("Clear all"));
    drop->setText(QStringLiteral("Drop connections"));
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(set);
    buttons->addWidget(clear);
    buttons->addStretch(1);
    buttons->addWidget(drop);
    grid->addLayout(buttons, row, 1);
    connect(set, &QPushButton::clicked, this, &CFaultPanel::Set);
    connect(clear, &QPushButton::clicked, this, &CFaultPanel::Clear);
    connect(drop, &QPushButton::clicked, this, &CFaultPanel::Drop);
}

void CFaultPanel::ShowTexts() {
    for (int index = 0; index < m_pFault->count(); ++index) {
        m_pFault->setItemText(index, QString::fromUtf8(kFaultChoices[index].name));
    }
    m_pTimes->setSpecialValueText(QStringLiteral("For ever"));
    ShowFaults();
}

void CFaultPanel::ShowFaults() {
    m_pInForce->setText(m_faults.empty() ? QStringLiteral("No fault is set")
                                         : QStringLiteral("Set: %1").arg(Written(m_faults)));
}

std::optional<Json::Value> CFaultPanel::FaultAsked() {
    static const QRegularExpression hexPairs(QStringLiteral("^([0-9a-fA-F]{2})*$"));
    const FaultChoice& choice = kFaultChoices[m_pFault->currentIndex()];
    const QString text = m_pValue->text().trimmed();
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber);
    Json::Value fault(Json::objectValue);
    switch (choice.takes) {
        case EnValue::Number:
            if (!isNumber) {
                Say(QStringLiteral("The value must be a whole number"), false);
                return std::nullopt;
            }
            fault[choice.member] = Json::Int64(number);
            break;
        case EnValue::Hex:
            if (!hexPairs.match(text).hasMatch()) {
                Say(QStringLiteral("The bytes must be pairs of hex digits"), false);
                return std::nullopt;
            }
            fault[choice.member] = text.toLower().toStdString();
            break;
        case EnValue::None:
            fault[choice.member] = true;
            break;
    }
    if (m_pTimes->value() > 0) {
        fault["times"] = m_pTimes->value();
    }
    return fault;
}

void CFaultPanel::Set() {
    const uint command = m_pCommand->currentText().trimmed().section(QLatin1Char(' '), 0, 0).toUInt();
    if (command == 0) {
        Say(QStringLiteral("The command must be a number above 0"), false);
        return;
    }
    const auto fault = FaultAsked();
    if (fault) {
        // The server replaces the whole table, so the other faults are sent again.
        Json::Value faults = m_faults;
        faults[std::to_string(command)] = *fault;
        Send(faults);
    }
}

void CFaultPanel::SetFault(uint32_t command, const std::optional<Json::Value>& fault,
                           IControlClient::Answered answered) {
    const QByteArray body = fault ? Written(*fault).toUtf8() : QByteArray();
    m_server.Ask(fault ? "PUT" : "DELETE", QStringLiteral("/v1/faults/%1").arg(command), body, this,
                 [this, command, fault, answered = std::move(answered)](const ServerAnswer& answer) {
                     if (answer.error.isEmpty()) {
                         m_faults.removeMember(std::to_string(command));
                         if (fault) {
                             m_faults[std::to_string(command)] = *fault;
                         }
                         ShowFaults();
                     }
                     answered(answer);
                 });
}

void CFaultPanel::Clear() {
    Send(Json::Value(Json::objectValue));
}

void CFaultPanel::Send(const Json::Value& faults) {
    m_server.Ask("PUT", QStringLiteral("/v1/faults"), Written(faults).toUtf8(), this,
                 [this, faults](const ServerAnswer& answer) {
                     if (!answer.error.isEmpty()) {
                         Say(ErrorText(answer), false);
                         return;
                     }
                     m_faults = faults;
                     Say(QString(), true);
                     ShowFaults();
                 });
}

void CFaultPanel::Drop() {
    m_server.Ask("POST", QStringLiteral("/v1/drop"), "{}", this, [this](const ServerAnswer& answer) {
        if (!answer.error.isEmpty()) {
            Say(ErrorText(answer), false);
            return;
        }
        Say(QStringLiteral("Connections dropped: %1").arg(answer.body["dropped"].asInt()), true);
    });
}

void CFaultPanel::ForgetFaults() {
    m_faults = Json::Value(Json::objectValue);
    ShowFaults();
}

void CFaultPanel::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
