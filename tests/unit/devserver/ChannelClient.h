#pragma once

#include <QWebSocket>
#include <optional>
#include <string>
#include <vector>

#include "channel.pb.h"

/// A client of the command channel. Frames are kept until the test takes them.
class ChannelClient {
public:
    ChannelClient(quint16 port, const std::string& token, const QString& origin = {});

    /// Waits for the first frame of the kind and removes it. Returns nothing on a timeout.
    std::optional<channel::Frame> Take(channel::Frame::Kind kind);

    bool Has(channel::Frame::Kind kind) const;

    void Send(const channel::Frame& frame);
    void SendBytes(const std::string& bytes);
    void SendText(const QString& text);

    std::optional<channel::LoginAnswer> Login(uint64_t user);
    void SendRequest(uint64_t session, uint32_t command, const std::string& body = {});
    std::optional<channel::Frame> Request(uint64_t session, uint32_t command, const std::string& body = {});

    bool WaitUntilConnected();
    bool WaitUntilClosed();
    bool WasConnected() const { return m_bConnected; }
    int CloseCode() const { return int(m_socket.closeCode()); }

private:
    QWebSocket m_socket;
    std::vector<channel::Frame> m_frames;
    bool m_bConnected = false;
    bool m_bClosed = false;
};
