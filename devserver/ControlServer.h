#pragma once

#include <QObject>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "ControlApi.h"

namespace httplib {
class ContentReader;
class Server;
struct Request;
struct Response;
}  // namespace httplib

namespace devserver {

/// The control interface's HTTP on loopback: who may ask, how much, and the way to the main thread, where
/// `handler` runs. Made, started and stopped on the main thread.
class CControlServer : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<ControlAnswer(const ControlRequest&)>;

    static constexpr size_t kMaxBodyBytes = 8 * 1024 * 1024;

    CControlServer(std::string token, Handler handler);
    ~CControlServer() override;

    /// 0 takes any free port. False, with the reason in `error`, if the port is not to be had.
    bool Listen(quint16 port, std::string& error);
    quint16 Port() const { return m_nPort; }

    /// Requests that wait for the main thread are answered by 503. Takes as long as the slowest client that
    /// is in the middle of a request may, two seconds.
    void Stop();

private:
    void Serve(const httplib::Request& request, httplib::Response& response, const httplib::ContentReader* content);
    ControlAnswer Answer(const httplib::Request& request, const httplib::ContentReader* content);
    ControlAnswer OnMainThread(const ControlRequest& request);

    const std::string m_strToken;
    const Handler m_fnHandler;
    std::unique_ptr<httplib::Server> m_pServer;
    std::thread m_thread;
    std::atomic<bool> m_bEnded{false};
    quint16 m_nPort = 0;
    std::mutex m_mutex;
    std::condition_variable m_answered;
    bool m_bStopping = false;
};

}  // namespace devserver
