#include <QApplication>

#include "Client.h"

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zrclient"));
    CClient client(COptions::Parse(QApplication::arguments()));
    client.Window().show();
    return QApplication::exec();
}
