#include "channel/FrameCodec.h"

namespace {

bool IsComplete(const channel::Frame& frame, std::string& reason) {
    switch (frame.kind()) {
        case channel::Frame::LOGIN_ANSWER:
            reason = "a login answer without session or content";
            return frame.has_session() && frame.has_login_answer();
        case channel::Frame::REPLY:
            reason = "a reply without session or command";
            return frame.has_session() && frame.has_command();
        case channel::Frame::PUSH:
            reason = "a push without a command";
            return frame.has_command() && frame.command() <= 0xFFFF;
        case channel::Frame::CONFIG:
            reason = "a configuration without a body";
            return frame.has_body();
        case channel::Frame::LINKS:
            reason = "a link table without a body";
            return frame.has_body();
        case channel::Frame::CLOCK:
            reason = "a clock without a time";
            return frame.has_server_time_ms();
        case channel::Frame::LOGIN:
        case channel::Frame::LOGOUT:
        case channel::Frame::REQUEST:
        case channel::Frame::LANGUAGE:
            reason = "a kind that only clients send";
            return false;
    }
    return false;
}

}  // namespace

std::optional<channel::Frame> DecodeServerFrame(const QByteArray& bytes, std::string& reason) {
    channel::Frame frame;
    if (!frame.ParseFromArray(bytes.constData(), bytes.size())) {
        reason = "no envelope";
        return std::nullopt;
    }
    // An unknown kind is kept among the unknown fields.
    if (!frame.has_kind()) {
        reason = "an unknown kind";
        return std::nullopt;
    }
    if (!IsComplete(frame, reason)) {
        return std::nullopt;
    }
    reason.clear();
    return frame;
}

QByteArray EncodeFrame(const channel::Frame& frame) {
    QByteArray bytes(int(frame.ByteSizeLong()), Qt::Uninitialized);
    frame.SerializeToArray(bytes.data(), bytes.size());
    return bytes;
}
