#include "workbench/rights/RightsTab.h"

#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "VipGallery.h"
#include "workbench/TabPages.h"
#include "workbench/rights/RefreshView.h"
#include "workbench/rights/RightDetail.h"
#include "workbench/rights/RightsView.h"
#include "workbench/rights/VipPanel.h"

namespace {

constexpr int kTabMargin = 8;

}  // namespace

CRightsTab::CRightsTab(CPremiumRights& rights, const CRefreshTracker& board, const CWireDecoder& decoder,
                       QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("RightsTab"));
    auto* splitter = new QSplitter(Qt::Vertical, this);
    auto* tabs = new QTabWidget(splitter);
    tabs->setObjectName(QStringLiteral("RightsTabs"));
    tabs->setDocumentMode(true);
    const auto addTab = [tabs](QWidget* tab, const QString& title) {
        const int index = tabs->addTab(tab, QString());
        tab->layout()->setContentsMargins(0, kTabMargin, 0, 0);
        tabs->setTabText(index, title);
    };
    auto* detail = new CRightDetail(rights, decoder, PagesOf(tabs));
    auto* view = new CRightsView(rights, decoder, splitter);
    connect(view, &CRightsView::Chosen, this, [tabs, detail](EnPremiumAccess right) {
        detail->ShowRight(right);
        tabs->setCurrentWidget(detail);
    });
    addTab(detail, QStringLiteral("Right"));
    addTab(new CRefreshView(board, PagesOf(tabs)), QStringLiteral("Refreshes"));
    splitter->setObjectName(QStringLiteral("RightsTabSplitter"));
    splitter->setHandleWidth(8);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(view);
    splitter->addWidget(tabs);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 0);
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
    layout->addWidget(splitter, 1);
}
