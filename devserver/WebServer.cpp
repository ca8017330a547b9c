#include "WebServer.h"

#include <httplib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QString>
#include <algorithm>

#include "Access.h"
#include "ConnectionThreadPool.h"
#include "JsonMessage.h"
#include "RequestStream.h"
#include "ServerLog.h"

namespace devserver {
namespace {

// For each read and write.
constexpr std::chrono::seconds kPatience{2};
constexpr size_t kPieceBytes = 64 * 1024;
// Connections that the system keeps while all threads are taken. The library's constant is 5, and the first packets of
// further clients would be lost and be sent again after seconds.
constexpr int kMaxPending = 256;
// Longer than any client waits.
constexpr std::chrono::minutes kSilence{10};

// Each of several headers must pass.
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

WebHeaders HeadersOf(const httplib::Request& request) {
    // The library adds these to the client's headers.
    const std::vector<QString> added{QStringLiteral("remote_addr"), QStringLiteral("remote_port"),
                                     QStringLiteral("local_addr"), QStringLiteral("local_port")};
    WebHeaders headers;
    for (const auto& [name, value] : request.headers) {
        const QString lower = QString::fromStdString(name).toLower();
        if (std::find(added.begin(), added.end(), lower) == added.end()) {
            headers.emplace_back(lower.toStdString(), value);
        }
    }
    return headers;
}

// Returns the body from `offset` on, padded with blanks.
std::string Piece(const std::string& body, size_t offset, size_t length) {
    std::string piece = offset < body.size() ? body.substr(offset, length) : std::string();
    piece.resize(length, ' ');
    return piece;
}

// In pieces and never compressed, so that a client gets exactly these bytes.
void WriteBody(const WebAnswer& answer, httplib::Response& response) {
    const size_t size = std::max<size_t>(answer.body.size(), size_t(answer.fault.hugemib()) * 1024 * 1024);
    if (size == 0) {
        response.set_content(std::string(), answer.type);
        return;
    }
    response.set_content_provider(
        size, answer.type,
        [size, body = answer.body, fault = answer.fault](size_t offset, size_t length, httplib::DataSink& sink) {
            const size_t end = fault.has_cutbytes() ? std::min(size, size_t(fault.cutbytes())) : size;
            if (offset >= end) {
                return false;  // ends the connection
            }
            length = std::min({length, end - offset, kPieceBytes});
            std::string piece = Piece(body, offset, length);
            if (offset + length == size) {
                piece.append(fault.extrabytes(), ' ');
            }
            return sink.write(piece.data(), piece.size());
        });
}

void WriteHead(const WebAnswer& answer, httplib::Response& response) {
    response.status = answer.status;
    for (const auto& [name, value] : answer.headers) {
        response.set_header(name, value);
    }
}

/// The library's server, with streams that limit what a client can take before its request is complete.
class CLimitedServer : public httplib::Server {
public:
    CLimitedServer(CConnections& connections, std::chrono::milliseconds requestTime)
        : m_connections(connections), m_requestTime(requestTime) {
        new_task_queue = [this] { return new CConnectionThreadPool(m_connections); };
    }

private:
    bool process_and_close_socket(socket_t socket) override {
        m_connections.Add(socket);
        CRequestStream stream(socket, m_requestTime, kPatience);
        // One request per connection: an idle one would keep a thread.
        bool closed = false;
        const bool served = process_request(stream, true, closed, nullptr);
        m_connections.Remove(socket);
        shutdown(socket, SHUT_RDWR);
        close(socket);
        return served;
    }

    CConnections& m_connections;
    const std::chrono::milliseconds m_requestTime;
};

}  // namespace

std::optional<std::string> WebRequest::Header(const std::string& name) const {
    const auto found =
        std::find_if(headers.begin(), headers.end(), [&name](const auto& header) { return header.first == name; });
    return found == headers.end() ? std::nullopt : std::make_optional(found->second);
}

WebAnswer CWebServer::Refusal(int status, const std::string& reason) {
    Json::Value json;
    json["error"] = reason;
    WebAnswer answer;
    answer.status = status;
    answer.body = WriteJson(json);
    return answer;
}

CWebServer::CWebServer(std::string name, size_t maxBodyBytes, Authorizer authorizer,
                       std::chrono::milliseconds requestTime)
    : m_strName(std::move(name)),
      m_nMaxBodyBytes(maxBodyBytes),
      m_fnAuthorizer(std::move(authorizer)),
      m_pServer(std::make_unique<CLimitedServer>(m_connections, requestTime)) {
    httplib::Server& server = *m_pServer;
    server.set_tcp_nodelay(true);
    // A body that is announced as too long is read and dropped, so that the client reads the refusal.
    server.set_payload_max_length(m_nMaxBodyBytes);
    // The library's own options would let two servers share a port.
    server.set_socket_options([this](socket_t socket) {
        m_nListener = socket;
        const int on = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    });
    // The library itself refuses malformed requests and unknown methods. Answers of this class have a type by now.
    server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (!response.has_header("Content-Type")) {
            const WebAnswer refusal = Refusal(response.status, "request: not acceptable");
            WriteHead(refusal, response);
            WriteBody(refusal, response);
        }
    });
}

CWebServer::~CWebServer() {
    Stop();
}

void CWebServer::Route(const char* method, const std::string& pattern, const Handler& handler) {
    const auto serve = [this, handler](const httplib::Request& request, httplib::Response& response) {
        Serve(request, response, nullptr, handler);
    };
    // With a content reader, as the library would parse a form, and does not limit a chunked body.
    const auto serveContent = [this, handler](const httplib::Request& request, httplib::Response& response,
                                              const httplib::ContentReader& content) {
        Serve(request, response, &content, handler);
    };
    const auto is = [wanted = std::string(method ? method : "")](const char* name) {
        return wanted.empty() || wanted == name;
    };
    if (is("GET")) {
        m_pServer->Get(pattern, serve);
    }
    if (is("OPTIONS")) {
        m_pServer->Options(pattern, serve);
    }
    if (is("POST")) {
        m_pServer->Post(pattern, serveContent);
    }
    if (is("PUT")) {
        m_pServer->Put(pattern, serveContent);
    }
    if (is("PATCH")) {
        m_pServer->Patch(pattern, serveContent);
    }
    if (is("DELETE")) {
        m_pServer->Delete(pattern, serveContent);
    }
}

bool CWebServer::Listen(quint16 port, std::string& error) {
    const std::string host = "127.0.0.1";
    const int bound = port == 0 ? m_pServer->bind_to_any_port(host) : m_pServer->bind_to_port(host, port) ? port : -1;
    if (bound <= 0) {
        error = fmt::format(FMT_STRING("{}: port {}: it cannot be bound, is it in use?"), m_strName, port);
        return false;
    }
    m_nPort = quint16(bound);
    listen(m_nListener, kMaxPending);
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

void CWebServer::Stop() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bStopping = true;
    }
    m_changed.notify_all();
    m_pServer->stop();
    m_connections.StopReading();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void CWebServer::Serve(const httplib::Request& request, httplib::Response& response,
                       const httplib::ContentReader* content, const Handler& handler) {
    WebAnswer answer = Answer(request, content, handler);
    Log(FMT_STRING("{}: {} {}: {} {}"), m_strName, request.method, request.path, answer.status,
        answer.status < 400 ? std::string() : answer.body.substr(0, 1000));
    const std::chrono::milliseconds wait =
        answer.fault.silent() ? kSilence : std::chrono::milliseconds(answer.fault.delayms());
    if (wait.count() > 0 && !Wait(wait)) {
        answer = Refusal(503, "server: it ends");
    }
    // The library would hold pieces back to compress them. Its object is not constant.
    const_cast<httplib::Request&>(request).headers.erase("Accept-Encoding");
    Write(answer, response);
}

void CWebServer::Write(const WebAnswer& answer, httplib::Response& response) {
    WriteHead(answer, response);
    if (answer.pieces.empty()) {
        WriteBody(answer, response);
        return;
    }
    response.set_chunked_content_provider(answer.type,
                                          [this, pieces = answer.pieces, delay = answer.pieceDelay, next = size_t(0)](
                                              size_t /*offset*/, httplib::DataSink& sink) mutable {
                                              if (next == pieces.size()) {
                                                  sink.done();
                                                  return true;
                                              }
                                              const std::string& piece = pieces[next++];
                                              return Wait(delay) && sink.write(piece.data(), piece.size());
                                          });
}

// Returns false if the server ends meanwhile.
bool CWebServer::Wait(std::chrono::milliseconds time) {
    std::unique_lock<std::mutex> lock(m_mutex);
    return !m_changed.wait_for(lock, time, [this] { return m_bStopping; });
}

WebAnswer CWebServer::Answer(const httplib::Request& request, const httplib::ContentReader* content,
                             const Handler& handler) {
    WebRequest wanted;
    wanted.method = request.method;
    wanted.path = request.path;
    wanted.matches.assign(std::next(request.matches.begin()), request.matches.end());
    wanted.headers = HeadersOf(request);
    if (request.has_param("after")) {
        wanted.after = request.get_param_value("after");
    }
    std::optional<WebAnswer> refusal;
    if (IsFromForeignPage(request)) {
        refusal = Refusal(403, "Origin: must be of this machine");
    } else if (m_fnAuthorizer) {
        refusal = m_fnAuthorizer(wanted);
    }
    // The body of a refused request is read as well: a client that still writes it would not see the answer.
    if (content && HasBody(request)) {
        if (request.is_multipart_form_data()) {
            return Refusal(400, "body: must be JSON, not a form");
        }
        const auto bodyRefusal = ReadBody(*content, !refusal, wanted.body);
        refusal = refusal ? refusal : bodyRefusal;
    }
    const size_t bytes = wanted.body.size();
    WebAnswer answer = refusal ? std::move(*refusal) : OnMainThread(std::move(wanted), handler);
    m_nBodyBytes -= bytes;
    return answer;
}

// Adds the bytes that it keeps to those of all requests. Returns a refusal, or nothing.
std::optional<WebAnswer> CWebServer::ReadBody(const httplib::ContentReader& content, bool keep, std::string& body) {
    size_t read = 0;
    const bool complete = content([&](const char* data, size_t length) {
        read += length;
        if (keep && m_nBodyBytes + length <= kMaxBodies * m_nMaxBodyBytes) {
            body.append(data, length);
            m_nBodyBytes += length;
        }
        return read <= m_nMaxBodyBytes;
    });
    if (!complete) {
        return Refusal(413, fmt::format(FMT_STRING("body: incomplete, or over {} bytes"), m_nMaxBodyBytes));
    }
    return body.size() == read ? std::nullopt : std::make_optional(Refusal(503, "body: others take all the memory"));
}

WebAnswer CWebServer::OnMainThread(WebRequest request, const Handler& handler) {
    // Shared with the main thread, which may run the handler after Stop() has ended the wait.
    const auto answer = std::make_shared<std::optional<WebAnswer>>();
    QMetaObject::invokeMethod(
        this,
        [this, request = std::move(request), handler, answer] {
            WebAnswer result;
            try {
                result = handler(request);
            } catch (const std::exception& exception) {
                result = Refusal(500, exception.what());
            }
            const std::lock_guard<std::mutex> lock(m_mutex);
            *answer = std::move(result);
            m_changed.notify_all();
        },
        Qt::QueuedConnection);
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [&] { return answer->has_value() || m_bStopping; });
    return answer->has_value() ? std::move(**answer) : Refusal(503, "server: it ends");
}

}  // namespace devserver
