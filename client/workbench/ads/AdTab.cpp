#include "workbench/ads/AdTab.h"

#include <QLabel>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QVariant>

#include "AdTexts.h"
#include "workbench/ads/AdPushPanel.h"
#include "workbench/ads/AdSwitches.h"
#include "workbench/ads/AdView.h"

namespace {

constexpr int kTabMargin = 8;

}  // namespace

CAdTab::CAdTab(const CAdBoard& board, IServerAsk& server, QWidget* parent)
    : QWidget(parent), m_pSwitches(new CAdSwitches(server, this)), m_pOverridden(new QLabel(this)) {
    setObjectName(QStringLiteral("AdTabPage"));
    m_pOverridden->setObjectName(QStringLiteral("AdOverridden"));
    m_pOverridden->setProperty("role", QStringLiteral("overridden"));
    m_pOverridden->setTextFormat(Qt::PlainText);
    m_pOverridden->setWordWrap(true);
    auto* tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("AdTabs"));
    tabs->setDocumentMode(true);
    const auto addTab = [tabs](QWidget* tab, texts::EnText title) {
        const int index = tabs->addTab(tab, QString());
        tab->layout()->setContentsMargins(0, kTabMargin, 0, 0);
        texts::Keep(tab, [tabs, index, title] { tabs->setTabText(index, texts::Tr(title)); });
    };
    addTab(m_pSwitches, texts::kAdSwitches);
    addTab(new CAdPushPanel(server, tabs), texts::kPushes);
    auto* splitter = new QSplitter(Qt::Vertical, this);
    splitter->setObjectName(QStringLiteral("AdTabSplitter"));
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(new CAdView(board, splitter));
    splitter->addWidget(tabs);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(m_pOverridden);
    layout->addWidget(splitter, 1);
    connect(m_pSwitches, &CAdSwitches::OverridesChanged, this, &CAdTab::ShowOverridden);
    ShowOverridden();
}

void CAdTab::ShowOverridden() {
    const QStringList all = m_pSwitches->Overridden();
    m_pOverridden->setVisible(!all.isEmpty());
    m_pOverridden->setText(texts::Tr(texts::kAdOverridden).arg(all.join(QStringLiteral(" \u00B7 "))));
}
