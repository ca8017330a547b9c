#include <QWidget>

#include "HostSet.h"
#include "core/message_ids.h"
#include "framework/JsonText.h"
#include "plugin/PluginLoader.h"
#include "support/ScriptedHost.h"
#include "support/VirtualEventDispatcher.h"
#include "ui/ThemeControl.h"

namespace {

class CScriptedHostSet : public IHostSet {
public:
    // The cases look at effects by themselves.
    ~CScriptedHostSet() override {
        m_host.channel.Forget();
        m_host.store.Forget();
        m_host.log.Forget();
        m_host.urls.Forget();
        m_host.http.Forget();
        m_host.reports.Forget();
        m_host.pictures.Forget();
    }

    bool WaitUntil(const std::function<bool()>& condition) override {
        while (!m_host.time.WaitUntil(condition, std::chrono::milliseconds(0))) {
            const auto due = CVirtualEventDispatcher::Instance()->NextDue();
            if (!due) {
                // Only another thread can bring it about.
                return m_host.time.WaitUntil(condition);
            }
            m_host.time.Advance(std::chrono::milliseconds(*due - CVirtualEventDispatcher::Instance()->Now()));
        }
        return true;
    }

    std::optional<ServerRequest> WaitForRequest() override {
        const auto& sent = m_host.channel.Sent();
        if (m_nTaken == sent.size()) {
            return std::nullopt;
        }
        const SentCommand& command = sent[m_nTaken++];
        return ServerRequest{command.session, command.cmd, command.body};
    }

    void Reply(unsigned long session, uint32_t cmd, const std::string& body, int error) override {
        m_host.channel.ReplyWith(session, CSProtoError(error), CSProtoData{cmd, body});
    }

    void Push(uint32_t cmd, const std::string& body) override { m_host.channel.Push(cmd, body); }

    void DropConnection() override {
        m_host.channel.BeOffline();
        m_host.channel.FailOutstanding();
    }

    void Connect() override {
        m_host.channel.FailSends(Failing::Never());
        if (m_host.state.account.UserId() != 0) {
            m_host.bus.HostSend(core::kMsgLoginChannelConnected);
        }
    }

    void SetUser(uint64_t userId, const std::vector<int>& markets) override {
        if (m_host.state.account.UserId() != 0) {
            m_host.state.account.Set(0);
            host::CModuleLifecycle::Logout();
        }
        if (userId != 0) {
            m_host.state.account.Set(userId, 1, markets);
            host::CModuleLifecycle::Login();
            m_host.bus.HostSend(core::kMsgLoginChannelConnected);
        }
    }

    void BeInternalBuild() override { m_host.state.environment.SetRelease(false); }
    void SetVelora(bool velora) override { m_host.state.environment.SetVelora(velora); }

    void SetLanguage(int languageId) override {
        m_host.state.language.Set(languageId);
        m_host.state.language.SetText(KnownTextId(), QStringLiteral("in language %1").arg(languageId));
        m_host.bus.HostSend(core::kMsgLanguageChanged);
    }

    unsigned int KnownTextId() override { return 7; }

    void SetServerTime(int64_t ms) override { m_host.time.SetServerTime(ms); }

    void SetConfig(const std::string& name, const Json::Value& value) override {
        m_host.state.config.Set(name, value);
        m_host.bus.HostSend(core::kMsgCommonConfigChanged);
    }

    void SetLink(unsigned long linkId, const std::string& url) override {
        m_host.state.links = CScriptedLinks();
        m_host.state.links.Set(linkId, url);
    }

    void AllowSlot(ZRUniformResourceSlotType slot, bool allowed) override { m_host.state.slots.Allow(slot, allowed); }
    void SetDomain(const std::string& key, const std::string& url) override { m_host.state.domains.Set(key, url); }
    void SetTheme(zr_ui_theme::Manager::Theme theme) override { host::CThemeControl::Set(theme); }

    void SetMainFrame(EnZRTabFrameKey tab) override {
        m_host.mainFrame.SetTabKey(tab);
        m_host.mainFrame.SetNavigationCollapsed(true);
        m_host.mainFrame.Offer(&m_window);
        m_host.bus.HostSend(core::kMsgTabFrameChanged, static_cast<unsigned long>(tab));
    }

    void ClearMainFrame() override { m_host.mainFrame.TakeAway(); }

    std::vector<std::string> LogLines() override {
        std::vector<std::string> lines;
        for (const LogLine& line : m_host.log.Lines()) {
            lines.push_back(line.text);
        }
        for (const AssertionRecord& assertion : m_host.log.Assertions()) {
            lines.push_back(assertion.module + " " + assertion.expression);
        }
        return lines;
    }

    std::string HttpServer() override { return "https://ads.test"; }

    std::optional<HttpArrival> WaitForHttp() override {
        const auto& started = m_host.http.Started();
        if (m_nHttpTaken == started.size()) {
            return std::nullopt;
        }
        const StartedRequest& request = started[m_nHttpTaken++];
        return HttpArrival{request.task, request.request.m_enMethod == kHttpPost, request.request.m_strBody};
    }

    // From the loop, as a network does.
    void AnswerHttp(unsigned long number, int status, const std::string& body) override {
        m_host.poster.Unrecorded().Post(&m_context, std::chrono::milliseconds(0),
                                        [this, number, status, body] { m_host.http.Answer(number, body, status); });
    }

    void CutHttp(unsigned long number) override {
        m_host.poster.Unrecorded().Post(&m_context, std::chrono::milliseconds(0),
                                        [this, number] { m_host.http.Fail(number, kHttpCut); });
    }

    IPictures& Pictures() override { return m_host.pictures; }

    std::optional<unsigned long> WaitForPicture() override {
        const auto& asked = m_host.pictures.Asked();
        if (m_nPicturesTaken == asked.size()) {
            return std::nullopt;
        }
        return asked[m_nPicturesTaken++].load;
    }

    void AnswerPicture(unsigned long number, bool found) override {
        const AskedPicture asked = m_host.pictures.Asked().at(number - 1);
        auto picture = std::make_shared<Picture>();
        for (int frame = 0; frame < (asked.moving ? 2 : 1); ++frame) {
            picture->frames.push_back({CScriptedPictures::Plain(asked.size, Qt::red)->frames[0].image, 100});
        }
        m_host.poster.Unrecorded().Post(&m_context, std::chrono::milliseconds(0), [this, number, found, picture] {
            m_host.pictures.Succeed(int(number), found ? picture : nullptr);
        });
    }

    std::vector<EventArrival> WaitForEvents(size_t /*count*/) override {
        std::vector<EventArrival> events;
        for (const ReportedEvent& event : m_host.reports.Events()) {
            std::string error;
            events.push_back(
                {event.name, event.code, *host::ParseJson(event.params, error), event.broker, event.timed});
        }
        return events;
    }

    // Values in memory live as long as the set.
    void ReopenStore() override {}

private:
    CScriptedHost m_host;
    QWidget m_window;
    QObject m_context;
    size_t m_nPicturesTaken = 0;
    size_t m_nHttpTaken = 0;
    size_t m_nTaken = 0;
};

}  // namespace

std::unique_ptr<IHostSet> MakeHostSet() {
    return std::make_unique<CScriptedHostSet>();
}
