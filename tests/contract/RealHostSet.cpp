#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <atomic>

#include "HostSet.h"
#include "channel/WebSocketChannel.h"
#include "core/ClientState.h"
#include "core/MainThreadPoster.h"
#include "core/MessageBus.h"
#include "core/TimeAndRandom.h"
#include "core/UrlOpener.h"
#include "core/lang.h"
#include "core/message_ids.h"
#include "framework/JsonText.h"
#include "framework/Ports.h"
#include "http/HttpService.h"
#include "log/FileLog.h"
#include "modules/MainFrameModule.h"
#include "picture/PictureService.h"
#include "plugin/IZRPluginCenter.h"
#include "plugin/PluginLoader.h"
#include "report/ReportService.h"
#include "store/SqliteStore.h"
#include "support/EnvelopeServer.h"
#include "support/RawHttpServer.h"
#include "support/RealTime.h"
#include "ui/ThemeControl.h"
#include "unit/host/services/picture/PictureBytes.h"

namespace {

ChannelOptions QuickRetries() {
    ChannelOptions options;
    options.firstRetry = std::chrono::milliseconds(10);
    options.lastRetry = std::chrono::milliseconds(40);
    return options;
}

class CRealHostSet : public IHostSet {
public:
    CRealHostSet()
        : m_bus(m_poster),
          m_environmentStore(StorePath()),
          m_store(Store()),
          m_environment(m_environmentStore, {true, false}),
          m_language(core::lang::kLanguageEnglish),
          m_commonConfig(m_environmentStore),
          m_linkTable(m_environmentStore),
          m_channel(m_poster, m_timeAndRandom, QuickRetries()),
          m_session(m_channel),
          m_state({m_session, m_environment, m_language, m_commonConfig, m_linkTable, m_domains, m_interruptionSlots}),
          m_urls(m_state),
          m_http(m_poster, m_state),
          m_pictures(m_state, m_folder.filePath(QStringLiteral("pictures"))) {
        ConnectServices();
        EXPECT_TRUE(m_httpServer.Listen());
        m_domains.Set("api", m_httpServer.Url());
        m_reports = std::make_unique<CReportService>(m_folder.filePath(QStringLiteral("reports.sqlite")),
                                                     ReportDeps{m_http, m_state, m_timeAndRandom, m_poster, "device"});
        m_httpServer.SetHandler([this](const RawHttpRequest& request) { OnHttp(request); });
        // Accepted URLs count as opened.
        m_urls.SetPageHandler([](const QUrl&) { return true; });
        m_urls.SetWebHandler([](const QUrl&, const QVariant&) { return true; });
        Install();
        Connect();
    }

    ~CRealHostSet() override {
        m_session.Logout();
        m_channel.Close();
        host::Uninstall();
    }

    bool WaitUntil(const std::function<bool()>& condition) override { return WaitInRealTime(condition); }

    std::optional<ServerRequest> WaitForRequest() override {
        const CEnvelopeServer::Arrival* arrival = WaitForFrame(channel::Frame::REQUEST);
        if (!arrival) {
            return std::nullopt;
        }
        m_nClient = arrival->client;
        return ServerRequest{arrival->frame.session(), arrival->frame.command(), arrival->frame.body()};
    }

    void Reply(unsigned long session, uint32_t cmd, const std::string& body, int error) override {
        channel::Frame frame;
        frame.set_kind(channel::Frame::REPLY);
        frame.set_session(session);
        frame.set_command(cmd);
        frame.set_error(error);
        frame.set_body(body);
        m_server.Send(m_nClient, frame);
    }

    void Push(uint32_t cmd, const std::string& body) override {
        channel::Frame frame;
        frame.set_kind(channel::Frame::PUSH);
        frame.set_command(cmd);
        frame.set_body(body);
        m_server.SendToAll(frame);
    }

    void DropConnection() override {
        m_server.Close();
        EXPECT_TRUE(WaitUntil([this] { return !m_channel.IsConnected(); }));
    }

    void Connect() override {
        ASSERT_TRUE(m_server.Listen());
        if (m_bOpen) {
            ASSERT_TRUE(WaitUntil([this] { return m_channel.IsConnected(); }));
        } else {
            m_bOpen = true;
            m_channel.Open(m_server.Url(), QByteArray("token"));
        }
        ASSERT_TRUE(WaitUntil([this] { return m_channel.IsConnected() && m_server.ConnectionCount() == 1; }));
        if (const uint64_t userId = m_session.UserId()) {
            AnswerLogin(userId, m_session.AttributedMarkets());
            ASSERT_TRUE(WaitUntil([this] { return m_nResumed > m_nResumedSeen; }));
            m_nResumedSeen = m_nResumed;
        }
    }

    void SetUser(uint64_t userId, const std::vector<int>& markets) override {
        m_session.Logout();
        if (userId != 0) {
            m_session.Login(userId, "device", core::lang::kLanguageEnglish);
            AnswerLogin(userId, markets);
            ASSERT_TRUE(WaitUntil([&] { return m_session.UserId() == userId; }));
        }
    }

    void BeInternalBuild() override { m_environment = CEnvironment(m_environmentStore, {false, false}); }
    void SetVelora(bool velora) override { m_environment.SetVelora(velora); }

    void SetLanguage(int languageId) override {
        m_language.SetLanguage(languageId);
        m_bus.Send("[Host]", core::kMsgLanguageChanged, 0, nullptr);
    }

    unsigned int KnownTextId() override { return 277228; }

    void SetServerTime(int64_t ms) override { m_timeAndRandom.MoveTo(ms); }

    void SetConfig(const std::string& name, const Json::Value& value) override {
        SendDocument(channel::Frame::CONFIG, name, value);
        ASSERT_TRUE(WaitUntil([&] { return m_commonConfig.Member(name) == value; }));
    }

    void SetLink(unsigned long linkId, const std::string& url) override {
        SendDocument(channel::Frame::LINKS, std::to_string(linkId), url);
        ASSERT_TRUE(WaitUntil([&] { return m_linkTable.Url(linkId) == url; }));
    }

    void AllowSlot(ZRUniformResourceSlotType slot, bool allowed) override { m_interruptionSlots.Allow(slot, allowed); }
    void SetDomain(const std::string& key, const std::string& url) override { m_domains.Set(key, url + "/"); }
    void SetTheme(zr_ui_theme::Manager::Theme theme) override { host::CThemeControl::Set(theme); }

    void SetMainFrame(EnZRTabFrameKey tab) override {
        m_pMainFrame->Offer({[] { return nullptr; }, [tab] { return tab; }, [] { return true; }, [] { return true; }});
        IZRPluginCenter::RegisterInterfaceFactory(m_pMainFrame, true);
        m_bus.Send("[Host]", core::kMsgTabFrameChanged, static_cast<unsigned long>(tab), nullptr);
    }

    void ClearMainFrame() override { m_pMainFrame->TakeAway(); }

    std::vector<std::string> LogLines() override {
        QFile file(LogPath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        std::vector<std::string> lines;
        for (const QByteArray& line : file.readAll().split('\n')) {
            lines.push_back(line.toStdString());
        }
        return lines;
    }

    std::string HttpServer() override { return m_httpServer.Url(); }

    std::optional<HttpArrival> WaitForHttp() override {
        if (!WaitUntil([this] { return m_nHttpTaken < m_httpArrivals.size(); })) {
            return std::nullopt;
        }
        return m_httpArrivals[m_nHttpTaken++];
    }

    void AnswerHttp(unsigned long number, int status, const std::string& body) override {
        m_httpServer.Answer(int(number), status, QByteArray::fromStdString(body));
    }

    void CutHttp(unsigned long number) override {
        m_httpServer.Write(int(number), "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf");
        m_httpServer.HangUp(int(number));
    }

    IPictures& Pictures() override { return m_pictures; }

    std::optional<unsigned long> WaitForPicture() override {
        if (!WaitUntil([this] { return m_nPicturesTaken < m_pictureArrivals.size(); })) {
            return std::nullopt;
        }
        return m_pictureArrivals[m_nPicturesTaken++];
    }

    void AnswerPicture(unsigned long number, bool found) override {
        m_httpServer.Answer(int(number), found ? 200 : 404, QByteArray::fromStdString(picture_bytes::Gif(2)));
    }

    std::vector<EventArrival> WaitForEvents(size_t count) override {
        EXPECT_TRUE(WaitUntil([&] { return m_events.size() >= count; }));
        return m_events;
    }

    void ReopenStore() override {
        m_store.reset();  // two at a time would be two clients
        m_store = Store();
        Install();
    }

private:
    /// The server clock, moved to a time that the server may not set, too.
    class CMovedTime : public CTimeAndRandom {
    public:
        void MoveTo(int64_t ms) { m_nShift = ms - CTimeAndRandom::ServerTimeMs(); }
        int64_t ServerTimeMs() const override { return CTimeAndRandom::ServerTimeMs() + m_nShift; }

    private:
        std::atomic<int64_t> m_nShift{0};
    };

    void ConnectServices() {
        const auto send = [this](unsigned int message) { m_bus.Send("[Host]", message, 0, nullptr); };
        QObject::connect(&m_channel, &CWebSocketChannel::HostFrameReceived, &m_session,
                         [this](const channel::Frame& frame) { OnHostFrame(frame); });
        QObject::connect(&m_session, &CLoginSession::LoggedIn, &m_session, [send] {
            host::CModuleLifecycle::Login();
            send(core::kMsgLoginChannelConnected);
        });
        QObject::connect(&m_session, &CLoginSession::Resumed, &m_session, [this, send] {
            ++m_nResumed;
            send(core::kMsgLoginChannelConnected);
        });
        QObject::connect(&m_session, &CLoginSession::LoggedOut, &m_session, [] { host::CModuleLifecycle::Logout(); });
        QObject::connect(&m_commonConfig, &CCommonConfig::Changed, &m_session,
                         [send] { send(core::kMsgCommonConfigChanged); });
    }

    void OnHostFrame(const channel::Frame& frame) {
        if (frame.kind() == channel::Frame::CONFIG) {
            m_commonConfig.Receive(frame.body());
        } else if (frame.kind() == channel::Frame::LINKS) {
            m_linkTable.Receive(frame.body());
        } else {
            m_session.Receive(frame);
        }
    }

    void SendDocument(channel::Frame::Kind kind, const std::string& name, const Json::Value& value) {
        Json::Value document;
        document[name] = value;
        channel::Frame frame;
        frame.set_kind(kind);
        frame.set_body(document.toStyledString());
        m_server.SendToAll(frame);
    }

    void AnswerLogin(uint64_t userId, const std::vector<int>& markets) {
        const CEnvelopeServer::Arrival* login = WaitForFrame(channel::Frame::LOGIN);
        ASSERT_TRUE(login);
        channel::Frame answer;
        answer.set_kind(channel::Frame::LOGIN_ANSWER);
        answer.set_session(login->frame.session());
        answer.mutable_login_answer()->set_accepted(true);
        answer.mutable_login_answer()->set_user_id(userId);
        answer.mutable_login_answer()->set_session_id(1);
        for (const int market : markets) {
            answer.mutable_login_answer()->add_attributed_market(market);
        }
        m_server.Send(login->client, answer);
    }

    QString LogPath() const { return m_folder.filePath(QStringLiteral("client.log")); }
    QString StorePath() const { return m_folder.filePath(QStringLiteral("host.sqlite")); }

    std::unique_ptr<CSqliteStore> Store() const {
        return std::make_unique<CSqliteStore>(m_folder.filePath(QStringLiteral("store.sqlite")));
    }

    void Install() {
        host::Ports ports;
        ports.log = &m_log;
        ports.poster = &m_poster;
        ports.bus = &m_bus;
        ports.channel = &m_channel;
        ports.store = m_store.get();
        ports.state = &m_state;
        ports.timeAndRandom = &m_timeAndRandom;
        ports.urls = &m_urls;
        ports.http = &m_http;
        ports.reports = m_reports.get();
        ports.pictures = &m_pictures;
        host::Install(ports);
    }

    void OnHttp(const RawHttpRequest& request) {
        if (request.target == "/report/events") {
            TakeEvents(request);
        } else if (request.target == "/picture") {
            m_pictureArrivals.push_back(static_cast<unsigned long>(request.connection));
        } else {
            m_httpArrivals.push_back(
                {static_cast<unsigned long>(request.connection), request.method == "POST", request.body});
        }
    }

    void TakeEvents(const RawHttpRequest& request) {
        std::string error;
        const auto batch = host::ParseJson(request.body, error);
        ASSERT_TRUE(batch) << error;
        Json::Value answer;
        for (const Json::Value& event : (*batch)["events"]) {
            m_events.push_back({event["name"].asString(), event["code"].asInt(), event["params"],
                                event["broker"].asInt(), event.isMember("durationMs")});
            answer["accepted"].append(event["id"]);
        }
        m_httpServer.Answer(request.connection, 200, QByteArray::fromStdString(answer.toStyledString()));
    }

    const CEnvelopeServer::Arrival* WaitForFrame(channel::Frame::Kind kind) {
        const CEnvelopeServer::Arrival* found = nullptr;
        WaitUntil([&] {
            for (; !found && m_nTaken < m_server.Frames().size(); ++m_nTaken) {
                if (m_server.Frames()[m_nTaken].frame.kind() == kind) {
                    found = &m_server.Frames()[m_nTaken];
                }
            }
            return found != nullptr;
        });
        return found;
    }

    QTemporaryDir m_folder;
    CEnvelopeServer m_server;
    CFileLog m_log{LogPath()};
    CMainThreadPoster m_poster;
    CMessageBus m_bus;
    CMovedTime m_timeAndRandom;
    CSqliteStore m_environmentStore;
    std::unique_ptr<CSqliteStore> m_store;
    CEnvironment m_environment;
    CLanguage m_language;
    CCommonConfig m_commonConfig;
    CLinkTable m_linkTable;
    CDomains m_domains;
    CInterruptionSlots m_interruptionSlots;
    CWebSocketChannel m_channel;
    CLoginSession m_session;
    CClientState m_state;
    CUrlOpener m_urls;
    CRawHttpServer m_httpServer;
    std::vector<HttpArrival> m_httpArrivals;
    std::vector<EventArrival> m_events;
    size_t m_nHttpTaken = 0;
    CHttpService m_http;
    CPictureService m_pictures;
    std::vector<unsigned long> m_pictureArrivals;
    size_t m_nPicturesTaken = 0;
    std::unique_ptr<CReportService> m_reports;
    const std::shared_ptr<CMainFrameModuleFactory> m_pMainFrame = std::make_shared<CMainFrameModuleFactory>();
    int m_nResumed = 0;
    int m_nResumedSeen = 0;
    size_t m_nTaken = 0;
    int m_nClient = 0;
    bool m_bOpen = false;
};

}  // namespace

std::unique_ptr<IHostSet> MakeHostSet() {
    return std::make_unique<CRealHostSet>();
}
