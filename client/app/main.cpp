#include <QApplication>
#include <memory>

#include "Client.h"
#include "ProcessEnd.h"

int main(int argc, char* argv[]) {
    // The web engine, which is mapped later, shares its contexts with the windows.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zrclient"));
    auto client = std::make_unique<CClient>(COptions::Parse(QApplication::arguments()));
    const CEndSignals signals;
    QObject::connect(&signals, &CEndSignals::Received, &client->Window(), &QWidget::close);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, LimitEnd);
    client->Window().show();
    const int code = QApplication::exec();
    client.reset();
    EndProcess(code);
}
