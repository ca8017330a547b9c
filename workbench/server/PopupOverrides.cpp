#include "workbench/server/PopupOverrides.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include "TabPages.h"
#include "core/config_local.h"
#include "core/login_status_data.h"
#include "workbench/server/RequestForm.h"

namespace {

constexpr int kIntervalTypes = 10;

QComboBox* NewCombo(QFormLayout* layout, const char* name, const QString& label, const QStringList& choices) {
    auto* combo = new QComboBox(layout->parentWidget());
    combo->setObjectName(QString::fromLatin1(name));
    combo->setAccessibleName(label);
    combo->addItems(choices);
    layout->addRow(label, combo);
    return combo;
}

QStringList TabTitles() {
    QStringList titles;
    for (const TabPage& tab : kTabPages) {
        titles << QString::fromUtf8(tab.page.title);
    }
    return titles;
}

}  // namespace

CPopupOverrides::CPopupOverrides(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("PopupOverrides"));
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const QString asItIs = QStringLiteral("as it is");
    m_pTab = NewCombo(layout, "AdTab", QStringLiteral("Tab"), TabTitles());
    m_pFocus = NewCombo(layout, "AdFocus", QStringLiteral("Focus"),
                        {asItIs, QStringLiteral("always"), QStringLiteral("never")});
    m_pSlot = NewCombo(layout, "AdSlotPermission", QStringLiteral("Slot 2"), {asItIs, QStringLiteral("refused")});
    auto* forget = new QPushButton(QStringLiteral("Forget when the popup was shown"), this);
    forget->setObjectName(QStringLiteral("AdLastShownForget"));
    m_pOutcome = NewOutcomeLine(QStringLiteral("PopupOutcome"), this);
    layout->addRow(forget);
    layout->addRow(m_pOutcome);
    connect(m_pTab, qOverload<int>(&QComboBox::currentIndexChanged), this, &CPopupOverrides::TabWanted);
    connect(m_pFocus, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int choice) {
        Q_EMIT FocusWanted(EnFocusAnswer(choice));
        Q_EMIT OverridesChanged();
    });
    connect(m_pSlot, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int choice) {
        Q_EMIT SlotRefusalWanted(choice == 1);
        Q_EMIT OverridesChanged();
    });
    connect(forget, &QPushButton::clicked, this, &CPopupOverrides::ForgetLastShown);
}

void CPopupOverrides::ShowTab(int index) {
    const QSignalBlocker blocker(m_pTab);
    m_pTab->setCurrentIndex(index);
}

QStringList CPopupOverrides::Overridden() const {
    QStringList all;
    if (m_pFocus->currentIndex() != 0) {
        all << QStringLiteral("focus %1").arg(m_pFocus->currentText());
    }
    if (m_pSlot->currentIndex() != 0) {
        all << QStringLiteral("slot 2 %1").arg(m_pSlot->currentText());
    }
    return all;
}

// The module stores one time for each type of interval.
void CPopupOverrides::ForgetLastShown() {
    int forgotten = 0;
    for (int type = 0; type < kIntervalTypes; ++type) {
        const std::string key = QStringLiteral("AdLastShowTimeStampKey_2_42_%1_%2")
                                    .arg(core::login_status_data::Login_GetUserID())
                                    .arg(type)
                                    .toStdString();
        long shown = 0;
        if (!core::config_local::AppCfgReadInt64(key, shown) || shown == 0) {
            continue;
        }
        if (!core::config_local::AppCfgSaveInt64(key, 0)) {
            ShowOutcome(m_pOutcome, QStringLiteral("The store did not take the change"), false);
            return;
        }
        ++forgotten;
    }
    ShowOutcome(m_pOutcome,
                forgotten > 0 ? QStringLiteral("It is forgotten when the popup was last shown to this user")
                              : QStringLiteral("Nothing to forget: no time is stored for this user"),
                true);
}
