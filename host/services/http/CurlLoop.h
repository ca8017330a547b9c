#pragma once

#include <curl/curl.h>

#include <QObject>
#include <QTimer>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <utility>

class QSocketNotifier;

/// Runs libcurl transfers on the event loop of its thread. It must outlive the transfers added to it.
class CCurlLoop : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void(CURLcode code)>;

    CCurlLoop();
    ~CCurlLoop() override;

    /// Starts `transfer`. When it has ended, `done` runs once, later, with no call of libcurl on the stack. The
    /// transfer stays added until Remove().
    void Add(CURL* transfer, Done done);

    /// Aborts `transfer` if it has not ended. `done` is not called from then on.
    void Remove(CURL* transfer);

private:
    struct Watch {
        std::unique_ptr<QSocketNotifier> read;
        std::unique_ptr<QSocketNotifier> write;
    };

    static int OnSocketWatched(CURL* transfer, curl_socket_t socket, int what, void* loop, void* watch);
    static int OnTimerSet(CURLM* multi, long timeoutMs, void* loop);
    void SetNotifier(std::unique_ptr<QSocketNotifier>& notifier, curl_socket_t socket, int event, bool wanted);
    void Act(curl_socket_t socket, int events);
    void ReportEnd();

    CURLM* m_pMulti = nullptr;
    QTimer m_timer;
    std::map<curl_socket_t, Watch> m_watches;
    std::map<CURL*, Done> m_listeners;
    std::deque<std::pair<CURL*, CURLcode>> m_ended;  // not reported yet
    QTimer m_endTimer;
};
