// The minimum of a program with a window: the reference for the start of the client.
#include <QApplication>
#include <QMainWindow>

#include "FirstPaintWatcher.h"
#include "PaintTime.h"

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1440, 900);
    const CFirstPaintWatcher firstPaint(window, PrintTimeAndQuit);
    window.show();
    return QApplication::exec();
}
