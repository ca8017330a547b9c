#include "ChannelClient.h"

#include <QNetworkRequest>
#include <algorithm>

#include "support/RealTime.h"

using channel::Frame;

ChannelClient::ChannelClient(quint16 port, const std::string& token, const QString& origin) : m_socket(origin) {
    QObject::connect(&m_socket, &QWebSocket::connected, &m_socket, [this] { m_bConnected = true; });
    QObject::connect(&m_socket, &QWebSocket::disconnected, &m_socket, [this] { m_bClosed = true; });
    QObject::connect(&m_socket, &QWebSocket::binaryMessageReceived, &m_socket, [this](const QByteArray& bytes) {
        Frame frame;
        if (frame.ParseFromArray(bytes.data(), bytes.size())) {
            m_frames.push_back(frame);
        }
    });
    QNetworkRequest request(QUrl(QStringLiteral("ws://127.0.0.1:%1").arg(port)));
    request.setRawHeader("x-zr-token", QByteArray::fromStdString(token));
    m_socket.open(request);
}

bool ChannelClient::Has(Frame::Kind kind) const {
    return std::any_of(m_frames.begin(), m_frames.end(), [&](const Frame& frame) { return frame.kind() == kind; });
}

std::optional<Frame> ChannelClient::Take(Frame::Kind kind) {
    if (!WaitInRealTime([&] { return Has(kind); })) {
        return std::nullopt;
    }
    const auto found =
        std::find_if(m_frames.begin(), m_frames.end(), [&](const Frame& frame) { return frame.kind() == kind; });
    const Frame frame = *found;
    m_frames.erase(found);
    return frame;
}

void ChannelClient::Send(const Frame& frame) {
    SendBytes(frame.SerializeAsString());
}

void ChannelClient::SendBytes(const std::string& bytes) {
    m_socket.sendBinaryMessage(QByteArray::fromStdString(bytes));
}

void ChannelClient::SendText(const QString& text) {
    m_socket.sendTextMessage(text);
}

std::optional<channel::LoginAnswer> ChannelClient::Login(uint64_t user) {
    Frame frame;
    frame.set_kind(Frame::LOGIN);
    frame.mutable_login()->set_user_id(user);
    frame.mutable_login()->set_device_id("device");
    Send(frame);
    const auto answer = Take(Frame::LOGIN_ANSWER);
    return answer ? std::optional<channel::LoginAnswer>(answer->login_answer()) : std::nullopt;
}

void ChannelClient::SendRequest(uint64_t session, uint32_t command, const std::string& body) {
    Frame frame;
    frame.set_kind(Frame::REQUEST);
    frame.set_session(session);
    frame.set_command(command);
    frame.set_body(body);
    Send(frame);
}

std::optional<Frame> ChannelClient::Request(uint64_t session, uint32_t command, const std::string& body) {
    SendRequest(session, command, body);
    return Take(Frame::REPLY);
}

bool ChannelClient::WaitUntilConnected() {
    return WaitInRealTime([this] { return m_bConnected; });
}

bool ChannelClient::WaitUntilClosed() {
    return WaitInRealTime([this] { return m_bClosed; });
}
