#include "ConnectionThreadPool.h"

#include <thread>
#include <utility>

namespace devserver {

CConnectionThreadPool::~CConnectionThreadPool() {
    shutdown();
}

void CConnectionThreadPool::enqueue(std::function<void()> serve) {
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_left.wait(lock, [this] { return m_nRunning < kMaxThreads; });
        ++m_nRunning;
    }
    std::thread([this, serve = std::move(serve)] {
        serve();
        // Notifies under the lock: a waiting destructor may delete this object as soon as it is released.
        const std::lock_guard<std::mutex> lock(m_mutex);
        --m_nRunning;
        m_left.notify_all();
    }).detach();
}

void CConnectionThreadPool::shutdown() {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_left.wait(lock, [this] { return m_nRunning == 0; });
}

}  // namespace devserver
