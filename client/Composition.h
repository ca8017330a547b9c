#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "Options.h"
#include "ServerControl.h"
#include "ServerProcess.h"
#include "channel/WebSocketChannel.h"
#include "core/ClientState.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "core/TimeAndRandom.h"
#include "core/UrlOpener.h"
#include "http/HttpService.h"
#include "log/FileLog.h"
#include "modules/MainFrameModule.h"
#include "observe/Observation.h"
#include "observe/ObservedBus.h"
#include "observe/ObservedChannel.h"
#include "observe/ObservedHttp.h"
#include "observe/ObservedPictures.h"
#include "observe/ObservedReports.h"
#include "observe/ObservedStore.h"
#include "picture/PictureService.h"
#include "report/ReportService.h"
#include "store/SqliteStore.h"
#include "ui/ThemeChoice.h"

/// What the client is made of: the one place that names the services, joins them to their ports, and
/// drives the modules through their life. Main thread.
class CComposition : public QObject {
    Q_OBJECT

public:
    explicit CComposition(const COptions& options);
    ~CComposition() override;

    /// Maps the modules and goes looking for the server.
    void Start();

    /// Ends in order: logout, what is posted and deferred, the modules, the server. What shows the modules'
    /// widgets is gone before.
    void End();

    /// Says the status again, for one who listens from now on.
    void TellStatus();

    void Login(quint64 userId);
    void Logout();
    void SetLanguage(int languageId);
    void SetTheme(int number);
    /// Switches the edition of the running client.
    void SetVelora(bool velora);
    /// Stands for the user's attributed markets until the next login.
    void OverrideMarkets(std::vector<int> markets);

    /// The window answers other modules from now on, until it takes itself away.
    void OfferMainFrame(MainFrameAnswers answers);
    void TakeMainFrameAway();
    /// The window shows that tab. It answers so already.
    void TellTab(EnZRTabFrameKey key);

    quint64 UserId() const { return m_session.UserId(); }
    int LanguageId() const { return m_language.LanguageId(); }
    bool IsConnected() const { return m_channel.IsConnected(); }
    const std::vector<ServerUser>& Users() const { return m_users; }
    /// One line per module of the manifest that is not there.
    const QStringList& ModuleFailures() const { return m_moduleFailures; }
    CFileLog& Log() { return m_log; }
    IMessageBus& Bus() { return m_observedBus; }
    CObservation& Observation() { return m_observation; }
    CUrlOpener& Urls() { return m_urls; }
    CInterruptionSlots& Slots() { return m_interruptionSlots; }
    uint64_t SessionId() const { return m_session.SessionId(); }
    std::vector<int> Markets() const { return m_session.AttributedMarkets(); }
    std::string DeviceId() const { return m_environment.DeviceId(); }
    const QByteArray& Token() const { return m_token; }
    CServerProcess& Server() { return m_server; }
    CServerControl& Control() { return m_control; }

Q_SIGNALS:
    /// The modules are mapped and started; ModuleFailures says which are not there.
    void ModulesReady();
    /// In words for the status line, told again when the language changes; `good` is false while something
    /// is being waited for.
    void StatusChanged(const QString& status, bool good);
    void UsersChanged();
    /// Somebody was logged in or out; the modules know already.
    void UserChanged();
    /// The same user has a session of another id, since the connection was lost in between.
    void SessionRenewed();
    void LanguageChanged();
    void EditionChanged();
    void MarketsChanged();
    /// A web page was asked for, and opened where there is a desktop to open it on.
    void WebOpened(const QUrl& url);

private:
    /// Joins the log ahead of the rest: the store has something to say while it opens.
    struct CEarlyLog {
        explicit CEarlyLog(CFileLog& log);
    };

    void OfferHostModules();
    void MapModules();
    void OnServerReady(const ServerEndpoint& endpoint);
    void OnServerState(const ServerState& state);
    void OnHostFrame(const channel::Frame& frame);
    void OnLoggedIn();
    bool OpenWeb(const QUrl& url);
    void ShowStatus(std::function<QString()> words, bool good);

    const COptions m_options;
    CFileLog m_log;
    CEarlyLog m_earlyLog;
    CMainThreadPoster m_poster;
    CObservation m_observation;
    CMessageBus m_bus;
    CObservedBus m_observedBus;
    CTimeAndRandom m_timeAndRandom;
    CSqliteStore m_store;
    CObservedStore m_observedStore;
    CThemeChoice m_theme;
    CEnvironment m_environment;
    CLanguage m_language;
    CCommonConfig m_commonConfig;
    CWebSocketChannel m_channel;
    CObservedChannel m_observedChannel;
    CLoginSession m_session;
    CDomains m_domains;
    CInterruptionSlots m_interruptionSlots;
    CClientState m_state;
    CUrlOpener m_urls;
    CHttpService m_http;
    CObservedHttp m_observedHttp;
    CPictureService m_pictures;
    CObservedPictures m_observedPictures{m_pictures, m_observation};
    CReportService m_reports;
    CObservedReports m_observedReports;
    const std::shared_ptr<CMainFrameModuleFactory> m_pMainFrame = std::make_shared<CMainFrameModuleFactory>();
    CServerProcess m_server;
    CServerControl m_control;
    QByteArray m_token;
    std::vector<ServerUser> m_users;
    QStringList m_moduleFailures;
    std::function<QString()> m_fnStatus;
    bool m_bStatusGood = false;
    bool m_bLoginChosen = false;
    bool m_bEnded = false;
};
