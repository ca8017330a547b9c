#pragma once

#include <httplib.h>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace devserver {

/// One thread per connection, up to a maximum. A connection that waits does not block the others.
class CConnectionThreadPool : public httplib::TaskQueue {
public:
    static constexpr size_t kMaxThreads = 256;

    ~CConnectionThreadPool() override;

    /// Blocks while the maximum is reached.
    void enqueue(std::function<void()> serve) override;

    /// Returns when all connections are served.
    void shutdown() override;

private:
    std::mutex m_mutex;
    std::condition_variable m_left;
    size_t m_nRunning = 0;
};

}  // namespace devserver
