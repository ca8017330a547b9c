#include "ConnectionThreadPool.h"

#include <chrono>
#include <thread>
#include <utility>

namespace devserver {
namespace {

constexpr std::chrono::milliseconds kCutInterval{50};

}  // namespace

CConnectionThreadPool::~CConnectionThreadPool() {
    shutdown();
}

void CConnectionThreadPool::enqueue(std::function<void()> serve) {
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (m_nRunning == kMaxThreads) {
            m_connections.CutOldest();
            // A thread that waits for a handler does not notice that its connection is cut.
            m_left.wait_for(lock, kCutInterval, [this] { return m_nRunning < kMaxThreads; });
        }
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
