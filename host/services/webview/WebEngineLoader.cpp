#include "webview/WebEngineLoader.h"

#include <dlfcn.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileInfo>
#include <QGuiApplication>
#include <QLibrary>
#include <QLibraryInfo>

#include "framework/HostLog.h"
#include "framework/Ports.h"

namespace {

constexpr host::CHostLog kLog("WebEngine");

using NewEngine = IWebEngine* (*)();

QString LibraryBesideHost() {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&host::Install), &info);
    return QFileInfo(QString::fromLocal8Bit(info.dli_fname)).absolutePath() + QStringLiteral("/libzrhost_webengine.so");
}

QString HelperProgram() {
    const QString path = qEnvironmentVariable("QTWEBENGINEPROCESS_PATH");
    return path.isEmpty()
               ? QLibraryInfo::location(QLibraryInfo::LibraryExecutablesPath) + QStringLiteral("/QtWebEngineProcess")
               : path;
}

bool IsSandboxOff() {
    const QStringList flags = qEnvironmentVariable("QTWEBENGINE_CHROMIUM_FLAGS").split(QLatin1Char(' '));
    return qEnvironmentVariableIntValue("QTWEBENGINE_DISABLE_SANDBOX") == 1 ||
           flags.contains(QStringLiteral("--no-sandbox"));
}

// Tried in a child, because it changes the process.
bool HasUserNamespaces() {
    const pid_t child = fork();
    if (child == 0) {
        _exit(unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
    }
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

CWebEngineLoader::~CWebEngineLoader() = default;

WebEngineNeeds CWebEngineLoader::Needs() {
    return {LibraryBesideHost(), HelperProgram(), QGuiApplication::platformName(), geteuid() == 0, IsSandboxOff()};
}

QString CWebEngineLoader::Problem(const WebEngineNeeds& needs) {
    if (!QFileInfo(needs.library).isFile()) {
        return QStringLiteral("the library %1 is missing").arg(needs.library);
    }
    if (!QFileInfo(needs.helper).isExecutable()) {
        return QStringLiteral("the program %1 is missing").arg(needs.helper);
    }
    if (needs.platform == QLatin1String("offscreen") || needs.platform == QLatin1String("minimal")) {
        return QStringLiteral("the platform %1 does not display it").arg(needs.platform);
    }
    if (needs.isRoot && !needs.isSandboxOff) {
        return QStringLiteral("its sandbox does not run as root");
    }
    return {};
}

bool CWebEngineLoader::IsAvailable() const {
    return m_bEnabled && (m_pEngine || (!m_bTried && Problem(Needs()).isEmpty()));
}

bool CWebEngineLoader::Map() {
    if (m_bTried || !m_bEnabled) {
        return bool(m_pEngine);
    }
    m_bTried = true;
    const WebEngineNeeds needs = Needs();
    const QString problem = Problem(needs);
    if (!problem.isEmpty()) {
        kLog.Error(FMT_STRING("Web pages are not displayed, {}"), problem.toStdString());
        return false;
    }
    if (!needs.isSandboxOff && !HasUserNamespaces()) {
        kLog.Info(FMT_STRING("The sandbox of web pages runs without user namespaces"));
    }
    QLibrary library(needs.library);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const auto create = reinterpret_cast<NewEngine>(library.resolve("ZRCreateWebEngine"));
    if (!create) {
        kLog.Error(FMT_STRING("Web pages are not displayed: {}"), library.errorString().toStdString());
        return false;
    }
    m_pEngine.reset(create());
    return true;
}

IWebView* CWebEngineLoader::NewView(IWebViewOwner& owner, QWidget* parent) {
    return Map() ? m_pEngine->NewView(owner, parent) : nullptr;
}

void CWebEngineLoader::ForgetData() {
    if (m_pEngine) {
        m_pEngine->ForgetData();
    }
}
