#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

namespace devserver {

/// One frame that a client sent.
struct ReceivedFrame {
    uint64_t number = 0;  // from 1 upwards, without gaps
    uint64_t connection = 0;
    uint64_t user = 0;  // who is logged in, or wants to be; 0 for nobody
    std::string kind;   // LOGIN, LOGOUT, LANGUAGE or REQUEST
    uint32_t command = 0;
    uint64_t session = 0;
    std::string body;
    std::optional<int32_t> language;  // that the frame names
};

/// The last frames that came in, bounded in number and in the bytes of their bodies.
class CReceivedLog {
public:
    static constexpr size_t kMaxFrames = 10'000;
    static constexpr size_t kMaxBytes = 64 * 1024 * 1024;

    /// Numbers the frame and keeps it, at the cost of the oldest.
    void Add(ReceivedFrame frame);

    const std::deque<ReceivedFrame>& Frames() const { return m_frames; }

private:
    std::deque<ReceivedFrame> m_frames;
    uint64_t m_nAdded = 0;
    size_t m_nBytes = 0;
};

}  // namespace devserver
