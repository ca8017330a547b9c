#pragma once

#include <QByteArray>
#include <optional>
#include <string>

#include "channel.pb.h"

/// Maximum size of a frame in both directions.
constexpr int kMaxFrameBytes = 4 * 1024 * 1024;

/// Decodes a frame of the server. Empty, with the reason, for other bytes, a kind that servers do not send, and
/// missing fields.
std::optional<channel::Frame> DecodeServerFrame(const QByteArray& bytes, std::string& reason);

QByteArray EncodeFrame(const channel::Frame& frame);
