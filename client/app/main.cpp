#include <QApplication>

#include "Client.h"

int main(int argc, char* argv[]) {
    // The web engine, which is mapped later, shares its contexts with the windows.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zrclient"));
    CClient client(COptions::Parse(QApplication::arguments()));
    client.Window().show();
    return QApplication::exec();
}
