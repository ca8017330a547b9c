#include "ControlServer.h"

#include <httplib.h>

#include <QString>

#include "Access.h"
#include "ServerLog.h"

namespace devserver {
namespace {

constexpr const char* kAnyPath = R"([\s\S]*)";
constexpr time_t kClientSeconds = 2;
constexpr size_t kThreads = 4;

// Of several headers of one name each must pass.
bool IsFromForeignPage(const httplib::Request& request) {
    for (size_t i = 0; i < request.get_header_value_count("Origin"); ++i) {
        if (!IsLoopbackOrigin(QString::fromStdString(request.get_header_value("Origin", i)))) {
            return true;
        }
    }
    return false;
}

// Without either header a request has no body, and the reader would wait for the end of the connection.
bool HasBody(const httplib::Request& request) {
    return request.has_header("Content-Length") || request.has_header("Transfer-Encoding");
}

void Write(const ControlAnswer& answer, httplib::Response& response) {
    response.status = answer.status;
    response.set_content(WriteJson(answer.body), "application/json");
}

}  // namespace

CControlServer::CControlServer(std::string token, Handler handler)
    : m_strToken(std::move(token)), m_fnHandler(std::move(handler)), m_pServer(std::make_unique<httplib::Server>()) {
    httplib::Server& server = *m_pServer;
    // One request per connection: idle ones would hold a thread each, and hold up the end.
    server.set_keep_alive_max_count(1);
    server.set_keep_alive_timeout(kClientSeconds);
    server.set_read_timeout(kClientSeconds);
    server.set_write_timeout(kClientSeconds);
    server.set_tcp_nodelay(true);
    // What is announced too long is read and thrown away, so that the client comes to read the refusal.
    server.set_payload_max_length(kMaxBodyBytes);
    server.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
    // The library's own options would let two servers share a port.
    server.set_socket_options([](socket_t socket) {
        const int on = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    });
    const auto serve = [this](const httplib::Request& request, httplib::Response& response) {
        Serve(request, response, nullptr);
    };
    // Read by hand, as the library would take apart what names itself a form, and bounds no chunked body.
    const auto serveContent = [this](const httplib::Request& request, httplib::Response& response,
                                     const httplib::ContentReader& content) { Serve(request, response, &content); };
    server.Get(kAnyPath, serve);
    server.Options(kAnyPath, serve);
    server.Post(kAnyPath, serveContent);
    server.Put(kAnyPath, serveContent);
    server.Patch(kAnyPath, serveContent);
    server.Delete(kAnyPath, serveContent);
    // What the library refuses by itself, a malformed request line or a method of nobody's.
    server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (response.body.empty()) {
            Write(Refusal(response.status, "request: not acceptable"), response);
        }
    });
}

CControlServer::~CControlServer() {
    Stop();
}

bool CControlServer::Listen(quint16 port, std::string& error) {
    const std::string host = "127.0.0.1";
    const int bound = port == 0 ? m_pServer->bind_to_any_port(host) : m_pServer->bind_to_port(host, port) ? port : -1;
    if (bound <= 0) {
        error = fmt::format(FMT_STRING("control: port {}: it cannot be bound, is it in use?"), port);
        return false;
    }
    m_nPort = quint16(bound);
    m_thread = std::thread([this] {
        m_pServer->listen_after_bind();
        m_bEnded = true;
    });
    // A stop before the server runs would be lost.
    while (!m_pServer->is_running() && !m_bEnded) {
        std::this_thread::yield();
    }
    return true;
}

void CControlServer::Stop() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bStopping = true;
    }
    m_answered.notify_all();
    m_pServer->stop();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void CControlServer::Serve(const httplib::Request& request, httplib::Response& response,
                           const httplib::ContentReader* content) {
    const ControlAnswer answer = Answer(request, content);
    Log(FMT_STRING("control: {} {}: {} {}"), request.method, request.path, answer.status,
        answer.body.get("error", "").asString());
    Write(answer, response);
}

ControlAnswer CControlServer::Answer(const httplib::Request& request, const httplib::ContentReader* content) {
    ControlRequest wanted;
    wanted.method = request.method;
    wanted.path = request.path;
    if (request.has_param("after")) {
        wanted.after = request.get_param_value("after");
    }
    // The body is read before anything is refused: a client that still writes it would not see the answer.
    if (content && HasBody(request)) {
        if (request.is_multipart_form_data()) {
            return Refusal(400, "body: must be JSON, not a form");
        }
        const bool complete = (*content)([&](const char* data, size_t length) {
            wanted.body.append(data, length);
            return wanted.body.size() <= kMaxBodyBytes;
        });
        if (!complete) {
            return Refusal(413, fmt::format(FMT_STRING("body: incomplete, or over {} bytes"), kMaxBodyBytes));
        }
    }
    if (IsFromForeignPage(request)) {
        return Refusal(403, "Origin: must be of this machine");
    }
    if (!SameToken(request.get_header_value("Authorization"), "Bearer " + m_strToken)) {
        return Refusal(401, "Authorization: must be Bearer and the token");
    }
    return OnMainThread(wanted);
}

ControlAnswer CControlServer::OnMainThread(const ControlRequest& request) {
    // Shared with the main thread, which may come to it after a stop has ended the wait.
    const auto answer = std::make_shared<std::optional<ControlAnswer>>();
    QMetaObject::invokeMethod(
        this,
        [this, request, answer] {
            ControlAnswer result;
            try {
                result = m_fnHandler(request);
            } catch (const std::exception& exception) {
                result = Refusal(500, exception.what());
            }
            const std::lock_guard<std::mutex> lock(m_mutex);
            *answer = std::move(result);
            m_answered.notify_all();
        },
        Qt::QueuedConnection);
    std::unique_lock<std::mutex> lock(m_mutex);
    m_answered.wait(lock, [&] { return answer->has_value() || m_bStopping; });
    return answer->has_value() ? std::move(**answer) : Refusal(503, "server: it ends");
}

}  // namespace devserver
