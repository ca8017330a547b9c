#include "workbench/rights/RightsTab.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "VipGallery.h"
#include "workbench/TabPages.h"
#include "workbench/rights/AskPanel.h"
#include "workbench/rights/PushPanel.h"
#include "workbench/rights/VipPanel.h"

namespace {

constexpr int kTabMargin = 8;

}  // namespace

CRightsTab::CRightsTab(CPremiumRights& rights, const CTracker& tracker, IControlClient& server,
                       CAnswerPanel::SetFault setFault, QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("RightsTab"));
    auto* tabs = new QTabWidget(this);
    tabs->setObjectName(QStringLiteral("RightsTabs"));
    tabs->setDocumentMode(true);
    const auto addTab = [tabs](QWidget* tab, const QString& title) {
        const int index = tabs->addTab(tab, QString());
        tab->layout()->setContentsMargins(0, kTabMargin, 0, 0);
        tabs->setTabText(index, title);
    };
    addTab(new CAskPanel(tracker, PagesOf(tabs)), QStringLiteral("Ask"));
    addTab(new CPushPanel(server, PagesOf(tabs)), QStringLiteral("Pushes"));
    addTab(new CAnswerPanel(std::move(setFault), PagesOf(tabs)), QStringLiteral("Answers"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    auto* gallery = new QPushButton(this);
    gallery->setObjectName(QStringLiteral("VipGalleryOpen"));
    gallery->setText(QStringLiteral("VIP gallery"));
    connect(gallery, &QPushButton::clicked, this, [this, &rights] { CVipGallery::Open(window(), rights); });
    auto* head = new QHBoxLayout;
    head->addWidget(new CVipPanel(rights, this), 1);
    head->addWidget(gallery, 0, Qt::AlignTop);
    layout->addLayout(head);
    layout->addWidget(tabs, 1);
}
