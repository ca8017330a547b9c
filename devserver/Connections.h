#pragma once

#include <cstddef>
#include <mutex>
#include <vector>

namespace devserver {

/// The open connections of a server, the oldest first. Callable from any thread. The owner of a socket removes it
/// before closing it.
class CConnections {
public:
    void Add(int socket);
    void Remove(int socket);

    /// Shuts the oldest one down and forgets it.
    void CutOldest();

    /// Ends the reading of all, now and later. Answers are still written.
    void StopReading();

private:
    std::mutex m_mutex;
    std::vector<int> m_sockets;
    bool m_bReading = true;
};

}  // namespace devserver
