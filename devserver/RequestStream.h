#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <string>

namespace devserver {

/// A connection with one request. The library limits neither the time of a whole request, nor its header lines: beyond
/// either limit this stream reports the end of the connection. Does not own the socket.
class CRequestStream : public httplib::Stream {
public:
    /// Limit of the request line, the header lines and the lines between the chunks of a body, in all.
    static constexpr size_t kMaxLineBytes = 32 * 1024;

    /// The whole request must arrive within `time`. Each read and write waits at most `patience`.
    CRequestStream(int socket, std::chrono::milliseconds time, std::chrono::milliseconds patience);

    bool is_readable() const override;
    bool is_writable() const override;
    ssize_t read(char* to, size_t size) override;
    ssize_t write(const char* from, size_t size) override;
    void get_remote_ip_and_port(std::string& /*address*/, int& /*port*/) const override {}
    void get_local_ip_and_port(std::string& /*address*/, int& /*port*/) const override {}
    socket_t socket() const override { return m_nSocket; }

private:
    const int m_nSocket;
    const std::chrono::steady_clock::time_point m_end;
    const std::chrono::milliseconds m_patience;
    std::array<char, 16 * 1024> m_buffer{};
    size_t m_nNext = 0;  // in the buffer
    size_t m_nFilled = 0;
    size_t m_nLineBytes = 0;
};

}  // namespace devserver
