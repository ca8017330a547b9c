#include "Connections.h"

#include <sys/socket.h>

#include <algorithm>

namespace devserver {

void CConnections::Add(int socket) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_sockets.push_back(socket);
    if (!m_bReading) {
        shutdown(socket, SHUT_RD);
    }
}

void CConnections::Remove(int socket) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_sockets.erase(std::remove(m_sockets.begin(), m_sockets.end(), socket), m_sockets.end());
}

void CConnections::CutOldest() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_sockets.empty()) {
        shutdown(m_sockets.front(), SHUT_RDWR);
        m_sockets.erase(m_sockets.begin());
    }
}

void CConnections::StopReading() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bReading = false;
    for (const int socket : m_sockets) {
        shutdown(socket, SHUT_RD);
    }
}

}  // namespace devserver
