#include "AdApi.h"

#include <fmt/format.h>

#include <QString>

#include "AdPaths.h"
#include "ChannelServer.h"

namespace devserver {
namespace {

constexpr unsigned kRequestDepth = 16;
constexpr const char* kSessionHeader = "x-orvi-client-sessionid";

WebAnswer Json200(const Json::Value& json) {
    WebAnswer answer;
    answer.body = WriteJson(json);
    return answer;
}

// In the form of every answer of this service.
WebAnswer Refused(int status, const Errors& errors) {
    Json::Value json;
    json["code"] = status;
    for (const std::string& error : errors) {
        json["message"] = json.isMember("message") ? json["message"].asString() + "; " + error : error;
    }
    WebAnswer answer;
    answer.status = status;
    answer.body = WriteJson(json);
    return answer;
}

}  // namespace

CAdApi::CAdApi(ServerState& state, const CChannelServer& channel) : m_state(state), m_channel(channel) {}

WebAnswer CAdApi::Handle(const WebRequest& request) {
    const auto fault = m_state.httpFaults.Take(request.path);
    WebAnswer answer = Answer(request, !fault || !RefusesRequest(*fault));
    if (fault) {
        answer = Struck(std::move(answer), *fault);
    }
    ReceivedRequest received;
    received.method = request.method;
    received.path = request.path;
    received.headers = request.headers;
    received.body = request.body;
    received.status = answer.harm.silent ? 0 : answer.status;
    m_state.requests.Add(std::move(received));
    return answer;
}

WebAnswer CAdApi::Answer(const WebRequest& request, bool hasEffect) {
    struct Route {
        const char* path;
        WebAnswer (CAdApi::*operation)(const WebRequest& request, bool hasEffect);
    };
    static const std::vector<Route> routes{{kAdSearchPath, &CAdApi::Search},
                                           {kAdCheckPath, &CAdApi::Check},
                                           {kAdExposePath, &CAdApi::Expose},
                                           {kReportPath, &CAdApi::Report}};
    if (!IsServedPath(request.path)) {
        return Refused(404, {"path: " + request.path + " is unknown"});
    }
    for (const Route& route : routes) {
        if (request.path == route.path) {
            return request.method == "POST" ? (this->*route.operation)(request, hasEffect)
                                            : Refused(405, {"method: must be POST"});
        }
    }
    return request.method == "GET" || request.method == "HEAD" ? Show(request) : Refused(405, {"method: must be GET"});
}

WebAnswer CAdApi::Search(const WebRequest& request, bool /*hasEffect*/) {
    Errors errors;
    const auto query = ReadJson(request.body, kRequestDepth, ReadAdQuery, errors);
    return query ? Json200(AnswerAdSearch(*query, AudienceOf(request), Surroundings())) : Refused(400, errors);
}

WebAnswer CAdApi::Check(const WebRequest& request, bool /*hasEffect*/) {
    Errors errors;
    const auto query = ReadJson(request.body, kRequestDepth, ReadAdQuery, errors);
    return query ? Json200(AnswerAdCheck(*query, Surroundings())) : Refused(400, errors);
}

WebAnswer CAdApi::Expose(const WebRequest& request, bool /*hasEffect*/) {
    Errors errors;
    if (!ReadJson(request.body, kRequestDepth, ReadExposure, errors)) {
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

WebAnswer CAdApi::Show(const WebRequest& request) {
    const auto picture = m_pictures.Find(request.path.substr(std::string(kPicturesPath).size()));
    if (!picture) {
        return Refused(404, {"path: no picture has this name"});
    }
    WebAnswer answer;
    answer.type = picture->type;
    answer.body = picture->bytes;
    return answer;
}

// Of several headers the first counts; one that is no number is of nobody.
Audience CAdApi::AudienceOf(const WebRequest& request) const {
    const std::string header = request.Header(kSessionHeader).value_or("");
    bool isNumber = false;
    const qulonglong session = QString::fromStdString(header).toULongLong(&isNumber);
    const auto client = isNumber ? m_channel.FindSession(session) : std::nullopt;
    // A user whom a new scenario no longer has is as good as logged out.
    if (!client || !m_state.scenario.FindUser(client->user)) {
        return {};
    }
    return {client->user, client->language};
}

AdSurroundings CAdApi::Surroundings() const {
    return {m_state.scenario, m_state.ServerTimeMs() / 1000,
            fmt::format(FMT_STRING("http://127.0.0.1:{}{}"), m_state.httpPort, kPicturesPath)};
}

}  // namespace devserver
