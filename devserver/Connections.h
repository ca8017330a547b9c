#pragma once

#include <httplib.h>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace devserver {

/// A thread for each connection, up to a bound: one that is made to wait must keep nobody else waiting.
class CConnections : public httplib::TaskQueue {
public:
    static constexpr size_t kMost = 256;

    ~CConnections() override;

    void enqueue(std::function<void()> serve) override;

    /// Returns when the last connection has been served.
    void shutdown() override;

private:
    std::mutex m_mutex;
    std::condition_variable m_left;
    size_t m_nRunning = 0;
};

}  // namespace devserver
