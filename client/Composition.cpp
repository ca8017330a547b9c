#include "Composition.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>

#include "ClientTexts.h"
#include "core/message_ids.h"
#include "framework/HostLog.h"
#include "framework/Ports.h"
#include "modules/TradeModule.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/PluginLoader.h"

namespace {

constexpr host::CHostLog kLog("Client");

QString InDataDir(const COptions& options, const char* name) {
    const QDir folder(options.dataDir);
    folder.mkpath(QStringLiteral("."));
    return folder.absoluteFilePath(QString::fromLatin1(name));
}

// What is posted may delete later, and what is deleted may post: until there is nothing, or for ever is near.
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

// A status outlives a change of the language, so it is kept as its text's id and values.
std::function<QString()> Words(texts::EnText id, const QStringList& values = {}) {
    return [id, values] {
        QString words = texts::Tr(id);
        if (values.size() == 1) {
            words = words.arg(values[0]);
        } else if (values.size() == 2) {
            words = words.arg(values[0], values[1]);
        }
        return words;
    };
}

// Empty while the store takes saves.
QString WordsOf(EnStoreTrouble trouble) {
    switch (trouble) {
        case EnStoreTrouble::kNone:
            return {};
        case EnStoreTrouble::kNotAvailable:
            return texts::Tr(texts::kStoreNotAvailable);
        case EnStoreTrouble::kReadOnly:
            return texts::Tr(texts::kStoreReadOnly);
        case EnStoreTrouble::kDiskFull:
            return texts::Tr(texts::kStoreDiskFull);
        case EnStoreTrouble::kSecondClient:
            return texts::Tr(texts::kStoreSecondClient);
        case EnStoreTrouble::kNewerFile:
            return texts::Tr(texts::kStoreNewerFile);
    }
    return {};
}

}  // namespace

CComposition::CEarlyLog::CEarlyLog(CFileLog& log) {
    host::Ports ports;
    ports.log = &log;
    host::Install(ports);
}

CComposition::CComposition(const COptions& options)
    : m_options(options),
      m_log(InDataDir(options, "client.log")),
      m_earlyLog(m_log),
      m_bus(m_poster),
      m_observedBus(m_bus, m_observation, [this](unsigned int message) { return m_bus.SubscriptionCount(message); }),
      m_store(InDataDir(options, "client.sqlite")),
      m_observedStore(m_store, m_observation),
      m_theme(m_observedStore),
      m_environment(m_observedStore, {options.release, options.velora}),
      m_language(options.language),
      m_commonConfig(m_observedStore),
      m_channel(m_poster, m_timeAndRandom),
      m_observedChannel(m_channel, m_observation),
      m_session(m_channel),
      m_state({m_session, m_environment, m_language, m_commonConfig, m_domains, m_interruptionSlots}),
      m_urls(m_state),
      m_http(m_poster, m_state),
      m_observedHttp(m_http, m_observation),
      m_pictures(m_state, InDataDir(options, "pictures")),
      m_reports(InDataDir(options, "reports.sqlite"),
                {m_http, m_state, m_timeAndRandom, m_poster, m_environment.DeviceId()}),
      m_observedReports(m_reports, m_observation),
      m_server(options.serverBinary, options.scenario) {
    host::Ports ports;
    ports.log = &m_log;
    ports.poster = &m_poster;
    ports.bus = &m_observedBus;
    ports.channel = &m_observedChannel;
    ports.store = &m_observedStore;
    ports.state = &m_state;
    ports.timeAndRandom = &m_timeAndRandom;
    ports.urls = &m_urls;
    ports.http = &m_observedHttp;
    ports.reports = &m_observedReports;
    ports.pictures = &m_pictures;
    host::Install(ports);
    m_theme.Begin(options.theme);
    if (options.server.isEmpty()) {
        m_fnStatus = Words(texts::kServerStarts);
    }

    m_urls.SetWebHandler([this](const QUrl& url) { return OpenWeb(url); });
    connect(&m_urls, &CUrlOpener::Dispatched, this, [this](const UrlRequest& request, const QString& reason) {
        m_observation.Report(UrlSeen{request.url, reason, request.businessType, request.fallbackMode});
    });

    connect(&m_store, &CSqliteStore::TroubleChanged, this, &CComposition::TellStatus);
    connect(&m_channel, &CWebSocketChannel::HostFrameReceived, this, &CComposition::OnHostFrame);
    connect(&m_channel, &CWebSocketChannel::Connected, this, [this] {
        m_reports.SendNow();
        ShowStatus(Words(texts::kConnected), true);
    });
    connect(&m_channel, &CWebSocketChannel::Disconnected, this, [this](const QString& reason, int retryMs) {
        ShowStatus(Words(texts::kNoConnection, {reason, QString::number(retryMs / 1000.0, 'f', 1)}), false);
        if (!m_options.server.isEmpty() && !m_bEnded) {
            m_control.Refresh();  // a server that was started by hand may come back on another channel port
        }
    });
    connect(&m_domains, &CDomains::Changed, this, [this] { m_reports.SendNow(); });
    connect(&m_commonConfig, &CCommonConfig::Changed, this,
            [this] { m_observedBus.Send("[Client]", core::kMsgCommonConfigChanged, 0, nullptr); });
    connect(&m_session, &CLoginSession::LoggedIn, this, &CComposition::OnLoggedIn);
    connect(&m_session, &CLoginSession::Resumed, this, [this] {
        Q_EMIT SessionRenewed();
        m_observedBus.Send("[Client]", core::kMsgLoginChannelConnected, 0, nullptr);
    });
    connect(&m_session, &CLoginSession::LoggedOut, this, [this] {
        m_reports.SetUser(0);
        host::CModuleLifecycle::Logout();
        Q_EMIT UserChanged();
    });
    connect(&m_session, &CLoginSession::Refused, this, [this](qulonglong userId, const QString& reason) {
        ShowStatus(Words(texts::kLoginRefused, {QString::number(userId), reason}), false);
        Q_EMIT UserChanged();
    });
    connect(&m_server, &CServerProcess::Ready, this, &CComposition::OnServerReady);
    connect(&m_server, &CServerProcess::Lost, this,
            [this](const QString& reason) { ShowStatus(Words(texts::kServerLost, {reason}), false); });
    connect(&m_control, &CServerControl::StateReceived, this, &CComposition::OnServerState);
    connect(&m_control, &CServerControl::Failed, this,
            [this](const QString& reason) { ShowStatus(Words(texts::kServerSilent, {reason}), false); });
}

CComposition::~CComposition() {
    End();
    host::Uninstall();
}

void CComposition::Start() {
    OfferHostModules();
    MapModules();
    host::CModuleLifecycle::Init();
    Q_EMIT ModulesReady();
    if (m_options.server.isEmpty()) {
        m_server.Start();
    } else {
        m_token = m_options.token.toLatin1();
        m_control.Open(m_options.server, m_token);
    }
}

void CComposition::OfferHostModules() {
    // The centre lets go of them at the client's end, before the session is gone.
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
}

void CComposition::OnServerState(const ServerState& state) {
    if (m_bEnded) {
        return;
    }
    const QUrl server = state.httpPort == 0 ? QUrl() : Loopback("http", state.httpPort);
    m_http.AllowPlain(server);
    m_pictures.AllowPlain(server);
    m_domains.Set("api", server.toString().toStdString());
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
    if (frame.kind() == channel::Frame::LOGIN_ANSWER) {
        m_timeAndRandom.SetServerTimeMs(frame.login_answer().server_time_ms());
        m_session.Receive(frame);
    }
}

// The modules hear of the login first, and then that its channel stands.
void CComposition::OnLoggedIn() {
    m_reports.SetUser(m_session.UserId());
    host::CModuleLifecycle::Login();
    m_observedBus.Send("[Client]", core::kMsgLoginChannelConnected, 0, nullptr);
    ShowStatus(Words(texts::kConnected), true);
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
    m_session.SetLanguage(languageId);
    m_observedBus.Send("[Client]", core::kMsgLanguageChanged, 0, nullptr);
    Q_EMIT LanguageChanged();
    TellStatus();
}

void CComposition::OfferMainFrame(MainFrameAnswers answers) {
    m_pMainFrame->Offer(std::move(answers));
}

void CComposition::TakeMainFrameAway() {
    m_pMainFrame->TakeAway();
}

void CComposition::TellTab(EnZRTabFrameKey key) {
    m_observedBus.Send("[Client]", core::kMsgTabFrameChanged, uint64_t(key), nullptr);
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
    Q_EMIT MarketsChanged();
}

bool CComposition::OpenWeb(const QUrl& url) {
    const bool hasDesktop = m_options.openWeb && !qEnvironmentVariableIsEmpty("XDG_CURRENT_DESKTOP");
    if (hasDesktop && !QDesktopServices::openUrl(url)) {
        return false;
    }
    Q_EMIT WebOpened(url);
    return true;
}

void CComposition::ShowStatus(std::function<QString()> words, bool good) {
    m_fnStatus = std::move(words);
    m_bStatusGood = good;
    TellStatus();
}

// What the store can't do stands in front, for as long as it lasts: settings that are lost are noticed late.
void CComposition::TellStatus() {
    if (!m_fnStatus) {
        return;
    }
    const QString trouble = WordsOf(m_store.Trouble());
    if (trouble.isEmpty()) {
        Q_EMIT StatusChanged(m_fnStatus(), m_bStatusGood);
    } else {
        Q_EMIT StatusChanged(trouble + QStringLiteral(" \u00B7 ") + m_fnStatus(), false);
    }
}
