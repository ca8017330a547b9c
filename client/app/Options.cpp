#include "Options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <limits>

#include "ui/zr_ui_theme.h"

namespace {

constexpr quint64 kLastTheme = zr_ui_theme::Manager::kThemeBlack;

quint64 NumberOrExit(QCommandLineParser& parser, const QString& option,
                     quint64 maximum = std::numeric_limits<quint64>::max()) {
    bool isNumber = false;
    const quint64 number = parser.value(option).toULongLong(&isNumber);
    if (!isNumber || number > maximum) {
        const QString range = number > maximum ? QStringLiteral(" up to %1").arg(maximum) : QString();
        fputs(qPrintable(QStringLiteral("--%1 wants a number%2\n").arg(option, range)), stderr);
        exit(2);
    }
    return number;
}

// The server gets the token in plain text.
QUrl ServerOrExit(const QString& text) {
    const QUrl server(text, QUrl::StrictMode);
    const bool loopback = server.scheme() == QLatin1String("http") && server.port() > 0 &&
                          server.authority() == QStringLiteral("127.0.0.1:%1").arg(server.port());
    if (!text.isEmpty() && !loopback) {
        fputs("--server wants an address of this machine, as http://127.0.0.1:<port>\n", stderr);
        exit(2);
    }
    return server;
}

}  // namespace

QString COptions::DataFile(const char* name) const {
    return QDir(dataDir).absoluteFilePath(QString::fromLatin1(name));
}

COptions COptions::Parse(const QStringList& arguments) {
    const QDir binaries(QCoreApplication::applicationDirPath());
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A desktop trading client in small"));
    parser.addHelpOption();
    const auto add = [&parser](const char* name, const char* what, const char* value, const QString& standard) {
        parser.addOption({QString::fromLatin1(name), QString::fromLatin1(what), QString::fromLatin1(value), standard});
    };
    add("data-dir", "Folder of the store and the logs.", "folder",
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    add("scenario", "Scenario file of the server that is started.", "file", QString());
    add("server", "Control address of a running server, as http://127.0.0.1:<port>. ZR_DEVSERVER_TOKEN is its token.",
        "address", QString());
    add("user", "Log this user in; without it the first of the server's.", "id", QStringLiteral("0"));
    add("language", "0 zh-Hans, 1 zh-Hant, 5 ja, 7 fr, any other en; without it the one chosen last.", "id", QString());
    add("theme", "1 light, 2 dark blue, 3 black; without it the one chosen last.", "number", QStringLiteral("0"));
    add("edition", "kestrel or velora.", "name", QStringLiteral("kestrel"));
    add("modules", "Manifest of the modules to map.", "file",
        binaries.absoluteFilePath(QStringLiteral("modules.json")));
    add("server-binary", "The server to start.", "file", binaries.absoluteFilePath(QStringLiteral("zrdevserver")));
    parser.addOption({QStringLiteral("release"), QStringLiteral("Behave as a release build.")});
    parser.addOption({QStringLiteral("no-web"), QStringLiteral("Never open a web page on the desktop.")});
    parser.addOption({QStringLiteral("no-web-engine"), QStringLiteral("Display no web page in the client.")});
    parser.process(arguments);

    COptions options;
    options.dataDir = parser.value(QStringLiteral("data-dir"));
    options.scenario = parser.value(QStringLiteral("scenario"));
    options.server = ServerOrExit(parser.value(QStringLiteral("server")));
    // Not from the command line, which every local user can read.
    options.token = qgetenv("ZR_DEVSERVER_TOKEN");
    options.manifest = parser.value(QStringLiteral("modules"));
    options.serverBinary = parser.value(QStringLiteral("server-binary"));
    options.user = NumberOrExit(parser, QStringLiteral("user"));
    if (parser.isSet(QStringLiteral("language"))) {
        options.language = int(NumberOrExit(parser, QStringLiteral("language"), std::numeric_limits<int>::max()));
    }
    options.theme = int(NumberOrExit(parser, QStringLiteral("theme"), kLastTheme));
    options.velora = parser.value(QStringLiteral("edition")) == QLatin1String("velora");
    options.release = parser.isSet(QStringLiteral("release"));
    options.webEngine = !parser.isSet(QStringLiteral("no-web-engine"));
    options.openWeb = !parser.isSet(QStringLiteral("no-web"));
    return options;
}
