#include "HostSet.h"
#include "framework/JsonText.h"
#include "support/ScriptedHost.h"
#include "support/VirtualEventDispatcher.h"

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

    void Connect() override { m_host.channel.FailSends(Failing::Never()); }

    void SetUser(uint64_t userId) override { m_host.state.account.Set(userId); }

    void BeInternalBuild() override { m_host.state.environment.SetRelease(false); }

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
    QObject m_context;
    size_t m_nPicturesTaken = 0;
    size_t m_nHttpTaken = 0;
    size_t m_nTaken = 0;
};

}  // namespace

std::unique_ptr<IHostSet> MakeHostSet() {
    return std::make_unique<CScriptedHostSet>();
}
