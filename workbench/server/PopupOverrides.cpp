#include "workbench/server/PopupOverrides.h"

#include <QFormLayout>

#include "TabPages.h"
#include "core/config_local.h"
#include "core/login_status_data.h"
#include "workbench/Widgets.h"

CPopupOverrides::CPopupOverrides(QWidget* parent) : QWidget(parent) {
    setObjectName("PopupOverrides"_q);
    auto* layout = new QFormLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const char* name, const QString& label, const QStringList& texts, auto chosen) {
        widgets::Choices choices;
        for (const QString& text : texts) {
            choices.emplace_back(int(choices.size()), text);
        }
        auto* combo =
            widgets::NewCombo(QString::fromLatin1(name), label, choices, this, [this, chosen](const auto& value) {
                chosen(value.toInt());
                Q_EMIT OverridesChanged();
            });
        layout->addRow(label, combo);
        return combo;
    };
    QStringList tabs;
    for (const TabPage& tab : kTabPages) {
        tabs << QString::fromUtf8(tab.page.title);
    }
    m_pTab = add("AdTab", "Tab"_q, tabs, [this](int index) { Q_EMIT TabWanted(index); });
    m_pFocus = add("AdFocus", "Focus"_q, {"as it is"_q, "always"_q, "never"_q},
                   [this](int answer) { Q_EMIT FocusWanted(EnFocusAnswer(answer)); });
    m_pSlot = add("AdSlotPermission", "Slot 2"_q, {"as it is"_q, "refused"_q},
                  [this](int refused) { Q_EMIT SlotRefusalWanted(refused == 1); });
    m_pOutcome = widgets::NewOutcome("PopupOutcome"_q, this);
    layout->addRow(widgets::NewButton("AdLastShownForget"_q, "Forget when the popup was shown"_q, this,
                                      [this] { ForgetLastShown(); }));
    layout->addRow(m_pOutcome);
}

void CPopupOverrides::ShowTab(int index) {
    widgets::Select(m_pTab, index);
}

QStringList CPopupOverrides::Overridden() const {
    QStringList all;
    for (const auto& [combo, name] : {std::pair(m_pFocus, "focus "_q), std::pair(m_pSlot, "slot 2 "_q)}) {
        if (combo->currentIndex() != 0) {
            all << name + combo->currentText();
        }
    }
    return all;
}

// The module stores one time for each type of interval.
void CPopupOverrides::ForgetLastShown() {
    constexpr int kIntervalTypes = 10;
    QString outcome = "Nothing to forget: no time is stored for this user"_q;
    for (int type = 0; type < kIntervalTypes; ++type) {
        const std::string key = "AdLastShowTimeStampKey_2_42_%1_%2"_q.arg(core::login_status_data::Login_GetUserID())
                                    .arg(type)
                                    .toStdString();
        long shown = 0;
        if (!core::config_local::AppCfgReadInt64(key, shown) || shown == 0) {
            continue;
        }
        if (!core::config_local::AppCfgSaveInt64(key, 0)) {
            widgets::ShowOutcome(m_pOutcome, "The store did not take the change"_q, widgets::EnOutcome::Bad);
            return;
        }
        outcome = "It is forgotten when the popup was last shown to this user"_q;
    }
    widgets::ShowOutcome(m_pOutcome, outcome);
}
