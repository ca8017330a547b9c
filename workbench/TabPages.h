#pragma once

#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>

/// Returns the parent for pages of the tabs. A page with another parent is styled a second time when it moves, with all
/// its children.
inline QWidget* PagesOf(QTabWidget* tabs) {
    return tabs->findChild<QStackedWidget*>({}, Qt::FindDirectChildrenOnly);
}

/// Makes the page scroll where it has too little room, and adds it as a tab.
inline void AddScrollTab(QTabWidget* tabs, QWidget* page, const QString& title) {
    auto* area = new QScrollArea(PagesOf(tabs));
    area->setObjectName(page->objectName() + QStringLiteral("Area"));
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    page->setAutoFillBackground(false);
    area->setWidget(page);
    area->viewport()->setAutoFillBackground(false);
    tabs->addTab(area, title);
}
