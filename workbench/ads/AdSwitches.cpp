#include "workbench/ads/AdSwitches.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVariant>

#include "TabPages.h"
#include "Theme.h"
#include "core/config_local.h"
#include "core/login_status_data.h"
#include "workbench/PanelWidgets.h"
#include "workbench/ads/AdInterval.h"
#include "workbench/diagnosis/AdRequest.h"

namespace {

constexpr int kIntervalTypes = 10;

struct FocusChoice {
    EnFocusAnswer answer;
    const char* name;
};

constexpr FocusChoice kFocusChoices[] = {
    {EnFocusAnswer::AsItIs, "as it is"},
    {EnFocusAnswer::Always, "always"},
    {EnFocusAnswer::Never, "never"},
};

enum EnSlotChoice { kSlotAsItIs, kSlotRefused };

/// The module's store key for the last display of the popup to the logged-in user.
std::string LastShownKey(int intervalType) {
    return QStringLiteral("AdLastShowTimeStampKey_%1_%2_%3_%4")
        .arg(kBottomPopup.type)
        .arg(kBottomPopup.position)
        .arg(core::login_status_data::Login_GetUserID())
        .arg(intervalType)
        .toStdString();
}

}  // namespace

CAdSwitches::CAdSwitches(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_pInterval(new CAdInterval(server, this)),
      m_pTab(panel::New<QComboBox>("AdTab", this)),
      m_pFocus(panel::New<QComboBox>("AdFocus", this)),
      m_pSlot(panel::New<QComboBox>("AdSlotPermission", this)),
      m_pSeconds(panel::New<QLineEdit>("AdInterval", this)),
      m_pSetInterval(panel::New<QPushButton>("AdIntervalSet", this)),
      m_pMessage(panel::New<QLabel>("AdSwitchesMessage", this)) {
    auto* grid = panel::NewGrid("AdSwitches", this);
    AddRows(grid);
    ShowTexts();
    connect(m_pTab, qOverload<int>(&QComboBox::currentIndexChanged), this, &CAdSwitches::TabWanted);
    connect(m_pFocus, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int choice) {
        Q_EMIT FocusWanted(kFocusChoices[choice].answer);
        Q_EMIT OverridesChanged();
    });
    connect(m_pSlot, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int choice) {
        Q_EMIT SlotRefusalWanted(choice == kSlotRefused);
        Q_EMIT OverridesChanged();
    });
    connect(m_pSetInterval, &QPushButton::clicked, this, &CAdSwitches::SetInterval);
    connect(m_pSeconds, &QLineEdit::returnPressed, m_pSetInterval, &QPushButton::click);
    connect(m_pInterval, &CAdInterval::Done, this, [this](const QString& failure) {
        m_pSetInterval->setEnabled(true);
        Say(failure.isEmpty() ? QStringLiteral("In force for ads that are asked for from now on") : failure,
            failure.isEmpty());
        Q_EMIT OverridesChanged();
    });
}

void CAdSwitches::AddRows(QGridLayout* grid) {
    for (size_t tab = 0; tab < kTabPages.size(); ++tab) {
        m_pTab->addItem(QString());
    }
    for (size_t choice = 0; choice < std::size(kFocusChoices); ++choice) {
        m_pFocus->addItem(QString());
    }
    for (int choice = kSlotAsItIs; choice <= kSlotRefused; ++choice) {
        m_pSlot->addItem(QString());
    }
    auto* forget = panel::New<QPushButton>("AdLastShownForget", this);
    forget->setText(QStringLiteral("Forget"));
    connect(forget, &QPushButton::clicked, this, &CAdSwitches::ForgetLastShown);
    m_pMessage->setTextFormat(Qt::PlainText);
    m_pMessage->setWordWrap(true);
    grid->addWidget(panel::NewTitle(QStringLiteral("Tab"), this), 0, 0);
    grid->addWidget(m_pTab, 0, 1);
    grid->addWidget(panel::NewTitle(QStringLiteral("Focus"), this), 0, 2);
    grid->addWidget(m_pFocus, 0, 3);
    grid->addWidget(panel::NewTitle(QStringLiteral("Slot 2"), this), 1, 0);
    grid->addWidget(m_pSlot, 1, 1);
    grid->addWidget(panel::NewTitle(QStringLiteral("Interval, s"), this), 1, 2);
    grid->addWidget(NewIntervalRow(), 1, 3);
    grid->addWidget(panel::NewTitle(QStringLiteral("Last shown"), this), 2, 0);
    grid->addWidget(forget, 2, 1);
    grid->addWidget(m_pMessage, 3, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    grid->setRowStretch(4, 1);
}

QWidget* CAdSwitches::NewIntervalRow() {
    auto* row = new QWidget(this);
    m_pSetInterval->setText(QStringLiteral("Set"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(m_pSeconds, 1);
    layout->addWidget(m_pSetInterval);
    return row;
}

void CAdSwitches::ShowTexts() {
    const QSignalBlocker tab(m_pTab);
    const QSignalBlocker focus(m_pFocus);
    const QSignalBlocker slot(m_pSlot);
    for (int index = 0; index < m_pTab->count(); ++index) {
        m_pTab->setItemText(index, QString::fromUtf8(kTabPages[size_t(index)].page.title));
    }
    for (int choice = 0; choice < m_pFocus->count(); ++choice) {
        m_pFocus->setItemText(choice, QString::fromUtf8(kFocusChoices[choice].name));
    }
    m_pSlot->setItemText(kSlotAsItIs, QStringLiteral("as it is"));
    m_pSlot->setItemText(kSlotRefused, QStringLiteral("refused"));
    m_pSeconds->setPlaceholderText(QStringLiteral("as it is"));
    Q_EMIT OverridesChanged();
}

void CAdSwitches::ShowTab(int index) {
    const QSignalBlocker blocker(m_pTab);
    m_pTab->setCurrentIndex(index);
}

QStringList CAdSwitches::Overridden() const {
    QStringList all;
    if (kFocusChoices[m_pFocus->currentIndex()].answer != EnFocusAnswer::AsItIs) {
        all << QStringLiteral("focus %1").arg(m_pFocus->currentText());
    }
    if (m_pSlot->currentIndex() == kSlotRefused) {
        all << QStringLiteral("slot 2 %1").arg(m_pSlot->currentText());
    }
    if (const auto seconds = m_pInterval->Override()) {
        all << QStringLiteral("interval %1 s instead of %2 s").arg(*seconds).arg(m_pInterval->Own());
    }
    return all;
}

void CAdSwitches::ForgetServer() {
    m_pInterval->ForgetServer();
    m_pSetInterval->setEnabled(true);
    m_pSeconds->clear();
    Say(QString(), true);
    Q_EMIT OverridesChanged();
}

// One at a time, because a second call could read the scenario before the first has changed it.
void CAdSwitches::SetInterval() {
    const QString text = m_pSeconds->text().trimmed();
    bool isNumber = false;
    const qint64 seconds = text.toLongLong(&isNumber);
    if (!isNumber && !text.isEmpty()) {
        Say(QStringLiteral("No whole number of seconds: %1").arg(text), false);
        return;
    }
    m_pSetInterval->setEnabled(false);
    m_pInterval->Set(text.isEmpty() ? std::nullopt : std::make_optional(seconds));
}

void CAdSwitches::ForgetLastShown() {
    int forgotten = 0;
    for (int type = 0; type < kIntervalTypes; ++type) {
        const std::string key = LastShownKey(type);
        long shown = 0;
        if (!core::config_local::AppCfgReadInt64(key, shown) || shown == 0) {
            continue;
        }
        if (!core::config_local::AppCfgSaveInt64(key, 0)) {
            Say(QStringLiteral("The store did not take the change"), false);
            return;
        }
        ++forgotten;
    }
    Say(forgotten > 0 ? QStringLiteral("It is forgotten when the popup was last shown to this user")
                      : QStringLiteral("Nothing to forget: no time is stored for this user"),
        true);
}

void CAdSwitches::Say(const QString& words, bool good) {
    m_pMessage->setText(words);
    m_pMessage->setProperty("good", good);
    theme::Repolish(m_pMessage);
}
