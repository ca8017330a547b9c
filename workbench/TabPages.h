#pragma once

#include <QStackedWidget>
#include <QTabWidget>

/// Returns the parent for pages of the tabs. A page with another parent is styled a second time when it moves, with all
/// its children.
inline QWidget* PagesOf(QTabWidget* tabs) {
    return tabs->findChild<QStackedWidget*>({}, Qt::FindDirectChildrenOnly);
}
