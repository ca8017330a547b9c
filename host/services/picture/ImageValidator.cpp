#include "picture/ImageValidator.h"

#include <algorithm>

#include "picture/SvgValidator.h"

namespace {

// A progressive picture is painted once for each of its scans, and a scan costs a few bytes.
constexpr int kMostScans = 64;

constexpr char kNotWhole[] = "it is cut or garbled";

/// Reads on from the beginning; beyond the end there are zeros, and Cut tells.
class CReader {
public:
    explicit CReader(const std::string& bytes) : m_bytes(bytes) {}

    int Byte() {
        if (m_nAt >= m_bytes.size()) {
            m_bCut = true;
            return 0;
        }
        return static_cast<unsigned char>(m_bytes[m_nAt++]);
    }
    int Little16() {
        const int low = Byte();
        return low | Byte() << 8;
    }
    int Big16() {
        const int high = Byte();
        return high << 8 | Byte();
    }
    uint32_t Big32() {
        const auto high = uint32_t(Big16());
        return high << 16 | uint32_t(Big16());
    }
    std::string Text(size_t count) {
        const std::string text = m_bytes.substr(std::min(m_nAt, m_bytes.size()), count);
        Skip(count);
        return text;
    }
    void Skip(size_t count) {
        m_bCut = m_bCut || count > m_bytes.size() - m_nAt;
        m_nAt += std::min(count, m_bytes.size() - m_nAt);
    }
    bool Cut() const { return m_bCut; }

private:
    const std::string& m_bytes;
    size_t m_nAt = 0;
    bool m_bCut = false;
};

bool BeginsWith(const std::string& bytes, const char* text, size_t length) {
    return bytes.compare(0, length, text, length) == 0;
}

/// From the head to the end of the last part; the parts' content is the decoder's affair.
bool ReadPng(CReader& reader, ImageInfo& facts) {
    reader.Skip(8);
    bool hasPixels = false;
    for (bool first = true; !reader.Cut(); first = false) {
        const uint32_t length = reader.Big32();
        const std::string type = reader.Text(4);
        if (first != (type == "IHDR") || length > 0x7FFFFFFF) {
            return false;
        }
        if (first) {
            const uint32_t width = reader.Big32();
            const uint32_t height = reader.Big32();
            if (length != 13 || width > 0x7FFFFFFF || height > 0x7FFFFFFF) {
                return false;
            }
            facts.size = QSize(int(width), int(height));
            reader.Skip(5 + 4);
            continue;
        }
        hasPixels = hasPixels || type == "IDAT";
        reader.Skip(size_t(length) + 4);
        if (type == "IEND") {
            return hasPixels && !reader.Cut();
        }
    }
    return false;
}

/// To the marker after the coded pixels, which hold none; its code.
int SkipPixels(CReader& reader) {
    while (!reader.Cut()) {
        if (reader.Byte() != 0xFF) {
            continue;
        }
        int code = reader.Byte();
        while (code == 0xFF && !reader.Cut()) {
            code = reader.Byte();
        }
        const bool isRestart = code >= 0xD0 && code <= 0xD7;
        if (code != 0 && !isRestart) {
            return code;
        }
    }
    return 0;
}

int NextMarker(CReader& reader) {
    if (reader.Byte() != 0xFF) {
        return 0;
    }
    int code = reader.Byte();
    while (code == 0xFF && !reader.Cut()) {
        code = reader.Byte();
    }
    return code;
}

bool IsFrameHead(int code) {
    return code >= 0xC0 && code <= 0xCF && code != 0xC4 && code != 0xC8 && code != 0xCC;
}

bool ReadJpeg(CReader& reader, ImageInfo& facts) {
    reader.Skip(2);
    int scans = 0;
    int code = NextMarker(reader);
    while (code != 0 && !reader.Cut()) {
        if (code == 0xD9) {
            return scans > 0 && !facts.size.isEmpty();
        }
        const int length = reader.Big16();
        if (length < 2) {
            return false;
        }
        if (IsFrameHead(code)) {
            if (length < 8 || !facts.size.isEmpty()) {
                return false;
            }
            reader.Skip(1);
            const int height = reader.Big16();
            facts.size = QSize(reader.Big16(), height);
            reader.Skip(size_t(length) - 7);
        } else {
            reader.Skip(size_t(length) - 2);
        }
        if (code == 0xDA && ++scans > kMostScans) {
            return false;
        }
        code = code == 0xDA ? SkipPixels(reader) : NextMarker(reader);
    }
    return false;
}

void SkipGifBlocks(CReader& reader) {
    for (int length = reader.Byte(); length != 0 && !reader.Cut(); length = reader.Byte()) {
        reader.Skip(size_t(length));
    }
}

void SkipGifColors(CReader& reader, int flags) {
    if ((flags & 0x80) != 0) {
        reader.Skip(size_t(3) << ((flags & 7) + 1));
    }
}

/// Stops where there are more frames than the limit, however many follow.
bool ReadGif(CReader& reader, ImageInfo& facts, int mostFrames) {
    reader.Skip(6);
    const int width = reader.Little16();
    facts.size = QSize(width, reader.Little16());
    const int flags = reader.Byte();
    reader.Skip(2);
    SkipGifColors(reader, flags);
    facts.frames = 0;
    while (!reader.Cut()) {
        const int block = reader.Byte();
        if (block == 0x21) {
            reader.Skip(1);
            SkipGifBlocks(reader);
        } else if (block == 0x2C) {
            const int left = reader.Little16();
            const int top = reader.Little16();
            const int right = left + reader.Little16();
            facts.size = facts.size.expandedTo(QSize(right, top + reader.Little16()));
            SkipGifColors(reader, reader.Byte());
            reader.Skip(1);
            SkipGifBlocks(reader);
            if (++facts.frames > mostFrames) {
                return true;
            }
        } else {
            return block == 0x3B && facts.frames > 0 && !reader.Cut();
        }
    }
    return false;
}

bool Read(const std::string& bytes, const ImageLimits& limits, ImageInfo& facts, std::string& reason) {
    CReader reader(bytes);
    switch (facts.format) {
        case EnImageFormat::kPng:
            return ReadPng(reader, facts);
        case EnImageFormat::kJpeg:
            return ReadJpeg(reader, facts);
        case EnImageFormat::kGif:
            return ReadGif(reader, facts, limits.frames);
        case EnImageFormat::kSvg:
            return svg_validator::IsHarmless(bytes, reason);
    }
    return false;
}

std::optional<EnImageFormat> FormatOf(const std::string& bytes) {
    if (BeginsWith(bytes, "\x89PNG\r\n\x1A\n", 8)) {
        return EnImageFormat::kPng;
    }
    if (BeginsWith(bytes, "\xFF\xD8\xFF", 3)) {
        return EnImageFormat::kJpeg;
    }
    if (BeginsWith(bytes, "GIF87a", 6) || BeginsWith(bytes, "GIF89a", 6)) {
        return EnImageFormat::kGif;
    }
    if (svg_validator::LooksLikeSvg(bytes)) {
        return EnImageFormat::kSvg;
    }
    return std::nullopt;
}

}  // namespace

std::optional<ImageInfo> image_validator::Validate(const std::string& bytes, const ImageLimits& limits,
                                                   std::string& reason) {
    if (bytes.size() > size_t(limits.bytes)) {
        reason = "it is too large";
        return std::nullopt;
    }
    const auto format = FormatOf(bytes);
    if (!format) {
        reason = "it is no picture";
        return std::nullopt;
    }
    ImageInfo facts;
    facts.format = *format;
    reason = kNotWhole;
    if (!Read(bytes, limits, facts, reason)) {
        return std::nullopt;
    }
    if (facts.format == EnImageFormat::kSvg) {
        return facts;
    }
    if (facts.size.isEmpty()) {
        return std::nullopt;
    }
    if (qint64(facts.size.width()) * facts.size.height() > limits.pixels) {
        reason = "it has too many pixels";
        return std::nullopt;
    }
    if (facts.frames > limits.frames) {
        reason = "it has too many frames";
        return std::nullopt;
    }
    return facts;
}
