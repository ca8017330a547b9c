#pragma once

#include <QPointer>
#include <QWidget>

/// A window with the module's developer panel for the bottom popup. The main window owns it.
class CAdPanelWindow : public QWidget {
    Q_OBJECT

public:
    /// Opens the window or raises the open one.
    static void Open(QWidget* mainWindow);

private:
    explicit CAdPanelWindow(QWidget* mainWindow);
};
