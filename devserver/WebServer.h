#pragma once

#include <QObject>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

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
    std::optional<std::string> after;  // the query parameter of this name
    WebHeaders headers;                // names in lower case, in no order
    std::string body;

    /// Of several of the name the first; nothing if there is none. `name` in lower case.
    std::optional<std::string> Header(const std::string& name) const;
};

/// How an answer goes out otherwise than it should.
struct WebHarm {
    int delayMs = 0;
    bool silent = false;            // not at all, as long as the server lives and a client can be thought to wait
    std::optional<uint64_t> cutAt;  // the line ends after so many bytes of the body, announced as it is
    uint64_t extraBytes = 0;        // behind the body, not announced
    uint64_t paddedTo = 0;          // with blanks behind the body, to so many bytes
};

struct WebAnswer {
    int status = 200;
    std::string type = "application/json";
    std::string body;
    WebHeaders headers;
    WebHarm harm;
};

/// HTTP on loopback, one request per connection: how much may be asked, that no page of elsewhere does, and the
/// way to the main thread, where the handler runs. Made, started and stopped on the main thread.
class CWebServer : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<WebAnswer(const WebRequest&)>;
    /// A refusal, or nothing. Runs on any thread, before the handler.
    using Gate = std::function<std::optional<WebAnswer>(const WebRequest&)>;

    /// `name` stands in log lines and errors. A larger body is answered by 413.
    CWebServer(std::string name, size_t maxBodyBytes, Gate gate, Handler handler);
    ~CWebServer() override;

    /// 0 takes any free port. False, with the reason in `error`, if the port is not to be had.
    bool Listen(quint16 port, std::string& error);
    quint16 Port() const { return m_nPort; }

    /// Requests that wait for the main thread, or for the end of a fault, are answered by 503. Takes as long as
    /// the slowest client that is in the middle of a request may, two seconds.
    void Stop();

    /// {"error": reason}
    static WebAnswer Refusal(int status, const std::string& reason);

private:
    void Serve(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader* content);
    WebAnswer Answer(const httplib::Request& request, const httplib::ContentReader* content);
    WebAnswer OnMainThread(const WebRequest& request);
    bool Wait(std::chrono::milliseconds time);

    const std::string m_strName;
    const size_t m_nMaxBodyBytes;
    const Gate m_fnGate;
    const Handler m_fnHandler;
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
