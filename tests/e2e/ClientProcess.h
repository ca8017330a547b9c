#pragma once

#include <QFile>
#include <QProcess>
#include <QTextStream>
#include <csignal>

#include "ClientFixture.h"

/// A client in a process of its own, with its own server or one that the test started.
class ClientProcessTest : public ClientTest {
protected:
    ~ClientProcessTest() override {
        for (QProcess* process : {&program, &ownServer}) {
            if (process->state() != QProcess::NotRunning) {
                process->kill();
                EXPECT_TRUE(WaitInRealTime([=] { return process->state() == QProcess::NotRunning; }));
            }
        }
    }

    void StartProgram(const QStringList& more = {}) {
        program.setProcessEnvironment(environment);
        program.start(
            QString::fromUtf8(build::kClient),
            QStringList{QStringLiteral("--data-dir"), options.dataDir, QStringLiteral("--scenario"), options.scenario,
                        QStringLiteral("--modules"), options.manifest, QStringLiteral("--server-binary"),
                        options.serverBinary, QStringLiteral("--no-web"), QStringLiteral("--no-web-engine")} +
                more);
    }

    /// Starts a server with the scenario. The program gets its token by the environment.
    void StartOwnServer() {
        environment.insert(QStringLiteral("ZR_DEVSERVER_TOKEN"), QStringLiteral("T0ken"));
        ownServer.setProcessEnvironment(environment);
        ownServer.start(options.serverBinary, {QStringLiteral("--scenario"), options.scenario});
        ASSERT_TRUE(WaitInRealTime([this] { return ownServer.canReadLine(); }));
        ServerEndpoint endpoint;
        ASSERT_TRUE(CServerProcess::ReadEndpoint(ownServer.readLine(), endpoint));
        server = std::make_unique<CControlApiDriver>(endpoint.controlPort, endpoint.token);
        serverOption = QStringLiteral("http://127.0.0.1:%1").arg(endpoint.controlPort);
    }

    std::string LogText() const {
        QFile file(options.dataDir + QStringLiteral("/client.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }

    bool WaitForLogText(const std::string& words) {
        return WaitInRealTime([&] { return LogText().find(words) != std::string::npos; });
    }

    bool HasEnded() const { return program.state() == QProcess::NotRunning; }

    void Send(int signal) { ASSERT_EQ(kill(pid_t(program.processId()), signal), 0); }

    /// The process ids of the program's children with a name.
    std::vector<pid_t> Children(const std::string& name) const {
        const auto id = QString::number(program.processId());
        QFile list(QStringLiteral("/proc/%1/task/%1/children").arg(id));
        EXPECT_TRUE(list.open(QIODevice::ReadOnly));
        std::vector<pid_t> children;
        for (const QByteArray& child : list.readAll().simplified().split(' ')) {
            QFile comm(QStringLiteral("/proc/%1/comm").arg(QString::fromLatin1(child)));
            if (comm.open(QIODevice::ReadOnly) && comm.readAll().trimmed().toStdString() == name) {
                children.push_back(child.toInt());
            }
        }
        return children;
    }

    QProcess program;
    QProcess ownServer;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QString serverOption;
};
