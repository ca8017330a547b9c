#include "RequestStream.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

namespace devserver {
namespace {

using std::chrono::milliseconds;

bool IsReady(int socket, short events, milliseconds wait) {
    pollfd entry{socket, events, 0};
    int ready = 0;
    do {
        ready = poll(&entry, 1, int(std::max(wait, milliseconds(0)).count()));
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

}  // namespace

CRequestStream::CRequestStream(int socket, milliseconds time, milliseconds patience)
    : m_nSocket(socket), m_end(std::chrono::steady_clock::now() + time), m_patience(patience) {}

bool CRequestStream::is_readable() const {
    const auto left = std::chrono::duration_cast<milliseconds>(m_end - std::chrono::steady_clock::now());
    return m_nNext < m_nFilled || (left.count() > 0 && IsReady(m_nSocket, POLLIN, std::min(left, m_patience)));
}

bool CRequestStream::is_writable() const {
    return IsReady(m_nSocket, POLLOUT, m_patience);
}

ssize_t CRequestStream::read(char* to, size_t size) {
    // The library reads lines byte by byte, and a body in larger pieces.
    if (size == 1 && ++m_nLineBytes > kMaxLineBytes) {
        return -1;
    }
    if (m_nNext == m_nFilled) {
        const ssize_t count = is_readable() ? recv(m_nSocket, m_buffer.data(), m_buffer.size(), 0) : -1;
        if (count <= 0) {
            return count;
        }
        m_nNext = 0;
        m_nFilled = size_t(count);
    }
    const size_t count = std::min(size, m_nFilled - m_nNext);
    std::copy_n(m_buffer.begin() + m_nNext, count, to);
    m_nNext += count;
    return ssize_t(count);
}

ssize_t CRequestStream::write(const char* from, size_t size) {
    return is_writable() ? send(m_nSocket, from, size, MSG_NOSIGNAL | MSG_DONTWAIT) : -1;
}

}  // namespace devserver
