#include "Composition.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>

#include "Translation.h"
#include "core/lang.h"
#include "core/message_ids.h"
#include "framework/HostLog.h"
#include "framework/Ports.h"
#include "modules/TradeModule.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/PluginLoader.h"
#include "webview/WebHost.h"
#include "webview/ZRWebDialog.h"
#include "webview/ZRWebWindowInfo.h"

namespace {

constexpr host::CHostLog kLog("Client");

// Posted tasks can delete objects later, and deleted objects can post: repeats until nothing is pending, up to a limit.
void Drain() {
    for (int round = 0; round < 100; ++round) {
        const bool busy = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!busy) {
            return;
        }
    }
}

QUrl Loopback(const char* scheme, quint16 port) {
    return QUrl(QStringLiteral("%1://127.0.0.1:%2").arg(QString::fromLatin1(scheme)).arg(port));
}

constexpr const char* kLanguageKey = "Client_Language";

int FirstLanguage(ILocalStore& store, int wanted) {
    int64_t saved = core::lang::kLanguageEnglish;
    if (wanted < 0) {
        store.ReadInt64(kLanguageKey, saved);
    }
    return wanted < 0 ? int(saved) : wanted;
}

QSize WindowSize(const QVariant& extra) {
    return extra.value<core::webview::ZRWebWindowInfo>().size;
}

// The status is kept as source text and values, because the language can change while it is shown.
std::function<QString()> Words(const char* source, const QStringList& values = {}) {
    return [source, values] {
        QString words = CComposition::tr(source);
        if (values.size() == 1) {
            words = words.arg(values[0]);
        } else if (values.size() == 2) {
            words = words.arg(values[0], values[1]);
        }
        return words;
    };
}

// Returns an empty text while the store accepts saves.
QString ErrorText(EnStoreTrouble trouble) {
    switch (trouble) {
        case EnStoreTrouble::kNone:
            return {};
        case EnStoreTrouble::kNotAvailable:
            return CComposition::tr("Settings are neither read nor saved: their file is not available");
        case EnStoreTrouble::kReadOnly:
            return CComposition::tr("Settings are not saved: their file or folder is read-only");
        case EnStoreTrouble::kDiskFull:
            return CComposition::tr("Settings are not saved: the disk is full or fails");
        case EnStoreTrouble::kSecondClient:
            return CComposition::tr("Settings are not saved: another client uses this folder");
        case EnStoreTrouble::kNewerFile:
            return CComposition::tr("Settings are not saved: a newer version wrote their file");
        case EnStoreTrouble::kLocked:
            return CComposition::tr("Settings are saved later: another program locks their file");
    }
    return {};
}

}  // namespace

CComposition::CComposition(const COptions& options, CFileLog& log)
    : m_options(options),
      m_log(log),
      m_bus(m_poster),
      m_busRecorder(m_bus, m_traceLog, [this](unsigned int message) { return m_bus.SubscriptionCount(message); }),
      m_store(options.DataFile("client.sqlite")),
      m_storeRecorder(m_store, m_traceLog),
      m_theme(m_storeRecorder),
      m_environment(m_storeRecorder, {options.release, options.velora}),
      m_language(FirstLanguage(m_storeRecorder, options.language)),
      m_translation(m_language.LanguageId()),
      m_commonConfig(m_storeRecorder),
      m_linkTable(m_storeRecorder),
      m_channel(m_poster, m_timeAndRandom),
      m_channelRecorder(m_channel, m_traceLog),
      m_session(m_channel),
      m_state({m_session, m_environment, m_language, m_commonConfig, m_linkTable, m_domains, m_interruptionSlots}),
      m_urls(m_state),
      m_http(m_poster, m_state),
      m_httpRecorder(m_http, m_traceLog),
      m_pictures(m_state, options.DataFile("pictures")),
      m_web(options.webEngine),
      m_reports(options.DataFile("reports.sqlite"),
                {m_http, m_state, m_timeAndRandom, m_poster, m_environment.DeviceId()}),
      m_reportsRecorder(m_reports, m_traceLog),
      m_server(options.serverBinary, options.scenario) {
    InstallPorts();
    m_theme.Begin(options.theme);
    if (options.server.isEmpty()) {
        m_fnStatus = Words(QT_TR_NOOP("Starting the server"));
    }
    ConnectServices();
    ConnectSession();
}

void CComposition::InstallPorts() {
    host::Ports ports;
    ports.log = &m_log;
    ports.poster = &m_poster;
    ports.bus = &m_busRecorder;
    ports.channel = &m_channelRecorder;
    ports.store = &m_storeRecorder;
    ports.state = &m_state;
    ports.timeAndRandom = &m_timeAndRandom;
    ports.urls = &m_urls;
    ports.http = &m_httpRecorder;
    ports.reports = &m_reportsRecorder;
    ports.pictures = &m_pictures;
    ports.web = &m_web;
    host::Install(ports);
}

void CComposition::ConnectServices() {
    m_urls.SetWebHandler([this](const QUrl& url, const QVariant& extra) { return OpenWeb(url, extra); });
    connect(&m_urls, &CUrlOpener::Dispatched, this, [this](const UrlRequest& request, const QString& reason) {
        m_traceLog.Record(UrlTrace{request.url.left(int(kTracedBytes)), reason, request.businessType,
                                   request.fallbackMode, WindowSize(request.extra)});
    });

    connect(&host::web::CWebHost::Instance(), &host::web::CWebHost::Traced, this,
            [this](const WebTrace& trace) { m_traceLog.Record(trace); });
    connect(&m_store, &CSqliteStore::TroubleChanged, this, &CComposition::EmitStatus);
    connect(&m_channel, &CWebSocketChannel::HostFrameReceived, this, &CComposition::OnHostFrame);
    connect(&m_channel, &CWebSocketChannel::Connected, this, [this] {
        m_reports.SendNow();
        ShowStatus(Words(QT_TR_NOOP("Connected")), true);
    });
    connect(&m_channel, &CWebSocketChannel::Disconnected, this, [this](const QString& reason, int retryMs) {
        ShowStatus(Words(QT_TR_NOOP("No connection (%1), trying again in %2 s"),
                         {reason, QString::number(retryMs / 1000.0, 'f', 1)}),
                   false);
        if (!m_options.server.isEmpty() && !m_bEnded) {
            m_control.Refresh();  // the server can restart on another channel port
        }
    });
    connect(&m_domains, &CDomains::Changed, this, [this] { m_reports.SendNow(); });
    connect(&m_commonConfig, &CCommonConfig::Changed, this,
            [this] { m_busRecorder.Send("[Client]", core::kMsgCommonConfigChanged, 0, nullptr); });
    connect(&m_server, &CServerProcess::Ready, this, &CComposition::OnServerReady);
    connect(&m_server, &CServerProcess::Lost, this, [this](const QString& reason) {
        OnServerLost();
        ShowStatus(Words(QT_TR_NOOP("The server does not run (%1), starting it again"), {reason}), false);
    });
    connect(&m_control, &CServerControl::StateReceived, this, &CComposition::OnServerState);
    connect(&m_control, &CServerControl::Failed, this, [this](const QString& reason) {
        ShowStatus(Words(QT_TR_NOOP("The server does not answer (%1)"), {reason}), false);
    });
}

void CComposition::ConnectSession() {
    connect(&m_session, &CLoginSession::LoggedIn, this, &CComposition::OnLoggedIn);
    connect(&m_session, &CLoginSession::Resumed, this, [this] {
        Q_EMIT SessionRenewed();
        m_busRecorder.Send("[Client]", core::kMsgLoginChannelConnected, 0, nullptr);
    });
    connect(&m_session, &CLoginSession::LoggedOut, this, [this] {
        m_reports.SetUser(0);
        host::CModuleLifecycle::Logout();
        host::web::CWebHost::Instance().CheckUser();
        Q_EMIT UserChanged();
    });
    connect(&m_session, &CLoginSession::Refused, this, [this](qulonglong userId, const QString& reason) {
        ShowStatus(Words(QT_TR_NOOP("The login of user %1 is refused: %2"), {QString::number(userId), reason}), false);
        Q_EMIT UserChanged();
    });
}

CComposition::~CComposition() {
    End();
    host::Uninstall();
}

void CComposition::Start() {
    host::web::CWebHost::Instance().FirstFramePainted();
    RegisterHostModules();
    MapModules();
    host::CModuleLifecycle::Init();
    m_bModulesReady = true;
    Q_EMIT ModulesReady();
    if (m_options.server.isEmpty()) {
        m_server.Start();
    } else {
        m_token = m_options.token;
        m_control.Open(m_options.server, m_token);
    }
}

void CComposition::RegisterHostModules() {
    // The plug-in centre releases the factories when the modules are closed, before the session is destroyed.
    IZRPluginCenter::RegisterInterfaceFactory(
        std::make_shared<CTradeModuleFactory>([this] { return m_session.TradeAnswer(); }), true);
    IZRPluginCenter::RegisterInterfaceFactory(m_pMainFrame, true);
}

void CComposition::MapModules() {
    std::vector<host::ModuleEntry> modules;
    QString error;
    if (!host::ReadModuleManifest(m_options.manifest, modules, error)) {
        m_moduleFailures << error;
        return;
    }
    const QDir libraries(QCoreApplication::applicationDirPath() + QStringLiteral("/../lib"));
    for (const host::ModuleEntry& module : modules) {
        const QString failure = host::MapModule(module, libraries.absolutePath());
        if (!failure.isEmpty()) {
            m_moduleFailures << failure;
        }
    }
}

void CComposition::End() {
    if (m_bEnded) {
        return;
    }
    m_bEnded = true;
    host::CModuleLifecycle::Event(kZRPluginEventBeforeQuit, nullptr);
    m_session.Logout();
    Drain();
    host::CModuleLifecycle::UnInit();
    Drain();
    host::web::CWebHost::Instance().End();
    host::CModuleLifecycle::Close();
    m_channel.Close();
    m_server.Stop();
    kLog.Info(FMT_STRING("The client ends"));
}

void CComposition::OnServerReady(const ServerEndpoint& endpoint) {
    if (m_bEnded) {
        return;
    }
    m_token = endpoint.token;
    m_control.Open(Loopback("http", endpoint.controlPort), m_token);
    Q_EMIT ServerReady(endpoint);
}

// Another program can take the ports, so nothing is sent there any more. Open pages stay the client's own until the
// next server, so that they can show the lost connection.
void CComposition::OnServerLost() {
    m_channel.Close();
    m_control.Close();
    m_token.clear();
    AllowInsecureOrigin(QUrl());
    m_domains.Set("api", std::string());
}

void CComposition::AllowInsecureOrigin(const QUrl& server) {
    m_http.AllowInsecureOrigin(server);
    m_pictures.AllowInsecureOrigin(server);
}

void CComposition::OnServerState(const ServerState& state) {
    if (m_bEnded) {
        return;
    }
    const QUrl server = state.httpPort == 0 ? QUrl() : Loopback("http", state.httpPort);
    AllowInsecureOrigin(server);
    m_domains.Set("api", server.toString().toStdString());
    m_domains.Set("pages", server.toString().toStdString());
    m_users = state.users;
    Q_EMIT UsersChanged();
    if (!m_channel.IsConnected()) {
        m_channel.Open(Loopback("ws", state.channelPort), m_token);
    }
    if (!m_bLoginChosen && !m_users.empty()) {
        Login(m_options.user != 0 ? m_options.user : m_users.front().id);
    }
}

void CComposition::OnHostFrame(const channel::Frame& frame) {
    if (frame.has_server_time_ms()) {
        m_timeAndRandom.SetServerTimeMs(frame.server_time_ms());
    }
    if (frame.kind() == channel::Frame::CONFIG) {
        m_commonConfig.Receive(frame.body());
    }
    if (frame.kind() == channel::Frame::LINKS) {
        m_linkTable.Receive(frame.body());
    }
    if (frame.kind() == channel::Frame::LOGIN_ANSWER) {
        m_timeAndRandom.SetServerTimeMs(frame.login_answer().server_time_ms());
        m_session.Receive(frame);
    }
}

// Modules are notified of the login first and of the connected channel second.
void CComposition::OnLoggedIn() {
    m_reports.SetUser(m_session.UserId());
    host::web::CWebHost::Instance().CheckUser();
    host::CModuleLifecycle::Login();
    m_busRecorder.Send("[Client]", core::kMsgLoginChannelConnected, 0, nullptr);
    ShowStatus(Words(QT_TR_NOOP("Connected")), true);
    Q_EMIT UserChanged();
}

void CComposition::Login(quint64 userId) {
    m_bLoginChosen = true;
    m_session.Login(userId, m_environment.DeviceId(), m_language.LanguageId());
}

void CComposition::Logout() {
    m_bLoginChosen = true;
    m_session.Logout();
}

void CComposition::SetLanguage(int languageId) {
    m_language.SetLanguage(languageId);
    if (!m_storeRecorder.SaveInt64(kLanguageKey, languageId)) {
        kLog.Error(FMT_STRING("The language {} could not be saved"), languageId);
    }
    m_translation.SetLanguage(languageId);
    m_session.SetLanguage(languageId);
    m_busRecorder.Send("[Client]", core::kMsgLanguageChanged, 0, nullptr);
    Q_EMIT LanguageChanged();
    EmitStatus();
}

void CComposition::SetMainFrame(MainFrameAnswers answers) {
    m_pMainFrame->Offer(std::move(answers));
}

void CComposition::ClearMainFrame() {
    m_pMainFrame->TakeAway();
}

void CComposition::NotifyTabChanged(EnZRTabFrameKey key) {
    if (m_bModulesReady) {
        m_busRecorder.Send("[Client]", core::kMsgTabFrameChanged, uint64_t(key), nullptr);
    }
}

void CComposition::SetPageHandler(CUrlOpener::Handler handler) {
    m_urls.SetPageHandler(std::move(handler));
}

void CComposition::AllowSlot(ZRUniformResourceSlotType slot, bool allowed) {
    m_interruptionSlots.Allow(slot, allowed);
}

void CComposition::SetTheme(int number) {
    m_theme.Choose(number);
}

void CComposition::SetVelora(bool velora) {
    m_environment.SetVelora(velora);
    Q_EMIT EditionChanged();
}

void CComposition::OverrideMarkets(std::vector<int> markets) {
    m_session.OverrideMarkets(std::move(markets));
}

bool CComposition::OpenWeb(const QUrl& url, const QVariant& extra) {
    const auto info = extra.value<core::webview::ZRWebWindowInfo>();
    if (m_web.IsAvailable() && !info.inBrowser) {
        auto* dialog = new core::webview::ZRWebDialog(info);
        dialog->LoadUrl(url.toString(QUrl::FullyEncoded));
        dialog->Open();
        Q_EMIT WebOpened(url, info.size);
        return true;
    }
    const bool hasDesktop = m_options.openWeb && !qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP");
    if (hasDesktop && !QDesktopServices::openUrl(url)) {
        return false;
    }
    Q_EMIT WebOpened(url, info.size);
    return true;
}

void CComposition::ShowStatus(std::function<QString()> words, bool good) {
    m_fnStatus = std::move(words);
    m_bStatusGood = good;
    EmitStatus();
}

// A problem of the store is shown first while it lasts, because lost settings are noticed late.
void CComposition::EmitStatus() {
    if (!m_fnStatus) {
        return;
    }
    const QString trouble = ErrorText(m_store.Trouble());
    if (trouble.isEmpty()) {
        Q_EMIT StatusChanged(m_fnStatus(), m_bStatusGood);
    } else {
        Q_EMIT StatusChanged(trouble + QStringLiteral(" \u00B7 ") + m_fnStatus(), false);
    }
}
