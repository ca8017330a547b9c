#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

/// What the command line says.
struct COptions {
    QString dataDir;       // the store and the logs
    QString scenario;      // for the child server; empty: its own default
    QUrl server;           // control interface of a server that runs already; empty: start one
    QString token;         // of that server
    QString tourDir;       // pictures of a guided tour; empty: no tour
    QString manifest;      // modules to map
    QString serverBinary;  // the server to start
    quint64 user = 0;      // who logs in; 0: the first that the server has
    int language = 2;
    int theme = 0;  // 0: the one that was chosen last
    bool release = false;
    bool velora = false;
    bool openWeb = false;     // hands web pages to the desktop, where there is one
    bool firstPaint = false;  // print the moment of the first painted frame and end

    /// Reads the arguments of the running application. On --help, --version or a wrong argument it says so
    /// and ends the process.
    static COptions Parse(const QStringList& arguments);
};
