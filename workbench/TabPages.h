#pragma once

#include <QStackedWidget>
#include <QTabWidget>

/// What pages of the tabs are to be made in. One that is made elsewhere and moved there is styled a second time, with
/// all that it holds.
inline QWidget* PagesOf(QTabWidget* tabs) {
    return tabs->findChild<QStackedWidget*>({}, Qt::FindDirectChildrenOnly);
}
