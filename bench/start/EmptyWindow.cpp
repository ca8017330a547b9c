// The least that a client with a window can be.
#include <QApplication>
#include <QMainWindow>

#include "FirstPaint.h"

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1440, 900);
    const CFirstPaint firstPaint(window);
    window.show();
    return QApplication::exec();
}
