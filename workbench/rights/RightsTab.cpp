#include "workbench/rights/RightsTab.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "VipGallery.h"
#include "workbench/rights/VipPanel.h"

CRightsTab::CRightsTab(CPremiumRights& rights, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("RightsTab"));
    auto* gallery = new QPushButton(this);
    gallery->setObjectName(QStringLiteral("VipGalleryOpen"));
    gallery->setText(QStringLiteral("VIP gallery"));
    connect(gallery, &QPushButton::clicked, this, [this, &rights] { CVipGallery::Open(window(), rights); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    layout->addWidget(new CVipPanel(rights, this));
    layout->addWidget(gallery, 0, Qt::AlignLeft);
    layout->addStretch(1);
}
