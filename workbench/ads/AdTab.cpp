#include "workbench/ads/AdTab.h"

#include <QVBoxLayout>

#include "workbench/ads/AdView.h"

CAdTab::CAdTab(const CAdTracker& board, QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("AdTabPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new CAdView(board, this));
}
