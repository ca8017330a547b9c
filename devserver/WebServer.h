#pragma once

#include <QObject>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Connections.h"
#include "scenario.pb.h"

namespace httplib {
class ContentReader;
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace devserver {

using WebHeaders = std::vector<std::pair<std::string, std::string>>;

struct WebRequest {
    std::string method;
    std::string path;
    std::vector<std::string> matches;  // what the groups of the route's pattern matched
    std::optional<std::string> after;  // query parameter of this name
    WebHeaders headers;                // names in lower case, in no order
    std::string body;

    /// Returns the first header of the name, which is in lower case. Nothing if there is none.
    std::optional<std::string> Header(const std::string& name) const;
};

struct WebAnswer {
    int status = 200;
    std::string type = "application/json";
    std::string body;
    WebHeaders headers;
    // Sent one by one in place of the body, unless empty.
    std::vector<std::string> pieces;
    std::chrono::milliseconds pieceDelay{0};
    ResponseFault fault;  // only the fields that concern the transfer apply
};

/// HTTP on loopback, one request per connection, with the HTTP library's router. Limits the size, number and time of
/// requests and refuses pages of other machines. Handlers run on the main thread. Made, started and stopped on the main
/// thread.
class CWebServer : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<WebAnswer(const WebRequest&)>;
    /// Returns a refusal, or nothing. Runs on any thread, before the handler.
    using Authorizer = std::function<std::optional<WebAnswer>(const WebRequest&)>;

    static constexpr const char* kAnyPath = R"([\s\S]*)";

    /// A request that has not arrived after this time gets no handler.
    static constexpr std::chrono::milliseconds kRequestTime{10'000};

    /// All bodies together may be as many times as large as the largest single one.
    static constexpr size_t kMaxBodies = 4;

    /// `name` is for log lines and errors. A body of more than `maxBodyBytes` is answered with status 413. A body that
    /// exceeds the limit of all bodies together is answered with status 503.
    CWebServer(std::string name, size_t maxBodyBytes, Authorizer authorizer,
               std::chrono::milliseconds requestTime = kRequestTime);
    ~CWebServer() override;

    /// Adds a route, before Listen(). `pattern` is a regular expression for the whole path. The first route that
    /// matches wins. A null `method` matches all methods. GET includes HEAD.
    void Route(const char* method, const std::string& pattern, const Handler& handler);

    /// 0 takes any free port. Returns false, with the reason in `error`, if the port cannot be bound.
    bool Listen(quint16 port, std::string& error);
    quint16 Port() const { return m_nPort; }

    /// Answers requests that wait for the main thread, or for a fault's delay, with 503. Reads no more of the others.
    void Stop();

    /// {"error": reason}
    static WebAnswer Refusal(int status, const std::string& reason);

private:
    void Serve(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader* content,
               const Handler& handler);
    WebAnswer Answer(const httplib::Request& request, const httplib::ContentReader* content, const Handler& handler);
    std::optional<WebAnswer> ReadBody(const httplib::ContentReader& content, bool keep, std::string& body);
    WebAnswer OnMainThread(WebRequest request, const Handler& handler);
    void Write(const WebAnswer& answer, httplib::Response& response);
    bool Wait(std::chrono::milliseconds time);

    const std::string m_strName;
    const size_t m_nMaxBodyBytes;
    const Authorizer m_fnAuthorizer;
    CConnections m_connections;
    std::atomic<size_t> m_nBodyBytes{0};  // of all requests that are not answered
    std::unique_ptr<httplib::Server> m_pServer;
    std::thread m_thread;
    std::atomic<bool> m_bEnded{false};
    quint16 m_nPort = 0;
    int m_nListener = -1;  // of the library
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_bStopping = false;
};

}  // namespace devserver
