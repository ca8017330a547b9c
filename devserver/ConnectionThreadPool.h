#pragma once

#include <httplib.h>

#include <condition_variable>
#include <functional>
#include <mutex>

#include "Connections.h"

namespace devserver {

/// One thread per connection, up to a maximum. A connection that waits does not block the others. At the maximum the
/// oldest connection is cut for a new one, so that no client can hold all threads.
class CConnectionThreadPool : public httplib::TaskQueue {
public:
    static constexpr size_t kMaxThreads = 256;

    /// `connections` must outlive this object.
    explicit CConnectionThreadPool(CConnections& connections) : m_connections(connections) {}
    ~CConnectionThreadPool() override;

    /// Blocks until a thread is free.
    void enqueue(std::function<void()> serve) override;

    /// Returns when all connections are served.
    void shutdown() override;

private:
    CConnections& m_connections;
    std::mutex m_mutex;
    std::condition_variable m_left;
    size_t m_nRunning = 0;
};

}  // namespace devserver
