#include "workbench/server/ClockPanel.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "core/time_date.h"

namespace {

constexpr int kTickMs = 500;

struct Step {
    const char* name;
    const char* text;
    qint64 ms;  // 0 resets the offset
};

constexpr Step kSteps[] = {{"ClockPlusMinute", "+1 min", 60'000},
                           {"ClockPlusHour", "+1 h", 3'600'000},
                           {"ClockPlusDay", "+1 d", 86'400'000},
                           {"ClockReset", "Reset", 0}};

}  // namespace

CClockPanel::CClockPanel(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_pForm(new CRequestForm(requests::Clock(), server, this)),
      m_pTime(NewOutcomeLine(QStringLiteral("ClockTime"), this)) {
    auto* buttons = new QHBoxLayout;
    for (const Step& step : kSteps) {
        auto* button = new QPushButton(QString::fromLatin1(step.text), this);
        button->setObjectName(QString::fromLatin1(step.name));
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, step] {
            m_pForm->SetText("offsetMs", QString::number(step.ms == 0 ? 0 : Offset() + step.ms));
            m_pForm->Send();
        });
    }
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pTime);
    layout->addLayout(buttons);
    layout->addWidget(m_pForm);
    connect(&m_tick, &QTimer::timeout, this, &CClockPanel::ShowTime);
    m_tick.start(kTickMs);
    ShowTime();
}

qint64 CClockPanel::Offset() const {
    return json::Number(json::Member(m_pForm->Value(), "offsetMs")).value_or(0);
}

void CClockPanel::ShowTime() {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(core::time_date::GetSvrTimeMillis(), Qt::UTC);
    m_pTime->setText(QStringLiteral("Server time: %1").arg(time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss 'UTC'"))));
}
