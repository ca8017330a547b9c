#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <cerrno>
#include <cstdio>

#include "Access.h"
#include "Arguments.h"
#include "DevServer.h"
#include "Scenario.h"
#include "ServerLog.h"

namespace {

using devserver::Errors;

constexpr int kExitWrongInput = 2;
constexpr int kExitNoPort = 3;

int Fail(int code, const Errors& errors) {
    for (const std::string& error : errors) {
        devserver::LogLine(error);
    }
    return code;
}

std::optional<devserver::CScenario> LoadScenario(const QString& path, Errors& errors) {
    QFile file(path);
    Errors reasons;
    std::optional<devserver::CScenario> scenario;
    if (!file.open(QIODevice::ReadOnly)) {
        reasons.push_back(file.errorString().toStdString());
    } else {
        scenario = devserver::CScenario::FromText(file.readAll().toStdString(), reasons);
    }
    for (const std::string& reason : reasons) {
        errors.push_back(QFileInfo(path).fileName().toStdString() + ": " + reason);
    }
    return scenario;
}

// The system closes the parent's end of the pipe, however the parent ends.
void QuitAtEndOfInput(QCoreApplication& app) {
    auto* notifier = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [notifier] {
        char ignored[256];
        const ssize_t count = read(STDIN_FILENO, ignored, sizeof(ignored));
        if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) {
            notifier->setEnabled(false);
            QCoreApplication::quit();
        }
    });
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Errors errors;
    const auto arguments = devserver::ReadArguments(QCoreApplication::arguments(),
                                                    qEnvironmentVariable(devserver::kTokenVariable), errors);
    if (!arguments) {
        return Fail(kExitWrongInput, errors);
    }
    if (arguments->help) {
        std::fputs(qPrintable(*arguments->help), stdout);
        return 0;
    }
    auto scenario =
        LoadScenario(arguments->scenario.value_or(QString::fromLatin1(devserver::CScenario::kBuiltInFile)), errors);
    if (!scenario) {
        return Fail(kExitWrongInput, errors);
    }
    devserver::CDevServer server(std::move(*scenario), arguments->token.value_or(devserver::RandomToken()));
    std::string error;
    if (!server.Listen({arguments->port, arguments->controlPort, arguments->httpPort}, error)) {
        return Fail(kExitNoPort, {error});
    }
    std::printf("%s\n", server.Greeting().c_str());
    std::fflush(stdout);
    if (arguments->child) {
        QuitAtEndOfInput(app);
    }
    return QCoreApplication::exec();
}
