#pragma once

#include <QByteArray>
#include <optional>
#include <string>

#include "channel.pb.h"

/// The largest frame that either side sends.
constexpr int kMaxFrameBytes = 4 * 1024 * 1024;

/// A frame from the server. Empty, with the reason, on bytes that are no envelope, and on one of a kind that
/// a server does not send or without what its kind must have.
std::optional<channel::Frame> DecodeServerFrame(const QByteArray& bytes, std::string& reason);

QByteArray EncodeFrame(const channel::Frame& frame);
