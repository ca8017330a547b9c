#include "workbench/ads/AdTab.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QVariant>

#include "workbench/TabPages.h"
#include "workbench/ads/AdPushPanel.h"
#include "workbench/ads/AdSwitches.h"

namespace {

constexpr int kTabMargin = 8;

}  // namespace

CAdTab::CAdTab(IControlClient& server, QWidget* parent)
    : QWidget(parent),
      m_pTabs(new QTabWidget(this)),
      m_pSwitches(new CAdSwitches(server, PagesOf(m_pTabs))),
      m_pOverridden(new QLabel(this)) {
    setObjectName(QStringLiteral("AdTabPage"));
    m_pOverridden->setObjectName(QStringLiteral("AdOverridden"));
    m_pOverridden->setProperty("role", QStringLiteral("overridden"));
    m_pOverridden->setTextFormat(Qt::PlainText);
    m_pOverridden->setWordWrap(true);
    m_pTabs->setObjectName(QStringLiteral("AdTabs"));
    m_pTabs->setDocumentMode(true);
    const auto addTab = [this](QWidget* tab, const QString& title) {
        const int index = m_pTabs->addTab(tab, QString());
        tab->layout()->setContentsMargins(0, kTabMargin, 0, 0);
        m_pTabs->setTabText(index, title);
    };
    addTab(m_pSwitches, QStringLiteral("Switches"));
    addTab(new CAdPushPanel(server, PagesOf(m_pTabs)), QStringLiteral("Pushes"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(m_pOverridden);
    layout->addWidget(m_pTabs, 1);
    connect(m_pSwitches, &CAdSwitches::OverridesChanged, this, &CAdTab::ShowOverridden);
    ShowOverridden();
}

void CAdTab::ShowOverridden() {
    const QStringList all = m_pSwitches->Overridden();
    m_pOverridden->setVisible(!all.isEmpty());
    m_pOverridden->setText(QStringLiteral("Overridden: %1").arg(all.join(QStringLiteral(" \u00B7 "))));
}
