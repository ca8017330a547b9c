// Validates a picture's bytes, and decodes them. A refusal has a reason. A valid picture keeps the limits, and the
// decoder reads no larger size.
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <atomic>
#include <optional>
#include <string>

#include "FuzzTarget.h"
#include "picture/ImageValidator.h"
#include "picture/PictureDecoder.h"
#include "picture/PngChunks.h"

namespace {

// The unit tests decode larger pictures, which would take too long here.
constexpr qint64 kMaxDecodedPixels = 1'000'000;

// The toolkit writes a line for each garbled input.
const auto kSilenced = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});

struct Verdict {
    std::optional<ImageInfo> info;
    std::string reason;
};

Verdict Validate(const std::string& bytes, const ImageLimits& limits = {}) {
    Verdict verdict;
    verdict.info = image_validator::Validate(bytes, limits, verdict.reason);
    return verdict;
}

qint64 PixelsOf(const QSize& size) {
    return qint64(size.width()) * size.height();
}

void CheckTaken(const std::string& bytes, const ImageInfo& info) {
    const ImageLimits limits;
    EXPECT_FALSE(info.size.isEmpty());
    EXPECT_LE(PixelsOf(info.size), limits.pixels);
    EXPECT_GE(info.frames, 1);
    EXPECT_LE(info.frames, limits.frames);
    EXPECT_LE(info.memory, limits.memory);
    // A decoder that reads a larger size would exceed the memory limit.
    const std::string read = info.format == EnImageFormat::kPng ? png_chunks::Essential(bytes) : bytes;
    QByteArray copy(read.data(), int(read.size()));
    QBuffer buffer(&copy);
    QImageReader reader(&buffer, image_validator::FormatName(info.format));
    reader.setAutoDetectImageFormat(false);
    EXPECT_LE(PixelsOf(reader.size()), PixelsOf(info.size));
}

/// Limits equal to the picture accept it, and smaller ones refuse it.
void CheckLimits(const std::string& bytes, const ImageInfo& info) {
    ImageLimits limits;
    limits.bytes = int(bytes.size());
    EXPECT_TRUE(Validate(bytes, limits).info);
    limits.bytes = int(bytes.size()) - 1;
    EXPECT_FALSE(Validate(bytes, limits).info);
    limits = {};
    limits.pixels = PixelsOf(info.size);
    limits.frames = info.frames;
    EXPECT_TRUE(Validate(bytes, limits).info);
    --limits.pixels;
    EXPECT_FALSE(Validate(bytes, limits).info);
    limits = {};
    limits.frames = info.frames - 1;
    EXPECT_FALSE(Validate(bytes, limits).info);
    limits = {};
    limits.memory = info.memory - 1;
    EXPECT_FALSE(Validate(bytes, limits).info);
}

void CheckDecoded(const std::string& bytes, const ImageInfo& info) {
    const QSize size(40, 30);
    const std::atomic<bool> cancelled{false};
    const auto picture = PixelsOf(info.size) <= kMaxDecodedPixels
                             ? picture_decoder::Decode(bytes, info, size, true, cancelled)
                             : nullptr;
    if (picture) {
        EXPECT_LE(int(picture->frames.size()), info.frames);
        for (const Picture::Frame& frame : picture->frames) {
            EXPECT_EQ(frame.image.size(), size);
        }
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const Verdict verdict = Validate(bytes);
    if (!verdict.info) {
        EXPECT_FALSE(verdict.reason.empty());
        return 0;
    }
    CheckTaken(bytes, *verdict.info);
    CheckLimits(bytes, *verdict.info);
    CheckDecoded(bytes, *verdict.info);
    // Bytes after the end are ignored.
    const Verdict longer = Validate(bytes + "more");
    EXPECT_TRUE(longer.info && longer.info->size == verdict.info->size && longer.info->frames == verdict.info->frames);
    return 0;
}
