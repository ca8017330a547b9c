#include "http/CurlLoop.h"

#include <QSocketNotifier>
#include <algorithm>

CCurlLoop::CCurlLoop() {
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { Act(CURL_SOCKET_TIMEOUT, 0); });
    m_endTimer.setSingleShot(true);
    connect(&m_endTimer, &QTimer::timeout, this, &CCurlLoop::ReportEnd);
}

CCurlLoop::~CCurlLoop() {
    curl_multi_cleanup(m_pMulti);
}

void CCurlLoop::Add(CURL* transfer, Done done) {
    // Initialising the library is left to the first request, because the start of the client does not need it.
    if (!m_pMulti) {
        curl_global_init(CURL_GLOBAL_DEFAULT);
        m_pMulti = curl_multi_init();
        curl_multi_setopt(m_pMulti, CURLMOPT_SOCKETFUNCTION, &CCurlLoop::OnSocketWatched);
        curl_multi_setopt(m_pMulti, CURLMOPT_SOCKETDATA, this);
        curl_multi_setopt(m_pMulti, CURLMOPT_TIMERFUNCTION, &CCurlLoop::OnTimerSet);
        curl_multi_setopt(m_pMulti, CURLMOPT_TIMERDATA, this);
    }
    m_listeners[transfer] = std::move(done);
    curl_multi_add_handle(m_pMulti, transfer);
}

void CCurlLoop::Remove(CURL* transfer) {
    m_listeners.erase(transfer);
    const auto ended =
        std::find_if(m_ended.begin(), m_ended.end(), [&](const auto& end) { return end.first == transfer; });
    if (ended != m_ended.end()) {
        m_ended.erase(ended);
    }
    curl_multi_remove_handle(m_pMulti, transfer);
}

int CCurlLoop::OnSocketWatched(CURL* /*transfer*/, curl_socket_t socket, int what, void* loop, void* /*watch*/) {
    auto* self = static_cast<CCurlLoop*>(loop);
    Watch& watch = self->m_watches[socket];
    self->SetNotifier(watch.read, socket, QSocketNotifier::Read, what == CURL_POLL_IN || what == CURL_POLL_INOUT);
    self->SetNotifier(watch.write, socket, QSocketNotifier::Write, what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
    if (what == CURL_POLL_REMOVE) {
        self->m_watches.erase(socket);
    }
    return 0;
}

// The notifier may be the one that called, so it is deleted later. Disabled, it no longer holds the socket.
void CCurlLoop::SetNotifier(std::unique_ptr<QSocketNotifier>& notifier, curl_socket_t socket, int event, bool wanted) {
    if (wanted && !notifier) {
        notifier = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Type(event));
        const int ready = event == QSocketNotifier::Read ? CURL_CSELECT_IN : CURL_CSELECT_OUT;
        connect(notifier.get(), &QSocketNotifier::activated, this, [this, socket, ready] { Act(socket, ready); });
    } else if (!wanted && notifier) {
        notifier->setEnabled(false);
        notifier->disconnect(this);
        notifier.release()->deleteLater();
    }
}

int CCurlLoop::OnTimerSet(CURLM* /*multi*/, long timeoutMs, void* loop) {
    QTimer& timer = static_cast<CCurlLoop*>(loop)->m_timer;
    if (timeoutMs < 0) {
        timer.stop();
    } else {
        timer.start(int(timeoutMs));
    }
    return 0;
}

void CCurlLoop::Act(curl_socket_t socket, int events) {
    int running = 0;
    curl_multi_socket_action(m_pMulti, socket, events, &running);
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(m_pMulti, &left)) {
        if (message->msg == CURLMSG_DONE) {
            m_ended.emplace_back(message->easy_handle, message->data.result);
            m_endTimer.start(0);
        }
    }
}

// A timer and not a queued call, which could wait for the end of an event loop that an earlier callback runs. One end
// at a time, and the timer is started first, because a callback may run an event loop or destroy this object.
void CCurlLoop::ReportEnd() {
    if (m_ended.empty()) {
        return;  // removed since
    }
    const auto [transfer, code] = m_ended.front();
    m_ended.pop_front();
    if (!m_ended.empty()) {
        m_endTimer.start(0);
    }
    const Done done = m_listeners.at(transfer);
    done(code);
}
