#include "picture/PngChunks.h"

#include <string_view>

namespace {

constexpr size_t kSignatureBytes = 8;
constexpr size_t kFrameBytes = 12;  // length, type and checksum of a chunk
constexpr size_t kHeaderBytes = 13;
constexpr size_t kDepthAt = kSignatureBytes + 16;

constexpr std::string_view kKey = "tRNS";

size_t Big32(const std::string& bytes, size_t at) {
    size_t number = 0;
    for (size_t i = 0; i < 4; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return number;
}

bool IsHeader(std::string_view type, size_t at, size_t length) {
    return type == "IHDR" && at == kSignatureBytes && length == kHeaderBytes;
}

}  // namespace

std::string png_chunks::Essential(const std::string& bytes) {
    std::string essential = bytes.substr(0, kSignatureBytes);
    size_t at = kSignatureBytes;
    bool hasPalette = false;
    bool hasKey = false;
    while (at + kFrameBytes <= bytes.size()) {
        const size_t length = Big32(bytes, at);
        const std::string_view type = std::string_view(bytes).substr(at + 4, 4);
        if (length > bytes.size() - at - kFrameBytes || (at == kSignatureBytes && !IsHeader(type, at, length))) {
            return {};
        }
        // The decoder writes a warning for each repeated one.
        const bool isRepeated = (type == "PLTE" && hasPalette) || (type == kKey && hasKey);
        if (type == "IHDR" || type == "IDAT" || type == "IEND" || ((type == "PLTE" || type == kKey) && !isRepeated)) {
            essential.append(bytes, at, kFrameBytes + length);
        }
        hasPalette = hasPalette || type == "PLTE";
        hasKey = hasKey || type == kKey;
        at += kFrameBytes + length;
        if (type == "IEND") {
            return essential;
        }
    }
    return {};
}

png_chunks::PixelKind png_chunks::PixelKindOf(const std::string& essential) {
    PixelKind kind;
    kind.depth = essential[kDepthAt];
    kind.colorType = essential[kDepthAt + 1];
    size_t at = kSignatureBytes;
    while (!kind.hasKey && at + kFrameBytes <= essential.size()) {
        kind.hasKey = std::string_view(essential).substr(at + 4, 4) == kKey;
        at += kFrameBytes + Big32(essential, at);
    }
    return kind;
}
