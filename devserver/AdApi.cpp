#include "AdApi.h"

#include "AdPaths.h"
#include "ChannelServer.h"
#include "Digits.h"
#include "Links.h"

namespace devserver {
namespace {

constexpr const char* kSessionHeader = "x-orvi-client-sessionid";

WebAnswer Json200(const Json::Value& json) {
    WebAnswer answer;
    answer.body = WriteJson(json);
    return answer;
}

// In the form of all answers of this service.
WebAnswer Refused(int status, const Errors& errors) {
    Json::Value json;
    json["code"] = status;
    json["message"] = Joined(errors);
    WebAnswer answer = Json200(json);
    answer.status = status;
    return answer;
}

}  // namespace

CAdApi::CAdApi(ServerState& state, const CChannelServer& channel) : m_state(state), m_channel(channel) {}

void CAdApi::AddRoutes(CWebServer& server) {
    struct Row {
        const char* method;
        std::string pattern;
        Operation operation;
    };
    const std::vector<Row> rows{
        {"POST", kAdSearchPath, &CAdApi::Search},
        {"POST", kAdCheckPath, &CAdApi::Check},
        {"POST", kAdExposePath, &CAdApi::Expose},
        {"POST", kReportPath, &CAdApi::Report},
        {"GET", std::string(kPicturesPath) + R"(([\s\S]+))", &CAdApi::Show},
        {"GET", std::string(kLinkPath) + R"(([\s\S]+))", &CAdApi::ShowLink},
    };
    const auto add = [this, &server](const char* method, const std::string& pattern, Operation operation) {
        server.Route(method, pattern,
                     [this, operation](const WebRequest& request) { return Handle(request, operation); });
    };
    for (const Row& row : rows) {
        add(row.method, row.pattern, row.operation);
        add(nullptr, row.pattern, &CAdApi::RefuseMethod);
    }
    add(nullptr, CWebServer::kAnyPath, &CAdApi::RefusePath);
}

WebAnswer CAdApi::Handle(const WebRequest& request, Operation operation) {
    const auto fault = m_state.httpFaults.Take(request.path);
    WebAnswer answer = (this->*operation)(request, !fault || !RefusesRequest(*fault));
    if (fault) {
        answer = ApplyFault(std::move(answer), *fault);
    }
    ReceivedRequest received;
    received.method = request.method;
    received.path = request.path;
    received.headers = request.headers;
    received.body = request.body;
    received.status = answer.fault.silent() ? 0 : answer.status;
    m_state.requests.Add(std::move(received));
    return answer;
}

WebAnswer CAdApi::RefuseMethod(const WebRequest& request, bool /*hasEffect*/) {
    const bool isShown = !request.matches.empty();
    return Refused(405, {isShown ? "method: must be GET" : "method: must be POST"});
}

WebAnswer CAdApi::RefusePath(const WebRequest& request, bool /*hasEffect*/) {
    return Refused(404, {"path: " + request.path + " is unknown"});
}

WebAnswer CAdApi::Search(const WebRequest& request, bool /*hasEffect*/) {
    Errors errors;
    const auto query = ReadText<AdQuery>(request.body, errors);
    return query ? Json200(AnswerAdSearch(*query, AudienceOf(request), Context())) : Refused(400, errors);
}

WebAnswer CAdApi::Check(const WebRequest& request, bool /*hasEffect*/) {
    Errors errors;
    const auto query = ReadText<AdQuery>(request.body, errors);
    return query ? Json200(AnswerAdCheck(*query, Context())) : Refused(400, errors);
}

WebAnswer CAdApi::Expose(const WebRequest& request, bool /*hasEffect*/) {
    Errors errors;
    if (!ReadText<Exposure>(request.body, errors)) {
        return Refused(400, errors);
    }
    Json::Value json;
    json["code"] = 0;
    return Json200(json);
}

WebAnswer CAdApi::Report(const WebRequest& request, bool hasEffect) {
    Errors errors;
    CReportSink nowhere;
    CReportSink& sink = hasEffect ? m_state.reports : nowhere;
    const auto answer = sink.Take(request.body, errors);
    return answer ? Json200(*answer) : Refused(400, errors);
}

WebAnswer CAdApi::Show(const WebRequest& request, bool /*hasEffect*/) {
    const auto picture = m_pictures.Find(request.matches[0]);
    if (!picture) {
        return Refused(404, {"path: no picture has this name"});
    }
    WebAnswer answer;
    answer.type = picture->type;
    answer.body = picture->bytes;
    return answer;
}

WebAnswer CAdApi::ShowLink(const WebRequest& request, bool /*hasEffect*/) {
    const auto id = ReadNumber(request.matches[0]);
    const auto page = id ? LinkPage(m_state.scenario, *id) : std::nullopt;
    if (!page) {
        return Refused(404, {"path: no link has this id"});
    }
    WebAnswer answer;
    answer.type = "text/html; charset=utf-8";
    answer.body = *page;
    return answer;
}

// The first of several headers counts. A header that is no number names no session.
Audience CAdApi::AudienceOf(const WebRequest& request) const {
    const std::string header = request.Header(kSessionHeader).value_or("");
    const auto session = ReadNumber(header);
    const auto client = session ? m_channel.FindSession(*session) : std::nullopt;
    // A user who is missing from a new scenario counts as logged out.
    if (!client || !m_state.scenario.FindUser(client->user)) {
        return {};
    }
    return {client->user, client->language};
}

AdContext CAdApi::Context() const {
    return {m_state.scenario, m_state.ServerTimeMs() / 1000, m_state.Origin() + kPicturesPath};
}

}  // namespace devserver
