#include "Connections.h"

#include <thread>
#include <utility>

namespace devserver {

CConnections::~CConnections() {
    shutdown();
}

void CConnections::enqueue(std::function<void()> serve) {
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_left.wait(lock, [this] { return m_nRunning < kMost; });
        ++m_nRunning;
    }
    std::thread([this, serve = std::move(serve)] {
        serve();
        // Told under the lock: who waits may take this object away as soon as it is released.
        const std::lock_guard<std::mutex> lock(m_mutex);
        --m_nRunning;
        m_left.notify_all();
    }).detach();
}

void CConnections::shutdown() {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_left.wait(lock, [this] { return m_nRunning == 0; });
}

}  // namespace devserver
