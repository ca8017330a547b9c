#include "workbench/ClockPanel.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVariant>

#include "Theme.h"
#include "core/time_date.h"
#include "workbench/ServerText.h"

namespace {

constexpr qint64 kMinuteMs = 60'000;
constexpr qint64 kHourMs = 60 * kMinuteMs;
constexpr qint64 kDayMs = 24 * kHourMs;
constexpr int kTickMs = 500;

}  // namespace

CClockPanel::CClockPanel(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_server(server),
      m_pOffset(new QLineEdit(QStringLiteral("0"), this)),
      m_pTime(new QLabel(this)),
      m_pMessage(new QLabel(this)) {
    setObjectName(QStringLiteral("ClockPanel"));
    m_pOffset->setObjectName(QStringLiteral("ClockOffset"));
    m_pTime->setObjectName(QStringLiteral("ClockTime"));
    m_pTime->setTextFormat(Qt::PlainText);
    m_pMessage->setObjectName(QStringLiteral("ClockMessage"));
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    auto* title = new QLabel(this);
    title->setProperty("role", QStringLiteral("muted"));
    title->setText(QStringLiteral("Offset in ms"));
    auto* set = new QPushButton(this);
    set->setObjectName(QStringLiteral("ClockSet"));
    set->setText(QStringLiteral("Set"));
    auto* typed = new QHBoxLayout;
    typed->addWidget(title);
    typed->addWidget(m_pOffset, 1);
    typed->addWidget(set);
    auto* steps = new QHBoxLayout;
    steps->addWidget(m_pTime, 1);
    steps->addWidget(NewStep("ClockPlusMinute", QStringLiteral("+1 min"), kMinuteMs));
    steps->addWidget(NewStep("ClockPlusHour", QStringLiteral("+1 h"), kHourMs));
    steps->addWidget(NewStep("ClockPlusDay", QStringLiteral("+1 d"), kDayMs));
    steps->addWidget(NewStep("ClockReset", QStringLiteral("Reset"), 0));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addLayout(steps);
    layout->addLayout(typed);
    layout->addWidget(m_pMessage);
    connect(set, &QPushButton::clicked, this, &CClockPanel::SetTyped);
    connect(m_pOffset, &QLineEdit::returnPressed, this, &CClockPanel::SetTyped);
    connect(&m_tick, &QTimer::timeout, this, &CClockPanel::ShowTime);
    m_tick.start(kTickMs);
    ShowTime();
}

QWidget* CClockPanel::NewStep(const char* name, const QString& text, qint64 stepMs) {
    auto* button = new QPushButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text);
    connect(button, &QPushButton::clicked, this, [this, stepMs] { SetOffset(stepMs == 0 ? 0 : m_nOffset + stepMs); });
    return button;
}

void CClockPanel::SetTyped() {
    bool isNumber = false;
    const qint64 offset = m_pOffset->text().trimmed().toLongLong(&isNumber);
    if (isNumber) {
        SetOffset(offset);
    } else {
        Say(QStringLiteral("The value must be a whole number"), false);
    }
}

void CClockPanel::SetOffset(qint64 offsetMs) {
    const QByteArray wish = QByteArrayLiteral("{\"offsetMs\":") + QByteArray::number(offsetMs) + '}';
    m_server.Ask("PUT", QStringLiteral("/v1/clock"), wish, this, [this, offsetMs](const ServerAnswer& answer) {
        if (!answer.error.isEmpty()) {
            Say(ErrorText(answer), false);
            return;
        }
        m_nOffset = offsetMs;
        m_pOffset->setText(QString::number(offsetMs));
        Say(QString(), true);
        ShowTime();
    });
}

void CClockPanel::ForgetOffset() {
    m_nOffset = 0;
    m_pOffset->setText(QStringLiteral("0"));
}

void CClockPanel::ShowTime() {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(core::time_date::GetSvrTimeMillis(), Qt::UTC);
    m_pTime->setText(QStringLiteral("Server time: %1").arg(time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'"))));
}

void CClockPanel::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
