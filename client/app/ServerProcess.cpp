#include "ServerProcess.h"

#include <unistd.h>

#include <QRandomGenerator>

#include "framework/HostLog.h"
#include "framework/JsonText.h"

namespace {

constexpr host::CHostLog kLog("Server");
constexpr int kEndLimitMs = 500;
constexpr int kGreetingLimitMs = 10'000;
constexpr int kSteadyMs = 10'000;

}  // namespace

bool ReadPort(const Json::Value& value, quint16& port) {
    if (!value.isUInt() || value.asUInt() == 0 || value.asUInt() > 0xFFFF) {
        return false;
    }
    port = quint16(value.asUInt());
    return true;
}

void CServerProcess::CChild::setupChildProcess() {
    setpgid(0, 0);
}

CServerProcess::CServerProcess(QString binary, QString scenario)
    : m_strBinary(std::move(binary)),
      m_strScenario(std::move(scenario)),
      m_backoff(std::chrono::milliseconds(500), std::chrono::seconds(15)) {
    m_retryTimer.setSingleShot(true);
    m_greetingTimer.setSingleShot(true);
    m_greetingTimer.setInterval(kGreetingLimitMs);
    connect(&m_retryTimer, &QTimer::timeout, this, &CServerProcess::Start);
    connect(&m_greetingTimer, &QTimer::timeout, &m_process, &QProcess::kill);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &CServerProcess::OnOutput);
    connect(&m_process, &QProcess::readyReadStandardError, this, [this] {
        const QList<QByteArray> lines = m_process.readAllStandardError().split('\n');
        for (const QByteArray& line : lines) {
            if (!line.trimmed().isEmpty()) {
                m_lastErrors = line.trimmed();
                kLog.Info(FMT_STRING("{}"), m_lastErrors.toStdString());
            }
        }
    });
    connect(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                // The last error line is the reason only if the server ended by itself.
                if (status == QProcess::CrashExit) {
                    OnEnded(QStringLiteral("it was killed"));
                } else {
                    OnEnded(code != 0 && !m_lastErrors.isEmpty() ? QString::fromUtf8(m_lastErrors)
                                                                 : QStringLiteral("it ended with %1").arg(code));
                }
            });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            OnEnded(m_process.errorString());
        }
    });
}

CServerProcess::~CServerProcess() {
    Stop();
}

void CServerProcess::Start() {
    m_bWanted = true;
    QStringList arguments{QStringLiteral("--child")};
    if (!m_strScenario.isEmpty()) {
        arguments << QStringLiteral("--scenario") << m_strScenario;
    }
    // Without a token the server makes one of its own at each start.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("ZR_DEVSERVER_TOKEN"));
    m_process.setProcessEnvironment(environment);
    m_lastErrors.clear();
    m_greetingTimer.start();
    m_running.start();
    m_process.start(m_strBinary, arguments);
}

void CServerProcess::Stop() {
    m_bWanted = false;
    m_retryTimer.stop();
    m_greetingTimer.stop();
    if (m_process.state() == QProcess::NotRunning) {
        return;
    }
    // The server ends when its input is closed.
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(kEndLimitMs)) {
        m_process.kill();
        m_process.waitForFinished(kEndLimitMs);
    }
}

bool CServerProcess::ReadEndpoint(const QByteArray& line, ServerEndpoint& endpoint) {
    std::string error;
    const auto said = host::ParseJson(line.toStdString(), error);
    if (!said || !said->isObject()) {
        return false;
    }
    ServerEndpoint read;
    if (!ReadPort((*said)["channel"], read.channelPort) || !ReadPort((*said)["control"], read.controlPort) ||
        !(*said)["token"].isString()) {
        return false;
    }
    read.token = QByteArray::fromStdString((*said)["token"].asString());
    endpoint = read;
    return true;
}

void CServerProcess::OnOutput() {
    while (m_process.canReadLine()) {
        ServerEndpoint endpoint;
        if (!ReadEndpoint(m_process.readLine(), endpoint)) {
            kLog.Error(FMT_STRING("The server said something that is not where it listens"));
            continue;
        }
        m_greetingTimer.stop();
        kLog.Info(FMT_STRING("The server runs, channel {}, control {}"), endpoint.channelPort, endpoint.controlPort);
        Q_EMIT Ready(endpoint);
    }
}

void CServerProcess::OnEnded(const QString& reason) {
    if (!m_bWanted) {
        return;
    }
    m_greetingTimer.stop();
    if (m_running.elapsed() > kSteadyMs) {
        // A server that ends soon after its greeting counts as failed.
        m_backoff.Reset();
    }
    kLog.Error(FMT_STRING("The server does not run: {}"), reason.toStdString());
    m_retryTimer.start(m_backoff.Next(QRandomGenerator::global()->generate()));
    Q_EMIT Lost(reason);
}
