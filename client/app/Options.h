#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

/// The options of the command line.
struct COptions {
    QString dataDir;       // store and logs
    QString scenario;      // of the child server; empty: the server's default
    QUrl server;           // control API of a running server on 127.0.0.1; empty: start a server
    QByteArray token;      // of that server, from ZR_DEVSERVER_TOKEN
    QString manifest;      // modules to map
    QString serverBinary;  // the server to start
    quint64 user = 0;      // logged in at start; 0: the first user of the server
    int language = -1;     // -1: the saved language, or English
    int theme = 0;         // 0: the saved theme
    bool release = false;
    bool velora = false;
    bool webEngine = false;  // display web pages in windows of the client
    bool openWeb = false;    // open web pages on the desktop, if there is one

    /// The path of a file in the data directory.
    QString DataFile(const char* name) const;

    /// Reads the arguments of the running application. Ends the process on --help, --version and wrong arguments.
    static COptions Parse(const QStringList& arguments);
};
