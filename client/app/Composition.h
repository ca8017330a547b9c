#pragma once

#include <functional>
#include <memory>

#include "ISessionControl.h"
#include "Options.h"
#include "ServerControl.h"
#include "ServerProcess.h"
#include "Translation.h"
#include "channel/WebSocketChannel.h"
#include "core/ClientState.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "core/TimeAndRandom.h"
#include "core/UrlOpener.h"
#include "core/uniform_resource_slot.h"
#include "http/HttpService.h"
#include "log/FileLog.h"
#include "modules/MainFrameModule.h"
#include "picture/PictureService.h"
#include "report/ReportService.h"
#include "store/SqliteStore.h"
#include "tracing/BusRecorder.h"
#include "tracing/ChannelRecorder.h"
#include "tracing/HttpRecorder.h"
#include "tracing/PicturesRecorder.h"
#include "tracing/ReportsRecorder.h"
#include "tracing/StoreRecorder.h"
#include "tracing/TraceLog.h"
#include "ui/ThemeChoice.h"
#include "webview/WebEngineLoader.h"

/// The composition root: creates the services, installs them as ports, and runs the modules' life cycle. The only
/// class that names concrete services. Main thread.
class CComposition : public ISessionControl {
    Q_OBJECT

public:
    /// `log` is already installed and must outlive the composition.
    CComposition(const COptions& options, CFileLog& log);
    ~CComposition() override;

    /// Maps the modules and starts the server, or connects to the one of the options.
    void Start();

    /// Shuts down in order: logout, posted and deferred tasks, modules, server. Widgets of modules must be destroyed
    /// before. A second call does nothing.
    void End();

    quint64 UserId() const override { return m_session.UserId(); }
    int LanguageId() const override { return m_language.LanguageId(); }
    const std::vector<ServerUser>& Users() const override { return m_users; }
    const QStringList& ModuleFailures() const override { return m_moduleFailures; }
    void Login(quint64 userId) override;
    void Logout() override;
    void SetLanguage(int languageId) override;
    void SetTheme(int number) override;
    void SetVelora(bool velora) override;
    void OverrideMarkets(std::vector<int> markets) override;
    void EmitStatus() override;

    /// The window answers the modules' questions until ClearMainFrame is called.
    void SetMainFrame(MainFrameAnswers answers);
    void ClearMainFrame();
    /// Notifies the modules of the current tab. Does nothing before they are ready.
    void NotifyTabChanged(EnZRTabFrameKey key);
    /// The handler opens zrclient:// URLs and returns false for an unknown one; null removes it.
    void SetPageHandler(CUrlOpener::Handler handler);
    /// Grants or refuses requests for an interruption slot.
    void AllowSlot(ZRUniformResourceSlotType slot, bool allowed);

    ILogSource& Log() { return m_log; }
    ITraceSource& Trace() { return m_traceLog; }
    IControlClient& Control() { return m_control; }
    const QByteArray& ServerToken() const { return m_token; }
    CServerProcess& Server() { return m_server; }

Q_SIGNALS:
    /// The client's own server was started or restarted.
    void ServerReady(const ServerEndpoint& endpoint);

private:
    void RegisterHostModules();
    void MapModules();
    void InstallPorts();
    void ConnectServices();
    void ConnectSession();
    void OnServerReady(const ServerEndpoint& endpoint);
    void OnServerLost();
    void OnServerState(const ServerState& state);
    void AllowInsecureOrigin(const QUrl& server);
    void OnHostFrame(const channel::Frame& frame);
    void OnLoggedIn();
    bool OpenWeb(const QUrl& url, const QVariant& extra);
    void ShowStatus(std::function<QString()> text, bool good);

    const COptions m_options;
    CFileLog& m_log;
    CMainThreadPoster m_poster;
    CTraceLog m_traceLog;
    CMessageBus m_bus;
    CBusRecorder m_busRecorder;
    CTimeAndRandom m_timeAndRandom;
    CSqliteStore m_store;
    CStoreRecorder m_storeRecorder;
    CThemeChoice m_theme;
    CEnvironment m_environment;
    CLanguage m_language;
    CTranslation m_translation;
    CCommonConfig m_commonConfig;
    CLinkTable m_linkTable;
    CWebSocketChannel m_channel;
    CChannelRecorder m_channelRecorder;
    CLoginSession m_session;
    CDomains m_domains;
    CInterruptionSlots m_interruptionSlots;
    CClientState m_state;
    CUrlOpener m_urls;
    CHttpService m_http;
    CHttpRecorder m_httpRecorder;
    CPictureService m_pictures;
    CPicturesRecorder m_picturesRecorder{m_pictures, m_traceLog};
    CWebEngineLoader m_web;
    CReportService m_reports;
    CReportsRecorder m_reportsRecorder;
    const std::shared_ptr<CMainFrameModuleFactory> m_pMainFrame = std::make_shared<CMainFrameModuleFactory>();
    CServerProcess m_server;
    CServerControl m_control;
    QByteArray m_token;
    std::vector<ServerUser> m_users;
    QStringList m_moduleFailures;
    std::function<QString()> m_fnStatus;
    bool m_bStatusGood = false;
    bool m_bModulesReady = false;
    bool m_bLoginChosen = false;
    bool m_bEnded = false;
};
