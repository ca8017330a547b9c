#include "PremiumStripSlot.h"

#include <QVBoxLayout>

#include "GrowthService.h"
#include "PremiumRights.h"

CPremiumStripSlot::CPremiumStripSlot(EnPremiumAccess access, const CPremiumRights& rights, QWidget* parent)
    : QWidget(parent), m_enAccess(access), m_rights(rights) {
    setObjectName(QStringLiteral("PremiumStrip%1").arg(int(access)));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    hide();
    connect(&rights, &CPremiumRights::Changed, this, &CPremiumStripSlot::Refresh);
    Refresh();
}

void CPremiumStripSlot::Refresh() {
    const CPremiumUIAccessData record = m_rights.Table().value(m_enAccess);
    const bool wanted = CPremiumRights::HasModule() && record.nActivationType == ZRPremiumActivationLimitedTime;
    if (wanted && !m_pStrip) {
        m_pStrip = NewStrip();
        layout()->addWidget(m_pStrip);
    }
    if (wanted) {
        m_pStrip->UpdateUiData(record.strMainTitle, record.strMainBtn, record.strUIType, record.strDetailTitle,
                               record.nDaysLeft);
    } else if (m_pStrip) {
        // Deleted later, because a click on it can be the cause.
        m_pStrip->hide();
        m_pStrip->deleteLater();
        m_pStrip = nullptr;
    }
    setVisible(wanted);
}

IGrowthPremiumWidget* CPremiumStripSlot::NewStrip() {
    IGrowthPremiumWidget* strip =
        GrowthService()->GetPremiumTimeActivationStateWidget(QString(), QString(), QString(), QString(), 0, this);
    strip->SetCallback(
        [this](bool) {
            if (const auto service = GrowthService()) {
                service->HandleVipWidgetClicked(m_enAccess, ZRVipUIDataMain, window());
            }
        },
        this);
    return strip;
}
