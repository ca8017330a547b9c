// Runs the client as its main function does, until the first frame is painted.
#include <QApplication>

#include "Client.h"
#include "FirstPaintWatcher.h"
#include "PaintTime.h"

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zrclient"));
    CClient client(COptions::Parse(QApplication::arguments()));
    const CFirstPaintWatcher firstPaint(client.Window(), PrintTimeAndQuit);
    client.Window().show();
    return QApplication::exec();
}
