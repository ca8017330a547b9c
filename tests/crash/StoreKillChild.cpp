#include "StoreKillChild.h"

#include <unistd.h>

#include <cstring>
#include <random>

#include "store/SqliteStore.h"

namespace store_kill {
namespace {

constexpr size_t kHeadBytes = 2 * sizeof(uint64_t);

std::string BodyOf(uint64_t id) {
    std::mt19937_64 random(id);
    constexpr size_t sizes[] = {10, 100, 1000, 4096, 20'000, 65'536};
    const size_t maxBytes = sizes[random() % 6];
    std::string body(std::max<size_t>(10, maxBytes / 2 + random() % (maxBytes / 2 + 1)), '\0');
    for (size_t at = 0; at < body.size(); at += sizeof(uint64_t)) {
        const uint64_t part = random();
        std::memcpy(&body[at], &part, std::min(sizeof(part), body.size() - at));
    }
    return body;
}

// FNV-1a. It shows whether a value is intact.
uint64_t Checksum(const char* bytes, size_t count, uint64_t seed) {
    uint64_t sum = 14695981039346656037ULL ^ seed;
    for (size_t i = 0; i < count; ++i) {
        sum = (sum ^ uint8_t(bytes[i])) * 1099511628211ULL;
    }
    return sum;
}

}  // namespace

std::string ValueOf(uint64_t id) {
    const std::string body = BodyOf(id);
    const uint64_t head[] = {id, Checksum(body.data(), body.size(), id)};
    return std::string(reinterpret_cast<const char*>(head), sizeof(head)) + body;
}

uint64_t IdOf(const std::string& value) {
    if (value.size() < kHeadBytes) {
        return 0;
    }
    uint64_t head[2];
    std::memcpy(head, value.data(), sizeof(head));
    const bool whole = Checksum(value.data() + kHeadBytes, value.size() - kHeadBytes, head[0]) == head[1];
    return whole ? head[0] : 0;
}

int RunChild(const QString& path, uint64_t firstId, int pipe) {
    // Small limits, so that kills hit checkpoints and restarts of the log as often as plain writes.
    CheckpointOptions checkpoints;
    checkpoints.afterBytes = 200'000;
    checkpoints.maxBytes = 200'000;
    checkpoints.pause = std::chrono::milliseconds(1);
    checkpoints.restartBytes = 1'000'000;
    CSqliteStore store(path, checkpoints);
    for (uint64_t id = firstId;; ++id) {
        if (!store.SaveString(std::nullopt, KeyOf(id), ValueOf(id)) || write(pipe, &id, sizeof(id)) != sizeof(id)) {
            return 1;
        }
    }
}

}  // namespace store_kill
