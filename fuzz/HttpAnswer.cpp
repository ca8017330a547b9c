// An answer to an HTTP request, in pieces: one byte with their number, the length of each in turn, and the bytes of
// the answer. However it is cut up, the same is read.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "http/HttpAnswerReader.h"

namespace {

using EnState = CHttpAnswerReader::EnState;

constexpr uint64_t kMostBody = 100;
constexpr size_t kMostPieces = 16;

struct Outcome {
    EnState state = EnState::kReading;
    EnState ended = EnState::kReading;
    int status = 0;
    std::string location;
    std::string body;
};

Outcome Read(const std::string& bytes, const std::vector<size_t>& pieces, bool orderly) {
    CHttpAnswerReader reader(kMostBody);
    Outcome outcome;
    for (size_t at = 0, piece = 0; at < bytes.size(); ++piece) {
        const size_t count = std::min(pieces[piece % pieces.size()], bytes.size() - at);
        outcome.state = reader.Take(bytes.data() + at, count);
        EXPECT_LE(reader.Body().size(), kMostBody);
        at += count;
    }
    outcome.ended = reader.End(orderly);
    outcome.status = reader.Status();
    outcome.location = reader.Header("location");
    outcome.body = reader.Body();
    return outcome;
}

void CheckAlike(const Outcome& left, const Outcome& right) {
    EXPECT_EQ(left.state, right.state);
    EXPECT_EQ(left.ended, right.ended);
    EXPECT_EQ(left.status, right.status);
    EXPECT_EQ(left.location, right.location);
    // What is too large is given up at once, wherever a piece of it ends.
    if (left.ended != EnState::kTooLarge) {
        EXPECT_EQ(left.body, right.body);
    }
}

void CheckOutcome(const Outcome& outcome) {
    EXPECT_NE(outcome.ended, EnState::kReading);
    if (outcome.state != EnState::kReading) {
        EXPECT_EQ(outcome.ended, outcome.state);
    }
    if (outcome.ended == EnState::kWhole) {
        EXPECT_GE(outcome.status, 200);
        EXPECT_LE(outcome.status, 999);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const size_t count = size == 0 ? 0 : std::min<size_t>(data[0] % (kMostPieces + 1), size - 1);
    std::vector<size_t> pieces;
    for (size_t i = 1; i <= count; ++i) {
        pieces.push_back(std::max<size_t>(data[i], 1));
    }
    const size_t begin = std::min(size, count + 1);
    const std::string bytes(reinterpret_cast<const char*>(data) + begin, size - begin);
    const std::vector<size_t> whole{std::max<size_t>(bytes.size(), 1)};

    const Outcome outcome = Read(bytes, whole, true);
    CheckOutcome(outcome);
    CheckAlike(outcome, Read(bytes, {1}, true));
    if (!pieces.empty()) {
        CheckAlike(outcome, Read(bytes, pieces, true));
    }
    // A line that breaks never makes an answer whole that was not.
    const Outcome broken = Read(bytes, whole, false);
    CheckOutcome(broken);
    EXPECT_EQ(broken.state, outcome.state);
    EXPECT_EQ(broken.ended == EnState::kWhole, outcome.state == EnState::kWhole);
    return 0;
}
