#include "picture/ImageValidator.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>

#include "picture/SvgValidator.h"

namespace {

// The decoder renders a progressive JPEG once for each scan, and a scan needs only a few bytes.
constexpr int kMaxScans = 64;

// The chunk at the end of each PNG, with its checksum.
constexpr char kPngEnd[] = "IEND\xAE\x42\x60\x82";

/// Reads bytes in order. After the end it returns zeros and IsCut() is true.
class CReader {
public:
    CReader(const std::string& bytes, size_t from) : m_bytes(bytes), m_nAt(from) {}

    int Byte() {
        m_bCut = m_bCut || m_nAt >= m_bytes.size();
        return m_bCut ? 0 : static_cast<unsigned char>(m_bytes[m_nAt++]);
    }
    int Little16() {
        const int low = Byte();
        return low | Byte() << 8;
    }
    void Skip(int count) {
        m_bCut = m_bCut || size_t(count) > m_bytes.size() - m_nAt;
        m_nAt += m_bCut ? 0 : size_t(count);
    }
    bool IsCut() const { return m_bCut; }

private:
    const std::string& m_bytes;
    size_t m_nAt;
    bool m_bCut = false;
};

/// Coded pixels contain 0xFF only before a zero or a restart marker.
int NextJpegMarker(CReader& reader) {
    int previous = reader.Byte();
    while (!reader.IsCut()) {
        const int code = reader.Byte();
        const bool isRestart = code >= 0xD0 && code <= 0xD7;
        if (previous == 0xFF && code != 0 && code != 0xFF && !isRestart) {
            return code;
        }
        previous = code;
    }
    return 0;
}

// The library decodes a JPEG without its end and does not count scans.
bool HasJpegEnd(const std::string& bytes) {
    CReader reader(bytes, 2);
    int scans = 0;
    for (int code = NextJpegMarker(reader); !reader.IsCut(); code = NextJpegMarker(reader)) {
        if (code == 0xD9) {
            return scans > 0;
        }
        scans += code == 0xDA ? 1 : 0;
        const int length = reader.Byte() << 8 | reader.Byte();
        if (scans > kMaxScans || length < 2) {
            return false;
        }
        reader.Skip(length - 2);
    }
    return false;
}

void SkipGifBlocks(CReader& reader) {
    for (int length = reader.Byte(); length != 0; length = reader.Byte()) {
        reader.Skip(length);
    }
}

void SkipGifColors(CReader& reader, int flags) {
    reader.Skip((flags & 0x80) != 0 ? 3 << ((flags & 7) + 1) : 0);
}

// The library decodes a GIF without its end. The walk to the end passes all frames, so it also counts them and their
// extent, and stops at the limit.
bool HasGifEnd(const std::string& bytes, int maxFrames, ImageInfo& info) {
    CReader reader(bytes, 6);
    const int width = reader.Little16();
    info.size = QSize(width, reader.Little16());
    info.frames = 0;
    const int flags = reader.Byte();
    reader.Skip(2);
    SkipGifColors(reader, flags);
    while (!reader.IsCut() && info.frames <= maxFrames) {
        const int block = reader.Byte();
        if (block == 0x2C) {
            ++info.frames;
            const int left = reader.Little16();
            const int top = reader.Little16();
            const int right = left + reader.Little16();
            info.size = info.size.expandedTo(QSize(right, top + reader.Little16()));
            SkipGifColors(reader, reader.Byte());
        } else if (block != 0x21) {
            return block == 0x3B && info.frames > 0;
        }
        reader.Skip(1);
        SkipGifBlocks(reader);
    }
    return info.frames > maxFrames;
}

QSize SizeInHeader(const std::string& bytes, EnImageFormat format) {
    auto raw = QByteArray::fromRawData(bytes.data(), int(bytes.size()));
    QBuffer buffer(&raw);
    QImageReader reader(&buffer, image_validator::FormatName(format));
    reader.setAutoDetectImageFormat(false);
    return reader.size();
}

bool Read(const std::string& bytes, const ImageLimits& limits, ImageInfo& info, std::string& reason) {
    switch (info.format) {
        case EnImageFormat::kPng:
            info.size = SizeInHeader(bytes, info.format);
            return !info.size.isEmpty() && bytes.find(kPngEnd) != std::string::npos;
        case EnImageFormat::kJpeg:
            info.size = SizeInHeader(bytes, info.format);
            return !info.size.isEmpty() && HasJpegEnd(bytes);
        case EnImageFormat::kGif:
            return HasGifEnd(bytes, limits.frames, info) && !info.size.isEmpty();
        case EnImageFormat::kSvg:
            return svg_validator::IsHarmless(bytes, reason);
    }
    return false;
}

std::optional<EnImageFormat> FormatOf(const std::string& bytes) {
    const auto beginsWith = [&bytes](const char* text) { return bytes.rfind(text, 0) == 0; };
    if (beginsWith("\x89PNG\r\n\x1A\n")) {
        return EnImageFormat::kPng;
    }
    if (beginsWith("\xFF\xD8\xFF")) {
        return EnImageFormat::kJpeg;
    }
    if (beginsWith("GIF87a") || beginsWith("GIF89a")) {
        return EnImageFormat::kGif;
    }
    return svg_validator::LooksLikeSvg(bytes) ? std::make_optional(EnImageFormat::kSvg) : std::nullopt;
}

}  // namespace

const char* image_validator::FormatName(EnImageFormat format) {
    static constexpr const char* kNames[] = {"png", "jpeg", "gif", "svg"};
    return kNames[int(format)];
}

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
    ImageInfo info;
    info.format = *format;
    reason = "it is cut or garbled";
    if (!Read(bytes, limits, info, reason)) {
        return std::nullopt;
    }
    if (qint64(info.size.width()) * info.size.height() > limits.pixels) {
        reason = "it has too many pixels";
        return std::nullopt;
    }
    if (info.frames > limits.frames) {
        reason = "it has too many frames";
        return std::nullopt;
    }
    return info;
}
