#pragma once

#include <QPointer>
#include <QWidget>

/// The module's panel on the bottom popup, in a window of its own that goes with the main window.
class CAdPanelWindow : public QWidget {
    Q_OBJECT

public:
    /// Opens it, or brings the one that is open to the front.
    static void Open(QWidget* mainWindow);

private:
    explicit CAdPanelWindow(QWidget* mainWindow);
};
