#include "webview/WebHost.h"

#include "core/login_status_data.h"
#include "framework/Ports.h"
#include "webview/IWebEngine.h"

namespace host::web {
namespace {

constexpr int kAfterFirstFrameMs = 1000;

}  // namespace

CWebHost& CWebHost::Instance() {
    // Never destroyed: a widget that outlives the application object may still disconnect.
    static auto* host = new CWebHost;
    return *host;
}

CWebHost::CWebHost() {
    connect(&m_afterFirstFrame, &QTimer::timeout, this, &CWebHost::Begin);
}

void CWebHost::FirstFramePainted() {
    m_bEnded = false;
    m_afterFirstFrame.start(kAfterFirstFrameMs);
}

void CWebHost::Begin() {
    m_afterFirstFrame.stop();
    m_bBegun = true;
    m_bEnded = false;
    Q_EMIT Begun();
}

QList<qint64> CWebHost::PageProcesses() const {
    QList<qint64> processes;
    for (const IWebView* view : m_views) {
        const qint64 process = view->ProcessId();
        if (process > 0 && !processes.contains(process)) {
            processes.push_back(process);
        }
    }
    return processes;
}

void CWebHost::CheckUser() {
    const quint64 user = core::login_status_data::Login_GetUserID();
    if (user == m_nUser) {
        return;
    }
    m_nUser = user;
    ++m_nGeneration;
    {
        const PortsLock ports;
        if (ports->web) {
            ports->web->ForgetData();
        }
    }
    QTimer::singleShot(0, this, &CWebHost::UserChanged);
}

void CWebHost::End() {
    m_afterFirstFrame.stop();
    m_bBegun = false;
    m_bEnded = true;
    Q_EMIT Ending();
}

}  // namespace host::web
