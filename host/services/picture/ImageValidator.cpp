#include "picture/ImageValidator.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>

#include "picture/PngChunks.h"

namespace {

constexpr char kGarbled[] = "it is cut or garbled";

constexpr int kMaxScans = 64;
// Each scan passes all pixels, and needs only a few bytes.
constexpr qint64 kMaxScannedPixels = 400'000'000;

/// Reads bytes in order. After the end it returns zeros and IsCut() is true.
class CReader {
public:
    CReader(const std::string& bytes, size_t from) : m_bytes(bytes), m_nAt(from) {}

    int Byte() {
        m_bCut = m_bCut || m_nAt >= m_bytes.size();
        return m_bCut ? 0 : static_cast<unsigned char>(m_bytes[m_nAt++]);
    }
    int Big16() {
        const int high = Byte();
        return high << 8 | Byte();
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

bool IsJpegFrame(int code) {
    return code >= 0xC0 && code <= 0xCF && code != 0xC4 && code != 0xC8 && code != 0xCC;
}

bool IsProgressive(int code) {
    return (code & 3) == 2;
}

/// The components of a JPEG, and how its scans hold them.
struct JpegLayout {
    int components = 0;
    double samples = 0;       // per pixel
    bool isBuffered = false;  // the decoder keeps all coefficients
    int scans = 0;
};

void ReadJpegFrame(CReader& reader, int code, int length, JpegLayout& layout) {
    constexpr int kHeadBytes = 6;
    constexpr int kComponentBytes = 3;
    reader.Skip(kHeadBytes - 1);
    layout.components = reader.Byte();
    layout.isBuffered = layout.isBuffered || IsProgressive(code);
    int total = 0;
    int widest = 1;
    int highest = 1;
    for (int i = 0; i < layout.components; ++i) {
        reader.Skip(1);
        const int factors = reader.Byte();
        reader.Skip(1);
        widest = std::max(widest, factors >> 4);
        highest = std::max(highest, factors & 0xF);
        total += (factors >> 4) * (factors & 0xF);
    }
    layout.samples = double(total) / (widest * highest);
    reader.Skip(std::max(0, length - kHeadBytes - kComponentBytes * layout.components));
}

// The library decodes a JPEG without its end and does not count scans.
bool ReadJpegLayout(const std::string& bytes, JpegLayout& layout) {
    constexpr int kTemporary = 0x01;  // without a length
    CReader reader(bytes, 2);
    for (int code = NextJpegMarker(reader); !reader.IsCut(); code = NextJpegMarker(reader)) {
        if (code == 0xD9) {
            return layout.scans > 0;
        }
        if (code == kTemporary) {
            continue;
        }
        const int length = reader.Big16() - 2;
        if (length < 0) {
            return false;
        }
        if (IsJpegFrame(code)) {
            ReadJpegFrame(reader, code, length, layout);
        } else if (code == 0xDA) {
            ++layout.scans;
            layout.isBuffered = layout.isBuffered || reader.Byte() < layout.components;
            reader.Skip(std::max(0, length - 1));
        } else {
            reader.Skip(length);
        }
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

qint64 Area(const QSize& size) {
    return qint64(size.width()) * size.height();
}

/// Returns why the image is invalid; empty if it is valid so far.
std::string ReadPng(const std::string& bytes, ImageInfo& info) {
    constexpr int kColors = 2;
    constexpr int kGrey = 0;
    constexpr int kDeep = 16;
    const std::string essential = png_chunks::Essential(bytes);
    info.size = essential.empty() ? QSize() : SizeInHeader(essential, info.format);
    if (info.size.isEmpty()) {
        return kGarbled;
    }
    const auto kind = png_chunks::PixelKindOf(essential);
    if (kind.depth == kDeep && kind.colorType == kColors && kind.hasKey) {
        // The library would leave pixels uninitialised.
        return "it has a transparent colour of 16 bits";
    }
    // The decoded pixels, and their 32-bit copy where their format is another one.
    info.memory = Area(info.size) * (kind.depth == kDeep && kind.colorType != kGrey ? 8 + 4 : 2 + 4);
    return {};
}

std::string ReadJpeg(const std::string& bytes, ImageInfo& info) {
    JpegLayout layout;
    info.size = SizeInHeader(bytes, info.format);
    if (info.size.isEmpty() || !ReadJpegLayout(bytes, layout)) {
        return kGarbled;
    }
    if (layout.scans > kMaxScans || layout.scans * Area(info.size) > kMaxScannedPixels) {
        return "it has too many scans";
    }
    // The library copies metadata several times. Coefficients have two bytes.
    const double perPixel = (layout.components == 1 ? 5 : 4) + (layout.isBuffered ? 2 * layout.samples : 0);
    info.memory = qint64(double(Area(info.size)) * perPixel) + 4 * qint64(bytes.size());
    return {};
}

std::string ReadGif(const std::string& bytes, const ImageLimits& limits, ImageInfo& info) {
    if (!HasGifEnd(bytes, limits.frames, info) || info.size.isEmpty()) {
        return kGarbled;
    }
    // The screen, what a frame covers, and the copy that is scaled.
    info.memory = Area(info.size) * 3 * 4;
    return {};
}

std::string Read(const std::string& bytes, const ImageLimits& limits, ImageInfo& info) {
    switch (info.format) {
        case EnImageFormat::kPng:
            return ReadPng(bytes, info);
        case EnImageFormat::kJpeg:
            return ReadJpeg(bytes, info);
        case EnImageFormat::kGif:
            return ReadGif(bytes, limits, info);
    }
    return kGarbled;
}

// A drawing of a few kilobytes can take minutes to render.
bool IsDrawing(const std::string& bytes) {
    constexpr size_t kSearchedBytes = 4096;
    const size_t mark = bytes.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    const size_t begin = bytes.find_first_not_of(" \t\r\n", mark);
    return begin != std::string::npos && bytes[begin] == '<' &&
           bytes.substr(begin, kSearchedBytes).find("<svg") != std::string::npos;
}

std::optional<EnImageFormat> FormatOf(const std::string& bytes) {
    const auto beginsWith = [&bytes](const char* text) { return bytes.rfind(text, 0) == 0; };
    if (beginsWith("\x89PNG\r\n\x1A\n")) {
        return EnImageFormat::kPng;
    }
    if (beginsWith("\xFF\xD8")) {
        return EnImageFormat::kJpeg;
    }
    if (beginsWith("GIF87a") || beginsWith("GIF89a")) {
        return EnImageFormat::kGif;
    }
    return std::nullopt;
}

}  // namespace

const char* image_validator::FormatName(EnImageFormat format) {
    static constexpr const char* kNames[] = {"png", "jpeg", "gif"};
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
        reason = IsDrawing(bytes) ? "it is an SVG" : "it is no picture";
        return std::nullopt;
    }
    ImageInfo info;
    info.format = *format;
    reason = Read(bytes, limits, info);
    if (!reason.empty()) {
        return std::nullopt;
    }
    if (Area(info.size) > limits.pixels) {
        reason = "it has too many pixels";
        return std::nullopt;
    }
    if (info.frames > limits.frames) {
        reason = "it has too many frames";
        return std::nullopt;
    }
    if (info.memory > limits.memory) {
        reason = "it needs too much memory";
        return std::nullopt;
    }
    return info;
}
